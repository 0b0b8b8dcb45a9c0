#include <algorithm>
#include <iomanip>
#include <sstream>

#include "app/batch_test.h"
#include "fakes/case_file.h"
#include "platform/values/text.h"
#include "platform/xls/xls_workbooks.h"

namespace orva {
namespace {

using Lines = std::vector<std::string>;

struct Session {
  std::string title;
  std::vector<ListedCase> steps;
};

std::vector<Session> sessions() {
  std::vector<Session> all;
  for (const char* fixture : {"batch/companies.txt", "batch/imports.txt", "batch/masters.txt"}) {
    for (const ListedCase& step : listedCases(fixture)) {
      if (step.head.starts_with("== ")) {
        all.push_back({step.head.substr(3), {}});
      } else {
        all.back().steps.push_back(step);
      }
    }
  }
  return all;
}

std::string withBars(const std::string& text) { return replaceAll(replaceAll(text, "\r\n", "\n"), "\t", " | "); }

Lines linesOf(const std::string& text) {
  Lines lines = splitAt(withBars(text), "\n");
  if (lines.back().empty()) lines.pop_back();
  return lines;
}

/// Commands on a company DEMO, one listed session each:
///   assets FILE         a workbook of good assets: after its identifier the cells in which each differs
///   sheet FILE NAME     a workbook of one sheet with these rows
///   file NAME           a file with these lines
///   script NAME         runs a script of the demonstration
///   $ COMMAND           must succeed, "$1" and "$2" must end so; "@x" is the file x. Under it texts that must be
///   printed,
///                       "! " one that must not, "= " the lines of all that is printed to the output
///   ? STATEMENT         the rows that it gives
///   show FILE, in FILE  its lines, or texts that stand in it
///   masters in FILE     the rows of a workbook of masters
class Sessions : public BatchTest, public testing::WithParamInterface<Session> {
 protected:
  void take(const ListedCase& step) const {
    const std::size_t end = step.head.find(' ');
    const std::string word = step.head.substr(0, end);
    const std::string rest = step.head.substr(end + 1);
    if (word == "assets") {
      writeWorkbook(folder.file(rest), "Asset", assets(step.lines));
    } else if (word == "sheet") {
      writeSheet(splitAt(rest, " "), step.lines);
    } else if (word == "file") {
      std::string text;
      for (const std::string& line : step.lines) text += line + "\r\n";
      folder.write(rest, text);
    } else if (word == "script") {
      EXPECT_EQ(run({"sql", "--company", "DEMO"}, demoScript(rest)).status, 0);
    } else if (word == "?") {
      Lines rows = linesOf(query(rest));
      if (!rows.empty()) rows.erase(rows.begin());
      EXPECT_EQ(rows, step.lines);
    } else if (word == "show") {
      EXPECT_EQ(linesOf(folder.read(rest)), step.lines);
    } else if (word == "in") {
      expectTexts(withBars(folder.read(rest)), step.lines);
    } else if (word == "masters") {
      EXPECT_EQ(masters(folder.file(rest.substr(3))), step.lines);
    } else {
      command(word == "$" ? 0 : word.at(1) - '0', rest, step.lines);
    }
  }

 private:
  static std::vector<Lines> assets(const Lines& lines) {
    std::vector<Lines> sheet{assetHeadings()};
    for (const std::string& line : lines) {
      const Lines cells = splitAt(line, " | ");
      Lines asset = goodAsset(cells[0]);
      asset.resize(sheet[0].size());
      for (std::size_t i = 1; i < cells.size(); ++i) {
        const std::string heading = cells[i].substr(0, cells[i].find('='));
        const auto column = std::ranges::find(sheet[0], heading) - sheet[0].begin();
        if (column == std::ssize(sheet[0])) sheet[0].push_back(heading);
        asset.resize(sheet[0].size());
        asset[static_cast<std::size_t>(column)] = cells[i].substr(heading.size() + 1);
      }
      sheet.push_back(asset);
    }
    return sheet;
  }
  void writeSheet(const Lines& fileAndName, const Lines& lines) const {
    std::vector<Lines> rows;
    for (const std::string& line : lines) rows.push_back(splitAt(line, " | "));
    writeWorkbook(folder.file(fileAndName.at(0)), fileAndName.at(1), rows);
  }
  static Lines masters(const std::string& path) {
    const auto sheet = XlsWorkbooks().openSheet(path, "Master", HeaderRow::kNo);
    Lines rows;
    for (int row = 0; row < sheet->rowCount(); ++row) {
      std::string& line = rows.emplace_back();
      for (int column = 0; column < sheet->columnCount(); ++column) line += sheet->text(row, column) + "|";
    }
    return rows;
  }
  std::string filledIn(std::string text) const {
    text = replaceAll(text, "{folder}", folder.text());
    text = replaceAll(text, "{fixtures}", ORVA_FIXTURES);
    return replaceAll(text, "{demo}", ORVA_DEMO);
  }
  static void expectTexts(const std::string& text, const Lines& wanted) {
    for (const std::string& line : wanted) {
      if (line.starts_with("! ")) {
        EXPECT_EQ(text.find(line.substr(2)), std::string::npos) << line << "\n" << text;
      } else {
        EXPECT_NE(text.find(line), std::string::npos) << line << "\n" << text;
      }
    }
  }
  void command(int status, const std::string& line, const Lines& printed) const {
    Lines arguments;
    std::istringstream words(filledIn(line));
    for (std::string word; words >> std::quoted(word);) {
      arguments.push_back(word.starts_with("@") ? folder.file(word.substr(1)) : word);
    }
    const Ran ran = run(arguments);
    EXPECT_EQ(ran.status, status) << ran.out << ran.err;
    if (status == 2) {
      EXPECT_NE(ran.err, "") << "a refusal is told";
    }
    Lines all;
    Lines texts;
    for (const std::string& text : printed) {
      if (text.starts_with("= ")) {
        all.push_back(text.substr(2));
      } else {
        texts.push_back(filledIn(text));
      }
    }
    if (!all.empty()) {
      EXPECT_EQ(linesOf(ran.out), all);
    }
    // A refusal is no part of the output.
    expectTexts(withBars(status == 2 ? ran.err : ran.out + ran.err), texts);
  }
};

TEST_P(Sessions, GoAsListed) {
  for (const ListedCase& step : GetParam().steps) {
    SCOPED_TRACE(step.place + ": " + step.head);
    take(step);
  }
}

INSTANTIATE_TEST_SUITE_P(Listed, Sessions, testing::ValuesIn(sessions()), [](const auto& session) {
  std::string name = session.param.title;
  std::ranges::replace_if(
      name, [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
  return name;
});

}  // namespace
}  // namespace orva
