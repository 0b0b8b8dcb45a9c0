#include "imports/asset/rules/asset_rules.h"
#include "imports/asset/rules/checks.h"

namespace orva {
namespace {

using namespace checks;

/// A date is placed when it is one; the steps after the placement need a year that is open.
bool isInOpenYear(const AssetRow& row) { return row.accounting && !row.accounting->isClosed; }

std::optional<CalendarYear> readYear(const AssetRow& row, const AssetRule& rule, std::string_view name,
                                     std::string_view opening, std::string_view closing) {
  const auto years = row.open(rule.lookup);
  if (years->eof()) return std::nullopt;
  return CalendarYear{.name = nullToText(years->get(name)),
                      .opening = years->get(opening).toDate().value_or(Date()),
                      .closing = years->get(closing).toDate().value_or(Date())};
}

bool hasAccountingYears(const AssetRow& row) { return row.finds({"select * from accyear"}); }
bool hasFinancialYears(const AssetRow& row) { return row.finds({"select * from finyear"}); }

bool isOutsideAccountingYears(AssetRow& row, const Cell& cell, const AssetRule& rule) {
  row.accounting.reset();
  row.financial.reset();
  if (!dateIn(cell)) return false;
  row.accounting = readYear(row, rule, "accyear", "accopdt", "acccldt");
  return !row.accounting && hasAccountingYears(row);
}

bool hasNoAccountingYears(AssetRow& row, const Cell& cell, const AssetRule&) {
  return dateIn(cell) && !row.accounting && !hasAccountingYears(row);
}

bool isAccountingYearClosed(AssetRow& row, const Cell&, const AssetRule& rule) {
  if (!row.accounting) return false;
  row.accounting->isClosed = row.finds(rule.lookup);
  if (!row.accounting->isClosed) row.keepAccountingYear();
  return row.accounting->isClosed;
}

/// Depreciation that the look-up finds stands in the way of the date.
bool isCalculatedLater(AssetRow& row, const Cell&, const AssetRule& rule) {
  if (!isInOpenYear(row)) return false;
  const auto entries = row.open(rule.lookup);
  if (entries->eof()) return false;
  row.calculatedUpto = entries->get("docdt").toDate();
  return true;
}

bool isAfterYear(AssetRow& row, const Cell& cell, const AssetRule&) {
  return isInOpenYear(row) && dateIn(cell) > row.accounting->closing;
}

bool foundInOpenYear(AssetRow& row, const Cell&, const AssetRule& rule) {
  return isInOpenYear(row) && row.finds(rule.lookup);
}

constexpr Query kDepreciationOfCategory = {
    "Select * from Fadep where docdt >= {#value} and defcode='{level I}'  and ( flag <> 'O' or flag <>'S' or flag is "
    "null) and (reclass <>'Y' or reclass <>'R' or reclass <>'M' or reclass is Null) order by docdt desc"};
constexpr Query kDepreciation = {
    "Select * from Fadep where docdt >= {#value} and ( flag <> 'O' or flag <>'S' or flag is null) and (reclass <>'Y' "
    "or "
    "reclass <>'R' or reclass <>'M' or reclass is Null) order by docdt desc"};
constexpr Query kYearOfDate = {"Select * from Accyear where accopdt <= {#value} and acccldt >={#value}"};
constexpr Query kYearOfDepreciation = {
    "Select * from Accyear where accopdt <= {#calculated upto} and acccldt >={#calculated upto}"};

bool isInYearOfDepreciation(const AssetRow& row) {
  const auto ofDate = row.open(kYearOfDate);
  const auto ofDepreciation = row.open(kYearOfDepreciation);
  if (ofDate->eof() || ofDepreciation->eof()) return false;
  return nullToText(ofDate->get("accyear")) == nullToText(ofDepreciation->get("accyear"));
}

BackdatedTest testBackdated(AssetRow& row) {
  const bool hasCategory = row.category().level(CategoryDepth::kOne).isKnown();
  const auto entries = row.open(hasCategory ? kDepreciationOfCategory : kDepreciation);
  if (entries->eof()) return BackdatedTest::kUpToDate;
  row.calculatedUpto = entries->get("docdt").toDate();
  const bool isAccepted = row.run().selection.backdated && isInYearOfDepreciation(row);
  return isAccepted ? BackdatedTest::kAccepted : BackdatedTest::kRefused;
}

/// The test is made once a row, on the first date that reaches it.
bool isRefusedAsBackdated(AssetRow& row, const Cell& cell, const AssetRule&) {
  if (!isInOpenYear(row) || row.backdated != BackdatedTest::kNotMade) return false;
  row.backdated = testBackdated(row);
  row.backdatedColumn = cell.column;
  return row.backdated == BackdatedTest::kRefused;
}

bool isTreatedAsBackdated(AssetRow& row, const Cell& cell, const AssetRule&) {
  return row.backdated == BackdatedTest::kAccepted && row.backdatedColumn == cell.column;
}

bool isOutsideFinancialYears(AssetRow& row, const Cell& cell, const AssetRule& rule) {
  if (!dateIn(cell)) return false;
  row.financial = readYear(row, rule, "finyear", "finopdt", "fincldt");
  return !row.financial && hasFinancialYears(row);
}

bool hasNoFinancialYears(AssetRow& row, const Cell& cell, const AssetRule&) {
  return dateIn(cell) && !row.financial && !hasFinancialYears(row);
}

bool isFinancialYearClosed(AssetRow& row, const Cell&, const AssetRule& rule) {
  if (!row.financial) return false;
  row.financial->isClosed = row.finds(rule.lookup);
  if (!row.financial->isClosed) row.keepFinancialYear();
  return row.financial->isClosed;
}

bool isTaxCalculated(AssetRow& row, const Cell&, const AssetRule& rule) {
  return row.financial && !row.financial->isClosed && row.finds(rule.lookup);
}

constexpr std::string_view kDates = "VCHRDATE USEDATE";
constexpr std::string_view kCalculatedText =
    "Depreciation is already calculated upto : {calculated upto}.Therefore cannot import date {value}";

constexpr AssetRule kRules[] = {
    // A blank use date has texts of its own; a blank voucher date is no date.
    {.column = "VCHRDATE", .fails = isBlank, .text = "Invalid Voucher Date : {value}"},
    {.column = "VCHRDATE", .fails = isNotDate, .text = "Invalid Voucher Date : {value}"},
    {.column = "USEDATE", .fails = isNotDate, .text = "Invalid Use Date : {value}"},
    {.column = "VCHRDATE", .fails = isOutOfRange, .text = "Date out of Range.Invalid Voucher Date : {value}"},
    {.column = "USEDATE", .fails = isOutOfRange, .text = "Date out of Range.Invalid Use Date : {value}"},
    {.column = kDates,
     .fails = isDepreciated,
     .text = "Depreciation is calculated. Can't change",
     .mode = AppliesIn::kModify},
    {.column = kDates,
     .fails = isReclassified,
     .text = "Change of Category is present for the Asset ID : {asset id}. Can't change",
     .mode = AppliesIn::kModify},
    {.column = "USEDATE",
     .fails = isBlank,
     .text = "{column} should not be blank",
     .mode = AppliesIn::kAdd,
     .flavour = Flavour::kAcquisition,
     .namesBlank = true},

    // The accounting year.
    {.column = kDates,
     .fails = isOutsideAccountingYears,
     .text = "{value} doesn't fall in any of the accounting years defined.",
     .lookup = {"Select * from accyear where accopdt<={#value} and acccldt >= {#value}"},
     .flavour = Flavour::kAcquisition},
    {.column = kDates,
     .fails = isOutsideAccountingYears,
     .text = "{value} doesn't fall in any of the accounting years defined.",
     .lookup = {"Select * from accyear order by acccldt "},
     .flavour = Flavour::kClosing},
    {.column = kDates, .fails = hasNoAccountingYears, .text = "Accounting years are not defined in ORVA."},
    {.column = kDates,
     .fails = isAccountingYearClosed,
     .text = "Accounting year : {date's accounting year} is closed in ORVA.",
     .lookup = {"select * from accyear where accyear='{date's accounting year}' and closed={true}"}},

    // Closing balances: nothing of the year may have been calculated or acquired yet.
    {.column = kDates,
     .fails = isCalculatedLater,
     .text = kCalculatedText,
     .lookup = {"Select * from Fadep where docdt > {#value} and ( flag <> 'O' or flag <>'S' or flag is null) and "
                "(reclass <>'Y' or reclass <>'R' or reclass <>'M' or reclass is Null)"},
     .flavour = Flavour::kClosing},
    {.column = kDates,
     .fails = isAfterYear,
     .text = "{value} must be on or before {closing date}",
     .flavour = Flavour::kClosing},
    {.column = kDates,
     .fails = foundInOpenYear,
     .text = "Can 't import. Assets are Acquired in {date's accounting year}",
     .lookup = {"select * from asset where accyear='{date's accounting year}'  and Acquiredas<>'O'"},
     .flavour = Flavour::kClosing},

    // Acquisitions.
    {.column = kDates,
     .fails = foundInOpenYear,
     .text = "Closing Balances have been entered for the Year : {date's accounting year}",
     .lookup = {"Select accyear from fadep where (docdt >= {#opening date} and docdt <= {#closing date}) and flag='O'"},
     .flavour = Flavour::kAcquisition},
    {.column = kDates,
     .fails = isCalculatedLater,
     .text = kCalculatedText,
     .lookup = {"Select docdt from Fadep where docdt >= {#value} and ( flag <> 'O' and flag <>'S' or flag is null) and "
                "((reclass <>'Y' and reclass <>'R' and reclass <>'M') or reclass is Null)"},
     .mode = AppliesIn::kModify,
     .flavour = Flavour::kAcquisition},
    {.column = kDates,
     .fails = isRefusedAsBackdated,
     .text = "Row : {row}Column : {column number} &  Depreciation is already calculated upto : {calculated "
             "upto}.Therefore cannot import date {value}",
     .mode = AppliesIn::kAdd,
     .flavour = Flavour::kAcquisition},
    {.column = kDates,
     .fails = isTreatedAsBackdated,
     .text = "Row : {row}Column : {column number} &  Since Depreciation is calculated upto : {calculated upto}, This "
             "will be treated as Backdated entry",
     .findingClass = FindingClass::kBackdated,
     .mode = AppliesIn::kAdd,
     .flavour = Flavour::kAcquisition},

    // The financial year.
    {.column = kDates,
     .fails = isOutsideFinancialYears,
     .text = "{value} doesn't fall in any of the financial years defined.",
     .lookup = {"Select * from Finyear where Finopdt <= {#value} and Fincldt >= {#value}"},
     .flavour = Flavour::kAcquisition},
    {.column = kDates,
     .fails = isOutsideFinancialYears,
     .text = "{value} doesn't fall in any of the financial years defined.",
     .lookup = {"Select * from Finyear order by Fincldt "},
     .flavour = Flavour::kClosing},
    {.column = kDates, .fails = hasNoFinancialYears, .text = "Financial years are not defined in ORVA."},
    {.column = kDates,
     .fails = isFinancialYearClosed,
     .text = "Financial year : {date's financial year} is closed in ORVA.",
     .lookup = {"select * from finyear where finyear='{date's financial year}' and closed={true}"}},
    {.column = kDates,
     .fails = isTaxCalculated,
     .text = "Depreciation as Per ITAX is already calculated for the Year : {date's financial year}",
     .lookup = {"select * from itaxdep where finyear = '{date's financial year}'"}},

    {.column = "USEDATE", .fails = isBlank, .text = "Date Put to Use should not be blank"},
};

}  // namespace

std::span<const AssetRule> calendarRules() { return kRules; }

}  // namespace orva
