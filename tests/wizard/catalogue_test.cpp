#include <fstream>
#include <sstream>

#include "wizard/wizard_screen.h"

namespace orva {
namespace {

/// One listed catalogue: what was chosen, and the lines as they must be shown.
struct Listing {
  std::string title;
  std::vector<std::string> words;
  std::vector<std::string> lines;
};

std::vector<Listing> readListings(const std::string& name) {
  std::ifstream file(std::string(ORVA_FIXTURES) + "/catalogues/" + name);
  std::vector<Listing> listings;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("# ")) {
      Listing listing{.title = line, .words = {}, .lines = {}};
      std::istringstream words(line.substr(2));
      for (std::string word; words >> word;) listing.words.push_back(word);
      listings.push_back(std::move(listing));
    } else if (!line.empty()) {
      listings.back().lines.push_back(line);
    }
  }
  return listings;
}

void click(WizardScreen& wizard, const std::string& word) {
  if (word == "auto") {
    wizard.screen.chkAutoCalcDepRate.setValue(true);
    wizard.screen.chkAutoCalcDepRate_Click();
  } else if (word == "lease") {
    wizard.screen.ChkLeaseHold.setValue(true);
    wizard.screen.ChkLeaseHold_Click();
  } else if (word == "shifted") {
    wizard.screen.chkShiftedIn.setValue(true);
    wizard.screen.chkShiftedIn_Click();
  } else {
    std::vector<std::string>& columns = wizard.parameter->columns;
    const auto column = std::find(columns.begin(), columns.end(), word) - columns.begin();
    wizard.parameter->rows[0].at(static_cast<std::size_t>(column)) = Value(true);
  }
}

AssetMode modeOf(const std::string& word) {
  if (word == "asset") return AssetMode::kModifyByAssetId;
  return word == "phy" ? AssetMode::kModifyByPhysicalId : AssetMode::kAdd;
}

std::vector<std::string> shownLines(const frmImport& screen) {
  std::vector<std::string> lines;
  for (int index = 0; index < screen.lstFields.count(); ++index) {
    const ListView::Line& line = screen.lstFields.line(index);
    std::string text;
    for (std::size_t cell = 0; cell < 5; ++cell) text += line.cells[cell] + '\t';
    lines.push_back(text + (line.ticked ? "x" : "-"));
  }
  return lines;
}

TEST(Catalogue, IsTheListedOneForEveryChoice) {
  const std::vector<Listing> listings = readListings("catalogues.txt");
  ASSERT_EQ(listings.size(), 33u);
  for (const Listing& listing : listings) {
    WizardScreen wizard;
    for (std::size_t word = 2; word < listing.words.size(); ++word) click(wizard, listing.words[word]);
    wizard.choose(importKindByBatchName(listing.words[0]).value(), modeOf(listing.words[1]));
    EXPECT_EQ(shownLines(wizard.screen), listing.lines) << listing.title;
  }
}

std::vector<std::string> split(const std::string& line, char separator) {
  std::vector<std::string> parts;
  std::istringstream stream(line);
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

/// Excel name, requirement and tick of every line, as the columns of the listing give them.
std::vector<std::string> shownRequirements(const frmImport& screen) {
  std::vector<std::string> lines;
  for (const FieldRow& field : screen.catalogue()) {
    lines.push_back(field.excelName + ' ' + std::string(requirementText(field.requirement)) +
                    (field.ticked ? "x" : "-"));
  }
  return lines;
}

TEST(Catalogue, OfAssetsIsTheListedOneForEveryCombinationOfTicks) {
  const std::vector<Listing> listings = readListings("asset_ticks.txt");
  ASSERT_EQ(listings.size(), 6u);
  for (const Listing& listing : listings) {
    const std::vector<std::string> combinations = split(listing.lines.at(0), '\t');
    ASSERT_EQ(combinations.size(), 8u);
    for (std::size_t column = 0; column < combinations.size(); ++column) {
      WizardScreen wizard;
      for (std::size_t flag = 2; flag < listing.words.size(); ++flag) click(wizard, listing.words[flag]);
      wizard.choose(importKindByBatchName(listing.words[0]).value(), modeOf(listing.words[1]));
      for (const std::string& tick : split(combinations[column], '+')) {
        if (tick != "-") click(wizard, tick);
      }
      std::vector<std::string> expected;
      for (std::size_t line = 1; line < listing.lines.size(); ++line) {
        const std::vector<std::string> cells = split(listing.lines[line], '\t');
        if (cells.at(column + 1) != ".") expected.push_back(cells[0] + ' ' + cells[column + 1]);
      }
      EXPECT_EQ(shownRequirements(wizard.screen), expected) << listing.title << ": " << combinations[column];
    }
  }
}

TEST(Catalogue, HasFiveColumnsAndAPositionForUserDefinedFields) {
  WizardScreen wizard;
  const auto widths = [&] {
    std::string text;
    for (const ListView::Column& column : wizard.screen.lstFields.columns()) {
      text += column.heading + "=" + std::to_string(column.width) + ";";
    }
    return text;
  };
  EXPECT_EQ(widths(), "Fields In ORVA=2600;FieldNames In Excel=1600;Data Type=1300;Field Size=1300;Requirement=1100;");
  wizard.choose(ImportKindId::kUdf);
  EXPECT_TRUE(widths().starts_with("Fields In ORVA=2600;Fields Names In Excel=1600;")) << widths();
  std::string positions;
  for (int line = 0; line < wizard.screen.lstFields.count(); ++line) {
    positions += wizard.screen.lstFields.line(line).cells.at(5) + ";";
  }
  EXPECT_EQ(positions, "0;1;11;15;");
}

TEST(Catalogue, WithoutUserDefinedFieldsTheKindCannotBeChosen) {
  const std::vector<std::vector<std::vector<Value>>> cases{{}, {{Value(), Value(" "), Value(), Value(), Value()}}};
  for (const std::vector<std::vector<Value>>& names : cases) {
    WizardScreen wizard;
    wizard.fieldNames->rows = names;
    wizard.choose(ImportKindId::kSale);
    wizard.screen.optKind_Click(ImportKindId::kUdf);
    ASSERT_EQ(wizard.fakes.dialogs.texts(), std::vector<std::string>{"No User Defined Fields given in ORVA Software "});
    EXPECT_EQ(wizard.fakes.dialogs.messages[0].title, "ORVA");
    EXPECT_TRUE(wizard.screen.optSaleEntries.value());
    EXPECT_FALSE(wizard.screen.optUDF.value());
    EXPECT_EQ(wizard.screen.lstFields.count(), 6);
  }
}

TEST(Ticks, FollowTheirRules) {
  struct Case {
    const char* what;
    AssetMode mode;
    const char* line;
    bool ticked;
    std::vector<std::pair<std::string, bool>> after;
  };
  const Case cases[] = {
      {"a mandatory line stays", AssetMode::kAdd, "COST", false, {{"COST", true}}},
      {"a line with default goes", AssetMode::kAdd, "QTY", false, {{"QTY", false}}},
      {"locations go alone in Add mode", AssetMode::kAdd, "GST", true, {{"GST", true}, {"MAINLOC", true}}},
      {"locations come together",
       AssetMode::kModifyByAssetId,
       "SUBLOC",
       true,
       {{"MAINLOC", true}, {"SUBLOC", true}, {"PHYLOC", true}, {"DEPT", false}}},
      {"additional books are free", AssetMode::kAdd, "ACCDEP1", true, {{"ACCDEP1", true}, {"ACCDEP2", false}}},
  };
  for (const Case& test : cases) {
    WizardScreen wizard;
    click(wizard, "farate1");
    click(wizard, "farate2");
    wizard.choose(ImportKindId::kClosing, test.mode);
    wizard.tick(test.line, test.ticked);
    for (const auto& [line, ticked] : test.after) EXPECT_EQ(wizard.isTicked(line), ticked) << test.what << ": " << line;
  }
}

TEST(Ticks, SelectAllTicksAllThenRebuilds) {
  WizardScreen wizard;
  click(wizard, "farate1");
  wizard.choose(ImportKindId::kClosing, AssetMode::kModifyByPhysicalId);
  wizard.screen.cmdSelectAll_Click();
  EXPECT_TRUE(wizard.isTicked("REMARKS"));
  EXPECT_TRUE(wizard.isTicked("Project"));
  EXPECT_FALSE(wizard.isTicked("ACCDEP1"));
  wizard.screen.cmdSelectAll_Click();
  EXPECT_FALSE(wizard.isTicked("REMARKS"));
  EXPECT_TRUE(wizard.isTicked("PHYID"));
  EXPECT_TRUE(wizard.fakes.dialogs.messages.empty());
}

TEST(Ticks, SelectAllChecksTheHeaderOfAChosenWorkbook) {
  WizardScreen wizard;
  wizard.choose(ImportKindId::kSale);
  wizard.putRows({{"ASSETID", "InvoiceNo", "SaleDate", "SaleAMT", "SerialNo"}});
  wizard.screen.cmdSelectAll_Click();
  EXPECT_TRUE(wizard.screen.lstFields.line(wizard.lineOf("Remarks")).bold);
  EXPECT_TRUE(wizard.screen.lblRed.visible());
}

TEST(SelectionPage, EnablesWhatTheChoiceAllows) {
  struct Case {
    ImportKindId kind;
    AssetMode mode;
    bool backdate;
    bool multiple;
    bool modes;
    bool overwrite;
  };
  using enum ImportKindId;
  const Case cases[] = {
      {kAcquired, AssetMode::kAdd, true, true, true, false},
      {kClosing, AssetMode::kAdd, false, true, true, false},
      {kAcquired, AssetMode::kModifyByAssetId, false, false, true, true},
      {kClosing, AssetMode::kModifyByPhysicalId, false, false, true, true},
  };
  for (const Case& test : cases) {
    WizardScreen wizard;
    wizard.screen.chkMultAssetId.setValue(true);
    wizard.choose(test.kind, test.mode);
    EXPECT_EQ(wizard.screen.ChkBackdate.enabled(), test.backdate);
    EXPECT_EQ(wizard.screen.chkMultAssetId.enabled(), test.multiple);
    EXPECT_EQ(wizard.screen.chkMultAssetId.value(), test.multiple);
    EXPECT_TRUE(wizard.screen.ChkLeaseHold.enabled());
    EXPECT_EQ(wizard.screen.Frame1.enabled(), test.modes);
    EXPECT_EQ(wizard.screen.lblOverwrite.visible(), test.overwrite);
  }
  for (const ImportKindId kind : {kSale, kAmc, kInsurance, kChangeCategory}) {
    WizardScreen wizard;
    wizard.choose(kind);
    EXPECT_FALSE(wizard.screen.Frame1.enabled());
  }
}

TEST(SelectionPage, OnlyKindsWithProceduresCanBeChosen) {
  WizardScreen wizard;
  EXPECT_FALSE(wizard.screen.optDep.enabled());
  std::erase_if(wizard.registry, [](const ImportProcedures& entry) { return entry.kind == ImportKindId::kAmc; });
  wizard.choose(ImportKindId::kAmc);
  EXPECT_EQ(wizard.screen.selection().kind, ImportKindId::kAcquired);
  EXPECT_FALSE(wizard.screen.optAMCDet.enabled());
  EXPECT_TRUE(wizard.screen.optAsset.value());
}

TEST(SelectionPage, RegulatoryClassificationForbidsAutomaticRates) {
  WizardScreen wizard;
  EXPECT_TRUE(wizard.screen.chkAutoCalcDepRate.enabled());
  wizard.company.flags.regulatoryClassification = true;
  wizard.choose(ImportKindId::kAcquired);
  EXPECT_FALSE(wizard.screen.chkAutoCalcDepRate.enabled());
}

}  // namespace
}  // namespace orva
