#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "platform/access/schema_change.h"
#include "platform/values/text.h"
#include "support.h"

namespace orva::access {
namespace {

/// What a command prints. The tools of the package mdbtools know nothing of this program.
std::string output(const std::string& command) {
  std::string text;
  FILE* const pipe = ::popen((command + " 2>&1").c_str(), "r");
  if (!pipe) return text;
  std::array<char, 65'536> buffer{};
  for (std::size_t n = 0; (n = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) text.append(buffer.data(), n);
  ::pclose(pipe);
  return text;
}

bool toolsAreInstalled() { return std::system("mdb-export --help > /dev/null 2>&1; test $? -ne 127") == 0; }

/// Our own rows in the form of "mdb-export": nulls nothing, texts in quotes, Booleans 0 or 1.
std::string exported(const Column& column, const Cell& cell) {
  if (isNull(cell)) return {};
  if (const auto* text = std::get_if<std::string>(&cell)) return "\"" + replaceAll(*text, "\"", "\"\"") + "\"";
  if (const auto* yes = std::get_if<bool>(&cell)) return *yes ? "1" : "0";
  if (const auto* money = std::get_if<Currency>(&cell)) {
    char buffer[32];
    const std::int64_t units = money->units();
    std::snprintf(buffer, sizeof buffer, "%s%lld.%04lld", units < 0 ? "-" : "",
                  static_cast<long long>(std::abs(units / 10'000)), static_cast<long long>(std::abs(units % 10'000)));
    return buffer;
  }
  if (const auto* date = std::get_if<DateTime>(&cell)) {
    const double day = std::floor(date->days);
    const auto seconds = std::lround((date->days - day) * 86'400);
    const Date d = Date::fromDayNumber(static_cast<std::int32_t>(day));
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "\"%04d-%02d-%02d %02ld:%02ld:%02ld\"", d.year(), d.month(), d.day(),
                  seconds / 3600, seconds / 60 % 60, seconds % 60);
    return buffer;
  }
  if (const auto* number = std::get_if<double>(&cell)) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, column.type == ColumnType::kSingle ? "%.8g" : "%.16g", *number);
    return buffer;
  }
  return toText(cell);
}

std::string exportedTable(Table& table) {
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

std::string exportOf(const std::string& path, const std::string& table) {
  return output("mdb-export -H -b hex -D '%Y-%m-%d %H:%M:%S' -T '%Y-%m-%d %H:%M:%S' -q '\"' '" + path + "' '" + table +
                "'");
}

std::vector<std::string> sortedLines(const std::string& text) {
  std::istringstream in(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  std::sort(lines.begin(), lines.end());
  return lines;
}

/// The first line in which two exports differ, shortened; empty when they are
/// equal. The tools show a moved row where it lies now, so the order does not count.
std::string difference(const std::string& theirs, const std::string& ours) {
  const auto left = sortedLines(theirs);
  const auto right = sortedLines(ours);
  const auto [a, b] = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
  if (a == left.end() && b == right.end()) return {};
  const auto shown = [](const auto& line, const auto& lines) {
    return line == lines.end() ? "(end)" : line->substr(0, 200);
  };
  return "theirs: " + shown(a, left) + "\nours:   " + shown(b, right);
}

#define SKIP_WITHOUT_TOOLS() \
  if (!toolsAreInstalled()) GTEST_SKIP() << "skipped: mdbtools is not installed"

TEST(OtherPrograms, ReadWhatWeWriteValueByValue) {
  SKIP_WITHOUT_TOOLS();
  const TemporaryFolder folder;
  const std::string path = folder.file("new.mdb");
  const auto database = AccessDatabase::create(path);
  SchemaChange schema(*database);
  schema.createTable("All types", {{.name = "Id", .type = ColumnType::kLong, .isAutoNumber = true},
                                   {.name = "Yes", .type = ColumnType::kBoolean},
                                   {.name = "Small", .type = ColumnType::kByte},
                                   {.name = "Whole", .type = ColumnType::kInteger},
                                   {.name = "Money", .type = ColumnType::kCurrency},
                                   {.name = "Fraction", .type = ColumnType::kDouble},
                                   {.name = "Day", .type = ColumnType::kDate},
                                   {.name = "Name", .size = 100},
                                   {.name = "Long", .type = ColumnType::kMemo}});
  schema.createIndex("All types", {.name = "PrimaryKey", .columns = {{"Id"}}, .isPrimary = true});
  schema.createIndex("All types", {.name = "ByName", .columns = {{"Name", true}, {"Money"}}});
  Table& table = database->table("All types");
  const Currency kMoney[] = {Currency::fromUnits(123'400), Currency::fromUnits(-1), Currency::fromWhole(922'337'203),
                             Currency::fromUnits(-98'765'432'101)};
  const std::string kTexts[] = {"", "ab", "abc", "O'Neil & Söhne", "Жук", "=1+1"};
  for (int i = 0; i < 600; ++i) {
    const auto n = static_cast<std::size_t>(i);
    table.insert({Cell(), i % 3 == 0, std::int64_t{i % 256}, std::int64_t{i - 300}, kMoney[n % 4], i / 8.0 - 20,
                  i % 5 == 0 ? Cell() : Cell(DateTime{36'000.0 + i + (i % 24) / 24.0}),
                  i % 7 == 0 ? Cell() : Cell(kTexts[n % 6]),
                  i % 4 == 0 ? Cell() : Cell(std::string(n * 13, static_cast<char>('a' + i % 26)))});
  }
  std::vector<RowId> rows;
  for (RowScan scan = table.scan(); scan.next();) rows.push_back(scan.row());
  for (std::size_t i = 0; i < rows.size(); i += 3) {
    if (i % 2 == 0) table.remove(rows[i]);
    if (i % 2 == 1) table.update(rows[i], {{8, std::string(3000 + i, 'u')}, {7, std::string(90, 'n')}});
  }
  schema.addColumn("All types", {.name = "Added", .type = ColumnType::kCurrency});
  schema.dropColumn("All types", "Small");
  table.insert(
      {Cell(), true, std::int64_t{1}, Currency::fromWhole(5), 1.5, Cell(), "last", Cell(), Currency::fromUnits(7)});
  database->commit();
  database->file().sweep();
  EXPECT_EQ(allFaults(*database), "");
  EXPECT_EQ(output("mdb-tables -1 '" + path + "'"), "All types\n");
  const std::string definition = output("mdb-schema '" + path + "' access");
  for (const char* part : {"[All types]", "[Money]", "Currency", "[Name]\t\t\tText (100)"}) {
    EXPECT_NE(definition.find(part), std::string::npos) << part << " in " << definition;
  }
  EXPECT_EQ(difference(exportOf(path, "All types"), exportedTable(table)), "");
}

/// The other way round: real files must give us the values that the tools print.
TEST(OtherPrograms, AgreeOnTheValuesOfRealFiles) {
  SKIP_WITHOUT_TOOLS();
  std::size_t tables = 0;
  for (const FixtureFile& file : fixtureFiles()) {
    const auto database = AccessDatabase::open(fixture(file.name), {.password = file.password, .forWriting = false});
    for (const std::string& name : database->tableNames()) {
      Table& table = database->table(name);
      const auto& columns = table.definition().columns;
      const bool comparable = std::all_of(columns.begin(), columns.end(), [](const Column& column) {
        return column.type != ColumnType::kOle && column.type != ColumnType::kGuid &&
               column.type != ColumnType::kDecimal;
      });
      if (!comparable) continue;
      EXPECT_EQ(difference(exportOf(fixture(file.name), name), exportedTable(table)), "") << file.name << " " << name;
      ++tables;
    }
  }
  EXPECT_GT(tables, 15u);
}

}  // namespace
}  // namespace orva::access
