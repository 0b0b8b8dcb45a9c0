#pragma once

#include <optional>
#include <string_view>

#include "platform/access/cell.h"

namespace orva::access {

/// How letters that stand for two (sharp s, ae, thorn) count for the accents and
/// notes after them. Engines differ; we write the first form and accept both.
enum class DoubleLetters { kTwoPlaces, kOnePlace };

/// The key of a text in the order "General", flag byte left out. Nothing when
/// the text holds a character whose weight is not known.
std::optional<Bytes> textKey(std::u16string_view text, bool descending,
                             DoubleLetters letters = DoubleLetters::kTwoPlaces);

/// The same for UTF-8, appended to a key; false when there is none.
bool appendTextKey(Bytes& key, std::string_view text, bool descending,
                   DoubleLetters letters = DoubleLetters::kTwoPlaces);

/// The inline weights only: what every text that starts like this one begins
/// its key with (after the flag byte). Trailing spaces count.
std::optional<Bytes> textKeyPrefix(std::u16string_view text);

/// Appends one column's part of an index key. False when a text has no key.
bool appendKeyPart(Bytes& key, const Column& column, bool descending, const Cell& cell,
                   DoubleLetters letters = DoubleLetters::kTwoPlaces);

/// The whole key of a row. Nothing when the key cannot be made.
std::optional<Bytes> indexKey(const TableDefinition& definition, const RealIndex& index, const Row& row,
                              DoubleLetters letters = DoubleLetters::kTwoPlaces);

/// True when all (any) of the index's columns are null in the row.
bool allNull(const TableDefinition& definition, const RealIndex& index, const Row& row);
bool anyNull(const TableDefinition& definition, const RealIndex& index, const Row& row);

}  // namespace orva::access
