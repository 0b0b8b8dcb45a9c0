// Whole imports, each in a process of its own, as a user runs them: companies of several sizes, workbooks of
// several lengths, good and bad. Prints a table of wall time, rows a second and peak memory.
//
//   whole_process PROGRAM COMPANY_SCRIPT FOLDER [LARGEST_COMPANY]

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/xls/xls_workbooks.h"
#include "run_program.h"

namespace {

namespace fs = std::filesystem;
using namespace bench;

/// The most detailed categories of the demonstration company, with the prefix of their identifiers.
struct Category {
  const char* defCode;
  const char* classCode;
  const char* subClassCode;
  const char* prefix;
  std::array<const char*, 3> descriptions;
};

constexpr Category kCategories[] = {
    {"BL", "BL-01", "", "MH\\BL\\FB", {"Buildings", "Factory Buildings", ""}},
    {"BL", "BL-02", "", "MH\\BL\\CW", {"Buildings", "Civil Works", ""}},
    {"PM", "PM-01", "PM-01-01", "MH\\PM\\MT\\TC", {"Plant and Machinery", "Machine Tools", "CNC Turning"}},
    {"PM", "PM-01", "PM-01-02", "MH\\PM\\MT\\MC", {"Plant and Machinery", "Machine Tools", "CNC Milling"}},
    {"PM", "PM-01", "PM-01-03", "MH\\PM\\MT\\GR", {"Plant and Machinery", "Machine Tools", "Grinding"}},
    {"PM", "PM-02", "PM-02-01", "MH\\PM\\UT\\CM", {"Plant and Machinery", "Utilities", "Compressors"}},
    {"PM", "PM-02", "PM-02-02", "MH\\PM\\UT\\PB", {"Plant and Machinery", "Utilities", "Power and Back-up"}},
    {"PM", "PM-03", "", "MH\\PM\\TI", {"Plant and Machinery", "Testing and Inspection", ""}},
    {"PM", "PM-04", "", "MH\\PM\\MH", {"Plant and Machinery", "Material Handling", ""}},
    {"FF", "FF-01", "", "MH\\FF\\OF", {"Furniture and Fixtures", "Office Furniture", ""}},
    {"FF", "FF-02", "", "MH\\FF\\SF", {"Furniture and Fixtures", "Shop Floor Furniture", ""}},
    {"OE", "OE-01", "", "MH\\OE\\AC", {"Office Equipment", "Air Conditioners", ""}},
    {"OE", "OE-02", "", "MH\\OE\\SC", {"Office Equipment", "Security and Communication", ""}},
    {"CO", "CO-01", "CO-01-01", "MH\\CO\\PC\\DT", {"Computers", "Personal Computers", "Desktops"}},
    {"CO", "CO-01", "CO-01-02", "MH\\CO\\PC\\LT", {"Computers", "Personal Computers", "Laptops"}},
    {"CO", "CO-02", "", "MH\\CO\\SN", {"Computers", "Servers and Network", ""}},
    {"VH", "VH-01", "", "MH\\VH\\CR", {"Vehicles", "Cars", ""}},
    {"VH", "VH-02", "", "MH\\VH\\GV", {"Vehicles", "Goods Vehicles", ""}},
};
constexpr int kCategoryCount = static_cast<int>(std::size(kCategories));

void writeCompanyScript(const fs::path& path, int assets) {
  std::ofstream script(path);
  script << "update Parameter set Digits = 5;\n";
  for (int i = 0; i < assets; ++i) {
    const Category& category = kCategories[i % kCategoryCount];
    std::array<char, 16> number{};
    std::snprintf(number.data(), number.size(), "%05d", i / kCategoryCount + 1);
    script << "insert into Asset (Cocd, Assetid, AcquiredAs, Ownership, PhyID, DefCode, ClassCode, SubClasscode, Cost, "
              "Qty, DocDt, UseDate, Accyear, Finyear, FAAge, LeaseDate, DeptCode, Vendorcode) values ('DEMO', '"
           << category.prefix << number.data() << "', 'Purchased', 'Owned', 'OLD/" << i << "', '" << category.defCode
           << "', '" << category.classCode << "', '" << category.subClassCode << "', " << 1000 + i % 90000
           << ", 1, #05/12/2025#, #05/20/2025#, '2025-2026', '2025-2026', 60, #05/20/2030#, '0001', '0001');\n";
  }
}

/// A workbook of twenty columns; in a bad one every row has three faults.
void writeWorkbook(const fs::path& path, int rows, bool bad) {
  std::vector<std::vector<OutputCell>> cells;
  cells.reserve(static_cast<std::size_t>(rows) + 1);
  auto& heading = cells.emplace_back();
  for (const char* name : {"PHYID",  "USEDATE",    "VCHRDATE", "CAT1",    "CAT2",   "CAT3",        "DESCRIPTION",
                           "COST",   "GST",        "QTY",      "MAINLOC", "SUBLOC", "PHYLOC",      "DEPT",
                           "VENDOR", "COSTCENTRE", "USER",     "REMARKS", "VCHRNO", "SALVAGEVALUE"}) {
    heading.push_back(text(name));
  }
  for (int i = 0; i < rows; ++i) {
    const auto& names = kCategories[i % kCategoryCount].descriptions;
    const std::string id = std::to_string(i);
    cells.push_back({text("NEW/" + id),
                     date(bad ? "15/06/2027" : "15/06/2025"),
                     date("10/06/2025"),
                     text(names[0]),
                     text(names[1]),
                     text(names[2]),
                     text(bad ? "" : "Asset number " + id),
                     number(bad ? "-5" : std::to_string(20000 + i % 70000) + ".5"),
                     number("1800"),
                     number("1"),
                     text("Pune"),
                     text("Shop 1"),
                     text("Bay A"),
                     text("Production"),
                     text("Deccan Machine Tools Pvt Ltd"),
                     text("Pune Works"),
                     text("A. Kulkarni"),
                     text("Remark " + id),
                     text("JV/" + id),
                     number("500")});
  }
  orva::XlsWorkbooks().write(path.string(), "Asset", cells);
}

class Measurements {
 public:
  Measurements(std::string program, std::string script, fs::path folder)
      : program_(std::move(program)), script_(std::move(script)), folder_(std::move(folder)) {}

  void makeCompany(int assets) {
    fs::remove_all(folder_);
    fs::create_directories(folder_);
    expect(0, orva({"setup"}));
    expect(0, orva({"new", "DEMO"}));
    expect(0, orva({"sql", "--company", "DEMO"}, script_));
    const fs::path inserts = folder_ / "assets.sql";
    writeCompanyScript(inserts, assets);
    const Run filled = orva({"sql", "--company", "DEMO"}, inserts.string());
    expect(0, filled);
    line("sql: inserts", assets, assets, filled);
    fs::remove(inserts);
    fs::copy_file(company(), folder_ / "kept");
  }

  void measure(int assets, int rows) {
    const fs::path good = folder_ / "good.xls";
    const fs::path bad = folder_ / "bad.xls";
    writeWorkbook(good, rows, false);
    writeWorkbook(bad, rows, true);
    report("validate, good", assets, rows, 0, {good.string(), "--validate-only"});
    report("validate, all bad", assets, rows, 1, {bad.string(), "--validate-only"});
    report("validate and post", assets, rows, 0, {good.string()});
    fs::copy_file(folder_ / "kept", company(), fs::copy_options::overwrite_existing);
  }

 private:
  fs::path company() const { return folder_ / "DEMOOrva.MDB"; }

  Run orva(std::vector<std::string> arguments, const std::string& input = "/dev/null") const {
    arguments.insert(arguments.begin(), program_);
    arguments.insert(arguments.end(), {"--program-folder", folder_.string()});
    return runProgram(arguments, input);
  }

  void report(const char* what, int assets, int rows, int status, const std::vector<std::string>& arguments) const {
    std::vector<std::string> command{"import", "--company", "DEMO", "--kind", "acquired"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    const Run run = orva(command);
    expect(status, run);
    line(what, assets, rows, run);
  }

  static void expect(int status, const Run& run) {
    if (run.status == status) return;
    throw std::runtime_error("a run ended with status " + std::to_string(run.status) + " instead of " +
                             std::to_string(status));
  }

  static void line(const char* what, int assets, int rows, const Run& run) {
    std::printf("%-20s %10d %8d %9.2f s %10.0f %8.0f MB\n", what, assets, rows, run.seconds, rows / run.seconds,
                run.megabytes);
    std::fflush(stdout);
  }

  std::string program_;
  std::string script_;
  fs::path folder_;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc < 4) {
    std::fprintf(stderr, "usage: %s PROGRAM COMPANY_SCRIPT FOLDER [LARGEST_COMPANY]\n", argv[0]);
    return 2;
  }
  try {
    const int largest = argc > 4 ? std::atoi(argv[4]) : 1'000'000;
    Measurements measurements(argv[1], argv[2], argv[3]);
    std::printf("%-20s %10s %8s %11s %10s %11s\n", "whole process", "assets", "rows", "wall", "rows/s", "peak");
    for (const int assets : {1'000, 100'000, 1'000'000}) {
      if (assets > largest) break;
      measurements.makeCompany(assets);
      for (const int rows : {1'000, 10'000, 65'535}) measurements.measure(assets, rows);
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
