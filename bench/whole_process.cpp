// Whole imports of assets, each in a process of its own, as a user runs them: companies of several sizes, workbooks of
// several lengths, good and bad, of both flavours and all modes. Prints a table of wall time, processor time, rows a
// second of processor time, and peak memory; then what a row costs in short and in long workbooks.
//
//   whole_process PROGRAM COMPANY_SCRIPT FOLDER [LARGEST_COMPANY [SMALLEST_COMPANY]]

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "asset_sheets.h"
#include "run_program.h"

namespace {

namespace fs = std::filesystem;
using namespace bench;

constexpr int kLongestSheet = 65'535;

/// One way to import, as the arguments of the command.
struct Way {
  const char* name;
  SheetKind sheet;
  std::vector<std::string> arguments;
};

class Measurements {
 public:
  Measurements(std::string program, std::string script, fs::path folder)
      : program_(std::move(program)), script_(std::move(script)), folder_(std::move(folder)) {}

  void makeCompany(int assets, Stock stock) {
    assets_ = assets;
    fs::remove_all(folder_);
    fs::create_directories(folder_);
    expect(0, orva({"setup"}));
    expect(0, orva({"new", "DEMO"}));
    expect(0, orva({"sql", "--company", "DEMO"}, script_));
    const fs::path inserts = folder_ / "assets.sql";
    writeCompanyScript(inserts, assets, stock);
    const Run filled = orva({"sql", "--company", "DEMO"}, inserts.string());
    expect(0, filled);
    line("sql: inserts", assets, filled);
    const Run opened = orva({"sql", "--company", "DEMO", "select count(*) from Company"});
    expect(0, opened);
    line("open, upgrade", 1, opened);
    fs::remove(inserts);
    fs::copy_file(company(), folder_ / "kept");
  }

  /// Acquisitions in Add mode, the first ones that the company sees.
  void measureAcquired(int rows) {
    const Way good{"acquired", SheetKind::kAcquired, {"--kind", "acquired"}};
    const Way bad{"acquired, all bad", SheetKind::kAllBad, {"--kind", "acquired"}};
    write(good, rows);
    line("acquired: first", rows, import(good, true));
    line("acquired: check", rows, import(good, true));
    write(bad, rows);
    line("acquired: all bad", rows, import(bad, true, 1));
    write(good, rows);
    line("acquired: post", rows, import(good, false));
    restore();
  }

  /// Checks once to make the indexes, once for the figure, and posts.
  void measure(const Way& way, int rows) {
    write(way, rows);
    const std::string name = way.name;
    line((name + ": first").c_str(), rows, import(way, true));
    const Run checked = import(way, true);
    line((name + ": check").c_str(), rows, checked);
    const Run posted = import(way, false);
    line((name + ": check and post").c_str(), rows, posted);
    line((name + ": post alone").c_str(), rows, difference(posted, checked));
    restore();
  }

  /// Time of a row in workbooks of 1,000 and 65,535 rows of one category whose identifiers are generated. An import of
  /// one row is what starting, opening and closing the company take; the first one makes the indexes, too.
  void measureGrowth() {
    constexpr int kShort = 1'000;
    const Way way{"one category", SheetKind::kOneCategory, {"--kind", "acquired"}};
    write(way, 1);
    const Run first = import(way, false);
    const double start =
        std::min({import(way, false).cpuSeconds, import(way, false).cpuSeconds, import(way, false).cpuSeconds});
    write(way, kShort);
    const double brief = std::min({import(way, false).cpuSeconds, import(way, false).cpuSeconds,
                                   import(way, false).cpuSeconds, import(way, false).cpuSeconds});
    write(way, kLongestSheet);
    const Run longest = import(way, false);
    const auto microseconds = [start](double seconds, int rows) { return (seconds - start) / (rows - 1) * 1e6; };
    const double ofBrief = microseconds(brief, kShort);
    const double ofLongest = microseconds(longest.cpuSeconds, kLongestSheet);
    line("one category: post", kLongestSheet, longest);
    std::printf(
        "growth at %d assets: start %.2f s, indexes %.2f s; a row of %d takes %.0f us, of %d %.0f us, %.2f times\n",
        assets_, start, first.cpuSeconds - start, kShort, ofBrief, kLongestSheet, ofLongest, ofLongest / ofBrief);
    std::fflush(stdout);
    restore();
  }

 private:
  fs::path company() const { return folder_ / "DEMOOrva.MDB"; }
  std::string workbook() const { return (folder_ / "assets.xls").string(); }
  /// In a process of its own: a program starts out with the peak memory of the one that started it.
  void write(const Way& way, int rows) const {
    const bool written = inChild([&] { writeAssetSheet(workbook(), way.sheet, rows, assets_); });
    if (!written) throw std::runtime_error("a workbook was not written");
  }
  void restore() const { fs::copy_file(folder_ / "kept", company(), fs::copy_options::overwrite_existing); }

  Run orva(std::vector<std::string> arguments, const std::string& input = "/dev/null") const {
    arguments.insert(arguments.begin(), program_);
    arguments.insert(arguments.end(), {"--program-folder", folder_.string()});
    return runProgram(arguments, input);
  }

  Run import(const Way& way, bool validateOnly, int status = 0) const {
    std::vector<std::string> command{"import", "--company", "DEMO", workbook()};
    command.insert(command.end(), way.arguments.begin(), way.arguments.end());
    if (validateOnly) command.emplace_back("--validate-only");
    const Run run = orva(command);
    expect(status, run);
    return run;
  }

  static Run difference(const Run& whole, const Run& part) {
    return {.seconds = whole.seconds - part.seconds,
            .cpuSeconds = whole.cpuSeconds - part.cpuSeconds,
            .megabytes = whole.megabytes};
  }

  static void expect(int status, const Run& run) {
    if (run.status == status) return;
    throw std::runtime_error("a run ended with status " + std::to_string(run.status) + " instead of " +
                             std::to_string(status));
  }

  void line(const char* what, int rows, const Run& run) const {
    std::printf("%-30s %10d %8d %9.2f s %9.2f s %10.0f %8.0f MB\n", what, assets_, rows, run.seconds, run.cpuSeconds,
                rows / run.cpuSeconds, run.megabytes);
    std::fflush(stdout);
  }

  std::string program_;
  std::string script_;
  fs::path folder_;
  int assets_ = 0;
};

void measureAll(Measurements& measurements, int assets) {
  const Way byAssetId{
      "by asset id", SheetKind::kModifyByAssetId, {"--kind", "acquired", "--mode", "modify-by-asset-id"}};
  const Way byPhysicalId{
      "by physical id", SheetKind::kModifyByPhysicalId, {"--kind", "acquired", "--mode", "modify-by-physical-id"}};
  const Way closing{"closing", SheetKind::kClosing, {"--kind", "closing"}};
  measurements.makeCompany(assets, Stock::kPurchased);
  for (const int rows : {1'000, 10'000, kLongestSheet}) measurements.measureAcquired(rows);
  measurements.measureGrowth();
  for (const Way& way : {byAssetId, byPhysicalId}) measurements.measure(way, std::min(assets, kLongestSheet));
  measurements.makeCompany(assets, Stock::kTakenOver);
  measurements.measure(closing, kLongestSheet);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 4) {
    std::fprintf(stderr, "usage: %s PROGRAM COMPANY_SCRIPT FOLDER [LARGEST_COMPANY [SMALLEST_COMPANY]]\n", argv[0]);
    return 2;
  }
  try {
    const int largest = argc > 4 ? std::atoi(argv[4]) : 1'000'000;
    const int smallest = argc > 5 ? std::atoi(argv[5]) : 0;
    Measurements measurements(argv[1], argv[2], argv[3]);
    std::printf("%-30s %10s %8s %11s %11s %10s %11s\n", "whole process", "assets", "rows", "wall", "processor",
                "rows/s", "peak");
    for (const int assets : {1'000, 100'000, 1'000'000}) {
      if (assets <= largest && assets >= smallest) measureAll(measurements, assets);
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
