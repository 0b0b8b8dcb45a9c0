#include "platform/embedded/catalogue.h"

#include <algorithm>

#include "platform/values/text.h"

namespace orva::embedded {

int TableDef::find(std::string_view column) const {
  const auto found = std::find_if(columns.begin(), columns.end(),
                                  [column](const ColumnDef& def) { return equalsNoCase(def.name, column); });
  return found == columns.end() ? -1 : static_cast<int>(found - columns.begin());
}

const IndexDef* TableDef::findIndex(std::string_view index) const {
  const auto found = std::find_if(indexes.begin(), indexes.end(),
                                  [index](const IndexDef& def) { return equalsNoCase(def.name, index); });
  return found == indexes.end() ? nullptr : &*found;
}

bool TableDef::hasPrimaryKey() const {
  return std::any_of(indexes.begin(), indexes.end(), [](const IndexDef& def) { return def.primary; });
}

void Catalogue::add(TableDef table) {
  positions_[toLower(table.name)] = tables_.size();
  tables_.push_back(std::move(table));
}

TableDef* Catalogue::find(std::string_view table) {
  const auto found = positions_.find(toLower(table));
  return found == positions_.end() ? nullptr : &tables_[found->second];
}

const TableDef* Catalogue::find(std::string_view table) const {
  const auto found = positions_.find(toLower(table));
  return found == positions_.end() ? nullptr : &tables_[found->second];
}

const TableDef& Catalogue::get(std::string_view table) const {
  if (const TableDef* found = find(table)) return *found;
  throw ProviderError(provider_number::kNoSuchTable, "There is no table '" + std::string(table) + "'.");
}

FieldType fieldTypeOf(ColumnType type, bool server) {
  switch (type) {
    case ColumnType::kBoolean:
      return FieldType::kBoolean;
    case ColumnType::kInteger:
      return FieldType::kInteger;
    case ColumnType::kDouble:
      return FieldType::kDouble;
    case ColumnType::kCurrency:
      return FieldType::kCurrency;
    case ColumnType::kDate:
      return server ? FieldType::kTimestamp : FieldType::kDate;
    case ColumnType::kText:
      return FieldType::kVarChar;
    case ColumnType::kMemo:
      return FieldType::kMemo;
  }
  return FieldType::kOther;
}

}  // namespace orva::embedded
