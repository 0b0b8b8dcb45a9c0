#include "platform/odbc/column.h"

#include <utility>

#include "platform/values/text.h"

namespace orva::odbc {

void ColumnList::add(Column column) {
  places_.try_emplace(toUpper(column.definition.name), count());
  columns_.push_back(std::move(column));
}

int ColumnList::find(std::string_view name) const {
  const auto found = places_.find(toUpper(name));
  return found == places_.end() ? -1 : found->second;
}

}  // namespace orva::odbc
