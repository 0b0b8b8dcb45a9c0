#include <algorithm>
#include <functional>
#include <iterator>
#include <map>
#include <span>
#include <vector>

#include "imports/asset/posting/after_posting.h"
#include "imports/asset/posting/code_gaps.h"

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

/// The columns of a table that the company needs filled.
std::vector<std::string_view> filledColumns(const CompanyContext& company, std::string_view table) {
  std::vector<std::string_view> columns;
  for (const CleanUp& cleanUp : kCleanUps) {
    if (cleanUp.table != table || !applies(company, cleanUp)) continue;
    if (std::find(columns.begin(), columns.end(), cleanUp.column) == columns.end()) columns.push_back(cleanUp.column);
  }
  return columns;
}

/// Runs those clean-ups that `isNeeded` asks for; the number of rows that they changed.
std::int64_t run(const CompanyContext& company, const std::function<bool(const CleanUp&)>& isNeeded) {
  std::int64_t changed = 0;
  for (const CleanUp& cleanUp : kCleanUps) {
    if (!applies(company, cleanUp) || !isNeeded(cleanUp)) continue;
    changed += company.connection->execute(statementOf(cleanUp, company.isSqlServer));
  }
  return changed;
}

/// The columns of a table that are empty somewhere, by one walk of the server through its rows. The join of a clean-up
/// costs several times as much, and most companies lack no code.
std::map<std::string_view, bool> findGaps(const CompanyContext& company, std::string_view table) {
  const std::vector<std::string_view> columns = filledColumns(company, table);
  std::string query;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    // Neither a null nor an empty text is greater, and the column is read once.
    query.append(i == 0 ? "Select min(case when " : ", min(case when ").append(columns[i]);
    query.append(" > '' then 1 else 0 end) as filled").append(std::to_string(i + 1));
  }
  const auto rows = company.connection->open(query + " from " + std::string(table));
  std::map<std::string_view, bool> gaps;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    gaps[columns[i]] = !rows->eof() && rows->get("filled" + std::to_string(i + 1)).toText() == "0";
  }
  return gaps;
}

void cleanUpOnServer(const CompanyContext& company) {
  std::map<std::string_view, std::map<std::string_view, bool>> gaps;
  run(company, [&](const CleanUp& cleanUp) {
    if (!gaps.contains(cleanUp.table)) gaps[cleanUp.table] = findGaps(company, cleanUp.table);
    return gaps[cleanUp.table][cleanUp.column];
  });
}

using Cells = std::span<const std::optional<std::string_view>>;

/// Columns of an asset that fill those of entries, in the order of their places in a set of codes.
constexpr std::string_view kAssetCodes[] = {"defcode", "classcode", "subclasscode", "facode1", "facode2"};
static_assert(std::size(kAssetCodes) == kMostCodes);

std::size_t placeOf(std::string_view assetCode) {
  return static_cast<std::size_t>(std::find(std::begin(kAssetCodes), std::end(kAssetCodes), assetCode) -
                                  std::begin(kAssetCodes));
}

/// A table of entries, which take their codes from their assets.
struct EntryTable {
  std::string_view name;
  LackingRows lacking = {};
  Codes fillable = 0;  ///< lacked by an entry of which the asset has the code
};

LackingRows readEntries(const CompanyContext& company, std::string_view table) {
  LackingRows lacking;
  std::vector<std::string_view> columns = {"assetid"};
  std::vector<std::size_t> places;
  for (const CleanUp& cleanUp : kCleanUps) {
    if (cleanUp.table != table || !applies(company, cleanUp)) continue;
    columns.push_back(cleanUp.column);
    places.push_back(placeOf(cleanUp.sourceColumn));
  }
  if (places.empty()) return lacking;
  company.connection->walkTexts(table, columns, [&](Cells cells) {
    Codes lacked = 0;
    for (std::size_t i = 0; i < places.size(); ++i) lacked |= lackedCode(places[i], cells[i + 1]);
    if (lacked != 0 && cells[0]) lacking.add(*cells[0], lacked);
  });
  return lacking;
}

/// Learns what entries could take from their assets, and returns what assets lack themselves: of the codes in `own`,
/// and of those that entries lack.
Codes readAssets(const CompanyContext& company, Codes own, std::span<EntryTable> tables) {
  Codes asked = own;
  for (const EntryTable& table : tables) asked |= table.lacking.lacked();
  std::vector<std::string_view> columns = {"assetid"};
  std::vector<std::size_t> places;
  for (std::size_t place = 0; place < kMostCodes; ++place) {
    if (!holdsCode(asked, place)) continue;
    columns.push_back(kAssetCodes[place]);
    places.push_back(place);
  }
  Codes lackedByAssets = 0;
  if (places.empty()) return lackedByAssets;
  company.connection->walkTexts("asset", columns, [&](Cells cells) {
    Codes given = 0;
    for (std::size_t i = 0; i < places.size(); ++i) {
      lackedByAssets |= lackedCode(places[i], cells[i + 1]);
      given |= givenCode(places[i], cells[i + 1]);
    }
    for (EntryTable& table : tables) {
      const bool mayHelp = cells[0] && (given & table.lacking.lacked() & ~table.fillable) != 0;
      if (mayHelp) table.fillable |= given & table.lacking.lackedBy(*cells[0]);
    }
  });
  return lackedByAssets;
}

/// In a file at hand a walk costs a fraction of a join, and mostly a join would change nothing: entries lack codes that
/// their assets do not have either.
void cleanUpInFile(const CompanyContext& company) {
  EntryTable tables[] = {{"fadep"}, {"fadep1"}, {"fadep2"}};
  for (EntryTable& table : tables) table.lacking = readEntries(company, table.name);
  Codes own = 0;
  for (const std::string_view column : filledColumns(company, "asset")) own |= givenCode(placeOf(column), "");
  const Codes lacked = readAssets(company, own, tables);
  const std::int64_t changed = run(company, [&](const CleanUp& cleanUp) {
    return cleanUp.table == "asset" && holdsCode(lacked, placeOf(cleanUp.column));
  });
  // What assets have got only now they can give to their entries, too.
  if (changed > 0) readAssets(company, 0, tables);
  run(company, [&](const CleanUp& cleanUp) {
    const auto table = std::find_if(std::begin(tables), std::end(tables),
                                    [&](const EntryTable& entries) { return entries.name == cleanUp.table; });
    return table != std::end(tables) && holdsCode(table->fillable, placeOf(cleanUp.sourceColumn));
  });
}

}  // namespace

void cleanUpCodes(const CompanyContext& company) {
  company.isSqlServer ? cleanUpOnServer(company) : cleanUpInFile(company);
}

}  // namespace orva
