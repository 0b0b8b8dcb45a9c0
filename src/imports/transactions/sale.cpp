#include "imports/transactions/sale.h"

#include "imports/transactions/transaction_checks.h"

namespace orva {
namespace {

bool isSaleDateNoDate(TransactionRow& row, const Cell&, const TransactionRule&) { return !row.date(); }

bool isClosedBy(TransactionRow& row, ClosedCalendar calendar) {
  return closedCalendarAt(row.accountingYears(), row.financialYears(), *row.date()) == calendar;
}

bool isFinancialYearClosed(TransactionRow& row, const Cell&, const TransactionRule&) {
  return isClosedBy(row, ClosedCalendar::kFinancial);
}

bool isAccountingYearClosed(TransactionRow& row, const Cell&, const TransactionRule&) {
  return isClosedBy(row, ClosedCalendar::kAccounting);
}

bool isOutsideEveryYear(TransactionRow& row, const Cell&, const TransactionRule&) {
  return !row.accountingYear() || !row.financialYear();
}

bool isBeforeUse(TransactionRow& row, const Cell&, const TransactionRule&) {
  const auto useDate = row.assetDate("usedate");
  return useDate && *row.date() < *useDate;
}

/// The sale date is on or before `upTo`, which becomes {up to}.
bool isCovered(TransactionRow& row, std::optional<Date> upTo) {
  if (!upTo || *row.date() > *upTo) return false;
  row.setFact("up to", upTo->toDayMonthYear());
  return true;
}

/// One set of books: the entries of its depreciation table under the asset's code. Entries of reclassifications and
/// sales do not count.
bool isDepreciatedInTable(TransactionRow& row, std::string_view table, std::string_view codeField) {
  const std::string faCode = nullToText(row.assetField(codeField));
  if (trim(faCode).empty()) return false;
  std::string latest = "Select max(docdt) as docdt from ";
  latest += table;
  latest +=
      " where ((reclass <>'Y' and reclass <>'M' and reclass <>'R') or reclass is Null)"
      " and (flag <> 'S' and flag <>'O' or flag is Null) and facode = ";
  latest += sqlQuote(faCode);
  return isCovered(row, row.constant(latest, "docdt").toDate());
}

bool isDepreciatedInBooks(TransactionRow& row, const Cell&, const TransactionRule&) {
  return isDepreciatedInTable(row, "fadep", "facode");
}

/// Whatever its asset, any entry counts.
bool isDepreciatedForIncomeTax(TransactionRow& row, const Cell&, const TransactionRule&) {
  return isCovered(row, row.constant("Select max(docdt) as docdt from Itaxdep ", "docdt").toDate());
}

/// One additional book and where its switch, name, code and entries stand.
struct AdditionalBook {
  std::string_view kept;
  std::string_view nameField;
  std::string_view defaultName;
  std::string_view codeField;
  std::string_view table;
};

bool isDepreciatedInBook(TransactionRow& row, const AdditionalBook& book) {
  if (!row.parameter(book.kept).toBoolean()) return false;
  const std::string name = nullToText(row.parameter(book.nameField));
  row.setFact("book", trim(name).empty() ? std::string(book.defaultName) : name);
  return isDepreciatedInTable(row, book.table, book.codeField);
}

bool isDepreciatedInBook1(TransactionRow& row, const Cell&, const TransactionRule&) {
  return isDepreciatedInBook(row, {.kept = "farate1",
                                   .nameField = "Addnalmthd1",
                                   .defaultName = "Additional Book 1",
                                   .codeField = "facode1",
                                   .table = "fadep1"});
}

bool isDepreciatedInBook2(TransactionRow& row, const Cell&, const TransactionRule&) {
  return isDepreciatedInBook(row, {.kept = "farate2",
                                   .nameField = "Addnalmthd2",
                                   .defaultName = "Additional Book 2",
                                   .codeField = "facode2",
                                   .table = "fadep2"});
}

bool hasSpecialCharacter(TransactionRow&, const Cell& cell, const TransactionRule&) {
  return cell.value.find_first_of("'\"\r\n") != std::string_view::npos;
}

constexpr std::string_view kNoYear = " Sale Date {value} doesn't fall in any of the Financial Year defined.";
constexpr std::string_view kBookDepreciated = " Depreciation as per {book} already calculated upto {up to}";

// In the order in which the checks run.
constexpr TransactionRule kSaleRules[] = {
    {.column = "ASSETID", .fails = isBlank, .text = kNoAssetId, .namesBlank = true},
    {.column = "ASSETID", .fails = exceedsSize, .text = kTooLong},
    {.column = "ASSETID", .fails = isFound, .text = "Asset Id : {value} sale/Discarded.", .lookup = kSoldOrDiscarded},
    {.column = "ASSETID", .fails = isAssetMissing, .text = "Asset Id : {value} does not exist For Sale in ORVA."},
    {.column = "ASSETID", .fails = isSaleDateNoDate, .text = "Invalid Sale Date {SALEDATE}", .marks = "SALEDATE"},
    {.column = "ASSETID",
     .fails = isFoundByDate,
     .text = "Asset Id : {value} shifted out.",
     .lookup = kShiftedOutByDate},
    {.column = "INVOICENO", .fails = isBlank, .text = "Invoice no. should not be blank", .namesBlank = true},
    {.column = "INVOICENO", .fails = exceedsSize, .text = kTooLong},
    {.column = "SALEDATE", .fails = isBlank, .text = " Sale Date should not be blank", .namesBlank = true},
    {.column = "SALEDATE", .fails = isNoDate, .text = "Invalid Sale Date {value}"},
    {.column = "SALEDATE", .fails = isOutsideServerRange, .text = "Date out of Range.Invalid Sale Date {value}"},
    {.column = "SALEDATE", .fails = isFinancialYearClosed, .text = " Financial Year is closed."},
    {.column = "SALEDATE", .fails = isAccountingYearClosed, .text = " Accounting Year is closed."},
    {.column = "SALEDATE", .fails = isOutsideEveryYear, .text = kNoYear},
    {.column = "SALEDATE", .fails = isBeforeVoucherDate, .text = "Sale date {value} cannot be less then voucher date."},
    {.column = "SALEDATE", .fails = isBeforeUse, .text = "Sale date {value} cannot be less then Date Put to Use."},
    {.column = "SALEDATE",
     .fails = isDepreciatedInBooks,
     .text = " Depreciation as per Books already calculated upto {up to}"},
    {.column = "SALEDATE",
     .fails = isDepreciatedForIncomeTax,
     .text = " Depreciation as per Income-Tax already calculated upto {up to}"},
    {.column = "SALEDATE", .fails = isDepreciatedInBook1, .text = kBookDepreciated},
    {.column = "SALEDATE", .fails = isDepreciatedInBook2, .text = kBookDepreciated},
    {.column = "SALEAMT", .fails = isNotNumeric, .text = "{value} Amount cannot be Non-Numeric.", .namesBlank = true},
    {.column = "SALEAMT", .fails = isNegative, .text = "{value} Amount cannot be negative."},
    {.column = "SERIALNO", .fails = exceedsSize, .text = kTooLong},
    {.column = "SERIALNO", .fails = isBlank, .text = " Serial no cannot be blank", .namesBlank = true},
    {.column = "SERIALNO",
     .fails = isFound,
     .text = "Ref no. : {value} Duplicate.",
     .lookup = {.access = "Select * from Assetout where SrNo ='{trimmed}'"}},
    {.column = "SERIALNO",
     .fails = hasSpecialCharacter,
     .text = "Serial no contains quotes or any other special character "},
    {.column = "REMARKS", .fails = exceedsSize, .text = kTooLong},
};

void storeAssetFacts(TransactionRow& row) {
  if (!row.assetExists()) return;
  row.set("CoCd", row.assetField("cocd"));
  row.set("Batch", row.assetField("Batch"));
}

constexpr PostedColumn<TransactionRow> kSaleColumns[] = {
    {.heading = "INVOICENO", .target = "DocNo"},
    {.heading = "SALEDATE", .target = "Docdt", .store = storeDateWithYear},
    {.heading = "ASSETID", .target = "AssetId", .store = storeAssetId},
    {.heading = "SALEAMT", .target = "SaleValue"},
    {.heading = "SERIALNO", .target = "SrNo"},
    {.heading = "REMARKS", .target = "Remarks"},
};

constexpr TransactionColumns kSheet{.date = "SALEDATE"};

void validateSale(ImportRun& run) {
  TransactionRow row(run, kSheet);
  validateTransactions(row, kSaleRules);
}

PostResult postSale(ImportRun& run) {
  TransactionRow row(run, kSheet);
  return postResult(runPosting<TransactionRow>(
      row, {.query = "select * from AssetOut", .columns = kSaleColumns, .beforeSave = storeAssetFacts}));
}

}  // namespace

ImportProcedures saleProcedures() {
  return {.kind = ImportKindId::kSale, .ownColumns = {}, .validate = validateSale, .post = postSale};
}

}  // namespace orva
