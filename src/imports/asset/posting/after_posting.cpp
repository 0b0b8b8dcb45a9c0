#include "imports/asset/posting/after_posting.h"

#include <array>
#include <iterator>
#include <unordered_map>
#include <vector>

#include "imports/asset/named_values.h"

namespace orva {
namespace {

constexpr Query kWithoutLife = {"Select * From Asset where FaAge is null and LeaseDate is null"};

/// Where a life comes from, the most detailed level first; the level counts when the asset has its code.
struct LifeSource {
  std::string_view codeField;
  Query query;
};

constexpr LifeSource kLifeSources[] = {
    {"SubClassCode", {"Select AssetLife2 as Life From SubClass where SubClassCode ='{code}'"}},
    {"ClassCode", {"Select AssetLife1 as Life From Classification  where ClassCode ='{code}'"}},
    {"DefCode", {"Select AssetLife as Life From FADefinition  where DefCode ='{code}'"}},
};

constexpr Query kFillLife = {
    "update Asset set FaAge={life} where AssetId='{identifier}' and FaAge is null and  FaAge is null and LeaseDate is "
    "null"};
constexpr Query kFillLifeAndDate = {
    "update Asset set FaAge={life},LeaseDate='{lease date}' where AssetId='{identifier}' and FaAge is null and  FaAge "
    "is null and LeaseDate is null"};

/// An asset that gets a life, with its lease end date in the form of the SQL text.
struct LifeFill {
  std::string identifier;
  std::int64_t months;
  std::string leaseDate;
};

/// Lives of the categories while one fill lasts, which changes no category: many assets share a category, and
/// a company may hold very many assets without a life.
class CategoryLives {
 public:
  explicit CategoryLives(const CompanyContext& company) : company_(company) {}

  /// Life in months; nothing when no level of the asset's category has one. A level without a life leaves it to
  /// the level above.
  std::optional<std::int64_t> lifeOf(Recordset& asset) {
    for (std::size_t level = 0; level < std::size(kLifeSources); ++level) {
      const std::string code = nullToText(asset.get(kLifeSources[level].codeField));
      if (code.empty()) continue;
      const auto [known, isNew] = lives_[level].try_emplace(code);
      if (isNew) known->second = read(kLifeSources[level].query, code);
      if (known->second) return known->second;
    }
    return std::nullopt;
  }

 private:
  std::optional<std::int64_t> read(const Query& query, const std::string& code) const {
    constexpr std::int64_t kLongest = 1200;
    const auto level = company_.connection->open(composeQuery(query, company_.dialect(), NamedValues{{"code", code}}));
    const auto life = level->eof() ? std::nullopt : level->get("Life").toInteger();
    return life && *life > 0 && *life <= kLongest ? life : std::nullopt;
  }

  const CompanyContext& company_;
  std::array<std::unordered_map<std::string, std::optional<std::int64_t>>, std::size(kLifeSources)> lives_;
};

/// In the form of the SQL text; empty without a use date, and for a date that no company database can keep.
std::string leaseDateText(const std::optional<Date>& useDate, std::int64_t months) {
  if (!useDate) return {};
  const Date date = useDate->plusMonths(static_cast<int>(months));
  return isInDatabaseRange(date) ? date.toMonthDayYear() : std::string();
}

std::vector<LifeFill> assetsToFill(const CompanyContext& company) {
  std::vector<LifeFill> fills;
  CategoryLives lives(company);
  const auto assets =
      company.connection->open(composeQuery(kWithoutLife, company.dialect(), NamedValues{}), CursorKind::kForwardOnly);
  for (; !assets->eof(); assets->moveNext()) {
    const auto months = lives.lifeOf(*assets);
    if (!months) continue;
    fills.push_back({.identifier = nullToText(assets->get("Assetid")),
                     .months = *months,
                     .leaseDate = leaseDateText(assets->get("Usedate").toDate(), *months)});
  }
  return fills;
}

void store(const CompanyContext& company, const Query& statement, const LifeFill& fill) {
  company.connection->execute(composeQuery(
      statement, company.dialect(),
      NamedValues{{"life", fill.months}, {"lease date", fill.leaseDate}, {"identifier", fill.identifier}}));
}

/// A server's column of short dates ends in June 2079 and refuses what is later: then the life stays without a date.
void storeWithDate(const CompanyContext& company, const LifeFill& fill) {
  try {
    store(company, kFillLifeAndDate, fill);
  } catch (const ProviderError& error) {
    if (error.number() != provider_number::kTypeMismatch) throw;
    store(company, kFillLife, fill);
  }
}

}  // namespace

int fillLifeAndLeaseDate(const CompanyContext& company) {
  const std::vector<LifeFill> fills = assetsToFill(company);
  StoredTogether together(*company.connection);
  for (const LifeFill& fill : fills) {
    if (fill.leaseDate.empty()) {
      store(company, kFillLife, fill);
    } else {
      storeWithDate(company, fill);
    }
  }
  together.end();
  return static_cast<int>(fills.size());
}

}  // namespace orva
