#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "wizard/posting_run.h"

namespace orva {

/// The user-defined fields of posted assets: one `UDValues` row an asset, for sheets that carry such columns.
class UserDefinedValues {
 public:
  explicit UserDefinedValues(const RowView& row);

  /// Stores the filled user-defined cells of `row` for the asset; blank cells leave what is stored. Throws
  /// `ProviderError`.
  void write(const PostingRow& row, std::string_view identifier);

 private:
  std::vector<std::string> columns_;
  std::unique_ptr<Recordset> values_;
};

}  // namespace orva
