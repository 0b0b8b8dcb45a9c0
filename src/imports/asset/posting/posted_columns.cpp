#include "imports/asset/asset_columns.h"
#include "imports/asset/posting/asset_posting.h"
#include "platform/values/text.h"

namespace orva {
namespace {

using Column = PostedColumn<AssetPosting>;

constexpr std::string_view kNone = "NONE";

/// Stores an amount, or the asset's part of it.
void storeAmount(AssetPosting& row, const Cell& cell, std::string_view target) {
  const auto amount = amountIn(cell.value);
  if (amount) row.set(target, row.shareOf(*amount));
}

/// An identifier is looked up without the blanks around it, so it is kept without them. One that found the asset stays
/// as the company has it.
void storePhysicalId(AssetPosting& row, const Cell& cell, std::string_view target) {
  const bool foundAsset = row.run().selection.mode == AssetMode::kModifyByPhysicalId;
  if (!foundAsset && !cell.isBlank()) row.set(target, trim(cell.value));
}

/// A lease end date goes with the lease-hold flag of the category.
void storeLeaseHold(AssetPosting& row, const Cell& cell, std::string_view target) {
  if (!cell.isBlank()) row.set(target, row.category().level(CategoryDepth::kOne).leaseHold);
}

/// Stores a fixed text beside a cell that is filled.
void storeYes(AssetPosting& row, const Cell& cell, std::string_view target) {
  if (!cell.isBlank()) row.set(target, "Y");
}

template <bool ParameterFlags::*kIsKept>
bool isKept(const AssetPosting& row) {
  return row.run().company.flags.*kIsKept;
}

void storeMaster(AssetPosting& row, const Cell& cell, std::string_view target, MasterId master) {
  if (!cell.isBlank()) {
    row.set(target, row.masters().findOrCreate(master, {.description = cell.value}));
  } else if (row.isNew()) {
    row.set(target, kNone);
  }
}

void storeDepartment(AssetPosting& row, const Cell& cell, std::string_view target) {
  storeMaster(row, cell, target, MasterId::kDepartment);
}

void storeVendor(AssetPosting& row, const Cell& cell, std::string_view target) {
  storeMaster(row, cell, target, MasterId::kVendor);
}

void storeUser(AssetPosting& row, const Cell& cell, std::string_view target) {
  if (isKept<&ParameterFlags::users>(row)) storeMaster(row, cell, target, MasterId::kUser);
}

void storeCostCentre(AssetPosting& row, const Cell& cell, std::string_view target) {
  if (isKept<&ParameterFlags::costCentres>(row)) storeMaster(row, cell, target, MasterId::kCostCentre);
}

void storeLocation(AssetPosting& row, const Cell& cell, std::string_view target) {
  if (cell.isBlank()) return;
  row.set(target, row.masters().findOrCreate(MasterId::kLocation, {.description = cell.value,
                                                                   .subLocation = row.cell("SUBLOC"),
                                                                   .physicalLocation = row.cell("PHYLOC")}));
}

/// Columns `M1` to `M5` are named as the masters whose codes they keep.
void storeMiscellaneous(AssetPosting& row, const Cell& cell, std::string_view target) {
  if (cell.isBlank()) return;
  row.set(target, row.masters().findOrCreate(MasterId::kMiscellaneous,
                                             {.description = cell.value, .miscellaneousMaster = target}));
}

/// The years that validation found for the voucher date.
void storeFinancialYear(AssetPosting& row, const Cell& cell, std::string_view target) {
  if (!cell.isBlank()) row.set(target, row.cell("FINYEAR"));
}

void storeAccountingYear(AssetPosting& row, const Cell& cell, std::string_view target) {
  if (!cell.isBlank()) row.set(target, row.cell("ACCYEAR"));
}

/// Of a category without salvage values an asset gets none, but can lose the one that it has.
void storeSalvage(AssetPosting& row, const Cell& cell, std::string_view target) {
  const bool hasNone = row.isNew() || row.field(target).toCurrency().value_or(Currency()) == Currency();
  if (hasNone && row.category().level(CategoryDepth::kOne).withoutSalvage) return;
  storeAmount(row, cell, target);
}

void storeMethod(AssetPosting& row, const Cell& rate, std::string_view target, std::string_view heading) {
  const std::string_view method = row.trimmed(heading);
  if (!rate.isBlank() && !method.empty()) row.set(target, toUpper(method));
}

/// Without a method column the method stays that of the asset's first depreciation entry.
void storeMethodOfBooks(AssetPosting& row, const Cell& cell, std::string_view target) {
  storeMethod(row, cell, target, "OVERRIDEMETHOD");
  if (cell.isBlank() || row.hasColumn("OVERRIDEMETHOD")) return;
  if (const std::string first = row.depreciationMethod(); !first.empty()) row.set(target, first);
}

void storeMethodOfBook1(AssetPosting& row, const Cell& cell, std::string_view target) {
  storeMethod(row, cell, target, "OVERRIDEMETHOD1");
}

void storeMethodOfBook2(AssetPosting& row, const Cell& cell, std::string_view target) {
  storeMethod(row, cell, target, "OVERRIDEMETHOD2");
}

void storeQuantity(AssetPosting& row, const Cell& cell, std::string_view target) {
  if (!row.isNew() && !cell.isBlank()) row.set(target, trim(cell.value));
}

constexpr Column kColumns[] = {
    {.heading = "PHYID", .target = "PhyID", .store = storePhysicalId},
    {.heading = "QTY", .target = "Qty", .store = storeQuantity},
    {.heading = "VCHRNO", .target = "DocNo"},
    {.heading = "USEDATE", .target = "Usedate"},
    {.heading = "DESCRIPTION", .target = "Desc"},
    {.heading = "REMARKS", .target = "Remarks"},
    {.heading = "DEPT", .target = "Deptcode", .store = storeDepartment},
    {.heading = "VENDOR", .target = "Vendorcode", .store = storeVendor},
    {.heading = "VCHRDATE", .target = "Docdt"},
    {.heading = "VCHRDATE", .target = "Finyear", .store = storeFinancialYear},
    {.heading = "VCHRDATE", .target = "Accyear", .store = storeAccountingYear},
    {.heading = "LEASEDATE", .target = "LeaseDate"},
    {.heading = "LEASEDATE", .target = "blnLeaseHold", .store = storeLeaseHold},
    {.heading = "SALVAGEVALUE", .target = "SalvageValue", .store = storeSalvage},
    {.heading = "ADDNLRATEASPERIT", .target = "FlgAddnlRate", .store = storeYes},
    {.heading = "ADDNLRATEASPERIT", .target = "AddnlRate"},
    {.heading = "WARRANTY", .target = "WarrantyendDt"},
    {.heading = "PONO", .target = "PONo"},
    {.heading = "PODATE", .target = "PODt"},
    {.heading = "BILLNO", .target = "PartyDocNo"},
    {.heading = "BILLDATE", .target = "PartyDocdt"},
    {.heading = "COST", .target = "Cost", .store = storeAmount},
    {.heading = "GST", .target = "Modvat", .store = storeAmount},
    {.heading = "LIFE", .target = "Faage"},
    {.heading = "USER", .target = "Usedby", .store = storeUser},
    {.heading = "COSTCENTRE", .target = "Centrecode", .store = storeCostCentre},
    {.heading = "SHIFTEDFROM", .target = "ShiftedFrom"},
    {.heading = "MAINLOC", .target = "LocationId", .store = storeLocation},
    {.heading = "OVERRIDERATE", .target = "FlgOverRide", .store = storeYes},
    {.heading = "OVERRIDERATE", .target = "overriderate"},
    {.heading = "OVERRIDERATE", .target = "OverrideMthd", .store = storeMethodOfBooks},
    {.heading = "OVERRIDERATE1", .target = "FlgOverRide1", .store = storeYes},
    {.heading = "OVERRIDERATE1", .target = "overriderate1"},
    {.heading = "OVERRIDERATE1", .target = "OverrideMthd1", .store = storeMethodOfBook1},
    {.heading = "OVERRIDERATE2", .target = "FlgOverRide2", .store = storeYes},
    {.heading = "OVERRIDERATE2", .target = "overriderate2"},
    {.heading = "OVERRIDERATE2", .target = "OverrideMthd2", .store = storeMethodOfBook2},
    {.heading = "ACCDEP", .target = "Accdep", .store = storeAmount},
    {.heading = "ACCDEP1", .target = "Accdep1", .store = storeAmount},
    {.heading = "ACCDEP2", .target = "Accdep2", .store = storeAmount},
    {.heading = "M1", .target = "M1", .store = storeMiscellaneous},
    {.heading = "M2", .target = "M2", .store = storeMiscellaneous},
    {.heading = "M3", .target = "M3", .store = storeMiscellaneous},
    {.heading = "M4", .target = "M4", .store = storeMiscellaneous},
    {.heading = "M5", .target = "M5", .store = storeMiscellaneous},
};

}  // namespace

std::span<const PostedColumn<AssetPosting>> assetColumns() { return kColumns; }

}  // namespace orva
