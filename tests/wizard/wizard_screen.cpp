#include "wizard/wizard_screen.h"

namespace orva {
namespace {

constexpr std::string_view kCatalog = "C01ORVA";

bool marks(RowView&, const Cell& cell, const Rule<RowView>& rule) {
  const std::string_view word = rule.findingClass == FindingClass::kError     ? "bad"
                                : rule.findingClass == FindingClass::kWarning ? "odd"
                                                                              : "old";
  return cell.value.find(word) != std::string_view::npos;
}

constexpr Rule<RowView> kRules[] = {
    {.column = "ASSETID", .fails = marks, .text = "{value} is no asset"},
    {.column = "REMARKS", .fails = marks, .text = "{value} is no remark"},
    {.column = "REMARKS", .fails = marks, .findingClass = FindingClass::kWarning},
    {.column = "REMARKS", .fails = marks, .text = "{value} is late", .findingClass = FindingClass::kBackdated},
};

void validateTest(ImportRun& run) {
  RowView row(run);
  walkRows<RowView>(row, kRules, WalkPolicy::kAllRules, [](RowView&) {});
}

constexpr PostedColumn<PostingRow> kColumns[] = {
    {.heading = "ASSETID", .target = "AssetId"},
    {.heading = "REMARKS", .target = "Remarks"},
    {.target = "Cocd",
     .store = [](PostingRow& row, const Cell&,
                 std::string_view target) { row.set(target, Value(row.run().company.companyCode)); }},
};

PostResult postTest(ImportRun& run) {
  PostingRow row(run);
  const PostingPlan<PostingRow> plan{.query = "select * from Posted", .columns = kColumns};
  return postResult(runPosting(row, plan));
}

constexpr std::string_view kOwnColumns[] = {"CODE"};

}  // namespace

WizardScreen::WizardScreen() {
  const std::string catalog(kCatalog);
  parameter = database->answer(catalog, "select * from parameter",
                               {.columns = {"farate1", "farate2", "centre", "Users", "Validation"},
                                .rows = {{Value(false), Value(false), Value(false), Value(false), Value(false)}}});
  fieldNames =
      database->answer(catalog, "Select * from UDfields",
                       {.columns = {"UDF1", "UDF2", "UDF3", "UDF11", "UDF15"},
                        .rows = {{Value("Asset tag"), Value(""), Value(), Value("Inspected on"), Value("Notes")}}});
  database->answer(catalog, "select * from UDValues",
                   {.columns = {"Assetid", "UDV1", "UDV2", "UDV3", "UDV11", "UDV15"},
                    .rows = {},
                    .types = {FieldType::kVarChar, FieldType::kVarChar, FieldType::kVarChar, FieldType::kVarChar,
                              FieldType::kDate, FieldType::kMemo}});
  database->answer(catalog, "Select MName from MisMaster", {.columns = {"MName"}, .rows = {{Value("Project")}}});
  postedRows =
      database->answer(catalog, "select * from Posted", {.columns = {"AssetId", "Remarks", "Cocd"}, .rows = {}});
  fakes.databases.add("SQLOLEDB.1", faulty);
  company.programFolder = "c:\\orva";
  fakes.files.addFolder("c:\\orva");
  company.isSqlServer = true;
  company.server = "BOOKS";
  company.authenticationKind = "WINNT";
  company.databaseReference = catalog;
  company.companyCode = "C01";
  company.companyName = "Meadow Mills";
  for (const ImportKindNames& names : importKindNames()) {
    const bool isCategory = names.id == ImportKindId::kChangeCategory;
    registry.push_back({.kind = names.id,
                        .ownColumns = isCategory ? std::span<const std::string_view>(kOwnColumns)
                                                 : std::span<const std::string_view>(),
                        .validate = validateTest,
                        .post = postTest});
  }
  screen.Load();
}

void WizardScreen::choose(ImportKindId kind, AssetMode mode) {
  screen.cmdSkip_Click();
  screen.optKind_Click(kind);
  screen.optMode_Click(mode);
}

void WizardScreen::putRows(const std::vector<std::vector<std::string>>& rows, const std::string& path) {
  fakes.workbooks.putTexts(path, "Asset", rows);
  screen.txtExcel.setText(path);
}

void WizardScreen::putCells(FakeSheet::Rows rows, const std::string& path) {
  fakes.workbooks.put(path, "Asset", std::move(rows));
  screen.txtExcel.setText(path);
}

void WizardScreen::putSales(const std::vector<std::string>& remarks) {
  std::vector<std::vector<std::string>> rows{{"ASSETID", "InvoiceNo", "SaleDate", "SaleAMT", "SerialNo", "Remarks"}};
  for (const std::string& remark : remarks) {
    rows.push_back({"A" + std::to_string(rows.size()), "7", "01/04/2005", "10", "1", remark});
  }
  putRows(rows);
}

void WizardScreen::validateSales(const std::vector<std::string>& remarks) {
  choose(ImportKindId::kSale);
  tick("Remarks");
  putSales(remarks);
  read();
}

int WizardScreen::lineOf(const std::string& excelName) const {
  for (int line = 0; line < screen.lstFields.count(); ++line) {
    if (screen.lstFields.line(line).cells[1] == excelName) return line;
  }
  ADD_FAILURE() << "no line " << excelName;
  return 0;
}

std::string WizardScreen::row(int row) const {
  std::string text;
  for (int column = 0; column < screen.grid1.columnCount(); ++column) {
    if (column > 0) text += '|';
    text += screen.grid1.text(row, column);
  }
  return text;
}

std::vector<std::string> WizardScreen::rows() const {
  std::vector<std::string> result;
  for (int index = 0; index < screen.grid1.rowCount(); ++index) result.push_back(row(index));
  return result;
}

std::vector<std::string> WizardScreen::posted() const {
  std::vector<std::string> result;
  for (const std::vector<Value>& row : postedRows->rows) result.push_back(row[0].toText());
  return result;
}

}  // namespace orva
