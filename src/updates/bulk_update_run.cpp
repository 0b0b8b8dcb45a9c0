#include "updates/bulk_update_run.h"

#include <stdexcept>
#include <utility>

#include "platform/values/text.h"

namespace orva {
namespace {

constexpr std::string_view kIdColumn = "Assetid";

int columnNamed(const Sheet& sheet, std::string_view name) {
  for (int column = 0; column < sheet.columnCount(); ++column) {
    if (equalsNoCase(trimSpace(sheet.text(0, column)), name)) return column;
  }
  throw std::runtime_error("The sheet 'Asset' has no column '" + std::string(name) + "'.");
}

/// What the row's record cannot hold (a text that is no date, no number or too long) becomes the row's error.
/// A method that is too long is left to its check.
std::string store(Recordset& errors, std::string_view field, const std::string& text) {
  if (text.empty()) return {};
  try {
    errors.set(field, text);
    return {};
  } catch (const ProviderError& error) {
    return error.number() == provider_number::kTypeMismatch ? error.description() : std::string();
  }
}

constexpr std::size_t kDescriptionSize = 100;

void describe(Recordset& errors, const std::string& text) {
  errors.set("ErrorCode", "E");
  errors.set("ErrorDesc", text.substr(0, kDescriptionSize));
}

}  // namespace

BulkUpdateRun::BulkUpdateRun(const BulkUpdate& update, Connection& connection, std::function<bool()> rowDone)
    : update_(update), connection_(connection), rowDone_(std::move(rowDone)) {}

std::string BulkUpdateRun::tableQuery() const { return "Select * from " + std::string(update_.errorTable); }

BulkUpdateRun::Positions BulkUpdateRun::positionsIn(const Sheet& sheet) const {
  Positions positions{.assetId = columnNamed(sheet, kIdColumn), .columns = {}};
  for (std::string_view name : update_.columns) positions.columns.push_back(columnNamed(sheet, name));
  return positions;
}

std::optional<int> BulkUpdateRun::check(const Sheet& sheet) {
  const Positions positions = positionsIn(sheet);
  const auto assets = connection_.open("Select * from Asset", CursorKind::kKeyset, LockKind::kPessimistic);
  connection_.execute("delete from " + std::string(update_.errorTable));
  const auto errors = connection_.open(tableQuery(), CursorKind::kKeyset, LockKind::kPessimistic);
  int count = 0;
  for (int index = 1; index < sheet.rowCount(); ++index) {
    UpdateRow row{.assetId = std::string(trim(sheet.text(index, positions.assetId))), .asset = *assets};
    for (int column : positions.columns) row.cells.emplace_back(trim(sheet.text(index, column)));
    count += checkRow(row, *errors);
    if (!rowDone_()) return std::nullopt;
  }
  return count;
}

int BulkUpdateRun::checkRow(UpdateRow& row, Recordset& errors) const {
  errors.addNew();
  int count = 0;
  const auto fail = [&](const std::string& text) {
    describe(errors, text);
    ++count;
  };
  errors.set("ErrorCode", "");
  if (!row.assetId.empty()) store(errors, "AssetId", row.assetId);
  for (std::size_t column = 0; column < update_.columns.size(); ++column) {
    const std::string fault = store(errors, update_.columns[column], row.cells[column]);
    if (!fault.empty()) fail(fault);
  }
  row.asset.filter("Assetid=" + sqlQuote(row.assetId));
  if (row.assetId.empty()) {
    fail("Assetid is blank and cannot be converted.");
  } else if (row.asset.eof()) {
    fail("Asset Id : " + row.assetId + " does not exist in ORVA.");
  } else if (count == 0) {
    for (const UpdateCheck& check : update_.checks) {
      if (check.fails(row)) fail(std::string(check.text));
    }
  }
  errors.update();
  return count;
}

int BulkUpdateRun::apply() {
  const auto assets = connection_.open("Select * from Asset", CursorKind::kKeyset, LockKind::kPessimistic);
  const auto errors = connection_.open(tableQuery());
  int count = 0;
  for (; !errors->eof(); errors->moveNext()) {
    assets->filter("Assetid=" + sqlQuote(nullToText(errors->get("AssetId"))));
    if (assets->eof()) continue;
    update_.apply(*assets, *errors);
    assets->update();
    ++count;
    rowDone_();
  }
  return count;
}

std::vector<std::string> BulkUpdateRun::errorFileLines() {
  const auto errors = connection_.open(tableQuery());
  const std::vector<FieldInfo> fields = errors->fields();
  std::vector<std::string> lines(1);
  for (const FieldInfo& field : fields) {
    if (&field != &fields.front()) lines[0] += '\t';
    lines[0] += field.name;
  }
  for (; !errors->eof(); errors->moveNext()) {
    std::string line;
    for (const FieldInfo& field : fields) {
      if (&field != &fields.front()) line += '\t';
      line += nullToText(errors->get(field.name));
    }
    lines.push_back(std::move(line));
  }
  return lines;
}

}  // namespace orva
