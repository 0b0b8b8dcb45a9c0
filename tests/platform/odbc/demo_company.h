#pragma once

#include <string>
#include <vector>

#include "app/demo_data.h"
#include "platform/odbc/server_home.h"

namespace orva {

/// The demonstration company on a server (company code DEMO) and the same in an Access file,
/// each with its own program folder, worked on by the batch commands.
class DemoCompany {
 public:
  explicit DemoCompany(Where where);

  Ran onServer(const std::vector<std::string>& arguments, const std::string& input = {}) const;
  Ran onAccess(const std::vector<std::string>& arguments, const std::string& input = {}) const;
  /// Writes a workbook and gives its path.
  std::string workbook(const std::vector<std::vector<std::string>>& rows, const std::string& name = "assets.xls",
                       const std::string& sheet = "Asset") const;
  /// A workbook of the demonstration with what a company that validates documents asks for besides.
  std::string demoWorkbook(const std::string& file) const;
  /// The folder of the server's program.
  const TemporaryFolder& folder() const { return program_; }
  const TemporaryFolder& accessFolder() const { return access_; }

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

/// The headings and so many good assets.
std::vector<std::vector<std::string>> goodSheet(int count);
/// The command that imports acquired assets.
std::vector<std::string> importing(const std::string& workbook, const std::vector<std::string>& more = {});

/// A definition of the base layout in the server's dialect, where a key's name may stand only
/// once in a database.
std::string serverDefinition(const std::string& access);
/// A statement of the demonstration script in the server's dialect.
std::string serverForm(std::string statement);

}  // namespace orva
