#include "fakes/scripted_database.h"

#include <optional>

#include "platform/values/text.h"

namespace orva {
namespace {

class ScriptedRecordset : public Recordset {
 public:
  explicit ScriptedRecordset(std::shared_ptr<ScriptedTable> table) : table_(std::move(table)) {}

  bool eof() override { return at_ >= table_->rows.size(); }
  std::int64_t recordCount() override { return static_cast<std::int64_t>(table_->rows.size()); }
  void moveFirst() override { at_ = 0; }
  void moveNext() override { ++at_; }
  void requery() override { at_ = 0; }
  void filter(std::string_view criterion) override {
    if (!criterion.empty()) throw ProviderError(provider_number::kUnspecified, "A script has no filter.");
  }
  void addNew() override { pending_.emplace(table_->columns.size()); }
  void update() override {
    if (!pending_) return;
    table_->rows.push_back(*pending_);
    pending_.reset();
    at_ = table_->rows.size() - 1;
  }
  void cancel() override { pending_.reset(); }
  std::vector<FieldInfo> fields() const override {
    std::vector<FieldInfo> result;
    for (const std::string& column : table_->columns) {
      const FieldType type = result.size() < table_->types.size() ? table_->types[result.size()] : FieldType::kVarChar;
      result.push_back({column, type, type == FieldType::kVarChar ? 255 : 0});
    }
    return result;
  }
  Value get(std::string_view field) override { return row().at(column(field)); }
  void set(std::string_view field, const Value& value) override { row().at(column(field)) = value; }

 private:
  std::vector<Value>& row() {
    if (pending_) return *pending_;
    if (eof()) throw ProviderError(provider_number::kNoCurrentRecord, "There is no current record.");
    return table_->rows[at_];
  }
  std::size_t column(std::string_view field) const {
    for (std::size_t i = 0; i < table_->columns.size(); ++i) {
      if (equalsNoCase(table_->columns[i], field)) return i;
    }
    throw ProviderError(provider_number::kUnspecified, "No field '" + std::string(field) + "'.");
  }

  std::shared_ptr<ScriptedTable> table_;
  std::size_t at_ = 0;
  std::optional<std::vector<Value>> pending_;
};

class ScriptedConnection : public Connection {
 public:
  ScriptedConnection(std::shared_ptr<ScriptedDatabase::State> state, std::string catalog)
      : state_(std::move(state)), catalog_(std::move(catalog)) {}

  std::int64_t execute(std::string_view sql) override {
    state_->statements.push_back({catalog_, std::string(sql)});
    return 0;
  }
  std::unique_ptr<Recordset> open(std::string_view sql, CursorKind, LockKind) override {
    state_->statements.push_back({catalog_, std::string(sql)});
    const auto& answers = state_->catalogs[catalog_];
    const auto found = answers.find(std::string(sql));
    if (found == answers.end()) {
      throw ProviderError(provider_number::kNoSuchTable, "The script has no answer to: " + std::string(sql));
    }
    return std::make_unique<ScriptedRecordset>(found->second);
  }

 private:
  std::shared_ptr<ScriptedDatabase::State> state_;
  std::string catalog_;
};

}  // namespace

std::shared_ptr<ScriptedTable> ScriptedDatabase::answer(const std::string& catalog, const std::string& sql,
                                                        ScriptedTable table) {
  auto shared = std::make_shared<ScriptedTable>(std::move(table));
  state_->catalogs[catalog][sql] = shared;
  return shared;
}

std::unique_ptr<Connection> ScriptedDatabase::connect(const ConnectionClauses& clauses, CursorLocation) {
  connections.push_back(clauses);
  const std::string catalog = clauses.get("Initial Catalog");
  if (!state_->catalogs.contains(catalog)) {
    throw ProviderError(provider_number::kLoginFailed, "Cannot open database '" + catalog + "'.");
  }
  return std::make_unique<ScriptedConnection>(state_, catalog);
}

void ScriptedDatabase::create(const ConnectionClauses&) {
  throw ProviderError(provider_number::kUnspecified, "A server database is not made by this program.");
}

}  // namespace orva
