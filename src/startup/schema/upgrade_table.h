#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"
#include "startup/dialect.h"

namespace orva {

enum class SchemaDialect { kAccess, kServer };

/// Where a procedure of the upgrade works: the company's connection and its dialect.
struct UpgradeSite {
  Connection& connection;
  SchemaDialect dialect;

  bool isServer() const { return dialect == SchemaDialect::kServer; }
  const DialectTokens& tokens() const { return isServer() ? sqlServerTokens() : accessTokens(); }
};

/// The parts of the upgrade that look before they write.
enum class UpgradeProcedure {
  kNone,
  kFillParameterRow,
  kSwitchParametersOn,
  kProbeCostBreakup,
  kRepairUserCodesOnce,
  kFillBookNames,
  kRepairChildUserCodes,
};

/// One row of the upgrade: a statement that stands alone in both dialects, or a procedure
/// where a statement cannot say it. A statement whose work is done already fails, and its
/// failure is passed over.
struct UpgradeRow {
  int step = 0;
  std::string_view access = {};
  /// Empty: the Access text with the column types of SQL Server.
  std::string_view server = {};
  /// Sent after `server` where that text is kept in Access syntax, which the server refuses.
  std::string_view serverVariant = {};
  UpgradeProcedure procedure = UpgradeProcedure::kNone;
  /// A query in both dialects: while it has no row, the statement would find nothing to do, and
  /// is not sent. Spares companies without additional books a walk over all assets.
  std::string_view neededIf = {};
  /// The same once more: spares companies whose assets have their codes a join of assets and categories.
  std::string_view alsoNeededIf = {};
};

/// The rows of the thirteen steps in the order in which they run.
std::vector<UpgradeRow> upgradeRows();

/// The commands that a row sends in a dialect, in order; a procedure sends its own. A
/// statement that adds several columns is sent column by column, so that a company which has
/// some of them gets the others.
std::vector<std::string> upgradeCommands(const UpgradeRow& row, SchemaDialect dialect);

/// A definition statement of the Access dialect with the column types and defaults of SQL Server.
std::string withServerTypes(std::string_view accessDefinition);

/// Every row belongs to one step, steps do not go back, and every statement exists in both
/// dialects: what only a server needs stands under `server` alone.
constexpr bool isClosed(std::span<const UpgradeRow> rows, int firstStep, int lastStep) {
  int step = firstStep;
  for (const UpgradeRow& row : rows) {
    const bool isStatement = !row.access.empty() || !row.server.empty();
    if (isStatement == (row.procedure != UpgradeProcedure::kNone)) return false;
    if (!row.serverVariant.empty() && row.server.empty()) return false;
    if (row.step < step || row.step > step + 1) return false;
    step = row.step;
  }
  return !rows.empty() && rows.front().step == firstStep && step == lastStep;
}

}  // namespace orva
