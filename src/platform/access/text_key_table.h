#pragma once

#include <span>

namespace orva::access {

/// What a character adds to the key of a text.
enum class CharacterClass : unsigned char {
  kUnknown,   // weight not known: no key can be made
  kSimple,    // weight
  kAccented,  // weight and an accent code
  kNote,      // no weight; a note of its place (apostrophe, hyphen, controls)
  kModifier,  // no weight; raises the accent code before it
  kIgnored
};

/// Consecutive characters of one class. The last byte of the weight (of a note
/// or modifier: its code) grows by `step` from one to the next.
struct CharacterRun {
  char16_t first;
  int count;
  int step;
  CharacterClass kind;
  const char* weight;
  unsigned char accent;
  int places;  // 2 for letters that stand for two
};

/// The sort order "General" in ascending order of characters.
std::span<const CharacterRun> generalSortOrder();

}  // namespace orva::access
