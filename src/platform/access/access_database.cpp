#include "platform/access/access_database.h"

#include <ctime>

#include "platform/access/new_database.h"
#include "platform/values/text.h"

namespace orva::access {
namespace {

constexpr std::string_view kDatabaseEnding = ".mdb";

/// "Books.mdb" has the lock file "Books.ldb".
std::string lockPath(const std::string& path) {
  const bool known = endsWithNoCase(path, kDatabaseEnding);
  return (known ? path.substr(0, path.size() - kDatabaseEnding.size()) : path) + ".ldb";
}

std::unique_ptr<FileLock> takeLock(FileSystem& files, const std::string& path) {
  auto lock = AccessDatabase::lock(files, path);
  if (lock) return lock;
  throw AccessFileError(provider_number::kUnspecified,
                        "The database " + path + " is in use by another program. Close it there and try again.");
}

}  // namespace

DateTime currentMoment() {
  constexpr double kSecondsPerDay = 86'400;
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  const auto date = Date::fromParts(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday).value_or(Date());
  return {date.dayNumber() + (local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec) / kSecondsPerDay};
}

std::unique_ptr<FileLock> AccessDatabase::lock(FileSystem& files, const std::string& path) {
  return files.lock(lockPath(path));
}

std::vector<std::string> AccessDatabase::companionFiles(const std::string& path) {
  return {RedoLog::pathFor(path), lockPath(path)};
}

std::unique_ptr<AccessDatabase> AccessDatabase::open(const std::string& path, const OpenOptions& options) {
  FileSystem& files = options.files ? *options.files : machineFileSystem();
  std::unique_ptr<AccessDatabase> database(new AccessDatabase);
  if (!files.exists(path)) {
    throw AccessFileError(provider_number::kUnspecified, "The database file " + path + " does not exist.");
  }
  if (options.forWriting) database->lock_ = takeLock(files, path);
  database->file_ = PageFile::open(files, path, options.forWriting);
  PageFile& file = *database->file_;
  database->header_ = file.at(0, [&file] { return FileHeader::read(file.page(0)); });
  if (options.asksPassword && database->header_.password != options.password) {
    throw AccessFileError(provider_number::kLoginFailed, "The password of the database " + path + " is another one.");
  }
  file.setScramblingKey(database->header_.scramblingKey);
  database->load();
  return database;
}

std::unique_ptr<AccessDatabase> AccessDatabase::create(const std::string& path, const OpenOptions& options) {
  FileSystem& files = options.files ? *options.files : machineFileSystem();
  std::unique_ptr<AccessDatabase> database(new AccessDatabase);
  database->lock_ = takeLock(files, path);
  database->file_ = PageFile::create(files, path);
  PageFile& file = *database->file_;
  try {
    writeNewDatabase(file, currentMoment());
    if (!options.password.empty()) writePassword(file.change(0), options.password);
    file.commit();
    file.sweep();
  } catch (...) {
    database.reset();
    files.remove(path);
    throw;
  }
  database->header_ = file.at(0, [&file] { return FileHeader::read(file.page(0)); });
  database->load();
  return database;
}

void AccessDatabase::load() {
  allocator_ = std::make_unique<PageAllocator>(*file_, header_.freeMap);
  catalogue_ = std::make_unique<Catalogue>(*file_, *allocator_, *this);
}

std::vector<std::string> AccessDatabase::tableNames() const {
  std::vector<std::string> names;
  for (const CatalogueObject& object : catalogue_->objects()) {
    if (object.isUserTable()) names.push_back(object.name);
  }
  return names;
}

Table& AccessDatabase::tableAt(PageNumber definition) {
  const auto known = tables_.find(definition);
  if (known != tables_.end()) return *known->second;
  const CatalogueObject* object = catalogue_->tableAt(definition);
  if (!object) file_->fail(definition, "a relationship leads to a table that the catalogue does not have");
  auto loaded = std::make_unique<Table>(*file_, *allocator_, *this, object->name, definition);
  loaded->setProperties(catalogue_->propertiesOf(*object));
  loaded->setObserver(observer_);
  return *(tables_[definition] = std::move(loaded));
}

Table* AccessDatabase::findTable(std::string_view name) {
  const CatalogueObject* object = catalogue_->findTable(name);
  if (!object) return nullptr;
  if (object->definition() == kObjectsPage) return &catalogue_->objectsTable();
  if (object->definition() == kAccessRightsPage) return &catalogue_->rightsTable();
  return &tableAt(object->definition());
}

Table& AccessDatabase::table(std::string_view name) {
  Table* found = findTable(name);
  if (found) return *found;
  throw AccessFileError(provider_number::kNoSuchTable,
                        "The database " + path() + " has no table '" + std::string(name) + "'.");
}

void AccessDatabase::commit() {
  if (!file_->hasChanges()) return file_->trim();
  file_->commit();
}

void AccessDatabase::abandon() {
  file_->abandon();
  lock_.reset();
}

void AccessDatabase::rollback() {
  if (!file_->hasChanges()) return;
  file_->rollback();
  allocator_->forgetHint();
  catalogue_->objectsTable().reload();
  catalogue_->rightsTable().reload();
  catalogue_->reload();
  for (auto at = tables_.begin(); at != tables_.end();) {
    const CatalogueObject* object = catalogue_->tableAt(at->first);
    if (!object) {
      at = tables_.erase(at);
      continue;
    }
    at->second->reload();
    at->second->setProperties(catalogue_->propertiesOf(*object));
    ++at;
  }
}

void AccessDatabase::setPassword(std::string_view password) {
  writePassword(file_->change(0), password);
  header_.password = std::string(password);
}

}  // namespace orva::access
