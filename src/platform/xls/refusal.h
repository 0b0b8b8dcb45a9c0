#pragma once

#include <exception>
#include <string>
#include <utility>

#include "platform/workbook.h"

namespace orva::xls {

/// Why the bytes are no workbook that can be read. `reason()` is the rest of a
/// sentence that begins with the file's name ("is empty.", "needs a password ...").
class Refusal : public std::exception {
 public:
  Refusal(WorkbookFault fault, std::string reason) : fault_(fault), reason_(std::move(reason)) {}
  WorkbookFault fault() const { return fault_; }
  const std::string& reason() const { return reason_; }
  const char* what() const noexcept override { return reason_.c_str(); }

 private:
  WorkbookFault fault_;
  std::string reason_;
};

/// The refusal of a file that is cut off or contradicts itself; `detail` tells where.
inline Refusal damaged(const std::string& detail) {
  return {WorkbookFault::kDamaged, "is damaged or incomplete (" + detail + ")."};
}

}  // namespace orva::xls
