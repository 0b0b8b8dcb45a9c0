#include "imports/transactions/change_category.h"

#include <set>

#include "imports/transactions/transaction_checks.h"

namespace orva {
namespace {

/// The day after the asset's latest book depreciation entry.
constexpr Query kReclassificationDate{
    .access =
        "Select (Max(DocDt)+1) as Docdate from Fadep where  (reclass is Null or (reclass <>'Y' and reclass <>'R' "
        "and reclass <>'M' )) and ((flag <> 'S' ) or flag is Null) group by assetId having AssetId ='{id}'"};

/// A level of the category: the column of its description, the row's own column for its code, and how the code is
/// found.
struct Level {
  std::string_view heading;
  std::string_view codeColumn;
  std::string_view codeField;
  Query lookup;
};

constexpr Level kLevels[] = {
    {.heading = "CAT1",
     .codeColumn = "CAT1CODE",
     .codeField = "defcode",
     .lookup = {"Select * from Fadefinition where {upper}(description) ='{level}'"}},
    {.heading = "CAT2",
     .codeColumn = "CAT2CODE",
     .codeField = "classcode",
     .lookup = {"Select * from classification where {upper}(classdesc) ='{level}' and defcode='{CAT1CODE}'"}},
    {.heading = "CAT3",
     .codeColumn = "CAT3CODE",
     .codeField = "subclasscode",
     .lookup = {"Select * from Subclass where {upper}(subClassdesc) ='{level}' and defcode='{CAT1CODE}'"
                " and classcode='{CAT2CODE}'"}},
};

/// Adds the reclassification date, the codes of the category and the values of earlier rows.
class ChangeRow : public TransactionRow {
 public:
  using TransactionRow::openAssetsForChange;
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

  /// Whether the levels down to `level` (0 is level I) have codes, which are kept in the row's own columns. A
  /// level may stand right of the one below it.
  bool hasCodes(std::size_t level) {
    if (level > 0 && !hasCodes(level - 1)) return false;
    const int column = columnOf(kLevels[level].codeColumn);
    if (!run().grid.text(row(), column).empty()) return true;
    const std::string description = toUpper(trim(cell(kLevels[level].heading)));
    if (description.empty()) return false;
    setFact("level", description);
    const std::string code = nullToText(constant(kLevels[level].lookup, kLevels[level].codeField));
    run().grid.setText(row(), column, code);
    return !code.empty();
  }

  /// Identifiers and references of the rows before this one, which compare as the database compares them.
  std::set<std::string> seenAssets;
  std::set<std::string> seenReferences;

 private:
  bool hasReadDate_ = false;
  std::optional<Date> reclassificationDate_;
};

using ChangeRule = Rule<ChangeRow>;

bool isSeenAsset(ChangeRow& row, const Cell&, const ChangeRule&) {
  return row.seenAssets.count(toUpper(row.assetId())) > 0;
}

bool isSeenReference(ChangeRow& row, const Cell& cell, const ChangeRule&) {
  return row.seenReferences.count(toUpper(trim(cell.value))) > 0;
}

bool hasNoReclassificationDate(ChangeRow& row, const Cell&, const ChangeRule&) { return !row.reclassificationDate(); }

std::optional<Date> lastDay(ChangeRow& row, const ChangeRule& rule) {
  return row.constant(rule.lookup, "MaxDate").toDate();
}

bool hasNoYear(ChangeRow& row, const Cell&, const ChangeRule& rule) { return !lastDay(row, rule); }

bool endsBeforeReclassification(ChangeRow& row, const Cell&, const ChangeRule& rule) {
  return *lastDay(row, rule) < *row.reclassificationDate();
}

bool isUndefinedLevel1(ChangeRow& row, const Cell&, const ChangeRule&) { return !row.hasCodes(0); }

/// An undefined level above is reported in its own column.
bool isUndefinedLevel2(ChangeRow& row, const Cell&, const ChangeRule&) { return row.hasCodes(0) && !row.hasCodes(1); }

bool isUndefinedLevel3(ChangeRow& row, const Cell& cell, const ChangeRule&) {
  return !cell.isBlank() && row.hasCodes(1) && !row.hasCodes(2);
}

constexpr std::string_view kUndefined1 = "Asset Category - Level I : {value} is not defined in ORVA.";
constexpr std::string_view kUndefined2 = "Asset Category - Level II : {value} is not defined in ORVA.";
constexpr std::string_view kUndefined3 = "Asset Category - Level III : {value} is not defined in ORVA.";
constexpr Query kLastAccountingDay{.access = "Select Max(AccClDt) as MaxDate from AccYear"};
constexpr Query kLastFinancialDay{.access = "Select Max(FinClDt) as MaxDate from FinYear"};

// In the order in which the checks run. The texts of a calendar without any year and of one that ends too
// early differ in one letter.
constexpr ChangeRule kChangeRules[] = {
    {.column = "ASSETID", .fails = isBlank, .text = kNoAssetId, .namesBlank = true},
    {.column = "ASSETID", .fails = exceedsSize, .text = kTooLong},
    {.column = "ASSETID", .fails = isAssetMissing, .text = "Asset Id : {value} does not exist in ORVA."},
    {.column = "ASSETID", .fails = isFound, .text = "Asset Id : {value} sale/Discarded.", .lookup = kSoldOrDiscarded},
    {.column = "ASSETID", .fails = isFound, .text = "Asset Id : {value} shifted out.", .lookup = kTransferredOut},
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
    {.column = "DOCREF", .fails = isBlank, .text = "Doc Reference No. should not be blank", .namesBlank = true},
    {.column = "DOCREF", .fails = exceedsSize, .text = kTooLong},
    {.column = "DOCREF",
     .fails = isFound,
     .text = "Doc Ref no. : {value} Duplicate.",
     .lookup = {.access = "Select * from ReclassAstCat where DocNo ='{value}'"}},
    {.column = "DOCREF", .fails = isSeenReference, .text = "Doc Ref no. : {value} Duplicate in Excel."},
    {.column = "CAT1", .fails = isBlank, .text = "Asset Category - Level I should not be blank", .namesBlank = true},
    {.column = "CAT1", .fails = exceedsSize, .text = kTooLong},
    {.column = "CAT1", .fails = isUndefinedLevel1, .text = kUndefined1},
    {.column = "CAT2", .fails = isBlank, .text = "Asset Category - Level II should not be blank", .namesBlank = true},
    {.column = "CAT2", .fails = exceedsSize, .text = kTooLong},
    {.column = "CAT2", .fails = isUndefinedLevel2, .text = kUndefined2},
    {.column = "CAT3", .fails = exceedsSize, .text = kTooLong},
    {.column = "CAT3", .fails = isUndefinedLevel3, .text = kUndefined3},
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

void endRow(ChangeRow& row) {
  checkThatCategoryChanges(row);
  row.seenAssets.insert(toUpper(row.assetId()));
  row.seenReferences.insert(toUpper(trim(row.cell("DOCREF"))));
}

void validateChangeCategory(ImportRun& run) {
  ChangeRow row(run);
  validateTransactions(row, kChangeRules, endRow);
}

void storeReclassificationDate(ChangeRow& row, const Cell&, std::string_view target) {
  if (const auto date = row.reclassificationDate()) row.set(target, *date);
}

/// The asset's field as it stands before the change. An asset that went since the validation ends the run.
template <const char* Field>
void storeOld(ChangeRow& row, const Cell&, std::string_view target) {
  row.set(target, row.asset().get(Field));
}

constexpr char kDefCode[] = "defcode";
constexpr char kClassCode[] = "classcode";
constexpr char kSubClassCode[] = "subclasscode";

constexpr PostedColumn<ChangeRow> kChangeColumns[] = {
    {.target = "Cocd", .store = storeCompany},
    {.heading = "DOCREF", .target = "DocNo"},
    {.heading = "ASSETID", .target = "AssetId", .store = storeAssetId},
    {.target = "docdt", .store = storeReclassificationDate},
    {.heading = "CAT1CODE", .target = "defcode"},
    {.heading = "CAT2CODE", .target = "classcode"},
    {.heading = "CAT3CODE", .target = "subclasscode"},
    {.heading = "REMARKS", .target = "Remarks"},
    {.target = "olddefcode", .store = storeOld<kDefCode>},
    {.target = "oldclasscode", .store = storeOld<kClassCode>},
    {.target = "Oldsubclasscode", .store = storeOld<kSubClassCode>},
    {.target = "facode", .store = storeFromAsset},
    {.target = "Facode1", .store = storeFromAsset},
    {.target = "Facode2", .store = storeFromAsset},
};

/// The asset takes the codes of the stored entry; its rate codes stay.
void moveAsset(ChangeRow& row) {
  for (const char* code : {kDefCode, kClassCode, kSubClassCode}) row.asset().set(code, row.record().get(code));
  row.asset().update();
}

PostResult postChangeCategory(ImportRun& run) {
  ChangeRow row(run);
  row.openAssetsForChange();
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
