#include "updates/bulk_update_run.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "platform/values/text.h"
#include "wizard/header_check.h"
#include "wizard/staging.h"

namespace orva {
namespace {

constexpr std::string_view kIdColumn = "Assetid";
constexpr std::size_t kDescriptionSize = 100;

int columnNamed(const std::vector<std::string>& names, std::string_view name) {
  const int column = headerColumn(names, name);
  if (column < 0) throw std::runtime_error("The sheet 'Asset' has no column '" + std::string(name) + "'.");
  return column;
}

std::string noValueText(std::string_view text, std::string_view field) {
  return "'" + std::string(text) + "' is no value for the field '" + std::string(field) + "'.";
}

bool isTextField(const Recordset& errors, std::string_view name) {
  const std::vector<FieldInfo> fields = errors.fields();
  const auto field =
      std::find_if(fields.begin(), fields.end(), [&](const FieldInfo& each) { return equalsNoCase(each.name, name); });
  return field != fields.end() && (field->type == FieldType::kVarChar || field->type == FieldType::kMemo);
}

/// What the field cannot hold is told by its description. A text that is too long names no asset and no method, which
/// the checks report; a number or a date that is too large is told like one that is none, or it would count as blank.
std::string store(Recordset& errors, std::string_view field, const std::string& text) {
  try {
    errors.set(field, text);
  } catch (const ProviderError& error) {
    const bool isOverflow = error.number() == provider_number::kDataOverflow;
    if (!isOverflow && error.number() != provider_number::kTypeMismatch) throw;
    if (!isOverflow || !isTextField(errors, field)) return error.description();
  }
  return {};
}

/// The description as the error table can hold it.
std::string firstCharacters(const std::string& text, std::size_t most) {
  std::size_t end = 0;
  for (std::size_t characters = 0; end < text.size(); ++end) {
    const bool isFirstByte = (static_cast<unsigned char>(text[end]) & 0xC0) != 0x80;
    if (isFirstByte && characters++ == most) break;
  }
  return text.substr(0, end);
}

void describe(Recordset& errors, const std::string& text) {
  errors.set("ErrorCode", "E");
  errors.set("ErrorDesc", firstCharacters(text, kDescriptionSize));
}

std::string joinedWithTabs(const std::vector<std::string>& cells) {
  std::string line;
  for (const std::string& cell : cells) {
    if (&cell != &cells.front()) line += '\t';
    line += cell;
  }
  return line;
}

void findAsset(Recordset& assets, const std::string& id) { assets.filter("Assetid=" + sqlQuote(id)); }

}  // namespace

BulkUpdateRun::BulkUpdateRun(const BulkUpdate& update, CompanyContext& company, std::function<bool()> rowDone)
    : update_(update), company_(company), connection_(*company.connection), rowDone_(std::move(rowDone)) {}

BulkUpdateRun::Positions BulkUpdateRun::positionsIn(const Sheet& sheet) const {
  const std::vector<std::string> names = headerNames(sheet);
  Positions positions{.assetId = columnNamed(names, kIdColumn), .columns = {}};
  for (const UpdateColumn& column : update_.columns) positions.columns.push_back(columnNamed(names, column.name));
  return positions;
}

std::optional<int> BulkUpdateRun::check(const Sheet& sheet) {
  const std::string table(update_.errorTable);
  const auto assets = connection_.open("Select * from Asset", CursorKind::kKeyset, LockKind::kPessimistic);
  connection_.execute("delete from " + table);
  const auto errors = connection_.open("Select * from " + table, CursorKind::kKeyset, LockKind::kPessimistic);
  for (const FieldInfo& field : errors->fields()) fieldNames_.push_back(field.name);
  const Positions positions = positionsIn(sheet);
  int count = 0;
  const int last = filledRows(sheet, 1);
  for (int index = 1; index <= last; ++index) {
    std::vector<std::string> texts{sheet.text(index, positions.assetId)};
    for (const int column : positions.columns) texts.push_back(sheet.text(index, column));
    count += checkRow(texts, {.assets = *assets, .errors = *errors});
    if (!rowDone_()) return std::nullopt;
  }
  return count;
}

/// Stores a value like `store`. A server keeps fewer dates than a date field takes, and would end the run with the row.
std::string BulkUpdateRun::storeValue(Recordset& errors, std::string_view field, const std::string& text) const {
  std::string fault = store(errors, field, text);
  if (!fault.empty() || !company_.isSqlServer) return fault;
  const Value value = errors.get(field);
  const auto* date = std::get_if<Date>(&value.storage());
  if (!date || isInDatabaseRange(*date)) return fault;
  errors.set(field, Value());
  return noValueText(text, field);
}

/// Stores the texts in their fields and reads the values back. Returns the number of texts that are none.
int BulkUpdateRun::recordValues(const std::vector<std::string>& texts, UpdateRow& row, Recordset& errors) const {
  int count = 0;
  for (std::size_t index = 0; index < update_.columns.size(); ++index) {
    const UpdateColumn& column = update_.columns[index];
    const std::string& text = texts[index + 1];
    if (!text.empty() || !column.mayBeBlank) {
      const std::string fault = storeValue(errors, column.name, text);
      if (!fault.empty()) {
        describe(errors, fault);
        ++count;
      }
    }
    row.values.push_back(errors.get(column.name));
  }
  return count;
}

int BulkUpdateRun::checkRow(const std::vector<std::string>& texts, Tables tables) {
  auto& [assets, errors] = tables;
  UpdateRow row{.assetId = std::string(trim(texts[0])), .values = {}};
  errors.addNew();
  errors.set("ErrorCode", "");
  if (!row.assetId.empty()) store(errors, "AssetId", row.assetId);
  int count = recordValues(texts, row, errors);
  const auto fail = [&, &errors = errors](const std::string& text) {
    describe(errors, text);
    ++count;
  };
  findAsset(assets, row.assetId);
  if (row.assetId.empty()) {
    fail(noValueText("", "AssetId"));
  } else if (assets.eof()) {
    fail("Asset Id : " + row.assetId + " does not exist in ORVA.");
  } else {
    for (const UpdateCheck& check : update_.checks) {
      if (check.fails(row, assets)) fail(std::string(check.text));
    }
  }
  std::vector<std::string> cells;
  for (const std::string& field : fieldNames_) cells.push_back(nullToText(errors.get(field)));
  errors.update();
  rows_.push_back({std::move(row), std::move(cells)});
  return count;
}

void BulkUpdateRun::apply() {
  const auto assets = connection_.open("Select * from Asset", CursorKind::kKeyset, LockKind::kPessimistic);
  for (const Recorded& recorded : rows_) {
    findAsset(*assets, recorded.row.assetId);
    if (assets->eof()) continue;
    update_.apply(*assets, recorded.row);
    assets->update();
    ++updatedCount_;
    rowDone_();
  }
}

std::vector<std::string> BulkUpdateRun::errorFileLines() const {
  std::vector<std::string> lines{joinedWithTabs(fieldNames_)};
  for (const Recorded& recorded : rows_) lines.push_back(joinedWithTabs(recorded.cells));
  return lines;
}

}  // namespace orva
