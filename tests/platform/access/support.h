#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "fake_file_system.h"
#include "fakes/case_file.h"
#include "fakes/temporary_folder.h"
#include "platform/access/structure_check.h"

namespace orva::access {

inline std::string fixture(const std::string& name) { return fixturePath("mdb/" + name); }

inline Bytes readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(in), {});
}

/// The real files, with the password that each needs.
struct FixtureFile {
  const char* name;
  const char* password = "";
};
inline const std::vector<FixtureFile>& fixtureFiles() {
  static const std::vector<FixtureFile> kFiles = {{"adox_jet4.mdb"},
                                                  {"testV2000.mdb"},
                                                  {"indexTestV2003.mdb"},
                                                  {"compIndexTestV2000.mdb"},
                                                  {"testIndexPropertiesV2000.mdb"},
                                                  {"testUnicodeCompV2003.mdb"},
                                                  {"overflowTestV2003.mdb"},
                                                  {"delColTestV2000.mdb"},
                                                  {"test2V2000.mdb"},
                                                  {"pivot.mdb"},
                                                  {"V2000_with-password.mdb", "password"},
                                                  {"db-enc.mdb"}};
  return kFiles;
}

/// A copy of a real file in memory, open for writing.
inline std::unique_ptr<AccessDatabase> openCopy(FakeFileSystem& files, const FixtureFile& file) {
  files.files["copy.mdb"] = std::make_shared<Bytes>(readFile(fixture(file.name)));
  return AccessDatabase::open("copy.mdb", {.password = file.password, .files = &files});
}

/// The faults that matter, one a line; empty for a sound file.
inline std::string seriousFaults(AccessDatabase& database, bool withHarmless = false) {
  std::string text;
  for (const StructureFault& fault : checkStructure(database)) {
    if (withHarmless || !fault.isHarmless) text += fault.toText() + "\n";
  }
  return text;
}

/// All faults, waste of room included: for files that we made ourselves.
inline std::string allFaults(AccessDatabase& database) { return seriousFaults(database, true); }

/// The rows of a table as texts, columns separated by "|".
inline std::vector<std::string> rowsOf(Table& table) {
  std::vector<std::string> rows;
  for (RowScan scan = table.scan(); scan.next();) {
    std::string line;
    for (const Cell& cell : table.rows().row(scan.row())) line += (line.empty() ? "" : "|") + toText(cell);
    rows.push_back(line);
  }
  return rows;
}

}  // namespace orva::access
