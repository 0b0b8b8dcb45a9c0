#include <chrono>

#include "platform/odbc/demo_company.h"

namespace orva {
namespace {

TEST(Speed, Rough) {
  DemoCompany demo(Where::kTestServer);
  std::vector<std::vector<std::string>> rows{assetHeadings()};
  const int count = getenv("ROWS") ? atoi(getenv("ROWS")) : 100;
  for (int i = 0; i < count; ++i) rows.push_back(goodAsset("P" + std::to_string(i)));
  const std::string path = demo.workbook(rows);
  for (bool validate : {true, false}) {
    demo.home.plan().forget();
    const auto start = std::chrono::steady_clock::now();
    std::vector<std::string> args{"import", "--company", "DEMO", "--kind", "acquired", path};
    if (validate) args.push_back("--validate-only");
    const Ran ran = demo.onServer(args);
    const double s = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    printf("%d %s%s %.3fs statements %d trips %d\n", ran.status, ran.out.c_str(), ran.err.c_str(), s,
           demo.home.plan().count(), demo.home.plan().roundTrips());
    if (getenv("SHOW"))
      for (const auto& t : demo.home.plan().statements()) printf("> %s\n", t.c_str());
  }
}

}  // namespace
}  // namespace orva
