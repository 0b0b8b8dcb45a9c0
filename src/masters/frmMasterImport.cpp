#include "masters/frmMasterImport.h"

#include <utility>

namespace orva {
namespace {

constexpr WizardTraits kTraits{
    .sheet = {.name = "Master",
              .header = HeaderRow::kYes,
              .missing = "The excel file you selected must have a sheet named 'Master' for importing Masters"},
    .separators = {.columns = ",", .texts = " , "}};

std::string noteOn(MasterKindId kind) {
  std::string note =
      "The workbook must have a sheet 'Master' whose first row carries the FieldNames In Excel. M is mandatory, O is "
      "optional: untick what the workbook does not have.";
  std::string names;
  for (const std::string& name : namesNotKept(kind)) names += (names.empty() ? "" : ", ") + name;
  return names.empty() ? note : note + " ORVA does not keep: " + names + ".";
}

}  // namespace

OptionButton& MasterControls::masterOption(MasterKindId kind) {
  OptionButton* const options[] = {&optDept, &optCostCent, &optLocation, &OptUser, &optVender, &optMisc};
  static_assert(std::size(options) == static_cast<std::size_t>(MasterKindId::kMiscellaneous) + 1);
  return *options[static_cast<std::size_t>(kind)];
}

frmMasterImport::frmMasterImport(const Services& services, CompanyContext& company, std::function<void()> onClose)
    : ImportWizard(services, company, kTraits, std::move(onClose)) {}

void frmMasterImport::chooseFirst() {
  optDept.setValue(true);
  reconnect(company(), services());
  fillMiscellaneous();
}

void frmMasterImport::fillMiscellaneous() {
  const UpdateBatch batch(cmbMisc);
  cmbMisc.clear();
  for (const std::string& name : miscellaneousMasters(*company().connection)) cmbMisc.add(name);
  if (cmbMisc.count() > 0) cmbMisc.select(0);
}

void frmMasterImport::readSelection() {
  const bool isMiscellaneous = choice_.kind == MasterKindId::kMiscellaneous;
  choice_.master = isMiscellaneous ? "M" + std::to_string(cmbMisc.selected() + 1) : std::string();
}

void frmMasterImport::enableSelection() {
  optMisc.setEnabled(cmbMisc.count() > 0);
  const bool isMiscellaneous = choice_.kind == MasterKindId::kMiscellaneous;
  lblMisc.setEnabled(isMiscellaneous);
  cmbMisc.setEnabled(isMiscellaneous);
  lblNote.setCaption(noteOn(choice_.kind));
}

void frmMasterImport::optMaster_Click(MasterKindId kind) {
  trap([&] {
    const bool isChosen = masterOption(kind).enabled();
    if (isChosen) choice_.kind = kind;
    for (const MasterKind& each : masterKinds()) masterOption(each.id).setValue(each.id == choice_.kind);
    if (isChosen) rebuildCatalogue();
  });
}

void frmMasterImport::cmbMisc_Click() {
  trap([&] {
    if (choice_.kind == MasterKindId::kMiscellaneous) rebuildCatalogue();
  });
}

}  // namespace orva
