#include <benchmark/benchmark.h>

#include <filesystem>
#include <map>
#include <memory>
#include <string>

#include "platform/embedded/embedded_adapter.h"
#include "platform/values/numeric_text.h"
#include "platform/values/text.h"

/// Look-ups as the validators write them: SQL text composed for every row, a
/// record set opened, one field read, closed. Their cost must be the same in a
/// company of a thousand assets and in one of a million.

namespace orva {
namespace {

constexpr const char* kPassword = "Tbnq";
constexpr int kOtherColumns = 60;

std::filesystem::path companyFile(std::int64_t assets) {
  return std::filesystem::temp_directory_path() / ("orva-bench-" + std::to_string(assets) + ".mdb");
}

std::string connectionText(const std::filesystem::path& file) {
  return "Data Source=" + file.string() + ";Jet OLEDB:Database Password=" + kPassword;
}

std::string assetId(std::int64_t number) { return "AB\\PM" + zeroPadded(number, 7); }

void createLayout(Connection& connection) {
  std::string columns =
      "Assetid text(30), PAssetId text(20), PhyID text(50), AcquiredAs text(15), Cost currency, docdt date";
  for (int i = 0; i < kOtherColumns; ++i) columns += ", Other" + std::to_string(i) + " text(30)";
  connection.execute("create table Asset (" + columns + ", primary key (Assetid))");
  connection.execute("create table Dept (Deptcode text(10), DeptName text(30))");
}

void addAsset(Recordset& assets, std::int64_t number) {
  assets.addNew();
  assets.set("Assetid", assetId(number));
  assets.set("PhyID", "Tag " + std::to_string(number));
  assets.set("AcquiredAs", "Purchased");
  assets.set("Cost", Currency::fromUnits(number * 101));
  assets.set("docdt", Date::fromDayNumber(43000 + static_cast<int>(number % 1000)));
  for (int i = 0; i < 40; ++i) assets.set("Other" + std::to_string(i), "value");
  assets.update();
}

/// Companies are made once and removed at the end of the program.
class Companies {
 public:
  ~Companies() {
    open_.clear();
    for (std::int64_t size : sizes_) std::filesystem::remove(companyFile(size));
  }
  Connection& get(std::int64_t assets) {
    auto& connection = open_[assets];
    if (!connection) connection = make(assets);
    return *connection;
  }

 private:
  std::unique_ptr<Connection> make(std::int64_t assets) {
    const auto file = companyFile(assets);
    for (const char* ending : {"", "-wal", "-shm"}) std::filesystem::remove(file.string() + ending);
    sizes_.push_back(assets);
    const ConnectionClauses clauses(connectionText(file));
    adapter_.create(clauses);
    auto connection = adapter_.connect(clauses, CursorLocation::kClient);
    createLayout(*connection);
    auto rows = connection->open("select * from Asset", CursorKind::kKeyset, LockKind::kPessimistic);
    for (std::int64_t i = 1; i <= assets; ++i) addAsset(*rows, i);
    for (int i = 0; i < 200; ++i) {
      connection->execute("insert into Dept values ('" + zeroPadded(i, 4) + "', 'Department " + std::to_string(i) +
                          "')");
    }
    return connection;
  }

  EmbeddedAdapter adapter_{SqlDialect::kAccess};
  std::map<std::int64_t, std::unique_ptr<Connection>> open_;
  std::vector<std::int64_t> sizes_;
};

Companies& companies() {
  static Companies all;
  return all;
}

/// A walk through the numbers 1..size that hits no page twice in a row.
std::int64_t nextNumber(std::int64_t& number, std::int64_t size) {
  number = (number * 6364136223846793005 + 1442695040888963407) & INT64_MAX;
  return number % size + 1;
}

std::string firstField(Connection& connection, const std::string& sql, const char* field) {
  const auto rows = connection.open(sql);
  return rows->eof() ? std::string() : nullToText(rows->get(field));
}

void assetById(benchmark::State& state) {
  Connection& connection = companies().get(state.range(0));
  std::int64_t number = 1;
  for (auto _ : state) {
    const std::string id = assetId(nextNumber(number, state.range(0)));
    benchmark::DoNotOptimize(
        firstField(connection, "Select * from Asset where assetid =" + sqlQuote(id), "AcquiredAs"));
  }
  state.SetItemsProcessed(state.iterations());
}

void assetMissing(benchmark::State& state) {
  Connection& connection = companies().get(state.range(0));
  std::int64_t number = 1;
  for (auto _ : state) {
    const std::string id = assetId(nextNumber(number, state.range(0))) + "X";
    benchmark::DoNotOptimize(connection.open("Select * from Asset where assetid =" + sqlQuote(id))->eof());
  }
  state.SetItemsProcessed(state.iterations());
}

/// Look-ups of one kind. The first of a kind builds its index, once a company, and is not counted.
template <class MakeQuery>
void lookUp(benchmark::State& state, MakeQuery query, const char* field) {
  Connection& connection = companies().get(state.range(0));
  std::int64_t number = 1;
  benchmark::DoNotOptimize(firstField(connection, query(number), field));
  for (auto _ : state) {
    benchmark::DoNotOptimize(firstField(connection, query(nextNumber(number, state.range(0))), field));
  }
  state.SetItemsProcessed(state.iterations());
}

void assetByPhysicalId(benchmark::State& state) {
  lookUp(
      state,
      [](std::int64_t number) {
        return "Select * from Asset where phyid ='TAG " + std::to_string(number) + "' and acquiredas<>'O'";
      },
      "Assetid");
}

void assetByTrimmedId(benchmark::State& state) {
  lookUp(
      state,
      [](std::int64_t number) { return "Select * from Asset where trim(assetid) =" + sqlQuote(assetId(number)); },
      "PhyID");
}

void departmentByUpperCase(benchmark::State& state) {
  Connection& connection = companies().get(state.range(0));
  std::int64_t number = 1;
  for (auto _ : state) {
    const std::string name = "DEPARTMENT " + std::to_string(nextNumber(number, 200) - 1);
    const std::string sql = "Select * from Dept where Ucase(deptname) =" + sqlQuote(name);
    benchmark::DoNotOptimize(firstField(connection, sql, "Deptcode"));
  }
  state.SetItemsProcessed(state.iterations());
}

void nextIdentifier(benchmark::State& state) {
  Connection& connection = companies().get(state.range(0));
  const std::string p = "'AB\\PM00'";
  const std::string sql = "Select assetid from asset where Mid (  asset.assetid  , 1, len(" + p + ")) = " + p +
                          " and len(asset.assetid)=len(" + p + ") + 5  and val(Mid ( asset.assetid, 1 +  len(" + p +
                          ") , 5 )) > 0 and PAssetId is Null order by assetid desc";
  benchmark::DoNotOptimize(firstField(connection, sql, "assetid"));  // builds the index
  for (auto _ : state) benchmark::DoNotOptimize(firstField(connection, sql, "assetid"));
  state.SetItemsProcessed(state.iterations());
}

void highestNumber(benchmark::State& state) {
  Connection& connection = companies().get(state.range(0));
  const std::string sql =
      "Select max(val(assetid)) as assetid from asset where  mid( asset.assetid, 1, len('')) = '' and "
      "val(mid( asset.assetid, 1 +  len('') , 4 )) >= 0 and PAssetId is Null ";
  for (auto _ : state) benchmark::DoNotOptimize(firstField(connection, sql, "assetid"));
  state.SetItemsProcessed(state.iterations());
}

void openWholeTable(benchmark::State& state) {
  Connection& connection = companies().get(state.range(0));
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        connection.open("select * from Asset", CursorKind::kKeyset, LockKind::kPessimistic)->eof());
  }
  state.SetItemsProcessed(state.iterations());
}

void filterById(benchmark::State& state) {
  Connection& connection = companies().get(state.range(0));
  auto rows = connection.open("select * from Asset", CursorKind::kKeyset, LockKind::kPessimistic);
  std::int64_t number = 1;
  for (auto _ : state) {
    rows->filter("Assetid=" + sqlQuote(assetId(nextNumber(number, state.range(0)))) + " and AcquiredAs <> 'O'");
    benchmark::DoNotOptimize(rows->eof());
  }
  state.SetItemsProcessed(state.iterations());
}

void insertRecords(benchmark::State& state) {
  Connection& connection = companies().get(state.range(0));
  auto rows = connection.open("select * from Asset", CursorKind::kKeyset, LockKind::kPessimistic);
  static std::int64_t number = 5'000'000;
  for (auto _ : state) addAsset(*rows, ++number);
  state.SetItemsProcessed(state.iterations());
  rows.reset();
  connection.execute("delete from Asset where assetid > 'AB\\PM5000000'");
}

void insertStatements(benchmark::State& state) {
  Connection& connection = companies().get(1000);
  std::int64_t number = 0;
  for (auto _ : state) {
    connection.execute("insert into Dept (Deptcode, DeptName) values ('X', 'Name " + std::to_string(++number) + "')");
  }
  state.SetItemsProcessed(state.iterations());
  connection.execute("delete from Dept where Deptcode = 'X'");
}

void sizes(benchmark::internal::Benchmark* benchmark) {
  for (std::int64_t size : {1'000, 100'000, 1'000'000}) benchmark->Arg(size);
}

BENCHMARK(assetById)->Apply(sizes);
BENCHMARK(assetMissing)->Apply(sizes);
BENCHMARK(assetByPhysicalId)->Apply(sizes);
BENCHMARK(assetByTrimmedId)->Apply(sizes);
BENCHMARK(departmentByUpperCase)->Apply(sizes);
BENCHMARK(nextIdentifier)->Apply(sizes);
BENCHMARK(highestNumber)->Apply(sizes);
BENCHMARK(openWholeTable)->Apply(sizes);
BENCHMARK(filterById)->Apply(sizes);
BENCHMARK(insertRecords)->Apply(sizes);
BENCHMARK(insertStatements);

}  // namespace
}  // namespace orva
