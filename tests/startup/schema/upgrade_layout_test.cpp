#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>
#include <vector>

#include "platform/values/text.h"
#include "startup/schema/base_layout.h"
#include "startup/schema/old_company.h"
#include "startup/schema/upgrade.h"

namespace orva {
namespace {

struct Column {
  std::string name;
  std::string type;
};
/// Columns in their order, by table.
using Layout = std::map<std::string, std::vector<Column>>;

void readColumns(const std::string& line, Layout& layout) {
  const std::size_t colon = line.find(": ");
  std::vector<Column>& table = layout[line.substr(0, colon)];
  std::istringstream columns(line.substr(colon + 2));
  for (std::string text; std::getline(columns, text, ',');) {
    const std::size_t blank = text.rfind(' ');
    const Column column{replaceAll(replaceAll(trim(text.substr(0, blank)), "[", ""), "]", ""), text.substr(blank + 1)};
    const auto known =
        std::ranges::find_if(table, [&](const Column& other) { return equalsNoCase(other.name, column.name); });
    if (known == table.end()) {
      table.push_back(column);
    } else {
      known->type = column.type;
    }
  }
}

/// The fixture, with the lines after "server" laid over it for a server.
Layout expectedLayout(SchemaDialect dialect) {
  Layout layout;
  std::ifstream file(std::string(ORVA_FIXTURES) + "/schema/company_layout.txt");
  for (std::string line; std::getline(file, line);) {
    if (line == "server" && dialect == SchemaDialect::kAccess) break;
    if (line.find(": ") != std::string::npos && !line.starts_with("#")) readColumns(line, layout);
  }
  return layout;
}

bool hasType(const FieldInfo& field, const std::string& type, bool isServer) {
  if (type == "text") return field.type == FieldType::kVarChar;
  if (type.starts_with("text(")) {
    return field.type == FieldType::kVarChar && "text(" + std::to_string(field.size) + ")" == type;
  }
  const std::map<std::string, FieldType> types = {
      {"memo", FieldType::kMemo},     {"currency", FieldType::kCurrency},
      {"yesno", FieldType::kBoolean}, {"number", isServer ? FieldType::kInteger : FieldType::kDouble},
      {"long", FieldType::kInteger},  {"date", isServer ? FieldType::kTimestamp : FieldType::kDate}};
  return types.at(type) == field.type;
}

bool isBaseTable(const std::string& table) {
  return std::ranges::any_of(baseColumns(), [&](const ColumnRow& row) { return equalsNoCase(row.table, table); });
}

/// A table that the upgrade makes has these columns and no others, in this order; one that it only
/// completes has its older ones in front.
void expectTable(OldCompany& company, const std::string& table, const std::vector<Column>& expected) {
  const std::vector<FieldInfo> fields = company.context.connection->open("Select * from " + table)->fields();
  if (!isBaseTable(table)) {
    ASSERT_EQ(fields.size(), expected.size()) << table;
  }
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const Column& column = expected[i];
    const auto field =
        isBaseTable(table)
            ? std::ranges::find_if(fields, [&](const FieldInfo& info) { return equalsNoCase(info.name, column.name); })
            : fields.begin() + static_cast<std::ptrdiff_t>(i);
    ASSERT_TRUE(field != fields.end()) << table << "." << column.name << " is missing";
    EXPECT_EQ(toUpper(field->name), toUpper(column.name)) << table;
    EXPECT_TRUE(hasType(*field, column.type, company.isServer()))
        << table << "." << column.name << " is no " << column.type << " but " << static_cast<int>(field->type) << "("
        << field->size << ")";
  }
}

bool hasColumn(OldCompany& company, const std::string& table, const std::string& column) {
  for (const FieldInfo& field : company.context.connection->open("Select * from " + table)->fields()) {
    if (equalsNoCase(field.name, column)) return true;
  }
  return false;
}

class UpgradeLayout : public ::testing::TestWithParam<SchemaDialect> {
 protected:
  OldCompany company{GetParam()};
};

TEST_P(UpgradeLayout, BringsEveryTableAndColumn) {
  const Layout expected = expectedLayout(GetParam());
  ASSERT_EQ(expected.size(), 39U);
  EXPECT_EQ(company.upgrade(), std::vector<std::string>{});
  for (const auto& [table, columns] : expected) expectTable(company, table, columns);
  for (const auto& [table, column] :
       {std::pair("Asset", "DateSold"), std::pair("Asset", "Opening"), std::pair("Shift", "srno")}) {
    EXPECT_FALSE(hasColumn(company, table, column)) << table << "." << column;
  }
  EXPECT_THROW(company.rows("Select * from AddntoAsset"), ProviderError);
}

TEST_P(UpgradeLayout, CompletesATableThatHasSomeOfTheColumns) {
  company.run(GetParam() == SchemaDialect::kServer ? "alter table Shift add sublocation nvarchar(30), cost money"
                                                   : "alter table Shift add sublocation text(30), cost currency");
  EXPECT_EQ(company.upgrade(), std::vector<std::string>{});
  expectTable(company, "Shift", expectedLayout(GetParam()).at("Shift"));
}

TEST_P(UpgradeLayout, KeysAndDefaultsHold) {
  company.upgrade();
  const auto fails = [&](const std::string& sql) {
    try {
      company.run(sql);
      return false;
    } catch (const ProviderError&) {
      return true;
    }
  };
  for (const char* sql :
       {"insert into FARate1 (facode, accyear) values ('A','2020')",
        "insert into FARate2 (facode, accyear) values ('A','2020')", "insert into Addition (assetid) values ('A-01')",
        "insert into Users (usedby) values ('1')"}) {
    EXPECT_FALSE(fails(sql)) << sql;
    EXPECT_TRUE(fails(sql)) << sql << " twice";
  }
  EXPECT_EQ(company.rows("select flgaddnlrate from addition"), "N");
  EXPECT_EQ(company.rows("select multishiftapp from farate1"), "False");
  company.run("insert into TmpAstCostBrkup (assetid) values ('A')");
  EXPECT_EQ(company.rows("select status from TmpAstCostBrkup"), "N");
}

/// An index that is there cannot be made.
TEST_P(UpgradeLayout, BringsEveryIndex) {
  company.upgrade();
  const char* const kIndexes[] = {"Usedby on Users (Usedby)",
                                  "facode on FARate1 (Facode)",
                                  "facode on FARate2 (Facode)",
                                  "facode on FADep1 (Facode)",
                                  "AssetId on FADep1 (AssetId)",
                                  "facode on FADep2 (Facode)",
                                  "AssetId on FADep2 (AssetId)",
                                  "Assetid on TmpFADep (AssetId)",
                                  "InsuranceCode on Insurance (InsuranceCode)",
                                  "FACode1 on FADefinition (FACode1)",
                                  "FACode2 on FADefinition (FACode2)"};
  for (const char* index : kIndexes)
    EXPECT_THROW(company.run(std::string("create index ") + index), ProviderError) << index;
  EXPECT_NO_THROW(company.run("create index other on Users (Usedby)"));
}

INSTANTIATE_TEST_SUITE_P(Dialects, UpgradeLayout, ::testing::Values(SchemaDialect::kAccess, SchemaDialect::kServer),
                         [](const auto& dialect) { return dialectName(dialect.param); });

TEST(UpgradeTable, TypesOfTheServer) {
  const std::pair<const char*, const char*> cases[] = {
      {"create table T (a text(10), b memo, c currency, d yesno, e date, f number, g long)",
       "create table T (a nvarchar(10), b ntext, c money, d bit, e smalldatetime, f int, g int)"},
      {"alter table T add U yesno default Yes, N yesno default No, S text(1) default 'N'",
       "alter table T add U bit default 1, N bit default 0, S nvarchar(1) default 'N'"},
      {"alter table T add Textual text(3), UseDate date",
       "alter table T add Textual nvarchar(3), UseDate smalldatetime"},
  };
  for (const auto& [access, server] : cases) EXPECT_EQ(withServerTypes(access), server);
}

TEST(UpgradeTable, DialectsDifferOnlyWhereTheyMust) {
  int onlyServer = 0;
  int keptForServer = 0;
  for (const UpgradeRow& row : upgradeRows()) {
    if (row.procedure != UpgradeProcedure::kNone) continue;
    const std::vector<std::string> access = upgradeCommands(row, SchemaDialect::kAccess);
    const std::vector<std::string> server = upgradeCommands(row, SchemaDialect::kServer);
    EXPECT_FALSE(server.empty());
    onlyServer += access.empty() ? 1 : 0;
    keptForServer += row.serverVariant.empty() ? 0 : 1;
    EXPECT_TRUE(access.empty() || access.size() + (row.serverVariant.empty() ? 0 : 1) == server.size()) << row.access;
    EXPECT_TRUE(!access.empty() || server[0].find(" alter column ") != std::string::npos) << server[0];
    for (const std::string& command : server) {
      EXPECT_EQ(command.find(" text("), std::string::npos) << command;
      EXPECT_EQ(command.find(" currency"), std::string::npos) << command;
    }
  }
  EXPECT_EQ(onlyServer, 6 + 5) << "six yes/no columns made nullable, five key columns made not null";
  EXPECT_EQ(keptForServer, 4 + 5) << "four blank user columns, five location trims";
}

}  // namespace
}  // namespace orva
