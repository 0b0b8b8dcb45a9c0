#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "app/demo_data.h"
#include "fakes/temporary_folder.h"

namespace orva {

/// A program folder with one company DEMO, filled from the demonstration script. Made once
/// and copied for every test.
class BatchTest : public testing::Test {
 protected:
  BatchTest();
  /// Whatever was done, the company's file must be sound.
  ~BatchTest() override;

  Ran run(const std::vector<std::string>& arguments, const std::string& input = {}) const {
    return runCommand(folder.text(), arguments, input);
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

}  // namespace orva
