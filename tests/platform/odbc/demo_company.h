#pragma once

#include <string>
#include <vector>

#include "platform/odbc/server_home.h"

namespace orva {

/// What a command printed and how it ended.
struct Ran {
  int status = -1;
  std::string out = {};
  std::string err = {};
};

/// The demonstration company on a server (company code DEMO) and the same in an Access file,
/// each with its own program folder, worked on by the batch commands.
class DemoCompany {
 public:
  explicit DemoCompany(Where where);

  Ran onServer(std::vector<std::string> arguments, const std::string& input = {}) const;
  Ran onAccess(std::vector<std::string> arguments, const std::string& input = {}) const;
  /// Writes a workbook with the sheet "Asset" and gives its path.
  std::string workbook(const std::vector<std::vector<std::string>>& rows, const std::string& name = "assets.xls") const;
  /// Bytes of a file of the server's program folder.
  std::string programFile(const std::string& name) const { return program_.read(name); }

  ServerHome home;

 private:
  /// The company of which the test server's tests get copies; made once.
  static const DemoCompany& master();
  DemoCompany(Where where, const DemoCompany* base);
  void makeServerCompany();
  void makeAccessCompany(const DemoCompany* base);

  TemporaryFolder program_;
  TemporaryFolder access_;
};

std::vector<std::string> assetHeadings();
/// One good asset under these headings.
std::vector<std::string> goodAsset(const std::string& physicalId);

/// A definition of the base layout in the server's dialect, where a key's name may stand only
/// once in a database.
std::string serverDefinition(const std::string& access);
/// A statement of the demonstration script in the server's dialect.
std::string serverForm(std::string statement);

}  // namespace orva
