#include "platform/odbc/statement.h"

#include <array>

#include "platform/odbc/diagnostics.h"
#include "platform/odbc/link.h"
#include "platform/odbc/utf16.h"
#include "platform/values/text.h"

namespace orva::odbc {
namespace {

using embedded::ColumnType;

/// Texts without a limit of their own are described with a size like this or none.
constexpr SQLULEN kLongestText = 8000;
/// Widths of parameters for money and for points in time.
constexpr WireType kMoney{SQL_DECIMAL, 19, 4};
constexpr WireType kInstant{SQL_TYPE_TIMESTAMP, 23, 3};

struct TypeOf {
  ColumnType type;
  FieldType fieldType;
};

TypeOf textType(SQLULEN size) {
  const bool isLong = size == 0 || size > kLongestText;
  return isLong ? TypeOf{ColumnType::kMemo, FieldType::kMemo} : TypeOf{ColumnType::kText, FieldType::kVarChar};
}

TypeOf typeOf(const WireType& wire) {
  switch (wire.type) {
    case SQL_BIT:
      return {ColumnType::kBoolean, FieldType::kBoolean};
    case SQL_TINYINT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT:
      return {ColumnType::kInteger, FieldType::kInteger};
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
      return {ColumnType::kDouble, FieldType::kDouble};
    case SQL_DECIMAL:
    case SQL_NUMERIC:
      return {ColumnType::kCurrency, FieldType::kCurrency};
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
      return {ColumnType::kDate, FieldType::kTimestamp};
    case SQL_LONGVARCHAR:
    case SQL_WLONGVARCHAR:
      return {ColumnType::kMemo, FieldType::kMemo};
    case SQL_CHAR:
    case SQL_VARCHAR:
    case SQL_WCHAR:
    case SQL_WVARCHAR:
      return textType(wire.size);
    default:
      return {ColumnType::kMemo, FieldType::kOther};
  }
}

WireType wireOf(SQLSMALLINT type, SQLULEN size, SQLSMALLINT decimals) {
  const ColumnType columnType = typeOf({type, size, decimals}).type;
  if (columnType == ColumnType::kCurrency && decimals <= kMoney.decimals) return kMoney;
  if (columnType == ColumnType::kDate) return kInstant;
  const bool isWide = type == SQL_WCHAR || type == SQL_WVARCHAR || type == SQL_WLONGVARCHAR;
  if (columnType == ColumnType::kMemo)
    return {isWide ? SQLSMALLINT{SQL_WLONGVARCHAR} : SQLSMALLINT{SQL_LONGVARCHAR}, 0x3FFFFFFF, 0};
  return {type, size, decimals};
}

bool hasTimeOfDay(const SQL_TIMESTAMP_STRUCT& instant) {
  return instant.hour != 0 || instant.minute != 0 || instant.second != 0 || instant.fraction != 0;
}

/// An amount; a number that no amount can hold stays the text that the server gave.
Value amountOf(const std::string& text) {
  const auto amount = Currency::parse(text);
  return amount ? Value(*amount) : Value(text);
}

}  // namespace

Statement::Statement(Link& link, std::string sql) : link_(link), sql_(std::move(sql)) {
  if (!handle_.allocate(link_.handle())) link_.fail(SQL_HANDLE_DBC, link_.handle());
  // Braces in a text are braces, not escapes of the driver manager.
  SQLSetStmtAttr(handle_.get(), SQL_ATTR_NOSCAN, attributeValue(SQL_NOSCAN_ON), 0);
  SQLSetStmtAttr(handle_.get(), SQL_ATTR_QUERY_TIMEOUT, attributeValue(link_.statementSeconds()), 0);
}

void Statement::check(SQLRETURN done) {
  if (SQL_SUCCEEDED(done) || done == SQL_NO_DATA) return;
  try {
    link_.fail(SQL_HANDLE_STMT, handle_.get());
  } catch (...) {
    close();
    throw;
  }
}

void Statement::run(const std::vector<Argument>& arguments) {
  link_.checkAlive();
  check(parameters_.set(handle_.get(), arguments));
  if (runs_ < 2) {
    ++runs_;
    const std::u16string text = toUtf16(sql_);
    const bool isFirst = runs_ == 1;
    const auto length = static_cast<SQLINTEGER>(text.size());
    if (isFirst) {
      check(SQLExecDirectW(handle_.get(), wide(text), length));
    } else {
      check(SQLPrepareW(handle_.get(), wide(text), length));
    }
    if (!isFirst) check(SQLExecute(handle_.get()));
  } else {
    check(SQLExecute(handle_.get()));
  }
  SQLSMALLINT count = 0;
  check(SQLNumResultCols(handle_.get(), &count));
  givesRows_ = count > 0;
  if (columns_ && columns_->count() != count) columns_.reset();
}

std::int64_t Statement::changedRows() {
  SQLLEN rows = 0;
  check(SQLRowCount(handle_.get(), &rows));
  finish();
  return rows > 0 ? rows : 0;
}

std::shared_ptr<const ColumnList> Statement::columns() {
  if (!columns_) describe();
  return columns_;
}

void Statement::describe() {
  SQLSMALLINT count = 0;
  check(SQLNumResultCols(handle_.get(), &count));
  auto columns = std::make_shared<ColumnList>();
  for (SQLSMALLINT number = 1; number <= count; ++number) {
    columns->add(describeColumn(static_cast<SQLUSMALLINT>(number)));
  }
  columns_ = std::move(columns);
}

Column Statement::describeColumn(SQLUSMALLINT number) {
  std::array<char16_t, 256> name{};
  SQLSMALLINT length = 0;
  SQLSMALLINT type = 0;
  SQLULEN size = 0;
  SQLSMALLINT decimals = 0;
  SQLSMALLINT nullable = 0;
  check(SQLDescribeColW(handle_.get(), number, reinterpret_cast<SQLWCHAR*>(name.data()),
                        static_cast<SQLSMALLINT>(name.size()), &length, &type, &size, &decimals, &nullable));
  const TypeOf columnType = typeOf({type, size, decimals});
  Column column{.definition = {}, .fieldType = columnType.fieldType, .wire = wireOf(type, size, decimals)};
  column.definition.name = toUtf8(name.data());
  column.definition.type = columnType.type;
  if (columnType.type == ColumnType::kText) column.definition.size = static_cast<int>(size);
  return column;
}

bool Statement::fetch(Row& row) {
  link_.checkAlive();
  const SQLRETURN done = SQLFetch(handle_.get());
  check(done);
  if (done == SQL_NO_DATA) {
    finish();
    return false;
  }
  const ColumnList& list = *columns();
  row.clear();
  row.reserve(list.all().size());
  for (const Column& column : list.all()) row.push_back(read(static_cast<SQLUSMALLINT>(row.size() + 1), column));
  return true;
}

Cell Statement::read(SQLUSMALLINT number, const Column& column) {
  SQLLEN length = 0;
  const auto get = [&](SQLSMALLINT type, auto& target) {
    check(SQLGetData(handle_.get(), number, type, &target, sizeof target, &length));
    return length != SQL_NULL_DATA;
  };
  switch (column.definition.type) {
    case ColumnType::kBoolean: {
      unsigned char flag = 0;
      return get(SQL_C_BIT, flag) ? Cell{Value(flag != 0)} : Cell{};
    }
    case ColumnType::kInteger: {
      std::int64_t whole = 0;
      return get(SQL_C_SBIGINT, whole) ? Cell{Value(whole)} : Cell{};
    }
    case ColumnType::kDouble: {
      double value = 0;
      return get(SQL_C_DOUBLE, value) ? Cell{Value(value)} : Cell{};
    }
    case ColumnType::kCurrency: {
      std::array<char, 64> digits{};
      return get(SQL_C_CHAR, digits) ? Cell{amountOf(digits.data())} : Cell{};
    }
    case ColumnType::kDate: {
      SQL_TIMESTAMP_STRUCT instant{};
      if (!get(SQL_C_TYPE_TIMESTAMP, instant)) return {};
      const auto date = Date::fromParts(instant.year, instant.month, instant.day);
      Cell cell{date ? Value(*date) : Value()};
      if (hasTimeOfDay(instant)) cell.instant = instant;
      return cell;
    }
    default: {
      bool isNull = false;
      std::string text = readText(number, isNull);
      return isNull ? Cell{} : Cell{Value(std::move(text))};
    }
  }
}

std::string Statement::readText(SQLUSMALLINT number, bool& isNull) {
  std::array<char16_t, 512> part{};
  std::u16string text;
  for (;;) {
    SQLLEN length = 0;
    const SQLRETURN done = SQLGetData(handle_.get(), number, SQL_C_WCHAR, part.data(), sizeof part, &length);
    check(done);
    isNull = length == SQL_NULL_DATA;
    if (isNull || done == SQL_NO_DATA) return toUtf8(text);
    if (done == SQL_SUCCESS) {
      text.append(part.data(), static_cast<std::size_t>(length) / sizeof(char16_t));
      return toUtf8(text);
    }
    text.append(part.data(), part.size() - 1);
  }
}

std::vector<Row> Statement::primaryKeys(const std::u16string& table) {
  link_.checkAlive();
  check(SQLPrimaryKeysW(handle_.get(), nullptr, 0, nullptr, 0, wide(table), static_cast<SQLSMALLINT>(table.size())));
  std::vector<Row> rows;
  for (Row row; fetch(row);) rows.push_back(std::move(row));
  return rows;
}

/// A statement may tell of a failure after its rows.
void Statement::finish() {
  givesRows_ = false;
  SQLRETURN done = SQL_SUCCESS;
  while (SQL_SUCCEEDED(done)) done = SQLMoreResults(handle_.get());
  check(done);
  SQLFreeStmt(handle_.get(), SQL_CLOSE);
}

void Statement::close() {
  givesRows_ = false;
  SQLFreeStmt(handle_.get(), SQL_CLOSE);
}

}  // namespace orva::odbc
