#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "fakes/temporary_folder.h"
#include "platform/workbook.h"

namespace orva {

/// What a command printed and how it ended.
struct Ran {
  int status = -1;
  std::string out = {};
  std::string err = {};
};

/// Runs a command on a program folder, in this process.
Ran runCommand(const std::string& programFolder, std::vector<std::string> arguments, const std::string& input = {});

/// A program folder with one company DEMO, filled from the demonstration script. Made once
/// and copied for every test.
class BatchTest : public testing::Test {
 protected:
  BatchTest();
  /// Whatever was done, the company's file must be sound.
  ~BatchTest() override;

  Ran run(std::vector<std::string> arguments, const std::string& input = {}) const {
    return runCommand(folder.text(), std::move(arguments), input);
  }
  /// Keeps DEMO in an SQLite file from now on, which is opened by its content.
  void keepInSqlite() const;
  /// Imports a workbook of acquired assets into DEMO.
  Ran import(const std::string& workbook, std::vector<std::string> more = {}) const;
  /// Output of one statement on DEMO.
  std::string query(const std::string& statement) const;
  /// Writes a workbook with the sheet "Asset" into the folder and gives its path.
  std::string workbook(const std::string& name, const std::vector<std::vector<std::string>>& rows) const;

  TemporaryFolder folder;
};

/// Heading row of the small workbooks of these tests.
std::vector<std::string> assetHeadings();
/// One good asset under these headings.
std::vector<std::string> goodAsset(const std::string& physicalId, const std::string& vendor = "Godavari Motors");

}  // namespace orva
