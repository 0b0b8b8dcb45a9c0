#include "app/batch/sql_script.h"

#include <gtest/gtest.h>

namespace orva {
namespace {

std::vector<std::string> statementsOf(const std::string& script) {
  std::vector<std::string> statements;
  forEachStatement(script, [&](std::string_view statement) {
    statements.emplace_back(statement);
    return true;
  });
  return statements;
}

TEST(SqlScript, StatementsEndAtSemicolonsOutsideQuotes) {
  struct Case {
    const char* script;
    std::vector<std::string> statements;
  };
  const Case kCases[] = {
      {"", {}},
      {" ;; \n ; ", {}},
      {"a; b", {"a", "b"}},
      {"a 'x;y'; b", {"a 'x;y'", "b"}},
      {"a 'O''Neil;'; b", {"a 'O''Neil;'", "b"}},
      {"a \"x;'y\"; b", {"a \"x;'y\"", "b"}},
      {"a [odd;'name]; b", {"a [odd;'name]", "b"}},
      {"-- remark; here\na;\n  -- another\nb", {"a", "b"}},
      {"a --1;b", {"a --1", "b"}},
      {"a 'unclosed; b", {"a 'unclosed; b"}},
      {"-- only a remark", {}},
      {"a\r\nb;\r\n", {"a\r\nb"}},
  };
  for (const Case& c : kCases) EXPECT_EQ(statementsOf(c.script), c.statements) << c.script;
}

TEST(SqlScript, StopsWhereItIsTold) {
  int count = 0;
  EXPECT_FALSE(forEachStatement("a; b; c", [&](std::string_view) { return ++count < 2; }));
  EXPECT_EQ(count, 2);
}

TEST(SqlScript, RowsComeFromQueries) {
  EXPECT_TRUE(givesRows("SELECT 1"));
  EXPECT_TRUE(givesRows("( select\n1)"));
  EXPECT_TRUE(givesRows("select* from x"));
  EXPECT_FALSE(givesRows("selection"));
  EXPECT_FALSE(givesRows("insert into x select 1"));
  EXPECT_FALSE(givesRows("select"));
}

}  // namespace
}  // namespace orva
