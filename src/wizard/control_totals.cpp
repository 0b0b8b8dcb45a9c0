#include "wizard/control_totals.h"

#include "platform/values/text.h"
#include "wizard/amounts.h"
#include "wizard/import_run.h"

namespace orva {
namespace {

class KeyOf : public QueryArguments {
 public:
  explicit KeyOf(const PostedRecord& record) : record_(record) {}
  std::string textArgument(std::string_view) const override { return record_.key; }
  std::optional<Date> dateArgument(std::string_view) const override { return std::nullopt; }

 private:
  const PostedRecord& record_;
};

std::vector<int> positionsOf(const ControlPlan& plan, const FlexGrid& grid) {
  std::vector<int> positions;
  for (const ControlColumn& column : plan.columns) positions.push_back(grid.findColumn(column.heading));
  return positions;
}

/// At least two decimals.
std::string amountText(Currency amount) {
  constexpr std::size_t kDecimals = 2;
  std::string text = amount.toText();
  if (text.find('.') == std::string::npos) text += '.';
  while (text.size() - text.find('.') <= kDecimals) text += '0';
  return text;
}

}  // namespace

ControlTotals workbookTotals(const ControlPlan& plan, const FlexGrid& grid, std::int64_t records) {
  ControlTotals totals{.records = records};
  for (const int position : positionsOf(plan, grid)) {
    Currency& sum = totals.amounts.emplace_back();
    for (int row = 1; position >= 0 && row < grid.rowCount(); ++row) {
      sum = boundedSum(sum, amountIn(grid.text(row, position)).value_or(Currency()));
    }
  }
  return totals;
}

ControlTotals companyTotals(const ImportRun& run, const ControlPlan& plan, std::span<const PostedRecord> posted) {
  const std::vector<int> positions = positionsOf(plan, run.grid);
  ControlTotals totals{.amounts = std::vector<Currency>(plan.columns.size())};
  for (const PostedRecord& record : posted) {
    const auto stored = run.connection().open(composeQuery(plan.posted, run.dialect(), KeyOf(record)));
    if (stored->eof()) continue;
    ++totals.records;
    for (std::size_t index = 0; index < positions.size(); ++index) {
      const bool isNamed = positions[index] >= 0 && !trim(run.grid.text(record.row, positions[index])).empty();
      if (!isNamed && !run.selection.isAdd()) continue;
      const auto amount = stored->get(plan.columns[index].field).toCurrency();
      totals.amounts[index] = boundedSum(totals.amounts[index], amount.value_or(Currency()));
    }
  }
  return totals;
}

std::string controlTotalsText(const ControlPlan& plan, const FlexGrid& grid, const ControlTotals& totals,
                              std::string_view counted) {
  std::string text = std::string(counted) + " " + std::to_string(totals.records);
  for (std::size_t index = 0; index < plan.columns.size(); ++index) {
    const ControlColumn& column = plan.columns[index];
    if (!column.isAlwaysNamed && grid.findColumn(column.heading) < 0) continue;
    text += ", " + std::string(column.label) + " " + amountText(totals.amounts[index]);
  }
  return text;
}

}  // namespace orva
