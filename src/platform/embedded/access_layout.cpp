#include "platform/embedded/access_layout.h"

#include <algorithm>
#include <numeric>

#include "platform/embedded/conversion.h"
#include "platform/values/text.h"

namespace orva::embedded {
namespace {

using access::Column;
using access::TableDefinition;

struct ValueReader {
  Value operator()(std::monostate) const { return {}; }
  Value operator()(bool yes) const { return yes; }
  Value operator()(std::int64_t number) const { return number; }
  Value operator()(double number) const { return number; }
  Value operator()(Currency money) const { return money; }
  Value operator()(access::DateTime date) const { return Date::fromDayNumber(static_cast<std::int32_t>(date.days)); }
  Value operator()(const std::string& text) const { return text; }
  Value operator()(const access::Bytes&) const { return {}; }
  Value operator()(const access::Guid&) const { return {}; }
  Value operator()(const access::Decimal&) const { return {}; }
};

/// An expression that this program cannot work out gives a new row no value.
Value defaultOf(const ColumnDef& column, const std::optional<std::string>& expression) {
  if (!expression) return {};
  const std::string_view text = trim(*expression);
  if (text.size() > 2 && text.front() == '#' && text.back() == '#' && column.type == ColumnType::kDate) {
    const auto date = parseSqlDate(text.substr(1, text.size() - 2));
    return date ? Value(*date) : Value();
  }
  const auto cell = access::evaluateDefault(*expression, access::currentMoment());
  if (!cell) return {};
  try {
    return convertForColumn(column, std::visit(ValueReader{}, *cell), DateOrder::kDayMonthYear);
  } catch (const ProviderError&) {
    return {};
  }
}

ColumnDef columnOf(const access::Table& table, const Column& column) {
  const access::TableProperties& properties = table.properties();
  ColumnDef def;
  def.name = column.name;
  def.type = columnTypeOf(column);
  if (column.type == access::ColumnType::kText) def.size = column.length / 2;
  def.allowZeroLength = !column.isText() || properties.allowsZeroLength(column.name);
  def.defaultValue = defaultOf(def, properties.defaultValue(column.name));
  def.required = properties.isRequired(column.name) && !column.isAutoNumber();
  return def;
}

IndexDef indexOf(const TableDefinition& definition, const access::LogicalIndex& logical) {
  const access::RealIndex& real = definition.realIndexes[logical.realIndex];
  IndexDef index{.name = logical.name,
                 .columns = {},
                 .unique = real.isUnique(),
                 .primary = logical.kind == access::IndexKind::kPrimaryKey};
  for (const access::IndexColumn& part : real.columns) {
    const Column& column = definition.columns[definition.columnOfNumber(part.number).value()];
    index.columns.push_back(column.name);
    index.keepsTextOrder = index.keepsTextOrder && !column.isText();
  }
  return index;
}

access::ColumnType fileTypeOf(ColumnType type) {
  switch (type) {
    case ColumnType::kBoolean:
      return access::ColumnType::kBoolean;
    case ColumnType::kInteger:
      return access::ColumnType::kLong;
    case ColumnType::kDouble:
      return access::ColumnType::kDouble;
    case ColumnType::kCurrency:
      return access::ColumnType::kCurrency;
    case ColumnType::kDate:
      return access::ColumnType::kDate;
    case ColumnType::kText:
      return access::ColumnType::kText;
    case ColumnType::kMemo:
      break;
  }
  return access::ColumnType::kMemo;
}

}  // namespace

void readLayout(AccessTable& table) {
  const TableDefinition& definition = table.table->definition();
  table.positions.resize(definition.columns.size());
  std::iota(table.positions.begin(), table.positions.end(), std::size_t{0});
  std::stable_sort(table.positions.begin(), table.positions.end(), [&definition](std::size_t left, std::size_t right) {
    return definition.columns[left].ordinal < definition.columns[right].ordinal;
  });
  table.layout = TableDef{table.table->name(), {}, {}};
  for (const std::size_t position : table.positions) {
    table.layout.columns.push_back(columnOf(*table.table, definition.columns[position]));
  }
  for (const access::LogicalIndex& logical : definition.logicalIndexes) {
    if (logical.kind == access::IndexKind::kRelationship) continue;
    table.layout.indexes.push_back(indexOf(definition, logical));
    if (!table.layout.indexes.back().primary) continue;
    for (const std::string& name : table.layout.indexes.back().columns) {
      const auto at = static_cast<std::size_t>(table.layout.find(name));
      const bool isNumbered = definition.columns[table.positions[at]].isAutoNumber();
      table.layout.columns[at].required = !isNumbered;
    }
  }
}

access::NewColumn newColumnOf(const ColumnDef& column) {
  return {.name = column.name,
          .type = fileTypeOf(column.type),
          .size = column.size,
          .isRequired = column.required,
          .allowsZeroLength = column.allowZeroLength,
          .defaultValue = defaultExpression(column.defaultValue)};
}

access::NewIndex newIndexOf(const IndexDef& index) {
  access::NewIndex made{.name = index.name, .isPrimary = index.primary, .isUnique = index.unique};
  for (const std::string& column : index.columns) made.columns.push_back({column});
  return made;
}

std::optional<std::string> defaultExpression(const Value& value) {
  if (value.isNull()) return std::nullopt;
  if (const auto* text = std::get_if<std::string>(&value.storage()))
    return "\"" + replaceAll(*text, "\"", "\"\"") + "\"";
  if (const auto* yes = std::get_if<bool>(&value.storage())) return *yes ? "Yes" : "No";
  if (const auto* date = std::get_if<Date>(&value.storage())) return "#" + date->toMonthDayYear() + "#";
  return value.toText();
}

}  // namespace orva::embedded
