#include "platform/embedded/access_plan.h"

#include <algorithm>
#include <cmath>

#include "platform/embedded/sqlite_functions.h"

namespace orva::embedded {
namespace {

constexpr std::size_t kMostLookupColumns = 3;
/// A statement is planned once and runs while tables grow: none counts as small.
constexpr double kFewestRows = 1000;

/// What an index can do with one of its columns.
enum class Ability {
  kNothing,
  kEverything,
  kDays,  ///< finds and sorts days, but times of day stand between equal ones
  kTexts  ///< finds texts, in an order that is not the engine's
};

struct WayPart {
  int column = 0;
  bool descending = false;
  Ability ability = Ability::kEverything;
};

/// A way that could be gone, before it is known what the statement asks.
struct Candidate {
  AccessPlan plan;
  std::vector<WayPart> parts;
  bool isUnique = false;
  bool lacksNulls = false;
  double keys = 0;  ///< different keys, where that is known
  double perRow = 1;
  double start = 0;
};

/// A candidate with the conditions that it uses.
struct Choice {
  AccessPlan plan;
  std::vector<int> conditions;  ///< in the order of the arguments
  bool inOrder = false;
  bool isSingle = false;
  double rows = 0;
  double cost = 0;
  double score = 0;
};

Ability abilityOf(const access::Column& column, bool descending) {
  switch (column.type) {
    case access::ColumnType::kByte:
    case access::ColumnType::kInteger:
    case access::ColumnType::kLong:
    case access::ColumnType::kCurrency:
    case access::ColumnType::kSingle:
    case access::ColumnType::kDouble:
      return Ability::kEverything;
    case access::ColumnType::kDate:
      return Ability::kDays;
    case access::ColumnType::kText:
      return column.isGeneralOrder() && !descending ? Ability::kTexts : Ability::kNothing;
    default:
      return Ability::kNothing;
  }
}

class Planner {
 public:
  Planner(const AccessTable& table, sqlite3_index_info& info)
      : table_(table),
        info_(info),
        rows_(std::max<double>(table.table->definition().rowCount, kFewestRows)),
        sorts_(info.nOrderBy > 0) {}

  AccessPlan run() {
    tryKey();
    tryScan();
    const auto& indexes = table_.table->definition().realIndexes;
    for (std::size_t i = 0; i < indexes.size(); ++i) tryFileIndex(i, indexes[i]);
    for (const auto& parts : table_.wanted) tryLookup(parts, 0);
    tryNewLookup();
    publish();
    return best_.plan;
  }

 private:
  static bool isColumn(int place, const sqlite3_index_info::sqlite3_index_constraint& condition) {
    return std::max(condition.iColumn, kKeyColumn) == place;
  }

  /// An expression may give texts.
  bool mayBeText(int column) const {
    const auto at = static_cast<std::size_t>(column - kFirstColumn);
    return column >= kFirstColumn && (at >= table_.layout.columns.size() || table_.layout.columns[at].isText());
  }

  /// A condition with one of two operators on a column; -1 when there is none.
  int find(int column, int op, int other) const {
    for (int i = 0; i < info_.nConstraint; ++i) {
      const auto& condition = info_.aConstraint[i];
      if (!condition.usable || !isColumn(column, condition) || (condition.op != op && condition.op != other)) continue;
      if (!mayBeText(column) || sqlite3_stricmp(sqlite3_vtab_collation(&info_, i), kAccessCollation) == 0) return i;
    }
    return -1;
  }
  /// SQLite does not tell the collation of these; the engine compares texts by none but its own.
  int findUnequal(int column) const {
    for (int i = 0; i < info_.nConstraint; ++i) {
      const auto& condition = info_.aConstraint[i];
      if (condition.usable && isColumn(column, condition) && condition.op == SQLITE_INDEX_CONSTRAINT_NE) return i;
    }
    return -1;
  }
  int findEqual(int column) const { return find(column, SQLITE_INDEX_CONSTRAINT_EQ, SQLITE_INDEX_CONSTRAINT_EQ); }

  static int argument(Choice& choice, int condition) {
    choice.conditions.push_back(condition);
    return static_cast<int>(choice.conditions.size()) - 1;
  }

  void tryKey() {
    const int equal = findEqual(kKeyColumn);
    if (equal < 0) return;
    Choice choice;
    choice.plan.way = AccessPlan::Way::kKey;
    choice.plan.equal = {argument(choice, equal)};
    choice.plan.text = "(key=?)";
    choice.inOrder = sorts_;
    choice.isSingle = true;
    choice.rows = 1;
    choice.cost = 1;
    offer(std::move(choice));
  }

  void tryScan() {
    if (findEqual(kKeyColumn) >= 0) return;
    Candidate candidate;
    candidate.parts = {{kKeyColumn, false, Ability::kEverything}};
    consider(candidate);
  }

  int columnAt(std::size_t position) const {
    const auto found = std::find(table_.positions.begin(), table_.positions.end(), position);
    return static_cast<int>(found - table_.positions.begin()) + kFirstColumn;
  }

  void tryFileIndex(std::size_t index, const access::RealIndex& real) {
    const access::TableDefinition& definition = table_.table->definition();
    Candidate candidate;
    candidate.plan.way = AccessPlan::Way::kFileIndex;
    candidate.plan.realIndex = index;
    for (const access::IndexColumn& part : real.columns) {
      const std::size_t position = definition.columnOfNumber(part.number).value();
      candidate.parts.push_back(
          {columnAt(position), part.descending, abilityOf(definition.columns[position], part.descending)});
    }
    candidate.isUnique = real.isUnique();
    candidate.lacksNulls = real.ignoresNulls();
    candidate.keys = real.distinctKeys;
    candidate.perRow = 1.3;
    consider(candidate);
  }

  int columnOf(const LookupPart& part) const {
    if (part.expression.empty()) return columnAt(part.column);
    const auto found = std::find(table_.expressions.begin(), table_.expressions.end(), part);
    const auto place = found - table_.expressions.begin();
    return static_cast<int>(table_.layout.columns.size()) + kFirstColumn + static_cast<int>(place);
  }

  void tryLookup(const std::vector<LookupPart>& parts, double start) {
    Candidate candidate;
    candidate.plan.way = AccessPlan::Way::kLookup;
    candidate.plan.parts = parts;
    for (const LookupPart& part : parts) candidate.parts.push_back({columnOf(part), false, Ability::kEverything});
    candidate.perRow = 1.2;
    candidate.start = start;
    consider(candidate);
  }

  /// A join or a change finds its rows through columns for which nobody has asked
  /// an index in advance.
  void tryNewLookup() {
    std::vector<LookupPart> parts;
    for (int i = 0; i < info_.nConstraint && parts.size() < kMostLookupColumns; ++i) {
      const auto& condition = info_.aConstraint[i];
      const auto at = static_cast<std::size_t>(condition.iColumn - kFirstColumn);
      if (condition.iColumn < kFirstColumn || at >= table_.layout.columns.size()) continue;
      const ColumnType type = table_.layout.columns[at].type;
      if (type == ColumnType::kBoolean || type == ColumnType::kMemo || findEqual(condition.iColumn) != i) continue;
      parts.push_back({table_.positions[at], {}});
    }
    if (!parts.empty()) tryLookup(parts, 20);
  }

  /// The leading columns of equal values, then the range of the next one.
  void takeConditions(const Candidate& candidate, Choice& choice) const {
    for (const WayPart& part : candidate.parts) {
      const bool finds = part.ability != Ability::kNothing && part.ability != Ability::kDays;
      const int equal = finds ? findEqual(part.column) : -1;
      const int isNull = finds ? find(part.column, SQLITE_INDEX_CONSTRAINT_ISNULL, SQLITE_INDEX_CONSTRAINT_ISNULL) : -1;
      if (equal < 0 && isNull < 0) break;
      choice.plan.equal.push_back(equal >= 0 ? argument(choice, equal) : AccessPlan::kIsNull);
    }
    const std::size_t next = choice.plan.equal.size();
    if (next == candidate.parts.size() || candidate.parts[next].ability == Ability::kNothing) return;
    const WayPart& part = candidate.parts[next];
    const int unequal = findUnequal(part.column);
    if (candidate.plan.way == AccessPlan::Way::kLookup && next > 0 && unequal >= 0) {
      choice.plan.unequal = argument(choice, unequal);
      return;
    }
    int lower = find(part.column, SQLITE_INDEX_CONSTRAINT_GT, SQLITE_INDEX_CONSTRAINT_GE);
    int upper = find(part.column, SQLITE_INDEX_CONSTRAINT_LT, SQLITE_INDEX_CONSTRAINT_LE);
    const int day = part.ability == Ability::kDays ? findEqual(part.column) : -1;
    if (day >= 0) lower = upper = day;
    if (part.ability == Ability::kTexts && (lower < 0 || upper < 0)) return;
    if (lower >= 0) choice.plan.lower = argument(choice, lower);
    if (upper >= 0) choice.plan.upper = upper == lower ? choice.plan.lower : argument(choice, upper);
    choice.plan.lowerIsOpen = lower >= 0 && info_.aConstraint[lower].op == SQLITE_INDEX_CONSTRAINT_GT;
    choice.plan.upperIsOpen = upper >= 0 && info_.aConstraint[upper].op == SQLITE_INDEX_CONSTRAINT_LT;
  }

  /// True when rows come in the order that the statement asks for; sets the direction.
  bool isOrdered(const Candidate& candidate, AccessPlan& plan) const {
    std::size_t at = plan.equal.size();
    bool isFirst = true;
    bool mayGoOn = true;
    for (int i = 0; i < info_.nOrderBy; ++i) {
      const int column = std::max(info_.aOrderBy[i].iColumn, kKeyColumn);
      const auto end = candidate.parts.begin() + static_cast<std::ptrdiff_t>(plan.equal.size());
      if (std::any_of(candidate.parts.begin(), end, [column](const WayPart& part) { return part.column == column; })) {
        continue;
      }
      const bool isKey = at == candidate.parts.size() && column == kKeyColumn;
      if (!mayGoOn || (!isKey && (at >= candidate.parts.size() || candidate.parts[at].column != column))) return false;
      const WayPart part = isKey ? WayPart{} : candidate.parts[at];
      if (part.ability == Ability::kNothing || part.ability == Ability::kTexts) return false;
      const bool backwards = (info_.aOrderBy[i].desc != 0) != part.descending;
      if (!isFirst && backwards != plan.descending) return false;
      plan.descending = backwards;
      isFirst = false;
      mayGoOn = !isKey && part.ability == Ability::kEverything;
      ++at;
    }
    return true;
  }

  double estimate(const Candidate& candidate, const AccessPlan& plan) const {
    double rows = rows_;
    const bool allEqual = plan.equal.size() == candidate.parts.size();
    const bool isNull = std::find(plan.equal.begin(), plan.equal.end(), AccessPlan::kIsNull) != plan.equal.end();
    if (allEqual && candidate.isUnique && !isNull) return 1;
    for (std::size_t i = 0; i < plan.equal.size(); ++i) {
      const int column = candidate.parts[i].column;
      const bool isPlain = column <= static_cast<int>(table_.layout.columns.size());
      rows = plan.equal[i] == AccessPlan::kIsNull ? rows / 4 : isPlain ? std::min(rows / 4, 10.0) : rows / 20;
    }
    if (allEqual && candidate.keys > 1) rows = rows_ / candidate.keys;
    const bool isLimited = plan.lower != AccessPlan::kNone || plan.upper != AccessPlan::kNone;
    if (plan.lower != AccessPlan::kNone && plan.upper != AccessPlan::kNone) {
      rows /= 8;
    } else if (isLimited || plan.unequal != AccessPlan::kNone) {
      rows /= 3;
    }
    return std::max(rows, 1.0);
  }

  void consider(const Candidate& candidate) {
    Choice choice;
    choice.plan = candidate.plan;
    takeConditions(candidate, choice);
    if (candidate.lacksNulls && choice.conditions.empty()) return;
    choice.inOrder = sorts_ && isOrdered(candidate, choice.plan);
    const bool isScan = choice.plan.way == AccessPlan::Way::kScan;
    if (!isScan && choice.plan.equal.empty() && choice.conditions.empty() && !choice.inOrder) return;
    choice.rows = estimate(candidate, choice.plan);
    choice.isSingle = choice.rows == 1 && candidate.isUnique && choice.plan.equal.size() == candidate.parts.size();
    choice.cost = candidate.start + std::log2(rows_) + choice.rows * candidate.perRow;
    choice.plan.text = textOf(candidate, choice.plan);
    offer(std::move(choice));
  }

  std::string nameOf(int column) const {
    if (column == kKeyColumn) return "key";
    const auto at = static_cast<std::size_t>(column - kFirstColumn);
    return at < table_.layout.columns.size() ? table_.layout.columns[at].name : "<expr>";
  }

  std::string textOf(const Candidate& candidate, const AccessPlan& plan) const {
    std::string text;
    for (std::size_t i = 0; i < plan.equal.size(); ++i) {
      text += (i == 0 ? "" : " AND ") + nameOf(candidate.parts[i].column) + "=?";
    }
    const std::size_t next = plan.equal.size();
    for (const auto& [bound, sign] :
         {std::pair(plan.lower, ">?"), std::pair(plan.upper, "<?"), std::pair(plan.unequal, "<>?")}) {
      if (bound != AccessPlan::kNone)
        text += (text.empty() ? "" : " AND ") + nameOf(candidate.parts[next].column) + sign;
    }
    if (!text.empty()) text = "(" + text + ")";
    if (plan.way != AccessPlan::Way::kLookup) return text;
    std::string names;
    for (const LookupPart& part : plan.parts) {
      names += (names.empty() ? "" : ", ") + (part.expression.empty() ? nameOf(columnOf(part)) : part.expression);
    }
    return "USING INDEX auto1:" + table_.layout.name + ":" + names + " " + text;
  }

  void offer(Choice choice) {
    const double sorting = sorts_ && !choice.inOrder ? choice.rows * std::log2(choice.rows + 2) : 0;
    choice.score = choice.cost + sorting;
    if (hasBest_ && best_.score <= choice.score) return;
    best_ = std::move(choice);
    hasBest_ = true;
  }

  void publish() {
    for (std::size_t i = 0; i < best_.conditions.size(); ++i) {
      auto& usage = info_.aConstraintUsage[best_.conditions[i]];
      usage.argvIndex = static_cast<int>(i) + 1;
      // The entries of a look-up hold the very values that SQLite sees, and an expression is dear: rows that a
      // look-up finds as equal need no second test.
      const int column = info_.aConstraint[best_.conditions[i]].iColumn;
      const bool isEqual = info_.aConstraint[best_.conditions[i]].op == SQLITE_INDEX_CONSTRAINT_EQ;
      const bool isExpression = column > static_cast<int>(table_.layout.columns.size());
      if (isEqual && (isExpression || best_.plan.way == AccessPlan::Way::kLookup)) usage.omit = 1;
    }
    info_.estimatedCost = best_.cost;
    info_.estimatedRows = static_cast<sqlite3_int64>(best_.rows);
    info_.orderByConsumed = best_.inOrder ? 1 : 0;
    info_.idxFlags = best_.isSingle ? SQLITE_INDEX_SCAN_UNIQUE : 0;
  }

  const AccessTable& table_;
  sqlite3_index_info& info_;
  double rows_;
  bool sorts_;
  Choice best_;
  bool hasBest_ = false;
};

}  // namespace

AccessPlan choosePlan(const AccessTable& table, sqlite3_index_info& info) { return Planner(table, info).run(); }

}  // namespace orva::embedded
