#pragma once

#include <span>

#include "startup/schema/upgrade_table.h"

namespace orva {

/// The parts of the upgrade table, each with the steps of its name.
std::span<const UpgradeRow> upgradeSteps1To3();
std::span<const UpgradeRow> upgradeSteps4To6();
std::span<const UpgradeRow> upgradeSteps7To8();
std::span<const UpgradeRow> upgradeSteps9To11();
std::span<const UpgradeRow> upgradeSteps12To13();

}  // namespace orva
