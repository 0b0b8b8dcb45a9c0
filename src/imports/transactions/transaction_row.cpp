#include "imports/transactions/transaction_row.h"

namespace orva {
namespace {

constexpr Query kAsset{.access = "Select * from Asset where assetid ='{id}'"};

/// One calendar of years with its closed flag.
struct Calendar {
  ClosedCalendar name;
  std::string_view latestClosed;
  std::string_view endingFrom;
  std::string_view closingDate;
};

constexpr Calendar kAccounting{.name = ClosedCalendar::kAccounting,
                               .latestClosed = "Select * from accyear  where closed = {true} order by acccldt Desc",
                               .endingFrom = "Select * from accyear where acccldt >= {#date}",
                               .closingDate = "acccldt"};
constexpr Calendar kFinancial{.name = ClosedCalendar::kFinancial,
                              .latestClosed = "Select * from Finyear  where closed = {true} order by Fincldt Desc",
                              .endingFrom = "Select * from finyear where fincldt >= {#date}",
                              .closingDate = "fincldt"};

constexpr Query kAccountingYear{.access = "Select * from accyear where accopdt <= {#date} and acccldt >= {#date}"};
constexpr Query kFinancialYear{.access = "Select * from Finyear where Finopdt <= {#date} and Fincldt >= {#date}"};

std::string sql(TransactionRow& row, std::string_view text) {
  return composeQuery(Query{.access = text}, row.run().dialect(), row);
}

std::optional<Date> latestClosed(TransactionRow& row, const Calendar& calendar) {
  return row.constant(sql(row, calendar.latestClosed), calendar.closingDate).toDate();
}

const Calendar& referenceCalendar(TransactionRow& row) {
  const auto accounting = latestClosed(row, kAccounting);
  const auto financial = latestClosed(row, kFinancial);
  if (!accounting) return kFinancial;
  return financial && *financial > *accounting ? kFinancial : kAccounting;
}

bool isYearClosed(TransactionRow& row, std::string_view field, const Query& query) {
  const std::string year = nullToText(row.assetField(field));
  row.setFact("year", year);
  return !row.constant(composeQuery(query, row.run().dialect(), row), field).isNull();
}

}  // namespace

TransactionRow::TransactionRow(ImportRun& run, std::string_view idHeading) : PostingRow(run), idHeading_(idHeading) {}

void TransactionRow::begin(int row) {
  PostingRow::begin(row);
  facts_.clear();
  dates_.clear();
  asset_.reset();
}

std::string TransactionRow::textArgument(std::string_view name) const {
  if (name == "id") return assetId();
  const auto found = facts_.find(name);
  return found == facts_.end() ? PostingRow::textArgument(name) : found->second;
}

std::optional<Date> TransactionRow::dateArgument(std::string_view name) const {
  const auto found = dates_.find(name);
  return found == dates_.end() ? PostingRow::dateArgument(name) : found->second;
}

void TransactionRow::setFact(std::string_view name, std::string text) { facts_[name] = std::move(text); }

void TransactionRow::setDate(std::string_view name, Date date) { dates_[name] = date; }

Recordset& TransactionRow::asset() {
  if (!asset_) asset_ = open(kAsset);
  return *asset_;
}

bool TransactionRow::assetExists() { return !asset().eof(); }

Value TransactionRow::assetField(std::string_view field) { return assetExists() ? asset().get(field) : Value(); }

const Value& TransactionRow::constant(const std::string& query, std::string_view field) {
  std::string key = query;
  key += '\n';
  key += field;
  const auto known = constants_.find(key);
  if (known != constants_.end()) return known->second;
  const auto rows = run().connection().open(query);
  return constants_.emplace(std::move(key), rows->eof() ? Value() : rows->get(field)).first->second;
}

std::string accountingYearOf(TransactionRow& row, Date date) {
  row.setDate("date", date);
  return nullToText(row.constant(composeQuery(kAccountingYear, row.run().dialect(), row), "accyear"));
}

std::string financialYearOf(TransactionRow& row, Date date) {
  row.setDate("date", date);
  return nullToText(row.constant(composeQuery(kFinancialYear, row.run().dialect(), row), "finyear"));
}

std::optional<Date> latestDepreciation(TransactionRow& row, std::string_view table, std::string_view faCode) {
  std::string query = "Select max(docdt) as docdt from ";
  query += table;
  query +=
      " where ((reclass <>'Y' and reclass <>'M' and reclass <>'R') or reclass is Null)"
      " and (flag <> 'S' and flag <>'O' or flag is Null) and facode = ";
  query += sqlQuote(faCode);
  return row.constant(query, "docdt").toDate();
}

ClosedCalendar closedCalendarAt(TransactionRow& row, Date date) {
  const Calendar& calendar = referenceCalendar(row);
  row.setDate("date", date);
  const auto years = row.run().connection().open(sql(row, calendar.endingFrom));
  for (; !years->eof(); years->moveNext()) {
    if (years->get("closed").toBoolean()) return calendar.name;
  }
  return ClosedCalendar::kNone;
}

bool isAssetAccountingYearClosed(TransactionRow& row, const Cell&, const TransactionRule&) {
  static constexpr Query kClosed{.access = "select accyear from accyear where accyear='{year}' and closed={true}"};
  return isYearClosed(row, "accyear", kClosed);
}

bool isAssetFinancialYearClosed(TransactionRow& row, const Cell&, const TransactionRule&) {
  static constexpr Query kClosed{.access = "select finyear from finyear where finyear='{year}' and closed={true}"};
  return isYearClosed(row, "finyear", kClosed);
}

bool isAssetMissing(TransactionRow& row, const Cell&, const TransactionRule&) { return !row.assetExists(); }

void validateTransactions(TransactionRow& row, std::span<const TransactionRule> rules) {
  walkRows<TransactionRow>(row, rules, WalkPolicy::kFirstErrorEndsRow, [](TransactionRow&) {});
}

}  // namespace orva
