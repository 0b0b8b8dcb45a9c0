#include "platform/odbc/statement_text.h"

#include <algorithm>
#include <array>
#include <vector>

#include "platform/database.h"
#include "platform/embedded/sql/tokens.h"
#include "platform/values/text.h"

namespace orva::odbc {
namespace {

using sql::Token;
using sql::TokenKind;

/// Longer texts stay literals.
constexpr SQLULEN kLongestArgument = 255;
constexpr WireType kPlainText{SQL_VARCHAR, kLongestArgument, 0};
constexpr WireType kUnicodeText{SQL_WVARCHAR, kLongestArgument, 0};

bool isAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// A token with its place in the statement, quotes included.
struct Placed {
  Token token;
  std::size_t begin = 0;
  std::size_t end = 0;

  bool isWord(std::string_view word) const { return token.kind == TokenKind::kWord && equalsNoCase(token.text, word); }
  bool isSymbol(std::string_view symbol) const { return token.kind == TokenKind::kSymbol && token.text == symbol; }
  bool isName() const { return token.kind == TokenKind::kWord || token.kind == TokenKind::kQuotedName; }
};

/// Nothing when the text cannot be read, or holds a comment.
std::optional<std::vector<Placed>> tokensOf(std::string_view text, bool isCriterion = false) {
  std::vector<Placed> tokens;
  try {
    sql::Tokenizer tokenizer(text, SqlDialect::kSqlServer, isCriterion);
    for (Token token = tokenizer.next(); token.kind != TokenKind::kEnd; token = tokenizer.next()) {
      const std::size_t quote = token.quote ? 1 : 0;
      const auto begin = static_cast<std::size_t>(token.text.data() - text.data()) - quote;
      const Placed placed{token, begin, begin + token.text.size() + 2 * quote};
      if (!tokens.empty() && tokens.back().end == begin) {
        const Placed& before = tokens.back();
        if (before.isSymbol("-") && placed.isSymbol("-")) return std::nullopt;
        if (before.isSymbol("/") && placed.isSymbol("*")) return std::nullopt;
      }
      tokens.push_back(placed);
    }
  } catch (const ProviderError&) {
    return std::nullopt;
  }
  return tokens;
}

bool isComparison(const Placed& placed) {
  constexpr std::array<std::string_view, 7> kSymbols = {"=", "<>", "!=", "<", ">", "<=", ">="};
  return std::ranges::any_of(kSymbols, [&](std::string_view symbol) { return placed.isSymbol(symbol); });
}

bool isRowStatement(const std::vector<Placed>& tokens) {
  constexpr std::array<std::string_view, 4> kWords = {"select", "insert", "update", "delete"};
  return !tokens.empty() &&
         std::ranges::any_of(kWords, [&](std::string_view word) { return tokens.front().isWord(word); });
}

std::string quotedName(const Placed& name) { return "[" + std::string(name.token.text) + "]"; }

/// The criterion as the server reads it.
std::string serverCondition(std::string_view criterion) {
  const auto tokens = tokensOf(criterion, true);
  if (!tokens) return std::string(criterion);
  std::string text;
  std::size_t done = 0;
  for (const Placed& placed : *tokens) {
    if (placed.token.kind != TokenKind::kDate) continue;
    text += criterion.substr(done, placed.begin - done);
    text += "'" + std::string(placed.token.text) + "'";
    done = placed.end;
  }
  return text + std::string(criterion.substr(done));
}

}  // namespace

BoundText lifted(std::string_view sql) {
  const auto tokens = tokensOf(sql);
  if (!tokens) return {std::string(sql)};
  const bool mayLift = isRowStatement(*tokens);
  BoundText result;
  std::size_t done = 0;
  const Placed* before = nullptr;
  for (const Placed& placed : *tokens) {
    const Placed* const previous = std::exchange(before, &placed);
    if (placed.token.kind != TokenKind::kText || !previous) continue;
    const std::string_view inside = placed.token.text;
    const bool plain = isAscii(inside);
    result.sql += sql.substr(done, placed.begin - done);
    if (mayLift && isComparison(*previous) && inside.size() <= kLongestArgument) {
      result.sql += "?";
      result.arguments.push_back({plain ? kPlainText : kUnicodeText, {Value(sql::unquoted(inside, '\''))}});
    } else {
      const bool isUnicode = previous->isWord("N") && previous->end == placed.begin;
      result.sql += plain || isUnicode ? "" : "N";
      result.sql += sql.substr(placed.begin, placed.end - placed.begin);
    }
    done = placed.end;
  }
  result.sql += sql.substr(done);
  return result;
}

bool mayChangeLayout(std::string_view sql) {
  const auto tokens = tokensOf(sql);
  return !tokens || !isRowStatement(*tokens);
}

std::string firstRowOf(std::string_view sql) {
  std::string text(sql);
  const auto tokens = tokensOf(sql);
  if (!tokens || tokens->size() < 2 || !tokens->front().isWord("select")) return text;
  int depth = 0;
  bool isOrdered = false;
  for (const Placed& placed : *tokens) {
    depth += placed.isSymbol("(") ? 1 : placed.isSymbol(")") ? -1 : 0;
    if (depth > 0) continue;
    isOrdered = isOrdered || placed.isWord("order");
    for (const std::string_view word : {"top", "distinct", "union"}) {
      if (placed.isWord(word)) return text;
    }
  }
  return isOrdered ? text.insert(tokens->front().end, " top 1") : text;
}

QueryShape::QueryShape(std::string_view sql) : whole_(sql), head_(sql) {
  const auto tokens = tokensOf(sql);
  if (!tokens || tokens->empty() || !tokens->front().isWord("select")) return;
  std::size_t end = sql.size();
  std::size_t from = 0;
  std::size_t where = 0;
  std::size_t order = 0;
  int depth = 0;
  bool grouped = false;
  bool computed = false;
  for (std::size_t i = 0; i < tokens->size(); ++i) {
    const Placed& placed = (*tokens)[i];
    depth += placed.isSymbol("(") ? 1 : placed.isSymbol(")") ? -1 : 0;
    if (!from && (placed.isSymbol("(") || placed.isWord("as") || placed.isWord("distinct") || placed.isWord("top")))
      computed = true;
    if (depth > 0) continue;
    if (placed.isSymbol(";")) end = placed.begin;
    if (!from && placed.isWord("from")) from = i;
    if (!where && placed.isWord("where")) where = i;
    if (!order && placed.isWord("order")) order = i;
    for (const std::string_view word : {"group", "having", "union", "distinct", "top"}) {
      grouped = grouped || placed.isWord(word);
    }
  }
  if (!from) return;
  const auto beginOf = [&](std::size_t at, std::size_t otherwise) { return at ? (*tokens)[at].begin : otherwise; };
  order_ = sql.substr(beginOf(order, end), end - beginOf(order, end));
  isPlain_ = !grouped;
  const std::size_t tail = beginOf(order, end);
  if (!isPlain_) {
    head_ = sql.substr(0, tail);
    return;
  }
  head_ = sql.substr(0, beginOf(where, tail));
  from_ = (*tokens)[from].end;
  if (where) condition_ = sql.substr((*tokens)[where].end, tail - (*tokens)[where].end);
  const std::size_t behindName = from + 2;
  const bool oneTable = from + 1 < tokens->size() && (*tokens)[from + 1].isName() &&
                        (behindName == tokens->size() || behindName == where || behindName == order ||
                         (*tokens)[behindName].isSymbol(";"));
  if (!oneTable || computed) return;
  table_ = quotedName((*tokens)[from + 1]);
  tableName_ = (*tokens)[from + 1].token.text;
}

std::string QueryShape::where(std::string_view condition) const { return head_ + " where " + std::string(condition); }

std::string QueryShape::filtered(const std::string& head, std::string_view criterion) const {
  const bool isFiltered = !trimSpace(criterion).empty();
  const bool isLimited = !trimSpace(condition_).empty();
  if (!isFiltered && !isLimited) return head;
  std::string text = head + " where ";
  if (isLimited) text += "(" + condition_ + ")";
  if (isFiltered && isLimited) text += " and ";
  if (isFiltered) text += "(" + serverCondition(criterion) + ")";
  return text;
}

std::string QueryShape::with(std::string_view criterion) const {
  if (trimSpace(criterion).empty()) return whole_;
  return filtered(!isPlain_ ? "select * from (" + head_ + ") as rows_" : head_, criterion) + " " + order_;
}

std::string QueryShape::counting(std::string_view criterion) const {
  constexpr std::string_view kCount = "select count(*) as n from ";
  if (isPlain_) return filtered(std::string(kCount) + head_.substr(from_), criterion);
  return filtered(std::string(kCount) + "(" + head_ + ") as rows_", criterion);
}

}  // namespace orva::odbc
