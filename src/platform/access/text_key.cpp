#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "platform/access/index_key.h"
#include "platform/access/text_cell.h"
#include "platform/access/text_key_table.h"

namespace orva::access {
namespace {

constexpr Byte kNoAccent = 0x02;
constexpr Byte kSeparator = 0x01;
constexpr Byte kEnd = 0x00;
constexpr Byte kNoteMark = 0x06;
constexpr std::size_t kFirstNotePlace = 7;
constexpr std::size_t kBytesPerPlace = 4;

/// One character, looked up directly.
struct Weight {
  CharacterClass kind = CharacterClass::kUnknown;
  Byte size = 0;
  Byte bytes[2] = {};
  Byte accent = 0;
  Byte places = 0;
};

std::vector<Weight> makeWeights() {
  const auto runs = generalSortOrder();
  std::vector<Weight> weights(static_cast<std::size_t>(runs.back().first) +
                              static_cast<std::size_t>(runs.back().count));
  for (const CharacterRun& run : runs) {
    for (int i = 0; i < run.count; ++i) {
      Weight& weight = weights[static_cast<std::size_t>(run.first) + static_cast<std::size_t>(i)];
      weight.kind = run.kind;
      weight.size = static_cast<Byte>(std::strlen(run.weight));
      std::memcpy(weight.bytes, run.weight, weight.size);
      if (weight.size > 0) {
        Byte& last = weight.bytes[weight.size - 1];
        last = static_cast<Byte>(last + i * run.step);
      }
      weight.accent = run.accent;
      weight.places = static_cast<Byte>(run.places);
    }
  }
  return weights;
}

const std::vector<Weight>& allWeights() {
  static const std::vector<Weight> weights = makeWeights();
  return weights;
}

const Weight& weightOf(char16_t c) {
  static const Weight unknown;
  return c < allWeights().size() ? allWeights()[c] : unknown;
}

/// A note on what stands behind so many places.
void appendNote(Bytes& notes, std::size_t places, Byte code) {
  appendBigEndian(notes, 0x8000 | (kFirstNotePlace + kBytesPerPlace * places), 2);
  notes.push_back(kNoteMark);
  notes.push_back(code);
}

/// The three parts of a key, collected character by character.
class TextKeyParts {
 public:
  TextKeyParts(DoubleLetters letters, std::size_t length) : letters_(letters) {
    // Two bytes a character, and what closes the key.
    weights_.reserve(2 * length + 8);
    accents_.reserve(length + 8);
  }

  bool add(char16_t c) {
    const Weight& weight = weightOf(c);
    switch (weight.kind) {
      case CharacterClass::kUnknown:
        return false;
      case CharacterClass::kIgnored:
        return true;
      case CharacterClass::kNote:
        addNote(weight.bytes[0]);
        return true;
      case CharacterClass::kModifier:
        addModifier(weight.bytes[0]);
        return true;
      default:
        addWeight(weight);
        return true;
    }
  }

  Bytes takeWeights() { return std::move(weights_); }

  Bytes assemble() {
    while (!accents_.empty() && accents_.back() <= kNoAccent) accents_.pop_back();
    Bytes key = std::move(weights_);
    key.push_back(kSeparator);
    append(key, accents_);
    if (!notes_.empty()) {
      key.insert(key.end(), 3, kSeparator);
      append(key, notes_);
    }
    key.push_back(kEnd);
    return key;
  }

 private:
  void addWeight(const Weight& weight) {
    weights_.insert(weights_.end(), weight.bytes, weight.bytes + weight.size);
    places_ += letters_ == DoubleLetters::kTwoPlaces ? weight.places : 1u;
    accents_.resize(places_, kNoAccent);
    if (weight.accent != 0) accents_.back() = weight.accent;
  }
  void addModifier(Byte value) {
    if (accents_.empty()) {
      accents_.push_back(value);
    } else {
      accents_.back() = static_cast<Byte>(accents_.back() + value);
    }
  }
  void addNote(Byte code) { appendNote(notes_, places_, code); }

  DoubleLetters letters_;
  Bytes weights_;
  Bytes accents_;
  Bytes notes_;
  std::size_t places_ = 0;
};

/// Appends where the apostrophes, hyphens and control characters of a text stand, counted in the letters before them.
void appendPlainNotes(Bytes& key, std::string_view text, const Weight* ofCharacters) {
  key.insert(key.end(), 3, kSeparator);
  std::size_t places = 0;
  for (const char c : text) {
    const Weight& weight = ofCharacters[static_cast<Byte>(c)];
    if (weight.kind == CharacterClass::kNote) {
      appendNote(key, places, weight.bytes[0]);
    } else {
      ++places;
    }
  }
}

/// Appends the key of a text in ASCII, of which no letter has an accent. False, with nothing appended, for others.
bool appendPlainKey(Bytes& key, std::string_view text) {
  text = text.substr(0, kMaximumText);
  text = text.substr(0, text.find_last_not_of(' ') + 1);
  const Weight* const ofCharacters = allWeights().data();
  std::array<Byte, 2 * kMaximumText> weights;
  std::size_t size = 0;
  bool hasNotes = false;
  for (const char c : text) {
    if (static_cast<Byte>(c) >= 0x80) return false;
    const Weight& weight = ofCharacters[static_cast<Byte>(c)];
    if (weight.kind == CharacterClass::kSimple) {
      std::memcpy(&weights[size], weight.bytes, sizeof weight.bytes);
      size += weight.size;
    } else if (weight.kind == CharacterClass::kNote) {
      hasNotes = true;
    } else {
      return false;
    }
  }
  append(key, ByteView(weights).first(size));
  key.push_back(kSeparator);
  if (hasNotes) appendPlainNotes(key, text, ofCharacters);
  key.push_back(kEnd);
  return true;
}

}  // namespace

bool appendTextKey(Bytes& key, std::string_view text, bool descending, DoubleLetters letters) {
  if (!descending && appendPlainKey(key, text)) return true;
  const auto whole = textKey(toUtf16(text), descending, letters);
  if (whole) append(key, *whole);
  return whole.has_value();
}

std::optional<Bytes> textKey(std::u16string_view text, bool descending, DoubleLetters letters) {
  text = text.substr(0, kMaximumText);
  while (text.ends_with(u' ')) text.remove_suffix(1);
  TextKeyParts parts(letters, text.size());
  for (const char16_t c : text) {
    if (!parts.add(c)) return std::nullopt;
  }
  Bytes key = parts.assemble();
  if (!descending) return key;
  key.insert(key.end() - 1, kEnd);
  std::for_each(key.begin(), key.end() - 1, [](Byte& byte) { byte = static_cast<Byte>(~byte); });
  return key;
}

std::optional<Bytes> textKeyPrefix(std::u16string_view text) {
  TextKeyParts parts(DoubleLetters::kTwoPlaces, std::min(text.size(), kMaximumText));
  for (const char16_t c : text.substr(0, kMaximumText)) {
    if (!parts.add(c)) return std::nullopt;
  }
  return parts.takeWeights();
}

}  // namespace orva::access
