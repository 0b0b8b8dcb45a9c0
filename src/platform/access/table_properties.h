#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/access/cell.h"

namespace orva::access {

/// One named property; the value as stored, texts as UTF-16.
struct Property {
  std::string name;
  Byte ddl = 0;
  ColumnType type = ColumnType::kText;
  Bytes value = {};
};

/// The properties of a table and its columns: defaults, "required" and so on.
/// What is not known is kept as it is.
class TableProperties {
 public:
  /// Reads the stored form; an empty one gives no properties. Throws `Damage`.
  static TableProperties read(ByteView stored);
  Bytes write() const;
  bool isEmpty() const { return blocks_.empty(); }

  /// The expression that gives a new row its value ("3000", "\"A\"", "Now()").
  std::optional<std::string> defaultValue(std::string_view column) const { return text(column, "DefaultValue"); }
  bool isRequired(std::string_view column) const { return yes(column, "Required").value_or(false); }
  bool allowsZeroLength(std::string_view column) const { return yes(column, "AllowZeroLength").value_or(true); }
  std::optional<std::string> text(std::string_view column, std::string_view property) const;
  std::optional<bool> yes(std::string_view column, std::string_view property) const;

  void setDefaultValue(std::string_view column, std::string_view expression);
  void setRequired(std::string_view column, bool required) { setYes(column, "Required", required); }
  void setAllowsZeroLength(std::string_view column, bool allowed) { setYes(column, "AllowZeroLength", allowed); }
  void removeProperty(std::string_view column, std::string_view property);
  void removeColumn(std::string_view column);

 private:
  struct Block {
    std::uint16_t kind = 0;  // 0 the object itself, 1 a column
    std::string name;
    std::vector<Property> properties = {};
  };

  const Property* find(std::string_view column, std::string_view property) const;
  void set(std::string_view column, Property property);
  void setYes(std::string_view column, const char* property, bool value);
  static Block readBlock(std::uint16_t kind, ByteView bytes, const std::vector<std::string>& names);

  std::vector<Block> blocks_;
};

/// The value of a simple default: a number, a quoted text, yes/no, the date
/// functions. Nothing for an expression of another kind. `now` is the moment
/// that "Now()" and "Date()" mean.
std::optional<Cell> evaluateDefault(std::string_view expression, DateTime now);

}  // namespace orva::access
