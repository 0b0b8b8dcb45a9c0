#include "imports/transactions/child_assets.h"

#include <map>
#include <vector>

#include "imports/transactions/child_rules.h"
#include "imports/transactions/transaction_checks.h"

namespace orva {
namespace {

constexpr std::string_view kFamilyNegative = "Sum of Parent and Dependent Child Assets Costs can not be Negative ";

/// A parent's costs in the company and in the workbook, and its rows.
struct Family {
  Currency cost;
  std::vector<int> rows;
};

using Families = std::map<std::string, Family>;

void markNegativeFamilies(ImportRun& run, const Families& families, int costColumn) {
  std::vector<Finding> findings;
  for (const auto& [parent, family] : families) {
    if (family.cost >= Currency()) continue;
    for (int row : family.rows) findings.push_back({.row = row, .column = costColumn, .text = kFamilyNegative});
  }
  if (!findings.empty()) run.findings.addToEarlierRows(std::move(findings));
}

void addUp(ChildRow& row, Families& families) {
  if (!row.assetExists()) return;
  const auto [family, isNew] = families.try_emplace(toUpper(row.assetId()));
  if (isNew) family->second.cost = familyCost(row);
  family->second.cost = boundedSum(family->second.cost, row.cost());
  family->second.rows.push_back(row.row());
}

void validateChildren(ImportRun& run) {
  ChildRow row(run);
  Families families;
  validateTransactions(row, childRules(), [&families](ChildRow& current) { addUp(current, families); });
  if (!run.progress.stopRequested()) markNegativeFamilies(run, families, row.columnOf("COST"));
}

void storeChildId(ChildRow& row, const Cell&, std::string_view target) {
  const std::string childId = nextChildId(row);
  for (FlexGrid* grid : {&row.run().grid, &row.run().saved}) {
    grid->setText(row.row(), row.columnOf("ASSETID"), childId);
  }
  row.set(target, childId);
}

/// As for assets, a vendor that the company does not have is added.
void storeVendor(ChildRow& row, const Cell& cell, std::string_view target) {
  const std::string_view name = trim(cell.value);
  row.set(target, name.empty() ? "NONE" : row.masters().findOrCreate(MasterId::kVendor, {.description = name}));
}

void storeIgnoreCost(ChildRow& row, const Cell& cell, std::string_view target) {
  row.set(target, equalsNoCase(trim(cell.value), "YES") ? -1 : 0);
}

/// The category of the parent decides about salvage values and leases: without a cell the value is 0 where it allows
/// none, and unset otherwise.
void storeSalvageValue(ChildRow& row) {
  const auto category = row.open({.access = "Select f.* From FADefinition f, Asset a Where f.defcode = a.defcode"
                                            " and a.assetId ='{id}'"});
  const Value costSalvage = category->eof() ? Value() : category->get("CostSalvage");
  const Value leaseHold = category->eof() ? Value() : category->get("blnLeaseHold");
  row.set("CostSalvage", costSalvage);
  row.set("blnLeaseHold", leaseHold);
  const std::string_view cell = trim(row.cell("SALVAGEVALUE"));
  if (!cell.empty()) {
    row.set("SalvageValue", cell);
  } else if (costSalvage.toBoolean() || leaseHold.toBoolean()) {
    row.set("SalvageValue", Currency());
  }
}

void storeParentId(ChildRow& row, const Cell&, std::string_view target) { row.set(target, row.parentId()); }

void storeCalculation(ChildRow& row, const Cell&, std::string_view target) {
  row.set(target, row.constant("select DepChildCaln from Parameter ", "DepChildCaln"));
}

void storeAcquisitionKind(ChildRow& row, const Cell&, std::string_view target) {
  row.set(target, row.run().selection.kind == ImportKindId::kDepChildFx ? "F" : "Purchased");
}

constexpr PostedColumn<ChildRow> kChildColumns[] = {
    {.target = "AssetId", .store = storeChildId},
    {.heading = "DESCRIPTION", .target = "Desc1"},
    {.heading = "VENDOR", .target = "Vendorcode", .store = storeVendor},
    {.heading = "PHYID", .target = "PhyId"},
    {.heading = "VCHRNO", .target = "DocNo"},
    {.heading = "VCHRDATE", .target = "Docdt"},
    {.heading = "BILLNO", .target = "PartyDocNo"},
    {.heading = "BILLDATE", .target = "PartyDocDt"},
    {.heading = "COST", .target = "Cost"},
    {.heading = "USEDATE", .target = "UseDate"},
    {.heading = "WARRANTY", .target = "WarrantyEndDt"},
    {.heading = "PONO", .target = "PONO"},
    {.heading = "PODATE", .target = "PODT"},
    {.heading = "REMARKS", .target = "REMARKS"},
    {.heading = "USER", .target = "UsedBy", .store = storeOrNone},
    {.heading = "IGNORECOSTIT", .target = "IgnoreCostInITDep", .store = storeIgnoreCost},
    {.heading = "CENVAT", .target = "Modvat"},
    {.target = "PAssetId", .store = storeParentId},
    {.target = "BlockCode", .store = storeFromAsset},
    {.target = "FaCode", .store = storeFromAsset},
    {.target = "MainLocation", .store = storeFromAsset},
    {.target = "SubLocation", .store = storeFromAsset},
    {.target = "PhysicalLocation", .store = storeFromAsset},
    {.target = "DeptCode", .store = storeFromAsset},
    {.target = "Ownership", .store = storeFromAsset},
    {.target = "FinYear", .store = storeFromAsset},
    {.target = "AccYear", .store = storeFromAsset},
    {.target = "DefCode", .store = storeFromAsset},
    {.target = "ClassCode", .store = storeFromAsset},
    {.target = "SubClasscode", .store = storeFromAsset},
    {.target = "LocationId", .store = storeFromAsset},
    {.target = "Centrecode", .store = storeFromAsset},
    {.target = "FAAge", .store = storeFromAsset},
    {.target = "CostQty", .store = storeFromAsset},
    {.target = "FlgAddnlRate", .store = storeFromAsset},
    {.target = "Batch", .store = storeFromAsset},
    {.target = "Qty", .store = storeFromAsset},
    {.target = "Acquiredas", .store = storeAcquisitionKind},
    {.target = "DepChildCaln", .store = storeCalculation},
    {.target = "cocd", .store = storeCompany},
};

PostResult postChildren(ImportRun& run) {
  ChildRow row(run);
  return postResult(runPosting<ChildRow>(
      row, {.query = "select * from Addition ", .columns = kChildColumns, .beforeSave = storeSalvageValue}));
}

constexpr std::string_view kOwnColumns[] = {"ASSETID"};

}  // namespace

ImportProcedures childAssetsProcedures() {
  return {
      .kind = ImportKindId::kDepChild, .ownColumns = kOwnColumns, .validate = validateChildren, .post = postChildren};
}

ImportProcedures childAssetsForeignExchangeProcedures() {
  ImportProcedures procedures = childAssetsProcedures();
  procedures.kind = ImportKindId::kDepChildFx;
  return procedures;
}

}  // namespace orva
