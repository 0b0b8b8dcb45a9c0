#include "startup/schema/upgrade_procedures.h"

#include <initializer_list>
#include <memory>
#include <utility>

namespace orva {
namespace {

constexpr std::pair<std::string_view, std::string_view> kPeriodDefaults[] = {
    {"DepCalPeriod", "D"}, {"DepPurIncl", "I"}, {"DepSaleIncl", "I"}};

std::unique_ptr<Recordset> openParameters(UpgradeSite& site) {
  return site.connection.open("Select * from parameter", CursorKind::kKeyset, LockKind::kPessimistic);
}

void setPeriodDefaults(Recordset& parameters) {
  for (const auto& [column, value] : kPeriodDefaults) parameters.set(column, value);
}

/// Switches `targets` on when `column` is off or empty.
bool switchOn(Recordset& parameters, std::string_view column, std::initializer_list<std::string_view> targets) {
  if (parameters.get(column).toBoolean()) return false;
  for (const std::string_view target : targets) parameters.set(target, true);
  return true;
}

bool switchServerParametersOn(Recordset& parameters) {
  bool changed = false;
  for (const std::string_view column : {"USGAAP", "Validation", "Days", "tfrday", "modvat", "excel", "breakUp"}) {
    changed = switchOn(parameters, column, {column}) || changed;
  }
  return changed;
}

}  // namespace

void runProcedure(UpgradeProcedure procedure, UpgradeSite& site) {
  switch (procedure) {
    case UpgradeProcedure::kNone:
      return;
    case UpgradeProcedure::kFillParameterRow:
      return fillParameterRow(site);
    case UpgradeProcedure::kSwitchParametersOn:
      return switchParametersOn(site);
    case UpgradeProcedure::kProbeCostBreakup:
      return probeCostBreakup(site);
    case UpgradeProcedure::kRepairUserCodesOnce:
      return repairUserCodesOnce(site);
    case UpgradeProcedure::kFillBookNames:
      return fillBookNames(site);
    case UpgradeProcedure::kRepairChildUserCodes:
      return repairChildUserCodes(site);
  }
}

void fillParameterRow(UpgradeSite& site) {
  const auto parameters = openParameters(site);
  if (parameters->eof()) {
    parameters->addNew();
    setPeriodDefaults(*parameters);
    parameters->set("autoAssetid", true);
    parameters->update();
  } else if (parameters->get("DepCalPeriod").isNull()) {
    setPeriodDefaults(*parameters);
    parameters->update();
  }
}

void switchParametersOn(UpgradeSite& site) {
  const auto parameters = openParameters(site);
  if (parameters->eof()) return;
  const bool changed =
      site.isServer() ? switchServerParametersOn(*parameters) : switchOn(*parameters, "excel", {"excel", "Days"});
  if (changed) parameters->update();
}

void probeCostBreakup(UpgradeSite& site) { site.connection.open("Select * from CostBreakUP"); }

void fillBookNames(UpgradeSite& site) {
  const auto parameters = site.connection.open("select * from parameter", CursorKind::kKeyset, LockKind::kPessimistic);
  if (parameters->eof()) return;
  bool changed = false;
  for (const auto& [column, name] :
       {std::pair("Addnalmthd1", "Additional Book 1"), std::pair("Addnalmthd2", "Additional Book 2")}) {
    if (!nullToText(parameters->get(column)).empty()) continue;
    parameters->set(column, name);
    changed = true;
  }
  if (changed) parameters->update();
}

}  // namespace orva
