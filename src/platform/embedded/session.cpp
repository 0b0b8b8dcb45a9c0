#include "platform/embedded/session.h"

#include <algorithm>
#include <utility>

#include "platform/embedded/definition_runner.h"
#include "platform/embedded/row_set.h"
#include "platform/embedded/sql/parser.h"
#include "platform/embedded/sql/translator.h"
#include "platform/values/text.h"

namespace orva::embedded {
namespace {

constexpr std::size_t kMostStatements = 2000;
constexpr std::size_t kMostVariants = 16;

bool isQuery(const std::string& key) { return key.starts_with("select "); }

}  // namespace

Session::Session(std::unique_ptr<Store> store, SqlDialect dialect) : store_(std::move(store)), dialect_(dialect) {}

Session::~Session() {
  for (RowSet* set : open_) set->close();
  forgetStatements();
}

void Session::takeOver(RowSet* next) {
  RowSet* const before = std::exchange(running_, next);
  if (before && before != next) before->putAside();
}

void Session::beginReading() {
  takeOver(nullptr);
  store_->beginReading();
}

std::int64_t Session::runChange(sqlite3_stmt* change) {
  takeOver(nullptr);
  return store_->runChange(change);
}

std::optional<std::int64_t> Session::changeRow(const TableDef& table, std::span<const int> columns,
                                               std::span<const Value> values, std::int64_t key) {
  if (!store_->canChangeRows(table)) return std::nullopt;
  takeOver(nullptr);
  return store_->changeRows(table, columns, values, std::span(&key, 1));
}

/// Where the values are all known, a store may change the rows itself.
std::int64_t Session::runPrepared(Prepared& prepared, const StatementText& text) {
  const sql::Translation& translation = prepared.translation();
  if (translation.assigned.empty() || !store_->canChangeRows(*translation.table)) {
    return runChange(prepared.change(text));
  }
  const std::vector<Value> values = prepared.assignedValues(text);
  return store_->changeRows(*translation.table, translation.assigned, values, prepared.keysToChange(text));
}

std::int64_t Session::addRow(Prepared& query, const std::vector<const Value*>& values) {
  takeOver(nullptr);
  if (const auto key = store_->addRow(*query.translation().table, values)) return *key;
  sqlite3_stmt* const insert = query.insertRow();
  for (std::size_t i = 0; i < values.size(); ++i) bindValue(insert, static_cast<int>(i) + 1, *values[i], true);
  store_->runChange(insert);
  return sqlite3_last_insert_rowid(database());
}

void Session::enter(RowSet* set) { open_.push_back(set); }

void Session::leave(RowSet* set) {
  if (running_ == set) running_ = nullptr;
  const auto found = std::find(open_.rbegin(), open_.rend(), set);
  if (found == open_.rend()) return;
  *found = open_.back();
  open_.pop_back();
}

void Session::beforeChange(const TableDef& table, const RowSet* except) {
  takeOver(nullptr);
  for (RowSet* set : open_) {
    if (set != except && set->table() && set->table()->name == table.name) set->keepRow();
  }
}

bool Session::noticeLayoutChange() {
  beginReading();
  if (!store_->refreshCatalogue()) return false;
  forgetStatements();
  return true;
}

void Session::forgetStatements() {
  answers_.clear();
  statements_.clear();
}

std::shared_ptr<Prepared> Session::find(const StatementText& text) {
  const auto found = statements_.find(std::string_view(key_));
  if (found == statements_.end()) return nullptr;
  for (const auto& variant : found->second) {
    if (variant->fits(text)) return variant;
  }
  return nullptr;
}

std::shared_ptr<Prepared> Session::remember(const StatementText& text, sql::Translation translation) {
  ensureLookups(translation);
  auto prepared = std::make_shared<Prepared>(store_->handle(), store_->catalogue(), std::move(translation), dialect_);
  if (statements_.size() >= kMostStatements) forgetStatements();
  Variants& variants = statements_[key_];
  if (variants.size() >= kMostVariants) variants.erase(variants.begin());
  if (prepared->fits(text)) variants.push_back(prepared);
  return prepared;
}

/// A store may show the value of an expression as a column; then that column
/// stands in the statement instead, where the planner sees it.
void Session::ensureLookups(sql::Translation& translation) {
  for (const sql::LookupIndex& lookup : translation.lookups) {
    const auto isExpression = [](const std::string& part) { return !part.starts_with('"'); };
    // A change by the value of an expression runs once; what looks rows up runs for every row of a sheet.
    const bool once =
        translation.columns.empty() && std::any_of(lookup.parts.begin(), lookup.parts.end(), isExpression);
    if (once && !store_->keepsLookups()) continue;
    if (lookup.condition.empty()) {
      store_->ensureLookup(*lookup.table, lookup.parts);
    } else {
      store_->ensureLookupWhere(*lookup.table, lookup.parts, lookup.condition);
    }
    for (const std::string& part : lookup.parts) {
      const std::string column = part.starts_with('"') ? std::string() : store_->expressionColumn(*lookup.table, part);
      if (column.empty()) continue;
      const std::string alias = quoteName(lookup.alias) + ".";
      std::string expression = part;
      expression.insert(expression.find('"'), alias);
      for (std::string* text : {&translation.sql, &translation.tail, &translation.ordering}) {
        *text = replaceAll(*text, expression, alias + column);
      }
    }
  }
}

std::shared_ptr<Prepared> Session::query(std::string_view text, std::size_t criterionAt,
                                         std::vector<sql::Literal>& literals) {
  const std::string_view query = text.substr(0, criterionAt);
  const std::string_view criterion = text.substr(criterionAt);
  key_.clear();
  literals.clear();
  sql::Tokenizer(query, dialect_).appendNormalForm(text.data(), key_, literals);
  const auto ofQuery = static_cast<int>(literals.size());
  if (!criterion.empty()) {
    key_.push_back('\n');
    sql::Tokenizer(criterion, dialect_, true).appendNormalForm(text.data(), key_, literals);
  }
  const StatementText statementText{text, &literals};
  if (auto found = find(statementText)) return found;
  noticeLayoutChange();
  sql::Parser parser(query, dialect_);
  const sql::Statement statement = parser.statement();
  const auto* select = std::get_if<sql::SelectStatement>(&statement);
  if (!select) throw ProviderError(provider_number::kUnspecified, "The statement gives no rows.");
  const sql::ExprPtr condition =
      criterion.empty() ? nullptr : sql::Parser(criterion, dialect_, true, ofQuery).criterion();
  const auto catalogue = store_->catalogue();
  return remember(statementText, sql::Translator(*catalogue, dialect_).select(*select, condition.get()));
}

std::unique_ptr<Recordset> Session::open(std::string_view sql, CursorKind cursor, LockKind lock) {
  return std::make_unique<RowSet>(*this, sql, lock != LockKind::kReadOnly, cursor == CursorKind::kFirstRow);
}

void Session::walkTexts(std::string_view table, std::span<const std::string_view> columns, const TextVisitor& visit) {
  noticeLayoutChange();
  const auto catalogue = store_->catalogue();
  const TableDef* const definition = catalogue->find(table);
  std::vector<int> places;
  for (const std::string_view column : columns) places.push_back(definition ? definition->find(column) : -1);
  const bool isKnown = definition && std::find(places.begin(), places.end(), -1) == places.end();
  // A query tells what is wrong with a name.
  if (!isKnown || !store_->walkTexts(*definition, places, visit)) Connection::walkTexts(table, columns, visit);
}

std::shared_ptr<Prepared> Session::prepareChange(const StatementText& text, const sql::Statement& statement) {
  const auto catalogue = store_->catalogue();
  sql::Translator translator(*catalogue, dialect_);
  if (const auto* insert = std::get_if<sql::InsertStatement>(&statement)) {
    return remember(text, translator.insert(*insert));
  }
  if (const auto* update = std::get_if<sql::UpdateStatement>(&statement)) {
    return remember(text, translator.update(*update));
  }
  return remember(text, translator.deleteRows(std::get<sql::DeleteStatement>(statement)));
}

std::int64_t Session::executeOnce(std::string_view sql) {
  key_.clear();
  literals_.clear();
  sql::Tokenizer(sql, dialect_).appendNormalForm(sql.data(), key_, literals_);
  if (isQuery(key_)) {
    open(sql, CursorKind::kStatic, LockKind::kReadOnly);
    return 0;
  }
  const StatementText text{sql, &literals_};
  takeOver(nullptr);
  std::shared_ptr<Prepared> prepared = find(text);
  if (!prepared) {
    noticeLayoutChange();
    sql::Parser parser(sql, dialect_);
    const sql::Statement statement = parser.statement();
    if (isDefinition(statement)) {
      for (RowSet* set : open_) set->keepRow();
      forgetStatements();
      return runDefinition(*store_, dialect_, statement);
    }
    prepared = prepareChange(text, statement);
  }
  if (!key_.starts_with("insert ")) beforeChange(*prepared->translation().table, nullptr);
  const std::int64_t rows = runPrepared(*prepared, text);
  if (prepared->wasPreparedAnew()) noticeLayoutChange();
  return rows;
}

/// A statement that fails may have met a layout that another program has
/// changed: then it is translated again, once.
std::int64_t Session::execute(std::string_view sql) {
  try {
    return executeOnce(sql);
  } catch (const ProviderError&) {
    if (!noticeLayoutChange()) throw;
  }
  return executeOnce(sql);
}

std::string Session::plan(std::string_view sql) {
  std::vector<sql::Literal> literals;
  return query(sql, sql.size(), literals)->plan();
}

}  // namespace orva::embedded
