#include "startup/schema/base_layout.h"

#include "platform/values/text.h"

namespace orva {
namespace {

constexpr ColumnRow kBaseColumns[] = {
    // The company and its two calendars.
    {"Company", "cocd", "text(10)"},
    {"Company", "coname", "text(100)"},
    {"AccYear", "AccYear", "text(9)", Need::kKey},
    {"AccYear", "AccOpDt", "date", Need::kRequired},
    {"AccYear", "AccClDt", "date", Need::kRequired},
    {"AccYear", "Closed", "yesno default No"},
    {"FinYear", "FinYear", "text(9)", Need::kKey},
    {"FinYear", "FinOpDt", "date", Need::kRequired},
    {"FinYear", "FinClDt", "date", Need::kRequired},
    {"FinYear", "Closed", "yesno default No"},

    // Asset categories and their rates.
    {"FADefinition", "DefCode", "text(10)", Need::kKey},
    {"FADefinition", "Description", "text(255)"},
    {"FADefinition", "Prefix", "text(10)"},
    {"FADefinition", "FACode", "text(10)"},
    {"FADefinition", "BlockCode", "text(10)"},
    {"FADefinition", "CostSalvage", "yesno default No"},
    {"FADefinition", "blnLeaseHold", "yesno default No"},
    {"FADefinition", "AssetLife", "number"},
    {"Classification", "DefCode", "text(10)", Need::kKey},
    {"Classification", "ClassCode", "text(30)", Need::kKey},
    {"Classification", "ClassDesc", "text(255)"},
    {"Classification", "AssetLife1", "number"},
    {"FARate", "Cocd", "text(10)"},
    {"FARate", "FACode", "text(10)", Need::kKey},
    {"FARate", "[Desc]", "text(100)"},
    {"FARate", "Method", "text(3)"},
    {"FARate", "Rate", "currency"},
    {"FARate", "Accyear", "text(9)", Need::kKey},
    {"ITaxRates", "Cocd", "text(10)"},
    {"ITaxRates", "BlockCode", "text(10)", Need::kKey},
    {"ITaxRates", "[Desc]", "text(100)"},
    {"ITaxRates", "Rate", "currency"},
    {"ITaxRates", "FinYear", "text(9)", Need::kKey},

    // Masters.
    {"Dept", "Deptcode", "text(10)", Need::kKey},
    {"Dept", "DeptName", "text(255)"},
    {"Vendor", "Vendorcode", "text(10)", Need::kKey},
    {"Vendor", "VendorName", "text(255)"},
    {"Vendor", "add1", "text(255)"},
    {"Vendor", "add2", "text(255)"},
    {"Vendor", "add3", "text(255)"},
    {"Vendor", "City", "text(50)"},
    {"Vendor", "Pin", "text(6)"},
    {"Vendor", "Mst", "text(50)"},
    {"Vendor", "Cst", "text(50)"},
    {"Vendor", "PAN", "text(10)"},
    {"Location", "cocd", "text(10)"},
    {"Location", "recordid", "long", Need::kKey},
    {"Location", "MainLocation", "text(30)"},
    {"Location", "SubLocation", "text(30)"},
    {"Location", "PhysicalLocation", "text(30)"},
    // Without a key: a master's number is its place in this table.
    {"MisMaster", "MName", "text(50)"},
    {"MisData", "Master", "text(10)", Need::kKey},
    {"MisData", "Code", "text(10)", Need::kKey},
    {"MisData", "MName", "text(50)"},

    // Assets and what happened to them.
    {"Asset", "Cocd", "text(10)"},
    {"Asset", "DocNo", "text(30)"},
    {"Asset", "Assetid", "text(30)", Need::kKey},
    {"Asset", "srno", "text(10)"},
    {"Asset", "[Desc]", "memo"},
    {"Asset", "Blockcode", "text(10)"},
    {"Asset", "BlockRate", "currency"},
    {"Asset", "Cacode", "text(10)"},
    {"Asset", "Carate", "currency"},
    {"Asset", "Farate", "currency"},
    {"Asset", "Facode", "text(10)"},
    {"Asset", "MainLocation", "text(30)"},
    {"Asset", "SubLocation", "text(30)"},
    {"Asset", "PhysicalLocation", "text(30)"},
    {"Asset", "DeptCode", "text(10)"},
    {"Asset", "Ownership", "text(30)"},
    {"Asset", "Vendorcode", "text(10)"},
    {"Asset", "Docdt", "date"},
    {"Asset", "UseDate", "date"},
    {"Asset", "WarrantyEndDt", "date"},
    {"Asset", "PONo", "text(30)"},
    {"Asset", "PODt", "date"},
    {"Asset", "PartyDocNo", "text(30)"},
    {"Asset", "PartyDocDt", "date"},
    {"Asset", "FCLoan", "yesno"},
    {"Asset", "FCLoanAmt", "currency"},
    {"Asset", "FCLoanRate", "currency"},
    {"Asset", "FCLoanCurrency", "text(50)"},
    {"Asset", "FCLoanRupees", "currency"},
    {"Asset", "Remarks", "memo"},
    {"Asset", "Cost", "currency"},
    {"Asset", "Modvat", "currency"},
    {"Asset", "Finyear", "text(9)"},
    {"Asset", "Accyear", "text(9)"},
    {"Asset", "DefCode", "text(10)"},
    {"Asset", "ClassCode", "text(30)"},
    {"Asset", "LeaseDate", "date"},
    {"Asset", "blnLeaseHold", "yesno"},
    {"Asset", "SalvageValue", "currency"},
    {"Asset", "M1", "text(10)"},
    {"Asset", "M2", "text(10)"},
    {"Asset", "M3", "text(10)"},
    {"Asset", "M4", "text(10)"},
    {"Asset", "M5", "text(10)"},
    {"AssetOut", "CoCd", "text(10)"},
    {"AssetOut", "DocNo", "text(10)"},
    {"AssetOut", "Docdt", "date"},
    {"AssetOut", "Accyear", "text(9)"},
    {"AssetOut", "AssetId", "text(30)"},
    {"AssetOut", "SrNo", "text(10)"},
    {"AssetOut", "SaleValue", "currency"},
    {"AssetOut", "Remarks", "text(255)"},
    {"Shift", "cocd", "text(10)"},
    {"Shift", "docno", "text(10)"},
    {"Shift", "docdt", "date"},
    {"Shift", "assetid", "text(30)"},
    {"Shift", "PhysicalLocation", "text(30)"},
    {"Shift", "shiftedFrom", "text(50)"},
    {"Shift", "DeptCode", "text(10)"},
    {"Shift", "accyear", "text(9)"},
    {"Shift", "Remarks", "text(255)"},
    {"CostBreakup", "cocd", "text(10)"},
    {"CostBreakup", "srno", "text(10)"},
    {"CostBreakup", "assetid", "text(30)"},
    {"CostBreakup", "Desc1", "memo"},
    {"CostBreakup", "Vendor", "text(255)"},
    {"CostBreakup", "DocNo", "text(30)"},
    {"CostBreakup", "Docdt", "date"},
    {"CostBreakup", "PartybillNo", "text(30)"},
    {"CostBreakup", "Partybilldt", "date"},
    {"CostBreakup", "Amount", "currency"},
    {"CostBreakup", "CostCatCode", "text(30)"},
    {"AMC", "Cocd", "text(10)"},
    {"AMC", "DocNo", "text(50)"},
    {"AMC", "DocDt", "date"},
    {"AMC", "AssetId", "text(30)"},
    {"AMC", "VendorCode", "text(10)"},
    {"AMC", "AmcFromDt", "date"},
    {"AMC", "AmcUptoDt", "date"},
    {"AMC", "Amount", "currency"},
    {"AMC", "Accyear", "text(9)"},
    {"AMC", "Remarks", "text(100)"},

    // Depreciation as per books, as per companies act, as per income tax.
    {"Fadep", "Cocd", "text(10)"},
    {"Fadep", "DocNo", "text(10)"},
    {"Fadep", "DocDt", "date"},
    {"Fadep", "SrNo", "text(10)"},
    {"Fadep", "Assetid", "text(30)"},
    {"Fadep", "FACode", "text(10)"},
    {"Fadep", "DateUsed", "date"},
    {"Fadep", "Datesold", "date"},
    {"Fadep", "Method", "text(20)"},
    {"Fadep", "Days", "number"},
    {"Fadep", "Rate", "currency"},
    {"Fadep", "AccDep", "currency"},
    {"Fadep", "Amount", "currency"},
    {"Fadep", "Accyear", "text(9)"},
    {"Cadep", "Cocd", "text(10)"},
    {"Cadep", "DocNo", "text(10)"},
    {"Cadep", "DocDt", "date"},
    {"Cadep", "SrNo", "text(10)"},
    {"Cadep", "Assetid", "text(30)"},
    {"Cadep", "CACode", "text(10)"},
    {"Cadep", "DateUsed", "date"},
    {"Cadep", "Datesold", "date"},
    {"Cadep", "Method", "text(20)"},
    {"Cadep", "Days", "number"},
    {"Cadep", "Rate", "currency"},
    {"Cadep", "AccDep", "currency"},
    {"Cadep", "Amount", "currency"},
    {"Cadep", "Accyear", "text(9)"},
    {"ItaxDep", "Cocd", "text(10)"},
    {"ItaxDep", "DocNo", "text(10)"},
    {"ItaxDep", "DocDt", "date"},
    {"ItaxDep", "FinYear", "text(9)"},
    {"ItaxDep", "AssetId", "text(30)"},
    {"ItaxDep", "BlockCode", "text(10)"},
    {"ItaxDep", "Rate", "currency"},
    {"ItaxDep", "Cost", "currency"},
    {"ItaxDep", "Amount", "currency"},
};

constexpr ColumnRow kColumnsAfterUpgrade[] = {
    {"Parameter", "AsPerRBI", "yesno default No"}, {"SubClass", "AssetLife2", "number"},
    {"Addition", "IgnoreCostInITDep", "yesno"},    {"Addition", "SalvageValue", "currency"},
    {"Addition", "CostSalvage", "yesno"},          {"Addition", "blnLeaseHold", "yesno"},
};

constexpr IndexRow kIndexes[] = {
    {"Asset", "PhyID", "PhyID"},
    {"Asset", "PAssetId", "PAssetId"},
    {"Asset", "Category", "DefCode, ClassCode, SubClasscode"},
    {"Asset", "ClassCode", "ClassCode"},
    {"Asset", "Accyear", "Accyear"},
    {"Asset", "FAAge", "FAAge"},
    {"Asset", "FACode1", "FACode1"},
    {"Asset", "FACode2", "FACode2"},
    {"Addition", "PAssetId", "PAssetId"},
    {"AssetOut", "AssetId", "AssetId"},
    {"AssetOut", "SrNo", "SrNo"},
    {"Shift", "assetid", "assetid"},
    {"Shift", "docno", "docno"},
    {"CostBreakup", "assetid", "assetid"},
    {"AMC", "AssetId", "AssetId"},
    {"AMC", "DocNo", "DocNo"},
    {"Insurance", "AssetId", "AssetId"},
    {"ReclassAstCat", "assetid", "assetid"},
    {"ReclassAstCat", "docno", "docno"},
    {"UDValues", "Assetid", "Assetid"},
    {"Fadep", "Assetid", "Assetid"},
    {"Fadep", "DocDt", "DocDt"},
    {"Fadep", "Facode", "FACode, DocDt"},
    {"Fadep", "Category", "DefCode, DocDt"},
    {"Fadep", "Flag", "Flag, DocDt"},
    {"FADep1", "DocDt", "DocDt"},
    {"FADep2", "DocDt", "DocDt"},
    {"Cadep", "Assetid", "Assetid"},
    {"ItaxDep", "DocDt", "DocDt"},
    {"ItaxDep", "FinYear", "FinYear"},
    {"FADefinition", "Description", "Description"},
    {"Classification", "ClassDesc", "ClassDesc"},
    {"Classification", "ClassCode", "ClassCode"},
    {"SubClass", "Category", "defcode, classcode, subclasscode"},
    {"SubClass", "SubClassCode", "subclasscode"},
    {"SubClass", "SubClassDesc", "subclassDesc"},
    {"Dept", "DeptName", "DeptName"},
    {"Vendor", "VendorName", "VendorName"},
    {"Costcentre", "CentreCode", "CentreCode"},
    {"Costcentre", "CentreName", "CentreName"},
    {"Users", "Username", "Username"},
    {"Location", "Places", "MainLocation, SubLocation, PhysicalLocation"},
    {"MisData", "MName", "MName, Master"},
};

constexpr bool isGroupedByTable(std::span<const ColumnRow> rows) {
  for (std::size_t i = 1; i < rows.size(); ++i) {
    if (rows[i].table == rows[i - 1].table) continue;
    for (std::size_t before = 0; before < i; ++before) {
      if (rows[before].table == rows[i].table) return false;
    }
  }
  return true;
}
static_assert(isGroupedByTable(kBaseColumns));

std::string definition(const ColumnRow& row) {
  std::string text = std::string(row.column) + " " + std::string(row.type);
  if (row.need != Need::kNone) text += " not null";
  return text;
}

std::string tableStatement(std::span<const ColumnRow> columns) {
  std::string body;
  std::string key;
  for (const ColumnRow& row : columns) {
    body += (body.empty() ? "" : ", ") + definition(row);
    if (row.need == Need::kKey) key += (key.empty() ? "" : ", ") + std::string(row.column);
  }
  if (!key.empty()) body += ", constraint pk_id primary key (" + key + ")";
  return "create table " + std::string(columns.front().table) + " (" + body + ")";
}

}  // namespace

std::span<const ColumnRow> baseColumns() { return kBaseColumns; }
std::span<const ColumnRow> columnsAfterUpgrade() { return kColumnsAfterUpgrade; }
std::span<const IndexRow> baseIndexes() { return kIndexes; }

std::vector<std::string> baseTableStatements() {
  const std::span<const ColumnRow> rows = kBaseColumns;
  std::vector<std::string> statements;
  for (std::size_t start = 0; start < rows.size();) {
    std::size_t end = start;
    while (end < rows.size() && rows[end].table == rows[start].table) ++end;
    statements.push_back(tableStatement(rows.subspan(start, end - start)));
    start = end;
  }
  return statements;
}

std::vector<std::string> afterUpgradeStatements() {
  std::vector<std::string> statements;
  for (const ColumnRow& row : kColumnsAfterUpgrade) {
    statements.push_back("alter table " + std::string(row.table) + " add " + definition(row));
  }
  for (const IndexRow& row : kIndexes) {
    statements.push_back("create index " + std::string(row.name) + " on " + std::string(row.table) + " (" +
                         std::string(row.columns) + ")");
  }
  return statements;
}

}  // namespace orva
