#include <algorithm>

#include "platform/values/text.h"
#include "startup/company_context.h"

namespace orva {
namespace {

/// How the value of a `Parameter` column moves its flag.
enum class FlagRule {
  kStaysOn,       ///< on when true, else left: a book once seen stays known for the run
  kOffWhenFalse,  ///< off when false, on for anything else, null included
  kOnWhenTrue,    ///< on when true, else off
};

struct FlagRow {
  std::string_view column;
  bool ParameterFlags::*flag;
  FlagRule rule;
  bool onlyAtOpen = false;
};

constexpr FlagRow kFlagRows[] = {
    {.column = "farate1", .flag = &ParameterFlags::additionalBook1, .rule = FlagRule::kStaysOn},
    {.column = "farate2", .flag = &ParameterFlags::additionalBook2, .rule = FlagRule::kStaysOn},
    {.column = "autoAssetid", .flag = &ParameterFlags::automaticIdentifiers, .rule = FlagRule::kOffWhenFalse},
    {.column = "centre", .flag = &ParameterFlags::costCentres, .rule = FlagRule::kOffWhenFalse},
    {.column = "Users", .flag = &ParameterFlags::users, .rule = FlagRule::kOffWhenFalse},
    {.column = "Validation", .flag = &ParameterFlags::validation, .rule = FlagRule::kOnWhenTrue},
    {.column = "AsPerRBI",
     .flag = &ParameterFlags::regulatoryClassification,
     .rule = FlagRule::kOnWhenTrue,
     .onlyAtOpen = true},
};

bool moved(bool flag, const Value& value, FlagRule rule) {
  switch (rule) {
    case FlagRule::kStaysOn:
      return flag || value.toBoolean();
    case FlagRule::kOffWhenFalse:
      return value.isNull() || value.toBoolean();
    case FlagRule::kOnWhenTrue:
      return value.toBoolean();
  }
  return flag;
}

/// A column that an older company lacks reads as null.
Value valueOrNull(Recordset& rows, std::string_view column) {
  const std::vector<FieldInfo> fields = rows.fields();
  const bool present =
      std::ranges::any_of(fields, [&](const FieldInfo& field) { return equalsNoCase(field.name, column); });
  return present ? rows.get(column) : Value();
}

}  // namespace

void readParameterFlags(CompanyContext& context, FlagReading reading) {
  const auto rows = context.connection->open("select * from parameter", CursorKind::kKeyset, LockKind::kPessimistic);
  if (rows->recordCount() <= 0) return;
  rows->moveFirst();
  ParameterFlags flags = context.flags;
  for (const FlagRow& row : kFlagRows) {
    if (row.onlyAtOpen && reading == FlagReading::kAtReconnect) continue;
    flags.*row.flag = moved(flags.*row.flag, valueOrNull(*rows, row.column), row.rule);
  }
  context.flags = flags;
}

}  // namespace orva
