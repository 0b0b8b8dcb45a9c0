#include "platform/embedded/company_file.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <fstream>

#include "platform/access/structure_check.h"

namespace orva::test {
namespace {

std::string clausesOf(SqlDialect dialect, const std::filesystem::path& file, const std::string& password) {
  if (dialect == SqlDialect::kSqlServer) return "Provider=SQLOLEDB.1;Initial Catalog=demoOrva;Data Source=SERVER";
  return "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + file.string() +
         ";Persist Security Info=False;Jet OLEDB:Database Password=" + password + ";";
}

/// What was done to a genuine Access file must leave it sound.
void expectSound(const std::filesystem::path& file) {
  std::array<access::Byte, 20> head{};
  std::ifstream in(file, std::ios::binary);
  if (!in.read(static_cast<char*>(static_cast<void*>(head.data())), head.size())) return;
  if (!access::looksLikeAccessFile(head)) return;
  for (const auto& fault : access::checkFile(file.string())) ADD_FAILURE() << fault.toText();
}

}  // namespace

CompanyFile::CompanyFile(Engine engine) : dialect_(engine.dialect), adapter_(dialect_, folder_.text(), engine.kind) {
  adapter_.create(ConnectionClauses(clausesOf(dialect_, file(), "Tbnq")));
  connection_ = connect();
}

CompanyFile::~CompanyFile() {
  connection_.reset();
  expectSound(file());
}

std::unique_ptr<Connection> CompanyFile::connect(const std::string& password) {
  return adapter_.connect(ConnectionClauses(clausesOf(dialect_, file(), password)), CursorLocation::kClient);
}

void CompanyFile::run(std::string_view statements) {
  while (!statements.empty()) {
    const std::size_t end = std::min(statements.find(';'), statements.size());
    const std::string_view statement = statements.substr(0, end);
    if (statement.find_first_not_of(" \n") != std::string_view::npos) connection_->execute(statement);
    statements.remove_prefix(std::min(end + 1, statements.size()));
  }
}

std::string rowsOf(Recordset& set) {
  std::string text;
  const auto fields = set.fields();
  for (; !set.eof(); set.moveNext()) {
    std::string row;
    for (const FieldInfo& field : fields) {
      const Value value = set.get(field.name);
      row += (row.empty() ? "" : "|") + (value.isNull() ? "~" : value.toText());
    }
    text += (text.empty() ? "" : "/") + row;
  }
  return text;
}

std::string CompanyFile::rows(std::string_view sql) { return rowsOf(*connection_->open(sql)); }

std::string CompanyFile::outcome(std::string_view sql) {
  try {
    if (sql.substr(0, 6) == "select" || sql.substr(0, 6) == "Select" || sql.substr(0, 6) == "SELECT") return rows(sql);
    return std::to_string(connection_->execute(sql)) + " rows";
  } catch (const ProviderError& error) {
    return numberText(error.number());
  }
}

std::string numberText(std::int32_t number) {
  std::array<char, 12> text{};
  std::snprintf(text.data(), text.size(), "%08X", static_cast<unsigned>(number));
  return text.data();
}

}  // namespace orva::test
