#include "imports/asset/identifiers.h"

#include "imports/asset/named_values.h"
#include "platform/values/numeric_text.h"
#include "platform/values/text.h"

namespace orva {
namespace {

/// One way to find the highest identifier of a prefix. The server's four-digit form has no condition
/// on the length, so longer identifiers compete there.
struct IdentifierQuery {
  int digits;
  bool prefixIsEmpty;
  Query query;
};

constexpr std::string_view kServerFour =
    "Select assetid from asset where substring ( asset.assetid  , 1, len('{P}')) = '{P}' and isnumeric(substring( "
    "asset.assetid, 1 +  len('{P}') , 4 )) = 1 and PAssetId is Null order by assetid desc";
constexpr Query kFive = {
    .access =
        "Select assetid from asset where Mid (  asset.assetid  , 1, len('{P}')) = '{P}' and "
        "len(asset.assetid)=len('{P}') + 5  and val(Mid ( asset.assetid, 1 +  len('{P}') , 5 )) > 0 and PAssetId "
        "is Null order by assetid desc",
    .sqlServer =
        "Select assetid from asset where substring ( asset.assetid  , 1, len('{P}')) = '{P}' and "
        "len(asset.assetid)=len('{P}') + 5  and convert(int, right ( asset.assetid, 5 )) > 0 and PAssetId is "
        "Null order by assetid desc"};

constexpr IdentifierQuery kIdentifierQueries[] = {
    {.digits = 4,
     .prefixIsEmpty = false,
     .query = {.access = "Select assetid from asset where Mid (  asset.assetid  , 1, len('{P}')) = '{P}' and "
                         "len(asset.assetid)=len('{P}') + 4  and val(Mid ( asset.assetid, 1 +  len('{P}') , 4 )) > 0 "
                         "and PAssetId is Null order by assetid desc",
               .sqlServer = kServerFour}},
    {.digits = 4,
     .prefixIsEmpty = true,
     .query = {.access = "Select max(val(assetid)) as assetid from asset where  mid( asset.assetid, 1, len('{P}')) = "
                         "'{P}' and val(mid( asset.assetid, 1 +  len('{P}') , 4 )) > 0 and PAssetId is Null ",
               .sqlServer = kServerFour}},
    {.digits = 5, .prefixIsEmpty = false, .query = kFive},
    {.digits = 5, .prefixIsEmpty = true, .query = kFive},
};

constexpr Query kParameter = {"Select * from Parameter "};
constexpr Query kClassifications = {"Select * from classification where  defcode ='{level I}' order by classcode desc"};
constexpr Query kSubclasses = {
    "Select * from subclass where defcode ='{level I}' and classcode='{level II}' order by subclasscode desc"};

const Query& identifierQuery(int digits, bool prefixIsEmpty) {
  for (const IdentifierQuery& candidate : kIdentifierQueries) {
    if (candidate.digits == digits && candidate.prefixIsEmpty == prefixIsEmpty) return candidate.query;
  }
  return kFive;
}

/// The first row of a look-up; only that row is fetched.
std::string firstValue(const ImportRun& run, const Query& query, const QueryArguments& arguments,
                       std::string_view column) {
  const auto rows = run.connection().open(composeQuery(query, run.dialect(), arguments), CursorKind::kFirstRow);
  return rows->eof() ? std::string() : nullToText(rows->get(column));
}

/// One more than the number at the start of `text`; 1 when there is none that can be counted on.
long long numberAfter(std::string_view text) {
  constexpr double kLargest = 1e15;
  const double number = val(text);
  return number > 0 && number < kLargest ? static_cast<long long>(number) + 1 : 1;
}

/// Codes of a category level: the code above, "-" and two digits.
std::string nextLevelCode(std::string_view above, const std::string& highest) {
  constexpr std::size_t kDigits = 2;
  const std::string tail = highest.size() < kDigits ? highest : highest.substr(highest.size() - kDigits);
  return std::string(above) + "-" + zeroPadded(numberAfter(tail), kDigits);
}

}  // namespace

Numbering readNumbering(const ImportRun& run) {
  const auto row = run.connection().open(composeQuery(kParameter, run.dialect(), NamedValues{}));
  if (row->eof()) return {};
  return {.regionCode = nullToText(row->get("RegionCode")),
          .digits = row->get("Digits").toCurrency() == Currency::fromWhole(4) ? 4 : 5};
}

std::string categoryPrefix(const Numbering& numbering, const AssetCategory& category) {
  std::string prefix = numbering.regionCode;
  for (const CategoryLevel& level : category.levels) {
    if (level.prefix.empty()) continue;
    if (!prefix.empty()) prefix += '\\';
    prefix += level.prefix;
  }
  return prefix;
}

std::string nextAssetIdentifier(const ImportRun& run, std::string_view prefix, int digits) {
  const std::string highest =
      firstValue(run, identifierQuery(digits, prefix.empty()), NamedValues{{"P", prefix}}, "assetid");
  const std::string number = highest.size() > prefix.size() ? highest.substr(prefix.size()) : std::string();
  return std::string(prefix) + zeroPadded(numberAfter(number), digits);
}

std::string nextAssetIdentifier(const ImportRun& run, const AssetCategory& category) {
  const Numbering numbering = readNumbering(run);
  return nextAssetIdentifier(run, categoryPrefix(numbering, category), numbering.digits);
}

std::string nextClassificationCode(const ImportRun& run, std::string_view levelOne) {
  return nextLevelCode(levelOne, firstValue(run, kClassifications, NamedValues{{"level I", levelOne}}, "classcode"));
}

std::string nextSubclassCode(const ImportRun& run, std::string_view levelOne, std::string_view levelTwo) {
  return nextLevelCode(
      levelTwo,
      firstValue(run, kSubclasses, NamedValues{{"level I", levelOne}, {"level II", levelTwo}}, "subclasscode"));
}

}  // namespace orva
