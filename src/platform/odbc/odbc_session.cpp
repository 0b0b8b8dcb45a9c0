#include "platform/odbc/odbc_session.h"

#include <array>
#include <utility>

#include "platform/odbc/odbc_row_set.h"
#include "platform/odbc/utf16.h"
#include "platform/values/text.h"

namespace orva::odbc {
namespace {

/// Prepared statements that are kept; a run uses some dozens again and again.
constexpr std::size_t kMostStatements = 300;

/// Texts that differ in the types of their arguments are different statements.
std::string keyOf(const BoundText& text) {
  std::string key = text.sql;
  for (const Argument& argument : text.arguments) key += static_cast<char>(argument.wire.type);
  return key;
}

}  // namespace

OdbcSession::OdbcSession(const std::string& connectionText, const TimeLimits& limits) : link_(connectionText, limits) {
  // Dates in statements are month/day/year whatever language the login has.
  execute("set dateformat mdy");
}

OdbcSession::~OdbcSession() {
  for (OdbcRowSet* set : open_) set->close();
}

void OdbcSession::takeOver(OdbcRowSet* next) {
  OdbcRowSet* const before = std::exchange(running_, next);
  if (before && before != next) before->putAside();
}

void OdbcSession::leave(OdbcRowSet* set) {
  if (running_ == set) running_ = nullptr;
  open_.erase(set);
}

std::shared_ptr<Statement> OdbcSession::prepared(const BoundText& text) {
  if (statements_.size() >= kMostStatements) statements_.clear();
  std::shared_ptr<Statement>& statement = statements_[keyOf(text)];
  if (!statement) statement = std::make_shared<Statement>(link_, text.sql);
  return statement;
}

std::shared_ptr<Statement> OdbcSession::query(const BoundText& text) {
  takeOver(nullptr);
  link_.checkAlive();
  auto statement = prepared(text);
  statement->run(text.arguments);
  return statement;
}

std::int64_t OdbcSession::change(const BoundText& text) {
  answers_.forgetAll();
  const auto statement = query(text);
  if (!statement->givesRows()) return statement->changedRows();
  statement->close();
  return 0;
}

std::int64_t OdbcSession::execute(std::string_view sql) {
  if (!mayChangeLayout(sql)) return change(lifted(sql));
  forgetLayouts();
  takeOver(nullptr);
  link_.checkAlive();
  Statement statement(link_, lifted(sql).sql);
  statement.run({});
  const std::int64_t rows = statement.givesRows() ? 0 : statement.changedRows();
  statement.close();
  return rows;
}

std::unique_ptr<Recordset> OdbcSession::open(std::string_view sql, CursorKind cursor, LockKind lock) {
  return std::make_unique<OdbcRowSet>(*this, sql, cursor, lock);
}

void OdbcSession::forgetLayouts() {
  takeOver(nullptr);
  layouts_.clear();
  statements_.clear();
  answers_.forgetAll();
}

std::shared_ptr<const TableLayout> OdbcSession::layoutOf(const QueryShape& shape) {
  const std::string text = shape.where("1=0");
  if (const auto found = layouts_.find(text); found != layouts_.end()) return found->second;
  auto layout = std::make_shared<TableLayout>();
  {
    const auto statement = query({text});
    layout->columns = statement->columns();
    Row none;
    while (statement->fetch(none)) {
    }
  }
  for (const std::string& column : primaryKeyOf(shape.tableName())) {
    const int place = layout->columns->find(column);
    if (place >= 0) layout->key.push_back(place);
    layout->hasPrimaryKey = place >= 0;
    if (place < 0) break;
  }
  if (!layout->hasPrimaryKey) {
    layout->key.clear();
    for (int place = 0; place < layout->columns->count(); ++place) {
      if (layout->columns->at(place).isComparable()) layout->key.push_back(place);
    }
  }
  layouts_[text] = layout;
  return layout;
}

std::vector<std::string> OdbcSession::primaryKeyOf(const std::string& table) {
  Statement statement(link_, {});
  const std::u16string name = toUtf16(table);
  constexpr int kColumnName = 3;
  std::vector<std::string> columns;
  for (const Row& row : statement.primaryKeys(name)) columns.push_back(row[kColumnName].value.toText());
  return columns;
}

}  // namespace orva::odbc
