#include "masters/master_posting.h"

namespace orva {
namespace {

/// Where the next code of a master comes from.
struct NextCode {
  Query highest;
  std::string_view field;
};

constexpr NextCode kDepartmentCode{
    .highest = {.access = "Select * from Dept where isnumeric(Deptcode)=true order by val(Deptcode) desc",
                .sqlServer = "Select * from Dept where isnumeric(Deptcode)=1 order by convert(integer,Deptcode) desc"},
    .field = "Deptcode"};
constexpr NextCode kCostCentreCode{
    .highest = {.access = "Select * from costcentre where isnumeric(centrecode)=true order by val(centrecode) desc",
                .sqlServer = "Select * from costcentre where isnumeric(centrecode)=1 order by "
                             "convert(integer,centrecode) desc"},
    .field = "centrecode"};
constexpr NextCode kVendorCode{
    .highest = {.access = "Select * from vendor where isnumeric(vendorcode)=true order by val(vendorcode) desc",
                .sqlServer = "Select * from vendor where isnumeric(vendorcode)=1 order by "
                             "convert(integer,vendorcode) desc"},
    .field = "Vendorcode"};
/// On a server the codes of users are ordered as text, unlike the others.
constexpr NextCode kUserCode{
    .highest = {.access = "Select * from Users where isnumeric(usedby)=true order by val(Usedby) desc",
                .sqlServer = "Select * from Users where isnumeric(usedby)=1 order by Usedby desc"},
    .field = "usedby"};

constexpr NextCode kMiscellaneousCode{
    .highest = {.access = "Select * from MisData where Master ='{master}' and isnumeric(Code)=true order by val(Code) "
                          "desc",
                .sqlServer = "Select * from MisData where Master ='{master}' and isnumeric(Code)=1 order by "
                             "convert(integer,Code) desc"},
    .field = "Code"};

/// The highest numeric code plus one, four digits; "0001" when there is none.
std::string nextCode(const MasterRow& row, const NextCode& source) {
  const auto rows = row.open(source.highest);
  if (rows->eof()) return "0001";
  return zeroPadded(rows->get(source.field).toInteger().value_or(0) + 1, 4);
}

void storeVendorCode(MasterRow& row, const Cell& cell, std::string_view target) {
  row.set(target, cell.isBlank() ? Value(nextVendorCode(row)) : Value(cell.value));
}

void storeUserCode(MasterRow& row, const Cell& cell, std::string_view target) {
  row.set(target, cell.isBlank() ? Value(nextUserCode(row)) : Value(cell.value));
}

/// A blank code takes that of a centre of the same name, if there is one.
void storeCentreCode(MasterRow& row, const Cell& cell, std::string_view target) {
  if (!cell.isBlank()) return row.set(target, cell.value);
  const auto sameName = row.open({.access = "Select * from costcentre  where {upper}(centrename)='{COSTCENTRE}'"
                                            " order by centrecode desc"});
  row.set(target, sameName->eof() ? Value(nextCostCentreCode(row)) : sameName->get("centrecode"));
}

void storeCompany(MasterRow& row, const Cell&, std::string_view target) {
  row.set(target, row.run().company.companyCode);
}

void storeRecordNumber(MasterRow& row, const Cell&, std::string_view target) {
  const auto rows = row.open({.access = "select recordid from location order by recordid desc"});
  row.set(target, rows->eof() ? 1 : rows->get("recordid").toInteger().value_or(0) + 1);
}

void storeMaster(MasterRow& row, const Cell&, std::string_view target) { row.set(target, row.master()); }

using Column = PostedColumn<MasterRow>;

constexpr Column kDepartmentColumns[] = {
    {.heading = "DEPTCODE", .target = "Deptcode"},
    {.heading = "DEPTNAME", .target = "DeptName"},
};

constexpr Column kCostCentreColumns[] = {
    {.heading = "CENTRECODE", .target = "CentreCode", .store = storeCentreCode},
    {.heading = "COSTCENTRE", .target = "CentreName"},
};

constexpr Column kVendorColumns[] = {
    {.heading = "VENDORCODE", .target = "Vendorcode", .store = storeVendorCode},
    {.heading = "VENDORNAME", .target = "VendorName"},
    {.heading = "ADD1", .target = "add1"},
    {.heading = "ADD2", .target = "add2"},
    {.heading = "ADD3", .target = "add3"},
    {.heading = "CITY", .target = "City"},
    {.heading = "PIN", .target = "Pin"},
    {.heading = "VATTIN", .target = "Mst"},
    {.heading = "CSTTIN", .target = "Cst"},
    {.heading = "PAN", .target = "PAN"},
};

constexpr Column kUserColumns[] = {
    {.heading = "USERCODE", .target = "Usedby", .store = storeUserCode},
    {.heading = "USERNAME", .target = "Username"},
};

constexpr Column kLocationColumns[] = {
    {.heading = "LOCCODE", .target = "LocCode"},    {.heading = "MAINLOC", .target = "MainLocation"},
    {.heading = "SUBLOC", .target = "SubLocation"}, {.heading = "PHYLOC", .target = "PhysicalLocation"},
    {.target = "cocd", .store = storeCompany},      {.target = "recordid", .store = storeRecordNumber},
};

constexpr Column kMiscellaneousColumns[] = {
    {.target = "Master", .store = storeMaster},
    {.heading = "CODE", .target = "Code"},
    {.heading = "MNAME", .target = "MName"},
};

}  // namespace

std::string nextDepartmentCode(const MasterRow& row) { return nextCode(row, kDepartmentCode); }
std::string nextCostCentreCode(const MasterRow& row) { return nextCode(row, kCostCentreCode); }
std::string nextUserCode(const MasterRow& row) { return nextCode(row, kUserCode); }
std::string nextVendorCode(const MasterRow& row) { return nextCode(row, kVendorCode); }
std::string nextMiscellaneousCode(const MasterRow& row) { return nextCode(row, kMiscellaneousCode); }

PostingPlan<MasterRow> departmentPlan() { return {.query = "select * from Dept", .columns = kDepartmentColumns}; }
PostingPlan<MasterRow> costCentrePlan() { return {.query = "select * from Costcentre", .columns = kCostCentreColumns}; }
PostingPlan<MasterRow> locationPlan() { return {.query = "select * from Location", .columns = kLocationColumns}; }
PostingPlan<MasterRow> userPlan() { return {.query = "select * from Users", .columns = kUserColumns}; }
PostingPlan<MasterRow> vendorPlan() { return {.query = "select * from Vendor", .columns = kVendorColumns}; }
PostingPlan<MasterRow> miscellaneousPlan() {
  return {.query = "select * from MisData", .columns = kMiscellaneousColumns};
}

}  // namespace orva
