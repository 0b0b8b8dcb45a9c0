// Imports into a company on a server, over the wire: validating and posting acquired assets against the tests' server,
// which stands in this process in front of the embedded engine. Prints rows a second and statements a row.
//
//   server_import [ROWS]

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <string>
#include <vector>

#include "platform/odbc/demo_company.h"

namespace {

using orva::DemoCompany;
using orva::Ran;

/// Good assets. As in a company's own sheet they share a few masters, or each row names masters that no other names.
std::vector<std::vector<std::string>> sheet(int rows, bool isShared) {
  constexpr const char* kDepartments[] = {"Accounts", "Production", "Quality"};
  std::vector<std::vector<std::string>> cells{orva::assetHeadings()};
  for (int i = 0; i < rows; ++i) {
    const std::string number = std::to_string(i);
    const auto asset = orva::goodAsset("N" + number);
    cells.push_back(isShared ? orva::with(asset, {{"DEPT", kDepartments[i % 3]}})
                             : orva::with(asset, {{"DEPT", "D" + number},
                                                  {"VENDOR", "V" + number},
                                                  {"USER", "U" + number},
                                                  {"COSTCENTRE", "C" + number},
                                                  {"PHYLOC", "L" + number}}));
  }
  return cells;
}

struct Measured {
  double seconds = 0;
  /// Of program and server together: both are in this process.
  double processorSeconds = 0;
  std::size_t statements = 0;
};

Measured measure(DemoCompany& demo, const std::string& workbook, bool posts) {
  std::vector<std::string> command{"import", "--company", "DEMO", "--kind", "acquired", workbook};
  if (!posts) command.emplace_back("--validate-only");
  demo.home.plan().forget();
  const auto start = std::chrono::steady_clock::now();
  const std::clock_t before = std::clock();
  const Ran ran = demo.onServer(command);
  const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
  const double processor = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
  if (ran.status != 0) throw std::runtime_error(ran.out + ran.err);
  return {wall.count(), processor, demo.home.plan().statements().size()};
}

/// What the rows take beside the opening of the company, which a sheet of one row pays as well.
void report(const char* what, int rows, const Measured& one, const Measured& all) {
  const double seconds = all.seconds - one.seconds;
  std::printf("%-26s %8d %9.2f s %9.2f s %10.0f %9.2f s %14.2f\n", what, rows, one.seconds, all.seconds, rows / seconds,
              all.processorSeconds - one.processorSeconds, static_cast<double>(all.statements - one.statements) / rows);
  std::fflush(stdout);
}

void run(int rows) {
  DemoCompany demo(orva::Where::kTestServer);
  // Four digits would not number this many assets.
  demo.home.connect("DEMOORVA")->execute("update Parameter set Digits = 5");
  const std::string one = demo.workbook(sheet(1, true));
  const std::string all = demo.workbook(sheet(rows, true), "all.xls");
  const std::string different = demo.workbook(sheet(rows, false), "different.xls");
  std::printf("%-26s %8s %11s %11s %10s %11s %14s\n", "over the wire", "rows", "one row", "all rows", "rows/s",
              "processor", "statements/row");
  const Measured opening = measure(demo, one, false);
  report("validate", rows, opening, measure(demo, all, false));
  report("validate, all different", rows, opening, measure(demo, different, false));
  report("validate and post", rows, measure(demo, one, true), measure(demo, all, true));
}

}  // namespace

int main(int argc, char** argv) {
  try {
    run(argc > 1 ? std::atoi(argv[1]) : 10'000);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
