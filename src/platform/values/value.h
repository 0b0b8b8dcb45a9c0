#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "platform/values/currency.h"
#include "platform/values/date.h"

namespace orva {

/// One field of a database row: null, Boolean, integer, double, currency, date
/// or text (UTF-8).
class Value {
 public:
  using Storage = std::variant<std::monostate, bool, std::int64_t, double, Currency, Date, std::string>;

  Value() = default;
  Value(bool value) : storage_(value) {}
  Value(int value) : storage_(std::int64_t{value}) {}
  Value(std::int64_t value) : storage_(value) {}
  Value(double value) : storage_(value) {}
  Value(Currency value) : storage_(value) {}
  Value(Date value) : storage_(value) {}
  Value(std::string value) : storage_(std::move(value)) {}
  Value(std::string_view value) : storage_(std::string(value)) {}
  Value(const char* value) : storage_(std::string(value)) {}

  bool isNull() const { return std::holds_alternative<std::monostate>(storage_); }
  const Storage& storage() const { return storage_; }

  /// Text form for people: null is empty, dates day/month/year, numbers
  /// without trailing zeros, Booleans "True" and "False".
  std::string toText() const;

  /// True for Boolean true, any number but zero, and the text "true" in any
  /// case; null is false.
  bool toBoolean() const;
  /// The integer part of a number or of a text that is one; otherwise nothing.
  std::optional<std::int64_t> toInteger() const;
  /// Number or numeric text as money; otherwise nothing.
  std::optional<Currency> toCurrency() const;
  /// A date, a day number, or text in day/month/year; otherwise nothing.
  std::optional<Date> toDate() const;

  bool operator==(const Value&) const = default;

 private:
  Storage storage_;
};

/// A null copied into text is empty; everything else is `toText`.
std::string nullToText(const Value& value);

}  // namespace orva
