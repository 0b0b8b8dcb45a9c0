#include "platform/access/table_properties.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "platform/access/text_cell.h"
#include "platform/values/text.h"

namespace orva::access {
namespace {

constexpr Byte kMagic[] = {'M', 'R', '2', 0};
constexpr std::uint16_t kNamesBlock = 0x80;
constexpr std::size_t kBlockHead = 6;
constexpr std::size_t kValueHead = 8;
constexpr std::uint16_t kColumnBlock = 1;

std::string nameAt(ByteView bytes, std::size_t& at) {
  require(at + 2 <= bytes.size(), "the properties of a table are cut off");
  const std::size_t size = u16At(bytes, at);
  require(at + 2 + size <= bytes.size(), "the properties of a table are cut off");
  std::string name = toUtf8(utf16Of(bytes.subspan(at + 2, size)));
  at += 2 + size;
  return name;
}

void appendName(Bytes& bytes, std::string_view name) {
  const Bytes text = bytesOf(toUtf16(name));
  appendUnsigned(bytes, text.size(), 2);
  append(bytes, text);
}

void appendBlock(Bytes& bytes, std::uint16_t kind, ByteView content) {
  appendUnsigned(bytes, content.size() + kBlockHead, 4);
  appendUnsigned(bytes, kind, 2);
  append(bytes, content);
}

}  // namespace

TableProperties TableProperties::read(ByteView stored) {
  TableProperties properties;
  if (stored.empty()) return properties;
  require(stored.size() >= 4 && std::equal(std::begin(kMagic), std::end(kMagic), stored.begin()),
          "the properties of a table have an unknown form");
  std::vector<std::string> names;
  for (std::size_t at = 4; at + kBlockHead <= stored.size();) {
    const std::size_t size = u32At(stored, at);
    require(size >= kBlockHead && size <= stored.size() - at, "the properties of a table are cut off");
    const ByteView content = stored.subspan(at + kBlockHead, size - kBlockHead);
    const std::uint16_t kind = u16At(stored, at + 4);
    if (kind == kNamesBlock) {
      for (std::size_t n = 0; n < content.size();) names.push_back(nameAt(content, n));
    } else {
      properties.blocks_.push_back(readBlock(kind, content, names));
    }
    at += size;
  }
  return properties;
}

TableProperties::Block TableProperties::readBlock(std::uint16_t kind, ByteView bytes,
                                                  const std::vector<std::string>& names) {
  Block block{.kind = kind, .name = {}};
  std::size_t at = 4;
  block.name = nameAt(bytes, at);
  at = std::max<std::size_t>(at, u32At(bytes, 0));
  while (at + kValueHead <= bytes.size()) {
    const std::size_t size = u16At(bytes, at);
    const std::size_t name = u16At(bytes, at + 4);
    const std::size_t valueSize = u16At(bytes, at + 6);
    require(size >= kValueHead + valueSize && size <= bytes.size() - at && name < names.size(),
            "a property of a table is cut off");
    const ByteView value = bytes.subspan(at + kValueHead, valueSize);
    block.properties.push_back(
        {names[name], bytes[at + 2], static_cast<ColumnType>(bytes[at + 3]), Bytes(value.begin(), value.end())});
    at += size;
  }
  return block;
}

Bytes TableProperties::write() const {
  std::vector<std::string> names;
  const auto position = [&names](const std::string& name) {
    const auto found = std::find(names.begin(), names.end(), name);
    if (found != names.end()) return static_cast<std::size_t>(found - names.begin());
    names.push_back(name);
    return names.size() - 1;
  };
  Bytes blocks;
  for (const Block& block : blocks_) {
    Bytes name;
    appendName(name, block.name);
    Bytes content;
    appendUnsigned(content, name.size() + 4, 4);
    append(content, name);
    for (const Property& property : block.properties) {
      appendUnsigned(content, kValueHead + property.value.size(), 2);
      content.push_back(property.ddl);
      content.push_back(static_cast<Byte>(property.type));
      appendUnsigned(content, position(property.name), 2);
      appendUnsigned(content, property.value.size(), 2);
      append(content, property.value);
    }
    appendBlock(blocks, block.kind, content);
  }
  Bytes nameList;
  for (const std::string& name : names) appendName(nameList, name);
  Bytes stored(std::begin(kMagic), std::end(kMagic));
  appendBlock(stored, kNamesBlock, nameList);
  append(stored, blocks);
  return stored;
}

const Property* TableProperties::find(std::string_view column, std::string_view property) const {
  for (const Block& block : blocks_) {
    if (block.kind != kColumnBlock || !equalsNoCase(block.name, column)) continue;
    for (const Property& candidate : block.properties) {
      if (candidate.name == property) return &candidate;
    }
  }
  return nullptr;
}

std::optional<std::string> TableProperties::text(std::string_view column, std::string_view property) const {
  const Property* found = find(column, property);
  if (!found) return std::nullopt;
  return toUtf8(decodeText(found->value));
}

std::optional<bool> TableProperties::yes(std::string_view column, std::string_view property) const {
  const Property* found = find(column, property);
  if (!found || found->value.empty()) return std::nullopt;
  return found->value[0] != 0;
}

void TableProperties::set(std::string_view column, Property property) {
  removeProperty(column, property.name);
  for (Block& block : blocks_) {
    if (block.kind == kColumnBlock && equalsNoCase(block.name, column)) {
      block.properties.push_back(std::move(property));
      return;
    }
  }
  blocks_.push_back({kColumnBlock, std::string(column), {std::move(property)}});
}

void TableProperties::setDefaultValue(std::string_view column, std::string_view expression) {
  set(column, {"DefaultValue", 1, ColumnType::kMemo, bytesOf(toUtf16(expression))});
}

void TableProperties::setYes(std::string_view column, const char* property, bool value) {
  set(column, {property, 1, ColumnType::kBoolean, {static_cast<Byte>(value ? 0xFF : 0)}});
}

void TableProperties::removeProperty(std::string_view column, std::string_view property) {
  for (Block& block : blocks_) {
    if (block.kind != kColumnBlock || !equalsNoCase(block.name, column)) continue;
    std::erase_if(block.properties, [property](const Property& candidate) { return candidate.name == property; });
  }
}

void TableProperties::removeColumn(std::string_view column) {
  std::erase_if(
      blocks_, [column](const Block& block) { return block.kind == kColumnBlock && equalsNoCase(block.name, column); });
}

std::optional<Cell> evaluateDefault(std::string_view expression, DateTime now) {
  std::string_view text = trim(expression);
  if (text.starts_with('=')) text = trim(text.substr(1));
  if (text.size() >= 2 && (text.front() == '"' || text.front() == '\'') && text.back() == text.front()) {
    const std::string quote(1, text.front());
    return replaceAll(text.substr(1, text.size() - 2), quote + quote, quote);
  }
  for (const char* yes : {"yes", "true", "on"}) {
    if (equalsNoCase(text, yes)) return true;
  }
  for (const char* no : {"no", "false", "off"}) {
    if (equalsNoCase(text, no)) return false;
  }
  if (equalsNoCase(text, "null")) return Cell();
  if (equalsNoCase(text, "now()")) return now;
  if (equalsNoCase(text, "date()")) return DateTime{std::floor(now.days)};
  std::int64_t whole = 0;
  const auto asWhole = std::from_chars(text.data(), text.data() + text.size(), whole);
  if (!text.empty() && asWhole.ec == std::errc() && asWhole.ptr == text.data() + text.size()) return whole;
  double number = 0;
  const auto asNumber = std::from_chars(text.data(), text.data() + text.size(), number);
  if (!text.empty() && asNumber.ec == std::errc() && asNumber.ptr == text.data() + text.size()) return number;
  return std::nullopt;
}

}  // namespace orva::access
