#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "fakes/temporary_folder.h"
#include "platform/embedded/embedded_adapter.h"

namespace orva::test {

/// A dialect and what its databases are kept in.
struct Engine {
  SqlDialect dialect = SqlDialect::kAccess;
  CompanyFileKind kind = CompanyFileKind::kAccess;
};
inline constexpr Engine kAccessFile{};
inline constexpr Engine kSqliteFile{SqlDialect::kAccess, CompanyFileKind::kSqlite};
inline constexpr Engine kServer{SqlDialect::kSqlServer, CompanyFileKind::kSqlite};
/// The name of a test that runs on several engines.
inline constexpr auto kEngineName = [](const auto& tested) {
  if (tested.param.dialect == SqlDialect::kSqlServer) return "Server";
  return tested.param.kind == CompanyFileKind::kAccess ? "Access" : "Sqlite";
};
inline constexpr Engine kAccessEngines[] = {kAccessFile, kSqliteFile};
inline constexpr Engine kEngines[] = {kAccessFile, kSqliteFile, kServer};

/// A folder of its own with one new company database.
class CompanyFile {
 public:
  explicit CompanyFile(Engine engine = kAccessFile);
  CompanyFile(const CompanyFile&) = delete;
  CompanyFile& operator=(const CompanyFile&) = delete;
  ~CompanyFile();

  Connection& operator*() { return *connection_; }
  Connection* operator->() { return connection_.get(); }
  std::filesystem::path folder() const { return folder_.path(); }
  std::filesystem::path file() const { return folder() / "demoOrva.mdb"; }
  EmbeddedAdapter& adapter() { return adapter_; }
  SqlDialect dialect() const { return dialect_; }
  /// One more connection to the same file.
  std::unique_ptr<Connection> connect(const std::string& password = "Tbnq");
  void close() { connection_.reset(); }
  void reopen() { connection_ = connect(); }

  /// Runs statements that must succeed, separated by ";".
  void run(std::string_view statements);
  /// Rows of a query: fields joined by "|", rows by "/"; null shows as "~".
  std::string rows(std::string_view sql);
  /// What a statement gives: the rows of a query, "n rows" of a change, or the
  /// provider's number of its failure, such as "80040E14".
  std::string outcome(std::string_view sql);

 private:
  SqlDialect dialect_;
  TemporaryFolder folder_;
  EmbeddedAdapter adapter_;
  std::unique_ptr<Connection> connection_;
};

/// The rows of a record set from its current row on, as `rows` shows them.
std::string rowsOf(Recordset& set);

std::string numberText(std::int32_t number);

/// The number of the failure of `action` as eight hexadecimal digits, or "none".
template <typename Action>
std::string failureOf(Action action) {
  try {
    action();
    return "none";
  } catch (const ProviderError& error) {
    return numberText(error.number());
  }
}

}  // namespace orva::test
