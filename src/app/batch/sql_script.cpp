#include "app/batch/sql_script.h"

#include <cstddef>

#include "platform/values/text.h"

namespace orva {
namespace {

char closingQuote(char opening) { return opening == '[' ? ']' : opening; }

bool isQuote(char c) { return c == '\'' || c == '"' || c == '['; }

/// Where the statement that starts at `from` ends: at its ";" or at the end of the script.
/// A doubled quote inside quotes closes and opens again, which comes to the same.
std::size_t endOfStatement(std::string_view script, std::size_t from) {
  char open = '\0';
  for (std::size_t at = from; at < script.size(); ++at) {
    const char c = script[at];
    if (open != '\0') {
      if (c == open) open = '\0';
    } else if (isQuote(c)) {
      open = closingQuote(c);
    } else if (c == ';') {
      return at;
    }
  }
  return script.size();
}

/// Drops blanks, empty lines and remark lines in front.
std::string_view withoutRemarks(std::string_view text) {
  text = trimSpace(text);
  while (text.starts_with("--")) {
    const std::size_t lineEnd = text.find('\n');
    if (lineEnd == std::string_view::npos) return {};
    text = trimSpace(text.substr(lineEnd));
  }
  return text;
}

}  // namespace

bool forEachStatement(std::string_view script, const std::function<bool(std::string_view statement)>& run) {
  std::string_view rest = withoutRemarks(script);
  while (!rest.empty()) {
    const std::size_t end = endOfStatement(rest, 0);
    const std::string_view statement = trimSpace(rest.substr(0, end));
    if (!statement.empty() && !run(statement)) return false;
    rest = end < rest.size() ? withoutRemarks(rest.substr(end + 1)) : std::string_view();
  }
  return true;
}

bool givesRows(std::string_view statement) {
  while (!statement.empty() && statement.front() == '(') statement = trimSpace(statement.substr(1));
  constexpr std::string_view kSelect = "select";
  if (statement.size() <= kSelect.size() || !equalsNoCase(statement.substr(0, kSelect.size()), kSelect)) return false;
  const char next = statement[kSelect.size()];
  return next == ' ' || next == '\t' || next == '\n' || next == '\r' || next == '*' || next == '(';
}

}  // namespace orva
