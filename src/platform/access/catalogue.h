#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/access/table.h"

namespace orva::access {

/// Kinds of objects that the catalogue lists and this program knows.
enum class ObjectType : std::int16_t { kTable = 1, kDatabase = 2, kContainer = 3, kQuery = 5, kRelationship = 8 };

/// A row of MSysObjects.
struct CatalogueObject {
  RowId row = 0;
  std::int32_t id = 0;
  std::int32_t parent = 0;
  std::string name = {};
  ObjectType type = ObjectType::kTable;
  std::uint32_t flags = 0;

  bool isTable() const { return type == ObjectType::kTable && id > 0; }
  bool isUserTable() const { return isTable() && (flags & 0x80000002u) == 0; }
  /// For a table its `id` is the page of its definition.
  PageNumber definition() const { return static_cast<PageNumber>(id); }
};

/// The table of all objects of the file, and the two that belong to it: access
/// rights and relationships.
class Catalogue {
 public:
  static constexpr std::int32_t kTablesContainer = 0x0F000001;
  static constexpr std::int32_t kDatabasesContainer = 0x0F000002;
  static constexpr std::int32_t kRelationshipsContainer = 0x0F000003;
  static constexpr std::int32_t kDatabaseId = 0x10000000;
  static constexpr std::int32_t kRoot = 0x0F000000;
  static constexpr std::uint32_t kSystemFlag = 0x80000000;

  Catalogue(PageFile& file, PageAllocator& allocator, TableLookup& tables);

  /// Reads the rows anew.
  void reload();
  const std::vector<CatalogueObject>& objects() const { return objects_; }
  const CatalogueObject* findTable(std::string_view name) const;
  const CatalogueObject* tableAt(PageNumber definition) const;
  /// The stored properties of an object; none when it has none or they cannot be read.
  TableProperties propertiesOf(const CatalogueObject& object) const;

  /// Adds an object with its owner and access rights. A table's id is its definition page.
  void add(std::string_view name, ObjectType type, std::int32_t id, DateTime now);
  void remove(const CatalogueObject& object);
  void setProperties(const CatalogueObject& object, const TableProperties& properties);
  /// Notes that the structure of an object has changed.
  void touch(const CatalogueObject& object, DateTime now);
  std::int32_t nextFreeId() const;

  Table& objectsTable() { return objectsTable_; }
  Table& rightsTable() { return rightsTable_; }

 private:
  Cell field(const Table& table, RowId row, std::string_view column) const;
  void readObjects();
  void copyRights(std::int32_t from, std::int32_t to);

  PageFile& file_;
  Table objectsTable_;
  Table rightsTable_;
  std::vector<CatalogueObject> objects_;
};

/// Sets a field of a row by the column's name.
void setField(Row& row, const Table& table, std::string_view column, Cell value);

}  // namespace orva::access
