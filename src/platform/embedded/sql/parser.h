#pragma once

#include <string_view>
#include <vector>

#include "platform/embedded/sql/syntax.h"

namespace orva::sql {

/// Recursive-descent parser of both dialects. Every fault is a `ProviderError`
/// with kSyntaxOrExists; nesting deeper than a person would write is refused.
/// The result points into `text`.
class Parser {
 public:
  Parser(std::string_view text, SqlDialect dialect, bool isCriterion = false, int firstLiteral = 0);

  /// One statement, an optional ";" behind it.
  Statement statement();
  /// The condition of a record set's filter.
  ExprPtr criterion();

 private:
  class Depth;

  // Tokens.
  const Token& peek(std::size_t ahead = 0) const;
  bool isWord(std::string_view word, std::size_t ahead = 0) const;
  bool isSymbol(std::string_view symbol, std::size_t ahead = 0) const;
  bool acceptWord(std::string_view word);
  bool acceptSymbol(std::string_view symbol);
  void expectWord(std::string_view word);
  void expectSymbol(std::string_view symbol);
  std::string name();
  int literalIndex() const { return literalOf_[at_]; }
  void expectEnd();
  void countLink();
  [[noreturn]] void fail() const;

  // Expressions, loosest binding first.
  ExprPtr expression();
  ExprPtr andTerm();
  ExprPtr notTerm();
  ExprPtr comparison();
  ExprPtr predicate(ExprPtr left);
  ExprPtr inList(ExprPtr left, bool negated);
  ExprPtr concatenation();
  ExprPtr additive();
  ExprPtr multiplicative();
  ExprPtr unary();
  ExprPtr primary();
  ExprPtr parenthesised();
  ExprPtr literal();
  ExprPtr columnOrCall();
  ExprPtr call(std::string function);
  ExprPtr conversion(const std::string& function);
  ExprPtr caseExpression();
  using Level = ExprPtr (Parser::*)();
  ExprPtr chain(Level level, std::initializer_list<std::string_view> symbols, std::string_view word);
  ExprPtr logical(Level level, std::string_view word, ExprKind kind);

  // Queries and changes.
  SelectStatement select();
  void selectHead(SelectStatement& select);
  SelectItem selectItem();
  void sources(std::vector<Source>& out, bool plainOnly);
  void joinChain(std::vector<Source>& out);
  void joinOperand(std::vector<Source>& out);
  TableName tableName();
  bool startsAlias() const;
  InsertStatement insert();
  UpdateStatement update();
  Assignment assignment();
  DeleteStatement deleteRows();

  // Definitions.
  Statement create();
  Statement createTable();
  Statement createIndex(bool unique);
  Statement alter();
  Statement addTo(std::string table);
  Statement dropFrom(std::string table);
  Statement drop();
  ColumnSpec columnSpec();
  void typeSize(ColumnSpec& column);
  bool columnOption(ColumnSpec& column);
  void defaultOf(ColumnSpec& column);
  bool startsKey() const;
  KeySpec keySpec();
  std::vector<std::string> nameList();

  std::vector<Token> tokens_;
  std::vector<int> literalOf_;
  std::size_t at_ = 0;
  int depth_ = 0;
  int links_ = 0;
  int literalCount_ = 0;
  SqlDialect dialect_;
};

}  // namespace orva::sql
