#include "wizard/frmImport.h"

#include <utility>

#include "platform/dialogs.h"
#include "wizard/catalogue/builders.h"
#include "wizard/catalogue/generated_lines.h"

namespace orva {
namespace {

constexpr AssetMode kModes[] = {AssetMode::kAdd, AssetMode::kModifyByAssetId, AssetMode::kModifyByPhysicalId};

}  // namespace

frmImport::frmImport(const Services& services, CompanyContext& company, const ImportRegistry& registry,
                     ImportCallbacks callbacks)
    : ImportWizard(services, company, {.sheet = kAssetSheet, .separators = {}}, callbacks.onClose),
      registry_(registry),
      callbacks_(std::move(callbacks)) {}

void frmImport::chooseFirst() {
  optAsset.setValue(true);
  optAssetId.setValue(true);
}

void frmImport::enableSelection() {
  enableOptions();
  enableCheckBoxes();
  cmdUpdateLEOD.setEnabled(callbacks_.onUpdateLeod != nullptr);
  cmdUpdateRateMethod.setEnabled(callbacks_.onUpdateRateMethod != nullptr);
}

void frmImport::enableOptions() {
  for (const ImportKindNames& names : importKindNames()) {
    // A depreciation workbook has no catalogue, so that kind is shown only.
    const bool canBeChosen = names.id != ImportKindId::kDepreciation && findProcedures(registry_, names.id);
    kindOption(names.id).setEnabled(canBeChosen);
  }
  const bool hasModes = traitsOf(selection_.kind).hasModes;
  Frame1.setEnabled(hasModes);
  lblOverwrite.setVisible(hasModes && selection_.isModify());
}

void frmImport::enableCheckBoxes() {
  // The regulatory classification prescribes its own rates, so the automatic rate of the
  // Companies Act is the control that it rules out.
  chkAutoCalcDepRate.setEnabled(!company().flags.regulatoryClassification);
  cmdCalcLeaseDate.setEnabled(ChkLeaseHold.value() && callbacks_.onCalcLeaseDate != nullptr);
  if (!traitsOf(selection_.kind).isAssetImport) return;
  ChkBackdate.setEnabled(selection_.isAcquisition() && selection_.isAdd());
  chkMultAssetId.setEnabled(selection_.isAdd());
  if (selection_.isModify()) chkMultAssetId.setValue(false);
}

void frmImport::optKind_Click(ImportKindId kind) {
  trap([&] {
    Selection choice = selection_;
    choice.kind = kind;
    const bool isChosen = kindOption(kind).enabled() && chooseUserDefinedFields(kind) && isAdmitted(choice);
    if (isChosen) selection_.kind = kind;
    for (const ImportKindNames& names : importKindNames()) kindOption(names.id).setValue(names.id == selection_.kind);
    if (isChosen) rebuildCatalogue();
  });
}

/// False when the kind is the company's own fields and it has none.
bool frmImport::chooseUserDefinedFields(ImportKindId kind) {
  if (kind != ImportKindId::kUdf) return true;
  reconnect(company(), services());
  if (hasUserDefinedFields(*company().connection)) return true;
  services().dialogs.show(
      {.text = "No User Defined Fields given in ORVA Software ", .title = "ORVA", .icon = MessageIcon::kInformation});
  return false;
}

/// False when the company does not admit the choice; the user has been told why, and the former choice stays.
bool frmImport::isAdmitted(const Selection& choice) {
  const ImportProcedures* procedures = findProcedures(registry_, choice.kind);
  if (!procedures || !procedures->obstacle) return true;
  reconnect(company(), services());
  const std::string obstacle = procedures->obstacle(company(), choice);
  if (!obstacle.empty()) say(obstacle);
  return obstacle.empty();
}

void frmImport::optMode_Click(AssetMode mode) {
  trap([&] {
    const bool isChosen = Frame1.enabled();
    if (isChosen) selection_.mode = mode;
    for (const AssetMode other : kModes) modeOption(other).setValue(other == selection_.mode);
    if (isChosen) rebuildCatalogue();
  });
}

void frmImport::chkAutoCalcDepRate_Click() {
  trap([&] { rebuildCatalogue(); });
}
void frmImport::ChkLeaseHold_Click() {
  trap([&] { rebuildCatalogue(); });
}
void frmImport::chkShiftedIn_Click() {
  trap([&] {
    Selection choice = selection_;
    choice.shiftedIn = chkShiftedIn.value();
    if (choice.shiftedIn && !isAdmitted(choice)) chkShiftedIn.setValue(false);
    rebuildCatalogue();
  });
}
void frmImport::ChkBackdate_Click() {
  trap([&] { readSelection(); });
}
void frmImport::chkMultAssetId_Click() {
  trap([&] { readSelection(); });
}

void frmImport::readSelection() {
  selection_.autoCalcDepRate = chkAutoCalcDepRate.value();
  selection_.leaseHold = ChkLeaseHold.value();
  selection_.shiftedIn = chkShiftedIn.value();
  enableCheckBoxes();
  // A box that the choice disables keeps its tick for the next choice but has no effect.
  const bool isAssetImport = traitsOf(selection_.kind).isAssetImport;
  selection_.backdated = isAssetImport && ChkBackdate.enabled() && ChkBackdate.value();
  selection_.multipleAssetIds = isAssetImport && chkMultAssetId.enabled() && chkMultAssetId.value();
}

Catalogue frmImport::buildFields() { return buildCatalogue(selection_, company()); }

NeededFields frmImport::neededFields() const {
  if (selection_.kind == ImportKindId::kUdf) return NeededFields::kToOpen;
  return selection_.isModify() ? NeededFields::kWithHeader : NeededFields::kNone;
}

// What the registry says of the chosen kind.

bool frmImport::hasProcedures() const { return findProcedures(registry_, selection_.kind) != nullptr; }

std::span<const std::string_view> frmImport::ownColumns() const {
  const ImportProcedures* procedures = findProcedures(registry_, selection_.kind);
  return procedures ? procedures->ownColumns : std::span<const std::string_view>();
}

std::span<const std::string_view> frmImport::sheetColumns() const {
  const ImportProcedures* procedures = findProcedures(registry_, selection_.kind);
  if (!procedures || !procedures->sheetColumns) return {};
  return procedures->sheetColumns(selection_.mode);
}

void frmImport::validateRows(ImportRun& run) { findProcedures(registry_, selection_.kind)->validate(run); }

PostResult frmImport::postRows(ImportRun& run) { return findProcedures(registry_, selection_.kind)->post(run); }

const ControlPlan* frmImport::controlPlan() const {
  const ImportProcedures* procedures = findProcedures(registry_, selection_.kind);
  return procedures ? procedures->controlPlan : nullptr;
}

void frmImport::cmdCalcLeaseDate_Click() {
  trap([&] {
    if (!cmdCalcLeaseDate.enabled()) return;
    reconnect(company(), services());
    callbacks_.onCalcLeaseDate();
  });
}
void frmImport::cmdUpdateLEOD_Click() {
  trap([&] {
    if (callbacks_.onUpdateLeod) callbacks_.onUpdateLeod();
  });
}
void frmImport::cmdUpdateRateMethod_Click() {
  trap([&] {
    if (callbacks_.onUpdateRateMethod) callbacks_.onUpdateRateMethod();
  });
}

}  // namespace orva
