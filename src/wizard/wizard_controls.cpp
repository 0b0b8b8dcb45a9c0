#include "wizard/wizard_controls.h"

namespace orva {

Frame& WizardControls::pageFrame(WizardPage page) {
  Frame* const frames[] = {&fmHome, &fmSelection, &fmResults, &fmFinish};
  static_assert(std::size(frames) == kWizardPages);
  return *frames[indexOf(page)];
}

}  // namespace orva
