#include "platform/odbc/diagnostics.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

#include "platform/odbc/utf16.h"
#include "platform/values/text.h"

namespace orva::odbc {
namespace {

constexpr auto kPermissionDenied = static_cast<std::int32_t>(0x80040E09);
constexpr auto kTimeOut = static_cast<std::int32_t>(0x80040E31);

struct NativeRow {
  std::int32_t native;
  std::int32_t number;
};

constexpr NativeRow kNatives[] = {
    {102, provider_number::kSyntaxOrExists},   // syntax error
    {156, provider_number::kSyntaxOrExists},   // syntax error near a keyword
    {170, provider_number::kSyntaxOrExists},   // syntax error in a line
    {207, provider_number::kSyntaxOrExists},   // no such column
    {208, provider_number::kNoSuchTable},      // no such table
    {229, kPermissionDenied},                  // permission denied
    {241, provider_number::kTypeMismatch},     // text that is no date
    {242, provider_number::kTypeMismatch},     // date out of range
    {245, provider_number::kTypeMismatch},     // text that is no number
    {296, provider_number::kTypeMismatch},     // text that is no short date, older servers
    {298, provider_number::kTypeMismatch},     // date that is no short date, older servers
    {515, provider_number::kIntegrity},        // null in a required column
    {547, provider_number::kIntegrity},        // foreign key or check
    {911, provider_number::kUnspecified},      // no such database
    {2601, provider_number::kUnspecified},     // duplicate in a unique index
    {2627, provider_number::kUnspecified},     // duplicate key
    {2628, provider_number::kDataOverflow},    // text too long
    {2705, provider_number::kSyntaxOrExists},  // column exists
    {2714, provider_number::kSyntaxOrExists},  // table exists
    {3701, provider_number::kNoSuchTable},     // drop of a missing table
    {4060, provider_number::kUnspecified},     // no such database at login
    {8115, provider_number::kDataOverflow},    // number too large
    {8152, provider_number::kDataOverflow},    // text too long, older servers
    {18456, provider_number::kLoginFailed},    // login failed
    {20009, provider_number::kUnspecified},    // no server
};

struct StateRow {
  std::string_view beginning;
  std::int32_t number;
};

constexpr StateRow kStates[] = {
    {"HYT0", kTimeOut},
    {"23", provider_number::kIntegrity},
    {"22001", provider_number::kDataOverflow},
    {"22003", provider_number::kDataOverflow},
    {"22007", provider_number::kTypeMismatch},
    {"22018", provider_number::kTypeMismatch},
    {"42S02", provider_number::kNoSuchTable},
    {"08", provider_number::kUnspecified},
    {"28000", provider_number::kLoginFailed},
    // Faults of the driver manager: no such driver, no such data source.
    {"01", provider_number::kUnspecified},
    {"IM", provider_number::kUnspecified},
};

/// What the user is told in front of the server's own words where these say too little.
struct ClearText {
  std::int32_t native;
  std::string_view text;
};

constexpr ClearText kClearTexts[] = {
    {1105, "The database has no room left on the server. "},
    {9002, "The database's log on the server is full. "},
    {1205, "Another user was changing the same rows, and the server ended this statement; nothing of it was stored. "},
    {1222, "Another user holds these rows. "},
};

const NativeRow* rowOf(std::int32_t native) {
  const auto* found = std::ranges::find(kNatives, native, &NativeRow::native);
  return found == std::end(kNatives) ? nullptr : found;
}

const StateRow* rowOf(std::string_view state) {
  const auto* found =
      std::ranges::find_if(kStates, [&](const StateRow& row) { return state.starts_with(row.beginning); });
  return found == std::end(kStates) ? nullptr : found;
}

bool isWarning(const DiagnosticRecord& record) { return record.state.starts_with("01"); }

/// "[Driver][SQL Server]Text" without the names.
std::string_view withoutNames(std::string_view text) {
  while (text.starts_with('[') && text.find(']') != std::string_view::npos) text.remove_prefix(text.find(']') + 1);
  return trimSpace(text);
}

std::string describe(const DiagnosticRecord& record) {
  std::string text;
  const auto* clear = std::ranges::find(kClearTexts, record.native, &ClearText::native);
  if (clear != std::end(kClearTexts)) text = clear->text;
  return text + std::string(withoutNames(record.text));
}

}  // namespace

std::vector<DiagnosticRecord> readDiagnostics(SQLSMALLINT handleType, SQLHANDLE handle) {
  std::vector<DiagnosticRecord> records;
  for (SQLSMALLINT number = 1;; ++number) {
    std::array<char16_t, 6> state{};
    std::array<char16_t, 1024> text{};
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    const SQLRETURN done =
        SQLGetDiagRecW(handleType, handle, number, reinterpret_cast<SQLWCHAR*>(state.data()), &native,
                       reinterpret_cast<SQLWCHAR*>(text.data()), static_cast<SQLSMALLINT>(text.size()), &length);
    if (!SQL_SUCCEEDED(done)) return records;
    records.push_back({toUtf8(state.data()), native, toUtf8(text.data())});
  }
}

ProviderError providerError(std::span<const DiagnosticRecord> records) {
  for (const DiagnosticRecord& record : records) {
    if (const NativeRow* row = rowOf(record.native)) return {row->number, describe(record)};
  }
  const auto fault = std::ranges::find_if_not(records, isWarning);
  const auto chosen = fault == records.end() ? records.begin() : fault;
  if (chosen == records.end()) return {provider_number::kUnspecified, "The database driver failed without a reason."};
  const StateRow* row = rowOf(chosen->state);
  return {row ? row->number : provider_number::kSyntaxOrExists, describe(*chosen)};
}

bool tellsLostConnection(std::span<const DiagnosticRecord> records) {
  return std::ranges::any_of(records, [](const DiagnosticRecord& record) {
    return record.state == "08S01" || record.state == "08003" || record.state == "08007";
  });
}

}  // namespace orva::odbc
