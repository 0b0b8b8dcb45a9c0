#pragma once

#include <cstdint>
#include <utility>

#include "platform/odbc/driver_manager.h"

namespace orva::odbc {

/// A number as the driver manager takes the value of an attribute.
// NOLINTNEXTLINE(performance-no-int-to-ptr): that is its interface.
inline SQLPOINTER attributeValue(std::uintptr_t value) { return reinterpret_cast<SQLPOINTER>(value); }

/// Owner of one handle of the driver manager.
template <SQLSMALLINT type>
class Handle {
 public:
  Handle() = default;
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  Handle& operator=(Handle&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~Handle() {
    if (handle_) SQLFreeHandle(type, handle_);
  }

  /// False when the driver manager gives none.
  bool allocate(SQLHANDLE parent) { return SQL_SUCCEEDED(SQLAllocHandle(type, parent, &handle_)); }
  SQLHANDLE get() const { return handle_; }

 private:
  SQLHANDLE handle_ = nullptr;
};

using EnvironmentHandle = Handle<SQL_HANDLE_ENV>;
using ConnectionHandle = Handle<SQL_HANDLE_DBC>;
using StatementHandle = Handle<SQL_HANDLE_STMT>;

}  // namespace orva::odbc
