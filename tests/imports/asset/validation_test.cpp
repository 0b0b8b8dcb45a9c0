#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "imports/asset/company_fixture.h"
#include "imports/asset/posting/asset_posting.h"
#include "imports/asset/rules/asset_rules.h"
#include "wizard/catalogue/builders.h"

namespace orva {
namespace {

TEST(Validation, CountsBackdatedRowsAndMarksThem) {
  AssetCompany company;
  company.selection.backdated = true;
  company.prepare({"insert into Fadep (Assetid, DocDt, DefCode) values ('X1', #09/30/2005#, 'PM')"});
  company.stage(
      {purchase(), purchase({{"COST", "x"}}), purchase({{"USEDATE", "01/10/2005"}, {"VCHRDATE", "01/10/2005"}})});
  company.validate();
  EXPECT_EQ(company.findings.backdatedRows(), 2) << "the row in error is backdated, too";
  EXPECT_EQ(company.findings.errorRows(), 1);
  EXPECT_EQ(company.grid.text(1, company.grid.findColumn("BACKDATED")), "Y");
  EXPECT_EQ(company.grid.text(3, company.grid.findColumn("BACKDATED")), "");
}

TEST(Validation, YearsKeptForPostingAreThoseOfTheVoucher) {
  AssetCompany company;
  company.stage({purchase({{"VCHRDATE", "01/05/2004"}}), purchase({{"USEDATE", "01/05/2004"}})});
  EXPECT_EQ(company.validate(), std::vector<std::string>());
  EXPECT_EQ(company.grid.text(1, company.grid.findColumn("ACCYEAR")), "2004-05");
  EXPECT_EQ(company.grid.text(2, company.grid.findColumn("FINYEAR")), "2005-06");
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
