#include "startup/schema/upgrade_steps.h"

namespace orva {
namespace {

constexpr UpgradeRow kRows[] = {
    // 1. Category and reclassification tables.
    {.step = 1,
     .access = "alter table Classification add FaCode text(10), BlockCode text(10), WDV currency, WOPercent currency"},
    {.step = 1,
     .access = "create table Reclassification (cocd text(10), docno text(10), docdt date, assetid text(30), "
               "oldcacode text(10), oldfacode text(10), defcode text(10), cacode text(10), facode text(10), "
               "accyear text(10), remarks text(100))"},
    {.step = 1, .access = "alter table Reclassification add OldDefCode text(10)"},
    {.step = 1,
     .access = "alter table Reclassification add classcode text(30), subclasscode text(30), Oldclasscode text(30), "
               "OldSubclasscode text(30)"},
    {.step = 1, .access = "alter table Reclassification add ActualAccDep currency"},

    // 2. Assets, sold assets, depreciation and transfers.
    {.step = 2, .access = "alter table Asset add BackDated yesno"},
    {.step = 2, .access = "alter table Asset add PAssetId text(20)"},
    {.step = 2, .access = "alter table Asset add UsedBY text(50)"},
    {.step = 2, .access = "alter table Asset add SubClasscode text(30)"},
    {.step = 2,
     .access = "alter table Asset add PhyID text(50), AccDep currency, DollorRate currency, DollorCost currency"},
    // Older releases added this column beside the four and dropped it at once; adding it first
    // would rewrite a large table at every opening for nothing.
    {.step = 2, .access = "alter table Asset drop column Opening"},
    {.step = 2, .access = "alter table Asset add AcquiredAs text(15), Shiftedfrom text(50)"},
    {.step = 2, .access = "alter table Asset add LocationId text(10)"},
    {.step = 2, .access = "alter table Asset add Batch text(30), Qty number"},
    {.step = 2, .access = "alter table Asset add Centrecode text(30)"},
    {.step = 2, .server = "alter table Asset alter column FcLoan bit Null"},
    {.step = 2, .server = "alter table Asset alter column Backdated bit Null"},
    {.step = 2, .access = "alter table AssetOut add Batch text(30)"},
    {.step = 2, .access = "alter table Fadep add oldfacode text(10), cost currency, reclass text(1)"},
    {.step = 2, .access = "alter table Fadep add BackDated yesno"},
    {.step = 2, .access = "alter table Fadep add Flag text(3)"},
    {.step = 2, .access = "alter table Fadep add Acquired yesno"},
    {.step = 2, .access = "alter table Fadep add ActualDep currency"},
    {.step = 2, .access = "alter table Fadep add DefCode text(30), Classcode text(30), SubClassCode text(30)"},
    {.step = 2, .access = "alter table Fadep add olddefcode text(30), oldclasscode text(30), oldsubclasscode text(30)"},
    {.step = 2, .server = "alter table Fadep alter column Backdated bit Null"},
    {.step = 2, .server = "alter table Fadep alter column Acquired bit Null"},
    {.step = 2, .access = "alter table Cadep add oldCacode text(10), cost currency, reclass text(1)"},
    {.step = 2, .access = "alter table Cadep add Backdated yesno"},
    {.step = 2, .access = "alter table ItaxDep add SaleValue currency"},
    {.step = 2, .access = "alter table Shift drop column srno"},
    {.step = 2, .access = "alter table Shift add Dept text(30), OldDept text(30)"},
    {.step = 2, .access = "alter table Shift add UseDateShift date, PAssetID text(50)"},
    {.step = 2, .access = "alter table Shift add LocationId text(10)"},
    {.step = 2,
     .access = "alter table Shift add mainlocation text(30), sublocation text(30), phylocation text(30), "
               "oldmainlocation text(30), oldsublocation text(30), oldphylocation text(30), cost currency, "
               "accdep currency, tfrout yesno, sameloc yesno"},
    {.step = 2, .access = "alter table Shift add OldLocId text(10)"},
    {.step = 2,
     .access = "alter table Shift add NewCostcentre text(30), OldCostCentre text(30), NewUser text(50), "
               "OldUser text(50)"},
    {.step = 2, .access = "alter table Shift add Tfrtype text(10)"},

    // 3. The company's parameters.
    {.step = 3, .access = "create table Parameter (AutoAssetid yesno, RegionCode text(2))"},
    {.step = 3,
     .access = "alter table Parameter add cost1 text(20), cost2 text(20), cost3 text(20), cost4 text(20), "
               "cost5 text(20), cost6 text(20), cost7 text(20), cost8 text(20), cost9 text(20), cost10 text(20)"},
    {.step = 3, .access = "alter table Parameter add Validation yesno"},
    {.step = 3, .access = "alter table Parameter add USGAAP yesno"},
    {.step = 3, .access = "alter table Parameter add BreakUp yesno, Modvat yesno, Excel yesno"},
    {.step = 3, .access = "alter table Parameter add AccMethod text(30)"},
    {.step = 3, .access = "alter table Parameter add Days yesno"},
    {.step = 3, .access = "alter table Parameter add TfrDay yesno"},
    {.step = 3, .access = "alter table Parameter add FACurrency text(30)"},
    {.step = 3, .access = "alter table Parameter add Digits currency"},
    {.step = 3, .access = "alter table Parameter add FlgUser text(1)"},
    {.step = 3, .access = "alter table Parameter add FARate1 yesno, FARate2 yesno"},
    {.step = 3,
     .access = "alter table Parameter add DepCalPeriod text(10), DepPurIncl text(10), DepSaleIncl text(10), "
               "DepTfrIncl text(10)"},
    {.step = 3, .procedure = UpgradeProcedure::kFillParameterRow},
    {.step = 3, .procedure = UpgradeProcedure::kSwitchParametersOn},
};
static_assert(isClosed(kRows, 1, 3));

}  // namespace

std::span<const UpgradeRow> upgradeSteps1To3() { return kRows; }

}  // namespace orva
