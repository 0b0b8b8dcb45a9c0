#include "startup/schema/upgrade_steps.h"

namespace orva {
namespace {

constexpr UpgradeRow kRows[] = {
    // 4. Child assets, level-I categories, the company's branch.
    {.step = 4, .access = "drop table AddntoAsset"},
    {.step = 4,
     .access = "create table Addition (Cocd text(10), DocNo text(30), AssetId text(30), Desc1 memo, "
               "Blockcode text(10), BlockRate currency, Cacode text(10), Carate currency, Farate currency, "
               "Facode text(10), MainLocation text(30), SubLocation text(30), PhysicalLocation text(30), "
               "DeptCode text(10), Ownership text(30), Vendorcode text(10), Docdt date, UseDate date, "
               "WarrantyEndDt date, PONo text(30), PODt date, PartyDocNo text(30), PartyDocDt date, FCLoan yesno, "
               "FCLoanAmt currency, FCLoanRate currency, FCLoanCurrency text(50), FCLoanRupees currency, "
               "Remarks memo, Cost currency, Modvat currency, Finyear text(9), Accyear text(9), DefCode text(10), "
               "ClassCode text(30), BackDated yesno, PAssetId text(20))"},
    {.step = 4, .access = "alter table Addition add SubClasscode text(10)"},
    {.step = 4, .access = "alter table Addition add UsedBY text(50)"},
    {.step = 4,
     .access = "alter table Addition add PhyId text(50), AccDep currency, DollorRate currency, dollorCost currency"},
    {.step = 4, .access = "alter table Addition add Shiftedfrom text(50)"},
    {.step = 4, .access = "alter table Addition add LocationId text(10)"},
    {.step = 4, .access = "alter table Addition add Batch text(30), Qty number"},
    {.step = 4, .access = "alter table Addition add Centrecode text(30)"},
    {.step = 4, .access = "alter table Addition add Acquiredas text(15)"},
    {.step = 4, .server = "alter table Addition alter column FCLoan bit Null"},
    {.step = 4, .server = "alter table Addition alter column Backdated bit Null"},
    {.step = 4, .access = "alter table FADefinition add WDV currency"},
    {.step = 4, .access = "alter table FADefinition add FADesc text(255), sortOrder number"},
    {.step = 4, .access = "alter table FADefinition add WOPercent currency"},
    {.step = 4, .access = "alter table FADefinition add WDVDep yesno, WDVDate date"},
    {.step = 4, .access = "alter table Company add Branch text(50)"},

    // 5. Level-III categories and the smaller masters.
    {.step = 5, .procedure = UpgradeProcedure::kProbeCostBreakup},
    {.step = 5,
     .access = "create table SubClass (defcode text(50), classcode text(50), subclasscode text(50), "
               "subclassDesc text(100))"},
    {.step = 5,
     .access = "alter table SubClass add FaCode text(10), BlockCode text(10), WDV currency, "
               "WOPercent currency"},
    {.step = 5, .access = "create table Schedule (RecordId number, FADesc text(255), SortOrder number)"},
    {.step = 5, .access = "create table Costcentre (CentreCode text(30), CentreName text(255))"},
    {.step = 5,
     .access = "create table Split (cocd text(10), docno text(20), docdt date, AssetId text(20), descr memo, "
               "cost currency, newAssetID text(20))"},
    {.step = 5, .access = "alter table Split add Qty currency"},
    {.step = 5,
     .access = "alter table Split add MainLocation text(30), SubLocation text(30), PhyLocation text(30), "
               "Recordid text(10), DeptCode text(10), DeptName text(30), User1 text(50), CentreCode text(10), "
               "CentreName text(255)"},
    {.step = 5,
     .access = "create table SplitOriginal (Cocd text(10), DocNo text(30), AssetId text(30), Desc1 memo, "
               "Blockcode text(10), BlockRate currency, Cacode text(10), Carate currency, Farate currency, "
               "Facode text(10), MainLocation text(30), SubLocation text(30), PhysicalLocation text(30), "
               "DeptCode text(10), Ownership text(30), Vendorcode text(10), Docdt date, UseDate date, "
               "WarrantyEndDt date, PONo text(30), PODt date, PartyDocNo text(30), PartyDocDt date, FCLoan yesno, "
               "FCLoanAmt currency, FCLoanRate currency, FCLoanCurrency text(50), FCLoanRupees currency, "
               "Remarks memo, Cost currency, Modvat currency, Finyear text(9), Accyear text(9), DefCode text(30), "
               "ClassCode text(30), BackDated yesno, PAssetId text(30))"},
    {.step = 5, .access = "alter table SplitOriginal add SubClasscode text(10)"},
    {.step = 5, .access = "alter table SplitOriginal add UsedBY text(50)"},
    // The server keeps the two dollar amounts of a split as text.
    {.step = 5,
     .access = "alter table SplitOriginal add PhyId text(50), AccDep currency, DollorRate currency, "
               "DollorCost currency",
     .server = "alter table SplitOriginal add PhyId nvarchar(50), AccDep money, DollorRate nvarchar, "
               "DollorCost nvarchar"},
    {.step = 5, .access = "alter table SplitOriginal add Shiftedfrom text(50)"},
    {.step = 5, .access = "alter table SplitOriginal add LocationId text(10)"},
    {.step = 5, .access = "alter table SplitOriginal add Batch text(30), Qty currency"},
    {.step = 5, .access = "alter table SplitOriginal add Centrecode text(30)"},
    {.step = 5, .access = "alter table SplitOriginal add Acquiredas text(15)"},
    {.step = 5,
     .access = "create table ReclassProsp (cocd text(10), docno text(10), docdt date, assetid text(30), "
               "oldcacode text(10), oldfacode text(10), defcode text(10), cacode text(10), facode text(10), "
               "accyear text(10), remarks text(100))"},
    {.step = 5, .access = "alter table ReclassProsp add OldDefCode text(10)"},
    {.step = 5,
     .access = "alter table ReclassProsp add classcode text(30), subclasscode text(30), Oldclasscode text(30), "
               "OldSubclasscode text(30)"},
    {.step = 5,
     .access = "create table UDFields (UDF1 text(30), UDF2 text(30), UDF3 text(30), UDF4 text(30), UDF5 text(30), "
               "UDF6 text(30), UDF7 text(30), UDF8 text(30), UDF9 text(30), UDF10 text(30), UDF11 text(30), "
               "UDF12 text(30), UDF13 text(30), UDF14 text(30), UDF15 text(30))"},
    {.step = 5,
     .access = "create table UDValues (Assetid text(30), UDV1 text(255), UDV2 text(255), UDV3 text(255), "
               "UDV4 text(255), UDV5 text(255), UDV6 text(255), UDV7 text(255), UDV8 text(255), UDV9 text(255), "
               "UDV10 text(255), UDV11 date, UDV12 date, UDV13 date, UDV14 date, UDV15 date)"},
    // The server's user codes are shorter.
    {.step = 5,
     .access = "create table Users (Usedby text(50) constraint pk_id primary key, Username text(50), "
               "add1 text(255), add2 text(255), add3 text(255), City text(50), Pin text(6))",
     .server = "create table Users (Usedby nvarchar(10) primary key, Username nvarchar(50), add1 nvarchar(255), "
               "add2 nvarchar(255), add3 nvarchar(255), City nvarchar(50), Pin nvarchar(6))"},
    {.step = 5, .access = "create index Usedby on Users (Usedby)"},

    // 6. User names in transactions become user codes. The first text of each row is the one
    // that older releases sent to both kinds of database; a server refuses its "trim".
    {.step = 6,
     .access = "update asset set usedby=null where trim(usedby)=''",
     .server = "update asset set usedby=null where trim(usedby)=''",
     .serverVariant = "update asset set usedby=null where ltrim(rtrim(usedby))=''"},
    {.step = 6,
     .access = "update shift set olduser=null where trim(olduser)=''",
     .server = "update shift set olduser=null where trim(olduser)=''",
     .serverVariant = "update shift set olduser=null where ltrim(rtrim(olduser))=''"},
    {.step = 6,
     .access = "update shift set newuser=null where trim(newuser)=''",
     .server = "update shift set newuser=null where trim(newuser)=''",
     .serverVariant = "update shift set newuser=null where ltrim(rtrim(newuser))=''"},
    {.step = 6,
     .access = "update split set user1=null where trim(user1)=''",
     .server = "update split set user1=null where trim(user1)=''",
     .serverVariant = "update split set user1=null where ltrim(rtrim(user1))=''"},
    {.step = 6, .procedure = UpgradeProcedure::kRepairUserCodesOnce},
};
static_assert(isClosed(kRows, 4, 6));

}  // namespace

std::span<const UpgradeRow> upgradeSteps4To6() { return kRows; }

}  // namespace orva
