#include <gtest/gtest.h>

#include "platform/odbc/connection_text.h"
#include "platform/odbc/statement_text.h"
#include "platform/odbc/utf16.h"

namespace orva::odbc {
namespace {

/// The statement, then its arguments: 'plain', N'Unicode'.
std::string shown(const BoundText& text) {
  std::string line = text.sql;
  for (const Argument& argument : text.arguments) {
    line += std::string(argument.wire.type == SQL_WVARCHAR ? " N'" : " '") + argument.cell.value.toText() + "'";
  }
  return line;
}

TEST(StatementText, ComparedTextsBecomeArguments) {
  const std::string longText(256, 'x');
  const std::pair<std::string, std::string> kCases[] = {
      {"select * from T where a='x' and b <> 'O''Neil'", "select * from T where a=? and b <> ? 'x' 'O'Neil'"},
      {"select * from T where a >= '05/31/2020'", "select * from T where a >= ? '05/31/2020'"},
      {"select * from T where a='\xC3\x89'", "select * from T where a=? N'\xC3\x89'"},
      {"update T set a='x' where b=''", "update T set a=? where b=? 'x' ''"},
      {"delete from T where a='x'", "delete from T where a=? 'x'"},
      {"select 'x', len('y') from T where a in ('z') and b like 'w%'",
       "select 'x', len('y') from T where a in ('z') and b like 'w%'"},
      {"insert into T (a) values ('x')", "insert into T (a) values ('x')"},
      {"insert into T (a, b) values ('\xC3\x89', N'\xC3\x89')",
       "insert into T (a, b) values (N'\xC3\x89', N'\xC3\x89')"},
      {"create table T (a nvarchar(1) default 'N')", "create table T (a nvarchar(1) default 'N')"},
      {"select [a'b] from T where \"c'd\" = 'x'", "select [a'b] from T where \"c'd\" = ? 'x'"},
      {"select a -- it's\n from T where a='x'", "select a -- it's\n from T where a='x'"},
      {"select a /* it's */ from T where a='x'", "select a /* it's */ from T where a='x'"},
      {"select a from T where a='x", "select a from T where a='x"},
      {"exec p @a='x'", "exec p @a='x'"},
      {"select a from T where a='" + longText + "'", "select a from T where a='" + longText + "'"},
  };
  for (const auto& [text, expected] : kCases) EXPECT_EQ(shown(lifted(text)), expected);
}

/// Without blanks that mean nothing.
std::string squeezed(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (c != ' ' || (!result.empty() && result.back() != ' ' && result.back() != '(')) result += c;
  }
  return result.ends_with(' ') ? result.substr(0, result.size() - 1) : result;
}

TEST(StatementText, FiltersJoinTheQuery) {
  struct Case {
    const char* query;
    const char* filter;
    const char* expected;
    const char* table;
  };
  const Case kCases[] = {
      {"Select * from Asset", "", "Select * from Asset", "[Asset]"},
      {"Select * from Asset", "docdt=#05/31/2020# and a='#'",
       "Select * from Asset where (docdt='05/31/2020' and a='#')", "[Asset]"},
      {"select a, b from [My T] where x=1 or y=2 order by a;", "z=3",
       "select a, b from [My T] where (x=1 or y=2 ) and (z=3) order by a", "[My T]"},
      {"select count(*) as n from T", "", "select count(*) as n from T", ""},
      {"select a from T, U where T.a=U.a", "b=1", "select a from T, U where (T.a=U.a) and (b=1)", ""},
      {"select distinct a from T order by a", "a=1",
       "select * from (select distinct a from T ) as rows_ where (a=1) order by a", ""},
      {"select a from T where b in (select b from U where c=1 group by b)", "d=1",
       "select a from T where (b in (select b from U where c=1 group by b)) and (d=1)", "[T]"},
  };
  for (const Case& c : kCases) {
    const QueryShape shape(c.query);
    EXPECT_EQ(squeezed(shape.with(c.filter)), c.expected);
    EXPECT_EQ(shape.table(), c.table) << c.query;
  }
}

TEST(StatementText, FirstRowsAreLimitedByTheServer) {
  const std::pair<const char*, const char*> kCases[] = {
      {"Select a from T where b='order' order by a desc", "Select top 1 a from T where b='order' order by a desc"},
      {"select * from T", "select * from T"},
      {"select max(a) as a from T", "select max(a) as a from T"},
      {"select top 5 a from T order by a", "select top 5 a from T order by a"},
      {"select distinct a from T order by a", "select distinct a from T order by a"},
      {"select a from T where a in (select a from U order by a)",
       "select a from T where a in (select a from U order by a)"},
      {"select a from T union select a from U order by a", "select a from T union select a from U order by a"},
      {"select [order] from T", "select [order] from T"},
      {"update T set a=1", "update T set a=1"},
  };
  for (const auto& [text, expected] : kCases) EXPECT_EQ(firstRowOf(text), expected);
}

TEST(StatementText, LayoutsChangeByDefinitionsOnly) {
  for (const char* sql : {"select 1", "insert into T (a) values (1)", "update T set a=1", "DELETE from T"}) {
    EXPECT_FALSE(mayChangeLayout(sql)) << sql;
  }
  for (const char* sql : {"alter table T add b int", "create table T (a int)", "exec p", "set x on", "select @a"}) {
    EXPECT_TRUE(mayChangeLayout(sql)) << sql;
  }
}

TEST(ConnectionText, ServersAreTakenApart) {
  struct Case {
    const char* text;
    const char* host;
    const char* instance;
    const char* port;
  };
  const Case kCases[] = {
      {"S", "S", "", ""},
      {" tcp:S,1433 ", "S", "", "1433"},
      {"TCP:10.0.0.7", "10.0.0.7", "", ""},
      {"S\\EXPRESS", "S", "EXPRESS", ""},
      {"S\\EXPRESS, 1500", "S", "EXPRESS", "1500"},
      {".", "localhost", "", ""},
      {"(local)\\X", "localhost", "X", ""},
      {"", "localhost", "", ""},
  };
  for (const Case& c : kCases) {
    const ServerName name = serverNameOf(c.text);
    EXPECT_EQ(name.host, c.host) << c.text;
    EXPECT_EQ(name.instance, c.instance) << c.text;
    EXPECT_EQ(name.port, c.port) << c.text;
  }
}

TEST(ConnectionText, ClausesBecomeKeywords) {
  const std::string kTdsEnd = "TDS_Version=7.4;ClientCharset=UTF-8;APP={ORVA Import};";
  struct Case {
    const char* clauses;
    const char* driver;
    std::string expected;
  };
  const Case kCases[] = {
      {"Provider=SQLOLEDB.1;Persist Security Info=False;User ID=sa;Password=pw;Initial Catalog=AORVA;Data Source=S",
       "FreeTDS", "DRIVER=FreeTDS;SERVER=S;PORT=1433;DATABASE=AORVA;UID=sa;PWD=pw;" + kTdsEnd},
      {"Integrated Security = SSPI;Initial Catalog=master;Data Source=S\\X", "/usr/lib/libtdsodbc.so",
       "DRIVER=/usr/lib/libtdsodbc.so;SERVER=S\\X;DATABASE=master;Trusted_Connection=Yes;" + kTdsEnd},
      {"User ID=a b;Password=\"p;w}\";Data Source=S,1500;Use Encryption for Data=True", "FreeTDS",
       "DRIVER=FreeTDS;SERVER=S;PORT=1500;UID={a b};PWD={p;w}};Encryption=require;" + kTdsEnd},
      {"User ID=sa;Password=\"p;w}\";Initial Catalog=A;Data Source=S,1500", "ODBC Driver 18 for SQL Server",
       "DRIVER={ODBC Driver 18 for SQL Server};SERVER={S,1500};DATABASE=A;UID=sa;PWD={p;w}}};Encrypt=no;"
       "APP={ORVA Import};"},
      {"Encrypt=Mandatory;TrustServerCertificate=yes;Data Source=S\\X", "SQL Server",
       "DRIVER={SQL Server};SERVER=S\\X;Encrypt=yes;TrustServerCertificate=yes;APP={ORVA Import};"},
  };
  for (const Case& c : kCases) EXPECT_EQ(connectionText(ConnectionClauses(c.clauses), c.driver), c.expected);
  EXPECT_THROW(connectionText(ConnectionClauses("Password=\"a};SERVER=evil\""), "FreeTDS"), ProviderError);
}

TEST(ConnectionText, ClausesSetTheTimeLimits) {
  struct Case {
    const char* clauses;
    unsigned login;
    unsigned statement;
  };
  const Case kCases[] = {{"", 15, 300},
                         {"Connect Timeout=5;General Timeout=0", 5, 0},
                         {"connection timeout= 60 ", 60, 300},
                         {"Connect Timeout=soon;General Timeout=-1", 15, 300}};
  for (const Case& c : kCases) {
    const TimeLimits limits = timeLimits(ConnectionClauses(c.clauses));
    EXPECT_EQ(limits.login, c.login) << c.clauses;
    EXPECT_EQ(limits.statement, c.statement) << c.clauses;
  }
}

TEST(ConnectionText, TheDriverIsNamedOrFound) {
  const auto found = [](const char* clauses, const std::vector<std::string>& registered,
                        std::span<const char* const> places = {}) {
    return driverFor(ConnectionClauses(clauses), registered, places);
  };
  EXPECT_EQ(found("Driver=Mine", {"FreeTDS"}), "Mine");
  EXPECT_EQ(found("", {"PostgreSQL", "ODBC Driver 17 for SQL Server", "odbc driver 18 for sql server"}),
            "odbc driver 18 for sql server");
  constexpr const char* kPlaces[] = {"/nowhere/libtdsodbc.so", "/"};
  EXPECT_EQ(found("", {"PostgreSQL"}, kPlaces), "/");
  EXPECT_EQ(found("", {"FreeTDS"}, kPlaces), "FreeTDS");
  try {
    found("", {"PostgreSQL"});
    ADD_FAILURE() << "no driver is there";
  } catch (const ProviderError& error) {
    EXPECT_EQ(error.number(), provider_number::kUnspecified);
    EXPECT_NE(error.description().find("No ODBC driver for SQL Server is installed"), std::string::npos);
  }
  setenv("ORVA_ODBC_DRIVER", "Other", 1);
  EXPECT_EQ(found("", {"FreeTDS"}), "Other");
  unsetenv("ORVA_ODBC_DRIVER");
}

TEST(Utf16, KeepsTextsAndMarksWhatIsNone) {
  const std::pair<const char*, std::u16string> kCases[] = {
      {"", u""},
      {"Aé€", u"Aé€"},
      {"\xF0\x9F\x98\x80", u"\xD83D\xDE00"},
  };
  for (const auto& [narrow, wideText] : kCases) {
    EXPECT_EQ(toUtf16(narrow), wideText);
    EXPECT_EQ(toUtf8(wideText), narrow);
  }
  for (const char* broken : {"\x80", "\xC3", "\xE0\x80\x80", "\xED\xA0\x80", "\xF5\x80\x80\x80"}) {
    EXPECT_EQ(toUtf16(broken)[0], u'\xFFFD');
  }
  EXPECT_EQ(toUtf8(u"\xD83D"), "\xEF\xBF\xBD");
}

}  // namespace
}  // namespace orva::odbc
