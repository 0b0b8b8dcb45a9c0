#include "imports/asset/control_plan.h"

namespace orva {
namespace {

constexpr ControlColumn kColumns[] = {
    {.label = "Cost", .heading = "COST", .field = "Cost"},
    {.label = "Accumulated Depreciation", .heading = "ACCDEP", .field = "AccDep"},
    {.label = "Acc Depreciation -AddL1", .heading = "ACCDEP1", .field = "Accdep1", .isAlwaysNamed = false},
    {.label = "Acc Depreciation -AddL2", .heading = "ACCDEP2", .field = "Accdep2", .isAlwaysNamed = false},
};

constexpr ControlPlan kPlan = {.records = "Assets",
                               .columns = kColumns,
                               .posted = {"Select Cost, AccDep, Accdep1, Accdep2 from Asset where Assetid='{key}'"}};

}  // namespace

const ControlPlan& assetControlPlan() { return kPlan; }

}  // namespace orva
