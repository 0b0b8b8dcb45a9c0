#include "wizard/findings.h"

#include <algorithm>
#include <iterator>

namespace orva {

std::string findingText(const Finding& finding) {
  std::string result;
  std::string_view rest = finding.text;
  for (const std::string& argument : finding.arguments) {
    const std::size_t open = rest.find('{');
    const std::size_t close = rest.find('}', open == std::string_view::npos ? 0 : open);
    if (open == std::string_view::npos || close == std::string_view::npos) break;
    result += rest.substr(0, open);
    result += argument;
    rest.remove_prefix(close + 1);
  }
  result += rest;
  return result;
}

void Findings::clear() { *this = Findings(); }

void Findings::add(Finding finding) {
  isOrdered_ = isOrdered_ && (findings_.empty() || findings_.back().row <= finding.row);
  findings_.push_back(std::move(finding));
}

bool Findings::has(FindingClass findingClass) const {
  return std::any_of(findings_.begin(), findings_.end(),
                     [findingClass](const Finding& finding) { return finding.findingClass == findingClass; });
}

void Findings::settle() {
  if (isOrdered_) return;
  std::stable_sort(findings_.begin(), findings_.end(),
                   [](const Finding& a, const Finding& b) { return a.row < b.row; });
  isOrdered_ = true;
  errorRows_ = warningRows_ = backdatedRows_ = 0;
  int counted = 0;
  for (const Finding& finding : findings_) {
    if (finding.row != counted) countRow(finding.row);
    counted = finding.row;
  }
}

Findings::Range Findings::ofRow(int row) const {
  const auto range = std::equal_range(findings_.begin(), findings_.end(), Finding{.row = row},
                                      [](const Finding& a, const Finding& b) { return a.row < b.row; });
  return {static_cast<std::size_t>(range.first - findings_.begin()),
          static_cast<std::size_t>(range.second - findings_.begin())};
}

bool Findings::rowHas(int row, FindingClass findingClass) const {
  const Range range = ofRow(row);
  return std::any_of(findings_.begin() + static_cast<std::ptrdiff_t>(range.first),
                     findings_.begin() + static_cast<std::ptrdiff_t>(range.last),
                     [findingClass](const Finding& finding) { return finding.findingClass == findingClass; });
}

void Findings::countRow(int row) {
  if (rowHas(row, FindingClass::kError)) {
    ++errorRows_;
  } else if (rowHas(row, FindingClass::kWarning)) {
    ++warningRows_;
  }
  if (rowHas(row, FindingClass::kBackdated)) ++backdatedRows_;
}

void Findings::addToEarlierRows(std::vector<Finding> late) {
  findings_.insert(findings_.end(), std::make_move_iterator(late.begin()), std::make_move_iterator(late.end()));
  std::stable_sort(findings_.begin(), findings_.end(),
                   [](const Finding& a, const Finding& b) { return a.row < b.row; });
  errorRows_ = warningRows_ = backdatedRows_ = 0;
  for (std::size_t index = 0; index < findings_.size(); index = ofRow(findings_[index].row).last) {
    countRow(findings_[index].row);
  }
}

}  // namespace orva
