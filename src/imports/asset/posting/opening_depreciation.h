#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "wizard/posting_run.h"

namespace orva {

/// The opening entries of an asset that was taken over: one in each depreciation table of a book that the
/// company keeps, dated at the end of the asset's accounting year.
class OpeningDepreciation {
 public:
  explicit OpeningDepreciation(const ImportRun& run) : run_(run) {}

  /// Writes the entries from the fields of the asset's record, pending ones included. An entry of that date
  /// is changed in place. Throws `ProviderError`.
  void write(Recordset& asset, bool isNewAsset);

  /// What is added from here on belongs to the next row.
  void beginRow() { added_.clear(); }
  /// Removes the entries that the row added. Throws `ProviderError`.
  void takeBack();

 private:
  struct Added {
    std::size_t book;
    std::string identifier;
    Date closing;
  };

  void writeBook(std::size_t book, Recordset& asset, bool isNewAsset, Date closing);
  Recordset& table(std::size_t book);

  const ImportRun& run_;
  std::array<std::unique_ptr<Recordset>, 3> tables_;
  std::array<int, 3> entriesWritten_{};
  std::vector<Added> added_;
};

}  // namespace orva
