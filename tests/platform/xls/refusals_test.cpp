#include <gtest/gtest.h>
#include <sys/file.h>

#include <cstdio>

#include "fakes/case_file.h"
#include "fakes/temporary_folder.h"
#include "platform/values/text.h"
#include "platform/xls/xls_workbooks.h"

namespace orva::xls {
namespace {

/// The error that opening a sheet gives; fails when it gives none.
WorkbookError errorOf(const std::string& path, std::string_view sheet = "Asset") {
  try {
    XlsWorkbooks().openSheet(path, sheet, HeaderRow::kYes);
  } catch (const WorkbookError& error) {
    return error;
  }
  ADD_FAILURE() << path << " was opened";
  return {WorkbookFault::kCannotOpen, ""};
}

struct BadFile {
  std::string name;
  std::string content;
  WorkbookFault fault;
  std::string says;
};

TEST(RefusalsTest, EveryBadFileIsNamedWithItsCause) {
  const std::string good = fixtureText("xls/records.xls");
  const std::string renamed = replaceAll(good, std::string("W\0o\0r\0k\0b\0", 10), std::string("X\0o\0r\0k\0b\0", 10));
  const std::size_t entry = good.find(std::string("W\0o\0r\0k\0b\0o\0o\0k\0", 16));
  std::string word = good;
  word.replace(entry, 24, std::string("W\0o\0r\0d\0D\0o\0c\0u\0m\0e\0n\0t\0", 24));
  word[entry + 64] = 26;  // the bytes of the name, its end included
  using enum WorkbookFault;
  const BadFile files[] = {
      {"empty.xls", "", kNotWorkbook, "is empty"},
      {"new.xls", std::string("PK\3\4\x14\0\6\0[Content_Types].xml", 28), kNotWorkbook, "newer Excel format"},
      {"page.xls", "\r\n<HTML><body><table>", kNotWorkbook, "web page (HTML)"},
      {"marked.xls", "\xEF\xBB\xBF<?xml version=\"1.0\"?><Workbook>", kNotWorkbook, "an XML file"},
      {"list.xls", "AssetID,Name\r\n1,Press\r\n", kNotWorkbook, "a text file"},
      {"short.xls", "x", kNotWorkbook, "a text file"},
      {"unicode.xls", std::string("\xFF\xFE\x41\0", 4), kNotWorkbook, "a text file (Unicode)"},
      {"paper.xls", "%PDF-1.4\n%\xE2\xE3", kNotWorkbook, "a PDF document"},
      {"noise.xls", std::string("\1\2\3\0\5", 5), kNotWorkbook, "is not an Excel 97-2003 workbook."},
      {"excel4.xls", std::string("\x09\x04\x06\0\0\0\x10\0\0\0", 10), kOldFormat, "Excel 5.0/95 or older"},
      {"stream.xls", renamed, kNotWorkbook, "no stream named \"Workbook\""},
      {"letter.xls", word, kNotWorkbook, "a Word document"},
      {"biff5.xls", fixtureText("xls/biff5.xls"), kOldFormat, "Excel 5.0/95 or older"},
      {"secret.xls", fixtureText("xls/encrypted.xls"), kEncrypted, "password"},
      {"signature.xls", good.substr(0, 100), kDamaged, "damaged or incomplete"},
  };
  const TemporaryFolder folder;
  for (const BadFile& file : files) {
    const WorkbookError error = errorOf(folder.write(file.name, file.content));
    EXPECT_EQ(error.fault(), file.fault) << file.name << ": " << error.what();
    EXPECT_NE(std::string(error.what()).find(file.says), std::string::npos) << error.what();
    EXPECT_NE(std::string(error.what()).find(file.name), std::string::npos) << error.what();
  }
}

TEST(RefusalsTest, AFileCutOffAnywhereIsDamaged) {
  const std::string good = fixtureText("xls/records.xls");
  const TemporaryFolder folder;
  for (const std::size_t percent : {1, 10, 25, 50, 75, 90, 99}) {
    const std::string path = folder.write("cut.xls", good.substr(0, good.size() * percent / 100));
    EXPECT_EQ(errorOf(path).fault(), WorkbookFault::kDamaged) << percent << " percent";
  }
}

TEST(RefusalsTest, FilesThatCannotBeOpened) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.file("folder.xls"));
  ASSERT_EQ(mkfifo(folder.file("pipe.xls").c_str(), 0600), 0);
  const std::string locked = folder.write("locked.xls", fixtureText("xls/text.xls"));
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> holder(std::fopen(locked.c_str(), "rb"), std::fclose);
  ASSERT_EQ(flock(fileno(holder.get()), LOCK_EX), 0);
  const std::pair<std::string, std::string> cases[] = {
      {"missing.xls", "it does not exist"},
      {"nowhere/missing.xls", "it does not exist"},
      {"locked.xls/missing.xls", "its folder does not exist"},
      {"folder.xls", "it is a folder"},
      {"pipe.xls", "no ordinary file"},
      {"locked.xls", "another program holds it"},
  };
  for (const auto& [name, cause] : cases) {
    const WorkbookError error = errorOf(folder.file(name));
    EXPECT_EQ(error.fault(), WorkbookFault::kCannotOpen) << name;
    EXPECT_NE(std::string(error.what()).find(cause), std::string::npos) << error.what();
  }
}

TEST(RefusalsTest, AMissingSheetTellsTheSheetsThatAreThere) {
  const WorkbookError error = errorOf(fixturePath("xls/records.xls"), "Assets");
  EXPECT_EQ(error.fault(), WorkbookFault::kNoSuchSheet);
  EXPECT_EQ(error.what(), "The file \"" + fixturePath("xls/records.xls") +
                              "\" has no sheet named \"Assets\". The sheets in it are: \"Asset\", \"Numbers\", "
                              "\"Formulas\", \"Dates\", \"Hidden\", \"Very hidden\".");
}

}  // namespace
}  // namespace orva::xls
