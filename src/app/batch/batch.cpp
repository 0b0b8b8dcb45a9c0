#include "app/batch/batch.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>

#include "app/batch/commands.h"
#include "app/batch/ticks.h"
#include "platform/local/path_lookup.h"
#include "platform/values/text.h"
#include "platform/version.h"
#include "updates/bulk_update.h"

namespace orva {
namespace {

constexpr std::string_view kFolderOption = "--program-folder";

std::string absoluteFolder(const std::string& folder) {
  std::error_code ignored;
  std::filesystem::path path = std::filesystem::absolute(findPath(folder), ignored).lexically_normal();
  if (!path.has_filename() && path.has_relative_path()) path = path.parent_path();
  return pathText(path);
}

std::string versionText() {
  return std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor) + std::to_string(kVersionRevision);
}

/// The commands as options of the command line; whichever is parsed sets `chosen`.
class CommandLine {
 public:
  CommandLine() {
    app_.require_subcommand(1);
    app_.set_version_flag("--version", versionText());
    addFolder(app_);
    addSetup();
    addServerFile();
    addCompanies();
    addNew();
    addDelete();
    addFields();
    addImport();
    addMasters();
    addMastersFrom();
    addUpdate("update-leod", "Set lease end dates of existing assets", leaseEndDateUpdate());
    addUpdate("update-rate-method", "Set overriding rates and methods of existing assets", rateAndMethodUpdate());
    addSql();
    addCheckFile();
  }

  CLI::App& app() { return app_; }
  const std::string& folder() const { return folder_; }
  Exit run(Session& session) const { return chosen_(session); }

 private:
  template <typename Action>
  CLI::App& command(const char* name, const char* help, Action action) {
    CLI::App& command = *app_.add_subcommand(name, help);
    addFolder(command);
    command.callback([this, action] { chosen_ = action; });
    return command;
  }
  void addFolder(CLI::App& app) {
    app.add_option(std::string(kFolderOption), folder_, "Folder of Orva.ini; default: the program's own")
        ->check(notEmpty());
  }
  static CLI::Validator notEmpty() {
    return CLI::Validator([](std::string& text) { return text.empty() ? std::string("must not be empty") : ""; }, "");
  }

  void addSetup() { command("setup", "Make the program folder usable", runSetup); }
  void addServerFile() {
    CLI::App& app =
        command("server-file", "Write the Orva.ini of a SQL Server; the password is read from standard input",
                [this](Session& session) { return runServerFile(session, serverFile_); });
    app.add_option("--server", serverFile_.server, "Server: name, name\\instance or name,port")->required();
    app.add_option("--authentication", serverFile_.authentication, "WINNT, or SQL for a login of the server")
        ->required();
    app.add_option("--user", serverFile_.user, "User of a login of the server");
  }
  void addCompanies() { command("companies", "List the companies", runCompanies); }
  void addNew() {
    CLI::App& app = command("new", "Make a company", [this](Session& session) { return runNew(session, new_); });
    app.add_option("CODE", new_.code, "Company code, up to 10 characters")->required();
  }
  void addDelete() {
    CLI::App& app =
        command("delete", "Delete a company", [this](Session& session) { return runDelete(session, delete_); });
    app.add_option("CODE", delete_.code, "Company code")->required();
    app.add_flag("--yes", delete_.yes, "Really delete it");
  }
  static void addChoice(CLI::App& app, ImportChoice& choice) {
    app.add_option("--company", choice.company, "Company code")->required();
    app.add_option("--kind", choice.kind, "What is imported: acquired, closing, ...")->required();
    app.add_option("--mode", choice.mode, "add, modify-by-asset-id or modify-by-physical-id");
    for (const Tick& tick : kTicks) {
      app.add_flag(std::string(tick.option), choice.ticks.*tick.chosen, "Check box of the selection page");
    }
  }
  void addFields() {
    addChoice(command("fields", "Print the field catalogue of an import",
                      [this](Session& session) { return runFields(session, fields_); }),
              fields_);
  }
  static void addReports(CLI::App& app, ReportOptions& reports) {
    app.add_flag("--validate-only", reports.validateOnly, "Post nothing");
    app.add_option("--results", reports.resultsFile, "Write the results grid to this file");
    app.add_option("--marks", reports.marksFile, "Write the coloured cells to this file");
  }
  void addImport() {
    CLI::App& app = command("import", "Validate a workbook and post its rows",
                            [this](Session& session) { return runImport(session, import_); });
    addChoice(app, import_.choice);
    app.add_option("--fields", import_.fields, "all, present (default), or Excel names joined with \",\"");
    app.add_flag("--accept-backdated", import_.acceptBackdated, "Accept backdated entries");
    addReports(app, import_.reports);
    app.add_option("WORKBOOK", import_.workbook, "Excel 97-2003 workbook with a sheet 'Asset'")->required();
  }
  static void addMaster(CLI::App& app, MasterOptions& master) {
    app.add_option("--company", master.company, "Company code")->required();
    app.add_option("--kind", master.kind, "department, cost-centre, location, user, vendor or misc")->required();
    app.add_option("--misc-master", master.miscellaneousMaster, "Name of the miscellaneous master");
  }
  void addMasters() {
    CLI::App& app = command("masters", "Validate a workbook of masters and post its rows",
                            [this](Session& session) { return runMasters(session, masters_); });
    addMaster(app, masters_.master);
    addReports(app, masters_.reports);
    app.add_option("WORKBOOK", masters_.workbook, "Excel 97-2003 workbook with a sheet 'Master'")->required();
  }
  void addMastersFrom() {
    CLI::App& app =
        command("masters-from", "List the masters that an asset workbook lacks and write them as a master workbook",
                [this](Session& session) { return runMastersFrom(session, mastersFrom_); });
    addMaster(app, mastersFrom_.master);
    app.add_option("--out", mastersFrom_.out, "The master workbook to be written")->required();
    app.add_option("WORKBOOK", mastersFrom_.workbook, "Excel 97-2003 workbook with a sheet 'Asset'")->required();
  }
  void addUpdate(const char* name, const char* help, const BulkUpdate& update) {
    CLI::App& app =
        command(name, help, [this, &update](Session& session) { return runUpdate(session, update, update_); });
    app.add_option("--company", update_.company, "Company code")->required();
    app.add_option("WORKBOOK", update_.workbook, "Excel 97-2003 workbook with a sheet 'Asset'")->required();
  }
  void addSql() {
    CLI::App& app =
        command("sql", "Run statements on a company", [this](Session& session) { return runSql(session, sql_); });
    app.add_option("--company", sql_.company, "Company code")->required();
    app.add_option("STATEMENT", sql_.statement, "Default: standard input, statements ended by \";\"");
  }
  void addCheckFile() {
    CLI::App& app = command("check-file", "Check the structure of an Access file",
                            [this](Session& session) { return runCheckFile(session, checkFile_); });
    app.add_option("FILE", checkFile_.file, "Access 2000-2003 file, such as a company")->required();
  }

  CLI::App app_{"Imports workbooks into an ORVA company. Without a command: the start screen.", "orva-import"};
  std::string folder_;
  ServerFileOptions serverFile_;
  NewOptions new_;
  DeleteOptions delete_;
  ImportChoice fields_;
  ImportOptions import_;
  MasterImportOptions masters_;
  MastersFromOptions mastersFrom_;
  UpdateOptions update_;
  SqlOptions sql_;
  CheckFileOptions checkFile_;
  std::function<Exit(Session&)> chosen_;
};

/// Help and version are asked for; everything else is a wrong command line.
Exit tellUse(const CLI::App& app, const CLI::ParseError& error, const Streams& streams) {
  const std::vector<std::string> unknown = app.remaining();
  if (error.get_exit_code() != 0 && app.get_subcommands().empty() && !unknown.empty()) {
    streams.err << "There is no command '" << unknown.front().substr(0, 100)
                << "'.\nRun with --help for more information.\n";
    return Exit::kFailed;
  }
  return app.exit(error, streams.out, streams.err) == 0 ? Exit::kDone : Exit::kFailed;
}

Exit parseAndRun(const std::vector<std::string>& arguments, const std::string& ownFolder, const Streams& streams) {
  CommandLine commandLine;
  try {
    commandLine.app().parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
  } catch (const CLI::ParseError& error) {
    return tellUse(commandLine.app(), error, streams);
  }
  const std::string& folder = commandLine.folder();
  Session session(streams, absoluteFolder(folder.empty() ? ownFolder : folder));
  const Exit exit = commandLine.run(session);
  if (streams.out.flush()) return exit;
  session.tell("The output could not be written.");
  return Exit::kFailed;
}

/// Takes "--program-folder DIR" or "--program-folder=DIR" off the front of the arguments.
bool takeFolder(std::vector<std::string>& arguments, std::string& folder) {
  if (arguments.empty() || !arguments[0].starts_with(kFolderOption)) return false;
  const bool joined = arguments[0].size() > kFolderOption.size();
  if (joined && arguments[0][kFolderOption.size()] != '=') return false;
  if (!joined && arguments.size() < 2) return false;
  folder = joined ? arguments[0].substr(kFolderOption.size() + 1) : arguments[1];
  arguments.erase(arguments.begin(), arguments.begin() + (joined ? 1 : 2));
  return true;
}

}  // namespace

StartRequest readStartRequest(const std::vector<std::string>& arguments, const std::string& ownFolder) {
  std::vector<std::string> rest = arguments;
  std::string folder = ownFolder;
  while (takeFolder(rest, folder)) {
  }
  const bool named = !rest.empty() && toUpper(rest[0]).starts_with("/F");
  StartRequest request{
      .isStartScreen = rest.empty() || named, .programFolder = absoluteFolder(folder), .commandLine = {}};
  if (!request.isStartScreen) return request;
  for (const std::string& word : rest) request.commandLine += (request.commandLine.empty() ? "" : " ") + word;
  return request;
}

Exit runBatch(const std::vector<std::string>& arguments, const std::string& ownFolder, const Streams& streams) {
  try {
    return parseAndRun(arguments, ownFolder, streams);
  } catch (const std::exception& error) {
    streams.err << "[ORVA] The program failed: " << error.what() << std::endl;
  }
  return Exit::kFailed;
}

}  // namespace orva
