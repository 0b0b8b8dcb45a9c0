#include "imports/transactions/child_row.h"

#include <algorithm>

namespace orva {
namespace {

constexpr Query kHighestInAsset{.access =
                                    "Select assetid from asset where {upper}(PAssetId) ='{id}' order by assetid desc"};

constexpr Query kHighestInAddition{
    .access =
        "Select max(val(mid(assetid,len(assetid)-(len(assetid)-len(passetid))+2,len(assetid)))) As MaxAssetID  "
        "from addition where Ucase(PAssetId) ='{id}'",
    .sqlServer =
        "Select max(cast(substring(assetid,len(assetid)-(len(assetid)-len(passetid))+2,len(assetid))as int)) "
        "As MaxAssetID from addition where Upper(PAssetId) ='{id}'"};

constexpr Query kChildCost{.access = "select sum(Cost) as ChildCost from Addition where PAssetId='{id}'"};

/// Number after the parent's identifier and the hyphen; 0 when there is none.
long long suffixOf(std::string_view childId, std::string_view parentId) {
  if (childId.size() <= parentId.size() + 1) return 0;
  return static_cast<long long>(val(childId.substr(parentId.size() + 1)));
}

}  // namespace

std::string nextChildId(ChildRow& row) {
  const std::string parentId = row.assetId();
  long long highest = 0;
  const auto inAsset = row.open(kHighestInAsset);
  if (!inAsset->eof()) highest = suffixOf(nullToText(inAsset->get("assetid")), parentId);
  const auto inAddition = row.open(kHighestInAddition);
  if (!inAddition->eof()) {
    highest = std::max<long long>(highest, inAddition->get("MaxAssetID").toInteger().value_or(0));
  }
  return parentId + "-" + zeroPadded(highest + 1, 2);
}

Currency familyCost(ChildRow& row) {
  const auto children = row.open(kChildCost);
  const Currency childCost =
      children->eof() ? Currency() : children->get("ChildCost").toCurrency().value_or(Currency());
  return row.assetField("Cost").toCurrency().value_or(Currency()) + childCost;
}

}  // namespace orva
