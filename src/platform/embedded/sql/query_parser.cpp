#include "platform/embedded/sql/parser.h"
#include "platform/values/text.h"

namespace orva::sql {
namespace {

/// Words that may follow a table name; anything else there is its alias.
constexpr std::string_view kAfterTable[] = {"where", "order", "group", "having", "inner", "left",   "right", "join",
                                            "on",    "set",   "union", "from",   "outer", "values", "select"};

}  // namespace

SelectStatement Parser::select() {
  SelectStatement result;
  expectWord("select");
  selectHead(result);
  if (acceptWord("from")) sources(result.sources, false);
  if (acceptWord("where")) result.where = expression();
  if (acceptWord("group")) {
    expectWord("by");
    do {
      result.groupBy.push_back(expression());
    } while (acceptSymbol(","));
  }
  if (acceptWord("having")) result.having = expression();
  if (acceptWord("order")) {
    expectWord("by");
    do {
      OrderItem item{expression(), false};
      if (!acceptWord("asc")) item.descending = acceptWord("desc");
      result.orderBy.push_back(std::move(item));
    } while (acceptSymbol(","));
  }
  return result;
}

void Parser::selectHead(SelectStatement& result) {
  if (!acceptWord("all")) result.distinct = acceptWord("distinct");
  if (isWord("top") && peek(1).kind == TokenKind::kNumber) {
    ++at_;
    result.topLiteral = literalIndex();
    result.top = peek();
    ++at_;
  }
  do {
    result.items.push_back(selectItem());
  } while (acceptSymbol(","));
}

SelectItem Parser::selectItem() {
  SelectItem item;
  item.star = acceptSymbol("*");
  if (item.star) return item;
  if (isSymbol(".", 1) && isSymbol("*", 2)) {
    item.star = true;
    item.starQualifier = name();
    at_ += 2;
    return item;
  }
  item.expr = expression();
  if (acceptWord("as") || startsAlias()) item.alias = name();
  return item;
}

bool Parser::startsAlias() const {
  if (peek().kind == TokenKind::kQuotedName) return true;
  if (peek().kind != TokenKind::kWord) return false;
  for (std::string_view word : kAfterTable) {
    if (isWord(word)) return false;
  }
  return true;
}

void Parser::sources(std::vector<Source>& out, bool plainOnly) {
  do {
    const std::size_t first = out.size();
    joinChain(out);
    if (plainOnly && out.size() != first + 1) fail();
  } while (acceptSymbol(","));
}

/// Joins are laid out flat: for inner joins the conditions may stand at any
/// later table. A nested outer join on the right is not written by anyone here.
void Parser::joinChain(std::vector<Source>& out) {
  joinOperand(out);
  for (;;) {
    JoinKind kind = JoinKind::kInner;
    const bool outer = isWord("left") || isWord("right");
    if (outer) {
      kind = isWord("left") ? JoinKind::kLeft : JoinKind::kRight;
      ++at_;
      acceptWord("outer");
    } else {
      acceptWord("inner");
    }
    if (!acceptWord("join")) {
      if (outer) fail();
      return;
    }
    const std::size_t first = out.size();
    joinOperand(out);
    if (outer && out.size() != first + 1) fail();
    expectWord("on");
    out[first].join = kind;
    out.back().join = kind;
    ExprPtr condition = expression();
    if (out.back().on) {
      auto both = std::make_unique<Expr>(ExprKind::kAnd);
      both->args.push_back(std::move(out.back().on));
      both->args.push_back(std::move(condition));
      condition = std::move(both);
    }
    out.back().on = std::move(condition);
  }
}

void Parser::joinOperand(std::vector<Source>& out) {
  if (acceptSymbol("(")) {
    if (++depth_ > 20) fail();
    joinChain(out);
    --depth_;
    expectSymbol(")");
    return;
  }
  out.push_back({tableName(), JoinKind::kComma, nullptr});
}

TableName Parser::tableName() {
  TableName result;
  result.name = name();
  while (acceptSymbol(".")) result.name = name();
  result.alias = result.name;
  if (acceptWord("as") || startsAlias()) result.alias = name();
  return result;
}

InsertStatement Parser::insert() {
  InsertStatement result;
  expectWord("into");
  result.table = name();
  if (isSymbol("(") && !isWord("select", 1)) result.columns = nameList();
  if (isWord("select")) {
    result.select = std::make_unique<SelectStatement>(select());
    return result;
  }
  expectWord("values");
  expectSymbol("(");
  do {
    result.values.push_back(expression());
  } while (acceptSymbol(","));
  expectSymbol(")");
  return result;
}

UpdateStatement Parser::update() {
  UpdateStatement result;
  sources(result.tables, false);
  if (dialect_ == SqlDialect::kSqlServer && result.tables.size() != 1) fail();
  expectWord("set");
  do {
    result.assignments.push_back(assignment());
  } while (acceptSymbol(","));
  if (acceptWord("from")) {
    if (dialect_ == SqlDialect::kAccess) fail();
    sources(result.from, false);
  }
  if (acceptWord("where")) result.where = expression();
  return result;
}

Assignment Parser::assignment() {
  Assignment result;
  result.column = name();
  if (acceptSymbol(".")) {
    result.qualifier = std::move(result.column);
    result.column = name();
  }
  expectSymbol("=");
  result.value = concatenation();
  return result;
}

DeleteStatement Parser::deleteRows() {
  DeleteStatement result;
  if (dialect_ == SqlDialect::kAccess) acceptSymbol("*");
  if (!acceptWord("from") && dialect_ == SqlDialect::kAccess) fail();
  result.table = name();
  if (acceptWord("where")) result.where = expression();
  return result;
}

}  // namespace orva::sql
