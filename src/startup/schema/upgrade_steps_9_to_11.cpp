#include "startup/schema/upgrade_steps.h"

namespace orva {
namespace {

constexpr UpgradeRow kRows[] = {
    // 9. Insurance details; write-off bases of the additional books.
    {.step = 9, .access = "alter table Insurance add Docdt date"},
    {.step = 9,
     .access = "alter table Insurance add AssetId text(30), InsFromDt date, InsUpToDt date, Amount currency, "
               "AccYear text(9)"},
    // The two kinds of database widen different columns.
    {.step = 9,
     .access = "alter table Insurance alter column insuranceName text(255)",
     .server = "alter table Insurance alter column Insurancecode nvarchar(255)"},
    {.step = 9,
     .access = "alter table FADefinition add WDV1 currency, WOPercent1 currency, WDV2 currency, WOPercent2 currency"},
    {.step = 9,
     .access = "alter table Classification add WDV1 currency, WOPercent1 currency, WDV2 currency, "
               "WOPercent2 currency"},
    {.step = 9,
     .access = "alter table SubClass add WDV1 currency, WOPercent1 currency, WDV2 currency, WOPercent2 currency"},
    {.step = 9,
     .access = "update fadefinition set wdv1=wdv, wopercent1=wopercent where wopercent1=0 or wopercent1 is null"},
    {.step = 9,
     .access = "update fadefinition set wdv2=wdv, wopercent2=wopercent where wopercent2=0 or wopercent2 is null"},
    {.step = 9,
     .access = "update Classification set wdv1=wdv, wopercent1=wopercent where wopercent1=0 or wopercent1 is null"},
    {.step = 9,
     .access = "update Classification set wdv2=wdv, wopercent2=wopercent where wopercent2=0 or wopercent2 is null"},
    {.step = 9,
     .access = "update subclass set wdv1=wdv, wopercent1=wopercent where wopercent1=0 or wopercent1 is null"},
    {.step = 9,
     .access = "update subclass set wdv2=wdv, wopercent2=wopercent where wopercent2=0 or wopercent2 is null"},

    // 10. Reclassifications by book; next identifiers and prefixes by category.
    {.step = 10, .access = "alter table reclassification drop column facode1"},
    {.step = 10, .access = "alter table reclassification drop column oldfacode1"},
    {.step = 10, .access = "alter table reclassification drop column facode2"},
    {.step = 10, .access = "alter table reclassification drop column oldfacode2"},
    {.step = 10,
     .access = "create table Reclassification1 (cocd text(10), docno text(10), docdt date, assetid text(30), "
               "oldcacode text(10), oldfacode text(10), defcode text(30), cacode text(10), facode text(10), "
               "accyear text(10), remarks text(100), OldDefCode text(30), classcode text(30), "
               "subclasscode text(30), Oldclasscode text(30), OldSubclasscode text(30), ActualAccDep currency)"},
    {.step = 10,
     .access = "create table Reclassification2 (cocd text(10), docno text(10), docdt date, assetid text(30), "
               "oldcacode text(10), oldfacode text(10), defcode text(30), cacode text(10), facode text(10), "
               "accyear text(10), remarks text(100), OldDefCode text(30), classcode text(30), "
               "subclasscode text(30), Oldclasscode text(30), OldSubclasscode text(30), ActualAccDep currency)"},
    {.step = 10,
     .access = "create table ReclassAstCat (cocd text(10), docno text(10), docdt date, assetid text(30), "
               "accyear text(10), remarks text(100), defcode text(30), classcode text(30), subclasscode text(30), "
               "OldDefCode text(30), Oldclasscode text(30), OldSubclasscode text(30))"},
    {.step = 10, .access = "alter table ReclassAstCat add facode text(10), facode1 text(10), facode2 text(10)"},
    {.step = 10, .access = "alter table Parameter add Centre yesno"},
    {.step = 10, .access = "alter table Insurance add Policyno text(20)"},
    {.step = 10, .access = "alter table FADefinition add NewAssetid long"},
    {.step = 10, .access = "alter table Classification add NewAssetid long"},
    {.step = 10, .access = "alter table SubClass add NewAssetid long"},
    {.step = 10, .access = "alter table Classification add Prefix text(10)"},
    {.step = 10, .access = "alter table SubClass add Prefix text(10)"},
    {.step = 10, .access = "alter table Parameter add ConnTimeout long"},
    {.step = 10, .access = "update parameter set conntimeout=15 where conntimeout is null "},
    {.step = 10, .access = "alter table split alter column assetid text(30)"},
    {.step = 10, .access = "alter table split alter column newassetid text(30)"},

    // 11. Blanks at the end of locations. A server refuses the "trim" of the first texts.
    {.step = 11,
     .access = "update location set mainlocation=trim(mainlocation), sublocation=trim(sublocation), "
               "physicallocation=trim(physicallocation) where right(mainlocation,1)=' ' or "
               "right(sublocation,1)=' ' or right(physicallocation,1)=' '",
     .server = "update location set mainlocation=trim(mainlocation), sublocation=trim(sublocation), "
               "physicallocation=trim(physicallocation) where right(mainlocation,1)=' ' or "
               "right(sublocation,1)=' ' or right(physicallocation,1)=' '",
     .serverVariant = "update location set mainlocation=ltrim(rtrim(mainlocation)), "
                      "sublocation=ltrim(rtrim(sublocation)), physicallocation=ltrim(rtrim(physicallocation)) "
                      "where mainlocation like '% ' or sublocation like '% ' or physicallocation like '% '"},
    {.step = 11,
     .access = "update Asset set mainlocation=trim(mainlocation), sublocation=trim(sublocation), "
               "physicallocation=trim(physicallocation) where right(mainlocation,1)=' ' or "
               "right(sublocation,1)=' ' or right(physicallocation,1)=' '",
     .server = "update Asset set mainlocation=trim(mainlocation), sublocation=trim(sublocation), "
               "physicallocation=trim(physicallocation) where right(mainlocation,1)=' ' or "
               "right(sublocation,1)=' ' or right(physicallocation,1)=' '",
     .serverVariant = "update Asset set mainlocation=ltrim(rtrim(mainlocation)), "
                      "sublocation=ltrim(rtrim(sublocation)), physicallocation=ltrim(rtrim(physicallocation)) "
                      "where mainlocation like '% ' or sublocation like '% ' or physicallocation like '% '"},
    {.step = 11,
     .access = "update Addition set mainlocation=trim(mainlocation), sublocation=trim(sublocation), "
               "physicallocation=trim(physicallocation) where right(mainlocation,1)=' ' or "
               "right(sublocation,1)=' ' or right(physicallocation,1)=' '",
     .server = "update Addition set mainlocation=trim(mainlocation), sublocation=trim(sublocation), "
               "physicallocation=trim(physicallocation) where right(mainlocation,1)=' ' or "
               "right(sublocation,1)=' ' or right(physicallocation,1)=' '",
     .serverVariant = "update Addition set mainlocation=ltrim(rtrim(mainlocation)), "
                      "sublocation=ltrim(rtrim(sublocation)), physicallocation=ltrim(rtrim(physicallocation)) "
                      "where mainlocation like '% ' or sublocation like '% ' or physicallocation like '% '"},
    {.step = 11,
     .access = "update shift set MainLocation=trim(MainLocation), subLocation=trim(subLocation), "
               "phyLocation=trim(phyLocation) where right(MainLocation,1)=' ' or right(subLocation,1)=' ' or "
               "right(phyLocation,1)=' '",
     .server = "update shift set MainLocation=trim(MainLocation), subLocation=trim(subLocation), "
               "phyLocation=trim(phyLocation) where right(MainLocation,1)=' ' or right(subLocation,1)=' ' or "
               "right(phyLocation,1)=' '",
     .serverVariant = "update shift set MainLocation=ltrim(rtrim(MainLocation)), "
                      "subLocation=ltrim(rtrim(subLocation)), phyLocation=ltrim(rtrim(phyLocation)) "
                      "where MainLocation like '% ' or subLocation like '% ' or phyLocation like '% '"},
    {.step = 11,
     .access = "update shift set oldMainLocation=trim(oldMainLocation), oldsubLocation=trim(oldsubLocation), "
               "oldphyLocation=trim(oldphyLocation) where right(oldMainLocation,1)=' ' or "
               "right(oldsubLocation,1)=' ' or right(oldphyLocation,1)=' '",
     .server = "update shift set oldMainLocation=trim(oldMainLocation), oldsubLocation=trim(oldsubLocation), "
               "oldphyLocation=trim(oldphyLocation) where right(oldMainLocation,1)=' ' or "
               "right(oldsubLocation,1)=' ' or right(oldphyLocation,1)=' '",
     .serverVariant = "update shift set oldMainLocation=ltrim(rtrim(oldMainLocation)), "
                      "oldsubLocation=ltrim(rtrim(oldsubLocation)), oldphyLocation=ltrim(rtrim(oldphyLocation)) "
                      "where oldMainLocation like '% ' or oldsubLocation like '% ' or oldphyLocation like '% '"},
};
static_assert(isClosed(kRows, 9, 11));

}  // namespace

std::span<const UpgradeRow> upgradeSteps9To11() { return kRows; }

}  // namespace orva
