#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/embedded/sql/dialect.h"

namespace orva::sql {

enum class TokenKind : std::uint8_t { kEnd, kWord, kQuotedName, kText, kNumber, kDate, kSymbol };

/// One token, pointing into the statement. The text of names and literals is
/// the inside of their quotes; doubled quotes are still doubled.
struct Token {
  TokenKind kind = TokenKind::kEnd;
  char quote = 0;
  std::string_view text;

  bool isLiteral() const { return kind == TokenKind::kText || kind == TokenKind::kNumber || kind == TokenKind::kDate; }
};

/// A literal that was lifted out of a statement: the place of its inner text.
struct Literal {
  TokenKind kind = TokenKind::kText;
  char quote = 0;
  std::uint32_t offset = 0;
  std::uint32_t length = 0;
};

/// Splits a statement in one pass without allocating. Dates in number signs
/// belong to Access, and to the criteria of record sets in both dialects.
/// Throws `ProviderError` (kSyntaxOrExists) on an open quote or a foreign character.
class Tokenizer {
 public:
  Tokenizer(std::string_view text, SqlDialect dialect, bool isCriterion = false)
      : text_(text), access_(dialect == SqlDialect::kAccess), dates_(access_ || isCriterion) {}

  Token next();
  /// Appends the rest of the statement without letter case, spacing and literal values to `key`, and its literals,
  /// placed relative to `base`, to `literals`. Statements that differ only in their literals have the same form.
  void appendNormalForm(const char* base, std::string& key, std::vector<Literal>& literals);

 private:
  void skipBlanks();
  char* writeWord(char* out);
  Token word();
  Token number();
  Token quoted(TokenKind kind, char close);
  Token symbol();

  std::string_view text_;
  std::size_t at_ = 0;
  bool access_;
  bool dates_;
};

/// The inside of a quoted literal with doubled quotes made single.
std::string unquoted(std::string_view inside, char quote);

}  // namespace orva::sql
