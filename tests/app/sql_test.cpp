#include "app/batch/sql_script.h"

#include "app/batch_test.h"

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

using Sql = BatchTest;

TEST_F(Sql, PrintsEachTypeAsPeopleReadIt) {
  const std::string script =
      "create table T (a text(20), b currency, c date, d yesno, e number, f double, g memo);\n"
      "insert into T (a, b, c, d, e, f) values ('O''Neil; & co', 12.50, #02/01/2026#, true, 7, 0.1);\n"
      "insert into T (d) values (false);\n"
      "insert into T (a, d, g) values ('tab', false, 'two\tcells');\n";
  EXPECT_EQ(run({"sql", "--company", "DEMO"}, script).err, "");
  EXPECT_EQ(query("select a, b, c, d, e, f, g from T"),
            "a\tb\tc\td\te\tf\tg\n"
            "O'Neil; & co\t12.5\t01/02/2026\tTrue\t7\t0.1\t\n"
            "\t\t\tFalse\t\t\t\n"
            "tab\t\t\tFalse\t\t\ttwo cells\n");
  EXPECT_EQ(query("select a from T where a = 'none'"), "a\n");
}

TEST_F(Sql, StopsAtTheFirstStatementThatFailsAndKeepsWhatWasDone) {
  const Ran ran = run({"sql", "--company", "DEMO"},
                      "insert into Dept (Deptcode, DeptName) values ('0100', 'Tool Room');\n"
                      "insert into Dept (Deptcode, DeptName) values ('0100', 'Again');\n"
                      "insert into Dept (Deptcode, DeptName) values ('0101', 'Never');");
  EXPECT_EQ(ran.status, 2);
  EXPECT_NE(ran.err.find("'Again'"), std::string::npos) << ran.err;
  EXPECT_EQ(query("select DeptName from Dept where Deptcode >= '0100'"), "DeptName\nTool Room\n");
  EXPECT_EQ(run({"sql", "--company", "DEMO", "select * from NoSuchTable"}).status, 2);
  EXPECT_EQ(run({"sql", "--company", "DEMO", "nonsense"}).status, 2);
}

}  // namespace
}  // namespace orva
