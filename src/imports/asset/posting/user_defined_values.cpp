#include "imports/asset/posting/user_defined_values.h"

#include <algorithm>

#include "platform/values/text.h"

namespace orva {

UserDefinedValues::UserDefinedValues(const RowView& row) {
  constexpr int kFields = 15;
  for (int number = 1; number <= kFields; ++number) {
    std::string column = "UDV" + std::to_string(number);
    if (row.hasColumn(column)) columns_.push_back(std::move(column));
  }
}

void UserDefinedValues::write(const PostingRow& row, std::string_view identifier) {
  const auto isFilled = [&row](const std::string& column) { return !trim(row.cell(column)).empty(); };
  if (std::none_of(columns_.begin(), columns_.end(), isFilled)) return;
  if (!values_) {
    values_ = row.run().connection().open("Select * from udvalues", CursorKind::kKeyset, LockKind::kPessimistic);
  }
  values_->filter("Assetid='" + sqlEscape(identifier) + "'");
  try {
    if (values_->eof()) {
      values_->addNew();
      values_->set("Assetid", identifier);
    }
    for (const std::string& column : columns_) {
      if (isFilled(column)) values_->set(column, row.cell(column));
    }
    values_->update();
  } catch (const ProviderError&) {
    values_->cancel();
    throw;
  }
}

}  // namespace orva
