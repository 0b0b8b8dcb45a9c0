#include <benchmark/benchmark.h>

#include <filesystem>
#include <map>
#include <memory>
#include <string>

#include "platform/access/schema_change.h"
#include "platform/access/structure_check.h"

/// The Access file itself, without the engine above it: opening, and what one row costs. The largest file has
/// more than 500 MB.

namespace orva::access {
namespace {

constexpr int kOtherColumns = 60;
constexpr int kFilledColumns = 45;

std::string pathOf(std::int64_t rows) {
  return (std::filesystem::temp_directory_path() / ("orva-bench-file-" + std::to_string(rows) + ".mdb")).string();
}

std::string keyOf(std::int64_t number) { return "MH\\PM\\" + std::to_string(1'000'000'000 + number); }

void makeTable(AccessDatabase& database) {
  std::vector<NewColumn> columns{{.name = "Assetid", .size = 30},
                                 {.name = "PhyID", .size = 50},
                                 {.name = "Cost", .type = ColumnType::kCurrency},
                                 {.name = "DocDt", .type = ColumnType::kDate}};
  for (int i = 0; i < kOtherColumns; ++i) columns.push_back({.name = "Other" + std::to_string(i), .size = 30});
  SchemaChange schema(database);
  schema.createTable("Asset", columns);
  schema.createIndex("Asset", {.name = "PrimaryKey", .columns = {{"Assetid"}}, .isPrimary = true});
  schema.createIndex("Asset", {.name = "PhyID", .columns = {{"PhyID"}}});
  schema.createIndex("Asset", {.name = "DocDt", .columns = {{"DocDt"}}});
  database.commit();
}

void addRow(Table& table, std::int64_t number) {
  Row row(table.definition().columns.size());
  row[0] = keyOf(number);
  row[1] = "Tag " + std::to_string(number);
  row[2] = Currency::fromUnits(number * 101);
  row[3] = DateTime{43'000.0 + static_cast<double>(number % 1000)};
  for (std::size_t i = 4; i < 4 + kFilledColumns; ++i) row[i] = "some value";
  table.insert(std::move(row));
}

/// Files are made once and removed at the end of the program.
class Files {
 public:
  ~Files() {
    open_.clear();
    for (const auto& [rows, path] : paths_) std::filesystem::remove(path);
  }
  std::string closed(std::int64_t rows) {
    open_.erase(rows);
    if (!paths_.contains(rows)) make(rows);
    return paths_.at(rows);
  }
  AccessDatabase& get(std::int64_t rows) {
    if (!open_.contains(rows)) {
      const std::string path = closed(rows);
      open_[rows] = AccessDatabase::open(path);
    }
    return *open_.at(rows);
  }

 private:
  void make(std::int64_t rows) {
    const std::string path = paths_[rows] = pathOf(rows);
    std::filesystem::remove(path);
    const auto database = AccessDatabase::create(path);
    makeTable(*database);
    Table& table = database->table("Asset");
    for (std::int64_t i = 0; i < rows; ++i) {
      addRow(table, i);
      database->commit();
    }
  }

  std::map<std::int64_t, std::string> paths_;
  std::map<std::int64_t, std::unique_ptr<AccessDatabase>> open_;
};

Files& files() {
  static Files all;
  return all;
}

std::int64_t nextNumber(std::int64_t& number, std::int64_t size) {
  number = (number * 6364136223846793005 + 1442695040888963407) & INT64_MAX;
  return number % size;
}

std::optional<RowId> find(const Table& table, std::int64_t number) {
  Row row(table.definition().columns.size());
  row[0] = keyOf(number);
  const auto key = indexKey(table.definition(), table.definition().realIndexes[0], row);
  const IndexCursor at = table.tree(0).lowerBound(key.value());
  return at.atEnd() ? std::nullopt : std::optional(at.row());
}

void openFile(benchmark::State& state) {
  const std::string path = files().closed(state.range(0));
  for (auto _ : state) {
    const auto database = AccessDatabase::open(path);
    for (const std::string& name : database->tableNames()) benchmark::DoNotOptimize(&database->table(name));
  }
  state.counters["MB"] = static_cast<double>(std::filesystem::file_size(path)) / (1 << 20);
}

void findRow(benchmark::State& state) {
  const Table& table = files().get(state.range(0)).table("Asset");
  std::int64_t number = 1;
  for (auto _ : state) benchmark::DoNotOptimize(find(table, nextNumber(number, state.range(0))));
}

void changeRow(benchmark::State& state) {
  AccessDatabase& database = files().get(state.range(0));
  Table& table = database.table("Asset");
  std::int64_t number = 1;
  for (auto _ : state) {
    const auto row = find(table, nextNumber(number, state.range(0)));
    table.update(row.value(), {{2, Currency::fromUnits(number % 1'000'000)}, {4, "other value"}});
    database.commit();
  }
}

void addAndRemoveRow(benchmark::State& state) {
  AccessDatabase& database = files().get(state.range(0));
  Table& table = database.table("Asset");
  for (auto _ : state) {
    addRow(table, state.range(0));
    database.commit();
    table.remove(find(table, state.range(0)).value());
    database.commit();
  }
}

void checkFileOfRows(benchmark::State& state) {
  const std::string path = files().closed(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(checkFile(path));
}

#define SIZES Arg(1'000)->Arg(100'000)->Arg(1'000'000)
BENCHMARK(openFile)->SIZES->Unit(benchmark::kMillisecond);
BENCHMARK(findRow)->SIZES->Unit(benchmark::kMicrosecond);
BENCHMARK(changeRow)->SIZES->Unit(benchmark::kMicrosecond);
BENCHMARK(addAndRemoveRow)->SIZES->Unit(benchmark::kMicrosecond);
BENCHMARK(checkFileOfRows)->SIZES->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
}  // namespace orva::access
