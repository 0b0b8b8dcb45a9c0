#include "wizard/catalogue/builders.h"

#include "wizard/catalogue/generated_lines.h"
#include "wizard/catalogue/lines.h"

namespace orva {
namespace {

using LinesOfKind = std::span<const CatalogueLine> (*)();
using GeneratedLines = Catalogue (*)(Connection&);

struct Builder {
  ImportKindId kind;
  LinesOfKind lines = nullptr;
  GeneratedLines generated[2] = {nullptr, nullptr};
  KindTraits traits = {};
};

constexpr Builder kBuilders[] = {
    {.kind = ImportKindId::kAcquired,
     .lines = assetLines,
     .generated = {userDefinedLines, miscellaneousMasterLines},
     .traits = {.hasModes = true, .isAssetImport = true}},
    {.kind = ImportKindId::kClosing,
     .lines = assetLines,
     .generated = {userDefinedLines, miscellaneousMasterLines},
     .traits = {.hasModes = true, .isAssetImport = true}},
    // Nothing lists what a depreciation workbook carries.
    {.kind = ImportKindId::kDepreciation},
    {.kind = ImportKindId::kDepChild, .lines = childAssetLines, .traits = {.hasModes = true}},
    {.kind = ImportKindId::kDepChildFx, .lines = childAssetLines, .traits = {.hasModes = true}},
    {.kind = ImportKindId::kCostBreakup, .lines = costBreakupLines, .traits = {.hasModes = true}},
    {.kind = ImportKindId::kUdf,
     .lines = userDefinedFieldLines,
     .generated = {userDefinedLines, nullptr},
     .traits = {.hasModes = true}},
    {.kind = ImportKindId::kSale, .lines = saleLines},
    {.kind = ImportKindId::kAmc, .lines = amcLines},
    {.kind = ImportKindId::kInsurance, .lines = insuranceLines},
    {.kind = ImportKindId::kChangeCategory, .lines = changeCategoryLines},
};

constexpr bool standInOrderOfTheirNumbers() {
  for (std::size_t index = 0; index < std::size(kBuilders); ++index) {
    if (kBuilders[index].kind != static_cast<ImportKindId>(index)) return false;
  }
  return std::size(kBuilders) == static_cast<std::size_t>(ImportKindId::kChangeCategory) + 1;
}
static_assert(standInOrderOfTheirNumbers());

const Builder& builderOf(ImportKindId kind) { return kBuilders[static_cast<std::size_t>(kind)]; }

void append(Catalogue& catalogue, Catalogue&& lines) {
  for (FieldRow& line : lines) catalogue.push_back(std::move(line));
}

}  // namespace

Catalogue buildCatalogue(const Selection& selection, const CompanyContext& company) {
  const Builder& builder = builderOf(selection.kind);
  Catalogue catalogue;
  if (builder.lines) catalogue = buildLines(builder.lines(), selection, company.flags);
  for (const GeneratedLines generated : builder.generated) {
    if (generated) append(catalogue, generated(*company.connection));
  }
  return catalogue;
}

std::vector<ListView::Column> catalogueColumns(ImportKindId kind) {
  const bool isUdf = kind == ImportKindId::kUdf;
  std::vector<ListView::Column> columns{{"Fields In ORVA", 2600},
                                        {isUdf ? "Fields Names In Excel" : "FieldNames In Excel", 1600},
                                        {"Data Type", 1300},
                                        {"Field Size", 1300},
                                        {"Requirement", 1100}};
  if (isUdf) columns.push_back({"Pos", 700});
  return columns;
}

std::vector<std::string> catalogueCells(const FieldRow& field, ImportKindId kind) {
  std::vector<std::string> cells{field.label, field.excelName, field.type, field.size,
                                 std::string(requirementText(field.requirement))};
  if (kind == ImportKindId::kUdf) cells.push_back(field.position);
  return cells;
}

KindTraits traitsOf(ImportKindId kind) { return builderOf(kind).traits; }

}  // namespace orva
