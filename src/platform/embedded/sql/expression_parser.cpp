#include "platform/database.h"
#include "platform/embedded/sql/parser.h"
#include "platform/values/text.h"

namespace orva::sql {
namespace {

constexpr int kDeepestNesting = 60;
constexpr int kMostLinks = 500;
constexpr std::size_t kMostTerms = 500;

ExprPtr node(ExprKind kind, ExprPtr first = nullptr, ExprPtr second = nullptr) {
  auto result = std::make_unique<Expr>(kind);
  if (first) result->args.push_back(std::move(first));
  if (second) result->args.push_back(std::move(second));
  return result;
}

}  // namespace

/// Counts the nesting while a construct is being read.
class Parser::Depth {
 public:
  explicit Depth(Parser& parser) : parser_(parser) {
    if (++parser_.depth_ > kDeepestNesting) {
      --parser_.depth_;
      throw ProviderError(provider_number::kSyntaxOrExists, "The statement is nested too deeply.");
    }
  }
  Depth(const Depth&) = delete;
  Depth& operator=(const Depth&) = delete;
  ~Depth() { --parser_.depth_; }

 private:
  Parser& parser_;
};

/// A chain of operators is a deep tree: its length is bounded like nesting.
void Parser::countLink() {
  if (++links_ > kMostLinks) throw ProviderError(provider_number::kSyntaxOrExists, "The statement is too long.");
}

ExprPtr Parser::expression() {
  const Depth depth(*this);
  return logical(&Parser::andTerm, "or", ExprKind::kOr);
}

ExprPtr Parser::andTerm() { return logical(&Parser::notTerm, "and", ExprKind::kAnd); }

/// Terms joined by one word stand side by side in one node, so that a long
/// condition is not a deep one.
ExprPtr Parser::logical(Level level, std::string_view word, ExprKind kind) {
  ExprPtr first = (this->*level)();
  if (!isWord(word)) return first;
  ExprPtr all = node(kind, std::move(first));
  while (acceptWord(word)) {
    all->args.push_back((this->*level)());
    if (all->args.size() > kMostTerms) fail();
  }
  return all;
}

ExprPtr Parser::notTerm() {
  if (!acceptWord("not")) return comparison();
  const Depth depth(*this);
  return node(ExprKind::kNot, notTerm());
}

ExprPtr Parser::comparison() {
  ExprPtr left = concatenation();
  for (;;) {
    std::string op;
    for (std::string_view symbol : {"=", "<>", "<=", ">=", "<", ">", "!="}) {
      if (isSymbol(symbol)) op = symbol;
    }
    if (op.empty()) return predicate(std::move(left));
    if (op == "!=" && dialect_ == SqlDialect::kAccess) fail();
    ++at_;
    countLink();
    left = node(ExprKind::kCompare, std::move(left), concatenation());
    left->name = op == "!=" ? "<>" : op;
  }
}

ExprPtr Parser::predicate(ExprPtr left) {
  if (acceptWord("is")) {
    ExprPtr result = node(ExprKind::kIsNull, std::move(left));
    result->negated = acceptWord("not");
    expectWord("null");
    return result;
  }
  const bool negated = isWord("not") && (isWord("in", 1) || isWord("between", 1) || isWord("like", 1));
  if (negated) ++at_;
  if (acceptWord("in")) return inList(std::move(left), negated);
  if (acceptWord("between")) {
    ExprPtr result = node(ExprKind::kBetween, std::move(left), concatenation());
    expectWord("and");
    result->args.push_back(concatenation());
    result->negated = negated;
    return result;
  }
  if (acceptWord("like")) {
    ExprPtr result = node(ExprKind::kLike, std::move(left), concatenation());
    result->negated = negated;
    return result;
  }
  return left;
}

ExprPtr Parser::inList(ExprPtr left, bool negated) {
  const Depth depth(*this);
  ExprPtr result = node(ExprKind::kIn, std::move(left));
  result->negated = negated;
  expectSymbol("(");
  if (isWord("select")) {
    result->select = std::make_unique<SelectStatement>(select());
  } else {
    do {
      result->args.push_back(expression());
    } while (acceptSymbol(","));
  }
  expectSymbol(")");
  return result;
}

ExprPtr Parser::chain(Level level, std::initializer_list<std::string_view> symbols, std::string_view word) {
  ExprPtr left = (this->*level)();
  for (;;) {
    std::string op;
    for (std::string_view symbol : symbols) {
      if (isSymbol(symbol)) op = symbol;
    }
    if (op.empty() && !word.empty() && isWord(word)) op = "%";
    if (op.empty()) return left;
    ++at_;
    countLink();
    left = node(ExprKind::kArithmetic, std::move(left), (this->*level)());
    left->name = op;
  }
}

ExprPtr Parser::concatenation() {
  if (dialect_ == SqlDialect::kSqlServer) return additive();
  return chain(&Parser::additive, {"&"}, {});
}

ExprPtr Parser::additive() { return chain(&Parser::multiplicative, {"+", "-"}, {}); }

ExprPtr Parser::multiplicative() {
  if (dialect_ == SqlDialect::kSqlServer) return chain(&Parser::unary, {"*", "/", "%"}, {});
  return chain(&Parser::unary, {"*", "/", "\\"}, "mod");
}

ExprPtr Parser::unary() {
  if (acceptSymbol("+")) return primary();
  if (!acceptSymbol("-")) return primary();
  const Depth depth(*this);
  return node(ExprKind::kNegate, unary());
}

ExprPtr Parser::primary() {
  const Token& token = peek();
  if (token.isLiteral()) return literal();
  if (token.kind == TokenKind::kSymbol) return parenthesised();
  if (token.kind == TokenKind::kQuotedName) return columnOrCall();
  if (acceptWord("null")) return node(ExprKind::kNull);
  if (acceptWord("case")) return caseExpression();
  if (isWord("exists") && isSymbol("(", 1)) {
    at_ += 2;
    ExprPtr result = node(ExprKind::kExists);
    const Depth depth(*this);
    result->select = std::make_unique<SelectStatement>(select());
    expectSymbol(")");
    return result;
  }
  if (token.kind != TokenKind::kWord) fail();
  return columnOrCall();
}

ExprPtr Parser::parenthesised() {
  expectSymbol("(");
  ExprPtr result;
  if (isWord("select")) {
    const Depth depth(*this);
    result = node(ExprKind::kSubquery);
    result->select = std::make_unique<SelectStatement>(select());
  } else {
    result = expression();
  }
  expectSymbol(")");
  return result;
}

ExprPtr Parser::literal() {
  ExprPtr result = node(ExprKind::kLiteral);
  result->token = peek();
  result->literal = literalIndex();
  ++at_;
  return result;
}

ExprPtr Parser::columnOrCall() {
  const bool plain = peek().kind == TokenKind::kWord;
  std::string first = name();
  if (plain && isSymbol("(")) return call(toLower(first));
  ExprPtr result = node(ExprKind::kColumn);
  while (acceptSymbol(".")) {
    if (!result->qualifier.empty() && !equalsNoCase(result->qualifier, "dbo")) fail();
    result->qualifier = first;
    first = name();
  }
  result->name = first;
  return result;
}

ExprPtr Parser::call(std::string function) {
  expectSymbol("(");
  if (function == "convert" || function == "cast") return conversion(function);
  ExprPtr result = node(ExprKind::kFunction);
  result->name = std::move(function);
  if (acceptSymbol(")")) return result;
  if (acceptSymbol("*")) {
    result->star = true;
    expectSymbol(")");
    return result;
  }
  result->distinct = acceptWord("distinct");
  do {
    result->args.push_back(expression());
  } while (acceptSymbol(","));
  expectSymbol(")");
  return result;
}

/// "convert(type[(n)], value)" and "cast(value as type[(n)])".
ExprPtr Parser::conversion(const std::string& function) {
  ExprPtr result = node(ExprKind::kFunction);
  result->name = "convert";
  const auto type = [this, &result] {
    result->qualifier = toLower(name());
    ColumnSpec size;
    typeSize(size);
  };
  if (function == "convert") {
    type();
    expectSymbol(",");
    result->args.push_back(expression());
  } else {
    result->args.push_back(expression());
    expectWord("as");
    type();
  }
  expectSymbol(")");
  return result;
}

/// Arguments in order: condition and result of each branch, then the result
/// otherwise when there is one. "case x when 1" becomes "case when x = 1" only
/// for a plain column, which costs nothing to read twice.
ExprPtr Parser::caseExpression() {
  const Depth depth(*this);
  ExprPtr result = node(ExprKind::kCase);
  if (!isWord("when")) fail();
  while (acceptWord("when")) {
    result->args.push_back(expression());
    expectWord("then");
    result->args.push_back(expression());
  }
  if (acceptWord("else")) result->args.push_back(expression());
  expectWord("end");
  return result;
}

}  // namespace orva::sql
