#include <algorithm>
#include <set>

#include "platform/access/page_owners.h"

namespace orva::access {
namespace {

constexpr std::uint32_t kRowsBetweenTrims = 256;

/// References from rows to slots elsewhere: targets of moved rows and pieces of long values.
class SlotReferences {
 public:
  SlotReferences(const std::string& table, PageOwners& owners) : table_(table), owners_(owners) {}

  void expect(SlotAddress address) { expected_.push_back(rowIdOf(address)); }
  void refer(SlotAddress address) { referred_.push_back(rowIdOf(address)); }
  /// Each slot that exists is referred to once, and nothing else is.
  void compare(const char* what) {
    std::sort(expected_.begin(), expected_.end());
    std::sort(referred_.begin(), referred_.end());
    std::vector<RowId> difference;
    std::set_symmetric_difference(expected_.begin(), expected_.end(), referred_.begin(), referred_.end(),
                                  std::back_inserter(difference));
    for (const RowId row : difference) {
      const auto [page, slot] = addressOf(row);
      owners_.fault(table_, page,
                    std::string(what) + " in slot " + std::to_string(slot) + " is not referred to exactly once");
    }
  }

 private:
  const std::string& table_;
  PageOwners& owners_;
  std::vector<RowId> expected_;
  std::vector<RowId> referred_;
};

class RowCheck {
 public:
  RowCheck(AccessDatabase& database, Table& table, PageOwners& owners)
      : file_(database.file()),
        table_(table),
        definition_(table.definition()),
        owners_(owners),
        moved_(table.name(), owners) {}

  void run() {
    const UsageMap owned(file_, definition_.ownedMap);
    const UsageMap room(file_, definition_.roomMap);
    owners_.claimMap(table_.name(), owned);
    owners_.claimMap(table_.name(), room);
    checkSubset(owned, room);
    for (std::size_t i = 0; i < definition_.columns.size(); ++i) {
      if (isLongValue(definition_.columns[i].type)) checkLongValues(i);
    }
    owned.forEach([this](PageNumber page) {
      owners_.claim(table_.name(), page, "rows");
      owners_.guard(table_.name(), page, [&] { checkPage(page); });
      file_.trim();
    });
    moved_.compare("the moved row");
    if (rows_ != definition_.rowCount) {
      owners_.note(table_.name(), definition_.page,
                   "the definition counts " + std::to_string(definition_.rowCount) + " rows, there are " +
                       std::to_string(rows_));
    }
  }

 private:
  void checkSubset(const UsageMap& owned, const UsageMap& room) {
    room.forEach([&](PageNumber page) {
      if (!owned.contains(page)) {
        owners_.fault(table_.name(), page, "the page is listed as having room but does not belong to the table");
      }
    });
  }

  void checkFreeSpace(PageNumber number, const DataPage& page) {
    const std::size_t slots = data_at::kSlots + 2 * page.slotCount();
    if (page.freeSpace() + slots != page.lowest()) {
      owners_.fault(table_.name(), number, "the free space of the page is wrong");
    }
  }

  void checkPage(PageNumber number) {
    const DataPage page(file_.page(number));
    require(page.owner() == definition_.page, "the page belongs to another table than its map says");
    checkFreeSpace(number, page);
    for (std::size_t slot = 0; slot < page.slotCount(); ++slot) {
      const SlotAddress at{number, static_cast<Byte>(slot)};
      const Slot found = page.slot(slot);
      if (found.isDeleted()) continue;
      if (found.flags == kSlotHidden) moved_.expect(at);
      if (found.isPointer()) moved_.refer(slotAddressAt(page.row(slot), 0));
      if (!found.isFirst()) continue;
      ++rows_;
      owners_.guard(table_.name(), number, [&] { table_.rows().row(rowIdOf(at)); });
    }
  }

  void checkLongValues(std::size_t column) {
    const Column& definition = definition_.columns[column];
    SlotReferences pieces(table_.name(), owners_);
    if (definition.ownedMap.page != 0) {
      const UsageMap owned(file_, definition.ownedMap);
      owners_.claimMap(table_.name(), owned);
      owned.forEach([&](PageNumber page) { checkLongValuePage(page, pieces); });
      if (definition.roomMap.page != 0) {
        const UsageMap room(file_, definition.roomMap);
        owners_.claimMap(table_.name(), room);
        checkSubset(owned, room);
      }
    }
    std::uint32_t count = 0;
    for (RowScan scan = table_.scan(); scan.next();) {
      owners_.guard(table_.name(), addressOf(scan.row()).page, [&] { collectPieces(scan.row(), definition, pieces); });
      if (++count % kRowsBetweenTrims == 0) file_.trim();
    }
    pieces.compare("the long value");
  }

  void checkLongValuePage(PageNumber number, SlotReferences& pieces) {
    owners_.claim(table_.name(), number, "long values");
    owners_.guard(table_.name(), number, [&] {
      const DataPage page(file_.page(number));
      require(page.owner() == kLongValueOwner, "the page does not hold long values as its map says");
      checkFreeSpace(number, page);
      for (std::size_t slot = 0; slot < page.slotCount(); ++slot) {
        if (!page.slot(slot).isDeleted()) pieces.expect({number, static_cast<Byte>(slot)});
      }
    });
  }

  void collectPieces(RowId row, const Column& column, SlotReferences& pieces) {
    const auto cell = StoredRow(table_.rows().bytes(row), definition_).bytes(column);
    if (!cell) return;
    require(cell->size() >= long_value::kCell, "the cell of a long value is too short");
    if (LongValues::isInRow(*cell)) return;
    const bool isChain = (u32At(*cell, 0) & long_value::kSingle) == 0;
    SlotAddress at = slotAddressAt(*cell, 4);
    for (PageNumber steps = 0; at.page != 0; ++steps) {
      require(steps <= file_.pageCount(), "the pieces of a long value form a ring");
      pieces.refer(at);
      const ByteView piece = DataPage(file_.page(at.page)).row(at.row);
      require(!isChain || piece.size() >= 4, "a piece of a long value is empty");
      at = isChain ? slotAddressAt(piece, 0) : SlotAddress{};
    }
  }

  PageFile& file_;
  Table& table_;
  const TableDefinition& definition_;
  PageOwners& owners_;
  SlotReferences moved_;
  std::uint32_t rows_ = 0;
};

}  // namespace

void checkRows(AccessDatabase& database, Table& table, PageOwners& owners) { RowCheck(database, table, owners).run(); }

}  // namespace orva::access
