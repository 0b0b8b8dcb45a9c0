#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "app/batch_test.h"

namespace orva {
namespace {

namespace fs = std::filesystem;

using CheckFile = BatchTest;

TEST_F(CheckFile, TellsASoundFileFromADamagedOne) {
  const std::string company = folder.file("DEMOOrva.MDB");
  EXPECT_EQ(run({"check-file", company}).status, 0);
  // Every page but the header and the free map in turn, with other bytes in its middle.
  const std::string bad = folder.file("bad.mdb");
  int found = 0;
  int pages = 0;
  for (std::uintmax_t page = 2; page < fs::file_size(company) / 4096; page += 7, ++pages) {
    fs::copy_file(company, bad, fs::copy_options::overwrite_existing);
    std::fstream(bad, std::ios::binary | std::ios::in | std::ios::out).seekp(static_cast<std::streamoff>(page * 4096))
        << std::string(600, '\x5A');
    const Ran ran = run({"check-file", bad});
    if (ran.status == 0) continue;
    ++found;
    EXPECT_EQ(ran.status, 1);
    EXPECT_NE(ran.out.find("page "), std::string::npos) << ran.out;
    EXPECT_EQ(ran.out.find(" is sound"), std::string::npos) << ran.out;
  }
  EXPECT_GT(found, pages * 9 / 10);
}

TEST_F(CheckFile, FilesThatCannotBeChecked) {
  folder.write("text.mdb", std::string(20000, 'x'));
  folder.write("empty.mdb", "");
  const std::pair<const char*, const char*> kCases[] = {{"missing.mdb", "does not exist"},
                                                        {"text.mdb", "not an Access database"},
                                                        {"empty.mdb", "not an Access database"},
                                                        {".", "not an Access database"}};
  for (const auto& [name, text] : kCases) {
    const Ran ran = run({"check-file", folder.file(name)});
    EXPECT_EQ(ran.status, 1) << name;
    EXPECT_NE(ran.out.find(text), std::string::npos) << name << ": " << ran.out;
  }
  EXPECT_EQ(run({"check-file"}).status, 2);
}

TEST_F(CheckFile, AFileInUseIsLeftAlone) {
  const std::string lockFile = folder.file("DEMOOrva.ldb");
  const int lock = ::open(lockFile.c_str(), O_RDWR | O_CREAT, 0600);
  ASSERT_EQ(flock(lock, LOCK_EX), 0);
  const Ran ran = run({"check-file", folder.file("DEMOOrva.MDB")});
  EXPECT_EQ(ran.status, 1);
  EXPECT_NE(ran.out.find("in use by another program"), std::string::npos) << ran.out;
  ::close(lock);
  fs::remove(lockFile);
}

}  // namespace
}  // namespace orva
