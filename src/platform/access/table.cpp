#include "platform/access/table.h"

#include <algorithm>

#include "platform/access/text_walk.h"

namespace orva::access {

Table::Table(PageFile& file, PageAllocator& allocator, TableLookup& tables, std::string name, PageNumber definition)
    : file_(file),
      allocator_(allocator),
      tables_(tables),
      name_(std::move(name)),
      longValues_(file, allocator),
      reader_(file, definition_, longValues_) {
  definition_.page = definition;
  reload();
}

void Table::reload() {
  definition_ = readTableDefinition(file_, definition_.page);
  rules_.clear();
  pages_ = std::make_unique<RowPages>(file_, allocator_, definition_.page, definition_.ownedMap, definition_.roomMap);
  longValues_.forgetPages();
  // Cursors point to trees: one that is still the same tree stays.
  std::vector<std::unique_ptr<IndexTree>> trees;
  for (const RealIndex& index : definition_.realIndexes) {
    const auto same = std::find_if(trees_.begin(), trees_.end(), [&index](const std::unique_ptr<IndexTree>& tree) {
      return tree && tree->root() == index.root && tree->map().address() == index.map;
    });
    if (same != trees_.end()) {
      trees.push_back(std::move(*same));
      trees.back()->noteChange();
    } else {
      trees.push_back(std::make_unique<IndexTree>(file_, allocator_, definition_.page, index));
    }
  }
  trees_ = std::move(trees);
}

void Table::walkTexts(std::vector<std::size_t> columns, const TextVisitor& visit) const {
  TextWalk(file_, definition_, reader_, std::move(columns)).run(pages_->owned(), visit);
}

void Table::requireKnownTypes() const {
  static constexpr ColumnType kKnown[] = {
      ColumnType::kBoolean, ColumnType::kByte,   ColumnType::kInteger, ColumnType::kLong,   ColumnType::kCurrency,
      ColumnType::kSingle,  ColumnType::kDouble, ColumnType::kDate,    ColumnType::kBinary, ColumnType::kText,
      ColumnType::kOle,     ColumnType::kMemo,   ColumnType::kGuid,    ColumnType::kDecimal};
  for (const Column& column : definition_.columns) {
    if (std::find(std::begin(kKnown), std::end(kKnown), column.type) == std::end(kKnown)) {
      throw AccessFileError(provider_number::kUnspecified, "Table '" + name_ + "' has a column of an unknown type ('" +
                                                               column.name + "') and can only be read.");
    }
  }
}

std::optional<Bytes> Table::keyFor(const RealIndex& real, const Row& row) const {
  if (real.refusesNulls() && anyNull(definition_, real, row)) {
    throw AccessFileError(provider_number::kIntegrity,
                          "Table '" + name_ + "': a column of the primary key is left empty.");
  }
  if (real.ignoresNulls() && allNull(definition_, real, row)) return std::nullopt;
  for (const IndexColumn& part : real.columns) {
    const Column& column = definition_.columns[definition_.columnOfNumber(part.number).value()];
    if (column.isText() && !column.isGeneralOrder()) {
      throw AccessFileError(provider_number::kUnspecified,
                            "Table '" + name_ + "': the indexed column '" + column.name +
                                "' has a sort order other than General, so its rows can only be read.");
    }
  }
  auto key = indexKey(definition_, real, row);
  if (!key) {
    throw AccessFileError(provider_number::kUnspecified,
                          "Table '" + name_ +
                              "': a text of an indexed column holds a character that this program "
                              "cannot sort.");
  }
  if (key->size() + kRowIdSize + kChildSize > kIndexCapacity / 3) {
    throw AccessFileError(provider_number::kDataOverflow, "Table '" + name_ + "': the key of an index is too long.");
  }
  return key;
}

void Table::checkUnique(std::size_t index, const Row& row, const Bytes& key, std::optional<RowId> except) const {
  const RealIndex& real = definition_.realIndexes[index];
  if (!real.isUnique() || allNull(definition_, real, row)) return;
  if (!trees_[index]->containsKey(key, except)) return;
  const auto name = std::find_if(definition_.logicalIndexes.begin(), definition_.logicalIndexes.end(),
                                 [index](const LogicalIndex& logical) { return logical.realIndex == index; });
  throw AccessFileError(provider_number::kUnspecified,
                        "Table '" + name_ + "' has a row with the same values in its unique index '" +
                            (name == definition_.logicalIndexes.end() ? std::string() : name->name) + "'.");
}

std::vector<Bytes> Table::sortedEntries(const RealIndex& index, const std::string& indexName) const {
  std::vector<Bytes> entries;
  entries.reserve(definition_.rowCount);
  std::size_t nullRows = 0;
  for (RowScan scan = this->scan(); scan.next();) {
    Row row(definition_.columns.size());
    for (const IndexColumn& part : index.columns) {
      const std::size_t column = *definition_.columnOfNumber(part.number);
      row[column] = reader_.cell(scan.row(), column);
    }
    if (allNull(definition_, index, row)) ++nullRows;
    const auto key = keyFor(index, row);
    if (key) entries.push_back(IndexEntry{*key, scan.row()}.bytes());
    if (entries.size() % 256 == 0) file_.trim();
  }
  std::sort(entries.begin(), entries.end(),
            [](const Bytes& left, const Bytes& right) { return compareEntries(left, right) < 0; });
  // Rows without any value may repeat; they all have one and the same key.
  const std::size_t repeatable = index.ignoresNulls() || nullRows == 0 ? 0 : nullRows - 1;
  if (index.isUnique() && countDistinctKeys(entries) + repeatable < entries.size()) {
    throw AccessFileError(
        provider_number::kUnspecified,
        "Table '" + name_ + "' has rows with the same values, so the index '" + indexName + "' cannot be unique.");
  }
  return entries;
}

std::uint32_t countDistinctKeys(const std::vector<Bytes>& entries) {
  std::uint32_t count = 0;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const bool same = i > 0 && entries[i].size() == entries[i - 1].size() &&
                      std::equal(entries[i].begin(), entries[i].end() - kRowIdSize, entries[i - 1].begin());
    if (!same) ++count;
  }
  return count;
}

bool Table::uses(const RealIndex& index, const std::vector<Change>& changes) const {
  return std::any_of(changes.begin(), changes.end(), [&](const Change& change) {
    const std::uint16_t number = definition_.columns[change.column].number;
    return std::any_of(index.columns.begin(), index.columns.end(),
                       [number](const IndexColumn& part) { return part.number == number; });
  });
}

Row Table::keyRow(RowId id) const {
  std::vector<bool> wanted(definition_.columns.size(), false);
  for (const RealIndex& index : definition_.realIndexes) {
    for (const IndexColumn& part : index.columns) wanted[definition_.columnOfNumber(part.number).value()] = true;
  }
  return reader_.row(id, &wanted);
}

}  // namespace orva::access
