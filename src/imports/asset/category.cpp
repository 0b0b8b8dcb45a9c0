#include "imports/asset/category.h"

#include "imports/asset/named_values.h"

namespace orva {
namespace {

/// Where a level stands. The queries take the codes of the levels above.
struct LevelTable {
  std::string_view codeColumn;
  std::string_view descriptionColumn;
  Query byDescription;
  Query byCode;
};

constexpr LevelTable kLevels[] = {
    {.codeColumn = "defcode",
     .descriptionColumn = "description",
     .byDescription = {"Select * from Fadefinition where {upper}(description) ='{description}'"},
     .byCode = {"select * from Fadefinition where defcode ='{code}'"}},
    {.codeColumn = "classcode",
     .descriptionColumn = "classdesc",
     .byDescription =
         {"Select * from classification where {upper}(classdesc) ='{description}' and defcode='{level I}'"},
     .byCode = {"select * from classification where defcode ='{level I}' and classcode ='{code}'"}},
    {.codeColumn = "subclasscode",
     .descriptionColumn = "subClassdesc",
     .byDescription =
         {"Select * from Subclass where {upper}(subClassdesc) ='{description}' and defcode='{level I}' and "
          "classcode='{level II}'"},
     .byCode = {"select * from subclass where defcode ='{level I}' and classcode ='{level II}' and "
                "subclasscode ='{code}'"}},
};

/// Rates of the category's book code, per level; level III before level II before level I.
struct LevelRate {
  CategoryDepth depth;
  Query query;
};

constexpr LevelRate kRates[] = {
    {CategoryDepth::kThree,
     {"select * from FARate where FACode in (select Distinct FACode from SubClass where DefCode= '{level I}' and "
      "SubClasscode='{level III}') and AccYear ='{year}' and Cocd ='{company}'"}},
    {CategoryDepth::kTwo,
     {"select * from FARate where FACode in (select Distinct FACode from Classification where DefCode= '{level I}' and "
      "Classcode='{level II}') and AccYear ='{year}' and Cocd ='{company}'"}},
    {CategoryDepth::kOne,
     {"select * from FARate where FACode in (select Distinct FACode from FADefinition where DefCode= '{level I}') and "
      "AccYear ='{year}' and Cocd ='{company}'"}},
};

constexpr Query kTwoDescriptions = {
    "SELECT F.Description, C.ClassDesc,'' as subclassDesc  FROM Classification as C INNER JOIN FADefinition F ON "
    "C.Defcode = F.DefCode where C.DefCode='{level I}' and C.Classcode='{level II}'"};
constexpr Query kThreeDescriptions = {
    "SELECT F.Description, C.ClassDesc, S.subclassDesc FROM (SubClass as S INNER JOIN Classification as C ON "
    "S.classcode = C.Classcode) INNER JOIN FADefinition as F ON S.defcode = F.DefCode where S.DefCode ='{level I}' and "
    "S.Classcode ='{level II}' and S.Subclasscode= '{level III}'"};

const LevelTable& tableOf(CategoryDepth depth) { return kLevels[static_cast<std::size_t>(depth)]; }

std::unique_ptr<Recordset> open(const ImportRun& run, const Query& query, const QueryArguments& arguments) {
  return run.connection().open(composeQuery(query, run.dialect(), arguments));
}

BookCodes readBookCodes(Recordset& row) {
  return {.books = nullToText(row.get("FACode")),
          .additional1 = nullToText(row.get("Facode1")),
          .additional2 = nullToText(row.get("Facode2")),
          .incomeTax = nullToText(row.get("BlockCode"))};
}

CategoryLevel firstRow(const ImportRun& run, CategoryDepth depth, const Query& query, const QueryArguments& values) {
  const auto row = open(run, query, values);
  return row->eof() ? CategoryLevel() : levelOf(*row, depth);
}

NamedValues codesOf(const AssetCategory& category) {
  return {{"level I", category.codeOf(CategoryDepth::kOne)},
          {"level II", category.codeOf(CategoryDepth::kTwo)},
          {"level III", category.codeOf(CategoryDepth::kThree)}};
}

void overlay(std::string& code, const std::string& moreDetailed) {
  if (!moreDetailed.empty()) code = moreDetailed;
}

}  // namespace

CategoryLevel levelOf(Recordset& row, CategoryDepth depth) {
  const LevelTable& table = tableOf(depth);
  CategoryLevel level{.code = nullToText(row.get(table.codeColumn)),
                      .description = nullToText(row.get(table.descriptionColumn)),
                      .prefix = nullToText(row.get("Prefix")),
                      .bookCodes = readBookCodes(row),
                      .writeOffPercent = row.get("WOPercent").toCurrency().value_or(Currency())};
  if (depth == CategoryDepth::kOne) {
    level.leaseHold = row.get("blnLeaseHold").toBoolean();
    level.withoutSalvage = level.leaseHold || row.get("CostSalvage").toBoolean();
  }
  return level;
}

const std::string& AssetCategory::deepestCode() const {
  for (std::size_t depth = levels.size() - 1; depth > 0; --depth) {
    if (levels[depth].isKnown()) return levels[depth].code;
  }
  return levels[0].code;
}

BookCodes AssetCategory::bookCodes() const {
  BookCodes codes;
  for (const CategoryLevel& level : levels) {
    overlay(codes.books, level.bookCodes.books);
    overlay(codes.additional1, level.bookCodes.additional1);
    overlay(codes.additional2, level.bookCodes.additional2);
    overlay(codes.incomeTax, level.bookCodes.incomeTax);
  }
  return codes;
}

Currency AssetCategory::writeOffPercent() const {
  Currency percent;
  for (const CategoryLevel& level : levels) {
    if (level.writeOffPercent > Currency()) percent = level.writeOffPercent;
  }
  return percent;
}

CategoryLevel findLevel(const ImportRun& run, const AssetCategory& category, CategoryDepth depth,
                        std::string_view description) {
  return firstRow(run, depth, tableOf(depth).byDescription,
                  NamedValues{{"description", description},
                              {"level I", category.codeOf(CategoryDepth::kOne)},
                              {"level II", category.codeOf(CategoryDepth::kTwo)}});
}

CategoryLevel readLevel(const ImportRun& run, const AssetCategory& category, CategoryDepth depth,
                        std::string_view code) {
  if (code.empty()) return {};
  return firstRow(run, depth, tableOf(depth).byCode,
                  NamedValues{{"code", code},
                              {"level I", category.codeOf(CategoryDepth::kOne)},
                              {"level II", category.codeOf(CategoryDepth::kTwo)}});
}

std::string categoryDescriptions(const ImportRun& run, const AssetCategory& category) {
  const bool hasThree = category.level(CategoryDepth::kThree).isKnown();
  const auto row = open(run, hasThree ? kThreeDescriptions : kTwoDescriptions, codesOf(category));
  if (row->eof()) return category.level(CategoryDepth::kOne).description;
  return nullToText(row->get("Description")) + "-" + nullToText(row->get("ClassDesc")) + "-" +
         nullToText(row->get("subclassDesc"));
}

std::optional<DepreciationRate> depreciationRate(const ImportRun& run, const AssetCategory& category,
                                                 std::string_view accountingYear) {
  for (const LevelRate& level : kRates) {
    if (!category.level(level.depth).isKnown()) continue;
    const auto row = open(run, level.query,
                          NamedValues{{"level I", category.codeOf(CategoryDepth::kOne)},
                                      {"level II", category.codeOf(CategoryDepth::kTwo)},
                                      {"level III", category.codeOf(CategoryDepth::kThree)},
                                      {"year", accountingYear},
                                      {"company", run.company.companyCode}});
    if (row->eof()) continue;
    return DepreciationRate{.method = nullToText(row->get("Method")),
                            .rate = row->get("Rate").toCurrency().value_or(Currency())};
  }
  return std::nullopt;
}

}  // namespace orva
