#include "masters/master_import.h"

#include <algorithm>
#include <vector>

#include "masters/master_rules.h"

namespace orva {
namespace {

/// A column of the sheet and how many characters its field in the company can hold.
struct Width {
  int column;
  int characters;
};

std::vector<Width> widthsOf(const MasterRow& row, const PostingPlan<MasterRow>& plan) {
  const std::vector<FieldInfo> fields = row.run().connection().open(plan.query)->fields();
  std::vector<Width> widths;
  for (const PostedColumn<MasterRow>& column : plan.columns) {
    const auto field = std::find_if(fields.begin(), fields.end(),
                                    [&](const FieldInfo& each) { return equalsNoCase(each.name, column.target); });
    const int position = column.heading.empty() ? -1 : row.columnOf(column.heading);
    if (position >= 0 && field != fields.end() && field->size > 0) widths.push_back({position, field->size});
  }
  return widths;
}

bool isInError(const MasterRow& row, int column) {
  const Findings& findings = row.run().findings;
  const Findings::Range range = findings.ofRow(row.row());
  return std::any_of(findings.all().begin() + static_cast<std::ptrdiff_t>(range.first),
                     findings.all().begin() + static_cast<std::ptrdiff_t>(range.last),
                     [column](const Finding& finding) { return finding.column == column; });
}

/// A text that no check has refused and the company cannot hold would end posting in the middle of the rows.
void refuseOverlong(MasterRow& row, const std::vector<Width>& widths) {
  for (const Width& width : widths) {
    const std::string_view text = trim(row.cellAt(width.column).value);
    if (characterCount(text) <= static_cast<std::size_t>(width.characters) || isInError(row, width.column)) continue;
    row.record(width.column, FindingClass::kError, kExceedsMaximumLength);
  }
}

}  // namespace

std::vector<std::string> miscellaneousMasters(Connection& connection) {
  std::vector<std::string> names;
  const auto masters = connection.open("select MName from MisMaster");
  for (; !masters->eof(); masters->moveNext()) names.push_back(nullToText(masters->get("MName")));
  return names;
}

void validateMasters(ImportRun& run, const MasterChoice& choice) {
  MasterRow row(run, choice.master);
  const MasterKind& kind = masterKind(choice.kind);
  const std::vector<Width> widths = widthsOf(row, kind.plan);
  walkRows(row, kind.rules, WalkPolicy::kAllRules, [&](MasterRow& done) { refuseOverlong(done, widths); });
}

PostResult postMasters(ImportRun& run, const MasterChoice& choice) {
  MasterRow row(run, choice.master);
  return postResult(runPosting(row, masterKind(choice.kind).plan));
}

}  // namespace orva
