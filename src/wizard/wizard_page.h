#pragma once

#include <cstddef>

namespace orva {

/// The pages of the transaction wizard; also the index of the buttons that every page has.
enum class WizardPage { kGuidelines, kSelection, kResults, kFinish };

inline constexpr std::size_t kWizardPages = 4;

inline constexpr std::size_t indexOf(WizardPage page) { return static_cast<std::size_t>(page); }

}  // namespace orva
