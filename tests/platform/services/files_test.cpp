#include "platform/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "fakes/fake_files.h"
#include "fakes/temporary_folder.h"
#include "platform/local/local_files.h"

namespace orva {
namespace {

using Lines = std::vector<std::string>;

/// One implementation of the files service with an empty folder to work in.
struct Place {
  std::unique_ptr<TemporaryFolder> disk;
  std::unique_ptr<Files> files;
  std::string folder;
  std::function<void(const std::string&)> setReadOnly;

  std::string at(const std::string& name) const { return joinPath(folder, name); }
};

Place localPlace() {
  Place place;
  place.disk = std::make_unique<TemporaryFolder>();
  place.files = std::make_unique<LocalFiles>();
  place.folder = place.disk->text();
  place.setReadOnly = [folder = place.disk->path()](const std::string& name) {
    std::filesystem::permissions(folder / name, std::filesystem::perms::owner_read);
  };
  return place;
}

Place fakePlace() {
  auto fake = std::make_unique<FakeFiles>();
  fake->addFolder("C:\\Orva");
  Place place;
  place.folder = "C:\\Orva";
  place.setReadOnly = [&files = *fake](const std::string& name) { files.setReadOnly(joinPath("C:\\Orva", name)); };
  place.files = std::move(fake);
  return place;
}

struct Implementation {
  const char* name;
  Place (*make)();
};

/// The contract of the service, the same for every implementation.
class FilesContract : public testing::TestWithParam<Implementation> {
 protected:
  Place place = GetParam().make();
  Files& files = *place.files;

  std::string failure(const std::function<void()>& call) {
    try {
      call();
    } catch (const FileError& error) {
      return error.what();
    }
    return {};
  }
};

INSTANTIATE_TEST_SUITE_P(Every, FilesContract,
                         testing::Values(Implementation{"local", localPlace}, Implementation{"fake", fakePlace}),
                         [](const auto& instance) { return instance.param.name; });

TEST_P(FilesContract, WritesAndReadsBackEveryLine) {
  const Lines lines{"first", "", "tab\there", "last"};
  files.writeLines(place.at("Orva.ini"), lines);
  EXPECT_EQ(files.readLines(place.at("Orva.ini")), lines);
  files.writeLines(place.at("Orva.ini"), {});
  EXPECT_EQ(files.readLines(place.at("Orva.ini")), Lines{});
}

TEST_P(FilesContract, FindsNamesWithoutRegardToCaseAndSeparator) {
  files.writeLines(place.at("SqlProviderConnection.ini"), {"x"});
  EXPECT_TRUE(files.exists(place.at("SQLPROVIDERCONNECTION.INI")));
  EXPECT_TRUE(files.exists(place.folder + "/sqlproviderconnection.ini"));
  EXPECT_FALSE(files.exists(place.at("other.ini")));
  files.writeLines(place.at("sqlProviderConnection.INI"), {"y"});
  EXPECT_EQ(files.list(place.folder), Lines{"SqlProviderConnection.ini"}) << "no second file of the same name";
  EXPECT_EQ(files.readLines(place.at("SqlProviderConnection.ini")), Lines{"y"});
}

TEST_P(FilesContract, CopyNeverReplaces) {
  files.writeLines(place.at("Orva.mdb"), {"template"});
  files.copy(place.at("orva.MDB"), place.at("ABCOrva.MDB"));
  EXPECT_EQ(files.readLines(place.at("abcorva.mdb")), Lines{"template"});
  EXPECT_NE(failure([&] { files.copy(place.at("Orva.mdb"), place.at("abcORVA.mdb")); }), "");
  EXPECT_NE(failure([&] { files.copy(place.at("none.mdb"), place.at("new.mdb")); }), "");
  EXPECT_FALSE(files.exists(place.at("new.mdb"))) << "a failed copy leaves no target";
}

TEST_P(FilesContract, ReadOnlyFilesNeedForce) {
  files.writeLines(place.at("ABCOrva.mdb"), {"x"});
  place.setReadOnly("ABCOrva.mdb");
  EXPECT_NE(failure([&] { files.writeLines(place.at("ABCOrva.mdb"), {"y"}); }), "");
  EXPECT_NE(failure([&] { files.remove(place.at("ABCOrva.mdb"), false); }), "");
  EXPECT_EQ(files.readLines(place.at("ABCOrva.mdb")), Lines{"x"});
  files.remove(place.at("abcorva.mdb"), true);
  EXPECT_FALSE(files.exists(place.at("ABCOrva.mdb")));
  files.remove(place.at("ABCOrva.mdb"), true);
}

TEST_P(FilesContract, FailuresNameTheFile) {
  const struct {
    const char* name;
    std::function<void()> call;
  } kCases[] = {
      {"Orva.ini", [&] { files.readLines(place.at("Orva.ini")); }},
      {"missing", [&] { files.list(place.at("missing")); }},
      {"Export.xls", [&] { files.writeLines(place.at("missing\\Export.xls"), {"x"}); }},
      {"New.mdb", [&] { files.copy(place.at("none"), place.at("missing\\New.mdb")); }},
  };
  for (const auto& c : kCases) EXPECT_NE(failure(c.call).find(c.name), std::string::npos) << failure(c.call);
}

TEST(LocalFiles, ReadsBothLineEndsAndKeepsBytes) {
  const TemporaryFolder folder;
  LocalFiles files;
  EXPECT_EQ(files.readLines(folder.write("a", "one\r\ntwo\n\xFF three")), (Lines{"one", "two", "\xFF three"}));
  EXPECT_EQ(files.readLines(folder.write("b", "one\r\n\r\n")), (Lines{"one", ""}));
  EXPECT_EQ(files.readLines(folder.write("c", "")), Lines{});
}

TEST(LocalFiles, FoldersAreNoFiles) {
  const TemporaryFolder folder;
  LocalFiles files;
  std::filesystem::create_directory(folder.path() / "Sub");
  folder.write("file.txt", "x");
  EXPECT_EQ(files.list(folder.text()), Lines{"file.txt"});
  EXPECT_FALSE(files.exists(folder.file("Sub")));
  EXPECT_THROW(files.readLines(folder.file("Sub")), FileError);
  EXPECT_THROW(files.remove(folder.file("Sub"), true), FileError);
  EXPECT_THROW(files.writeLines(folder.file("Sub"), {"x"}), FileError);
  EXPECT_EQ(files.list(folder.text()), Lines{"file.txt"}) << "a failed write leaves nothing behind";
}

TEST(LocalFiles, ACopyOfAReadOnlyTemplateCanBeWritten) {
  const TemporaryFolder folder;
  LocalFiles files;
  std::filesystem::permissions(folder.write("Orva.mdb", "x"), std::filesystem::perms::owner_read);
  files.copy(folder.file("Orva.mdb"), folder.file("ABCOrva.mdb"));
  const auto permissions = std::filesystem::status(folder.path() / "ABCOrva.mdb").permissions();
  EXPECT_NE(permissions & std::filesystem::perms::owner_write, std::filesystem::perms::none);
}

TEST(PathLookup, EveryComponentIsFoundWithoutRegardToCase) {
  const TemporaryFolder folder;
  std::filesystem::create_directories(folder.path() / "Orva Data" / "Year 1");
  folder.write("Orva Data/Year 1/ABCOrva.mdb", "x");
  const struct {
    const char* asked;
    const char* found;
  } kCases[] = {
      {"\\ORVA data\\year 1\\abcORVA.MDB", "Orva Data/Year 1/ABCOrva.mdb"},
      {"/Orva Data\\Year 1/ABCOrva.mdb", "Orva Data/Year 1/ABCOrva.mdb"},
      {"\\orva DATA\\New.mdb", "Orva Data/New.mdb"},
      {"\\Nowhere\\Year 1\\x.mdb", "Nowhere/Year 1/x.mdb"},
      {"\\orva data\\.\\YEAR 1\\..\\new.ini", "Orva Data/./Year 1/../new.ini"},
  };
  for (const auto& c : kCases) EXPECT_EQ(findPath(folder.text() + c.asked), folder.path() / c.found) << c.asked;
  EXPECT_EQ(findPath(""), "");
}

TEST(PathLookup, AnExactNameWinsOverOneOfAnotherCase) {
  const TemporaryFolder folder;
  folder.write("orva.ini", "lower");
  folder.write("Orva.ini", "mixed");
  EXPECT_EQ(findPath(folder.text() + "\\orva.ini"), folder.path() / "orva.ini");
  EXPECT_EQ(findPath(folder.text() + "\\ORVA.INI"), folder.path() / "Orva.ini");
}

TEST(FilePaths, PartsOfAPath) {
  EXPECT_EQ(joinPath("C:\\Orva", "x.ini"), "C:\\Orva\\x.ini");
  EXPECT_EQ(fileName("C:\\Orva/x.y.ini"), "x.y.ini");
  EXPECT_EQ(baseName("C:\\Or.va\\x.y.ini"), "x.y");
  EXPECT_EQ(extensionName("C:\\Or.va\\plain"), "");
  EXPECT_EQ(extensionName("a.MDB"), "MDB");
}

}  // namespace
}  // namespace orva
