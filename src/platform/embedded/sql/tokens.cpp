#include "platform/embedded/sql/tokens.h"

#include <array>
#include <cstring>

#include "platform/database.h"

namespace orva::sql {
namespace {

enum CharClass : std::uint8_t { kOther, kBlank, kLetter, kDigit };

constexpr std::array<CharClass, 256> makeClasses() {
  std::array<CharClass, 256> classes{};
  for (int c = 0; c < 256; ++c) {
    const auto at = static_cast<std::size_t>(c);
    if (c == ' ' || c == '\t' || c == '\r' || c == '\n') classes[at] = kBlank;
    if (c >= '0' && c <= '9') classes[at] = kDigit;
    if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c >= 0x80) classes[at] = kLetter;
  }
  return classes;
}

constexpr std::array<CharClass, 256> kClasses = makeClasses();

CharClass classOf(char c) { return kClasses[static_cast<unsigned char>(c)]; }

[[noreturn]] void failAt(std::string_view text, std::size_t at) {
  const std::string near(text.substr(at, 20));
  throw ProviderError(provider_number::kSyntaxOrExists, "Syntax error in the statement near '" + near + "'.");
}

}  // namespace

Token Tokenizer::next() {
  while (at_ < text_.size() && classOf(text_[at_]) == kBlank) ++at_;
  if (at_ == text_.size()) return {};
  const char c = text_[at_];
  switch (classOf(c)) {
    case kLetter:
      return word();
    case kDigit:
      return number();
    default:
      break;
  }
  if (c == '\'') return quoted(TokenKind::kText, '\'');
  if (c == '"') return quoted(access_ ? TokenKind::kText : TokenKind::kQuotedName, '"');
  if (c == '[') return quoted(TokenKind::kQuotedName, ']');
  if (c == '#' && dates_) return quoted(TokenKind::kDate, '#');
  if (c == '.' && at_ + 1 < text_.size() && classOf(text_[at_ + 1]) == kDigit) return number();
  return symbol();
}

Token Tokenizer::word() {
  const std::size_t start = at_;
  while (at_ < text_.size() && (classOf(text_[at_]) >= kLetter || text_[at_] == '$')) ++at_;
  return {TokenKind::kWord, 0, text_.substr(start, at_ - start)};
}

Token Tokenizer::number() {
  const std::size_t start = at_;
  const auto skipDigits = [this] {
    while (at_ < text_.size() && classOf(text_[at_]) == kDigit) ++at_;
  };
  skipDigits();
  if (at_ < text_.size() && text_[at_] == '.') {
    ++at_;
    skipDigits();
  }
  if (at_ < text_.size() && (text_[at_] == 'e' || text_[at_] == 'E')) {
    std::size_t digits = at_ + 1;
    if (digits < text_.size() && (text_[digits] == '+' || text_[digits] == '-')) ++digits;
    if (digits < text_.size() && classOf(text_[digits]) == kDigit) {
      at_ = digits;
      skipDigits();
    }
  }
  return {TokenKind::kNumber, 0, text_.substr(start, at_ - start)};
}

Token Tokenizer::quoted(TokenKind kind, char close) {
  const std::size_t start = at_ + 1;
  for (std::size_t end = start;;) {
    const void* found = end < text_.size() ? std::memchr(text_.data() + end, close, text_.size() - end) : nullptr;
    if (!found) failAt(text_, at_);
    end = static_cast<std::size_t>(static_cast<const char*>(found) - text_.data());
    const bool doubled = kind != TokenKind::kDate && end + 1 < text_.size() && text_[end + 1] == close;
    if (!doubled) {
      at_ = end + 1;
      return {kind, close, text_.substr(start, end - start)};
    }
    end += 2;
  }
}

Token Tokenizer::symbol() {
  constexpr std::string_view kSymbols = "=<>!(),.+-*/\\%&^;";
  const std::size_t start = at_;
  const char c = text_[at_];
  if (c == 0 || kSymbols.find(c) == std::string_view::npos) failAt(text_, at_);
  ++at_;
  if (at_ < text_.size()) {
    const char second = text_[at_];
    const bool pair =
        (c == '<' && (second == '>' || second == '=')) || (c == '>' && second == '=') || (c == '!' && second == '=');
    if (pair) ++at_;
  }
  return {TokenKind::kSymbol, 0, text_.substr(start, at_ - start)};
}

namespace {

void appendLower(std::string& key, std::string_view text) {
  const std::size_t start = key.size();
  key.resize(start + text.size());
  char* out = key.data() + start;
  for (char c : text) *out++ = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

}  // namespace

void appendNormalForm(Tokenizer tokenizer, const char* base, std::string& key, std::vector<Literal>& literals) {
  for (Token token = tokenizer.next(); token.kind != TokenKind::kEnd; token = tokenizer.next()) {
    if (token.isLiteral()) {
      literals.push_back({token.kind, token.quote, static_cast<std::uint32_t>(token.text.data() - base),
                          static_cast<std::uint32_t>(token.text.size())});
      key.push_back(static_cast<char>(token.kind));
    } else if (token.kind == TokenKind::kQuotedName) {
      key.push_back('[');
      appendLower(key, token.text);
      key.push_back(']');
    } else {
      appendLower(key, token.text);
      key.push_back(' ');
    }
  }
}

std::string unquoted(std::string_view inside, char quote) {
  std::string text;
  text.reserve(inside.size());
  for (std::size_t i = 0; i < inside.size(); ++i) {
    text.push_back(inside[i]);
    if (inside[i] == quote && i + 1 < inside.size() && inside[i + 1] == quote) ++i;
  }
  return text;
}

}  // namespace orva::sql
