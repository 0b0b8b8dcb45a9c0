#pragma once

#include <vector>

#include "platform/controls.h"
#include "startup/company_context.h"
#include "wizard/catalogue/field_row.h"
#include "wizard/selection.h"

namespace orva {

/// The catalogue of a choice with its first ticks, read from the company where it depends on
/// it. Empty for a kind that has none (depreciation). Throws `ProviderError`.
Catalogue buildCatalogue(const Selection& selection, const CompanyContext& company);

/// The list columns of a kind with their widths in twips.
std::vector<ListView::Column> catalogueColumns(ImportKindId kind);
/// The cells of a catalogue line under these columns.
std::vector<std::string> catalogueCells(const FieldRow& field, ImportKindId kind);

/// What a kind of import needs on the selection page.
struct KindTraits {
  /// The kind works in Add and modify modes; others always name assets by identifier.
  bool hasModes = false;
  /// The asset catalogue, which the check boxes change.
  bool isAssetImport = false;
};
KindTraits traitsOf(ImportKindId kind);

}  // namespace orva
