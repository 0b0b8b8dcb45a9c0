#pragma once

#include <functional>
#include <string>

#include "masters/master_import.h"
#include "wizard/import_wizard.h"

namespace orva {

/// What the master wizard has on its selection page besides the controls of every wizard.
struct MasterControls {
  OptionButton optDept{"optDept", "Departments"};
  OptionButton optCostCent{"optCostCent", "Cost Centres"};
  OptionButton optLocation{"optLocation", "Locations"};
  OptionButton OptUser{"OptUser", "Users"};
  OptionButton optVender{"optVender", "Vendors"};
  OptionButton optMisc{"optMisc", "Miscellaneous Masters"};
  Label lblMisc{"lblMisc", "Miscellaneous master"};
  /// The company's miscellaneous masters in the order of their numbers.
  ListBox cmbMisc{"cmbMisc"};
  /// What the workbook must look like, and what of it is not kept.
  Label lblNote{"lblNote"};

  OptionButton& masterOption(MasterKindId kind);
};

/// The wizard that imports departments, cost centres, locations, users, vendors, and entries of a miscellaneous
/// master from the sheet "Master" of a workbook.
///
/// Without a window: `Load`, `cmdSkip_Click`, `optMaster_Click`, `cmbMisc.setText` and `cmbMisc_Click`,
/// `txtExcel.setText`, then the buttons as of every wizard.
class frmMasterImport : public ImportWizard, public MasterControls {
 public:
  /// All arguments must outlive the screen; the company is open.
  frmMasterImport(const Services& services, CompanyContext& company, std::function<void()> onClose = {});

  /// Nothing happens for a master that cannot be chosen (`masterOption(kind).enabled()`).
  void optMaster_Click(MasterKindId kind);
  /// Another miscellaneous master was selected.
  void cmbMisc_Click();

  const MasterChoice& choice() const { return choice_; }

 private:
  void chooseFirst() override;
  void readSelection() override;
  Catalogue buildFields() override { return masterCatalogue(choice_.kind); }
  void enableSelection() override;
  void validateRows(ImportRun& run) override { validateMasters(run, choice_); }
  PostResult postRows(ImportRun& run) override { return postMasters(run, choice_); }
  void fillMiscellaneous();

  MasterChoice choice_;
};

}  // namespace orva
