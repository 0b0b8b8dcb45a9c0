#include "imports/transactions/child_assets.h"

#include <map>
#include <vector>

#include "imports/transactions/child_rules.h"

namespace orva {
namespace {

constexpr std::string_view kFamilyNegative = "Sum of Parent and Dependent Child Assets Costs can not be Negative ";

/// A parent's costs in the company and in the workbook, and its rows.
struct Family {
  Currency cost;
  std::vector<int> rows;
};

void markNegativeFamilies(ImportRun& run, const std::map<std::string, Family>& families, int costColumn) {
  std::vector<Finding> findings;
  for (const auto& [parent, family] : families) {
    if (family.cost >= Currency()) continue;
    for (int row : family.rows) findings.push_back({.row = row, .column = costColumn, .text = kFamilyNegative});
  }
  if (!findings.empty()) run.findings.addToEarlierRows(std::move(findings));
}

void validateChildren(ImportRun& run) {
  ChildRow row(run);
  std::map<std::string, Family> families;
  walkRows<ChildRow>(row, childRules(), WalkPolicy::kFirstErrorEndsRow, [&families](ChildRow& current) {
    const auto [family, isNew] = families.try_emplace(toUpper(current.assetId()));
    if (isNew) family->second.cost = familyCost(current);
    family->second.cost += current.cost();
    family->second.rows.push_back(current.row());
  });
  markNegativeFamilies(run, families, row.columnOf("COST"));
}

void storeChildId(ChildRow& row, const Cell&, std::string_view target) {
  const std::string childId = nextChildId(row);
  row.run().grid.setText(row.row(), row.columnOf("ASSETID"), childId);
  row.set(target, childId);
}

/// As for assets, a vendor that the company does not have is added.
void storeVendor(ChildRow& row, const Cell& cell, std::string_view target) {
  const std::string_view name = trim(cell.value);
  row.set(target, name.empty() ? "NONE" : row.masters().findOrCreate(MasterId::kVendor, {.description = name}));
}

void storeUser(ChildRow& row, const Cell& cell, std::string_view target) {
  row.set(target, cell.isBlank() ? Value("NONE") : Value(cell.value));
}

void storeIgnoreCost(ChildRow& row, const Cell& cell, std::string_view target) {
  row.set(target, equalsNoCase(trim(cell.value), "YES") ? -1 : 0);
}

/// Category of the parent, which decides about salvage values and leases.
Value categoryField(ChildRow& row, std::string_view field) {
  const auto category = row.open({.access = "Select f.* From FADefinition f, Asset a Where f.defcode = a.defcode"
                                            " and a.assetId ='{id}'"});
  return category->eof() ? Value() : category->get(field);
}

/// Without a cell the value is 0 where the category allows none, and unset otherwise.
void storeSalvageValue(ChildRow& row) {
  const std::string_view cell = trim(row.cell("SALVAGEVALUE"));
  const Value costSalvage = categoryField(row, "CostSalvage");
  const Value leaseHold = categoryField(row, "blnLeaseHold");
  row.set("CostSalvage", costSalvage);
  row.set("blnLeaseHold", leaseHold);
  if (!cell.empty()) {
    row.set("SalvageValue", cell);
  } else if (costSalvage.toBoolean() || leaseHold.toBoolean()) {
    row.set("SalvageValue", Currency());
  }
}

void storeFromParent(ChildRow& row, const Cell&, std::string_view target) { row.set(target, row.assetField(target)); }

void storeParentId(ChildRow& row, const Cell&, std::string_view target) { row.set(target, row.assetField("AssetId")); }

void storeCalculation(ChildRow& row, const Cell&, std::string_view target) {
  row.set(target, row.constant("select DepChildCaln from Parameter ", "DepChildCaln"));
}

void storeAcquisitionKind(ChildRow& row, const Cell&, std::string_view target) {
  row.set(target, row.run().selection.kind == ImportKindId::kDepChildFx ? "F" : "Purchased");
}

void storeCompany(ChildRow& row, const Cell&, std::string_view target) {
  row.set(target, row.run().company.companyCode);
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
    {.heading = "USER", .target = "UsedBy", .store = storeUser},
    {.heading = "IGNORECOSTIT", .target = "IgnoreCostInITDep", .store = storeIgnoreCost},
    {.heading = "CENVAT", .target = "Modvat"},
    {.target = "PAssetId", .store = storeParentId},
    {.target = "BlockCode", .store = storeFromParent},
    {.target = "FaCode", .store = storeFromParent},
    {.target = "MainLocation", .store = storeFromParent},
    {.target = "SubLocation", .store = storeFromParent},
    {.target = "PhysicalLocation", .store = storeFromParent},
    {.target = "DeptCode", .store = storeFromParent},
    {.target = "Ownership", .store = storeFromParent},
    {.target = "FinYear", .store = storeFromParent},
    {.target = "AccYear", .store = storeFromParent},
    {.target = "DefCode", .store = storeFromParent},
    {.target = "ClassCode", .store = storeFromParent},
    {.target = "SubClasscode", .store = storeFromParent},
    {.target = "LocationId", .store = storeFromParent},
    {.target = "Centrecode", .store = storeFromParent},
    {.target = "FAAge", .store = storeFromParent},
    {.target = "CostQty", .store = storeFromParent},
    {.target = "FlgAddnlRate", .store = storeFromParent},
    {.target = "Batch", .store = storeFromParent},
    {.target = "Qty", .store = storeFromParent},
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
