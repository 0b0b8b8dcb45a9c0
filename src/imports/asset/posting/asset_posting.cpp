#include "imports/asset/posting/asset_posting.h"

#include <algorithm>
#include <iterator>

#include "imports/asset/asset_columns.h"
#include "imports/asset/identifiers.h"
#include "imports/asset/named_values.h"
#include "platform/values/text.h"

namespace orva {
namespace {

/// How a modify mode finds its asset among the open records.
struct AssetFilter {
  AssetMode mode;
  ImportKindId flavour;
  Query filter;
};

constexpr AssetFilter kFilters[] = {
    {AssetMode::kModifyByAssetId, ImportKindId::kAcquired, {"Assetid='{id}' and AcquiredAs <> 'O'"}},
    {AssetMode::kModifyByAssetId, ImportKindId::kClosing, {"Assetid='{id}' and AcquiredAs = 'O'"}},
    {AssetMode::kModifyByPhysicalId, ImportKindId::kAcquired, {"PhyId='{id}' and AcquiredAs <> 'O'"}},
    {AssetMode::kModifyByPhysicalId, ImportKindId::kClosing, {"PhyId='{id}' and AcquiredAs = 'O'"}},
};

/// What a new asset gets under a heading that the sheet lacks.
struct DefaultValue {
  std::string_view heading;
  std::string_view target;
  bool ParameterFlags::*isKept = nullptr;
};

constexpr DefaultValue kDefaults[] = {
    {.heading = "DEPT", .target = "Deptcode"},
    {.heading = "VENDOR", .target = "Vendorcode"},
    {.heading = "USER", .target = "usedby", .isKept = &ParameterFlags::users},
    {.heading = "COSTCENTRE", .target = "Centrecode", .isKept = &ParameterFlags::costCentres},
};

/// Where records name an asset, for an asset that gets a new identifier.
constexpr NamingColumn kNamingColumns[] = {
    {.table = "fadep", .isWritten = true},
    {.table = "fadep1", .isWritten = true},
    {.table = "fadep2", .isWritten = true},
    {.table = "udvalues", .isWritten = true},
    {.table = "asset", .column = "passetid"},
    {.table = "addition", .column = "passetid"},
    {.table = "assetout"},
    {.table = "shift"},
    {.table = "shift", .column = "passetid"},
    {.table = "cadep"},
    {.table = "itaxdep"},
    {.table = "costbreakup"},
    {.table = "amc"},
    {.table = "insurance"},
    {.table = "reclassastcat"},
    {.table = "reclassification"},
    {.table = "reclassification1"},
    {.table = "reclassification2"},
    {.table = "reclassprosp"},
    {.table = "split"},
    {.table = "split", .column = "newassetid"},
    {.table = "splitoriginal"},
    {.table = "splitoriginal", .column = "passetid"},
    {.table = "tmpshiftdetails"},
    {.table = "tmpshiftastdet"},
    {.table = "tmpfadep"},
};

constexpr Query kMoveChildren = {
    "update addition set classcode ='{class}', subclasscode ='{subclass}' where passetid='{identifier}'"};
constexpr Query kGiveBackIdentifier = {"update asset set assetid ='{after}' where assetid='{before}'"};
/// What a new asset has brought into the company, the opening entries apart.
constexpr Query kTakeBacks[] = {
    {"delete from asset where assetid='{identifier}'"},
    {"delete from shift where assetid='{identifier}'"},
    {"delete from udvalues where assetid='{identifier}'"},
};
constexpr Query kFirstDepreciation = {"select docdt,method from fadep where assetid='{identifier}' order by docdt"};

constexpr std::string_view kNone = "NONE";

bool holdsNames(const ImportRun& run, const NamingColumn& naming) {
  constexpr Query kAny = {"select {column} from {table} where {column} is not null"};
  const NamedValues values{{"table", naming.table}, {"column", naming.column}};
  return !run.connection().open(composeQuery(kAny, run.dialect(), values), CursorKind::kFirstRow)->eof();
}

/// Undoing after a failure. When it fails as well, the first failure is the one to tell.
template <class Step>
void tryToUndo(Step step) {
  try {
    step();
  } catch (const ProviderError&) {
  }
}

}  // namespace

AssetPosting::AssetPosting(ImportRun& importRun)
    : PostingRow(importRun),
      categories_(importRun),
      masters_(importRun),
      opening_(importRun),
      shiftedIn_(importRun),
      userDefined_(*this) {
  for (const MiscellaneousColumn& master : miscellaneousColumns(importRun)) nameColumn(master.column, master.name);
}

void AssetPosting::begin(int index) {
  PostingRow::begin(index);
  category_ = {};
  unit_ = 0;
  stored_.clear();
  opening_.beginRow();
}

std::string AssetPosting::textArgument(std::string_view name) const {
  if (name == "id") {
    return std::string(trimmed(run().selection.mode == AssetMode::kModifyByPhysicalId ? "PHYID" : "ASSETID"));
  }
  return PostingRow::textArgument(name);
}

std::int64_t AssetPosting::assetCount() const {
  if (!isNew() || !run().selection.multipleAssetIds) return 1;
  return std::max<std::int64_t>(Value(trimmed("QTY")).toInteger().value_or(1), 1);
}

Currency AssetPosting::shareOf(Currency amount) const {
  constexpr std::int64_t kUnitsPerCent = Currency::kUnitsPerOne / 100;
  const std::int64_t count = assetCount();
  const auto share = Currency::fromUnits(amount.units() / kUnitsPerCent / count * kUnitsPerCent);
  return unit_ + 1 < count ? share : Currency::fromUnits(amount.units() - share.units() * (count - 1));
}

std::string AssetPosting::depreciationMethod() const {
  if (isNew()) return {};
  const auto entries = run().connection().open(
      composeQuery(kFirstDepreciation, run().dialect(), NamedValues{{"identifier", identifierBefore_}}));
  return entries->eof() ? std::string() : nullToText(entries->get("method"));
}

bool AssetPosting::findAsset() {
  for (const AssetFilter& candidate : kFilters) {
    if (candidate.mode != run().selection.mode || candidate.flavour != run().selection.kind) continue;
    record().filter(composeQuery(candidate.filter, run().dialect(), *this));
    return !record().eof();
  }
  return false;
}

bool AssetPosting::startAsset(std::int64_t unit) {
  unit_ = unit;
  if (isNew()) {
    if (unit == 0) resolveCategory();
    startNewAsset();
    return true;
  }
  if (!findAsset()) return false;
  identifierBefore_ = nullToText(field("Assetid"));
  classBefore_ = nullToText(field("classcode"));
  subclassBefore_ = nullToText(field("Subclasscode"));
  resolveCategory();
  if (!trimmed("CAT2").empty() || !trimmed("CAT3").empty()) storeCategory();
  return true;
}

void AssetPosting::resolveCategory() {
  const ImportRun& current = run();
  const std::string levelOne = isNew() ? std::string(cell(asset_column::kDefCode)) : nullToText(field("defcode"));
  category_ = {};
  category_.level(CategoryDepth::kOne) = readLevel(current, category_, CategoryDepth::kOne, levelOne);
  category_.level(CategoryDepth::kTwo) =
      trimmed("CAT2").empty() ? readLevel(current, category_, CategoryDepth::kTwo, isNew() ? "" : classBefore_)
                              : categories_.findOrCreate(category_, CategoryDepth::kTwo, cell("CAT2"));
  const bool keepsThree = !isNew() && equalsNoCase(category_.codeOf(CategoryDepth::kTwo), classBefore_);
  category_.level(CategoryDepth::kThree) =
      trimmed("CAT3").empty() ? readLevel(current, category_, CategoryDepth::kThree, keepsThree ? subclassBefore_ : "")
                              : categories_.findOrCreate(category_, CategoryDepth::kThree, cell("CAT3"));
}

void AssetPosting::startNewAsset() {
  const Selection& selection = run().selection;
  // The prefix depends on all levels, so the identifier comes after them.
  const bool isNumbered = run().company.flags.automaticIdentifiers || !hasColumn("ASSETID");
  const std::string identifier = isNumbered ? nextAssetIdentifier(run(), category_) : std::string(trimmed("ASSETID"));
  const std::string_view quantity = trimmed("QTY");
  record().addNew();
  set("Cocd", run().company.companyCode);
  set("Assetid", identifier);
  set("AcquiredAs", selection.shiftedIn ? "Shifted In" : selection.isClosing() ? "O" : "Purchased");
  set("Ownership", "Owned");
  set("Qty", assetCount() > 1 || quantity.empty() ? std::string_view("1") : quantity);
  set("costqty", "N");
  set("backdated", cell(asset_column::kBackdated) == "Y");
  set("blnLeaseHold", category_.level(CategoryDepth::kOne).leaseHold);
  storeCategory();
}

void AssetPosting::storeCategory() {
  const BookCodes codes = category_.bookCodes();
  const std::string& levelTwo = category_.codeOf(CategoryDepth::kTwo);
  const std::string& levelThree = category_.codeOf(CategoryDepth::kThree);
  const auto textOrNull = [](const std::string& text) { return text.empty() ? Value() : Value(text); };
  set("defcode", textOrNull(category_.codeOf(CategoryDepth::kOne)));
  set("classcode", levelTwo.empty() ? Value(kNone) : Value(levelTwo));
  set("Subclasscode", textOrNull(levelThree));
  set("Batch", textOrNull(category_.deepestCode()));
  set("Facode", textOrNull(codes.books));
  set("Facode1", textOrNull(codes.additional1));
  set("Facode2", textOrNull(codes.additional2));
  set("Blockcode", textOrNull(codes.incomeTax));
}

void AssetPosting::storeDefaults() {
  for (const DefaultValue& value : kDefaults) {
    if (hasColumn(value.heading)) continue;
    if (!value.isKept || run().company.flags.*value.isKept) set(value.target, kNone);
  }
}

void AssetPosting::storeAutomaticRate() {
  const auto rate = depreciationRate(run(), category_, cell(asset_column::kAccountingYear));
  if (!rate) return;
  set("FlgOverride", "Y");
  set("OverrideRate", rate->rate);
  set("OverrideMthd", rate->method);
}

void AssetPosting::giveNewIdentifier() {
  // Written back as it is, whatever the sheet's capitals.
  set("Phyid", field("Phyid"));
  if (run().company.flags.automaticIdentifiers) set("Assetid", nextAssetIdentifier(run(), category_));
}

void AssetPosting::completeAsset() {
  const Selection& selection = run().selection;
  if (isNew()) storeDefaults();
  if (isNew() && selection.autoCalcDepRate) storeAutomaticRate();
  if (selection.mode == AssetMode::kModifyByPhysicalId) giveNewIdentifier();
  // Written first, an entry without its asset is taken over by the next attempt; an asset
  // without its entry would stay wrong.
  if (isNew() && selection.isClosing()) opening_.write(record(), true);
}

void AssetPosting::moveChildren(const std::string& classCode, const std::string& subclassCode) const {
  const NamedValues values{{"class", classCode}, {"subclass", subclassCode}, {"identifier", identifierBefore_}};
  run().connection().execute(composeQuery(kMoveChildren, run().dialect(), values));
}

/// Most tables have no record that names any asset, fewer one of this asset, and looking is cheaper than a change of
/// nothing.
void AssetPosting::renameEverywhere(const std::string& before, const std::string& after) {
  constexpr Query kFind = {"select {column} from {table} where {column}='{before}'"};
  constexpr Query kRename = {"update {table} set {column} ='{after}' where {column}='{before}'"};
  if (!namingColumns_) {
    std::vector<NamingColumn> used;
    std::copy_if(std::begin(kNamingColumns), std::end(kNamingColumns), std::back_inserter(used),
                 [this](const NamingColumn& naming) { return naming.isWritten || holdsNames(run(), naming); });
    namingColumns_ = std::move(used);
  }
  for (const NamingColumn& naming : *namingColumns_) {
    const NamedValues values{{"table", naming.table}, {"column", naming.column}, {"before", before}, {"after", after}};
    if (run().connection().open(composeQuery(kFind, run().dialect(), values))->eof()) continue;
    run().connection().execute(composeQuery(kRename, run().dialect(), values));
  }
}

void AssetPosting::renameDependents() {
  const std::string identifier = nullToText(field("Assetid"));
  if (equalsNoCase(identifier, identifierBefore_)) return;
  try {
    renameEverywhere(identifierBefore_, identifier);
  } catch (const ProviderError&) {
    tryToUndo([&] {
      renameEverywhere(identifier, identifierBefore_);
      run().connection().execute(composeQuery(kGiveBackIdentifier, run().dialect(),
                                              NamedValues{{"before", identifier}, {"after", identifierBefore_}}));
    });
    throw;
  }
}

/// The children move first: a second attempt after a failure finds the asset's category still to be changed.
void AssetPosting::changeAsset() {
  const std::string classCode = nullToText(field("classcode"));
  const std::string subclassCode = nullToText(field("Subclasscode"));
  const bool isMoved = !equalsNoCase(classCode, classBefore_) || !equalsNoCase(subclassCode, subclassBefore_);
  if (isMoved) moveChildren(classCode, subclassCode);
  try {
    record().update();
  } catch (const ProviderError&) {
    if (isMoved) tryToUndo([&] { moveChildren(classBefore_, subclassBefore_); });
    throw;
  }
  renameDependents();
  if (run().selection.isClosing()) opening_.write(record(), false);
}

void AssetPosting::storeAsset() {
  if (isNew()) {
    record().update();
  } else {
    changeAsset();
  }
  stored_.push_back(nullToText(field("Assetid")));
  if (isNew() && run().selection.shiftedIn) shiftedIn_.write(*this);
  userDefined_.write(*this, stored_.back());
}

void AssetPosting::takeBack() {
  if (!isNew()) return;
  tryToUndo([&] {
    for (const std::string& identifier : stored_) {
      for (const Query& takeBack : kTakeBacks) {
        run().connection().execute(composeQuery(takeBack, run().dialect(), NamedValues{{"identifier", identifier}}));
      }
    }
    opening_.takeBack();
  });
}

}  // namespace orva
