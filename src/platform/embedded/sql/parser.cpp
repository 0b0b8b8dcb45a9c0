#include "platform/embedded/sql/parser.h"

#include "platform/database.h"
#include "platform/values/text.h"

namespace orva::sql {
namespace {

/// Words that end an expression or start another clause; they name a column
/// only inside brackets or behind a table name.
constexpr std::string_view kReserved[] = {
    "select", "from",  "where", "and", "or",   "not",  "order",  "group", "having", "is",  "in",      "like",  "as",
    "on",     "inner", "join",  "set", "into", "when", "values", "then",  "else",   "end", "between", "union", "by"};

bool isReserved(std::string_view word) {
  for (std::string_view reserved : kReserved) {
    if (equalsNoCase(word, reserved)) return true;
  }
  return false;
}

}  // namespace

Parser::Parser(std::string_view text, SqlDialect dialect, bool isCriterion, int firstLiteral)
    : literalCount_(firstLiteral), dialect_(dialect) {
  Tokenizer tokenizer(text, dialect, isCriterion);
  do {
    tokens_.push_back(tokenizer.next());
    literalOf_.push_back(tokens_.back().isLiteral() ? literalCount_++ : -1);
  } while (tokens_.back().kind != TokenKind::kEnd);
}

Statement Parser::statement() {
  if (isWord("select")) {
    Statement result = select();
    expectEnd();
    return result;
  }
  Statement result = [this]() -> Statement {
    if (acceptWord("insert")) return insert();
    if (acceptWord("update")) return update();
    if (acceptWord("delete")) return deleteRows();
    if (acceptWord("create")) return create();
    if (acceptWord("alter")) return alter();
    if (acceptWord("drop")) return drop();
    fail();
  }();
  expectEnd();
  return result;
}

ExprPtr Parser::criterion() {
  ExprPtr result = expression();
  expectEnd();
  return result;
}

const Token& Parser::peek(std::size_t ahead) const {
  const std::size_t at = at_ + ahead;
  return tokens_[at < tokens_.size() ? at : tokens_.size() - 1];
}

bool Parser::isWord(std::string_view word, std::size_t ahead) const {
  const Token& token = peek(ahead);
  return token.kind == TokenKind::kWord && equalsNoCase(token.text, word);
}

bool Parser::isSymbol(std::string_view symbol, std::size_t ahead) const {
  const Token& token = peek(ahead);
  return token.kind == TokenKind::kSymbol && token.text == symbol;
}

bool Parser::acceptWord(std::string_view word) {
  if (!isWord(word)) return false;
  ++at_;
  return true;
}

bool Parser::acceptSymbol(std::string_view symbol) {
  if (!isSymbol(symbol)) return false;
  ++at_;
  return true;
}

void Parser::expectWord(std::string_view word) {
  if (!acceptWord(word)) fail();
}

void Parser::expectSymbol(std::string_view symbol) {
  if (!acceptSymbol(symbol)) fail();
}

std::string Parser::name() {
  const Token& token = peek();
  if (token.kind != TokenKind::kWord && token.kind != TokenKind::kQuotedName) fail();
  if (token.text.empty() || (token.kind == TokenKind::kWord && isReserved(token.text))) fail();
  ++at_;
  return std::string(token.text);
}

std::vector<std::string> Parser::nameList() {
  std::vector<std::string> names;
  expectSymbol("(");
  do {
    names.push_back(name());
    if (!acceptWord("asc")) acceptWord("desc");
  } while (acceptSymbol(","));
  expectSymbol(")");
  return names;
}

void Parser::expectEnd() {
  acceptSymbol(";");
  if (peek().kind != TokenKind::kEnd) fail();
}

void Parser::fail() const {
  const Token& token = peek();
  const std::string near =
      token.kind == TokenKind::kEnd ? "the end" : "'" + std::string(token.text.substr(0, 40)) + "'";
  throw ProviderError(provider_number::kSyntaxOrExists, "Syntax error in the statement near " + near + ".");
}

}  // namespace orva::sql
