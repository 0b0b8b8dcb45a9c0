#pragma once

#include "platform/access/cell.h"
#include "platform/access/data_page.h"
#include "platform/access/long_values.h"
#include "platform/access/row.h"

namespace orva::access {

/// Finds the bytes of a row by its identity and reads its columns.
class RowReader {
 public:
  RowReader(PageFile& file, const TableDefinition& definition, const LongValues& longValues)
      : file_(file), definition_(definition), longValues_(longValues) {}

  /// Where the row's bytes are: the first slot, or the one that pointers lead to.
  SlotAddress resolve(RowId row) const { return locate(row).address; }
  /// True when a live row of this table has the identity.
  bool exists(RowId row) const;
  ByteView bytes(RowId row) const { return locate(row).bytes; }
  Cell cell(RowId row, std::size_t column) const;
  /// A text where it stands in the page, for as long as that one stays the same; nothing when it is null or has to be
  /// decoded.
  std::optional<std::string_view> plainText(RowId row, std::size_t column) const;
  /// All columns, or those that are `wanted`; the others are left null.
  Row row(RowId row, const std::vector<bool>* wanted = nullptr) const;
  /// The stored parts of all columns.
  StoredCells storedCells(RowId row) const;

 private:
  struct Place {
    SlotAddress address;
    ByteView bytes;
  };
  const Place& locate(RowId row) const;
  /// The row's parts; at the last place that was located.
  const StoredRow& parts(const Place& place) const;
  Place follow(RowId row) const;
  Cell decode(const Column& column, const StoredRow& stored) const;

  PageFile& file_;
  const TableDefinition& definition_;
  const LongValues& longValues_;
  /// The row that was read last, while its bytes are where they were.
  mutable RowId lastRow_ = 0;
  mutable std::uint64_t lastVersion_ = 0;
  mutable Place lastPlace_;
  mutable std::optional<StoredRow> lastParts_;
};

/// Goes through the rows of a table in the order of the file. Rows may be
/// changed, added and removed on the way.
class RowScan {
 public:
  RowScan(PageFile& file, const TableDefinition& definition, UsageMap owned)
      : file_(file), definition_(definition), owned_(owned) {}

  /// Moves to the first or next row; false at the end.
  bool next();
  /// Moves to the last or previous row; false at the end.
  bool previous();
  /// Makes as if the scan stood on this row, whether it exists or not.
  void standOn(RowId row);
  RowId row() const { return rowIdOf({page_, static_cast<Byte>(slot_)}); }

 private:
  bool nextOnPage();
  bool previousOnPage();
  /// Row slots of the page; none when it has been given back since the scan came here.
  std::size_t slotsOf(PageNumber page) const;

  PageFile& file_;
  const TableDefinition& definition_;
  UsageMap owned_;
  PageNumber page_ = 0;
  std::size_t slot_ = 0;
  bool started_ = false;
};

}  // namespace orva::access
