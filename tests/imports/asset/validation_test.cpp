#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "imports/asset/company_fixture.h"
#include "imports/asset/posting/asset_posting.h"
#include "imports/asset/rules/asset_rules.h"
#include "wizard/catalogue/builders.h"

namespace orva {
namespace {

using Lines = std::vector<std::string>;

/// Cells that replace those of a good row, and what is found then.
struct Case {
  SheetRow cells;
  Lines findings;
};

void check(const std::vector<Case>& cases, AssetCompany& company, SheetRow (*good)(const SheetRow&)) {
  for (const Case& one : cases) {
    const SheetRow row = good(one.cells);
    company.stage({row});
    const Lines found = company.validate();
    std::string cells;
    for (const auto& [heading, text] : one.cells) cells += heading + "=" + text + " ";
    EXPECT_EQ(found, one.findings) << cells;
  }
}

const std::string kLong31(31, 'x');
const std::string kLong51(51, 'x');
const std::string kLong256(256, 'x');

TEST(PurchaseRules, CellByCell) {
  AssetCompany company;
  company.company.flags.costCentres = true;
  company.company.flags.users = true;
  check(
      {
          {{}, {}},
          {{{"PHYID", ""}}, {"1 PHYID: Phy id :  can not be empty"}},
          {{{"PHYID", kLong51}}, {"1 PHYID: Phy id : " + kLong51 + " exceeds its maximum length 50"}},
          {{{"VCHRNO", kLong31}}, {"1 VCHRNO: " + kLong31 + " exceeds the maximum length 30"}},
          {{{"VCHRNO", ""}, {"PODATE", ""}, {"BILLDATE", ""}, {"WARRANTY", ""}}, {}},
          {{{"PODATE", "31/02/2005"}}, {"1 PODATE: Invalid PO date : 31/02/2005"}},
          {{{"BILLDATE", "31/12/1899"}}, {"1 BILLDATE: Date out of Range. Invalid Bill date : 31/12/1899"}},
          {{{"BILLDATE", "01/01/1900"}, {"WARRANTY", "31/12/9999"}}, {}},
          {{{"WARRANTY", "soon"}}, {"1 WARRANTY: Invalid Warranty Upto date : soon"}},
          {{{"CAT1", "PLANT and machinery"}, {"CAT2", "pumps"}, {"CAT3", "CENTRIFUGAL"}}, {}},
          {{{"CAT1", " "}},
           {"1 CAT1: Asset Category - Level I should not be blank",
            "1 CAT2: Asset Category - Level II : Pumps is not defined in ORVA."}},
          {{{"CAT1", "O'Neil's"}},
           {"1 CAT1: Asset Category - Level I : O'Neil's is not defined in ORVA.",
            "1 CAT2: Asset Category - Level II : Pumps is not defined in ORVA."}},
          {{{"CAT2", "Plots"}}, {"1 CAT2: Asset Category - Level II : Plots is not defined in ORVA."}},
          {{{"CAT2", ""}}, {"1 CAT2: Asset Category - Level II should not be blank"}},
          {{{"CAT2", "Presses"}, {"CAT3", "Centrifugal"}},
           {"1 CAT3: Asset Category - Level III : Centrifugal is not defined in ORVA."}},
          {{{"DESCRIPTION", ""}}, {"1 DESCRIPTION: Description should not be blank"}},
          {{{"DEPT", "STORES"}, {"VENDOR", "acme"}, {"USER", "RAO"}, {"COSTCENTRE", "works"}}, {}},
          {{{"DEPT", "O'Neil"}}, {"~1 DEPT"}},
          {{{"DEPT", ""}}, {"~1 DEPT"}},
          {{{"DEPT", "All"}}, {"~1 DEPT", "1 DEPT: All Do not enter value <ALL> "}},
          {{{"VENDOR", kLong256}}, {"1 VENDOR: " + kLong256 + " exceeds its maximum length 255", "~1 VENDOR"}},
          {{{"USER", kLong51}}, {"1 USER: User Name : " + kLong51 + " exceeds its maximum length 50", "~1 USER"}},
          {{{"COSTCENTRE", kLong256}},
           {"1 COSTCENTRE: Costcentre : " + kLong256 + " exceeds its maximaum length 255", "~1 COSTCENTRE"}},
          {{{"Life", "0"}}, {"1 Life: Asset's Life should be within the range 1 to 1200"}},
          {{{"Life", "1"}}, {}},
          {{{"Life", "1200"}}, {}},
          {{{"Life", "1201"}}, {"1 Life: Asset's Life should be within the range 1 to 1200"}},
          {{{"Life", "12.5"}}, {"1 Life: LIFE : 12.5 should not contain decimal part"}},
          {{{"Life", "12.0"}}, {}},
          {{{"Life", "-5"}},
           {"1 Life: Asset's Life should be within the range 1 to 1200",
            "1 Life: Asset's Life must be a whole number"}},
          {{{"Life", "12ab"}}, {"1 Life: Asset's Life should be within the range 1 to 1200"}},
          {{{"COST", ""}}, {"1 COST: Cost should not be empty"}},
          {{{"COST", "12k"}}, {"1 COST: Cost should not contain alphabets"}},
          {{{"COST", "-1"}}, {"1 COST: Cost should not be negative amount"}},
          {{{"COST", "10.125"}}, {"1 COST: Cost should not contain more than 2 decimal places"}},
          {{{"COST", "99999999999999999"}}, {"1 COST: Cost should not contain alphabets"}},
          {{{"GST", "10.125"}}, {"1 GST: GST  value should be upto 2 decimals only "}},
          {{{"GST", "10.12"}}, {}},
          {{{"GST", "1000"}}, {"1 GST: GST can not be more than or equal to the asset cost : 1000.00"}},
          {{{"GST", "-1"}}, {"1 GST: GST should not be negative amount."}},
          {{{"GST", "x"}}, {"1 GST: GST should not contain alphabets"}},
          {{{"SALVAGEVALUE", "1000"}}, {}},
          {{{"SALVAGEVALUE", "1000.01"}},
           {"1 SALVAGEVALUE: SalvageValue can not be more than the asset cost : 1000.00"}},
          {{{"CAT1", "Leased Land"}, {"CAT2", "Plots"}, {"SALVAGEVALUE", "1"}},
           {"1 SALVAGEVALUE:  Salvage Value Should be Zero or Blank for this category."}},
          {{{"CAT1", "Leased Land"}, {"CAT2", "Plots"}, {"SALVAGEVALUE", "0"}}, {}},
          {{{"QTY", ""}}, {"~1 QTY"}},
          {{{"QTY", "two"}}, {"1 QTY: QTY : two should not contain alphabets"}},
          {{{"QTY", "0"}}, {"1 QTY: QTY : 0 should not be negative or zero"}},
          {{{"QTY", "-2"}},
           {"1 QTY: QTY : -2 should not be negative or zero", "1 QTY: QTY : -2 should not be negative"}},
          {{{"MAINLOC", "O'Neil"}},
           {"1 MAINLOC: Main Location contains quotes or any other special character ", "~1 MAINLOC", "~1 SUBLOC",
            "~1 PHYLOC"}},
          {{{"SUBLOC", ""}}, {"~1 MAINLOC", "1 SUBLOC: Sub Location should not be blank", "~1 PHYLOC"}},
          {{{"MAINLOC", "pune"}, {"PHYLOC", "BAY 1"}}, {}},
          {{{"PHYLOC", kLong31}},
           {"~1 MAINLOC", "~1 SUBLOC", "1 PHYLOC: " + kLong31 + " exceeds its maximum length 30", "~1 PHYLOC"}},
          {{{"AddnlRateAsPerIT", "100"}}, {}},
          {{{"AddnlRateAsPerIT", "100.5"}}, {"1 AddnlRateAsPerIT: AddnlRateAsPerIT : 100.5 cannot exceeds 100% "}},
          {{{"USEDATE", ""}, {"AddnlRateAsPerIT", "20"}},
           {"1 USEDATE: USEDATE should not be blank",
            "1 AddnlRateAsPerIT: , UseDate is blank. UseDate is mandatory to import additional depreciation rate."}},
      },
      company, purchase);
}

TEST(PurchaseRules, ReferencesAreCompulsoryWhenTheCompanyValidatesThem) {
  AssetCompany company;
  company.company.flags.validation = true;
  check({{{{"VCHRNO", ""}, {"WARRANTY", ""}, {"PONO", ""}, {"PODATE", ""}, {"BILLNO", ""}, {"BILLDATE", ""}},
          {"1 VCHRNO: Voucher No. should not be blank", "1 WARRANTY: Warranty Upto date should not blank",
           "1 PONO: PO No. should not be blank", "1 PODATE: PO date should not be blank",
           "1 BILLNO: Party Doc/Ref No. should not be blank", "1 BILLDATE: Party Bill date should not be blank"}}},
        company, purchase);
}

TEST(PurchaseRules, MiscellaneousMastersByTheirPlace) {
  AssetCompany company;
  company.prepare({"insert into MisMaster (MName) values ('Branch')", "insert into MisMaster (MName) values ('Dept')",
                   "insert into MisData (Master, Code, MName) values ('M1', '0001', 'North')",
                   "insert into MisData (Master, Code, MName) values ('M2', '0001', 'East')"});
  check(
      {{{{"Branch", "NORTH"}}, {}},
       {{{"Branch", "East"}}, {"~1 Branch"}},
       {{{"Branch", ""}}, {}},
       {{{"Branch", kLong256}}, {"1 Branch: Branch : " + kLong256 + " exceeds its maximaum length 255", "~1 Branch"}}},
      company, purchase);
}

TEST(PurchaseRules, AdditionalBooks) {
  AssetCompany company;
  company.company.flags.additionalBook1 = true;
  company.company.flags.additionalBook2 = true;
  check({{{}, {"1 Rates - Method 2: B1 is not defined in AccYear : 2005-06 in Rates - Method 2"}}}, company, purchase);
  company.prepare(
      {"insert into FARate2 (Cocd, FACode, Method, Rate, Accyear) values ('K1', 'B1', 'SLM', 5, '2005-06')"});
  check({{{}, {}},
         {{{"OVERRIDERATE1", "100"}, {"OVERRIDEMETHOD1", "slm"}}, {}},
         {{{"OVERRIDERATE1", "100.01"}, {"OVERRIDEMETHOD1", "SLM"}},
          {"1 OVERRIDERATE1: Overriding Rate - books should be =>0 and <=100 "}},
         {{{"OVERRIDERATE1", "-1"}, {"OVERRIDEMETHOD1", "SLM"}},
          {"1 OVERRIDERATE1: Overriding Rate - books should be =>0 and <=100 "}},
         {{{"OVERRIDERATE1", "ten"}, {"OVERRIDEMETHOD1", "DDB"}},
          {"1 OVERRIDERATE1: Overriding Rate - books should not contain Non-numeric values",
           "1 OVERRIDEMETHOD1: Overriding Method - books should not be other than 'SLM' or 'WDV' "}},
         {{{"OVERRIDERATE2", ""}, {"OVERRIDEMETHOD2", "SLM"}},
          {"1 OVERRIDERATE2: Overriding Rate - books should not be blank"}},
         {{{"OVERRIDERATE2", "5"}, {"OVERRIDEMETHOD2", ""}},
          {"1 OVERRIDERATE2: Overriding Method - books is not specified",
           "1 OVERRIDEMETHOD2: Overriding Method - books should not be blank"}},
         {{{"OVERRIDERATE2", "5"}}, {"1 OVERRIDERATE2: Overriding Method - books is not specified"}},
         {{{"OVERRIDERATE2", ""}, {"OVERRIDEMETHOD2", ""}}, {}}},
        company, purchase);
  company.prepare({"update FADefinition set FACode1=null, FACode2='' where DefCode='PM'"});
  check({{{},
          {"1 Rates - Method 1: Rates as per Addnl Method 1 is not not mapped in Asset Category For Plant and "
           "Machinery-Pumps-",
           "1 Rates - Method 2: Rates as per Addnl Method 2 is not not mapped in Asset Category For Plant and "
           "Machinery-Pumps-"}},
         {{{"CAT3", "Centrifugal"}},
          {"1 Rates - Method 1: Rates as per Addnl Method 1 is not not mapped in Asset Category For Plant and "
           "Machinery-Pumps-Centrifugal",
           "1 Rates - Method 2: Rates as per Addnl Method 2 is not not mapped in Asset Category For Plant and "
           "Machinery-Pumps-Centrifugal"}}},
        company, purchase);
}

TEST(PurchaseRules, RatesOfTheYear) {
  AssetCompany company;
  company.prepare(
      {"delete from FARate where FACode='F1' and Accyear='2005-06'", "delete from ITaxRates where FinYear='2005-06'"});
  check({{{},
          {"1 Rates As Per Books: F1 is not defined in AccYear : 2005-06 in Rates As per Books",
           "1 Rates As Per ITax: T1 is not defined for FinYear : 2005-06 in Rates As per Income-Tax"}},
         {{{"CAT3", "Centrifugal"}},
          {"1 Rates As Per ITax: T1 is not defined for FinYear : 2005-06 in Rates As per Income-Tax"}},
         {{{"USEDATE", "01/04/2004"}, {"VCHRDATE", "31/03/2005"}}, {}}},
        company, purchase);
}

TEST(PurchaseRules, IdentifierThatGrowsTooLong) {
  AssetCompany company;
  company.prepare({"update parameter set regioncode='MH'", "update fadefinition set prefix='ABCDEFGHIJ'",
                   "update classification set prefix='ABCDEFGHIJ'"});
  check({{{}, {}}}, company, purchase);
  company.prepare({"update subclass set prefix='ABC'"});
  check({{{{"CAT3", "Centrifugal"}},
          {"1 Asset ID: Category Prefix & No. of digits exceeds AssetID's maximum length : 30"}}},
        company, purchase);
}

TEST(PurchaseRules, AutomaticRateNeedsSalvage) {
  AssetCompany company;
  company.selection.autoCalcDepRate = true;
  company.prepare({"update FADefinition set WOPercent=95 where DefCode='PM'"});
  const std::string missing = "1 SALVAGEVALUE:  Please provide salvage value. As Depreciation Base is WRITEOFF UPTO.";
  check({{{{"Life", "120"}, {"SALVAGEVALUE", "50"}}, {}},
         {{{"Life", "120"}, {"SALVAGEVALUE", ""}}, {missing}},
         {{{"Life", ""}, {"SALVAGEVALUE", "50"}}, {"1 Life: Asset's Life should be within the range 1 to 1200"}},
         // The sub-class is depreciated by written-down value.
         {{{"Life", "120"}, {"SALVAGEVALUE", ""}, {"CAT3", "Centrifugal"}}, {}}},
        company, purchase);
}

TEST(PurchaseRules, LeaseHold) {
  AssetCompany company;
  company.selection.leaseHold = true;
  const SheetRow lease = {{"CAT1", "Leased Land"}, {"CAT2", "Plots"}};
  const auto leased = [&](const std::string& date) {
    SheetRow cells = lease;
    cells.emplace_back("LEASEDATE", date);
    return cells;
  };
  check({{leased("02/05/2005"), {}},
         {leased("01/05/2005"), {"1 LEASEDATE: Lease Date : 01/05/2005 should be greater than Date put to use."}},
         {leased("99/99/2005"), {"1 LEASEDATE: Invalid Lease Date : 99/99/2005"}},
         {leased(""), {"1 LEASEDATE: Lease Date :  should not be blank"}},
         {{{"LEASEDATE", ""}}, {}},
         {{{"LEASEDATE", "01/01/2010"}, {"USEDATE", ""}},
          {"1 USEDATE: USEDATE should not be blank", "1 USEDATE: Date Put to Use should not be blank"}}},
        company, purchase);
}

TEST(ClosingRules, Amounts) {
  AssetCompany company;
  company.selection.kind = ImportKindId::kClosing;
  company.company.flags.additionalBook1 = true;
  company.company.flags.additionalBook2 = true;
  check({{{}, {}},
         {{{"ACCDEP", ""}}, {"1 ACCDEP: ACCDep should not be blank"}},
         {{{"ACCDEP", "x"}}, {"1 ACCDEP: ACCDEP : x should not contain alphabets"}},
         {{{"ACCDEP", "-0.01"}}, {"1 ACCDEP: ACCDep should not be negative amount."}},
         {{{"ACCDEP", "1000"}}, {}},
         {{{"ACCDEP", "1000.01"}}, {"1 ACCDEP: AccDep should not exceed Asset Cost"}},
         {{{"ACCDEP", "1.005"}}, {"1 ACCDEP: AccDep should not contain more than 2 decimal places"}},
         {{{"ACCDEP1", ""}, {"ACCDEP2", ""}}, {"1 ACCDEP2: ACCDep2 should not be blank"}},
         {{{"ACCDEP1", "1001"}, {"ACCDEP2", "1002"}},
          {"1 COST: Cost should not be less than AccDep1", "1 COST: Cost should not be less than AccDep2",
           "1 ACCDEP1: AccDep1 should not exceed Asset Cost", "1 ACCDEP2: AccDep2 should not exceed Asset Cost"}},
         {{{"ACCDEP1", "-1"}, {"ACCDEP2", "-1"}},
          {"1 ACCDEP1: ACCDEP1 : -1.00 should not be a negative amount",
           "1 ACCDEP2: AccDep2 should not contain negative value"}},
         {{{"USEDATE", ""}}, {"1 USEDATE: Date Put to Use should not be blank"}}},
        company, takenOver);
}

/// The catalogues of both flavours, all modes and every tick.
std::vector<Catalogue> allCatalogues(AssetCompany& company) {
  std::vector<Catalogue> catalogues;
  for (const ImportKindId kind : {ImportKindId::kAcquired, ImportKindId::kClosing}) {
    for (const AssetMode mode : {AssetMode::kAdd, AssetMode::kModifyByAssetId, AssetMode::kModifyByPhysicalId}) {
      catalogues.push_back(
          buildCatalogue({.kind = kind, .mode = mode, .autoCalcDepRate = true, .leaseHold = true, .shiftedIn = true},
                         company.company));
    }
  }
  return catalogues;
}

TEST(Tables, NameOnlyColumnsOfTheCatalogues) {
  AssetCompany company;
  company.company.flags.additionalBook1 = true;
  company.company.flags.additionalBook2 = true;
  const std::vector<Catalogue> catalogues = allCatalogues(company);
  const auto isKnown = [&](const std::string& name) {
    // Generated lines: miscellaneous masters and user-defined fields.
    if (name.starts_with("M") && name.size() == 2) return true;
    if (name.starts_with("UDV")) return true;
    return std::any_of(catalogues.begin(), catalogues.end(), [&](const Catalogue& c) { return findField(c, name); });
  };
  for (const AssetRule& rule : assetRules()) {
    std::istringstream names{std::string(rule.column)};
    for (std::string name; names >> name;) EXPECT_TRUE(isKnown(name)) << name;
  }
  for (const auto& column : assetColumns()) EXPECT_TRUE(isKnown(std::string(column.heading))) << column.heading;
}

}  // namespace
}  // namespace orva
