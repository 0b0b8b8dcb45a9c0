// Reading workbooks of 20 columns as an import meets them: codes and names as
// texts, dates, whole numbers and amounts.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <map>

#include "peak_memory.h"
#include "platform/xls/xls_workbooks.h"

namespace {

namespace fs = std::filesystem;
using orva::CellKind;
using orva::OutputCell;

constexpr int kColumns = 20;

OutputCell cellAt(int row, int column) {
  switch (column % 5) {
    case 0:
      return {CellKind::kText, "AS" + std::to_string(column) + "/" + std::to_string(row)};
    case 1:
      return {CellKind::kText, "Machine of kind " + std::to_string(row % 500)};
    case 2:
      return {CellKind::kDate, std::to_string(1 + row % 28) + "/04/" + std::to_string(1990 + row % 30)};
    case 3:
      return {CellKind::kNumber, std::to_string(1 + row % 9)};
    default:
      return {CellKind::kNumber, std::to_string(row) + "." + std::to_string(10 + row % 90)};
  }
}

/// Workbooks in a folder of their own, each made once and removed at the end.
class Workbooks {
 public:
  Workbooks() : folder_(fs::temp_directory_path() / ("orva-bench-" + std::to_string(std::rand()))) {
    fs::create_directories(folder_);
  }
  Workbooks(const Workbooks&) = delete;
  Workbooks& operator=(const Workbooks&) = delete;
  ~Workbooks() { fs::remove_all(folder_); }

  std::string ofRows(int count) {
    const std::string path = (folder_ / (std::to_string(count) + ".xls")).string();
    if (fs::exists(path)) return path;
    std::vector<std::vector<OutputCell>> rows;
    for (int row = 0; row < count; ++row) {
      std::vector<OutputCell>& cells = rows.emplace_back();
      for (int column = 0; column < kColumns; ++column) cells.push_back(cellAt(row, column));
    }
    orva::XlsWorkbooks().write(path, "Asset", rows);
    return path;
  }

 private:
  fs::path folder_;
};

void tellSize(benchmark::State& state, const std::string& path, const orva::PeakMemory& memory) {
  const auto rows = static_cast<double>(state.range(0));
  state.counters["rows/s"] = benchmark::Counter(rows, benchmark::Counter::kIsIterationInvariantRate);
  state.counters["file MB"] = static_cast<double>(fs::file_size(path)) / 1e6;
  state.counters["peak MB"] = memory.megabytes();
}

Workbooks& workbooks() {
  static Workbooks all;
  return all;
}

/// The sheet alone: from the file to cells in memory.
void openSheet(benchmark::State& state) {
  const std::string path = workbooks().ofRows(static_cast<int>(state.range(0)));
  const orva::PeakMemory memory;
  for (auto _ : state) {
    benchmark::DoNotOptimize(orva::XlsWorkbooks().openSheet(path, "Asset", orva::HeaderRow::kYes));
  }
  tellSize(state, path, memory);
}

/// The sheet and every cell of it as text, as staging asks for them.
void readEveryCell(benchmark::State& state) {
  const std::string path = workbooks().ofRows(static_cast<int>(state.range(0)));
  const orva::PeakMemory memory;
  for (auto _ : state) {
    const auto sheet = orva::XlsWorkbooks().openSheet(path, "Asset", orva::HeaderRow::kNo);
    std::size_t characters = 0;
    for (int row = 0; row < sheet->rowCount(); ++row) {
      for (int column = 0; column < kColumns; ++column) characters += sheet->text(row, column).size();
    }
    if (sheet->rowCount() != state.range(0)) state.SkipWithError("rows are missing");
    benchmark::DoNotOptimize(characters);
  }
  tellSize(state, path, memory);
}

BENCHMARK(openSheet)->Arg(1000)->Arg(10000)->Arg(65535)->Unit(benchmark::kMillisecond);
BENCHMARK(readEveryCell)->Arg(1000)->Arg(10000)->Arg(65535)->Unit(benchmark::kMillisecond);

}  // namespace
