#include <algorithm>
#include <map>
#include <vector>

#include "imports/asset/posting/after_posting.h"

namespace orva {
namespace {

/// One column that is filled, where it is empty, from another table. `isKept` names the additional book that the column
/// belongs to.
struct CleanUp {
  std::string_view table;
  std::string_view column;
  std::string_view source;
  std::string_view sourceColumn;
  std::string_view join;
  bool ParameterFlags::*isKept = nullptr;
};

constexpr bool ParameterFlags::*kBook1 = &ParameterFlags::additionalBook1;
constexpr bool ParameterFlags::*kBook2 = &ParameterFlags::additionalBook2;

constexpr std::string_view kOwnSubclass =
    "asset.defcode = subclass.defcode and asset.classcode = subclass.classcode and asset.subclasscode = "
    "subclass.subclasscode";
constexpr std::string_view kOwnClass =
    "asset.defcode = classification.defcode and asset.classcode = classification.classcode";
// An entry takes the codes of its own asset and of no other.
constexpr std::string_view kAssetOfFadep = "fadep.assetid = asset.assetid";
constexpr std::string_view kAssetOfFadep1 = "fadep1.assetid = asset.assetid";
constexpr std::string_view kAssetOfFadep2 = "fadep2.assetid = asset.assetid";

constexpr CleanUp kCleanUps[] = {
    {"asset", "facode1", "subclass", "facode1", kOwnSubclass, kBook1},
    {"asset", "facode1", "classification", "facode1", kOwnClass, kBook1},
    {"asset", "facode2", "subclass", "facode2", kOwnSubclass, kBook2},
    {"asset", "facode2", "classification", "facode2", kOwnClass, kBook2},
    {"fadep", "defcode", "asset", "defcode", kAssetOfFadep},
    {"fadep", "classcode", "asset", "classcode", kAssetOfFadep},
    {"fadep", "subclasscode", "asset", "subclasscode", kAssetOfFadep},
    {"fadep1", "defcode", "asset", "defcode", kAssetOfFadep1, kBook1},
    {"fadep1", "classcode", "asset", "classcode", kAssetOfFadep1, kBook1},
    {"fadep1", "subclasscode", "asset", "subclasscode", kAssetOfFadep1, kBook1},
    {"fadep2", "defcode", "asset", "defcode", kAssetOfFadep2, kBook2},
    {"fadep2", "classcode", "asset", "classcode", kAssetOfFadep2, kBook2},
    {"fadep2", "subclasscode", "asset", "subclasscode", kAssetOfFadep2, kBook2},
    {"fadep1", "facode", "asset", "facode1", kAssetOfFadep1, kBook1},
    {"fadep2", "facode", "asset", "facode2", kAssetOfFadep2, kBook2},
};

std::string columnOf(std::string_view table, std::string_view column) {
  return std::string(table) + "." + std::string(column);
}

/// The desktop database names both tables behind `update`, the server joins the source with `from`.
std::string statementOf(const CleanUp& cleanUp, bool isServer) {
  const std::string target = columnOf(cleanUp.table, cleanUp.column);
  const std::string source = columnOf(cleanUp.source, cleanUp.sourceColumn);
  std::string sql = "Update " + std::string(cleanUp.table);
  if (!isServer) sql += "," + std::string(cleanUp.source);
  sql += " set " + target + " = " + source;
  if (isServer) sql += " from " + std::string(cleanUp.source);
  sql += " where " + std::string(cleanUp.join) + " and (" + target + " is null or " + target + " = '') and (";
  sql += source + " is not null or " + source + " <>'')";
  // An empty text that replaces another would store a row, and with it whole tables, for nothing.
  return sql + " and (" + target + " is null or " + source + " <> '')";
}

bool applies(const CompanyContext& company, const CleanUp& cleanUp) {
  return !cleanUp.isKept || company.flags.*cleanUp.isKept;
}

/// The columns of a table that are empty somewhere, by one walk through its rows. The join of a clean-up costs several
/// times as much, and most companies lack no code.
std::map<std::string_view, bool> findGaps(const CompanyContext& company, std::string_view table) {
  std::vector<std::string_view> columns;
  std::string query;
  for (const CleanUp& cleanUp : kCleanUps) {
    if (cleanUp.table != table || !applies(company, cleanUp)) continue;
    if (std::find(columns.begin(), columns.end(), cleanUp.column) != columns.end()) continue;
    columns.push_back(cleanUp.column);
    query += query.empty() ? "Select min(" : ", min(";
    query += company.isSqlServer ? "case when " : "iif(";
    // Neither a null nor an empty text is greater, and the column is read once.
    query.append(cleanUp.column).append(" > ''");
    query += company.isSqlServer ? " then 1 else 0 end)" : ", 1, 0))";
    query.append(" as filled").append(std::to_string(columns.size()));
  }
  const auto rows = company.connection->open(query + " from " + std::string(table));
  std::map<std::string_view, bool> gaps;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    gaps[columns[i]] = !rows->eof() && rows->get("filled" + std::to_string(i + 1)).toText() == "0";
  }
  return gaps;
}

}  // namespace

void cleanUpCodes(const CompanyContext& company) {
  std::map<std::string_view, std::map<std::string_view, bool>> gaps;
  for (const CleanUp& cleanUp : kCleanUps) {
    if (!applies(company, cleanUp)) continue;
    if (!gaps.contains(cleanUp.table)) gaps[cleanUp.table] = findGaps(company, cleanUp.table);
    if (gaps[cleanUp.table][cleanUp.column]) company.connection->execute(statementOf(cleanUp, company.isSqlServer));
  }
}

}  // namespace orva
