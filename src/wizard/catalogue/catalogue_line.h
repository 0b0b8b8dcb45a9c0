#pragma once

#include <span>
#include <string_view>

#include "startup/company_context.h"
#include "wizard/catalogue/field_row.h"
#include "wizard/selection.h"

namespace orva {

/// When a workbook must fill a column.
enum class Required {
  kAlways,
  kNever,
  /// Filled with a default when blank.
  kWithDefault,
  /// In Add mode; optional otherwise.
  kInAddMode,
  /// In Add mode, filled with a default when blank; optional otherwise.
  kInAddModeWithDefault,
  /// In Add mode of a company that keeps cost centres, keeps users, or checks purchase documents.
  kWithCostCentres,
  kWithUsers,
  kWithValidation,
  /// When rates are calculated from the life.
  kWithAutoCalcDepRate,
  /// Identifies the asset in Modify-by-Physical-Id mode; filled with a default in Add mode.
  kPhysicalId,
  /// Depends on lease hold, flavour, shifted-in and automatic rates.
  kUseDate
};

/// When a line belongs to the catalogue.
enum class PresentWhen {
  kAlways,
  kAdd,
  kModify,
  kModifyByAssetId,
  kModifyByPhysicalId,
  kBook1,
  kBook2,
  /// Closing balances and shifted-in assets bring their accumulated depreciation.
  kOpeningDepreciation,
  kOpeningDepreciation1,
  kOpeningDepreciation2,
  kLeaseHold,
  kShiftedIn
};

/// The tick that a line gets when the catalogue is built.
enum class Tick {
  /// All but optional lines.
  kByRequirement,
  kTicked,
  kUnticked,
  /// As required, but of acquisitions that are neither lease hold nor shifted in: in Add mode only.
  kUseDate
};

/// One line of a catalogue with its conditions.
struct CatalogueLine {
  std::string_view label;
  std::string_view excelName;
  std::string_view type;
  std::string_view size = {};
  Required required = Required::kNever;
  PresentWhen present = PresentWhen::kAlways;
  Tick tick = Tick::kByRequirement;
  std::string_view position = {};
};

bool isPresent(PresentWhen condition, const Selection& selection, const ParameterFlags& flags);
Requirement requirementOf(Required rule, const Selection& selection, const ParameterFlags& flags);
bool isTickedAtFirst(const CatalogueLine& line, Requirement requirement, const Selection& selection);

/// The lines that a choice shows, in order.
Catalogue buildLines(std::span<const CatalogueLine> lines, const Selection& selection, const ParameterFlags& flags);

}  // namespace orva
