#include "platform/access/schema_rules.h"

#include <algorithm>

#include "platform/access/row.h"
#include "platform/access/text_cell.h"

namespace orva::access {
namespace {

struct TypeLength {
  ColumnType type;
  std::uint16_t bytes;
};
/// The types that can be made, with the bytes of a value; 0 where the size is given or none.
constexpr TypeLength kTypeLengths[] = {
    {ColumnType::kBoolean, 1},  {ColumnType::kByte, 1},   {ColumnType::kInteger, 2}, {ColumnType::kLong, 4},
    {ColumnType::kCurrency, 8}, {ColumnType::kSingle, 4}, {ColumnType::kDouble, 8},  {ColumnType::kDate, 8},
    {ColumnType::kBinary, 0},   {ColumnType::kText, 0},   {ColumnType::kOle, 0},     {ColumnType::kMemo, 0},
    {ColumnType::kGuid, 16},
};

[[noreturn]] void refuse(const std::string& text) { throw AccessFileError(provider_number::kSyntaxOrExists, text); }

}  // namespace

void requireName(std::string_view name, const char* what) {
  const std::u16string text = toUtf16(name);
  const std::string shown = std::string(what) + " name '" + std::string(name) + "'";
  if (text.empty() || text.size() > kMaximumName) refuse("The " + shown + " must have 1 to 64 characters.");
  const bool hasForbidden = std::any_of(text.begin(), text.end(), [](char16_t c) {
    return c < 0x20 || c == u'.' || c == u'!' || c == u'`' || c == u'[' || c == u']';
  });
  if (hasForbidden || text.front() == u' ') refuse("The " + shown + " has a character that names cannot have.");
  if (!textKey(text, false)) refuse("The " + shown + " has a character that this program cannot sort.");
}

void requireColumn(const NewColumn& column) {
  requireName(column.name, "column");
  const auto known = std::find_if(std::begin(kTypeLengths), std::end(kTypeLengths),
                                  [&column](const TypeLength& length) { return length.type == column.type; });
  if (known == std::end(kTypeLengths)) refuse("Column '" + column.name + "' has a type that cannot be made.");
  const int most = column.type == ColumnType::kText ? int{kMaximumText} : int{kMaximumBinary};
  const bool hasSize = column.type == ColumnType::kText || column.type == ColumnType::kBinary;
  if (hasSize && (column.size < 1 || column.size > most)) {
    refuse("Column '" + column.name + "' must have a size of 1 to " + std::to_string(most) + ".");
  }
  if (column.isAutoNumber && column.type != ColumnType::kLong && column.type != ColumnType::kGuid) {
    refuse("Column '" + column.name + "' cannot number its rows; only a long integer can.");
  }
}

void requireRowFits(const TableDefinition& definition) {
  if (definition.columns.size() > kMaximumColumns || definition.columnsEver > kMaximumColumns) {
    refuse("A table has at most 255 columns, those that were dropped included.");
  }
  if (encodedRowSize(definition, StoredCells(definition.columns.size())) > kMaximumRow) {
    refuse("The columns of the table are too long for one row (4,060 bytes).");
  }
}

void requireIndex(const Table& table, const NewIndex& index) {
  const TableDefinition& definition = table.definition();
  requireName(index.name, "index");
  if (definition.findIndex(index.name)) {
    refuse("Table '" + table.name() + "' already has an index '" + index.name + "'.");
  }
  if (index.isPrimary && definition.primaryKey()) refuse("Table '" + table.name() + "' already has a primary key.");
  if (definition.logicalIndexes.size() >= kMaximumIndexes) refuse("A table has at most 32 indexes.");
  if (index.columns.empty() || index.columns.size() > kMaximumIndexColumns) {
    refuse("Index '" + index.name + "' must have 1 to 10 columns.");
  }
  for (const NewIndex::Part& part : index.columns) {
    const auto column = definition.findColumn(part.column);
    if (!column) refuse("Table '" + table.name() + "' has no column '" + part.column + "'.");
    if (definition.columns[*column].type == ColumnType::kOle) {
      refuse("Column '" + part.column + "' holds objects and cannot have an index.");
    }
  }
}

std::uint16_t columnLength(const NewColumn& column) {
  if (column.type == ColumnType::kText) return static_cast<std::uint16_t>(2 * column.size);
  if (column.type == ColumnType::kBinary) return static_cast<std::uint16_t>(column.size);
  const auto known = std::find_if(std::begin(kTypeLengths), std::end(kTypeLengths),
                                  [&column](const TypeLength& length) { return length.type == column.type; });
  return known == std::end(kTypeLengths) ? std::uint16_t{0} : known->bytes;
}

bool isFixedType(ColumnType type) {
  return type != ColumnType::kText && type != ColumnType::kBinary && !isLongValue(type);
}

}  // namespace orva::access
