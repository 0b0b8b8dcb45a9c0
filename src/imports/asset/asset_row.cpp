#include "imports/asset/asset_row.h"

#include "imports/asset/asset_columns.h"

namespace orva {
namespace {

/// How each mode and flavour finds the asset that a row changes.
struct ExistingQuery {
  AssetMode mode;
  ImportKindId flavour;
  Query query;
};

constexpr ExistingQuery kExistingQueries[] = {
    {AssetMode::kModifyByAssetId,
     ImportKindId::kAcquired,
     {"Select * from Asset where assetid ='{id}' and acquiredas<>'O'"}},
    {AssetMode::kModifyByAssetId,
     ImportKindId::kClosing,
     {"Select * from Asset where assetid ='{id}' and acquiredas='O'"}},
    {AssetMode::kModifyByPhysicalId,
     ImportKindId::kAcquired,
     {"Select * from Asset where phyid ='{id}' and acquiredas<>'O'"}},
    {AssetMode::kModifyByPhysicalId,
     ImportKindId::kClosing,
     {"Select * from Asset where phyid ='{id}' and acquiredas='O'"}},
};

constexpr Query kDepreciationOfAcquired = {"select docdt,method from fadep where assetid='{asset id}' order by docdt"};
constexpr Query kDepreciationOfClosing = {
    "select docdt,method from fadep where assetid='{asset id}' and (reclass <>'Y' or reclass is Null ) and (flag <> "
    "'S' "
    "and flag <> 'O' or flag is Null) order by docdt"};
constexpr Query kCategoryChange = {"select * from reclassastcat where assetid='{asset id}'"};
constexpr Query kShifted = {.access = "select * from shift where assetid='{asset id}' and tfrout=true and sameloc=true",
                            .sqlServer = "select * from shift where assetid='{asset id}' and tfrout=1 and sameloc=1"};
constexpr Query kLocation = {
    "Select * from Location where {upper}(MainLocation) ='{MAINLOC}' and {upper}(SubLocation) ='{SUBLOC}' and "
    "{upper}(PhysicalLocation) ='{PHYLOC}'"};

/// A fact of the row under the name that texts and queries use.
struct Fact {
  std::string_view name;
  std::string (*text)(const AssetRow& row);
};

std::string ofExisting(const AssetRow& row, std::string ExistingAsset::*field) {
  const ExistingAsset* asset = row.existing();
  return asset ? asset->*field : std::string();
}

std::string dayMonthYear(const std::optional<Date>& date) { return date ? date->toDayMonthYear() : std::string(); }

std::string costText(const AssetRow& row) {
  const std::string_view cell = row.cell("COST");
  if (!trim(cell).empty() || !row.existing()) return std::string(cell);
  return row.existing()->cost.toText();
}

std::string levelName(const AssetRow& row) {
  const std::string_view column = row.columnName();
  return column == "MAINLOC" ? "Main Location" : column == "SUBLOC" ? "Sub Location" : "Physical Location";
}

constexpr Fact kFacts[] = {
    {"id",
     [](const AssetRow& row) {
       const bool byPhysicalId = row.run().selection.mode == AssetMode::kModifyByPhysicalId;
       return std::string(trim(row.cell(byPhysicalId ? "PHYID" : "ASSETID")));
     }},
    {"asset id", [](const AssetRow& row) { return ofExisting(row, &ExistingAsset::identifier); }},
    {"asset accounting year", [](const AssetRow& row) { return ofExisting(row, &ExistingAsset::accountingYear); }},
    {"asset financial year", [](const AssetRow& row) { return ofExisting(row, &ExistingAsset::financialYear); }},
    {"depreciation method", [](const AssetRow& row) { return row.depreciation().method; }},
    {"cost", costText},
    {"level I", [](const AssetRow& row) { return row.category().codeOf(CategoryDepth::kOne); }},
    {"level II", [](const AssetRow& row) { return row.category().codeOf(CategoryDepth::kTwo); }},
    {"category descriptions", [](const AssetRow& row) { return categoryDescriptions(row.run(), row.category()); }},
    {"books code", [](const AssetRow& row) { return row.category().bookCodes().books; }},
    {"book 1 code", [](const AssetRow& row) { return row.category().bookCodes().additional1; }},
    {"book 2 code", [](const AssetRow& row) { return row.category().bookCodes().additional2; }},
    {"income tax code", [](const AssetRow& row) { return row.category().bookCodes().incomeTax; }},
    {"date's accounting year", [](const AssetRow& row) { return row.accounting ? row.accounting->name : ""; }},
    {"date's financial year", [](const AssetRow& row) { return row.financial ? row.financial->name : ""; }},
    {"accounting year", [](const AssetRow& row) { return row.accountingYear(); }},
    {"financial year", [](const AssetRow& row) { return row.financialYear(); }},
    {"closing date",
     [](const AssetRow& row) { return row.accounting ? row.accounting->closing.toDayMonthYear() : std::string(); }},
    {"calculated upto", [](const AssetRow& row) { return dayMonthYear(row.calculatedUpto); }},
    {"found year", [](const AssetRow& row) { return row.foundYear; }},
    {"master", [](const AssetRow& row) { return std::string(row.columnName()); }},
    {"level name", levelName},
    {"identifier size", [](const AssetRow&) { return std::to_string(kAssetIdentifierSize); }},
};

}  // namespace

AssetRow::AssetRow(ImportRun& importRun) : RowView(importRun) {
  for (const MiscellaneousColumn& master : miscellaneousColumns(importRun)) nameColumn(master.column, master.name);
}

void AssetRow::begin(int index) {
  RowView::begin(index);
  kept_ = {};
  accounting.reset();
  financial.reset();
  keptAccountingYear_.clear();
  keptFinancialYear_.clear();
  voucherAccountingYear_.clear();
  voucherFinancialYear_.clear();
  backdated = BackdatedTest::kNotMade;
  backdatedColumn = -1;
  calculatedUpto.reset();
  foundYear.clear();
}

std::string AssetRow::textArgument(std::string_view name) const {
  for (const Fact& fact : kFacts) {
    if (fact.name == name) return fact.text(*this);
  }
  return RowView::textArgument(name);
}

std::optional<Date> AssetRow::dateArgument(std::string_view name) const {
  if (name == "value") return Date::parseDayMonthYear(RowView::textArgument(name));
  if (name == "opening date") return accounting ? std::optional(accounting->opening) : std::nullopt;
  if (name == "closing date") return accounting ? std::optional(accounting->closing) : std::nullopt;
  if (name == "use date") return useDate();
  if (name == "calculated upto") return calculatedUpto;
  return RowView::dateArgument(name);
}

std::optional<ExistingAsset> AssetRow::readExisting() const {
  for (const ExistingQuery& candidate : kExistingQueries) {
    if (candidate.mode != run().selection.mode || candidate.flavour != run().selection.kind) continue;
    const auto found = open(candidate.query);
    if (found->eof()) return std::nullopt;
    ExistingAsset asset{.identifier = nullToText(found->get("assetid")),
                        .accountingYear = nullToText(found->get("AccYear")),
                        .financialYear = nullToText(found->get("FinYear")),
                        .defCode = nullToText(found->get("DefCode")),
                        .classCode = nullToText(found->get("ClassCode")),
                        .subClassCode = nullToText(found->get("SubClassCode")),
                        .cost = found->get("Cost").toCurrency().value_or(Currency()),
                        .useDate = found->get("usedate").toDate()};
    found->moveNext();
    asset.isDoubled = !found->eof();
    return asset;
  }
  return std::nullopt;
}

const ExistingAsset* AssetRow::existing() const {
  if (!kept_.existingIsRead) {
    kept_.existing = readExisting();
    kept_.existingIsRead = true;
  }
  return kept_.existing ? &*kept_.existing : nullptr;
}

const CalculatedDepreciation& AssetRow::depreciation() const {
  if (!kept_.depreciation) {
    kept_.depreciation.emplace();
    if (existing()) {
      const auto entries = open(run().selection.isClosing() ? kDepreciationOfClosing : kDepreciationOfAcquired);
      kept_.depreciation->isPresent = !entries->eof();
      if (!entries->eof()) kept_.depreciation->method = nullToText(entries->get("method"));
    }
  }
  return *kept_.depreciation;
}

bool AssetRow::isShifted() const {
  if (!kept_.isShifted) kept_.isShifted = existing() && finds(kShifted);
  return *kept_.isShifted;
}

bool AssetRow::hasCategoryChange() const {
  if (!kept_.hasCategoryChange) kept_.hasCategoryChange = existing() && finds(kCategoryChange);
  return *kept_.hasCategoryChange;
}

CategoryLevel AssetRow::readRowLevel(const AssetCategory& above, CategoryDepth depth, std::string_view heading,
                                     std::string_view codeOfAsset) const {
  const std::string_view description = cell(heading);
  if (!trim(description).empty()) return findLevel(run(), above, depth, description);
  return readLevel(run(), above, depth, codeOfAsset);
}

AssetCategory AssetRow::readCategory() const {
  static const ExistingAsset kNone;
  const ExistingAsset& asset = existing() ? *existing() : kNone;
  AssetCategory category;
  category.level(CategoryDepth::kOne) = readRowLevel(category, CategoryDepth::kOne, "CAT1", asset.defCode);
  category.level(CategoryDepth::kTwo) = readRowLevel(category, CategoryDepth::kTwo, "CAT2", asset.classCode);
  // A level III belongs to its level II, so the asset's own one falls away with a change above it.
  const bool keepsThree = equalsNoCase(category.codeOf(CategoryDepth::kTwo), asset.classCode);
  category.level(CategoryDepth::kThree) =
      readRowLevel(category, CategoryDepth::kThree, "CAT3", keepsThree ? std::string_view(asset.subClassCode) : "");
  return category;
}

const AssetCategory& AssetRow::category() const {
  if (!kept_.category) kept_.category = readCategory();
  return *kept_.category;
}

bool AssetRow::hasKnownLocation() const {
  if (!kept_.hasKnownLocation) kept_.hasKnownLocation = finds(kLocation);
  return *kept_.hasKnownLocation;
}

std::optional<Currency> AssetRow::amount(std::string_view heading) const { return amountIn(cell(heading)); }

std::optional<Currency> AssetRow::cost() const {
  if (!trim(cell("COST")).empty()) return amount("COST");
  return existing() ? std::optional(existing()->cost) : std::nullopt;
}

std::optional<Date> AssetRow::useDate() const {
  if (!trim(cell("USEDATE")).empty()) return Date::parseDayMonthYear(cell("USEDATE"));
  return existing() ? existing()->useDate : std::nullopt;
}

std::string AssetRow::accountingYear() const {
  return keptAccountingYear_.empty() && existing() ? existing()->accountingYear : keptAccountingYear_;
}

std::string AssetRow::financialYear() const {
  return keptFinancialYear_.empty() && existing() ? existing()->financialYear : keptFinancialYear_;
}

void AssetRow::keepAccountingYear() {
  keptAccountingYear_ = accounting->name;
  if (columnName() == "VCHRDATE") voucherAccountingYear_ = accounting->name;
}

void AssetRow::keepFinancialYear() {
  keptFinancialYear_ = financial->name;
  if (columnName() == "VCHRDATE") voucherFinancialYear_ = financial->name;
}

void AssetRow::write(std::string_view heading, std::string_view text) const {
  const int column = columnOf(heading);
  if (column >= 0) run().grid.setText(row(), column, text);
}

void AssetRow::writeOwnColumns() const {
  const AssetCategory& found = category();
  const BookCodes codes = found.bookCodes();
  write(asset_column::kDefCode, found.codeOf(CategoryDepth::kOne));
  write(asset_column::kClassCode, found.codeOf(CategoryDepth::kTwo));
  write(asset_column::kSubClassCode, found.codeOf(CategoryDepth::kThree));
  write(asset_column::kBooks, codes.books);
  write(asset_column::kAdditional1, codes.additional1);
  write(asset_column::kAdditional2, codes.additional2);
  write(asset_column::kIncomeTax, codes.incomeTax);
  write(asset_column::kAccountingYear, voucherAccountingYear_.empty() ? accountingYear() : voucherAccountingYear_);
  write(asset_column::kFinancialYear, voucherFinancialYear_.empty() ? financialYear() : voucherFinancialYear_);
  write(asset_column::kBackdated, backdated == BackdatedTest::kAccepted ? "Y" : "");
}

}  // namespace orva
