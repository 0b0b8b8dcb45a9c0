#pragma once

#include <memory>
#include <string>
#include <vector>

#include "imports/asset/company_fixture.h"

namespace orva {

/// What the lines above a listed case say about it.
struct ImportSetting {
  /// Takes a line of a setting; false when it is a case:
  ///   == KIND WORDS     begins a setting: modes, ticks and flags of the company
  ///   good: CELLS       the row that cases change, or the name of one; of several modes, one each in their order
  ///   books: STATEMENT  what the company holds
  bool read(const std::string& line);

  std::unique_ptr<AssetCompany> company(SqlDialect dialect, std::size_t mode = 0) const;
  /// The rows of a case: cells joined by " | ", rows by " || ".
  std::vector<SheetRow> rows(const std::string& line, std::size_t mode = 0) const;

  Selection selection;
  ParameterFlags flags{.automaticIdentifiers = true};
  std::vector<AssetMode> modes;
  std::vector<SheetRow> good;
  std::vector<std::string> books;
};

}  // namespace orva
