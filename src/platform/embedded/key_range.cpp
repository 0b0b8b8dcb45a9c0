#include "platform/embedded/key_range.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/access/index_key.h"
#include "platform/access/text_cell.h"
#include "platform/values/text.h"

namespace orva::embedded {
namespace {

using access::Bytes;
using access::Cell;
using access::Column;

constexpr access::Byte kValueFlag = 0x7F;
constexpr access::Byte kEndOfWeights = 0x01;

/// The least key that follows all keys that begin with this one.
template <typename Key>
std::optional<Key> afterAll(Key key) {
  using Unit = typename Key::value_type;
  while (!key.empty() && static_cast<unsigned char>(key.back()) == 0xFF) key.pop_back();
  if (key.empty()) return std::nullopt;
  key.back() = static_cast<Unit>(static_cast<unsigned char>(key.back()) + 1);
  return key;
}

Bytes joined(const Bytes& prefix, const Bytes& rest) {
  Bytes all = prefix;
  all.insert(all.end(), rest.begin(), rest.end());
  return all;
}

KeyRange<Bytes> allWith(Bytes prefix) {
  auto upper = afterAll(prefix);
  return {std::move(prefix), std::move(upper)};
}

bool isAscii(const std::string& text) {
  return std::none_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

/// The weights of a text, when they do not depend on the case of its letters. The
/// engine takes two letters for one that the order of the file tells apart, such
/// as the micro sign and the Greek letter.
std::optional<Bytes> weightsOf(std::string text) {
  text.erase(text.find_last_not_of(' ') + 1);
  auto weights = access::textKeyPrefix(access::toUtf16(text));
  if (!weights || isAscii(text)) return weights;
  const bool same = access::textKeyPrefix(access::toUtf16(toUpper(text))) == weights &&
                    access::textKeyPrefix(access::toUtf16(toLower(text))) == weights;
  return same ? weights : std::nullopt;
}

/// Adds to a key what all texts equal to one text have in common. True when this is all that there is, so that the
/// next column may follow.
bool appendEqualText(Bytes& key, const std::string& text) {
  const std::size_t start = key.size();
  key.push_back(kValueFlag);
  if (isAscii(text)) {
    if (access::appendTextKey(key, text, false)) return true;
  } else if (const auto weights = weightsOf(text)) {
    // Accents and notes may be counted in two ways.
    access::append(key, *weights);
    key.push_back(kEndOfWeights);
    return false;
  }
  key.resize(start);
  return false;
}

/// Texts with one beginning; "upper" is the beginning with FF behind it.
KeyRange<Bytes> beginningRange(const Bytes& prefix, const Scalar& lower, const Scalar& upper) {
  const auto* from = std::get_if<std::string>(&lower);
  const auto* to = std::get_if<std::string>(&upper);
  if (!from || !to || *to != *from + '\xFF') return allWith(prefix);
  const auto weights = weightsOf(*from);
  if (!weights) return allWith(prefix);
  Bytes key = prefix;
  key.push_back(kValueFlag);
  key.insert(key.end(), weights->begin(), weights->end());
  return allWith(key);
}

std::optional<double> numberOf(const Scalar& scalar) {
  if (const auto* whole = std::get_if<std::int64_t>(&scalar)) return static_cast<double>(*whole);
  if (const auto* number = std::get_if<double>(&scalar)) return *number;
  return std::nullopt;
}

/// A cell at or below (above) a number that the column can hold; nothing when there is none.
std::optional<Cell> cellBeside(const Column& column, const Scalar& scalar, bool below) {
  const auto number = numberOf(scalar);
  if (!number || !std::isfinite(*number)) return std::nullopt;
  const double rounded = below ? std::floor(*number) : std::ceil(*number);
  Cell cell = *number;
  if (column.type == access::ColumnType::kDate) {
    // Times of day count away from the day, for days before day 0 towards lower numbers.
    const double edge = below && rounded <= 0 ? rounded - 1 : below ? rounded : rounded + 1;
    cell = access::DateTime{edge};
  } else if (column.type == access::ColumnType::kCurrency) {
    if (const auto* units = std::get_if<std::int64_t>(&scalar)) {
      cell = Currency::fromUnits(*units);
    } else if (std::fabs(rounded) < 9e18) {
      cell = Currency::fromUnits(static_cast<std::int64_t>(rounded));
    }
  } else if (column.type != access::ColumnType::kDouble && column.type != access::ColumnType::kSingle) {
    cell = rounded;
  }
  try {
    return access::convertFor(column, cell);
  } catch (const ProviderError&) {
    return std::nullopt;
  }
}

/// The first moment that is no longer (or, `from`: already) beyond an open limit of days: that day itself does not
/// count, however many rows stand on it. Nothing where times of day count backwards, or for other columns.
std::optional<Cell> openDay(const Column& column, const Scalar& scalar, bool from) {
  const auto number = numberOf(scalar);
  if (column.type != access::ColumnType::kDate || !number || !std::isfinite(*number)) return std::nullopt;
  const double day = from ? std::floor(*number) + 1 : std::ceil(*number);
  if (day < 1) return std::nullopt;
  try {
    return access::convertFor(column, access::DateTime{day});
  } catch (const ProviderError&) {
    return std::nullopt;
  }
}

std::optional<Bytes> keyPart(const Column& column, bool descending, const std::optional<Cell>& cell) {
  Bytes part;
  if (!cell || !access::appendKeyPart(part, column, descending, *cell)) return std::nullopt;
  return part;
}

/// Builds the range column by column.
class FileRange {
 public:
  FileRange(const access::TableDefinition& definition, const AccessPlan& plan, const std::vector<Scalar>& arguments)
      : definition_(definition), plan_(plan), arguments_(arguments) {}

  std::optional<KeyRange<Bytes>> find() {
    constexpr std::size_t kUsual = 64;
    prefix_.reserve(kUsual);
    const access::RealIndex& real = definition_.realIndexes[plan_.realIndex];
    for (std::size_t i = 0; i < plan_.equal.size(); ++i) {
      const Column& column = columnOf(real.columns[i]);
      if (plan_.equal[i] == AccessPlan::kIsNull) {
        access::appendKeyPart(prefix_, column, real.columns[i].descending, Cell());
        continue;
      }
      const Scalar& wanted = arguments_[static_cast<std::size_t>(plan_.equal[i])];
      if (isNull(wanted)) return std::nullopt;
      if (auto range = addEqual(column, real.columns[i].descending, wanted)) return range;
      if (isNowhere_) return std::nullopt;
    }
    const bool limited = plan_.lower != AccessPlan::kNone || plan_.upper != AccessPlan::kNone;
    return limited ? limitedRange(real.columns[plan_.equal.size()]) : allWith(std::move(prefix_));
  }

 private:
  const Column& columnOf(const access::IndexColumn& part) const {
    return definition_.columns[definition_.columnOfNumber(part.number).value()];
  }
  const Scalar* argument(int at) const {
    return at == AccessPlan::kNone ? nullptr : &arguments_[static_cast<std::size_t>(at)];
  }

  /// Adds a value to the keys' beginning; a range when nothing can be added behind it.
  std::optional<KeyRange<Bytes>> addEqual(const Column& column, bool descending, const Scalar& wanted) {
    const auto* text = std::get_if<std::string>(&wanted);
    if (column.isText()) {
      if (!text) return allWith(prefix_);
      if (appendEqualText(prefix_, *text)) return std::nullopt;
      return allWith(prefix_);
    }
    if (text) return allWith(prefix_);
    const auto below = keyPart(column, descending, cellBeside(column, wanted, true));
    const auto above = keyPart(column, descending, cellBeside(column, wanted, false));
    isNowhere_ = !below || below != above;
    if (!isNowhere_) prefix_ = joined(prefix_, *below);
    return std::nullopt;
  }

  KeyRange<Bytes> limitedRange(const access::IndexColumn& part) const {
    const Column& column = columnOf(part);
    const Scalar* from = argument(plan_.lower);
    const Scalar* to = argument(plan_.upper);
    if (column.isText()) return from && to ? beginningRange(prefix_, *from, *to) : allWith(prefix_);
    const auto isNumber = [](const Scalar* bound) { return !bound || numberOf(*bound).has_value(); };
    if (!isNumber(from) || !isNumber(to)) return allWith(prefix_);
    auto first = from ? keyPart(column, part.descending, cellBeside(column, *from, true)) : std::nullopt;
    auto last = to ? keyPart(column, part.descending, cellBeside(column, *to, false)) : std::nullopt;
    if (part.descending) std::swap(first, last);
    KeyRange<Bytes> range = allWith(prefix_);
    if (first) range.lower = joined(prefix_, *first);
    // Nulls stand before all values.
    if (!first && !part.descending) range.lower.push_back(kValueFlag);
    if (last) range.upper = afterAll(joined(prefix_, *last));
    if (part.descending) return range;
    const auto openFrom = plan_.lowerIsOpen ? keyPart(column, false, openDay(column, *from, true)) : std::nullopt;
    const auto openTo = plan_.upperIsOpen ? keyPart(column, false, openDay(column, *to, false)) : std::nullopt;
    if (openFrom) range.lower = joined(prefix_, *openFrom);
    if (openTo) range.upper = joined(prefix_, *openTo);
    return range;
  }

  const access::TableDefinition& definition_;
  const AccessPlan& plan_;
  const std::vector<Scalar>& arguments_;
  Bytes prefix_;
  bool isNowhere_ = false;
};

}  // namespace

std::optional<KeyRange<Bytes>> fileRange(const access::TableDefinition& definition, const AccessPlan& plan,
                                         const std::vector<Scalar>& arguments) {
  return FileRange(definition, plan, arguments).find();
}

std::optional<KeyRange<std::string>> lookupRange(const AccessPlan& plan, const std::vector<Scalar>& arguments) {
  std::string prefix;
  for (const int equal : plan.equal) {
    const Scalar wanted = equal == AccessPlan::kIsNull ? Scalar() : arguments[static_cast<std::size_t>(equal)];
    if (equal != AccessPlan::kIsNull && isNull(wanted)) return std::nullopt;
    appendSortKey(prefix, wanted);
  }
  KeyRange<std::string> range{prefix, afterAll(prefix)};
  // A null is not unequal to anything.
  if (plan.unequal != AccessPlan::kNone) range.lower += kNumberMark;
  if (plan.lower == AccessPlan::kNone && plan.upper == AccessPlan::kNone) return range;
  if (plan.lower != AccessPlan::kNone) {
    appendSortKey(range.lower, arguments[static_cast<std::size_t>(plan.lower)]);
  } else {
    range.lower += kNumberMark;
  }
  if (plan.upper != AccessPlan::kNone) {
    std::string last = prefix;
    appendSortKey(last, arguments[static_cast<std::size_t>(plan.upper)]);
    range.upper = afterAll(last);
  }
  return range;
}

std::optional<KeyRange<std::string>> leftOutRange(const AccessPlan& plan, const std::vector<Scalar>& arguments) {
  if (plan.unequal == AccessPlan::kNone) return std::nullopt;
  AccessPlan equal = plan;
  equal.equal.push_back(std::exchange(equal.unequal, AccessPlan::kNone));
  return lookupRange(equal, arguments);
}

}  // namespace orva::embedded
