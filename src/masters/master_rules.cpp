#include "masters/master_rules.h"

#include <algorithm>

namespace orva {
namespace {

/// A blank is reported as such and repeats nothing.
bool isRepeated(MasterRow& row, const Cell& cell, const MasterRule&) {
  return !cell.isBlank() && row.hasSeen(cell.value);
}

bool isTaken(MasterRow& row, const Cell& cell, const MasterRule& rule) {
  return !cell.isBlank() && row.finds(rule.lookup);
}

bool hasSpecialCharacter(MasterRow&, const Cell& cell, const MasterRule&) {
  return std::any_of(cell.value.begin(), cell.value.end(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte == '\'' || byte == '"' || byte < 0x20 || byte == 0x7F;
  });
}

bool isInvalidPan(MasterRow&, const Cell& cell, const MasterRule&) {
  return !cell.isBlank() && !ValidPanPattern(cell.value);
}

constexpr std::string_view kDuplicate = " Duplicate Values Not Allowed ";
constexpr std::string_view kDuplicateWithPoint = " Duplicate Values Not Allowed. ";

constexpr MasterRule kDepartmentRules[] = {
    {.column = "DEPTCODE", .fails = exceedsSize, .text = "Department : {value} exceeds its maximum length "},
    {.column = "DEPTCODE", .fails = isRepeated, .text = kDuplicate},
    {.column = "DEPTCODE",
     .fails = isTaken,
     .text = kDuplicate,
     .lookup = {.access = "Select * from Dept where {upper}(DeptCode) ='{trimmed upper}'"}},
    {.column = "DEPTCODE", .fails = isBlank, .text = " Department Code cannot be Empty ", .namesBlank = true},
    {.column = "DEPTNAME", .fails = isBlank, .text = " Department Name cannot be Empty ", .namesBlank = true},
    {.column = "DEPTNAME",
     .fails = isTaken,
     .text = kDuplicate,
     .lookup = {.access = "Select * from Dept where {upper}(DeptName) ='{trimmed upper}'"}},
};

// Codes of cost centres and vendors are looked for in the sheet and in the company as one check, told once.

constexpr MasterRule kCostCentreRules[] = {
    {.column = "CENTRECODE", .fails = exceedsSize, .text = "CostCentre : {value} exceeds its maximum length "},
    {.column = "CENTRECODE", .fails = isRepeated, .text = kDuplicate, .afterFailure = AfterFailure::kNextCell},
    {.column = "CENTRECODE",
     .fails = isTaken,
     .text = kDuplicate,
     .lookup = {.access = "Select * from Costcentre where {upper}(CentreCode) ='{trimmed upper}'"}},
    {.column = "CENTRECODE", .fails = isBlank, .text = " Centre Code cannot be Empty ", .namesBlank = true},
    {.column = "COSTCENTRE",
     .fails = isTaken,
     .text = kDuplicateWithPoint,
     .lookup = {.access = "Select * from Costcentre where {upper}(CentreName) ='{trimmed upper}'"}},
    {.column = "COSTCENTRE", .fails = isBlank, .text = " Centre Name cannot be Empty ", .namesBlank = true},
};

constexpr MasterRule kVendorRules[] = {
    {.column = "VENDORCODE", .fails = exceedsSize, .text = "Vendor Code : {value} exceeds its maximum length "},
    {.column = "VENDORCODE", .fails = isRepeated, .text = kDuplicate, .afterFailure = AfterFailure::kNextCell},
    {.column = "VENDORCODE",
     .fails = isTaken,
     .text = kDuplicate,
     .lookup = {.access = "Select * from Vendor where {upper}(VendorCode) ='{trimmed upper}'"}},
    {.column = "VENDORCODE",
     .fails = isBlank,
     .text = "Vendor Code : {value} Vendor code cannot be Empty ",
     .namesBlank = true},
    {.column = "VENDORNAME",
     .fails = isTaken,
     .text = kDuplicate,
     .lookup = {.access = "Select * from Vendor where {upper}(VendorName) ='{trimmed upper}'"}},
    {.column = "VENDORNAME", .fails = isBlank, .text = "Vendor : {value} Name cannot be Empty ", .namesBlank = true},
    {.column = "ADD1 ADD2 ADD3 CITY PIN VATTIN CSTTIN", .fails = exceedsSize, .text = kExceedsMaximumLength},
    {.column = "PAN", .fails = isInvalidPan, .text = " Invalid PAN "},
};

constexpr MasterRule kUserRules[] = {
    {.column = "USERCODE", .fails = exceedsSize, .text = "User Name : {value} exceeds its maximum length "},
    {.column = "USERCODE", .fails = isRepeated, .text = kDuplicate},
    {.column = "USERCODE",
     .fails = isTaken,
     .text = "User : {value} Duplicate Values Not Allowed. ",
     .lookup = {.access = "Select * from users where {upper}(Usedby) ='{trimmed upper}'"}},
    {.column = "USERCODE USERNAME",
     .fails = isBlank,
     .text = "Username : {value} cannot be Empty ",
     .namesBlank = true},
    {.column = "USERNAME", .fails = hasSpecialCharacter, .text = " contains quotes or any other special character "},
};

constexpr MasterRule kLocationRules[] = {
    {.column = "MAINLOC SUBLOC PHYLOC",
     .fails = isTaken,
     .text = " {value} Duplicate Values Not Allowed. ",
     .lookup = {.access = "Select * from Location where {upper}(MainLocation) ='{MAINLOC}' and {upper}(SubLocation) "
                          "='{SUBLOC}' and {upper}(PhysicalLocation) ='{PHYLOC}'"}},
    {.column = "MAINLOC SUBLOC PHYLOC", .fails = isBlank, .text = "{value} cannot be Empty  ", .namesBlank = true},
};

// The code is half of the key of a miscellaneous entry and nothing replaces a blank one, so a repeated and a blank
// code are refused here and not in the middle of posting.

constexpr MasterRule kMiscellaneousRules[] = {
    {.column = "CODE", .fails = exceedsSize, .text = "Code : {value} exceeds its maximum length "},
    {.column = "CODE", .fails = isRepeated, .text = kDuplicate, .afterFailure = AfterFailure::kNextCell},
    {.column = "CODE",
     .fails = isTaken,
     .text = kDuplicate,
     .lookup = {.access = "Select * from MisData where {upper}(Code) ='{trimmed upper}' and Master ='{master}'"}},
    {.column = "CODE", .fails = isBlank, .text = "Code : {value} cannot be Empty ", .namesBlank = true},
    {.column = "MNAME", .fails = isBlank, .text = "Name : {value} cannot be Empty ", .namesBlank = true},
};

bool isCapital(char c) { return c >= 'A' && c <= 'Z'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLetter(char c) { return isCapital(c) || (c >= 'a' && c <= 'z'); }

}  // namespace

std::span<const MasterRule> departmentRules() { return kDepartmentRules; }
std::span<const MasterRule> costCentreRules() { return kCostCentreRules; }
std::span<const MasterRule> locationMasterRules() { return kLocationRules; }
std::span<const MasterRule> userRules() { return kUserRules; }
std::span<const MasterRule> vendorRules() { return kVendorRules; }
std::span<const MasterRule> miscellaneousRules() { return kMiscellaneousRules; }

bool ValidPanPattern(std::string_view pan) {
  const std::string_view trimmed = trim(pan);
  if (trimmed.size() != 10) return false;
  for (std::size_t index = 0; index < 5; ++index) {
    if (!isCapital(trimmed[index])) return false;
  }
  constexpr std::string_view kHolders = "ABCFGHJLPT";
  if (kHolders.find(trimmed[3]) == std::string_view::npos) return false;
  for (std::size_t index = 5; index < 9; ++index) {
    if (!isDigit(trimmed[index])) return false;
  }
  return isLetter(trimmed[9]);
}

}  // namespace orva
