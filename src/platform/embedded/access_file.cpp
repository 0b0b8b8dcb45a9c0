#include "platform/embedded/access_file.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <mutex>
#include <utility>

#include "platform/embedded/access_layout.h"
#include "platform/local/path_lookup.h"
#include "platform/values/text.h"

namespace orva::embedded {
namespace {

/// Every file that is open in this program, by its real path.
struct OpenFiles {
  std::mutex mutex;
  std::map<std::string, std::weak_ptr<AccessFile>> files;
};

OpenFiles& openFiles() {
  static OpenFiles files;
  return files;
}

std::string realPath(const std::filesystem::path& path) {
  std::error_code ignored;
  const auto real = std::filesystem::canonical(path, ignored);
  return pathText(real.empty() ? path : real);
}

[[noreturn]] void failFile(const std::string& text) { throw ProviderError(provider_number::kUnspecified, text); }

}  // namespace

std::shared_ptr<AccessFile> AccessFile::open(const std::string& path, const std::string& password) {
  const std::filesystem::path found = findPath(path);
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(found, ignored)) failFile("Could not find file '" + path + "'.");
  const std::string real = realPath(found);
  const std::lock_guard guard(openFiles().mutex);
  std::weak_ptr<AccessFile>& known = openFiles().files[real];
  auto file = known.lock();
  // What a failed write left behind is made good by opening the file again.
  if (file && file->database().file().isBroken()) std::exchange(file, nullptr)->database().abandon();
  if (file) {
    if (file->database().header().password == password) return file;
    throw ProviderError(provider_number::kLoginFailed, "The database password is not valid.");
  }
  file.reset(new AccessFile(access::AccessDatabase::open(real, {.password = password})));
  std::erase_if(openFiles().files, [](const auto& entry) { return entry.second.expired(); });
  openFiles().files[real] = file;
  return file;
}

void AccessFile::create(const std::string& path, const std::string& password) {
  const std::filesystem::path found = findPath(path);
  std::error_code ignored;
  if (found.empty() || std::filesystem::exists(found, ignored)) failFile("The database '" + path + "' exists already.");
  access::AccessDatabase::create(pathText(found), {.password = password});
}

AccessFile::AccessFile(std::unique_ptr<access::AccessDatabase> database) : database_(std::move(database)) {
  database_->setObserver(this);
  for (const std::string& name : database_->tableNames()) tables_.push_back(load(name));
}

std::shared_ptr<AccessTable> AccessFile::load(const std::string& name) {
  auto table = std::make_shared<AccessTable>();
  table->table = &database_->table(name);
  readLayout(*table);
  return table;
}

void AccessFile::reloadTable(const std::string& name) {
  ++generation_;
  access::Table* const present = database_->findTable(name);
  const auto known = std::find_if(tables_.begin(), tables_.end(), [&name](const std::shared_ptr<AccessTable>& table) {
    return equalsNoCase(table->layout.name, name);
  });
  if (known != tables_.end()) {
    (*known)->isCurrent = false;
    ++(*known)->changes;
  }
  if (!present) {
    if (known != tables_.end()) tables_.erase(known);
    return;
  }
  present->reload();
  if (known != tables_.end()) {
    *known = load(name);
  } else {
    tables_.push_back(load(name));
  }
}

void AccessFile::commit() {
  database_->commit();
  for (const Pending& change : pending_) {
    if (change.isNew) {
      change.lookup->insert(change.entry);
    } else {
      change.lookup->erase(change.entry);
    }
  }
  pending_.clear();
}

void AccessFile::rollback() {
  pending_.clear();
  for (const auto& table : tables_) ++table->changes;
  database_->rollback();
}

MemoryLookup& AccessFile::lookup(AccessTable& table, const std::vector<LookupPart>& parts) {
  for (const auto& known : table.lookups) {
    if (known->parts() == parts) return *known;
  }
  table.lookups.push_back(std::make_unique<MemoryLookup>(*table.table, parts, evaluator_));
  return *table.lookups.back();
}

void AccessFile::note(const access::Table& table, access::RowId row, const std::vector<access::Change>* changes,
                      bool isNew) {
  for (const auto& known : tables_) {
    if (known->table != &table) continue;
    ++known->changes;
    for (const auto& lookup : known->lookups) {
      if (changes && !lookup->uses(*changes)) continue;
      pending_.push_back({lookup.get(), lookup->entryFor(table, row), isNew});
    }
    return;
  }
}

void AccessFile::rowChanging(const access::Table& table, access::RowId row,
                             const std::vector<access::Change>* changes) {
  note(table, row, changes, false);
}

void AccessFile::rowChanged(const access::Table& table, access::RowId row, const std::vector<access::Change>* changes) {
  note(table, row, changes, true);
}

}  // namespace orva::embedded
