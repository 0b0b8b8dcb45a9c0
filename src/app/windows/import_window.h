#pragma once

#include "app/windows/wizard_window.h"
#include "wizard/frmImport.h"

namespace orva {

/// The window of the transaction wizard. `screen` must outlive it.
class ImportWindow : public WizardWindow {
 public:
  explicit ImportWindow(frmImport& screen);
};

}  // namespace orva
