#include "startup/orva_ini.h"

#include <algorithm>
#include <vector>

#include "platform/values/text.h"
#include "startup/windows_text.h"

namespace orva {
namespace {

constexpr unsigned kShift = 30;

std::string withoutByteOrderMark(const std::string& line) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  return line.starts_with(kMark) ? line.substr(kMark.size()) : line;
}

/// Each byte moved by `shift`, last byte first.
std::string reversedShifted(std::string_view text, unsigned shift) {
  std::string result(text.rbegin(), text.rend());
  for (char& byte : result) byte = static_cast<char>(static_cast<unsigned char>(byte) + shift);
  return result;
}

/// The four first lines of a server's file are "NAME=value" in clear; a missing one is empty.
std::string valueOfLine(const std::vector<std::string>& lines, std::size_t index) {
  if (index >= lines.size()) return {};
  const std::string clear = asUtf8(unscramble(asWindowsBytes(lines[index])));
  return clear.substr(clear.find('=') + 1);
}

bool describesServer(const std::vector<std::string>& lines) {
  return lines.size() > 1 && unscramble(lines[0]).find("SERVER=") != std::string::npos;
}

/// False for what a damaged file, or one in another encoding, has in its first line.
bool canBeAFolder(std::string_view line) {
  constexpr std::size_t kLongestPath = 4096;
  const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
  return !trimSpace(line).empty() && line.size() <= kLongestPath && std::ranges::none_of(line, isControl);
}

}  // namespace

std::string unscramble(std::string_view stored) { return reversedShifted(stored, 256 - kShift); }

std::string scramble(std::string_view clear) { return reversedShifted(clear, kShift); }

std::optional<OrvaIni> serverDescribedBy(const std::vector<std::string>& lines) {
  if (!describesServer(lines)) return std::nullopt;
  return OrvaIni{.isSqlServer = true,
                 .dataFolder = {},
                 .server = valueOfLine(lines, 0),
                 .authenticationKind = valueOfLine(lines, 1),
                 .userId = valueOfLine(lines, 2),
                 .password = valueOfLine(lines, 3)};
}

OrvaIni readOrvaIni(const Files& files, const std::string& path) {
  std::vector<std::string> lines = files.readLines(path);
  if (lines.empty()) throw FileError("The file " + path + " is empty: its first line must hold the data folder.");
  lines[0] = withoutByteOrderMark(lines[0]);
  if (auto server = serverDescribedBy(lines)) return *server;
  if (canBeAFolder(lines[0])) return {.dataFolder = asUtf8(lines[0])};
  throw FileError("The first line of the file " + path + " names no folder: it must hold the data folder.");
}

std::string readProviderClause(const Files& files, const std::string& path) {
  const std::vector<std::string> lines = files.readLines(path);
  return lines.empty() ? std::string() : asUtf8(withoutByteOrderMark(lines[0]));
}

}  // namespace orva
