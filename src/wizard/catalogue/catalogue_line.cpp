#include "wizard/catalogue/catalogue_line.h"

namespace orva {
namespace {

bool bringsDepreciation(const Selection& selection) { return selection.isClosing() || selection.shiftedIn; }

Requirement mandatoryIf(bool condition) { return condition ? Requirement::kMandatory : Requirement::kOptional; }

Requirement requirementOfPhysicalId(const Selection& selection) {
  if (selection.isAdd()) return Requirement::kMandatoryWithDefault;
  return mandatoryIf(selection.mode == AssetMode::kModifyByPhysicalId);
}

Requirement requirementOfUseDate(const Selection& selection) {
  if (selection.leaseHold) return Requirement::kMandatory;
  return mandatoryIf(bringsDepreciation(selection) ? selection.isAdd() : selection.autoCalcDepRate);
}

}  // namespace

bool isPresent(PresentWhen condition, const Selection& selection, const ParameterFlags& flags) {
  switch (condition) {
    case PresentWhen::kAlways:
      return true;
    case PresentWhen::kAdd:
      return selection.isAdd();
    case PresentWhen::kModify:
      return selection.isModify();
    case PresentWhen::kModifyByAssetId:
      return selection.mode == AssetMode::kModifyByAssetId;
    case PresentWhen::kModifyByPhysicalId:
      return selection.mode == AssetMode::kModifyByPhysicalId;
    case PresentWhen::kBook1:
      return flags.additionalBook1;
    case PresentWhen::kBook2:
      return flags.additionalBook2;
    case PresentWhen::kOpeningDepreciation:
      return bringsDepreciation(selection);
    case PresentWhen::kOpeningDepreciation1:
      return bringsDepreciation(selection) && flags.additionalBook1;
    case PresentWhen::kOpeningDepreciation2:
      return bringsDepreciation(selection) && flags.additionalBook2;
    case PresentWhen::kLeaseHold:
      return selection.leaseHold;
    case PresentWhen::kShiftedIn:
      return selection.shiftedIn;
  }
  return false;
}

Requirement requirementOf(Required rule, const Selection& selection, const ParameterFlags& flags) {
  switch (rule) {
    case Required::kAlways:
      return Requirement::kMandatory;
    case Required::kNever:
      return Requirement::kOptional;
    case Required::kWithDefault:
      return Requirement::kMandatoryWithDefault;
    case Required::kInAddMode:
      return mandatoryIf(selection.isAdd());
    case Required::kInAddModeWithDefault:
      return selection.isAdd() ? Requirement::kMandatoryWithDefault : Requirement::kOptional;
    case Required::kWithCostCentres:
      return mandatoryIf(flags.costCentres && selection.isAdd());
    case Required::kWithUsers:
      return mandatoryIf(flags.users && selection.isAdd());
    case Required::kWithValidation:
      return mandatoryIf(flags.validation && selection.isAdd());
    case Required::kWithAutoCalcDepRate:
      return mandatoryIf(selection.autoCalcDepRate);
    case Required::kPhysicalId:
      return requirementOfPhysicalId(selection);
    case Required::kUseDate:
      return requirementOfUseDate(selection);
  }
  return Requirement::kOptional;
}

bool isTickedAtFirst(const CatalogueLine& line, Requirement requirement, const Selection& selection) {
  const bool isRequired = requirement != Requirement::kOptional;
  switch (line.tick) {
    case Tick::kByRequirement:
      return isRequired;
    case Tick::kTicked:
      return true;
    case Tick::kUnticked:
      return false;
    case Tick::kUseDate:
      return selection.leaseHold || bringsDepreciation(selection) ? isRequired : selection.isAdd();
  }
  return isRequired;
}

Catalogue buildLines(std::span<const CatalogueLine> lines, const Selection& selection, const ParameterFlags& flags) {
  Catalogue catalogue;
  for (const CatalogueLine& line : lines) {
    if (!isPresent(line.present, selection, flags)) continue;
    const Requirement requirement = requirementOf(line.required, selection, flags);
    catalogue.push_back({.label = std::string(line.label),
                         .excelName = std::string(line.excelName),
                         .type = std::string(line.type),
                         .size = std::string(line.size),
                         .requirement = requirement,
                         .ticked = isTickedAtFirst(line, requirement, selection),
                         .position = std::string(line.position)});
  }
  return catalogue;
}

}  // namespace orva
