#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/database.h"

namespace orva {

/// Rows that a scripted query gives.
struct ScriptedTable {
  std::vector<std::string> columns;
  std::vector<std::vector<Value>> rows;
  /// Types of the first columns; the others are texts of 255 characters.
  std::vector<FieldType> types = {};
};

/// A server that knows only the answers it was given, and keeps a record of everything
/// that it was asked. A catalog exists once it was named in `answer` or `addCatalog`.
class ScriptedDatabase : public DatabaseAdapter {
 public:
  struct Statement {
    std::string catalog;
    std::string sql;
    bool operator==(const Statement&) const = default;
  };
  struct State {
    std::map<std::string, std::map<std::string, std::shared_ptr<ScriptedTable>>> catalogs;
    std::vector<Statement> statements;
  };

  void addCatalog(const std::string& catalog) { state_->catalogs[catalog]; }
  /// Records stored through a record set of `sql` are added to the returned table.
  std::shared_ptr<ScriptedTable> answer(const std::string& catalog, const std::string& sql, ScriptedTable table);

  /// Opens "Initial Catalog="; an unknown one fails (`kLoginFailed`).
  std::unique_ptr<Connection> connect(const ConnectionClauses& clauses, CursorLocation location) override;
  void create(const ConnectionClauses& clauses) override;
  std::vector<std::string> companionFiles(const std::string&) const override { return {}; }

  const std::vector<Statement>& statements() const { return state_->statements; }
  /// Clauses of every connection that was asked for, in order.
  std::vector<ConnectionClauses> connections;

 private:
  std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace orva
