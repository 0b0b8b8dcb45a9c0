#include "startup/schema/upgrade_steps.h"

namespace orva {
namespace {

constexpr UpgradeRow kRows[] = {
    // 7. Additional books. On a server a key's name may stand only once in a database and its
    // columns must not be nullable: there the keys carry no name.
    {.step = 7,
     .access = "create table FARate1 (Cocd text(10), FACode text(10), [Desc] text(100), Method text(3), "
               "Rate currency, Accyear text(9))"},
    {.step = 7, .access = "create index facode on FARate1 (Facode)"},
    {.step = 7, .server = "alter table FARate1 alter column FACode nvarchar(10) not null"},
    {.step = 7, .server = "alter table FARate1 alter column Accyear nvarchar(9) not null"},
    {.step = 7,
     .access = "alter table FARate1 add constraint pk_id primary key (Facode, Accyear)",
     .server = "alter table FARate1 add primary key (Facode, Accyear)"},
    {.step = 7,
     .access = "create table FARate2 (Cocd text(10), FACode text(10), [Desc] text(100), Method text(3), "
               "Rate currency, Accyear text(9))"},
    {.step = 7, .access = "create index facode on FARate2 (Facode)"},
    {.step = 7, .server = "alter table FARate2 alter column FACode nvarchar(10) not null"},
    {.step = 7, .server = "alter table FARate2 alter column Accyear nvarchar(9) not null"},
    {.step = 7,
     .access = "alter table FARate2 add constraint pk_id primary key (Facode, Accyear)",
     .server = "alter table FARate2 add primary key (Facode, Accyear)"},
    {.step = 7,
     .access = "create table FADep1 (Cocd text(10), DocNo text(10), DocDt date, SrNo text(10), Assetid text(100), "
               "FACode text(30), DateUsed date, Datesold date, Method text(20), Days number, Rate currency, "
               "AccDep currency, Amount currency, Accyear text(50), Oldfacode text(10), cost currency, "
               "reclass text(1), Backdated yesno, flag text(3), acquired yesno, actualdep currency, "
               "defcode text(30), classcode text(30), subclasscode text(30), olddefcode text(30), "
               "oldclasscode text(30), oldsubclasscode text(30))"},
    {.step = 7, .access = "create index facode on FADep1 (Facode)"},
    {.step = 7, .access = "create index AssetId on FADep1 (AssetId)"},
    {.step = 7,
     .access = "create table FADep2 (Cocd text(10), DocNo text(10), DocDt date, SrNo text(10), Assetid text(100), "
               "FACode text(30), DateUsed date, Datesold date, Method text(20), Days number, Rate currency, "
               "AccDep currency, Amount currency, Accyear text(50), Oldfacode text(10), cost currency, "
               "reclass text(1), Backdated yesno, flag text(3), acquired yesno, actualdep currency, "
               "defcode text(30), classcode text(30), subclasscode text(30), olddefcode text(30), "
               "oldclasscode text(30), oldsubclasscode text(30))"},
    {.step = 7, .access = "create index facode on FADep2 (Facode)"},
    {.step = 7, .access = "create index AssetId on FADep2 (AssetId)"},
    {.step = 7, .access = "alter table FADefinition add FACode1 text(50), FACode2 text(50)"},
    {.step = 7, .access = "create index FACode1 on FADefinition (FACode1)"},
    {.step = 7, .access = "create index FACode2 on FADefinition (FACode2)"},
    {.step = 7, .access = "alter table Classification add FaCode1 text(10), FACode2 text(10)"},
    {.step = 7, .access = "alter table SubClass add FaCode1 text(10), FACode2 text(10)"},
    {.step = 7, .access = "create table Insurance (InsuranceCode text(10), InsuranceName text(100))"},
    {.step = 7, .access = "create index InsuranceCode on Insurance (InsuranceCode)"},
    {.step = 7,
     .access = "alter table Asset add FACode1 text(10), FACode2 text(10), FAAge number, InsuranceCode text(10), "
               "FlgOverride text(1), OverrideRate currency, OverrideMthd text(3)"},
    {.step = 7, .access = "alter table Asset add CostQty text(10)"},
    {.step = 7,
     .access = "alter table SplitOriginal add FACode1 text(10), FACode2 text(10), FAAge number, "
               "InsuranceCode text(10), FlgOverride text(1), OverrideRate currency, OverrideMthd text(3)"},
    {.step = 7, .access = "alter table SplitOriginal add CostQty text(10)"},
    {.step = 7,
     .access = "alter table Addition add FACode1 text(10), FACode2 text(10), FAAge number, InsuranceCode text(10), "
               "FlgOverride text(1), OverrideRate currency, OverrideMthd text(3)"},
    {.step = 7, .access = "alter table Addition add CostQty text(10)"},
    {.step = 7, .access = "alter table Parameter add FlgExtUser text(1)"},
    {.step = 7, .access = "alter table Parameter add AddnalMthd1 text(50), AddnalMthd2 text(50)"},
    {.step = 7, .procedure = UpgradeProcedure::kFillBookNames},

    // 8. What a lower category level does not say it takes from the level above, and the assets
    // and their depreciation from the categories.
    {.step = 8,
     .access = "update classification,fadefinition set classification.facode=fadefinition.facode, "
               "classification.blockcode=fadefinition.blockcode, classification.wdv=fadefinition.wdv, "
               "classification.wopercent=fadefinition.wopercent where classification.defcode=fadefinition.defcode "
               "and (classification.facode is null or trim(classification.facode)='')",
     .server = "update classification set facode=fadefinition.facode, blockcode=fadefinition.blockcode, "
               "wdv=fadefinition.wdv, wopercent=fadefinition.wopercent from fadefinition where "
               "classification.defcode=fadefinition.defcode and (classification.facode is null or "
               "ltrim(rtrim(classification.facode))='')"},
    {.step = 8,
     .access = "update subclass,fadefinition set subclass.facode=fadefinition.facode, "
               "subclass.blockcode=fadefinition.blockcode, subclass.wdv=fadefinition.wdv, "
               "subclass.wopercent=fadefinition.wopercent where subclass.defcode=fadefinition.defcode "
               "and (subclass.facode is null or trim(subclass.facode)='')",
     .server = "update subclass set facode=fadefinition.facode, blockcode=fadefinition.blockcode, "
               "wdv=fadefinition.wdv, wopercent=fadefinition.wopercent from fadefinition where "
               "subclass.defcode=fadefinition.defcode and (subclass.facode is null or "
               "ltrim(rtrim(subclass.facode))='')"},
    {.step = 8,
     .access = "update asset,fadefinition set asset.facode1=fadefinition.facode1 where "
               "asset.defcode=fadefinition.defcode and asset.facode1 is null and fadefinition.facode1 is not null",
     .server = "update asset set facode1=fadefinition.facode1 from fadefinition where "
               "asset.defcode=fadefinition.defcode and asset.facode1 is null and fadefinition.facode1 is not null",
     .neededIf = "select defcode from fadefinition where facode1 is not null",
     .alsoNeededIf = "select assetid from asset where facode1 is null"},
    {.step = 8, .access = "alter table Asset drop column DateSold"},
    {.step = 8, .access = "alter table Asset add Accdep1 currency, Accdep2 currency"},
    {.step = 8, .access = "alter table Addition add Accdep1 currency, Accdep2 currency"},
    {.step = 8, .access = "alter table SplitOriginal add Accdep1 currency, Accdep2 currency"},
    {.step = 8, .access = "alter table Shift add Accdep1 currency, Accdep2 currency"},
    {.step = 8,
     .access = "alter table Asset add FlgOverride1 text(1), OverrideRate1 currency, OverrideMthd1 text(3), "
               "FlgOverride2 text(1), OverrideRate2 currency, OverrideMthd2 text(3)"},
    {.step = 8,
     .access = "alter table Addition add FlgOverride1 text(1), OverrideRate1 currency, OverrideMthd1 text(3), "
               "FlgOverride2 text(1), OverrideRate2 currency, OverrideMthd2 text(3)"},
    {.step = 8,
     .access = "alter table SplitOriginal add FlgOverride1 text(1), OverrideRate1 currency, OverrideMthd1 text(3), "
               "FlgOverride2 text(1), OverrideRate2 currency, OverrideMthd2 text(3)"},
    {.step = 8,
     .access = "create table TmpFADep (Cocd text(10), AssetId text(30), DocDt date, Cost currency, Datesold date, "
               "Amount currency)"},
    {.step = 8, .access = "create index Assetid on TmpFADep (AssetId)"},
    {.step = 8, .access = "alter table TmpFADep add FADesc text(100)"},
    {.step = 8,
     .access = "update fadep,asset set fadep.defcode=asset.defcode, fadep.classcode=asset.classcode, "
               "fadep.subclasscode=asset.subclasscode where fadep.assetid=asset.assetid and "
               "(fadep.defcode is null or fadep.defcode='')",
     .server = "update fadep set defcode=asset.defcode, classcode=asset.classcode, "
               "subclasscode=asset.subclasscode from asset where fadep.assetid=asset.assetid and "
               "(fadep.defcode is null or fadep.defcode='')"},
    {.step = 8,
     .access = "update fadep1,asset set fadep1.defcode=asset.defcode, fadep1.classcode=asset.classcode, "
               "fadep1.subclasscode=asset.subclasscode where fadep1.assetid=asset.assetid and "
               "(fadep1.defcode is null or fadep1.defcode='')",
     .server = "update fadep1 set defcode=asset.defcode, classcode=asset.classcode, "
               "subclasscode=asset.subclasscode from asset where fadep1.assetid=asset.assetid and "
               "(fadep1.defcode is null or fadep1.defcode='')"},
    {.step = 8,
     .access = "update fadep2,asset set fadep2.defcode=asset.defcode, fadep2.classcode=asset.classcode, "
               "fadep2.subclasscode=asset.subclasscode where fadep2.assetid=asset.assetid and "
               "(fadep2.defcode is null or fadep2.defcode='')",
     .server = "update fadep2 set defcode=asset.defcode, classcode=asset.classcode, "
               "subclasscode=asset.subclasscode from asset where fadep2.assetid=asset.assetid and "
               "(fadep2.defcode is null or fadep2.defcode='')"},
    {.step = 8, .access = "alter table Parameter add MultiEntry yesno"},
    // Malformed in its last assignment since it was first written, so that it never runs; the
    // first statement of this step does its work. Mending it would overwrite categories that
    // companies have lived with.
    {.step = 8,
     .access = "update classification,fadefinition set classification.facode=fadefinition.facode, "
               "classification.facode1=fadefinition.facode1, classification.facode2=fadefinition.facode2, "
               "classification.blockcode=fadefinition.blockcode, classification.wdv=fadefinition.wdv, "
               "classification.wopercent.fadefiniton.wopercent where classification.defcode=fadefinition.defcode",
     .server = "update classification set facode=fadefinition.facode, facode1=fadefinition.facode1, "
               "facode2=fadefinition.facode2, blockcode=fadefinition.blockcode, wdv=fadefinition.wdv, "
               "classification.wopercent.fadefiniton.wopercent from fadefinition where "
               "classification.defcode=fadefinition.defcode"},
    {.step = 8,
     .access = "update classification,fadefinition set classification.facode1=fadefinition.facode1 where "
               "classification.defcode=fadefinition.defcode and "
               "(classification.facode1 is null or classification.facode1='')",
     .server = "update classification set facode1=fadefinition.facode1 from fadefinition where "
               "classification.defcode=fadefinition.defcode and "
               "(classification.facode1 is null or classification.facode1='')"},
    {.step = 8,
     .access = "update classification,fadefinition set classification.facode2=fadefinition.facode2 where "
               "classification.defcode=fadefinition.defcode and "
               "(classification.facode2 is null or classification.facode2='')",
     .server = "update classification set facode2=fadefinition.facode2 from fadefinition where "
               "classification.defcode=fadefinition.defcode and "
               "(classification.facode2 is null or classification.facode2='')"},
    {.step = 8,
     .access = "update subclass,classification set subclass.facode=classification.facode, "
               "subclass.blockcode=classification.blockcode where subclass.defcode=classification.defcode and "
               "subclass.classcode=classification.classcode and (subclass.facode is null or subclass.facode='')",
     .server = "update subclass set facode=classification.facode, blockcode=classification.blockcode "
               "from classification where subclass.defcode=classification.defcode and "
               "subclass.classcode=classification.classcode and (subclass.facode is null or subclass.facode='')"},
    {.step = 8,
     .access = "update subclass,classification set subclass.facode1=classification.facode1 where "
               "subclass.defcode=classification.defcode and subclass.classcode=classification.classcode and "
               "(subclass.facode1 is null or subclass.facode1='')",
     .server = "update subclass set facode1=classification.facode1 from classification where "
               "subclass.defcode=classification.defcode and subclass.classcode=classification.classcode and "
               "(subclass.facode1 is null or subclass.facode1='')"},
    {.step = 8,
     .access = "update subclass,classification set subclass.facode2=classification.facode2 where "
               "subclass.defcode=classification.defcode and subclass.classcode=classification.classcode and "
               "(subclass.facode2 is null or subclass.facode2='')",
     .server = "update subclass set facode2=classification.facode2 from classification where "
               "subclass.defcode=classification.defcode and subclass.classcode=classification.classcode and "
               "(subclass.facode2 is null or subclass.facode2='')"},
    {.step = 8,
     .access = "update asset,subclass set asset.facode1=subclass.facode1 where asset.defcode=subclass.defcode and "
               "asset.classcode=subclass.classcode and asset.subclasscode=subclass.subclasscode and "
               "(asset.facode1 is null or asset.facode1='') and subclass.facode1<>''",
     .server = "update asset set facode1=subclass.facode1 from subclass where asset.defcode=subclass.defcode and "
               "asset.classcode=subclass.classcode and asset.subclasscode=subclass.subclasscode and "
               "(asset.facode1 is null or asset.facode1='') and subclass.facode1<>''",
     .neededIf = "select defcode from subclass where facode1<>''",
     .alsoNeededIf = "select assetid from asset where facode1 is null or facode1=''"},
    {.step = 8,
     .access = "update asset,classification set asset.facode1=classification.facode1 where "
               "asset.defcode=classification.defcode and asset.classcode=classification.classcode and "
               "(asset.facode1 is null or asset.facode1='') and classification.facode1<>''",
     .server = "update asset set facode1=classification.facode1 from classification where "
               "asset.defcode=classification.defcode and asset.classcode=classification.classcode and "
               "(asset.facode1 is null or asset.facode1='') and classification.facode1<>''",
     .neededIf = "select defcode from classification where facode1<>''",
     .alsoNeededIf = "select assetid from asset where facode1 is null or facode1=''"},
    {.step = 8,
     .access = "update asset,subclass set asset.facode2=subclass.facode2 where asset.defcode=subclass.defcode and "
               "asset.classcode=subclass.classcode and asset.subclasscode=subclass.subclasscode and "
               "(asset.facode2 is null or asset.facode2='') and subclass.facode2<>''",
     .server = "update asset set facode2=subclass.facode2 from subclass where asset.defcode=subclass.defcode and "
               "asset.classcode=subclass.classcode and asset.subclasscode=subclass.subclasscode and "
               "(asset.facode2 is null or asset.facode2='') and subclass.facode2<>''",
     .neededIf = "select defcode from subclass where facode2<>''",
     .alsoNeededIf = "select assetid from asset where facode2 is null or facode2=''"},
    {.step = 8,
     .access = "update asset,classification set asset.facode2=classification.facode2 where "
               "asset.defcode=classification.defcode and asset.classcode=classification.classcode and "
               "(asset.facode2 is null or asset.facode2='') and classification.facode2<>''",
     .server = "update asset set facode2=classification.facode2 from classification where "
               "asset.defcode=classification.defcode and asset.classcode=classification.classcode and "
               "(asset.facode2 is null or asset.facode2='') and classification.facode2<>''",
     .neededIf = "select defcode from classification where facode2<>''",
     .alsoNeededIf = "select assetid from asset where facode2 is null or facode2=''"},
    {.step = 8,
     .access = "update fadep1,asset set fadep1.facode=asset.facode1 where fadep1.assetid=asset.assetid and "
               "(fadep1.facode is null or fadep1.facode='') and asset.facode1<>''",
     .server = "update fadep1 set facode=asset.facode1 from asset where fadep1.assetid=asset.assetid and "
               "(fadep1.facode is null or fadep1.facode='') and asset.facode1<>''",
     .neededIf = "select assetid from fadep1 where facode is null or facode=''"},
    {.step = 8,
     .access = "update fadep2,asset set fadep2.facode=asset.facode2 where fadep2.assetid=asset.assetid and "
               "(fadep2.facode is null or fadep2.facode='') and asset.facode2<>''",
     .server = "update fadep2 set facode=asset.facode2 from asset where fadep2.assetid=asset.assetid and "
               "(fadep2.facode is null or fadep2.facode='') and asset.facode2<>''",
     .neededIf = "select assetid from fadep2 where facode is null or facode=''"},
};
static_assert(isClosed(kRows, 7, 8));

}  // namespace

std::span<const UpgradeRow> upgradeSteps7To8() { return kRows; }

}  // namespace orva
