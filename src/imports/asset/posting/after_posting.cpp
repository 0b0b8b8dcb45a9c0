#include "imports/asset/posting/after_posting.h"

#include <vector>

#include "imports/asset/named_values.h"

namespace orva {
namespace {

/// One clean-up statement; `isKept` names the additional book that it serves.
struct CleanUp {
  Query statement;
  bool ParameterFlags::*isKept = nullptr;
};

constexpr bool ParameterFlags::*kBook1 = &ParameterFlags::additionalBook1;
constexpr bool ParameterFlags::*kBook2 = &ParameterFlags::additionalBook2;

constexpr CleanUp kCleanUps[] = {
    {.statement = {.access = "Update asset,subclass set asset.facode1 = subclass.facode1 where asset.defcode = "
                             "subclass.defcode and asset.classcode = subclass.classcode and asset.subclasscode = "
                             "subclass.subclasscode and (asset.facode1 is null or asset.facode1 = '')",
                   .sqlServer = "Update asset set asset.facode1 = subclass.facode1 from subclass where asset.defcode = "
                                "subclass.defcode and asset.classcode = subclass.classcode and asset.subclasscode = "
                                "subclass.subclasscode and (asset.facode1 is null or asset.facode1 = '')"},
     .isKept = kBook1},
    {.statement = {.access = "Update asset,classification set asset.facode1 = classification.facode1 where "
                             "asset.defcode = classification.defcode and asset.classcode = classification.classcode "
                             "and (asset.facode1 is null or asset.facode1 = '')",
                   .sqlServer = "Update asset set asset.facode1 = classification.facode1 from classification where "
                                "asset.defcode = classification.defcode and asset.classcode = "
                                "classification.classcode and (asset.facode1 is null or asset.facode1 = '')"},
     .isKept = kBook1},
    {.statement = {.access = "Update asset,subclass set asset.facode2 = subclass.facode2 where asset.defcode = "
                             "subclass.defcode and asset.classcode = subclass.classcode and asset.subclasscode = "
                             "subclass.subclasscode and (asset.facode2 is null or asset.facode2 = '')",
                   .sqlServer = "Update asset set asset.facode2 = subclass.facode2 from subclass where asset.defcode = "
                                "subclass.defcode and asset.classcode = subclass.classcode and asset.subclasscode = "
                                "subclass.subclasscode and (asset.facode2 is null or asset.facode2 = '')"},
     .isKept = kBook2},
    {.statement = {.access = "Update asset,classification set asset.facode2 = classification.facode2 where "
                             "asset.defcode = classification.defcode and asset.classcode = classification.classcode "
                             "and (asset.facode2 is null or asset.facode2 = '')",
                   .sqlServer = "Update asset set asset.facode2 = classification.facode2 from classification where "
                                "asset.defcode = classification.defcode and asset.classcode = "
                                "classification.classcode and (asset.facode2 is null or asset.facode2 = '')"},
     .isKept = kBook2},

    {.statement =
         {.access = "Update fadep,asset set fadep.defcode = asset.defcode, fadep.classcode = asset.classcode, "
                    "fadep.subclasscode = asset.subclasscode where fadep.assetid = asset.assetid and (fadep.defcode is "
                    "null or fadep.defcode = '')",
          .sqlServer = "Update fadep set fadep.defcode = asset.defcode, fadep.classcode = asset.classcode, "
                       "fadep.subclasscode = asset.subclasscode from asset where fadep.assetid = asset.assetid and "
                       "(fadep.defcode is null or fadep.defcode = '')"}},
    {.statement = {.access =
                       "Update fadep1,asset set fadep1.defcode = asset.defcode, fadep1.classcode = asset.classcode, "
                       "fadep1.subclasscode = asset.subclasscode where fadep1.assetid = asset.assetid and "
                       "(fadep1.defcode is null or fadep1.defcode = '')",
                   .sqlServer =
                       "Update fadep1 set fadep1.defcode = asset.defcode, fadep1.classcode = asset.classcode, "
                       "fadep1.subclasscode = asset.subclasscode from asset where fadep1.assetid = asset.assetid and "
                       "(fadep1.defcode is null or fadep1.defcode = '')"},
     .isKept = kBook1},
    {.statement = {.access =
                       "Update fadep2,asset set fadep2.defcode = asset.defcode, fadep2.classcode = asset.classcode, "
                       "fadep2.subclasscode = asset.subclasscode where fadep2.assetid = asset.assetid and "
                       "(fadep2.defcode is null or fadep2.defcode = '')",
                   .sqlServer =
                       "Update fadep2 set fadep2.defcode = asset.defcode, fadep2.classcode = asset.classcode, "
                       "fadep2.subclasscode = asset.subclasscode from asset where fadep2.assetid = asset.assetid and "
                       "(fadep2.defcode is null or fadep2.defcode = '')"},
     .isKept = kBook2},

    {.statement = {.access = "Update fadep1,asset set fadep1.facode = asset.facode1 where fadep1.assetid = "
                             "asset.assetid and (fadep1.facode is null or fadep1.facode = '') and (asset.facode1 is "
                             "not null or asset.facode1 <>'')",
                   .sqlServer = "Update fadep1 set fadep1.facode = asset.facode1 from asset where fadep1.assetid = "
                                "asset.assetid and (fadep1.facode is null or fadep1.facode = '') and (asset.facode1 "
                                "is not null or asset.facode1 <>'')"},
     .isKept = kBook1},
    {.statement = {.access = "Update fadep2,asset set fadep2.facode = asset.facode2 where fadep2.assetid = "
                             "asset.assetid and (fadep2.facode is null or fadep2.facode = '') and (asset.facode2 is "
                             "not null or asset.facode2 <>'')",
                   .sqlServer = "Update fadep2 set fadep2.facode = asset.facode2 from asset where fadep2.assetid = "
                                "asset.assetid and (fadep2.facode is null or fadep2.facode = '') and (asset.facode2 "
                                "is not null or asset.facode2 <>'')"},
     .isKept = kBook2},
};

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

/// Life in months; nothing when no level of the asset's category has one.
std::optional<std::int64_t> lifeOf(const CompanyContext& company, Recordset& asset) {
  constexpr std::int64_t kLongest = 1200;
  for (const LifeSource& source : kLifeSources) {
    const Value code = asset.get(source.codeField);
    if (nullToText(code).empty()) continue;
    const auto level =
        company.connection->open(composeQuery(source.query, company.dialect(), NamedValues{{"code", code}}));
    const auto life = level->eof() ? std::nullopt : level->get("Life").toInteger();
    if (life && *life > 0 && *life <= kLongest) return life;
  }
  return std::nullopt;
}

std::vector<LifeFill> assetsToFill(const CompanyContext& company) {
  std::vector<LifeFill> fills;
  const auto assets =
      company.connection->open(composeQuery(kWithoutLife, company.dialect(), NamedValues{}), CursorKind::kForwardOnly);
  for (; !assets->eof(); assets->moveNext()) {
    const auto months = lifeOf(company, *assets);
    if (!months) continue;
    const auto useDate = assets->get("Usedate").toDate();
    fills.push_back({.identifier = nullToText(assets->get("Assetid")),
                     .months = *months,
                     .leaseDate = useDate ? useDate->plusMonths(static_cast<int>(*months)).toMonthDayYear() : ""});
  }
  return fills;
}

}  // namespace

void cleanUpCodes(const CompanyContext& company) {
  for (const CleanUp& cleanUp : kCleanUps) {
    if (cleanUp.isKept && !(company.flags.*cleanUp.isKept)) continue;
    company.connection->execute(cleanUp.statement.text(company.dialect()));
  }
}

int fillLifeAndLeaseDate(const CompanyContext& company) {
  const std::vector<LifeFill> fills = assetsToFill(company);
  for (const LifeFill& fill : fills) {
    const Query& statement = fill.leaseDate.empty() ? kFillLife : kFillLifeAndDate;
    company.connection->execute(composeQuery(
        statement, company.dialect(),
        NamedValues{{"life", fill.months}, {"lease date", fill.leaseDate}, {"identifier", fill.identifier}}));
  }
  return static_cast<int>(fills.size());
}

}  // namespace orva
