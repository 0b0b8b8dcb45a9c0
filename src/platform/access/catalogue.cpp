#include "platform/access/catalogue.h"

#include <algorithm>

#include "platform/values/text.h"

namespace orva::access {
namespace {

constexpr std::int64_t kFullRights = 0x000FFEFF;
constexpr std::int32_t kFirstFreeId = static_cast<std::int32_t>(0x80000000);

std::size_t columnOf(const Table& table, std::string_view name) {
  const auto column = table.definition().findColumn(name);
  if (!column) throw Damage("the table " + table.name() + " has no column " + std::string(name));
  return *column;
}

std::int64_t whole(const Cell& cell) {
  const auto* number = std::get_if<std::int64_t>(&cell);
  return number ? *number : 0;
}

std::string textOf(const Cell& cell) {
  const auto* text = std::get_if<std::string>(&cell);
  return text ? *text : std::string();
}

}  // namespace

void setField(Row& row, const Table& table, std::string_view column, Cell value) {
  row[columnOf(table, column)] = std::move(value);
}

Catalogue::Catalogue(PageFile& file, PageAllocator& allocator, TableLookup& tables)
    : file_(file),
      objectsTable_(file, allocator, tables, "MSysObjects", kObjectsPage),
      rightsTable_(file, allocator, tables, "MSysACEs", kAccessRightsPage) {
  reload();
}

Cell Catalogue::field(const Table& table, RowId row, std::string_view column) const {
  return file_.at(table.definition().page, [&] { return table.rows().cell(row, columnOf(table, column)); });
}

void Catalogue::reload() {
  file_.at(kObjectsPage, [this] { readObjects(); });
}

void Catalogue::readObjects() {
  objects_.clear();
  const std::size_t id = columnOf(objectsTable_, "Id");
  const std::size_t parent = columnOf(objectsTable_, "ParentId");
  const std::size_t name = columnOf(objectsTable_, "Name");
  const std::size_t type = columnOf(objectsTable_, "Type");
  const std::size_t flags = columnOf(objectsTable_, "Flags");
  std::vector<bool> wanted(objectsTable_.definition().columns.size(), false);
  for (const std::size_t column : {id, parent, name, type, flags}) wanted[column] = true;
  for (RowScan scan = objectsTable_.scan(); scan.next();) {
    const Row row = objectsTable_.rows().row(scan.row(), &wanted);
    objects_.push_back({.row = scan.row(),
                        .id = static_cast<std::int32_t>(whole(row[id])),
                        .parent = static_cast<std::int32_t>(whole(row[parent])),
                        .name = textOf(row[name]),
                        .type = static_cast<ObjectType>(whole(row[type])),
                        .flags = static_cast<std::uint32_t>(whole(row[flags]))});
  }
}

const CatalogueObject* Catalogue::findTable(std::string_view name) const {
  const auto found = std::find_if(objects_.begin(), objects_.end(), [name](const CatalogueObject& object) {
    return object.isTable() && equalsNoCase(object.name, name);
  });
  return found == objects_.end() ? nullptr : &*found;
}

const CatalogueObject* Catalogue::tableAt(PageNumber definition) const {
  const auto found = std::find_if(objects_.begin(), objects_.end(), [definition](const CatalogueObject& object) {
    return object.isTable() && object.definition() == definition;
  });
  return found == objects_.end() ? nullptr : &*found;
}

TableProperties Catalogue::propertiesOf(const CatalogueObject& object) const {
  const Cell stored = field(objectsTable_, object.row, "LvProp");
  const auto* bytes = std::get_if<Bytes>(&stored);
  if (!bytes) return {};
  try {
    return TableProperties::read(*bytes);
  } catch (const Damage& damage) {
    file_.fail(addressOf(object.row).page, "object '" + object.name + "': " + damage.what());
  }
}

void Catalogue::add(std::string_view name, ObjectType type, std::int32_t id, DateTime now) {
  const bool isRelationship = type == ObjectType::kRelationship;
  const std::int32_t parent = isRelationship ? kRelationshipsContainer : kTablesContainer;
  // Owner and rights are coded in a way that only copies can follow.
  const auto database = std::find_if(objects_.begin(), objects_.end(), [](const CatalogueObject& object) {
    return object.type == ObjectType::kDatabase && object.id == kDatabaseId;
  });
  Row row(objectsTable_.definition().columns.size());
  setField(row, objectsTable_, "Id", std::int64_t{id});
  setField(row, objectsTable_, "ParentId", std::int64_t{parent});
  setField(row, objectsTable_, "Name", std::string(name));
  setField(row, objectsTable_, "Type", static_cast<std::int64_t>(type));
  setField(row, objectsTable_, "DateCreate", now);
  setField(row, objectsTable_, "DateUpdate", now);
  setField(row, objectsTable_, "Flags", std::int64_t{0});
  if (database != objects_.end()) {
    setField(row, objectsTable_, "Owner", field(objectsTable_, database->row, "Owner"));
  }
  objectsTable_.insert(std::move(row));
  copyRights(parent, id);
  reload();
}

void Catalogue::copyRights(std::int32_t from, std::int32_t to) {
  const std::size_t object = columnOf(rightsTable_, "ObjectId");
  const std::size_t sid = columnOf(rightsTable_, "SID");
  std::vector<Cell> holders;
  for (RowScan scan = rightsTable_.scan(); scan.next();) {
    if (whole(rightsTable_.rows().cell(scan.row(), object)) != from) continue;
    Cell holder = rightsTable_.rows().cell(scan.row(), sid);
    if (std::find(holders.begin(), holders.end(), holder) == holders.end()) holders.push_back(std::move(holder));
  }
  for (Cell& holder : holders) {
    Row row(rightsTable_.definition().columns.size());
    setField(row, rightsTable_, "ObjectId", std::int64_t{to});
    setField(row, rightsTable_, "SID", std::move(holder));
    setField(row, rightsTable_, "ACM", kFullRights);
    rightsTable_.insert(std::move(row));
  }
}

void Catalogue::remove(const CatalogueObject& object) {
  const std::int32_t id = object.id;
  objectsTable_.remove(object.row);
  const std::size_t column = columnOf(rightsTable_, "ObjectId");
  for (RowScan scan = rightsTable_.scan(); scan.next();) {
    if (whole(rightsTable_.rows().cell(scan.row(), column)) == id) rightsTable_.remove(scan.row());
  }
  reload();
}

void Catalogue::setProperties(const CatalogueObject& object, const TableProperties& properties) {
  Cell stored;
  if (!properties.isEmpty()) stored = properties.write();
  objectsTable_.update(object.row, {{columnOf(objectsTable_, "LvProp"), std::move(stored)}});
}

void Catalogue::touch(const CatalogueObject& object, DateTime now) {
  objectsTable_.update(object.row, {{columnOf(objectsTable_, "DateUpdate"), now}});
}

std::int32_t Catalogue::nextFreeId() const {
  std::int32_t next = kFirstFreeId;
  for (const CatalogueObject& object : objects_) {
    if (object.id < 0) next = std::max(next, object.id + 1);
  }
  return next;
}

}  // namespace orva::access
