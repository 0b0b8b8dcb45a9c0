#include "startup/schema/upgrade_steps.h"

namespace orva {
namespace {

constexpr UpgradeRow kRows[] = {
    // 12. Wider columns, remarks, multiple shifts, additional rates.
    {.step = 12, .access = "alter table Reclassification1 alter column defcode text(30)"},
    {.step = 12, .access = "alter table Reclassification1 alter column OldDefCode text(30)"},
    {.step = 12, .access = "alter table Reclassification2 alter column defcode text(30)"},
    {.step = 12, .access = "alter table Reclassification2 alter column OldDefCode text(30)"},
    {.step = 12, .access = "alter table ReclassAstCat alter column defcode text(30)"},
    {.step = 12, .access = "alter table ReclassAstCat alter column OldDefCode text(30)"},
    {.step = 12, .access = "alter table Asset alter column PAssetId text(30)"},
    {.step = 12, .access = "alter table Addition alter column PAssetId text(30)"},
    {.step = 12, .access = "alter table Parameter add Users yesno"},
    {.step = 12, .access = "alter table Split alter column centrename text(255)"},
    {.step = 12, .access = "alter table Split alter column DeptName text(255)"},
    {.step = 12, .access = "alter table Parameter add DepChildCaln yesno"},
    {.step = 12, .access = "alter table addition add DepChildCaln yesno"},
    {.step = 12, .procedure = UpgradeProcedure::kRepairChildUserCodes},
    {.step = 12, .access = "alter table fadep add Remarks text(250)"},
    {.step = 12, .access = "alter table fadep1 add Remarks text(250)"},
    {.step = 12, .access = "alter table fadep2 add Remarks text(250)"},
    {.step = 12,
     .access = "create table SetDisplay (Cocd text(10), UserId text(10), FieldName text(50), DisplayName text(50), "
               "Priority number)"},
    {.step = 12, .access = "alter table Parameter add UseDefault yesno default Yes"},
    {.step = 12,
     .access = "alter table FARate add Multishiftapp yesno default No, RateDblshift currency, RateTrpshift currency"},
    {.step = 12,
     .access = "alter table FARate1 add Multishiftapp yesno default No, RateDblshift currency, "
               "RateTrpshift currency"},
    {.step = 12,
     .access = "alter table FARate2 add Multishiftapp yesno default No, RateDblshift currency, "
               "RateTrpshift currency"},
    {.step = 12,
     .access = "alter table Fadep add RateDblshift currency, DaysDblshift number, AmtDblshift currency, "
               "RateTplshift currency, DaysTplshift number, AmtTplshift currency"},
    {.step = 12,
     .access = "alter table FaDep2 add RateDblshift currency, DaysDblshift number, AmtDblshift currency, "
               "RateTplshift currency, DaysTplshift number, AmtTplshift currency"},
    {.step = 12, .access = "create table tmpShiftDetails (AssetId text(30), DoubleShift number, TripleShift number)"},
    {.step = 12,
     .access = "create table TmpShiftAstDet (AssetId text(30), SingleShiftDays number, DblShiftDays number, "
               "TplShiftDays number)"},
    {.step = 12, .access = "alter table Asset add AstFileName memo"},
    {.step = 12, .access = "alter table Addition add AstFileName memo"},
    {.step = 12, .access = "alter table Asset add FlgAddnlRate text(1) default 'N', AddnlRate currency"},
    {.step = 12, .access = "alter table Addition add FlgAddnlRate text(1) default 'N', AddnlRate currency"},
    {.step = 12, .server = "alter table Addition alter column AssetId nvarchar(30) not null"},
    {.step = 12,
     .access = "alter table Addition add constraint pk_id primary key (assetid)",
     .server = "alter table Addition add primary key (assetid)"},
    {.step = 12, .access = "alter table Itaxdep add AddnlDepFull currency, AddnlDepHalf currency"},
    {.step = 12, .access = "create table TmpAstCostBrkup (AssetId text(30), Cost currency, Amount currency)"},
    {.step = 12, .access = "alter table TmpAstCostBrkup add Status text(1) default 'N'"},
    {.step = 12, .access = "alter table Location add LocCode text(20)"},
    {.step = 12, .access = "alter table farate add Salvage currency, Life currency"},
    {.step = 12, .access = "alter table Asset add AutoCalculateRate currency"},
    {.step = 12, .access = "alter table MisData alter column MName text(255)"},

    // 13. Error tables of the bulk updates.
    {.step = 13,
     .access = "create table LEODError (AssetId text(50), LEOD date, ErrorCode text(2), ErrorDesc text(100))"},
    {.step = 13,
     .access = "create table RateMethodError (AssetId text(50), OVERRIDERATE currency, OVERRIDEMETHOD text(3), "
               "ErrorCode text(2), ErrorDesc text(100))"},
};
static_assert(isClosed(kRows, 12, 13));

}  // namespace

std::span<const UpgradeRow> upgradeSteps12To13() { return kRows; }

}  // namespace orva
