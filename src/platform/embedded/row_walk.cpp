#include "platform/embedded/row_walk.h"

#include <algorithm>
#include <limits>

#include "platform/embedded/key_range.h"

namespace orva::embedded {
namespace {

using access::RowId;

constexpr std::int64_t kHighestKey = std::numeric_limits<RowId>::max();

/// The key that a bound allows at the most (at the least), whatever it is compared with.
std::int64_t keyBound(const std::vector<Scalar>& arguments, int at, std::int64_t none) {
  if (at == AccessPlan::kNone) return none;
  const auto* key = std::get_if<std::int64_t>(&arguments[static_cast<std::size_t>(at)]);
  return key ? std::clamp(*key, std::int64_t{0}, kHighestKey) : none;
}

class OneRow final : public RowWalk {
 public:
  explicit OneRow(RowId row) : row_(row) {}
  std::optional<RowId> next() override { return std::exchange(row_, std::nullopt); }

 private:
  std::optional<RowId> row_;
};

class Scan final : public RowWalk {
 public:
  Scan(const access::Table& table, const AccessPlan& plan, const std::vector<Scalar>& arguments)
      : scan_(table.scan()),
        lowest_(keyBound(arguments, plan.lower, 0)),
        highest_(keyBound(arguments, plan.upper, kHighestKey)),
        backwards_(plan.descending) {
    // One row before the first, so that this one is met as well.
    if (!backwards_ && lowest_ > 0) scan_.standOn(static_cast<RowId>(lowest_ - 1));
    if (backwards_ && highest_ < kHighestKey) scan_.standOn(static_cast<RowId>(highest_ + 1));
  }

  std::optional<RowId> next() override {
    if (!(backwards_ ? scan_.previous() : scan_.next())) return std::nullopt;
    const RowId row = scan_.row();
    return row >= lowest_ && row <= highest_ ? std::optional(row) : std::nullopt;
  }

 private:
  access::RowScan scan_;
  std::int64_t lowest_;
  std::int64_t highest_;
  bool backwards_;
};

class FileIndexWalk final : public RowWalk {
 public:
  FileIndexWalk(const access::IndexTree& tree, KeyRange<access::Bytes> range, bool backwards)
      : range_(std::move(range)), backwards_(backwards), cursor_(start(tree)) {}

  std::optional<RowId> next() override {
    if (!isFirst_ && !cursor_.atEnd()) {
      backwards_ ? cursor_.previous() : cursor_.next();
    }
    isFirst_ = false;
    if (cursor_.atEnd() || !isInside()) return std::nullopt;
    return cursor_.row();
  }

 private:
  access::IndexCursor start(const access::IndexTree& tree) const {
    if (!backwards_) return tree.lowerBound(range_.lower);
    return range_.upper ? tree.before(*range_.upper) : tree.last();
  }
  bool isInside() const {
    if (backwards_) return access::compareEntries(cursor_.bytes(), range_.lower) >= 0;
    return !range_.upper || access::compareEntries(cursor_.bytes(), *range_.upper) < 0;
  }

  KeyRange<access::Bytes> range_;
  bool backwards_;
  access::IndexCursor cursor_;
  bool isFirst_ = true;
};

class LookupWalk final : public RowWalk {
 public:
  LookupWalk(const MemoryIndex& index, KeyRange<std::string> range, std::optional<KeyRange<std::string>> leftOut,
             bool backwards)
      : index_(index),
        range_(std::move(range)),
        leftOut_(std::move(leftOut)),
        backwards_(backwards),
        cursor_(start(index)) {}

  std::optional<RowId> next() override {
    if (!isFirst_ && !cursor_.atEnd()) {
      backwards_ ? cursor_.previous() : cursor_.next();
    }
    isFirst_ = false;
    leapOver();
    if (cursor_.atEnd()) return std::nullopt;
    const bool inside = backwards_ ? cursor_.entry() >= range_.lower : !range_.upper || cursor_.entry() < *range_.upper;
    return inside ? std::optional(MemoryLookup::rowOf(cursor_.entry())) : std::nullopt;
  }

 private:
  MemoryIndex::Cursor start(const MemoryIndex& index) const {
    if (!backwards_) return index.lowerBound(range_.lower);
    return range_.upper ? index.before(*range_.upper) : index.last();
  }

  /// From the first entry that is left out to behind the last one.
  void leapOver() {
    if (!leftOut_ || cursor_.atEnd() || cursor_.entry() < leftOut_->lower) return;
    if (leftOut_->upper && cursor_.entry() >= *leftOut_->upper) return;
    if (backwards_) {
      cursor_ = index_.before(leftOut_->lower);
    } else {
      cursor_ = leftOut_->upper ? index_.lowerBound(*leftOut_->upper) : index_.before({});
    }
  }

  const MemoryIndex& index_;
  KeyRange<std::string> range_;
  std::optional<KeyRange<std::string>> leftOut_;
  bool backwards_;
  MemoryIndex::Cursor cursor_;
  bool isFirst_ = true;
};

}  // namespace

std::unique_ptr<RowWalk> startWalk(AccessFile& file, AccessTable& table, const AccessPlan& plan,
                                   const std::vector<Scalar>& arguments) {
  switch (plan.way) {
    case AccessPlan::Way::kScan:
      return std::make_unique<Scan>(*table.table, plan, arguments);
    case AccessPlan::Way::kKey: {
      const auto* key = std::get_if<std::int64_t>(&arguments[static_cast<std::size_t>(plan.equal[0])]);
      const bool isRow = key && *key > 0 && *key <= kHighestKey && table.table->rows().exists(static_cast<RowId>(*key));
      return isRow ? std::make_unique<OneRow>(static_cast<RowId>(*key)) : nullptr;
    }
    case AccessPlan::Way::kFileIndex: {
      auto range = fileRange(table.table->definition(), plan, arguments);
      if (!range) return nullptr;
      return std::make_unique<FileIndexWalk>(table.table->tree(plan.realIndex), std::move(*range), plan.descending);
    }
    case AccessPlan::Way::kLookup: {
      auto range = lookupRange(plan, arguments);
      if (!range) return nullptr;
      const MemoryIndex& index = file.lookup(table, plan.parts).index();
      return std::make_unique<LookupWalk>(index, std::move(*range), leftOutRange(plan, arguments), plan.descending);
    }
  }
  return nullptr;
}

}  // namespace orva::embedded
