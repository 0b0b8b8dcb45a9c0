#include "imports/transactions/child_row.h"

#include <algorithm>

#include "platform/values/numeric_text.h"

namespace orva {
namespace {

constexpr Query kChildrenInAsset{.access =
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

std::optional<Date> ChildRow::dateArgument(std::string_view name) const {
  if (name == "opening date") return year_.opening;
  if (name == "closing date") return year_.closing;
  return TransactionRow::dateArgument(name);
}

void ChildRow::placeInYear(const CalendarYear& year) {
  year_ = year;
  setFact("year", year.name);
}

std::string nextChildId(ChildRow& row) {
  const std::string parentId = row.parentId();
  long long highest = 0;
  // As texts "-99" sorts after "-100", so all are read.
  for (const auto inAsset = row.open(kChildrenInAsset); !inAsset->eof(); inAsset->moveNext()) {
    highest = std::max(highest, suffixOf(nullToText(inAsset->get("assetid")), parentId));
  }
  const auto inAddition = row.open(kHighestInAddition);
  if (!inAddition->eof()) {
    highest = std::max<long long>(highest, inAddition->get("MaxAssetID").toInteger().value_or(0));
  }
  return parentId + "-" + zeroPadded(highest + 1, 2);
}

Currency familyCost(ChildRow& row) {
  const auto children = row.open(kChildCost);
  const Value childCost = children->eof() ? Value() : children->get("ChildCost");
  return boundedSum(row.assetField("Cost").toCurrency().value_or(Currency()),
                    childCost.toCurrency().value_or(Currency()));
}

}  // namespace orva
