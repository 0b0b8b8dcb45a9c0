#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "platform/access/access_database.h"
#include "platform/values/text.h"

namespace orva::access {

/// What a command prints.
inline std::string output(const std::string& command) {
  std::string text;
  FILE* const pipe = ::popen((command + " 2>&1").c_str(), "r");
  if (!pipe) return text;
  std::array<char, 65'536> buffer{};
  for (std::size_t n = 0; (n = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) text.append(buffer.data(), n);
  ::pclose(pipe);
  return text;
}

/// The tools of the package mdbtools, which know nothing of this program.
inline bool toolsAreInstalled() { return std::system("mdb-export --help > /dev/null 2>&1; test $? -ne 127") == 0; }

/// Our own rows in the form of "mdb-export": nulls nothing, texts in quotes, Booleans 0 or 1.
inline std::string exported(const Column& column, const Cell& cell) {
  if (isNull(cell)) return {};
  if (const auto* text = std::get_if<std::string>(&cell)) return "\"" + replaceAll(*text, "\"", "\"\"") + "\"";
  if (const auto* yes = std::get_if<bool>(&cell)) return *yes ? "1" : "0";
  char buffer[64];
  if (const auto* money = std::get_if<Currency>(&cell)) {
    const std::int64_t units = money->units();
    std::snprintf(buffer, sizeof buffer, "%s%lld.%04lld", units < 0 ? "-" : "",
                  static_cast<long long>(std::abs(units / 10'000)), static_cast<long long>(std::abs(units % 10'000)));
    return buffer;
  }
  if (const auto* date = std::get_if<DateTime>(&cell)) {
    const double day = std::floor(date->days);
    const auto seconds = std::lround((date->days - day) * 86'400);
    const Date d = Date::fromDayNumber(static_cast<std::int32_t>(day));
    std::snprintf(buffer, sizeof buffer, "\"%04d-%02d-%02d %02ld:%02ld:%02ld\"", d.year(), d.month(), d.day(),
                  seconds / 3600, seconds / 60 % 60, seconds % 60);
    return buffer;
  }
  if (const auto* number = std::get_if<double>(&cell)) {
    std::snprintf(buffer, sizeof buffer, column.type == ColumnType::kSingle ? "%.8g" : "%.16g", *number);
    return buffer;
  }
  return toText(cell);
}

inline std::string exportedTable(Table& table) {
  std::string text;
  for (RowScan scan = table.scan(); scan.next();) {
    const Row row = table.rows().row(scan.row());
    for (std::size_t i = 0; i < row.size(); ++i) {
      text += (i == 0 ? "" : ",") + exported(table.definition().columns[i], row[i]);
    }
    text += "\n";
  }
  return text;
}

inline std::string exportOf(const std::string& path, const std::string& table) {
  return output("mdb-export -H -b hex -D '%Y-%m-%d %H:%M:%S' -T '%Y-%m-%d %H:%M:%S' -q '\"' '" + path + "' '" + table +
                "'");
}

inline std::vector<std::string> sortedLines(const std::string& text) {
  std::istringstream in(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  std::sort(lines.begin(), lines.end());
  return lines;
}

/// The first line in which two exports differ, shortened; empty when they are
/// equal. The tools show a moved row where it lies now, so the order does not count.
inline std::string difference(const std::string& theirs, const std::string& ours) {
  const auto left = sortedLines(theirs);
  const auto right = sortedLines(ours);
  const auto [a, b] = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
  if (a == left.end() && b == right.end()) return {};
  const auto shown = [](const auto& line, const auto& lines) {
    return line == lines.end() ? "(end)" : line->substr(0, 200);
  };
  return "theirs: " + shown(a, left) + "\nours:   " + shown(b, right);
}

/// Where scripts/test puts the package mdb-reader with the program that compares.
inline std::string readerScript() { return std::string(ORVA_READER_CHECK) + "/compare.mjs"; }

inline bool readerIsInstalled() {
  return std::filesystem::exists(std::string(ORVA_READER_CHECK) + "/node_modules/mdb-reader") &&
         std::filesystem::exists(readerScript());
}

inline std::string quotedJson(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    char code[8];
    std::snprintf(code, sizeof code, "\\u%04x", byte);
    quoted += byte < 0x20 ? std::string(code) : c == '"' || c == '\\' ? std::string{'\\', c} : std::string(1, c);
  }
  return quoted + "\"";
}

inline std::string jsonOf(const Cell& cell) {
  char buffer[64];
  if (isNull(cell)) return "null";
  if (const auto* yes = std::get_if<bool>(&cell)) return *yes ? "true" : "false";
  if (const auto* money = std::get_if<Currency>(&cell)) return R"({"money":")" + std::to_string(money->units()) + "\"}";
  if (const auto* date = std::get_if<DateTime>(&cell)) {
    std::snprintf(buffer, sizeof buffer, R"({"moment":%.17g})", date->days);
    return buffer;
  }
  if (const auto* number = std::get_if<double>(&cell)) {
    std::snprintf(buffer, sizeof buffer, "%.17g", *number);
    return buffer;
  }
  if (std::holds_alternative<std::int64_t>(cell)) return toText(cell);
  return quotedJson(toText(cell));
}

/// All tables of a database in the form that the comparing program reads.
inline std::string expectedJson(AccessDatabase& database) {
  std::string text = "{";
  for (const std::string& name : database.tableNames()) {
    Table& table = database.table(name);
    text += (text.size() > 1 ? ",\n" : "") + quotedJson(name) + R"(:{"columns":[)";
    std::string comma;
    for (const Column& column : table.definition().columns) {
      text += std::exchange(comma, ",") + quotedJson(column.name);
    }
    text += R"(],"rows":[)";
    comma.clear();
    for (RowScan scan = table.scan(); scan.next();) {
      text += std::exchange(comma, ",\n") + "[";
      std::string inner;
      for (const Cell& cell : table.rows().row(scan.row())) text += std::exchange(inner, ",") + jsonOf(cell);
      text += "]";
    }
    text += "]}";
  }
  return text + "}";
}

/// What the package mdb-reader reads otherwise; empty when all is the same.
inline std::string differenceToReader(const std::string& path, AccessDatabase& database) {
  const std::string expected = path + ".json";
  std::ofstream(expected) << expectedJson(database);
  const std::string faults = output("node '" + readerScript() + "' '" + path + "' '" + expected + "'");
  std::filesystem::remove(expected);
  return faults;
}

#define SKIP_WITHOUT_TOOLS() \
  if (!orva::access::toolsAreInstalled()) GTEST_SKIP() << "skipped: the package mdbtools is not installed"
#define SKIP_WITHOUT_READER() \
  if (!orva::access::readerIsInstalled()) GTEST_SKIP() << "skipped: the package mdb-reader is not installed"

}  // namespace orva::access
