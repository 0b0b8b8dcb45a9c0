#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "wizard/catalogue/field_row.h"
#include "wizard/import_run.h"
#include "wizard/selection.h"

namespace orva {

/// What every kind of import is called, on screen and on the command line.
struct ImportKindNames {
  ImportKindId id;
  std::string_view control;
  std::string_view caption;
  std::string_view batchName;
};

/// All kinds in the order of the selection page.
std::span<const ImportKindNames> importKindNames();
const ImportKindNames& namesOf(ImportKindId kind);
std::optional<ImportKindId> importKindByBatchName(std::string_view name);

/// What a kind does with staged rows. A kind without procedures is shown but
/// cannot be chosen.
struct ImportProcedures {
  ImportKindId kind;
  /// Headings of the columns that staging adds after the workbook's columns
  /// (codes that validation resolves and posting reads).
  std::span<const std::string_view> ownColumns;
  /// Headings that are staged in a mode when the sheet has them although the catalogue lacks them. Null: none.
  std::span<const std::string_view> (*sheetColumns)(AssetMode mode) = nullptr;
  /// Checks every row and records findings. Throws `ProviderError`.
  void (*validate)(ImportRun&);
  /// Writes every row. Throws nothing for a failed row: the result tells it.
  PostResult (*post)(ImportRun&);
  /// Why the company does not admit the choice at all, in the user's words; empty when it does. Null: always
  /// admitted. Throws `ProviderError`.
  std::string (*obstacle)(const CompanyContext&, const Selection&) = nullptr;
  /// Null: the kind is not tied to the ledger.
  const ControlPlan* controlPlan = nullptr;
};

/// The registry that the dispatch reads; filled once when the program is wired.
using ImportRegistry = std::vector<ImportProcedures>;

/// Null when the kind has no procedures.
const ImportProcedures* findProcedures(const ImportRegistry& registry, ImportKindId kind);

}  // namespace orva
