// Imports that refer to existing assets, each in a process of its own: sales and changes of category, up to the
// longest sheet, against companies of several sizes, every asset with book depreciation. Prints wall time, rows a
// second and peak memory; the rate of posting leaves out the time of the validation before it.
//
//   whole_transactions PROGRAM COMPANY_SCRIPT FOLDER [LARGEST_COMPANY]

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "platform/xls/xls_workbooks.h"
#include "run_program.h"

namespace {

namespace fs = std::filesystem;
using namespace bench;

constexpr int kLongestSheet = 65'535;

/// Each row has an asset of its own.
int rowsFor(int assets) { return std::min(kLongestSheet, assets); }

/// Categories of the demonstration company: where the assets are, and where they move to.
struct Category {
  const char* defCode;
  const char* classCode;
  const char* faCode;
  std::array<const char*, 3> descriptions;
};

constexpr Category kCategories[] = {
    {"BL", "BL-01", "BLDG", {"Buildings", "Factory Buildings", ""}},
    {"PM", "PM-01", "PLANT", {"Plant and Machinery", "Machine Tools", "CNC Milling"}},
    {"FF", "FF-01", "FURN", {"Furniture and Fixtures", "Office Furniture", ""}},
    {"OE", "OE-01", "OFFEQ", {"Office Equipment", "Air Conditioners", ""}},
    {"CO", "CO-01", "COMP", {"Computers", "Personal Computers", "Laptops"}},
    {"CO", "CO-02", "SERVER", {"Computers", "Servers and Network", ""}},
    {"VH", "VH-01", "VEH", {"Vehicles", "Cars", ""}},
};
constexpr int kCategoryCount = static_cast<int>(std::size(kCategories));

std::string assetId(int index) { return "OLD" + std::to_string(1'000'000 + index); }

void writeAssets(const fs::path& path, int assets) {
  std::ofstream script(path);
  for (int i = 0; i < assets; ++i) {
    const Category& category = kCategories[i % kCategoryCount];
    script << "insert into Asset (Cocd, Assetid, AcquiredAs, DefCode, ClassCode, Facode, Cost, DocDt, UseDate, "
              "Accyear, Finyear, Batch) values ('DEMO', '"
           << assetId(i) << "', 'Purchased', '" << category.defCode << "', '" << category.classCode << "', '"
           << category.faCode << "', " << 1000 + i % 90000
           << ", #05/12/2025#, #05/20/2025#, '2025-2026', '2025-2026', 'B1');\n"
           << "insert into Fadep (Cocd, Assetid, DocDt, FACode, Amount, Accyear) values ('DEMO', '" << assetId(i)
           << "', #09/30/2025#, '" << category.faCode << "', 100, '2025-2026');\n";
  }
}

std::vector<OutputCell> headingRow(const std::vector<const char*>& names) {
  std::vector<OutputCell> cells;
  cells.reserve(names.size());
  for (const char* name : names) cells.push_back(text(name));
  return cells;
}

/// Rows spread over the whole company.
std::string assetOfRow(int row, int rows, int assets) {
  return assetId(static_cast<int>(static_cast<long long>(row) * assets / rows));
}

void writeSales(const fs::path& path, int assets) {
  const int rows = rowsFor(assets);
  std::vector<std::vector<OutputCell>> cells{
      headingRow({"ASSETID", "InvoiceNo", "SaleDate", "SaleAMT", "SerialNo", "Remarks"})};
  for (int i = 0; i < rows; ++i) {
    const std::string row = std::to_string(i);
    const std::string day = std::to_string(1 + i % 28);
    cells.push_back({text(assetOfRow(i, rows, assets)), text("INV" + row), date(day + "/11/2025"),
                     number(std::to_string(100 + i % 900) + ".5"), text("S" + row), text("Remark " + row)});
  }
  orva::XlsWorkbooks().write(path.string(), "Asset", cells);
}

void writeChanges(const fs::path& path, int assets) {
  const int rows = rowsFor(assets);
  std::vector<std::vector<OutputCell>> cells{headingRow({"DocRef", "ASSETID", "CAT1", "CAT2", "CAT3", "Remarks"})};
  for (int i = 0; i < rows; ++i) {
    const int old = static_cast<int>(static_cast<long long>(i) * assets / rows);
    const auto& names = kCategories[(old + 1 + i % (kCategoryCount - 1)) % kCategoryCount].descriptions;
    const std::string number = std::to_string(i);
    cells.push_back({text("D" + number), text(assetOfRow(i, rows, assets)), text(names[0]), text(names[1]),
                     text(names[2]), text("Remark " + number)});
  }
  orva::XlsWorkbooks().write(path.string(), "Asset", cells);
}

struct Folder {
  std::string program;
  std::string script;
  fs::path path;

  Run orva(std::vector<std::string> arguments, const std::string& input = "/dev/null") const {
    arguments.insert(arguments.begin(), program);
    arguments.insert(arguments.end(), {"--program-folder", path.string()});
    Run run = runProgram(arguments, input);
    if (run.status != 0) throw std::runtime_error("a run ended with status " + std::to_string(run.status));
    return run;
  }
};

void makeCompany(const Folder& folder, int assets) {
  fs::remove_all(folder.path);
  fs::create_directories(folder.path);
  folder.orva({"setup"});
  folder.orva({"new", "DEMO"});
  folder.orva({"sql", "--company", "DEMO"}, folder.script);
  const fs::path inserts = folder.path / "assets.sql";
  writeAssets(inserts, assets);
  folder.orva({"sql", "--company", "DEMO"}, inserts.string());
  fs::remove(inserts);
}

void line(const char* what, int assets, int rows, double seconds, double megabytes) {
  std::printf("%-24s %10d %8d %9.2f s %10.0f %8.0f MB\n", what, assets, rows, seconds, rows / seconds, megabytes);
  std::fflush(stdout);
}

/// Validates twice, the second time with posting.
void measure(const Folder& folder, const std::string& kind, const fs::path& workbook, int assets) {
  const int rows = rowsFor(assets);
  const std::vector<std::string> command{"import", "--company", "DEMO", "--kind", kind, workbook.string()};
  std::vector<std::string> validation = command;
  validation.emplace_back("--validate-only");
  // The first look-up of a kind makes the indexes that it needs; users wait for that once.
  const Run first = folder.orva(validation);
  const Run validated = folder.orva(validation);
  const Run posted = folder.orva(command);
  line((kind + ": first").c_str(), assets, rows, first.seconds, first.megabytes);
  line((kind + ": check").c_str(), assets, rows, validated.seconds, validated.megabytes);
  line((kind + ": post").c_str(), assets, rows, posted.seconds - validated.seconds, posted.megabytes);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 4) {
    std::fprintf(stderr, "usage: %s PROGRAM COMPANY_SCRIPT FOLDER [LARGEST_COMPANY]\n", argv[0]);
    return 2;
  }
  try {
    const int largest = argc > 4 ? std::atoi(argv[4]) : 1'000'000;
    const Folder folder{.program = argv[1], .script = argv[2], .path = argv[3]};
    std::printf("%-24s %10s %8s %11s %10s %11s\n", "existing assets", "assets", "rows", "wall", "rows/s", "peak");
    for (const int assets : {10'000, 100'000, 1'000'000}) {
      if (assets > largest) break;
      makeCompany(folder, assets);
      const fs::path changes = folder.path / "changes.xls";
      const fs::path sales = folder.path / "sales.xls";
      writeChanges(changes, assets);
      writeSales(sales, assets);
      measure(folder, "change-category", changes, assets);
      measure(folder, "sale", sales, assets);
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
