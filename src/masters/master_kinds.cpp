#include "masters/master_kinds.h"

#include <algorithm>
#include <array>

#include "masters/master_posting.h"
#include "masters/master_rules.h"
#include "platform/values/text.h"

namespace orva {
namespace {

/// One line of a master's catalogue; all lines are texts.
struct Line {
  MasterKindId master;
  std::string_view label;
  std::string_view excelName;
  std::string_view size;
  Requirement requirement;
};

constexpr auto M = Requirement::kMandatory;
constexpr auto O = Requirement::kOptional;

constexpr Line kLines[] = {
    {MasterKindId::kDepartment, "DeptCode", "DeptCode", "10", M},
    {MasterKindId::kDepartment, "DeptName", "DeptName", "255", M},
    {MasterKindId::kLocation, "Location Code", "LocCode", "10", O},
    {MasterKindId::kLocation, "Main Location", "MAINLOC", "30", M},
    {MasterKindId::kLocation, "Sub Location", "SUBLOC", "30", M},
    {MasterKindId::kLocation, "Physical Location", "PHYLOC", "30", M},
    {MasterKindId::kCostCentre, "Centre Code", "CentreCode", "30", M},
    {MasterKindId::kCostCentre, "CostCenterName", "COSTCENTRE", "255", M},
    {MasterKindId::kUser, "User Code", "Usercode", "50", M},
    {MasterKindId::kUser, "User Name", "Username", "50", M},
    {MasterKindId::kUser, "add1", "add1", "255", O},
    {MasterKindId::kUser, "add2", "add2", "255", O},
    {MasterKindId::kUser, "add3", "add3", "255", O},
    {MasterKindId::kUser, "City", "City", "50", O},
    {MasterKindId::kUser, "Pin", "Pin", "6", O},
    {MasterKindId::kVendor, "Vendor Code", "VendorCode", "10", M},
    {MasterKindId::kVendor, "VendorName", "VendorName", "255", M},
    {MasterKindId::kVendor, "add1", "add1", "255", O},
    {MasterKindId::kVendor, "add2", "add2", "255", O},
    {MasterKindId::kVendor, "add3", "add3", "255", O},
    {MasterKindId::kVendor, "City", "City", "50", O},
    {MasterKindId::kVendor, "Pin", "Pin", "6", O},
    {MasterKindId::kVendor, "V.A.T. TIN", "vattin", "50", O},
    {MasterKindId::kVendor, "C.S.T. TIN", "csttin", "50", O},
    {MasterKindId::kVendor, "PAN", "PAN", "10", O},
    {MasterKindId::kMiscellaneous, "Code", "Code", "10", M},
    {MasterKindId::kMiscellaneous, "Name", "MName", "50", M},
};

const std::array<MasterKind, 6>& kinds() {
  static const std::array<MasterKind, 6> kKinds{{
      {MasterKindId::kDepartment, "optDept", "Departments", "department", departmentRules(), departmentPlan()},
      {MasterKindId::kCostCentre, "optCostCent", "Cost Centres", "cost-centre", costCentreRules(), costCentrePlan()},
      {MasterKindId::kLocation, "optLocation", "Locations", "location", locationMasterRules(), locationPlan()},
      {MasterKindId::kUser, "OptUser", "Users", "user", userRules(), userPlan()},
      {MasterKindId::kVendor, "optVender", "Vendors", "vendor", vendorRules(), vendorPlan()},
      {MasterKindId::kMiscellaneous, "optMisc", "Miscellaneous Masters", "misc", miscellaneousRules(),
       miscellaneousPlan()},
  }};
  return kKinds;
}

}  // namespace

std::span<const MasterKind> masterKinds() { return kinds(); }

const MasterKind& masterKind(MasterKindId id) { return kinds()[static_cast<std::size_t>(id)]; }

std::optional<MasterKindId> masterKindByBatchName(std::string_view name) {
  const auto found =
      std::find_if(kinds().begin(), kinds().end(), [name](const MasterKind& kind) { return kind.batchName == name; });
  if (found == kinds().end()) return std::nullopt;
  return found->id;
}

std::vector<std::string> namesNotKept(MasterKindId id) {
  std::vector<std::string> names;
  const std::span<const PostedColumn<MasterRow>> posted = masterKind(id).plan.columns;
  for (const Line& line : kLines) {
    const bool isKept = std::any_of(posted.begin(), posted.end(), [&](const PostedColumn<MasterRow>& column) {
      return equalsNoCase(column.heading, line.excelName);
    });
    if (line.master == id && !isKept) names.emplace_back(line.excelName);
  }
  return names;
}

Catalogue masterCatalogue(MasterKindId id) {
  Catalogue catalogue;
  for (const Line& line : kLines) {
    if (line.master != id) continue;
    catalogue.push_back({.label = std::string(line.label),
                         .excelName = std::string(line.excelName),
                         .type = "Text",
                         .size = std::string(line.size),
                         .requirement = line.requirement,
                         .ticked = true,
                         .position = {}});
  }
  return catalogue;
}

}  // namespace orva
