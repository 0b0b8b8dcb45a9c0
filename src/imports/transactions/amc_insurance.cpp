#include "imports/transactions/amc_insurance.h"

#include <array>

#include "imports/transactions/transaction_checks.h"

namespace orva {
namespace {

/// An asset that is put to use later counts as missing. Without a reference date any asset will do: its own column
/// reports that date.
bool isMissingByThen(TransactionRow& row, const Cell&, const TransactionRule& rule) {
  return row.comparableDate() ? !row.finds(rule.lookup) : !row.assetExists();
}

bool isOutsideAccountingYears(TransactionRow& row, const Cell&, const TransactionRule&) {
  return !row.accountingYear();
}

/// The year of the reference date or a later one is closed; it becomes {closed year}.
bool isFromHereOnClosed(TransactionRow& row, const Cell&, const TransactionRule&) {
  const CalendarYear* closed = row.accountingYears().closedFrom(row.accountingYear()->name);
  if (closed) row.setFact("closed year", closed->name);
  return closed != nullptr;
}

bool isPeriodEmpty(TransactionRow& row, std::string_view from, std::string_view to) {
  const auto start = row.dateArgument(from);
  const auto end = row.dateArgument(to);
  return start && end && *end <= *start;
}

bool isAmcPeriodEmpty(TransactionRow& row, const Cell&, const TransactionRule&) {
  return isPeriodEmpty(row, "AMCFROM", "AMCTO");
}

bool isInsurancePeriodEmpty(TransactionRow& row, const Cell&, const TransactionRule&) {
  return isPeriodEmpty(row, "INSFROM", "INSTO");
}

bool isZero(TransactionRow&, const Cell& cell, const TransactionRule&) { return amountIn(cell.value) == Currency(); }

/// Where the two kinds of contract differ.
struct Contract {
  std::string_view missing;
  Query duplicate;
  struct PeriodEnd {
    std::string_view column;
    std::string_view blank;
    std::string_view invalid;
    std::string_view outOfRange;
  };
  PeriodEnd from;
  PeriodEnd to;
  bool (*periodEmpty)(TransactionRow&, const Cell&, const TransactionRule&);
  std::string_view amountColumn;
};

constexpr Contract kAmc{.missing = "Asset Id : {value} does not exist For AMC Details in ORVA.",
                        .duplicate = {.access = "Select * from AMC where Docno ='{value}'"},
                        .from = {.column = "AMCFROM",
                                 .blank = " AMC From Date should not be blank",
                                 .invalid = "Invalid AMC From Date {value}",
                                 .outOfRange = "Date out of Range. Invalid AMC From Date {value}"},
                        .to = {.column = "AMCTO",
                               .blank = " AMC To Date should not be blank",
                               .invalid = "Invalid AMC To Date {value}",
                               .outOfRange = "Date out of Range. Invalid AMC To Date {value}"},
                        .periodEmpty = isAmcPeriodEmpty,
                        .amountColumn = "AMOUNT"};

constexpr Contract kInsurance{.missing = "Asset Id : {value} does not exist For Insurance Details in ORVA.",
                              .duplicate = {.access = "Select * from Insurance where InsuranceCode ='{value}'"},
                              .from = {.column = "INSFROM",
                                       .blank = " Insurance From Date should not be blank",
                                       .invalid = "Invalid Insurance From Date {value}",
                                       .outOfRange = "Date out of Range. Invalid Insurance From Date {value}"},
                              .to = {.column = "INSTO",
                                     .blank = " Insurance To Date should not be blank",
                                     .invalid = "Invalid Insurance To Date {value}",
                                     .outOfRange = "Date out of Range. Invalid Insurance To Date {value}"},
                              .periodEmpty = isInsurancePeriodEmpty,
                              .amountColumn = "POLICYAMT"};

/// The checks of a contract in the order in which they run. The rules of the policy number stand in both
/// tables: a column that the sheet lacks is never visited.
constexpr auto rulesOf(const Contract& contract) {
  return std::array{
      TransactionRule{.column = "ASSETID", .fails = isBlank, .text = kNoAssetId, .namesBlank = true},
      TransactionRule{.column = "ASSETID", .fails = exceedsSize, .text = kTooLong},
      TransactionRule{.column = "ASSETID",
                      .fails = isFoundByDate,
                      .text = "Asset Id : {value} sale/Discarded.",
                      .lookup = {.access = "Select * from Assetout where assetid ='{id}' and DocDt <={#date}"}},
      TransactionRule{.column = "ASSETID",
                      .fails = isMissingByThen,
                      .text = contract.missing,
                      .lookup = {.access = "Select * from Asset where assetid ='{id}' and UseDate <={#date}"}},
      TransactionRule{.column = "ASSETID",
                      .fails = isFoundByDate,
                      .text = "Asset Id : {value} shifted out.",
                      .lookup = kShiftedOutByDate},
      TransactionRule{.column = "REFNO", .fails = isBlank, .text = "Ref no. should not be blank", .namesBlank = true},
      TransactionRule{.column = "REFNO", .fails = exceedsSize, .text = kTooLong},
      TransactionRule{
          .column = "REFNO", .fails = isFound, .text = "Ref no. : {value} Duplicate.", .lookup = contract.duplicate},
      TransactionRule{
          .column = "REFDATE", .fails = isBlank, .text = " Ref Date should not be blank", .namesBlank = true},
      TransactionRule{.column = "REFDATE", .fails = isNoDate, .text = "Invalid Ref Date {value}"},
      TransactionRule{
          .column = "REFDATE", .fails = isOutsideServerRange, .text = "Date out of Range.Invalid Ref Date {value}"},
      TransactionRule{.column = "REFDATE",
                      .fails = isOutsideAccountingYears,
                      .text = " Ref Date {value} doesn't fall in any of the Accounting Years defined."},
      TransactionRule{.column = "REFDATE",
                      .fails = isFromHereOnClosed,
                      .text = "Accounting Year {closed year} is Closed.Therefore, Cannot Add or Modify any Record."},
      TransactionRule{.column = "REFDATE",
                      .fails = isBeforeVoucherDate,
                      .text = "Ref date {value} cannot be less then voucher date."},
      TransactionRule{
          .column = contract.from.column, .fails = isBlank, .text = contract.from.blank, .namesBlank = true},
      TransactionRule{.column = contract.to.column, .fails = isBlank, .text = contract.to.blank, .namesBlank = true},
      TransactionRule{.column = contract.from.column, .fails = isNoDate, .text = contract.from.invalid},
      TransactionRule{.column = contract.to.column, .fails = isNoDate, .text = contract.to.invalid},
      TransactionRule{.column = contract.from.column, .fails = isOutsideServerRange, .text = contract.from.outOfRange},
      TransactionRule{.column = contract.to.column, .fails = isOutsideServerRange, .text = contract.to.outOfRange},
      TransactionRule{.column = contract.from.column,
                      .fails = contract.periodEmpty,
                      .text = "Date out of Range.Invalid Ref Date {value}"},
      TransactionRule{.column = contract.to.column,
                      .fails = contract.periodEmpty,
                      .text = "Date out of Range.Invalid Ref Date {value}"},
      TransactionRule{.column = "POLICYNO", .fails = exceedsSize, .text = kTooLong},
      TransactionRule{
          .column = "POLICYNO", .fails = isBlank, .text = "{value} Policy No cannot be blank.", .namesBlank = true},
      TransactionRule{.column = contract.amountColumn,
                      .fails = isNotNumeric,
                      .text = "{value} Amount cannot be Non-Numeric.",
                      .namesBlank = true},
      TransactionRule{.column = contract.amountColumn, .fails = isZero, .text = "{value} Amount cannot be blank."},
      TransactionRule{.column = "REMARKS", .fails = exceedsSize, .text = kTooLong},
  };
}

constexpr auto kAmcRules = rulesOf(kAmc);
constexpr auto kInsuranceRules = rulesOf(kInsurance);

void storeAssetWithVendor(TransactionRow& row, const Cell& cell, std::string_view target) {
  storeAssetId(row, cell, target);
  row.set("VendorCode", row.assetField("VendorCode"));
}

constexpr PostedColumn<TransactionRow> kAmcColumns[] = {
    {.target = "Cocd", .store = storeCompany},
    {.heading = "REFNO", .target = "DocNo"},
    {.heading = "REFDATE", .target = "DocDt", .store = storeDateWithYear},
    {.heading = "ASSETID", .target = "AssetId", .store = storeAssetWithVendor},
    {.heading = "AMCFROM", .target = "AmcFromDt"},
    {.heading = "AMCTO", .target = "AmcUptoDt"},
    {.heading = "AMOUNT", .target = "Amount"},
    {.heading = "REMARKS", .target = "Remarks"},
};

/// The remarks stand in `InsuranceName`; the table has neither a remarks column nor a company code.
constexpr PostedColumn<TransactionRow> kInsuranceColumns[] = {
    {.heading = "REFNO", .target = "Insurancecode"},
    {.heading = "REFDATE", .target = "DocDt", .store = storeDateWithYear},
    {.heading = "ASSETID", .target = "AssetId", .store = storeAssetId},
    {.heading = "INSFROM", .target = "Insfromdt"},
    {.heading = "INSTO", .target = "Insuptodt"},
    {.heading = "POLICYAMT", .target = "Amount"},
    {.heading = "POLICYNO", .target = "Policyno"},
    {.heading = "REMARKS", .target = "InsuranceName"},
};

constexpr TransactionColumns kSheet{.date = "REFDATE"};

void validateAmc(ImportRun& run) {
  TransactionRow row(run, kSheet);
  validateTransactions(row, kAmcRules);
}

void validateInsurance(ImportRun& run) {
  TransactionRow row(run, kSheet);
  validateTransactions(row, kInsuranceRules);
}

PostResult postAmc(ImportRun& run) {
  TransactionRow row(run, kSheet);
  return postResult(runPosting<TransactionRow>(row, {.query = "select * from AMC", .columns = kAmcColumns}));
}

PostResult postInsurance(ImportRun& run) {
  TransactionRow row(run, kSheet);
  return postResult(
      runPosting<TransactionRow>(row, {.query = "select * from Insurance", .columns = kInsuranceColumns}));
}

}  // namespace

ImportProcedures amcProcedures() {
  return {.kind = ImportKindId::kAmc, .ownColumns = {}, .validate = validateAmc, .post = postAmc};
}

ImportProcedures insuranceProcedures() {
  return {.kind = ImportKindId::kInsurance, .ownColumns = {}, .validate = validateInsurance, .post = postInsurance};
}

}  // namespace orva
