#include <memory>
#include <set>

#include "platform/values/text.h"
#include "startup/schema/upgrade_procedures.h"
#include "startup/schema/upgrade_trap.h"

namespace orva {
namespace {

/// A column that may hold a user's name where a code belongs. "{}" in the texts below stands
/// for table and column.
struct UserColumn {
  std::string_view table;
  std::string_view column;
};

constexpr UserColumn kUserColumns[] = {
    {"asset", "usedby"}, {"shift", "newuser"}, {"shift", "olduser"}, {"split", "user1"}};
constexpr UserColumn kChildUserColumns[] = {{"addition", "usedby"}};

/// Older releases sent the Access texts to servers too, which refuse them.
struct RepairTexts {
  std::string_view access;
  std::string_view serverVariant;
};

constexpr RepairTexts kUnknownNames = {
    .access =
        "select distinct {column} as username from {table} where trim({column})<>'' and "
        "isnumeric(trim({column}))=false and ucase(trim({column})) not in "
        "(select ucase(username) from users where username is not null)",
    .serverVariant =
        "select distinct {column} as username from {table} where ltrim(rtrim({column}))<>'' and "
        "isnumeric(ltrim(rtrim({column})))=0 and upper(ltrim(rtrim({column}))) not in "
        "(select upper(username) from users where username is not null)"};
constexpr RepairTexts kNamesToCodes = {.access =
                                           "update {table},users set {table}.{column}=users.usedby where "
                                           "ucase({table}.{column})=ucase(users.username)",
                                       .serverVariant =
                                           "update {table} set {column}=users.usedby from users where "
                                           "upper({table}.{column})=upper(users.username)"};
/// Child assets are repaired again and again: rows that carry the code already stay untouched.
constexpr std::string_view kOnlyChanged = " and {table}.{column}<>users.usedby";

std::string filled(std::string_view text, const UserColumn& column) {
  return replaceAll(replaceAll(text, "{table}", column.table), "{column}", column.column);
}

std::vector<std::string> textsFor(const UpgradeSite& site, const RepairTexts& texts, std::string_view ending = {}) {
  std::vector<std::string> result{std::string(texts.access) + std::string(ending)};
  if (site.isServer()) result.push_back(std::string(texts.serverVariant) + std::string(ending));
  return result;
}

struct NoCase {
  bool operator()(const std::string& left, const std::string& right) const { return compareNoCase(left, right) < 0; }
};
using Names = std::set<std::string, NoCase>;

Names unknownNames(UpgradeSite& site, std::span<const UserColumn> columns) {
  Names names;
  for (const UserColumn& column : columns) {
    for (const std::string& text : textsFor(site, kUnknownNames)) {
      passingOverDone([&] {
        const auto rows = site.connection.open(filled(text, column));
        for (; !rows->eof(); rows->moveNext()) names.emplace(trim(nullToText(rows->get("username"))));
      });
    }
  }
  return names;
}

std::size_t sizeOf(const Recordset& rows, std::string_view column) {
  for (const FieldInfo& field : rows.fields()) {
    if (equalsNoCase(field.name, column)) return static_cast<std::size_t>(field.size);
  }
  return 0;
}

/// A name that is too long for a code, or that is some other user's code, stays as it is.
void addUsers(UpgradeSite& site, const Names& names) {
  if (names.empty()) return;
  const auto users = site.connection.open("select * from Users", CursorKind::kKeyset, LockKind::kPessimistic);
  const std::size_t size = sizeOf(*users, "Usedby");
  for (const std::string& name : names) {
    if (characterCount(name) > size) continue;
    users->addNew();
    users->set("Usedby", name);
    users->set("UserName", name);
    try {
      users->update();
    } catch (const ProviderError& error) {
      users->cancel();
      if (error.number() != provider_number::kUnspecified && error.number() != provider_number::kIntegrity) throw;
    }
  }
}

void repair(UpgradeSite& site, std::span<const UserColumn> columns, std::string_view ending) {
  addUsers(site, unknownNames(site, columns));
  for (const UserColumn& column : columns) {
    for (const std::string& text : textsFor(site, kNamesToCodes, ending)) {
      passingOverDone([&] { site.connection.execute(filled(text, column)); });
    }
  }
}

}  // namespace

void repairUserCodesOnce(UpgradeSite& site) {
  const auto parameters = site.connection.open("select * from  parameter", CursorKind::kKeyset, LockKind::kPessimistic);
  if (parameters->eof() || equalsNoCase(nullToText(parameters->get("flguser")), "U")) return;
  repair(site, kUserColumns, {});
  parameters->set("flguser", "U");
  parameters->update();
}

void repairChildUserCodes(UpgradeSite& site) { repair(site, kChildUserColumns, kOnlyChanged); }

}  // namespace orva
