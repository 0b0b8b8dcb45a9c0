#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <string_view>

#include "platform/database.h"
#include "platform/embedded/sql/types.h"

namespace orva::embedded {

struct StatementCloser {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using StatementHandle = std::unique_ptr<sqlite3_stmt, StatementCloser>;

struct DatabaseCloser {
  void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
using DatabaseHandle = std::unique_ptr<sqlite3, DatabaseCloser>;

/// The `ProviderError` that stands for the call on `database` that failed last.
ProviderError engineError(sqlite3* database, int code);
[[noreturn]] void throwEngineError(sqlite3* database, int code);

StatementHandle prepare(sqlite3* database, std::string_view sql);
/// Runs statements without parameters.
void run(sqlite3* database, const std::string& sql);

/// Binds the stored form of a value: currency as ten-thousandths, a date as
/// its day number, a Boolean as 0 or 1. With `keep` the text stays the caller's.
void bindValue(sqlite3_stmt* statement, int at, const Value& value, bool keep = false);
void bindText(sqlite3_stmt* statement, int at, std::string_view text, bool keep = false);

/// A result column as a value of the given type.
Value readColumn(sqlite3_stmt* statement, int at, sql::SqlType type);

/// `name` as an SQLite identifier.
std::string quoteName(std::string_view name);

/// Text of an error that a function of ours raises inside a statement, so that
/// `throwEngineError` finds the provider's number again.
std::string taggedError(const ProviderError& error);

}  // namespace orva::embedded
