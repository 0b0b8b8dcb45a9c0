#pragma once

#include <optional>
#include <string>
#include <vector>

#include "imports/asset/company_fixture.h"

namespace orva {

using Lines = std::vector<std::string>;

/// The company of the asset tests with some assets, for one kind of import that refers to them:
/// - "P1" and "O'N" (T-1, T-2): purchases of 1000 in 2005-06, of category Plant and Machinery, Pumps;
/// - "SOLD", "OUT" (transferred out on 01/07/2005), "MOVED" (within its location), "NEW" (not put to use);
/// - "OPEN": taken over with closing balances; "GONE" is sold and no asset any more.
struct TransactionCompany : AssetCompany {
  explicit TransactionCompany(ImportKindId kind, SqlDialect dialect = SqlDialect::kAccess);
};

/// Statements on the books, cells that replace those of a good row, and what is found then.
struct RuleCase {
  Lines books = {};
  SheetRow cells = {};
  Lines findings = {};
  /// Where a company on a server answers otherwise.
  std::optional<Lines> onServer = {};
};

/// Validates each case in both dialects.
void checkRules(const Selection& selection, const SheetRow& good, const std::vector<RuleCase>& cases);

}  // namespace orva
