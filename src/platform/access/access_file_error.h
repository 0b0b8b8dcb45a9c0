#pragma once

#include <cstdint>
#include <string>

#include "platform/access/format.h"
#include "platform/database.h"

namespace orva::access {

/// A file that cannot be opened, is damaged, or refuses a change. The text
/// names the file and, where one is known, the page.
class AccessFileError : public ProviderError {
 public:
  static constexpr PageNumber kNoPage = 0xFFFFFFFF;

  AccessFileError(std::int32_t number, const std::string& description, PageNumber page = kNoPage)
      : ProviderError(number, description), page_(page) {}
  /// The page with the fault, or `kNoPage`.
  PageNumber page() const { return page_; }

 private:
  PageNumber page_;
};

/// Bytes that contradict the format, found by code that does not know where
/// they came from. The page file turns it into an `AccessFileError`.
class Damage : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

inline void require(bool holds, const char* fault) {
  if (!holds) throw Damage(fault);
}

}  // namespace orva::access
