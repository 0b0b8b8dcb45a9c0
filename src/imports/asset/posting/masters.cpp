#include "imports/asset/posting/masters.h"

#include "imports/asset/named_values.h"
#include "platform/values/numeric_text.h"

namespace orva {
namespace {

/// One master. Codes are "0001" and up; the numbers of locations are not padded.
struct MasterTable {
  std::string_view query;
  Query filter;
  std::string_view codeColumn;
  /// Highest code first.
  Query codes;
  int codeDigits = 4;
  /// Columns of a new entry beside its code.
  void (*fill)(Recordset& entry, const MasterName& name, const ImportRun& run);
};

constexpr MasterTable kMasters[] = {
    {.query = "select * from Dept",
     .filter = {"DeptName='{name}'"},
     .codeColumn = "Deptcode",
     .codes = {.access = "Select * from dept  where isnumeric(Deptcode)=true order by val(Deptcode) desc",
               .sqlServer = "Select * from dept  where isnumeric(Deptcode)=1 order by convert(integer,Deptcode) desc"},
     .fill = [](Recordset& entry, const MasterName& name,
                const ImportRun&) { entry.set("DeptName", name.description); }},
    {.query = "select * from Vendor",
     .filter = {"VendorName='{name}'"},
     .codeColumn = "Vendorcode",
     .codes = {.access = "Select * from vendor  where isnumeric(vendorcode)=true order by val(vendorcode) desc",
               .sqlServer =
                   "Select * from vendor  where isnumeric(vendorcode)=1 order by convert(integer,vendorcode) desc"},
     .fill = [](Recordset& entry, const MasterName& name,
                const ImportRun&) { entry.set("VendorName", name.description); }},
    {.query = "select * from CostCentre",
     .filter = {"CentreName='{name}'"},
     .codeColumn = "Centrecode",
     .codes = {.access = "Select * from costcentre  where isnumeric(centrecode)=true order by val(centrecode) desc",
               .sqlServer =
                   "Select * from costcentre  where isnumeric(centrecode)=1 order by convert(integer,centrecode) desc"},
     .fill = [](Recordset& entry, const MasterName& name,
                const ImportRun&) { entry.set("CentreName", name.description); }},
    {.query = "select * from Users",
     .filter = {"UserName='{name}'"},
     .codeColumn = "usedby",
     .codes = {.access = "Select * from Users  where isnumeric(usedby)=true order by val(usedby) desc",
               .sqlServer = "Select * from Users  where isnumeric(usedby)=1 order by convert(integer,usedby) desc"},
     .fill = [](Recordset& entry, const MasterName& name,
                const ImportRun&) { entry.set("UserName", name.description); }},
    {.query = "select * from MisData",
     .filter = {"MName='{name}' and Master = '{master}'"},
     .codeColumn = "Code",
     .codes = {.access = "Select * from MisData  where Master = '{master}' and isnumeric(code)=true order by "
                         "val(code) desc",
               .sqlServer = "Select * from MisData  where Master = '{master}' and isnumeric(code)=1 order by "
                            "convert(integer,code) desc"},
     .fill =
         [](Recordset& entry, const MasterName& name, const ImportRun&) {
           entry.set("Master", name.miscellaneousMaster);
           entry.set("MName", name.description);
         }},
    {.query = "select * from Location",
     .filter = {"MainLocation='{name}' and SubLocation='{sub location}' and PhysicalLocation='{physical location}'"},
     .codeColumn = "recordid",
     .codes = {"select recordid from location order by recordid desc"},
     .codeDigits = 1,
     .fill =
         [](Recordset& entry, const MasterName& name, const ImportRun& run) {
           entry.set("cocd", run.company.companyCode);
           entry.set("MainLocation", name.description);
           entry.set("SubLocation", name.subLocation);
           entry.set("PhysicalLocation", name.physicalLocation);
         }},
};
static_assert(std::size(kMasters) == kMasterCount);

const MasterTable& tableOf(MasterId master) { return kMasters[static_cast<std::size_t>(master)]; }

NamedValues valuesOf(const MasterName& name) {
  return {{"name", name.description},
          {"sub location", name.subLocation},
          {"physical location", name.physicalLocation},
          {"master", name.miscellaneousMaster}};
}

}  // namespace

Recordset& Masters::table(MasterId master) {
  auto& table = tables_[static_cast<std::size_t>(master)];
  if (!table) table = run_.connection().open(tableOf(master).query, CursorKind::kKeyset, LockKind::kPessimistic);
  return *table;
}

std::string Masters::findOrCreate(MasterId master, const MasterName& name) {
  Recordset& entries = table(master);
  entries.filter(composeQuery(tableOf(master).filter, run_.dialect(), valuesOf(name)));
  return entries.eof() ? create(master, name) : nullToText(entries.get(tableOf(master).codeColumn));
}

std::string Masters::create(MasterId master, const MasterName& name) {
  const MasterTable& description = tableOf(master);
  std::string code = nextCode(master, name);
  Recordset& entries = table(master);
  try {
    entries.addNew();
    entries.set(description.codeColumn, code);
    description.fill(entries, name, run_);
    entries.update();
  } catch (const ProviderError&) {
    entries.cancel();
    throw;
  }
  return code;
}

std::string Masters::nextCode(MasterId master, const MasterName& name) const {
  const MasterTable& description = tableOf(master);
  const auto codes =
      run_.connection().open(composeQuery(description.codes, run_.dialect(), valuesOf(name)), CursorKind::kFirstRow);
  const auto highest = codes->eof() ? 0 : codes->get(description.codeColumn).toInteger().value_or(0);
  return zeroPadded(highest + 1, description.codeDigits);
}

}  // namespace orva
