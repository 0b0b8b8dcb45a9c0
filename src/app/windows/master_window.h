#pragma once

#include "app/windows/wizard_window.h"
#include "masters/frmMasterImport.h"

namespace orva {

/// The window of the master wizard. `screen` must outlive it.
class MasterWindow : public WizardWindow {
 public:
  explicit MasterWindow(frmMasterImport& screen);
};

}  // namespace orva
