#include "platform/embedded/sql/tokens.h"

#include <array>
#include <cstring>

#include "platform/database.h"

namespace orva::sql {
namespace {

enum CharClass : std::uint8_t { kOther, kBlank, kSymbol, kLetter, kDigit };

constexpr std::string_view kSymbols = "=<>!(),.+-*/\\%&^;";

constexpr std::array<CharClass, 256> makeClasses() {
  std::array<CharClass, 256> classes{};
  for (const char symbol : kSymbols) classes[static_cast<unsigned char>(symbol)] = kSymbol;
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
constexpr std::array<char, 256> makeLower() {
  std::array<char, 256> lower{};
  for (int c = 0; c < 256; ++c) {
    lower[static_cast<std::size_t>(c)] = static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
  }
  return lower;
}

constexpr std::array<char, 256> kLower = makeLower();

/// What a character of a word is in lower case; 0 for one that ends the word.
constexpr std::array<char, 256> makeWordLower() {
  std::array<char, 256> lower = kLower;
  for (std::size_t at = 0; at < lower.size(); ++at) {
    if (kClasses[at] < kLetter && at != '$') lower[at] = 0;
  }
  return lower;
}

constexpr std::array<char, 256> kWordLower = makeWordLower();

/// Writes a text in lower case and returns the place behind it.
char* writeLower(char* out, std::string_view text) {
  for (char c : text) *out++ = kLower[static_cast<unsigned char>(c)];
  return out;
}

[[noreturn]] void failAt(std::string_view text, std::size_t at) {
  const std::string near(text.substr(at, 20));
  throw ProviderError(provider_number::kSyntaxOrExists, "Syntax error in the statement near '" + near + "'.");
}

}  // namespace

void Tokenizer::skipBlanks() {
  while (at_ < text_.size() && classOf(text_[at_]) == kBlank) ++at_;
}

Token Tokenizer::next() {
  skipBlanks();
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
  while (at_ < text_.size() && kWordLower[static_cast<unsigned char>(text_[at_])] != 0) ++at_;
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
  const std::size_t start = at_;
  const char c = text_[at_];
  if (classOf(c) != kSymbol) failAt(text_, at_);
  ++at_;
  if (at_ < text_.size()) {
    const char second = text_[at_];
    const bool pair =
        (c == '<' && (second == '>' || second == '=')) || (c == '>' && second == '=') || (c == '!' && second == '=');
    if (pair) ++at_;
  }
  return {TokenKind::kSymbol, 0, text_.substr(start, at_ - start)};
}

char* Tokenizer::writeWord(char* out) {
  const char* const end = text_.data() + text_.size();
  const char* from = text_.data() + at_;
  for (char lower; from != end && (lower = kWordLower[static_cast<unsigned char>(*from)]) != 0; ++from) *out++ = lower;
  at_ = static_cast<std::size_t>(from - text_.data());
  *out++ = ' ';
  return out;
}

void Tokenizer::appendNormalForm(const char* base, std::string& key, std::vector<Literal>& literals) {
  const std::size_t start = key.size();
  // A token is followed by one more character, or stands in brackets that it had before.
  key.resize(start + 2 * text_.size());
  char* out = key.data() + start;
  for (;;) {
    skipBlanks();
    if (at_ == text_.size()) break;
    if (classOf(text_[at_]) == kLetter) {
      out = writeWord(out);
      continue;
    }
    const Token token = next();
    if (token.isLiteral()) {
      literals.push_back({token.kind, token.quote, static_cast<std::uint32_t>(token.text.data() - base),
                          static_cast<std::uint32_t>(token.text.size())});
      *out++ = static_cast<char>(token.kind);
    } else if (token.kind == TokenKind::kQuotedName) {
      *out++ = '[';
      out = writeLower(out, token.text);
      *out++ = ']';
    } else {
      out = writeLower(out, token.text);
      *out++ = ' ';
    }
  }
  key.resize(static_cast<std::size_t>(out - key.data()));
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
