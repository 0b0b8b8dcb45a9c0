#include "updates/frmUpdateRateAndMethod.h"

#include "platform/values/numeric_text.h"
#include "platform/values/text.h"

namespace orva {
namespace {

constexpr UpdateColumn kColumns[] = {{.name = "OVERRIDERATE"}, {.name = "OVERRIDEMETHOD"}};

/// A blank rate compares as zero.
Currency rate(const UpdateRow& row) { return row.values[0].toCurrency().value_or(Currency()); }

bool isNoPercentage(const UpdateRow& row, Recordset&) {
  return rate(row) < Currency() || rate(row) > Currency::fromWhole(100);
}

/// The rate is money with four decimals; the digits before its point do not count.
bool hasTooManyDecimals(const UpdateRow& row, Recordset&) {
  const Currency fraction = Currency::fromUnits(rate(row).units() % Currency::kUnitsPerOne);
  return hasMoreThanTwoDecimals(fraction.toText());
}

bool isNoMethod(const UpdateRow& row, Recordset&) {
  const std::string method = nullToText(row.values[1]);
  return !equalsNoCase(method, "SLM") && !equalsNoCase(method, "WDV");
}

constexpr UpdateCheck kChecks[] = {
    {isNoPercentage, "OVERRIDERATE Should be between 0 and 100"},
    {hasTooManyDecimals, "OVERRIDERATE Should consist 2 digit decimals."},
    {isNoMethod, "OVERRIDEMETHOD Should be SLM Or WDV"},
};

void apply(Recordset& asset, const UpdateRow& row) {
  asset.set("FlgOverride", "Y");
  asset.set("OverrideRate", row.values[0]);
  asset.set("OverrideMthd", row.values[1]);
}

}  // namespace

const BulkUpdate& rateAndMethodUpdate() {
  static constexpr BulkUpdate kUpdate{.caption = "Update Rate And Method",
                                      .errorTable = "RateMethodError",
                                      .columns = kColumns,
                                      .checks = kChecks,
                                      .apply = apply};
  return kUpdate;
}

}  // namespace orva
