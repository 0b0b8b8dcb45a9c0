#include <algorithm>

#include "platform/embedded/sql/translator.h"
#include "platform/embedded/sqlite_handle.h"
#include "platform/values/text.h"

namespace orva::sql {

using embedded::IndexDef;
using embedded::quoteName;
using embedded::TableDef;

namespace {

constexpr std::size_t kMostEqualParts = 3;

/// What an index is wanted for: columns of equal values, then one of a range or an order.
struct Need {
  const TableDef& table;
  const std::vector<std::string>& equal;
  const std::string& next;
  bool inOrder;
};

/// True when the index leads to the rows: a unique one over columns that are
/// all given, or one that begins with the given columns and then the ordered one.
bool serves(const IndexDef& index, const Need& need) {
  const auto& [table, equal, next, inOrder] = need;
  const auto isGiven = [&equal = need.equal](const std::string& column) {
    return std::find(equal.begin(), equal.end(), quoteName(column)) != equal.end();
  };
  if (index.unique && std::all_of(index.columns.begin(), index.columns.end(), isGiven)) return true;
  const std::size_t needed = equal.size() + (next.empty() ? 0 : 1);
  if (index.columns.size() < needed) return false;
  for (std::size_t i = 0; i < equal.size(); ++i) {
    if (!isGiven(index.columns[i])) return false;
  }
  if (next.empty()) return true;
  const std::string& column = index.columns[equal.size()];
  const int at = table.find(column);
  const bool isText = at >= 0 && table.columns[static_cast<std::size_t>(at)].isText();
  return quoteName(column) == next && (!isText || !inOrder || index.keepsTextOrder);
}

bool canBeKey(const Operand& operand) { return !operand.key.empty() && operand.type != SqlType::kBoolean; }

}  // namespace

/// Keeps what a condition says about `left`, when it compares it with
/// something that no row of the query decides.
void Translator::note(const std::string& op, const Operand& left, const Operand& right) {
  if (!facts_ || !canBeKey(left) || !right.constant || op == "<>") return;
  if (op != "=") {
    if (facts_->range.empty()) facts_->range = left.key;
    return;
  }
  const auto found = std::find(facts_->equal.begin(), facts_->equal.end(), left.key);
  if (found == facts_->equal.end() && facts_->equal.size() < kMostEqualParts) facts_->equal.push_back(left.key);
}

/// "column <> 'O'" beside an equality: nearly all rows may have that flag, so only an index without them keeps the
/// look-up short. The letter stands in the text, as it does in the index; a column has few of them.
bool Translator::flagTest(const Expr& expr, Operand& result) {
  const Expr& flag = *expr.args[1];
  if (!facts_ || flag.kind != ExprKind::kLiteral || flag.token.kind != TokenKind::kText) return false;
  const std::string letter(flag.token.text);
  if (letter.size() != 1 || letter == "'" || letter == "\"") return false;
  const Operand column = translate(*expr.args[0]);
  if (!column.column || column.type != SqlType::kText || column.key.empty()) return false;
  assume(flag);
  const std::string test = " <> '" + letter + "'";
  result.sql = "(" + column.sql + test + ")";
  if (facts_->unequal.empty()) {
    facts_->unequal = column.key;
    facts_->condition = column.key + test;
  }
  return true;
}

/// The first ordering, or the column of a lone maximum or minimum, which is the
/// first of an ordering.
void Translator::noteOrder(const SelectStatement& statement) {
  const Expr* ordered = statement.orderBy.empty() ? nullptr : statement.orderBy[0].expr.get();
  if (!ordered && statement.items.size() == 1 && statement.groupBy.empty() && statement.items[0].expr) {
    const Expr& item = *statement.items[0].expr;
    const bool extreme = item.kind == ExprKind::kFunction && (item.name == "max" || item.name == "min");
    if (extreme && item.args.size() == 1) ordered = item.args[0].get();
  }
  if (!ordered || ordered->kind == ExprKind::kLiteral) return;
  if (ordered->kind == ExprKind::kColumn && !findColumn(*scope_, *ordered).source) return;
  Facts* const facts = std::exchange(facts_, nullptr);
  const std::size_t bindings = result_.bindings.size();
  sorting_ = !statement.orderBy.empty();
  const Operand operand = translate(*ordered);
  sorting_ = false;
  result_.bindings.resize(bindings);
  facts_ = facts;
  if (canBeKey(operand)) facts_->order = operand.key;
}

void Translator::proposeIndex(const TableDef& table, const Facts& facts) {
  const std::string& next = facts.range.empty() ? facts.order : facts.range;
  const bool repeats = std::find(facts.equal.begin(), facts.equal.end(), next) != facts.equal.end();
  const std::string last = repeats ? std::string() : next;
  if (facts.equal.empty() && last.empty()) return;
  const bool leavesOut = !facts.equal.empty() && last.empty() && !facts.unequal.empty();
  const Need need{table, facts.equal, last, !facts.rangeIsPrefix || !facts.order.empty()};
  for (const IndexDef& index : table.indexes) {
    if (serves(index, need) && (index.unique || !leavesOut)) return;
  }
  LookupIndex lookup{&table, scope_->sources[0].alias, facts.equal, {}};
  if (leavesOut) {
    // With the flag in it, the index answers by itself and is preferred to one over every row.
    lookup.parts.push_back(facts.unequal);
    lookup.condition = facts.condition;
  }
  if (!last.empty()) lookup.parts.push_back(last);
  const auto isSame = [&lookup](const LookupIndex& other) {
    return other.table == lookup.table && other.parts == lookup.parts && other.condition == lookup.condition;
  };
  if (std::none_of(result_.lookups.begin(), result_.lookups.end(), isSame))
    result_.lookups.push_back(std::move(lookup));
}

}  // namespace orva::sql
