#include "fakes/case_file.h"

#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "platform/values/text.h"

namespace orva {
namespace {

std::string writtenOut(std::string line) {
  static const std::regex kRepeated(R"((.)\{(\d+)\})");
  for (std::smatch found; std::regex_search(line, found, kRepeated);) {
    const std::string characters(std::stoul(found[2]), found.str(1)[0]);
    line = found.prefix().str() + characters + found.suffix().str();
  }
  constexpr std::pair<const char*, const char*> kMarks[] = {
      {"<lf>", "\n"}, {"<cr>", "\r"}, {"<tab>", "\t"}, {"<sp>", " "}};
  for (const auto& [mark, text] : kMarks) line = replaceAll(line, mark, text);
  return line;
}

}  // namespace

std::string fixturePath(const std::string& fixture) { return std::string(ORVA_FIXTURES) + "/" + fixture; }

std::string fixtureText(const std::string& fixture) {
  std::ifstream file(fixturePath(fixture), std::ios::binary);
  if (!file) throw std::runtime_error("no fixture " + fixture);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<ListedCase> listedCases(const std::string& fixture) {
  std::istringstream file(fixtureText(fixture));
  std::vector<ListedCase> cases;
  int number = 0;
  for (std::string line; std::getline(file, line);) {
    ++number;
    if (line.empty() || line.starts_with("#")) continue;
    const std::string text = writtenOut(line);
    if (text.starts_with("  ")) {
      cases.at(cases.size() - 1).lines.push_back(text.substr(2));
    } else if (text.starts_with("|")) {
      cases.at(cases.size() - 1).head += " " + text;
    } else {
      cases.push_back({fixture + ":" + std::to_string(number), text, {}});
    }
  }
  if (cases.empty()) throw std::runtime_error(fixture + " lists no case");
  return cases;
}

std::vector<std::string> splitAt(std::string_view text, std::string_view separator) {
  std::vector<std::string> parts;
  for (;;) {
    const std::size_t end = text.find(separator);
    parts.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + separator.size());
  }
}

}  // namespace orva
