#include <gtest/gtest.h>

#include "imports/asset/company_fixture.h"

namespace orva {
namespace {

using Lines = std::vector<std::string>;

/// Cells of a column, and what is found. In the modify modes the cells stand beside the identifier.
struct Case {
  SheetRow cells;
  Lines findings;
  Lines books = {};
};

constexpr const char* kAssets[] = {
    "insert into Asset (Assetid, PhyID, AcquiredAs, Accyear, Finyear, DefCode, ClassCode, SubClassCode, Cost, UseDate) "
    "values ('PM0001', 'T-1', 'Purchased', '2005-06', '2005-06', 'PM', 'PM-01', 'PM-01-01', 1000, #05/01/2005#)",
    "insert into Asset (Assetid, PhyID, AcquiredAs, Accyear, Finyear, DefCode, ClassCode, Cost, UseDate) "
    "values ('PM0002', 'T-2', 'O', '2004-05', '2004-05', 'PM', 'PM-02', 2000, #05/01/2004#)",
};
constexpr ParameterFlags kBooksKept{.additionalBook1 = true, .additionalBook2 = true, .automaticIdentifiers = true};
constexpr const char* kRate2 =
    "insert into FARate2 (Cocd, FACode, Method, Rate, Accyear) values ('K1', 'B1', 'SLM', 5, '2005-06')";

std::string describe(const Case& one) {
  std::string text;
  for (const auto& [heading, value] : one.cells) text += heading + "=" + value + " ";
  return text;
}

void check(const Case& one, const Selection& selection, const SheetRow& row) {
  AssetCompany company;
  company.selection = selection;
  company.company.flags = kBooksKept;
  if (selection.isModify()) company.prepare({std::begin(kAssets), std::end(kAssets)});
  company.prepare({kRate2});
  company.prepare(one.books);
  company.stage({row});
  EXPECT_EQ(company.validate(), one.findings) << describe(one);
}

/// Every case in both modify modes: neither the order nor the texts of other columns depend on how the asset is named.
void checkModify(const std::vector<Case>& cases, ImportKindId flavour) {
  const bool isClosing = flavour == ImportKindId::kClosing;
  for (const Case& one : cases) {
    SheetRow byAssetId{{"ASSETID", isClosing ? "PM0002" : "PM0001"}};
    SheetRow byPhysicalId{{"PHYID", isClosing ? "T-2" : "T-1"}};
    for (SheetRow* row : {&byAssetId, &byPhysicalId}) row->insert(row->end(), one.cells.begin(), one.cells.end());
    check(one, {.kind = flavour, .mode = AssetMode::kModifyByAssetId}, byAssetId);
    check(one, {.kind = flavour, .mode = AssetMode::kModifyByPhysicalId}, byPhysicalId);
  }
}

SheetRow places(const std::string& main, const std::string& sub, const std::string& physical) {
  return {{"MAINLOC", main}, {"SUBLOC", sub}, {"PHYLOC", physical}};
}

const std::string kLong31(31, 'x');

TEST(Columns, OfAcquisitionsThatAreModified) {
  checkModify(
      {
          {{{"VCHRNO", ""}, {"REMARKS", ""}, {"GST", ""}, {"QTY", ""}, {"CAT3", ""}}, {}},
          {{{"VCHRNO", kLong31}}, {"1 VCHRNO: " + kLong31 + " exceeds the maximum length 30"}},
          {{{"VCHRDATE", ""}, {"USEDATE", ""}}, {}},
          {{{"VCHRDATE", "1-5-05"}}, {"1 VCHRDATE: Invalid Voucher Date : 1-5-05"}},
          {{{"USEDATE", "31/12/1899"}}, {"1 USEDATE: Date out of Range.Invalid Use Date : 31/12/1899"}},
          {{{"USEDATE", "01/05/2007"}},
           {"1 USEDATE: 01/05/2007 doesn't fall in any of the accounting years defined.",
            "1 USEDATE: 01/05/2007 doesn't fall in any of the financial years defined."}},
          {{{"VCHRDATE", "01/05/2005"}},
           {"1 VCHRDATE: Depreciation is already calculated upto : 30/06/2005.Therefore cannot import date 01/05/2005"},
           {"insert into Fadep (Assetid, DocDt, DefCode) values ('X', #06/30/2005#, 'LH')"}},
          {{{"CAT2", ""}}, {"1 CAT2: Asset Category - Level II should not be blank"}},
          {{{"CAT2", "Plots"}}, {"1 CAT2: Asset Category - Level II : Plots is not defined in ORVA."}},
          {{{"CAT2", "Presses"}, {"CAT3", "Centrifugal"}},
           {"1 CAT3: Asset Category - Level III : Centrifugal is not defined in ORVA."}},
          {{{"CAT3", "centrifugal"}}, {}},
          {{{"DESCRIPTION", ""}}, {"1 DESCRIPTION: Description should not be blank"}},
          {{{"DEPT", ""}, {"VENDOR", ""}, {"USER", ""}, {"COSTCENTRE", ""}}, {}},
          {{{"DEPT", "New"}, {"VENDOR", "New"}}, {"~1 DEPT", "~1 VENDOR"}},
          {{{"COST", ""}}, {"1 COST: Cost should not be empty"}},
          {{{"COST", "1,000"}}, {"1 COST: Cost should not contain alphabets"}},
          {{{"COST", "-0.01"}}, {"1 COST: Cost should not be negative amount"}},
          {{{"GST", "1000"}}, {"1 GST: GST can not be more than or equal to the asset cost : 1000"}},
          {{{"COST", "500"}, {"GST", "500"}}, {"1 GST: GST can not be more than or equal to the asset cost : 500.00"}},
          {{{"SALVAGEVALUE", "x"}}, {"1 SALVAGEVALUE: SalvageValue should not contain alphabets"}},
          {{{"QTY", "-1"}},
           {"1 QTY: QTY : -1 should not be negative or zero", "1 QTY: QTY : -1 should not be negative"}},
          {{{"Life", "-5"}},
           {"1 Life: Asset's Life should be within the range 1 to 1200",
            "1 Life: Asset's Life must be a whole number"}},
          {places("", "Plant 1", "Bay 1"), {"1 MAINLOC: Main Location should not be blank", "~1 SUBLOC", "~1 PHYLOC"}},
          // The columns' own messages come before the one about ALL.
          {places(kLong31, "all", "Bay \"1\""),
           {"1 MAINLOC: " + kLong31 + " exceeds its maximum length 30", "~1 MAINLOC", "~1 SUBLOC",
            "1 SUBLOC: all Do not enter value <ALL> ",
            "1 PHYLOC: Physical Location contains quotes or any other special character ", "~1 PHYLOC"}},
          {{{"USER", "ALL"}}, {"~1 USER", "1 USER: ALL Do not enter value <ALL> "}},
          {{{"OVERRIDERATE", "0"}, {"OVERRIDEMETHOD", "SLM"}}, {}},
          {{{"OVERRIDERATE", "5"}}, {"1 OVERRIDERATE: Overriding Method - books is not specified"}},
          {{{"OVERRIDERATE", ""}, {"OVERRIDEMETHOD", "WDV"}},
           {"1 OVERRIDERATE: Overriding Rate - books should not be blank"}},
          {{{"OVERRIDERATE", "100.01"}, {"OVERRIDEMETHOD", ""}},
           {"1 OVERRIDERATE: Overriding Rate - books should be =>0 and <=100 ",
            "1 OVERRIDERATE: Overriding Method - books is not specified",
            "1 OVERRIDEMETHOD: Overriding Method - books should not be blank"}},
          // The method of the asset's entries is that of the books, not that of an additional book.
          {{{"OVERRIDERATE", "5"}, {"OVERRIDERATE1", "5"}},
           {"1 OVERRIDERATE1: Overriding Method - books is not specified"},
           {"insert into Fadep (Assetid, DocDt, Method) values ('PM0001', #03/31/2004#, 'SLM')"}},
          {{{"OVERRIDEMETHOD2", "DDB"}},
           {"1 OVERRIDEMETHOD2: Override Rate - Books is not updated. Import Override Rate - Books also along with "
            "Override Method - books ",
            "1 OVERRIDEMETHOD2: Overriding Method - books should not be other than 'SLM' or 'WDV' "}},
          {{{"AddnlRateAsPerIT", "100.01"}}, {"1 AddnlRateAsPerIT: AddnlRateAsPerIT : 100.01 cannot exceeds 100% "}},
          {{{"AddnlRateAsPerIT", "20"}},
           {"1 AddnlRateAsPerIT: , UseDate is blank. UseDate is mandatory to import additional depreciation rate."},
           {"update Asset set UseDate=null"}},
          {{{"BILLDATE", ""}, {"PODATE", "x"}}, {"1 PODATE: Invalid PO date : x"}},
      },
      ImportKindId::kAcquired);
}

TEST(Columns, OfClosingBalancesThatAreModified) {
  constexpr const char* kLaterEntry =
      "insert into Fadep (Assetid, DocDt, Method) values ('PM0002', #03/31/2005#, 'SLM')";
  checkModify(
      {
          {{{"ACCDEP", ""}}, {"1 ACCDEP: ACCDep should not be blank"}},
          {{{"ACCDEP", "2000.01"}}, {"1 ACCDEP: AccDep should not exceed Asset Cost"}},
          {{{"COST", "100"}, {"ACCDEP1", "100.01"}},
           {"1 COST: Cost should not be less than AccDep1", "1 ACCDEP1: AccDep1 should not exceed Asset Cost"}},
          {{{"ACCDEP1", ""}, {"ACCDEP2", "x"}}, {"1 ACCDEP2: ACCDEP2 : x should not contain alphabets"}},
          {{{"ACCDEP1", "x"}, {"ACCDEP2", ""}},
           {"1 ACCDEP1: ACCDEP1 : x should not contain alphabets", "1 ACCDEP2: ACCDep2 should not be blank"}},
          {{{"USEDATE", "01/04/2005"}}, {"1 USEDATE: 01/04/2005 must be on or before 31/03/2005"}},
          {{{"USEDATE", "30/03/2005"}},
           {"1 USEDATE: Depreciation is calculated. Can't change",
            "1 USEDATE: Depreciation is already calculated upto : 31/03/2005.Therefore cannot import date 30/03/2005"},
           {kLaterEntry}},
          {{{"ACCDEP", "-1"}},
           {"1 ACCDEP: ACCDep should not be negative amount.",
            "1 ACCDEP: Depreciation is already calculated. Can't change AccDep."},
           {kLaterEntry}},
      },
      ImportKindId::kClosing);
}

TEST(Columns, OfNewAssets) {
  const std::vector<Case> cases{
      {{{"OVERRIDERATE1", "5"}}, {"1 OVERRIDERATE1: Overriding Method - books is not specified"}},
      {places("ALL", "Plant 1", "Bay 1"),
       {"~1 MAINLOC", "1 MAINLOC: ALL Do not enter value <ALL> ", "~1 SUBLOC", "~1 PHYLOC"}},
      {places("Pune", "Plant\r\n1", "Bay 1"),
       {"~1 MAINLOC", "1 SUBLOC: Sub Location contains quotes or any other special character ", "~1 SUBLOC",
        "~1 PHYLOC"}},
      {{{"AddnlRateAsPerIT", "20"}},
       {"1 USEDATE: Depreciation as Per ITAX is already calculated for the Year : 2005-06",
        "1 VCHRDATE: Depreciation as Per ITAX is already calculated for the Year : 2005-06",
        "1 AddnlRateAsPerIT: , depreciation is already calculated as per Income Tax for FY 2005-06"},
       {"insert into ItaxDep (DocDt, FinYear) values (#03/31/2006#, '2005-06')"}},
      {{{"SALVAGEVALUE", "-1"}}, {"1 SALVAGEVALUE: SalvageValue should not be negative amount."}},
      {{{"SALVAGEVALUE", "1"}},
       {"1 SALVAGEVALUE:  Salvage Value Should be Zero or Blank for this category."},
       {"update FADefinition set CostSalvage=true where DefCode='PM'"}},
  };
  for (const Case& one : cases) check(one, {}, purchase(one.cells));
}

TEST(Columns, OfShiftedInAssets) {
  const auto shifted = [](const SheetRow& cells) {
    SheetRow all{{"ShiftedFrom", "Nagpur"}, {"ACCDEP", "1"}};
    for (const auto& cell : cells) {
      std::erase_if(all, [&](const auto& other) { return other.first == cell.first; });
      all.push_back(cell);
    }
    return all;
  };
  const std::vector<Case> cases{
      {{}, {}},
      {{{"ShiftedFrom", " "}}, {"1 ShiftedFrom: Shifted From should not be blank"}},
      {{{"ACCDEP", "1000.01"}}, {"1 ACCDEP: AccDep should not exceed Asset Cost"}},
      {{{"USEDATE", ""}}, {"1 USEDATE: USEDATE should not be blank", "1 USEDATE: Date Put to Use should not be blank"}},
  };
  for (const Case& one : cases) check(one, {.shiftedIn = true}, purchase(shifted(one.cells)));
}

}  // namespace
}  // namespace orva
