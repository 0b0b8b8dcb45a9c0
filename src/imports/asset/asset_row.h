#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "imports/asset/calendar_year.h"
#include "imports/asset/category.h"
#include "wizard/rule_walk.h"

namespace orva {

/// What the company knows of the asset that a row of a modify mode changes.
struct ExistingAsset {
  std::string identifier = {};
  std::string accountingYear = {};
  std::string financialYear = {};
  std::string defCode = {};
  std::string classCode = {};
  std::string subClassCode = {};
  Currency cost = {};
  std::optional<Date> useDate = {};
  /// A second asset answers to the same physical identifier.
  bool isDoubled = false;
};

/// Book depreciation entries of the existing asset.
struct CalculatedDepreciation {
  bool isPresent = false;
  /// "SLM" or "WDV" of the first entry.
  std::string method = {};
};

/// What the backdated test, made once a row, found.
enum class BackdatedTest { kNotMade, kUpToDate, kRefused, kAccepted };

/// The row of an asset sheet under validation, with the facts that its rules ask for. Facts that come
/// from the database are read when they are first asked for, afresh for every row, so that the
/// order of the workbook's columns does not matter.
///
/// Names for texts and queries beside those of `RowView`: {id}, {asset id}, {asset accounting year},
/// {asset financial year}, {depreciation method}, {cost}, {level I}, {level II}, {accounting year},
/// {financial year}, {closing date}, {calculated upto}, {found year}, {master}, {level name},
/// {category descriptions}, {book code}; dates {#value}, {#opening date}, {#closing date}, {#use date}.
class AssetRow : public RowView {
 public:
  explicit AssetRow(ImportRun& run);

  void begin(int row) override;
  std::string textArgument(std::string_view name) const override;
  std::optional<Date> dateArgument(std::string_view name) const override;

  /// Null in Add mode and when the company has no such asset in the run's flavour.
  const ExistingAsset* existing() const;
  const CalculatedDepreciation& depreciation() const;
  /// Moved within its location: its place and its people can no longer be changed here.
  bool isShifted() const;
  bool hasCategoryChange() const;

  /// The levels named by the row's descriptions; in the modify modes those of the asset where the row names none.
  const AssetCategory& category() const;
  bool hasKnownLocation() const;

  /// The amount in a cell; nothing when the cell is blank, absent or no number.
  std::optional<Currency> amount(std::string_view heading) const;
  /// Of the row, else of the asset that it changes.
  std::optional<Currency> cost() const;
  std::optional<Date> useDate() const;

  /// Name by which rules know the current column ("M1" for the first miscellaneous master).
  std::string_view columnName() const { return currentName(); }

  /// Years of the date under test.
  std::optional<CalendarYear> accounting;
  std::optional<CalendarYear> financial;
  /// Years kept for the row: of the last date that was placed in an open year, else of the asset that it changes.
  std::string accountingYear() const;
  std::string financialYear() const;
  void keepAccountingYear();
  void keepFinancialYear();

  BackdatedTest backdated = BackdatedTest::kNotMade;
  /// Column of the date that the backdated test was made on.
  int backdatedColumn = -1;
  /// Latest date of the depreciation that stands in the way of the date under test.
  std::optional<Date> calculatedUpto;
  /// Year named by the last look-up that found one.
  std::string foundYear;

  /// Writes what posting reads into the grid's own columns.
  void writeOwnColumns() const;

 private:
  struct Kept {
    std::optional<ExistingAsset> existing;
    bool existingIsRead = false;
    std::optional<CalculatedDepreciation> depreciation;
    std::optional<bool> isShifted;
    std::optional<bool> hasCategoryChange;
    std::optional<AssetCategory> category;
    std::optional<bool> hasKnownLocation;
  };

  std::optional<ExistingAsset> readExisting() const;
  AssetCategory readCategory() const;
  CategoryLevel readRowLevel(const AssetCategory& above, CategoryDepth depth, std::string_view heading,
                             std::string_view codeOfAsset) const;
  void write(std::string_view heading, std::string_view text) const;

  mutable Kept kept_;
  std::string keptAccountingYear_;
  std::string keptFinancialYear_;
  std::string voucherAccountingYear_;
  std::string voucherFinancialYear_;
};

using AssetRule = Rule<AssetRow>;

}  // namespace orva
