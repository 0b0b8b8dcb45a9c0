#include "platform/access/new_database.h"

#include <algorithm>
#include <limits>

#include "platform/access/catalogue.h"
#include "platform/access/file_header.h"

namespace orva::access {
namespace {

using enum ColumnType;

constexpr PageNumber kMapPage = 6;
constexpr PageNumber kFirstIndexPage = 7;
constexpr PageNumber kPagesInTheBeginning = 14;
constexpr PageNumber kFirstMapBits = 512;

/// Owners and rights are coded by a stream that goes with the creation date in
/// the header, so a new file takes a date whose codes are known.
constexpr Byte kCreationDate[] = {0x3E, 0x85, 0xD3, 0x3B, 0x3E, 0xAB, 0xE4, 0x40};
constexpr Byte kEngine[] = {0x65, 0x89};
constexpr Byte kAdmin[] = {0x64, 0x8B};
constexpr Byte kUsers[] = {0x65, 0x8B};
constexpr Byte kCreator[] = {0x65, 0x8E};

struct SystemColumn {
  const char* name;
  ColumnType type;
  Byte flags = 0;
};

struct SystemIndex {
  const char* name;
  std::vector<std::uint16_t> columns;
  Byte flags;
  bool isPrimary = false;
};

struct SystemTable {
  PageNumber page;
  std::vector<SystemColumn> columns;
  std::vector<SystemIndex> indexes;
};

const std::vector<SystemTable>& systemTables() {
  static const std::vector<SystemTable> kTables = {
      {kObjectsPage,
       {{"Id", kLong},
        {"ParentId", kLong},
        {"Name", kText},
        {"Type", kInteger},
        {"DateCreate", kDate},
        {"DateUpdate", kDate},
        {"Owner", kBinary, column_flag::kScrambled},
        {"Flags", kLong},
        {"Database", kMemo},
        {"Connect", kMemo},
        {"ForeignName", kText},
        {"RmtInfoShort", kBinary},
        {"RmtInfoLong", kOle},
        {"Lv", kOle},
        {"LvProp", kOle},
        {"LvModule", kOle},
        {"LvExtra", kOle}},
       {{"ParentIdName", {1, 2}, index_flag::kUnique}, {"Id", {0}, index_flag::kUnique, true}}},
      {kAccessRightsPage,
       {{"ObjectId", kLong}, {"SID", kBinary, column_flag::kScrambled}, {"ACM", kLong}, {"FInheritable", kBoolean}},
       {{"ObjectId", {0}, index_flag::kNoNulls}}},
      {kQueriesPage,
       {{"ObjectId", kLong},
        {"Attribute", kByte},
        {"Order", kBinary},
        {"Name1", kText},
        {"Name2", kText},
        {"Expression", kMemo},
        {"Flag", kInteger},
        {"LvExtra", kLong}},
       {{"ObjectIdAttribute", {0, 1, 2}, index_flag::kUnique, true}}},
      {kRelationshipsPage,
       {{"szRelationship", kText},
        {"grbit", kLong},
        {"ccolumn", kLong},
        {"icolumn", kLong},
        {"szObject", kText},
        {"szColumn", kText},
        {"szReferencedObject", kText},
        {"szReferencedColumn", kText}},
       {{"szRelationship", {0}, index_flag::kIgnoreNulls},
        {"szObject", {4}, index_flag::kIgnoreNulls},
        {"szReferencedObject", {6}, index_flag::kIgnoreNulls}}}};
  return kTables;
}

struct SystemObject {
  const char* name;
  ObjectType type;
  std::int32_t id;
  std::int32_t parent;
  ByteView owner;
};

constexpr SystemObject kObjects[] = {
    {"Tables", ObjectType::kContainer, Catalogue::kTablesContainer, Catalogue::kRoot, kEngine},
    {"Databases", ObjectType::kContainer, Catalogue::kDatabasesContainer, Catalogue::kRoot, kEngine},
    {"Relationships", ObjectType::kContainer, Catalogue::kRelationshipsContainer, Catalogue::kRoot, kEngine},
    {"MSysDb", ObjectType::kDatabase, Catalogue::kDatabaseId, Catalogue::kDatabasesContainer, kAdmin},
    {"MSysObjects", ObjectType::kTable, kObjectsPage, Catalogue::kTablesContainer, kEngine},
    {"MSysACEs", ObjectType::kTable, kAccessRightsPage, Catalogue::kTablesContainer, kEngine},
    {"MSysQueries", ObjectType::kTable, kQueriesPage, Catalogue::kTablesContainer, kEngine},
    {"MSysRelationships", ObjectType::kTable, kRelationshipsPage, Catalogue::kTablesContainer, kEngine},
};

struct AccessRight {
  std::int32_t object;
  ByteView holder;
  std::int64_t rights;
  bool inheritable = false;
};

constexpr AccessRight kRights[] = {
    {kObjectsPage, kAdmin, 0x60000},
    {kAccessRightsPage, kAdmin, 0x60000},
    {kQueriesPage, kAdmin, 0x60000},
    {kRelationshipsPage, kAdmin, 0xE0000},
    {Catalogue::kTablesContainer, kCreator, 0xF00FE, true},
    {Catalogue::kTablesContainer, kAdmin, 0x60001},
    {Catalogue::kRelationshipsContainer, kCreator, 0xF00FE, true},
    {Catalogue::kRelationshipsContainer, kAdmin, 0x60001},
    {Catalogue::kDatabasesContainer, kAdmin, 0x60000},
    {Catalogue::kDatabaseId, kAdmin, 0x6000E},
    {Catalogue::kDatabaseId, kUsers, 0xE},
    {kQueriesPage, kUsers, 0x14},
    {kRelationshipsPage, kUsers, 0x14},
    {kObjectsPage, kUsers, 0x14},
    {Catalogue::kTablesContainer, kUsers, 0xFFEFF, true},
    {Catalogue::kRelationshipsContainer, kUsers, 0xFFFFF, true},
};

std::uint16_t systemColumnLength(ColumnType type) {
  switch (type) {
    case kBoolean:
    case kByte:
      return 1;
    case kInteger:
      return 2;
    case kLong:
      return 4;
    case kDate:
      return 8;
    case kText:
    case kBinary:
      return kMaximumBinary;
    default:
      return 0;
  }
}

class NewDatabase {
 public:
  NewDatabase(PageFile& file, DateTime now) : file_(file), now_(now), allocator_(file, {kGlobalMapPage, 0}) {}

  void write() {
    while (file_.pageCount() < kPagesInTheBeginning) file_.append();
    writeNewHeader(file_.change(0), kCreationDate);
    writeGlobalMaps();
    DataPageEditor::format(file_.change(kMapPage), 0);
    nextIndexPage_ = kFirstIndexPage;
    for (const SystemTable& table : systemTables()) writeDefinition(table);
    writeRows();
  }

 private:
  void writeGlobalMaps() {
    Page& page = file_.change(kGlobalMapPage);
    DataPageEditor::format(page, kGlobalMapPage);
    DataPageEditor(page).insert(UsageMap::emptyRow());
    DataPageEditor(page).insert(UsageMap::emptyRow());
    UsageMap freePages(file_, {kGlobalMapPage, 0});
    for (PageNumber free = kPagesInTheBeginning; free < kFirstMapBits; ++free) freePages.add(free, allocator_);
  }

  SlotAddress newMap() { return {kMapPage, DataPageEditor(file_.change(kMapPage)).insert(UsageMap::emptyRow())}; }

  void writeDefinition(const SystemTable& table) {
    TableDefinition definition{.page = table.page, .kind = 'S'};
    definition.ownedMap = newMap();
    definition.roomMap = newMap();
    std::size_t fixed = 0;
    for (const SystemColumn& column : table.columns) addColumn(definition, column, fixed);
    for (const SystemIndex& index : table.indexes) addIndex(definition, index);
    const auto byName = [](const auto& left, const auto& right) { return left.name < right.name; };
    std::sort(definition.columns.begin(), definition.columns.end(), byName);
    std::sort(definition.logicalIndexes.begin(), definition.logicalIndexes.end(), byName);
    writeTableDefinition(file_, allocator_, definition);
  }

  void addColumn(TableDefinition& definition, const SystemColumn& column, std::size_t& fixedEnd) {
    const bool isFixed = column.type != kText && column.type != kBinary && !isLongValue(column.type);
    Column added{.name = column.name,
                 .type = column.type,
                 .number = definition.columnsEver++,
                 .variablePosition = definition.variableEver,
                 .flags = static_cast<Byte>(column_flag::kAlways | column_flag::kSystem | column.flags),
                 .length = systemColumnLength(column.type)};
    if (isFixed) {
      added.flags |= column_flag::kFixed;
      if (column.type != kBoolean) added.fixedOffset = static_cast<std::uint16_t>(fixedEnd);
      fixedEnd += added.fixedSize();
    } else {
      ++definition.variableEver;
    }
    if (isLongValue(column.type)) {
      added.ownedMap = newMap();
      added.roomMap = newMap();
    }
    definition.columns.push_back(std::move(added));
  }

  void addIndex(TableDefinition& definition, const SystemIndex& index) {
    RealIndex real{
        .map = newMap(), .root = nextIndexPage_++, .flags = static_cast<Byte>(index_flag::kAlways | index.flags)};
    for (const std::uint16_t column : index.columns) real.columns.push_back({column, false});
    IndexPage(PageType::kIndexLeaf, definition.page, 0).write(file_.change(real.root), false);
    UsageMap(file_, real.map).add(real.root, allocator_);
    const auto number = static_cast<std::uint32_t>(definition.realIndexes.size());
    definition.logicalIndexes.push_back({.name = index.name,
                                         .number = number,
                                         .realIndex = number,
                                         .kind = index.isPrimary ? IndexKind::kPrimaryKey : IndexKind::kOrdinary});
    definition.realIndexes.push_back(std::move(real));
  }

  static Cell bytes(ByteView view) { return Bytes(view.begin(), view.end()); }

  void writeRows() {
    struct NoOtherTables final : TableLookup {
      Table& tableAt(PageNumber) override { throw Damage("system tables have no relationships"); }
    } none;
    Table objects(file_, allocator_, none, "MSysObjects", kObjectsPage);
    for (const SystemObject& object : kObjects) {
      Row row(objects.definition().columns.size());
      setField(row, objects, "Id", std::int64_t{object.id});
      setField(row, objects, "ParentId", std::int64_t{object.parent});
      setField(row, objects, "Name", std::string(object.name));
      setField(row, objects, "Type", static_cast<std::int64_t>(object.type));
      setField(row, objects, "DateCreate", now_);
      setField(row, objects, "DateUpdate", now_);
      setField(row, objects, "Owner", bytes(object.owner));
      setField(row, objects, "Flags", std::int64_t{std::numeric_limits<std::int32_t>::min()});
      objects.insert(std::move(row));
    }
    Table rights(file_, allocator_, none, "MSysACEs", kAccessRightsPage);
    for (const AccessRight& right : kRights) {
      Row row(rights.definition().columns.size());
      setField(row, rights, "ObjectId", std::int64_t{right.object});
      setField(row, rights, "SID", bytes(right.holder));
      setField(row, rights, "ACM", right.rights);
      setField(row, rights, "FInheritable", right.inheritable);
      rights.insert(std::move(row));
    }
  }

  PageFile& file_;
  DateTime now_;
  PageAllocator allocator_;
  PageNumber nextIndexPage_ = kFirstIndexPage;
};

}  // namespace

void writeNewDatabase(PageFile& file, DateTime now) { NewDatabase(file, now).write(); }

}  // namespace orva::access
