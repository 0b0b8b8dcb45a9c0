#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orva {

/// One case of a list of cases: a line, and the indented lines under it.
struct ListedCase {
  std::string place;  ///< file and line, for what a test tells
  std::string head;
  std::vector<std::string> lines;
};

/// The cases of a file of the fixture folder. "#" begins a remark, a line that begins with "|" goes on with the one
/// above, "x{31}" stands for so many of the character, <lf>, <cr>, <tab> for what cannot be seen and <sp> for a blank
/// at the end of a line.
std::vector<ListedCase> listedCases(const std::string& fixture);

std::string fixturePath(const std::string& fixture);
/// The whole text of a file of the fixture folder.
std::string fixtureText(const std::string& fixture);

std::vector<std::string> splitAt(std::string_view text, std::string_view separator);

}  // namespace orva
