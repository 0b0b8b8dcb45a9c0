#include "asset_sheets.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "platform/xls/xls_workbooks.h"
#include "run_program.h"

namespace bench {
namespace {

/// The most detailed categories of the demonstration company, with the prefix of their identifiers.
struct Category {
  const char* defCode;
  const char* classCode;
  const char* subClassCode;
  const char* prefix;
  std::array<const char*, 3> descriptions;
};

constexpr Category kCategories[] = {
    {"BL", "BL-01", "", "MH\\BL\\FB", {"Buildings", "Factory Buildings", ""}},
    {"BL", "BL-02", "", "MH\\BL\\CW", {"Buildings", "Civil Works", ""}},
    {"PM", "PM-01", "PM-01-01", "MH\\PM\\MT\\TC", {"Plant and Machinery", "Machine Tools", "CNC Turning"}},
    {"PM", "PM-01", "PM-01-02", "MH\\PM\\MT\\MC", {"Plant and Machinery", "Machine Tools", "CNC Milling"}},
    {"PM", "PM-01", "PM-01-03", "MH\\PM\\MT\\GR", {"Plant and Machinery", "Machine Tools", "Grinding"}},
    {"PM", "PM-02", "PM-02-01", "MH\\PM\\UT\\CM", {"Plant and Machinery", "Utilities", "Compressors"}},
    {"PM", "PM-02", "PM-02-02", "MH\\PM\\UT\\PB", {"Plant and Machinery", "Utilities", "Power and Back-up"}},
    {"PM", "PM-03", "", "MH\\PM\\TI", {"Plant and Machinery", "Testing and Inspection", ""}},
    {"PM", "PM-04", "", "MH\\PM\\MH", {"Plant and Machinery", "Material Handling", ""}},
    {"FF", "FF-01", "", "MH\\FF\\OF", {"Furniture and Fixtures", "Office Furniture", ""}},
    {"FF", "FF-02", "", "MH\\FF\\SF", {"Furniture and Fixtures", "Shop Floor Furniture", ""}},
    {"OE", "OE-01", "", "MH\\OE\\AC", {"Office Equipment", "Air Conditioners", ""}},
    {"OE", "OE-02", "", "MH\\OE\\SC", {"Office Equipment", "Security and Communication", ""}},
    {"CO", "CO-01", "CO-01-01", "MH\\CO\\PC\\DT", {"Computers", "Personal Computers", "Desktops"}},
    {"CO", "CO-01", "CO-01-02", "MH\\CO\\PC\\LT", {"Computers", "Personal Computers", "Laptops"}},
    {"CO", "CO-02", "", "MH\\CO\\SN", {"Computers", "Servers and Network", ""}},
    {"VH", "VH-01", "", "MH\\VH\\CR", {"Vehicles", "Cars", ""}},
    {"VH", "VH-02", "", "MH\\VH\\GV", {"Vehicles", "Goods Vehicles", ""}},
};
constexpr int kCategoryCount = static_cast<int>(std::size(kCategories));
constexpr std::array<const char*, 3> kEmptyCategory = {"Plant and Machinery", "Dies and Moulds", ""};

const Category& categoryOf(int asset) { return kCategories[asset % kCategoryCount]; }

std::string identifierOf(int asset) {
  std::array<char, 16> number{};
  std::snprintf(number.data(), number.size(), "%05d", asset / kCategoryCount + 1);
  return std::string(categoryOf(asset).prefix) + number.data();
}

std::string physicalIdOf(int asset) { return "OLD/" + std::to_string(asset); }

/// Both additional books, with a rate for every category.
constexpr const char* kThreeBooks =
    "update Parameter set FARate1 = true, FARate2 = true;\n"
    "update FADefinition set FACode1 = 'A1', FACode2 = 'A2';\n"
    "insert into FARate1 (Cocd, FACode, [Desc], Method, Rate, Accyear) values ('DEMO', 'A1', 'All', 'SLM', 5, "
    "'2024-2025');\n"
    "insert into FARate2 (Cocd, FACode, [Desc], Method, Rate, Accyear) values ('DEMO', 'A2', 'All', 'WDV', 15, "
    "'2024-2025');\n"
    "update AccYear set Closed = false;\n"
    "update FinYear set Closed = false;\n";

constexpr const char* kCategoryWithoutAssets =
    "insert into Classification (DefCode, ClassCode, ClassDesc, Prefix, FACode, BlockCode, AssetLife1) values ('PM', "
    "'PM-05', 'Dies and Moulds', 'DM', 'PLANT', 'P15', 96);\n";

void writeAsset(std::ostream& script, int asset, Stock stock) {
  const Category& category = categoryOf(asset);
  const bool isPurchased = stock == Stock::kPurchased;
  const std::string identifier = identifierOf(asset);
  const std::string cost = std::to_string(1000 + asset % 90000);
  const std::string codes =
      std::string("'") + category.defCode + "', '" + category.classCode + "', '" + category.subClassCode + "'";
  script << "insert into Asset (Cocd, Assetid, AcquiredAs, Ownership, PhyID, DefCode, ClassCode, SubClasscode, Cost, "
            "AccDep, Qty, DocDt, UseDate, Accyear, Finyear, FAAge, LeaseDate, DeptCode, Vendorcode) values ('DEMO', '"
         << identifier << (isPurchased ? "', 'Purchased'" : "', 'O'") << ", 'Owned', '" << physicalIdOf(asset) << "', "
         << codes << ", " << cost << (isPurchased ? ", null" : ", 500") << ", 1, "
         << (isPurchased ? "#05/12/2025#, #05/20/2025#, '2025-2026', '2025-2026'"
                         : "#03/31/2025#, #05/20/2020#, '2024-2025', '2024-2025'")
         << ", 60, #05/20/2030#, '0001', '0001');\n";
  if (isPurchased) return;
  script << "insert into Fadep (Cocd, Assetid, DocDt, DefCode, ClassCode, SubClassCode, FACode, Method, Rate, AccDep, "
            "Amount, cost, Accyear, Flag) values ('DEMO', '"
         << identifier << "', #03/31/2025#, " << codes << ", 'PLANT', 'SLM', 6.33, 500, 500, " << cost
         << ", '2024-2025', 'O');\n";
}

using Rows = std::vector<std::vector<OutputCell>>;

constexpr const char* kAcquiredColumns[] = {"PHYID",      "USEDATE",     "VCHRDATE", "CAT1",   "CAT2",
                                            "CAT3",       "DESCRIPTION", "COST",     "GST",    "QTY",
                                            "MAINLOC",    "SUBLOC",      "PHYLOC",   "DEPT",   "VENDOR",
                                            "COSTCENTRE", "USER",        "REMARKS",  "VCHRNO", "SALVAGEVALUE"};
constexpr const char* kClosingColumns[] = {"PHYID",   "USEDATE",     "VCHRDATE",   "CAT1",   "CAT2",
                                           "CAT3",    "DESCRIPTION", "COST",       "ACCDEP", "ACCDEP1",
                                           "ACCDEP2", "QTY",         "MAINLOC",    "SUBLOC", "PHYLOC",
                                           "DEPT",    "VENDOR",      "COSTCENTRE", "USER",   "SALVAGEVALUE"};
/// Behind the identifier; the category stays, as do the dates.
constexpr const char* kModifiedColumns[] = {
    "DESCRIPTION", "COST", "GST",     "QTY",    "MAINLOC", "SUBLOC",   "PHYLOC", "DEPT",   "VENDOR",      "COSTCENTRE",
    "USER",        "Life", "REMARKS", "VCHRNO", "PONO",    "WARRANTY", "BILLNO", "PODATE", "SALVAGEVALUE"};

template <std::size_t kCount>
void addHeadings(std::vector<OutputCell>& cells, const char* const (&names)[kCount]) {
  for (const char* name : names) cells.push_back(text(name));
}

std::string costOf(int row) { return std::to_string(20000 + row % 70000) + ".5"; }

std::vector<OutputCell> acquired(int row, SheetKind kind) {
  const bool bad = kind == SheetKind::kAllBad;
  const auto& names = kind == SheetKind::kOneCategory ? kEmptyCategory : categoryOf(row).descriptions;
  const std::string id = std::to_string(row);
  return {text("NEW/" + id),
          date(bad ? "15/06/2027" : "15/06/2025"),
          date("10/06/2025"),
          text(names[0]),
          text(names[1]),
          text(names[2]),
          text(bad ? "" : "Asset number " + id),
          number(bad ? "-5" : costOf(row)),
          number("1800"),
          number("1"),
          text("Pune"),
          text("Shop 1"),
          text("Bay A"),
          text("Production"),
          text("Deccan Machine Tools Pvt Ltd"),
          text("Pune Works"),
          text("A. Kulkarni"),
          text("Remark " + id),
          text("JV/" + id),
          number("500")};
}

/// On the last day of the year: an earlier date is refused once another opening entry is there.
std::vector<OutputCell> takenOver(int row) {
  const auto& names = categoryOf(row).descriptions;
  const std::string id = std::to_string(row);
  return {text("NEW/" + id),
          date("31/03/2025"),
          date("31/03/2025"),
          text(names[0]),
          text(names[1]),
          text(names[2]),
          text("Asset number " + id),
          number(costOf(row)),
          number("1250.25"),
          number("1000"),
          number("900"),
          number("1"),
          text("Pune"),
          text("Shop 1"),
          text("Bay A"),
          text("Production"),
          text("Deccan Machine Tools Pvt Ltd"),
          text("Pune Works"),
          text("A. Kulkarni"),
          number("500")};
}

std::vector<OutputCell> modified(int row, const std::string& identifier) {
  const std::string id = std::to_string(row);
  return {text(identifier),     text("Asset number " + id),
          number(costOf(row)),  number("1800"),
          number("2"),          text("Pune"),
          text("Shop 1"),       text("Bay B"),
          text("Stores"),       text("Godavari Motors"),
          text("Nashik Works"), text("S. Iyer"),
          number("120"),        text("Remark " + id),
          text("JV/" + id),     text("PO/" + id),
          date("31/05/2027"),   text("BILL/" + id),
          date("02/05/2025"),   number("500")};
}

std::vector<OutputCell> headings(SheetKind kind) {
  std::vector<OutputCell> cells;
  switch (kind) {
    case SheetKind::kClosing:
      addHeadings(cells, kClosingColumns);
      break;
    case SheetKind::kModifyByAssetId:
    case SheetKind::kModifyByPhysicalId:
      cells.push_back(text(kind == SheetKind::kModifyByAssetId ? "ASSETID" : "PHYID"));
      addHeadings(cells, kModifiedColumns);
      break;
    default:
      addHeadings(cells, kAcquiredColumns);
  }
  return cells;
}

}  // namespace

void writeCompanyScript(const std::filesystem::path& path, int assets, Stock stock) {
  std::ofstream script(path);
  script << "update Parameter set Digits = 5;\n" << kCategoryWithoutAssets;
  if (stock == Stock::kTakenOver) script << kThreeBooks;
  for (int asset = 0; asset < assets; ++asset) writeAsset(script, asset, stock);
}

void writeAssetSheet(const std::filesystem::path& path, SheetKind kind, int rows, int assets) {
  Rows cells;
  cells.reserve(static_cast<std::size_t>(rows) + 1);
  cells.push_back(headings(kind));
  for (int row = 0; row < rows; ++row) {
    const int asset = static_cast<int>(static_cast<long long>(row) * assets / rows);
    if (kind == SheetKind::kModifyByAssetId) {
      cells.push_back(modified(row, identifierOf(asset)));
    } else if (kind == SheetKind::kModifyByPhysicalId) {
      cells.push_back(modified(row, physicalIdOf(asset)));
    } else {
      cells.push_back(kind == SheetKind::kClosing ? takenOver(row) : acquired(row, kind));
    }
  }
  orva::XlsWorkbooks().write(path.string(), "Asset", cells);
}

}  // namespace bench
