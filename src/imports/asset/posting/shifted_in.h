#pragma once

#include <memory>

#include "wizard/posting_run.h"

namespace orva {

/// The `Shift` entries of assets that came from elsewhere.
class ShiftedIn {
 public:
  explicit ShiftedIn(const ImportRun& run) : run_(run) {}

  /// Adds the entry of the stored asset of `row`. Throws `ProviderError`.
  void write(const PostingRow& row);

 private:
  const ImportRun& run_;
  std::unique_ptr<Recordset> entries_;
};

}  // namespace orva
