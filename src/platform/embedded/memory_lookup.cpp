#include "platform/embedded/memory_lookup.h"

#include <algorithm>

#include "platform/embedded/sqlite_open.h"
#include "platform/values/text.h"

namespace orva::embedded {
namespace {

void bindScalar(sqlite3_stmt* statement, const Scalar& scalar) {
  if (const auto* whole = std::get_if<std::int64_t>(&scalar)) {
    sqlite3_bind_int64(statement, 1, *whole);
  } else if (const auto* number = std::get_if<double>(&scalar)) {
    sqlite3_bind_double(statement, 1, *number);
  } else if (const auto* text = std::get_if<std::string>(&scalar)) {
    bindText(statement, 1, *text, true);
  } else {
    sqlite3_bind_null(statement, 1);
  }
}

}  // namespace

Evaluator::Evaluator() : database_(openEngine(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE)) {}

Scalar Evaluator::value(const LookupPart& part, const std::string& columnName, const Scalar& of) {
  if (part.expression.empty()) return of;
  auto known = std::find_if(statements_.begin(), statements_.end(),
                            [&part](const auto& entry) { return entry.first == part.expression; });
  if (known == statements_.end()) {
    const std::string sql = "SELECT " + replaceAll(part.expression, quoteName(columnName), "?1");
    statements_.emplace_back(part.expression, prepare(database_.get(), sql));
    known = statements_.end() - 1;
  }
  sqlite3_stmt* const statement = known->second.get();
  bindScalar(statement, of);
  Scalar result;
  if (sqlite3_step(statement) == SQLITE_ROW) result = scalarOf(sqlite3_column_value(statement, 0));
  sqlite3_reset(statement);
  return result;
}

MemoryLookup::MemoryLookup(const access::Table& table, std::vector<LookupPart> parts, Evaluator& evaluator)
    : parts_(std::move(parts)), evaluator_(evaluator) {
  for (const LookupPart& part : parts_) {
    const std::string& name = table.definition().columns[part.column].name;
    isLength_.push_back(part.expression == "orva_len(" + quoteName(name) + ")");
  }
  for (access::RowScan scan = table.scan(); scan.next();) {
    index_.insert(entryFor(table, scan.row()));
    if (index_.size() % 1024 == 0) table.letGoOfPages();
  }
  index_.pack();
}

bool MemoryLookup::uses(const std::vector<access::Change>& changes) const {
  return std::any_of(parts_.begin(), parts_.end(), [&changes](const LookupPart& part) {
    return std::any_of(changes.begin(), changes.end(),
                       [&part](const access::Change& change) { return change.column == part.column; });
  });
}

std::string MemoryLookup::entryFor(const access::Table& table, access::RowId row) {
  std::string entry;
  for (std::size_t i = 0; i < parts_.size(); ++i) {
    const LookupPart& part = parts_[i];
    const bool isSimple = part.expression.empty() || isLength_[i];
    if (const auto plain = isSimple ? table.rows().plainText(row, part.column) : std::nullopt) {
      if (isLength_[i]) {
        appendSortKey(entry, static_cast<std::int64_t>(plain->size()));
      } else {
        appendTextSortKey(entry, *plain);
      }
      continue;
    }
    const Scalar cell = scalarOf(table.rows().cell(row, part.column));
    const std::string& name = table.definition().columns[part.column].name;
    appendSortKey(entry, evaluator_.value(part, name, cell));
  }
  for (int shift = 24; shift >= 0; shift -= 8) entry.push_back(static_cast<char>(row >> shift & 0xFF));
  return entry;
}

access::RowId MemoryLookup::rowOf(const std::string& entry) {
  access::RowId row = 0;
  for (std::size_t i = entry.size() - kRowSize; i < entry.size(); ++i) {
    row = row << 8 | static_cast<unsigned char>(entry[i]);
  }
  return row;
}

}  // namespace orva::embedded
