#include "imports/transactions/change_category.h"

#include <set>

#include "imports/transactions/transaction_row.h"

namespace orva {
namespace {

/// The day after the asset's latest book depreciation entry.
constexpr Query kReclassificationDate{
    .access =
        "Select (Max(DocDt)+1) as Docdate from Fadep where  (reclass is Null or (reclass <>'Y' and reclass <>'R' "
        "and reclass <>'M' )) and ((flag <> 'S' ) or flag is Null) group by assetId having AssetId ='{id}'"};

/// Adds the reclassification date and the values of earlier rows.
class ChangeRow : public TransactionRow {
 public:
  using TransactionRow::TransactionRow;

  void begin(int row) override {
    TransactionRow::begin(row);
    hasReadDate_ = false;
    reclassificationDate_.reset();
  }

  std::optional<Date> reclassificationDate() {
    if (!hasReadDate_) {
      const auto rows = open(kReclassificationDate);
      if (!rows->eof()) reclassificationDate_ = rows->get("Docdate").toDate();
      if (reclassificationDate_) setFact("reclass date", reclassificationDate_->toYearMonthDay());
      hasReadDate_ = true;
    }
    return reclassificationDate_;
  }

  std::set<std::string>& seenAssets() { return seenAssets_; }
  std::set<std::string>& seenReferences() { return seenReferences_; }

 private:
  bool hasReadDate_ = false;
  std::optional<Date> reclassificationDate_;
  std::set<std::string> seenAssets_;
  std::set<std::string> seenReferences_;
};

using ChangeRule = Rule<ChangeRow>;

bool isAbsent(ChangeRow& row, const Cell&, const ChangeRule&) { return !row.assetExists(); }

/// Identifiers compare as the database compares them, without regard to case.
bool isSeenAsset(ChangeRow& row, const Cell&, const ChangeRule&) {
  return !row.seenAssets().insert(toUpper(row.assetId())).second;
}

bool isSeenReference(ChangeRow& row, const Cell& cell, const ChangeRule&) {
  return !row.seenReferences().insert(toUpper(trim(cell.value))).second;
}

bool hasNoReclassificationDate(ChangeRow& row, const Cell&, const ChangeRule&) { return !row.reclassificationDate(); }

std::optional<Date> lastDay(ChangeRow& row, const ChangeRule& rule) {
  return row.constant(std::string(rule.lookup.access), "MaxDate").toDate();
}

bool hasNoYear(ChangeRow& row, const Cell&, const ChangeRule& rule) { return !lastDay(row, rule); }

bool endsBeforeReclassification(ChangeRow& row, const Cell&, const ChangeRule& rule) {
  return *lastDay(row, rule) < *row.reclassificationDate();
}

/// Looks a description up and keeps its code in the row's own column.
bool isUndefined(ChangeRow& row, const Query& query, std::string_view field, std::string_view codeColumn) {
  const auto rows = row.open(query);
  if (rows->eof()) return true;
  row.run().grid.setText(row.row(), row.columnOf(codeColumn), nullToText(rows->get(field)));
  return false;
}

bool isUndefinedLevel1(ChangeRow& row, const Cell&, const ChangeRule& rule) {
  return isUndefined(row, rule.lookup, "defcode", "CAT1CODE");
}

bool isUndefinedLevel2(ChangeRow& row, const Cell&, const ChangeRule& rule) {
  return isUndefined(row, rule.lookup, "classcode", "CAT2CODE");
}

bool isUndefinedLevel3(ChangeRow& row, const Cell& cell, const ChangeRule& rule) {
  return !cell.isBlank() && isUndefined(row, rule.lookup, "subclasscode", "CAT3CODE");
}

constexpr std::string_view kTooLong = "{value} exceeds the maximum length {size}";
constexpr std::string_view kUndefined1 = "Asset Category - Level I : {value} is not defined in ORVA.";
constexpr std::string_view kUndefined2 = "Asset Category - Level II : {value} is not defined in ORVA.";
constexpr std::string_view kUndefined3 = "Asset Category - Level III : {value} is not defined in ORVA.";
constexpr Query kLastAccountingDay{.access = "Select Max(AccClDt) as MaxDate from AccYear"};
constexpr Query kLastFinancialDay{.access = "Select Max(FinClDt) as MaxDate from FinYear"};

// In the order in which the checks run. The texts of a calendar without any year and of one that ends too
// early differ in one letter.
constexpr ChangeRule kChangeRules[] = {
    {.column = "ASSETID", .fails = exceedsSize, .text = kTooLong},
    {.column = "ASSETID", .fails = isBlank, .text = "AssetID should not be blank", .namesBlank = true},
    {.column = "ASSETID", .fails = isAbsent, .text = "Asset Id : {value} does not exist in ORVA."},
    {.column = "ASSETID", .fails = isFound, .text = "Asset Id : {value} sale/Discarded.", .lookup = kSoldOrDiscarded},
    {.column = "ASSETID",
     .fails = isFound,
     .text = "Asset Id : {value} shifted out.",
     .lookup = {.access = "Select * from shift where assetid ='{id}' And TfrOut = true and sameloc = false",
                .sqlServer = "Select * from shift where assetid ='{id}' And tfrout = 1 and sameloc = 0"}},
    {.column = "ASSETID", .fails = isSeenAsset, .text = "AssetId  : {value} Duplicate in Excel."},
    {.column = "ASSETID", .fails = hasNoReclassificationDate, .text = "Depreciation not calculated : {value}"},
    {.column = "ASSETID",
     .fails = hasNoYear,
     .text = "Financial Year As per Book not created.",
     .lookup = kLastAccountingDay},
    {.column = "ASSETID",
     .fails = endsBeforeReclassification,
     .text = "Financial Year As Per Book not created.",
     .lookup = kLastAccountingDay},
    {.column = "ASSETID",
     .fails = hasNoYear,
     .text = "Financial Year As per Income Tax not created.",
     .lookup = kLastFinancialDay},
    {.column = "ASSETID",
     .fails = endsBeforeReclassification,
     .text = "Financial Year As Per Income Tax not created.",
     .lookup = kLastFinancialDay},
    {.column = "ASSETID",
     .fails = isFound,
     .text = "Asset Id. : {value} already Reclassified.",
     .lookup = {.access = "Select * from ReclassAstCat where AssetId ='{id}' and docdt =#{reclass date}#",
                .sqlServer = "Select * from ReclassAstCat where AssetId ='{id}' and docdt ='{reclass date}'"}},
    {.column = "ASSETID",
     .fails = isFound,
     .text = "Depreciation as per Income Tax already calculated.",
     .lookup = {.access = "Select * from ITaxDep where DocDt >= #{reclass date}#",
                .sqlServer = "Select * from ITaxDep where DocDt >= '{reclass date}'"}},
    {.column = "DOCREF", .fails = exceedsSize, .text = kTooLong},
    {.column = "DOCREF", .fails = isBlank, .text = "Doc Reference No. should not be blank", .namesBlank = true},
    {.column = "DOCREF",
     .fails = isFound,
     .text = "Doc Ref no. : {value} Duplicate.",
     .lookup = {.access = "Select * from ReclassAstCat where DocNo ='{value}'"}},
    {.column = "DOCREF", .fails = isSeenReference, .text = "Doc Ref no. : {value} Duplicate in Excel."},
    {.column = "CAT1", .fails = isBlank, .text = "Asset Category - Level I should not be blank", .namesBlank = true},
    {.column = "CAT1", .fails = exceedsSize, .text = kTooLong},
    {.column = "CAT1",
     .fails = isUndefinedLevel1,
     .text = kUndefined1,
     .lookup = {.access = "Select * from Fadefinition where {upper}(description) ='{trimmed upper}'"}},
    {.column = "CAT2", .fails = isBlank, .text = "Asset Category - Level II should not be blank", .namesBlank = true},
    {.column = "CAT2", .fails = exceedsSize, .text = kTooLong},
    {.column = "CAT2",
     .fails = isUndefinedLevel2,
     .text = kUndefined2,
     .lookup = {.access = "Select * from classification where {upper}(classdesc) ='{trimmed upper}'"
                          " and defcode='{CAT1CODE}'"}},
    {.column = "CAT3", .fails = exceedsSize, .text = kTooLong},
    {.column = "CAT3",
     .fails = isUndefinedLevel3,
     .text = kUndefined3,
     .lookup = {.access = "Select * from Subclass where {upper}(subClassdesc) ='{trimmed upper}'"
                          " and defcode='{CAT1CODE}' and classcode='{CAT2CODE}'"}},
    {.column = "REMARKS", .fails = exceedsSize, .text = kTooLong},
};

/// The asset with the row's codes; a null level III counts as blank.
constexpr Query kUnchanged{
    .access =
        "Select * from Asset where AssetId = '{id}' and defcode='{CAT1CODE}' and Classcode='{CAT2CODE}"
        "' and iif (isnull(SubClassCode),'',  SubClassCode)='{CAT3CODE}'",
    .sqlServer =
        "Select * from Asset where AssetId = '{id}' and defcode='{CAT1CODE}' and Classcode='{CAT2CODE}"
        "' and case when  SubClassCode is null then '' else SubClassCode end ='{CAT3CODE}'"};

void checkThatCategoryChanges(ChangeRow& row) {
  if (row.run().findings.rowHas(row.row(), FindingClass::kError) || !row.finds(kUnchanged)) return;
  row.record(row.columnOf("ASSETID"), FindingClass::kError, "Previous & New Category should not be same.");
}

void validateChangeCategory(ImportRun& run) {
  ChangeRow row(run);
  walkRows<ChangeRow>(row, kChangeRules, WalkPolicy::kFirstErrorEndsRow, checkThatCategoryChanges);
}

void storeCompany(ChangeRow& row, const Cell&, std::string_view target) {
  row.set(target, row.run().company.companyCode);
}

void storeReclassificationDate(ChangeRow& row, const Cell&, std::string_view target) {
  if (const auto date = row.reclassificationDate()) row.set(target, *date);
}

/// Copies the asset's field as it stood before the change.
template <const char* Field>
void storeOld(ChangeRow& row, const Cell&, std::string_view target) {
  row.set(target, row.assetField(Field));
}

constexpr char kDefCode[] = "defcode";
constexpr char kClassCode[] = "classcode";
constexpr char kSubClassCode[] = "subclasscode";
constexpr char kFaCode[] = "facode";
constexpr char kFaCode1[] = "facode1";
constexpr char kFaCode2[] = "facode2";

constexpr PostedColumn<ChangeRow> kChangeColumns[] = {
    {.target = "Cocd", .store = storeCompany},
    {.heading = "DOCREF", .target = "DocNo"},
    {.heading = "ASSETID", .target = "AssetId"},
    {.target = "docdt", .store = storeReclassificationDate},
    {.heading = "CAT1CODE", .target = "defcode"},
    {.heading = "CAT2CODE", .target = "classcode"},
    {.heading = "CAT3CODE", .target = "subclasscode"},
    {.heading = "REMARKS", .target = "Remarks"},
    {.target = "olddefcode", .store = storeOld<kDefCode>},
    {.target = "oldclasscode", .store = storeOld<kClassCode>},
    {.target = "Oldsubclasscode", .store = storeOld<kSubClassCode>},
    {.target = "facode", .store = storeOld<kFaCode>},
    {.target = "Facode1", .store = storeOld<kFaCode1>},
    {.target = "Facode2", .store = storeOld<kFaCode2>},
};

/// The asset takes the codes of the stored entry; its rate codes stay.
void moveAsset(ChangeRow& row) {
  const auto asset = row.run().connection().open(
      composeQuery({.access = "select * from Asset Where AssetId ='{id}'"}, row.run().dialect(), row),
      CursorKind::kKeyset, LockKind::kPessimistic);
  if (asset->eof()) return;
  for (const char* code : {kDefCode, kClassCode, kSubClassCode}) asset->set(code, row.record().get(code));
  asset->update();
}

PostResult postChangeCategory(ImportRun& run) {
  ChangeRow row(run);
  return postResult(runPosting<ChangeRow>(
      row, {.query = "select * from ReclassAstCat", .columns = kChangeColumns, .afterSave = moveAsset}));
}

constexpr std::string_view kOwnColumns[] = {"CAT1CODE", "CAT2CODE", "CAT3CODE"};

}  // namespace

ImportProcedures changeCategoryProcedures() {
  return {.kind = ImportKindId::kChangeCategory,
          .ownColumns = kOwnColumns,
          .validate = validateChangeCategory,
          .post = postChangeCategory};
}

}  // namespace orva
