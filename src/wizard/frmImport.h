#pragma once

#include <functional>
#include <span>
#include <string_view>

#include "wizard/import_controls.h"
#include "wizard/import_kinds.h"
#include "wizard/import_wizard.h"

namespace orva {

/// What the transaction wizard asks of whoever shows it. A button whose function is not there is disabled.
struct ImportCallbacks {
  /// The screen is done and may go.
  std::function<void()> onClose = {};
  std::function<void()> onUpdateLeod = {};
  std::function<void()> onUpdateRateMethod = {};
  std::function<void()> onCalcLeaseDate = {};
};

/// The transaction wizard: what is imported, in which mode, with which options.
///
/// Without a window: `Load`, `optKind_Click`, `optMode_Click`, set and click check boxes,
/// `lstFields_ItemCheck`, `txtExcel.setText`, `cmdNext_Click(kSelection)`; when `page()` is then kResults,
/// read `errorCount`, `grid1`, `findings`; `cmdNext_Click(kResults)`, `cmdContinue_Click(kFinish)`, read `postResult`.
class frmImport : public ImportWizard, public ImportControls {
 public:
  /// All arguments must outlive the screen; the company is open.
  frmImport(const Services& services, CompanyContext& company, const ImportRegistry& registry,
            ImportCallbacks callbacks = {});

  /// Nothing happens for a kind that cannot be chosen (`kindOption(kind).enabled()`).
  void optKind_Click(ImportKindId kind);
  void optMode_Click(AssetMode mode);
  /// The window or batch command has changed the box's value; the handler acts on it.
  void chkAutoCalcDepRate_Click();
  void ChkBackdate_Click();
  void ChkLeaseHold_Click();
  void chkMultAssetId_Click();
  void chkShiftedIn_Click();
  void cmdCalcLeaseDate_Click();
  void cmdUpdateLEOD_Click();
  void cmdUpdateRateMethod_Click();

  const Selection& selection() const { return selection_; }

 private:
  void chooseFirst() override;
  void readSelection() override;
  Catalogue buildFields() override;
  void enableSelection() override;
  NeededFields neededFields() const override;
  std::span<const std::string_view> ownColumns() const override;
  std::span<const std::string_view> sheetColumns() const override;
  bool hasProcedures() const override;
  void validateRows(ImportRun& run) override;
  PostResult postRows(ImportRun& run) override;
  const ControlPlan* controlPlan() const override;

  void enableOptions();
  void enableCheckBoxes();
  bool chooseUserDefinedFields(ImportKindId kind);
  bool isAdmitted(const Selection& choice);

  const ImportRegistry& registry_;
  ImportCallbacks callbacks_;
};

}  // namespace orva
