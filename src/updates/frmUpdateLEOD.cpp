#include "updates/frmUpdateLEOD.h"

namespace orva {
namespace {

// A blank would wipe out the lease end date that the asset has, so it is refused.
constexpr UpdateColumn kColumns[] = {{.name = "LEOD", .mayBeBlank = false}};

std::optional<Date> leaseEnd(const UpdateRow& row) { return row.values[0].toDate(); }
std::optional<Date> useDate(Recordset& asset) { return asset.get("UseDate").toDate(); }

/// Without one of the dates there is nothing to compare.
bool isBeforeUse(const UpdateRow& row, Recordset& asset) {
  const auto end = leaseEnd(row);
  const auto use = useDate(asset);
  return end && use && *use > *end;
}

bool isOnUse(const UpdateRow& row, Recordset& asset) {
  const auto end = leaseEnd(row);
  return end && useDate(asset) == end;
}

constexpr UpdateCheck kChecks[] = {
    {isBeforeUse, "LEOD Should be greater than Date put to use date"},
    {isOnUse, "LEOD Should not be equal to Date put to use date"},
};

void apply(Recordset& asset, const UpdateRow& row) { asset.set("LeaseDate", row.values[0]); }

}  // namespace

const BulkUpdate& leaseEndDateUpdate() {
  static constexpr BulkUpdate kUpdate{
      .caption = "Update LEOD", .errorTable = "LEODError", .columns = kColumns, .checks = kChecks, .apply = apply};
  return kUpdate;
}

}  // namespace orva
