#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/values/value.h"

namespace orva {

/// The database service: connections and record sets over whatever provider a
/// connection string names. Every failure is a `ProviderError`, thrown once by
/// the adapter; a failed call leaves the database as it was before the call.

/// Numbers that providers report, as signed 32-bit values.
namespace provider_number {
inline constexpr std::int32_t kSyntaxOrExists = static_cast<std::int32_t>(0x80040E14);
inline constexpr std::int32_t kErrorsOccurred = static_cast<std::int32_t>(0x80040E21);
inline constexpr std::int32_t kUnspecified = static_cast<std::int32_t>(0x80004005);
inline constexpr std::int32_t kNoSuchTable = static_cast<std::int32_t>(0x80040E37);
/// A value does not fit its column.
inline constexpr std::int32_t kDataOverflow = static_cast<std::int32_t>(0x80040E57);
/// A required column was left null, or another integrity rule was broken.
inline constexpr std::int32_t kIntegrity = static_cast<std::int32_t>(0x80040E2F);
/// Wrong database password or no permission to log in.
inline constexpr std::int32_t kLoginFailed = static_cast<std::int32_t>(0x80040E4D);
/// A value cannot be converted to the type of its column.
inline constexpr std::int32_t kTypeMismatch = static_cast<std::int32_t>(0x80040E07);
/// The connection or record set is closed, or there is no current record for
/// the operation (BOF or EOF is true).
inline constexpr std::int32_t kNoCurrentRecord = 3021;
inline constexpr std::int32_t kObjectClosed = 3704;
}  // namespace provider_number

/// A failure of the database, the connection or one statement: the provider's
/// number and a description fit for a message box. A duplicate key raises
/// `kUnspecified`.
class ProviderError : public std::runtime_error {
 public:
  ProviderError(std::int32_t number, const std::string& description)
      : std::runtime_error(description), number_(number) {}
  std::int32_t number() const { return number_; }
  std::string description() const { return what(); }

 private:
  std::int32_t number_;
};

enum class CursorLocation { kServer, kClient };
/// `kFirstRow`: only the first row is asked for, as it stands in the database now (the highest number given so far);
/// the set ends behind it.
enum class CursorKind { kForwardOnly, kKeyset, kStatic, kFirstRow };
enum class LockKind { kReadOnly, kPessimistic, kOptimistic };

/// Types of a column as providers number them (a few readers need the number).
enum class FieldType {
  kInteger = 3,
  kCurrency = 6,
  kDouble = 5,
  kDate = 7,
  kBoolean = 11,
  kTimestamp = 135,
  kVarChar = 202,
  kMemo = 203,
  kOther = 0
};

/// Name, type and defined size (characters; 0 where a type has none) of a field.
struct FieldInfo {
  std::string name;
  FieldType type = FieldType::kOther;
  int size = 0;
};

/// The rows of one query or table. Opened on the first row, if there is one.
/// Field names are found without regard to case. Reading a field at EOF or an
/// unknown field throws. A record set must not outlive its connection.
class Recordset {
 public:
  Recordset() = default;
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;
  virtual ~Recordset() = default;

  /// True when there is no current row (an empty set, or moved past the end).
  virtual bool eof() = 0;
  /// Number of rows under the current filter. May have to count them.
  virtual std::int64_t recordCount() = 0;
  virtual void moveFirst() = 0;
  virtual void moveNext() = 0;
  /// Runs the query again and stands on the first row; the filter stays.
  virtual void requery() = 0;
  /// Restricts the set to rows that satisfy `criterion`, written as the
  /// condition of a where clause ("Assetid='A1' and AcquiredAs <> 'O'"), and
  /// stands on the first of them. An empty criterion shows all rows again.
  virtual void filter(std::string_view criterion) = 0;

  /// Starts a new record; fields keep their defaults until set. Nothing is
  /// stored before `update`.
  virtual void addNew() = 0;
  /// Stores the fields set since `addNew` or since the last `update`. The
  /// stored row stays the current one. On failure nothing of the record is
  /// stored and the pending values stay until `cancel`.
  virtual void update() = 0;
  /// Drops pending values; the current row is the one before `addNew`.
  virtual void cancel() = 0;

  virtual std::vector<FieldInfo> fields() const = 0;
  /// Value of a field of the current (or pending) record.
  virtual Value get(std::string_view field) = 0;
  /// Sets a pending value. Text is converted to the column's type: dates are
  /// day/month/year, numbers with a point; text that cannot be converted
  /// throws `kTypeMismatch`, too long a text or too large a number
  /// `kDataOverflow`.
  virtual void set(std::string_view field, const Value& value) = 0;
};

/// Takes the texts of some columns of one row, nothing for a null. They stay where they are during the call only.
using TextVisitor = std::function<void(std::span<const std::optional<std::string_view>>)>;

/// One open connection. Statements are text in the connection's dialect.
class Connection {
 public:
  Connection() = default;
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  /// Closes; every finished statement and record stays stored.
  virtual ~Connection() = default;

  /// Runs one statement without a result set, whole or not at all. Returns the
  /// number of rows that it changed.
  virtual std::int64_t execute(std::string_view sql) = 0;
  virtual std::unique_ptr<Recordset> open(std::string_view sql, CursorKind cursor = CursorKind::kStatic,
                                          LockKind lock = LockKind::kReadOnly) = 0;
  /// Shows these columns of every row of a table: where the database is at hand, the fastest way to look at everything
  /// once. `visit` must not use the connection.
  virtual void walkTexts(std::string_view table, std::span<const std::string_view> columns, const TextVisitor& visit);

  /// See `LookupScope`. Scopes may be nested.
  virtual void beginLookups() {}
  virtual void endLookups() {}
  /// See `StoredTogether`. May be nested.
  virtual void beginTogether() {}
  /// Throws when what waited cannot be stored; the connection is of no more use then.
  virtual void endTogether() {}
};

/// Look-ups that belong together: while a scope lives, a question that was asked in it may get the answer that it got
/// then, as long as nothing was changed through the connection. Where each question is a trip to a server this saves
/// most of them; a database at hand knows of every change and needs no scope. `CursorKind::kFirstRow` is never answered
/// so by a server.
class LookupScope {
 public:
  explicit LookupScope(Connection& connection) : connection_(connection) { connection_.beginLookups(); }
  LookupScope(const LookupScope&) = delete;
  LookupScope& operator=(const LookupScope&) = delete;
  ~LookupScope() { connection_.endLookups(); }

 private:
  Connection& connection_;
};

/// Statements and records that may reach the file together, which is cheaper than one after the other. Each is whole or
/// without effect as always; the end of the program may take those away that have not reached the file, the last first.
/// A hint: a database may store each at once.
class StoredTogether {
 public:
  explicit StoredTogether(Connection& connection) : connection_(&connection) { connection.beginTogether(); }
  StoredTogether(const StoredTogether&) = delete;
  StoredTogether& operator=(const StoredTogether&) = delete;
  ~StoredTogether() {
    try {
      end();
    } catch (...) {
      // The next statement tells that nothing can be stored any more.
      connection_ = nullptr;
    }
  }

  /// Returns when everything so far is stored.
  void end() {
    if (Connection* const connection = std::exchange(connection_, nullptr)) connection->endTogether();
  }

 private:
  Connection* connection_;
};

/// The clauses of a connection string, names compared without regard to case:
/// "Provider=...;Data Source=...;". Values may stand in quotes; blanks around
/// names and values do not count.
class ConnectionClauses {
 public:
  explicit ConnectionClauses(std::string_view connectionString);
  /// Value of a clause; nothing when it is absent.
  std::optional<std::string> find(std::string_view name) const;
  std::string get(std::string_view name) const { return find(name).value_or(std::string()); }

 private:
  std::vector<std::pair<std::string, std::string>> clauses_;
};

/// One kind of provider.
class DatabaseAdapter {
 public:
  DatabaseAdapter() = default;
  DatabaseAdapter(const DatabaseAdapter&) = delete;
  DatabaseAdapter& operator=(const DatabaseAdapter&) = delete;
  virtual ~DatabaseAdapter() = default;

  /// Opens the database that the clauses name. Throws `ProviderError`: no such
  /// file or catalog, not a database, wrong password, locked. Creates nothing.
  virtual std::unique_ptr<Connection> connect(const ConnectionClauses& clauses, CursorLocation location) = 0;
  /// Makes a new, empty database with the given password. Fails when the file
  /// exists already. Only file databases can do this.
  virtual void create(const ConnectionClauses& clauses) = 0;
  /// Files beside a database file that belong to it (journals); they must go
  /// when the file is deleted, and must not be there when it is made anew.
  virtual std::vector<std::string> companionFiles(const std::string& databaseFile) const = 0;
};

/// Maps the "Provider=" of a connection string to its adapter.
class DatabaseRegistry {
 public:
  /// `provider` is compared without regard to case, version suffix included
  /// ("Microsoft.Jet.OLEDB.4.0", "SQLOLEDB.1").
  void add(std::string_view provider, std::shared_ptr<DatabaseAdapter> adapter);
  /// Throws `ProviderError` (kUnspecified) when no adapter has the provider.
  std::unique_ptr<Connection> connect(std::string_view connectionString,
                                      CursorLocation location = CursorLocation::kClient) const;
  void create(std::string_view connectionString) const;
  std::vector<std::string> companionFiles(std::string_view provider, const std::string& databaseFile) const;

 private:
  DatabaseAdapter& adapterFor(std::string_view provider) const;

  std::map<std::string, std::shared_ptr<DatabaseAdapter>> adapters_;
};

}  // namespace orva
