#include "imports/asset/posting/closing_guard.h"

#include "imports/asset/named_values.h"

namespace orva {
namespace {

constexpr Query kClosingBalances = {"Select docdt from Fadep where Flag = 'O' group by docdt "};
constexpr Query kYearOfDate = {"Select * from accyear where accopdt<={#date} and acccldt >= {#date}"};
constexpr Query kClosedYear = {
    "select accyear from accyear where accopdt >= {#opening date} and acccldt <= {#closing date} and closed={true}"};
constexpr Query kDepreciation = {
    "Select distinct (docdt) from Fadep where Flag <> 'O' or flag = 'S' or Flag is Null order by docdt desc"};

constexpr std::string_view kEnding = ". Therefore cannot import closing balances entries";

std::unique_ptr<Recordset> open(const CompanyContext& company, const Query& query, const QueryArguments& values) {
  return company.connection->open(composeQuery(query, company.dialect(), values));
}

/// The closed accounting year that holds a date; empty when that year is open.
std::string closedYearOf(const CompanyContext& company, const Value& date) {
  const auto year = open(company, kYearOfDate, NamedValues{{"date", date}});
  if (year->eof()) return {};
  const auto closed = open(company, kClosedYear,
                           NamedValues{{"opening date", year->get("accopdt")}, {"closing date", year->get("acccldt")}});
  return closed->eof() ? std::string() : nullToText(closed->get("accyear"));
}

}  // namespace

std::string closingBalanceObstacle(const CompanyContext& company, const Selection& selection) {
  if (!selection.isClosing()) return {};
  const auto balances = open(company, kClosingBalances, NamedValues{});
  for (; !balances->eof(); balances->moveNext()) {
    const std::string year = closedYearOf(company, balances->get("docdt"));
    if (!year.empty()) return "Accounting year : " + year + " is closed. " + std::string(kEnding);
  }
  if (!selection.shiftedIn) return {};
  const auto depreciation = open(company, kDepreciation, NamedValues{});
  if (depreciation->eof()) return {};
  return "Depreciation is calculated upto " + nullToText(depreciation->get("docdt")) + std::string(kEnding);
}

}  // namespace orva
