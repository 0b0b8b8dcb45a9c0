#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "imports/asset/company_fixture.h"

namespace orva {

using Lines = std::vector<std::string>;

/// One asset of the test company: A1, bought on 1 May 2005 for 1,000, put to use on 10 May 2005, in the third-level
/// category with the rate code F2.
inline constexpr const char* kAssetA1 =
    "insert into Asset (Cocd, Assetid, PhyID, AcquiredAs, Ownership, DefCode, ClassCode, SubClasscode, Facode, "
    "FACode1, "
    "FACode2, Blockcode, Docdt, UseDate, Accyear, Finyear, Cost, Batch, Vendorcode, DeptCode, FAAge, Qty, srno) values "
    "('K1', 'A1', 'T-1', 'Purchased', 'Owned', 'PM', 'PM-01', 'PM-01-01', 'F2', 'A1', 'B1', 'T1', #05/01/2005#, "
    "#05/10/2005#, '2005-06', '2005-06', 1000, 'B7', '0003', '0007', 60, 1, '1')";

/// Changes to the good rows of a kind, what the company holds beside A1, and what must be found.
struct Case {
  std::vector<SheetRow> rows;
  Lines facts;
  Lines findings;
};

/// A row with some cells replaced.
inline SheetRow with(SheetRow row, const SheetRow& cells) {
  for (const auto& [heading, text] : cells) {
    for (auto& cell : row) {
      if (cell.first == heading) cell.second = text;
    }
  }
  return row;
}

/// Validates each case in a company of its own, in both dialects.
inline void expectFindings(const ImportProcedures& kind, const SheetRow& good, const std::vector<Case>& cases) {
  for (const SqlDialect dialect : {SqlDialect::kAccess, SqlDialect::kSqlServer}) {
    for (const Case& test : cases) {
      AssetCompany company(dialect, kind);
      company.prepare({kAssetA1});
      company.prepare(test.facts);
      std::vector<SheetRow> rows;
      for (const SheetRow& cells : test.rows) rows.push_back(with(good, cells));
      if (rows.empty()) rows.push_back(good);
      company.stage(rows);
      EXPECT_EQ(company.validate(), test.findings)
          << (dialect == SqlDialect::kAccess ? "Access, " : "SQL Server, ")
          << (test.facts.empty() ? std::string("no other facts") : test.facts.back());
    }
  }
}

}  // namespace orva
