#include "updates/bulk_update.h"

#include "platform/values/numeric_text.h"
#include "platform/values/text.h"

namespace orva {
namespace {

std::optional<Date> leaseEnd(const UpdateRow& row) { return Date::parseDayMonthYear(row.cells[0]); }
std::optional<Date> useDate(const UpdateRow& row) { return row.asset.get("UseDate").toDate(); }

bool isBeforeUse(const UpdateRow& row) {
  const auto end = leaseEnd(row);
  const auto use = useDate(row);
  return end && use && *use > *end;
}

bool isOnUse(const UpdateRow& row) {
  const auto end = leaseEnd(row);
  const auto use = useDate(row);
  return end && use && *use == *end;
}

constexpr UpdateCheck kLeaseEndChecks[] = {
    {isBeforeUse, "LEOD Should be greater than Date put to use date"},
    {isOnUse, "LEOD Should not be equal to Date put to use date"},
};

void applyLeaseEnd(Recordset& asset, Recordset& errorRow) { asset.set("LeaseDate", errorRow.get("LEOD")); }

/// An empty rate compares as zero.
Currency rate(const UpdateRow& row) { return Value(row.cells[0]).toCurrency().value_or(Currency()); }

bool isNoPercentage(const UpdateRow& row) { return rate(row) < Currency() || rate(row) > Currency::fromWhole(100); }

/// The rate is a currency value: four decimals count, the digits before the point do not.
bool hasTooManyDecimals(const UpdateRow& row) {
  const Currency fraction = Currency::fromUnits(rate(row).units() % Currency::kUnitsPerOne);
  return hasMoreThanTwoDecimals(fraction.toText());
}

bool isNoMethod(const UpdateRow& row) {
  return !equalsNoCase(row.cells[1], "SLM") && !equalsNoCase(row.cells[1], "WDV");
}

constexpr UpdateCheck kRateAndMethodChecks[] = {
    {isNoPercentage, "OVERRIDERATE Should be between 0 and 100"},
    {hasTooManyDecimals, "OVERRIDERATE Should consist 2 digit decimals."},
    {isNoMethod, "OVERRIDEMETHOD Should be SLM Or WDV"},
};

void applyRateAndMethod(Recordset& asset, Recordset& errorRow) {
  asset.set("FlgOverride", "Y");
  asset.set("OverrideRate", errorRow.get("OVERRIDERATE"));
  asset.set("OverrideMthd", errorRow.get("OVERRIDEMETHOD"));
}

constexpr std::string_view kLeaseEndColumns[] = {"LEOD"};
constexpr std::string_view kRateAndMethodColumns[] = {"OVERRIDERATE", "OVERRIDEMETHOD"};

}  // namespace

const BulkUpdate& leaseEndDateUpdate() {
  static constexpr BulkUpdate kUpdate{.caption = "Update LEOD",
                                      .errorTable = "LEODError",
                                      .columns = kLeaseEndColumns,
                                      .checks = kLeaseEndChecks,
                                      .apply = applyLeaseEnd};
  return kUpdate;
}

const BulkUpdate& rateAndMethodUpdate() {
  static constexpr BulkUpdate kUpdate{.caption = "Update Rate And Method",
                                      .errorTable = "RateMethodError",
                                      .columns = kRateAndMethodColumns,
                                      .checks = kRateAndMethodChecks,
                                      .apply = applyRateAndMethod};
  return kUpdate;
}

}  // namespace orva
