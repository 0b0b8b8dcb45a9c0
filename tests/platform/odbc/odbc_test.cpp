#include <gtest/gtest.h>

#include "fakes/temporary_folder.h"
#include "platform/embedded/embedded_adapter.h"
#include "platform/odbc/odbc_adapter.h"
#include "platform/odbc/tds_server.h"

namespace orva {
namespace {

TEST(Odbc, Smoke) {
  TemporaryFolder folder;
  EmbeddedAdapter files(SqlDialect::kSqlServer, folder.text());
  files.create(ConnectionClauses("Initial Catalog=K1ORVA"));
  tds::Server server(folder.text(), "sa", "p;w}d{ x");
  OdbcAdapter adapter;
  const std::string clauses =
      "Provider=SQLOLEDB.1;User ID=sa;Password='p;w}d{ x';Initial Catalog=K1ORVA;Data Source=127.0.0.1," +
      std::to_string(server.port());
  const auto c = adapter.connect(ConnectionClauses(clauses), CursorLocation::kClient);
  c->execute(
      "create table T (id int not null primary key, name nvarchar(30), cost money, ok bit, d smalldatetime, memo "
      "ntext, f float)");
  auto rows = c->open("select * from T", CursorKind::kKeyset, LockKind::kPessimistic);
  for (int i = 0; i < 3; ++i) {
    rows->addNew();
    rows->set("id", i);
    rows->set("name", "n\xE0\xA4\xB9" + std::to_string(i));
    rows->set("cost", "12.3456");
    rows->set("ok", i == 1);
    rows->set("d", "31/12/2005");
    rows->set("memo", std::string(5000, 'x'));
    rows->update();
  }
  const auto all = c->open(
      "select * from T where name='n\xE0\xA4\xB9"
      "1'");
  for (; !all->eof(); all->moveNext()) {
    for (const auto& f : all->fields())
      printf("%s(%d,%d)=%s\n", f.name.c_str(), int(f.type), f.size, all->get(f.name).toText().substr(0, 20).c_str());
  }
  rows->filter("id=2");
  rows->set("cost", "7");
  rows->update();
  EXPECT_EQ(c->open("select cost from T where id=2")->get("cost").toText(), "7");
  try {
    c->execute("nonsense");
  } catch (const ProviderError& e) {
    printf("%x %s\n", unsigned(e.number()), e.what());
  }
  for (const auto& s : server.plan().statements()) printf("> %s\n", s.c_str());
}

}  // namespace
}  // namespace orva
