#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/database.h"
#include "startup/dialect.h"

namespace orva {

/// A query of both dialects with placeholders in braces. `{upper}`, `{substring}`, `{true}`, `{false}`
/// and `{integer}` (the opening text of the conversion) come from the dialect; `{#name}` is
/// a date literal; any other `{name}` is text, with its quotes doubled, inside the quotes that the query carries.
struct Query {
  std::string_view access;
  /// The server's form where it differs; empty when `access` serves both.
  std::string_view sqlServer = {};

  bool empty() const { return access.empty(); }
  std::string_view text(const DialectTokens& dialect) const;
};

/// Where a query's placeholders find their values.
class QueryArguments {
 public:
  QueryArguments() = default;
  QueryArguments(const QueryArguments&) = delete;
  QueryArguments& operator=(const QueryArguments&) = delete;
  virtual ~QueryArguments() = default;

  virtual std::string textArgument(std::string_view name) const = 0;
  /// Nothing when the row has no such date.
  virtual std::optional<Date> dateArgument(std::string_view name) const = 0;
};

/// The SQL text of a query with its arguments in place.
std::string composeQuery(const Query& query, const DialectTokens& dialect, const QueryArguments& arguments);

}  // namespace orva
