#include "platform/access/structure_check.h"

#include <algorithm>

#include "platform/access/page_owners.h"

namespace orva::access {
namespace {

void checkTable(AccessDatabase& database, Table& table, PageOwners& owners) {
  const TableDefinition& definition = table.definition();
  owners.claim(table.name(), definition.page, "definition");
  for (const PageNumber page : definition.furtherPages) owners.claim(table.name(), page, "definition");
  owners.guard(table.name(), definition.page, [&] { checkRows(database, table, owners); });
  owners.guard(table.name(), definition.page, [&] { checkIndexes(database, table, owners); });
}

/// A folder in which no lock file can be made, such as one on a disc, has no writers either.
std::unique_ptr<FileLock> lockIfPossible(FileSystem& files, const std::string& path) {
  try {
    return AccessDatabase::lock(files, path);
  } catch (const AccessFileError&) {
    return std::make_unique<FileLock>();
  }
}

}  // namespace

std::string StructureFault::toText() const {
  const bool hasPage = page != AccessFileError::kNoPage;
  if (table.empty() && !hasPage) return text;
  std::string place = table.empty() ? "File" : "Table '" + table + "'";
  if (hasPage) place += ", page " + std::to_string(page);
  return place + ": " + text;
}

PageOwners::PageOwners(AccessDatabase& database)
    : database_(database), claims_(database.file().pageCount(), Claim::kNone) {
  claim({}, 0, "header");
  claim({}, kGlobalMapPage, "map of free pages");
  guard({}, kGlobalMapPage, [&] {
    for (const PageNumber page : database.allocator().bitPages()) claim({}, page, "map of free pages");
    const UsageMap second(database.file(), {kGlobalMapPage, 1});
    for (const PageNumber page : second.bitPages()) claim({}, page, "second map");
  });
}

void PageOwners::fault(const std::string& table, PageNumber page, std::string text) {
  if (faults_.size() < kMostFaults) faults_.push_back({table, page, std::move(text)});
}

void PageOwners::note(const std::string& table, PageNumber page, std::string text) {
  if (faults_.size() < kMostFaults) faults_.push_back({table, page, std::move(text), true});
}

/// The place stands in front of every fault already.
std::string PageOwners::textWithoutPlace(const AccessFileError& error) const {
  const std::string text = error.what();
  const std::string place = database_.path() + ", page " + std::to_string(error.page()) + ": ";
  return text.starts_with(place) ? text.substr(place.size()) : text;
}

void PageOwners::claim(const std::string& table, PageNumber page, const char* part) {
  if (page >= claims_.size()) {
    return fault(table, page, std::string("the page, used for: ") + part + ", is past the end of the file");
  }
  if (claims_[page] != Claim::kNone) {
    fault(table, page, std::string("the page, used for: ") + part + ", is also used for something else");
  }
  claims_[page] = Claim::kOne;
}

void PageOwners::claimMap(const std::string& table, const UsageMap& map) {
  const PageNumber page = map.address().page;
  if (page >= claims_.size()) return fault(table, page, "the page of a usage map is past the end of the file");
  if (claims_[page] == Claim::kOne && page != kGlobalMapPage) {
    fault(table, page, "the page of a usage map is also used for something else");
  }
  if (page != kGlobalMapPage) claims_[page] = Claim::kMapPage;
  for (const PageNumber bits : map.bitPages()) claim(table, bits, "bits of a usage map");
}

void PageOwners::reportLostPages() {
  guard({}, kGlobalMapPage, [&] {
    std::vector<PageNumber> lost;
    for (PageNumber page = 0; page < claims_.size(); ++page) {
      const bool isFree = database_.allocator().isFree(page);
      if (claims_[page] == Claim::kNone && !isFree) lost.push_back(page);
      if (claims_[page] != Claim::kNone && isFree) fault({}, page, "the page is in use but marked as free");
    }
    if (lost.empty()) return;
    note({}, lost.front(),
         "pages that belong to nothing but are not free, from this one on: " + std::to_string(lost.size()));
  });
}

std::vector<StructureFault> checkStructure(AccessDatabase& database) {
  PageOwners owners(database);
  for (const CatalogueObject& object : database.catalogue().objects()) {
    if (!object.isTable()) continue;
    owners.guard(object.name, object.definition(),
                 [&] { checkTable(database, *database.findTable(object.name), owners); });
    database.file().trim();
  }
  owners.reportLostPages();
  return owners.takeFaults();
}

bool isSound(const std::vector<StructureFault>& faults) {
  return std::all_of(faults.begin(), faults.end(), [](const StructureFault& fault) { return fault.isHarmless; });
}

std::vector<StructureFault> checkFile(const std::string& path) {
  FileSystem& files = machineFileSystem();
  try {
    if (!files.exists(path)) return {{.text = "The file " + path + " does not exist."}};
    const auto lock = lockIfPossible(files, path);
    if (!lock) return {{.text = "The file " + path + " is in use by another program. Close it there and try again."}};
    const auto database = AccessDatabase::open(path, {.forWriting = false, .asksPassword = false});
    return checkStructure(*database);
  } catch (const AccessFileError& error) {
    return {{.text = error.what()}};
  }
}

}  // namespace orva::access
