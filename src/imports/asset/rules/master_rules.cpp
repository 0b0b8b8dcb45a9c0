#include "imports/asset/rules/asset_rules.h"
#include "imports/asset/rules/checks.h"

namespace orva {
namespace {

using namespace checks;

constexpr AssetRule kRules[] = {
    {.column = "DEPT",
     .fails = isShifted,
     .text = "Asset is shifted. Can't change Department.",
     .mode = AppliesIn::kModify},
    {.column = "DEPT", .fails = isTooLong, .text = "Department : {value} exceeds its maximum length {size}"},
    {.column = "DEPT",
     .fails = notFound,
     .findingClass = FindingClass::kWarning,
     .lookup = {"Select * from Dept where {upper}(deptname) ='{value}'"}},

    {.column = "VENDOR", .fails = isTooLong, .text = "{value} exceeds its maximum length {size}"},
    {.column = "VENDOR",
     .fails = notFound,
     .findingClass = FindingClass::kWarning,
     .lookup = {"Select * from Vendor where {upper}(Vendorname) ='{value}'"}},

    {.column = "USER",
     .fails = isShifted,
     .text = "Asset is shifted. Can't change UserName.",
     .mode = AppliesIn::kModify},
    {.column = "USER", .fails = isTooLong, .text = "User Name : {value} exceeds its maximum length {size}"},
    {.column = "USER",
     .fails = notFound,
     .findingClass = FindingClass::kWarning,
     .lookup = {"Select * from users where {upper}(username) ='{value}'"}},

    {.column = "COSTCENTRE",
     .fails = isShifted,
     .text = "Asset is shifted. Can't change Cost Centre.",
     .mode = AppliesIn::kModify},
    {.column = "COSTCENTRE", .fails = isTooLong, .text = "Costcentre : {value} exceeds its maximaum length {size}"},
    {.column = "COSTCENTRE",
     .fails = notFound,
     .findingClass = FindingClass::kWarning,
     .lookup = {"Select * from CostCentre where {upper}(centrename) ='{value}'"}},

    {.column = "M1 M2 M3 M4 M5",
     .fails = isShifted,
     .text = "Asset is shifted. Can't change {column}",
     .mode = AppliesIn::kModify},
    {.column = "M1 M2 M3 M4 M5", .fails = isTooLong, .text = "{column} : {value} exceeds its maximaum length {size}"},
    {.column = "M1 M2 M3 M4 M5",
     .fails = notFound,
     .findingClass = FindingClass::kWarning,
     .lookup = {"Select * from MisData where {upper}(MName) ='{value}' and Master = '{master}'"}},
};

}  // namespace

std::span<const AssetRule> masterRules() { return kRules; }

}  // namespace orva
