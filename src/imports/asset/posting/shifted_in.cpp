#include "imports/asset/posting/shifted_in.h"

#include "platform/values/numeric_text.h"

namespace orva {
namespace {

/// One column of an entry: from the asset's record, or else from the sheet.
struct ShiftColumn {
  std::string_view target;
  std::string_view field = {};
  std::string_view heading = {};
};

// The asset has come in: nothing left the company, so neither flag of a transfer is set.
constexpr ShiftColumn kColumns[] = {
    {.target = "cocd", .field = "Cocd"},
    {.target = "assetid", .field = "Assetid"},
    {.target = "docdt", .field = "Docdt"},
    {.target = "MainLocation", .heading = "MAINLOC"},
    {.target = "SubLocation", .heading = "SUBLOC"},
    {.target = "PhysicalLocation", .heading = "PHYLOC"},
    {.target = "PhyLocation", .heading = "PHYLOC"},
    {.target = "shiftedFrom", .heading = "SHIFTEDFROM"},
    {.target = "oldMainLocation", .heading = "SHIFTEDFROM"},
    {.target = "oldsubLocation", .heading = "SHIFTEDFROM"},
    {.target = "Remarks", .heading = "REMARKS"},
    {.target = "accyear", .field = "Accyear"},
    {.target = "cost", .field = "Cost"},
    {.target = "Accdep", .field = "Accdep"},
    {.target = "AccDep1", .field = "Accdep1"},
    {.target = "AccDep2", .field = "Accdep2"},
    {.target = "DeptCode", .field = "Deptcode"},
    {.target = "dept", .heading = "DEPT"},
};

std::string nextDocumentNumber(const ImportRun& run) {
  constexpr int kDigits = 4;
  const auto rows = run.connection().open("select docno from shift order by docno desc", CursorKind::kFirstRow);
  const auto highest = rows->eof() ? 0.0 : val(nullToText(rows->get("docno")));
  return zeroPadded(static_cast<long long>(highest) + 1, kDigits);
}

/// A department's name or remarks may be longer here than the entry can keep.
std::string_view clipped(std::string_view text, std::string_view column, const std::vector<FieldInfo>& fields) {
  for (const FieldInfo& field : fields) {
    if (!equalsNoCase(field.name, column) || field.size <= 0) continue;
    while (static_cast<int>(characterCount(text)) > field.size) text.remove_suffix(1);
  }
  return text;
}

}  // namespace

void ShiftedIn::write(const PostingRow& row) {
  if (!entries_) entries_ = run_.connection().open("select * from Shift", CursorKind::kKeyset, LockKind::kPessimistic);
  const std::vector<FieldInfo> fields = entries_->fields();
  const std::string number = nextDocumentNumber(run_);
  try {
    entries_->addNew();
    entries_->set("docno", number);
    for (const ShiftColumn& column : kColumns) {
      const std::string_view text = column.field.empty() ? trim(row.cell(column.heading)) : std::string_view();
      if (!column.field.empty()) entries_->set(column.target, row.record().get(column.field));
      if (!text.empty()) entries_->set(column.target, clipped(text, column.target, fields));
    }
    entries_->set("tfrout", false);
    entries_->set("SameLoc", false);
    entries_->update();
  } catch (const ProviderError&) {
    entries_->cancel();
    throw;
  }
}

}  // namespace orva
