#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/batch/batch.h"
#include "app/batch/session.h"
#include "wizard/selection.h"

namespace orva {

/// The commands. Each drives the screens as a user would and returns the exit status.

struct NewOptions {
  std::string code;
};

struct DeleteOptions {
  std::string code;
  /// Answers both questions with Yes.
  bool yes = false;
};

/// Which import of which company.
struct ImportChoice {
  std::string company;
  std::string kind;
  std::string mode = "add";
  Selection ticks = {};
};

/// What a wizard's run writes beside the totals.
struct ReportOptions {
  bool validateOnly = false;
  std::string resultsFile = {};
  std::string marksFile = {};
};

struct ImportOptions {
  ImportChoice choice;
  /// "all", "present", or Excel names joined with ",".
  std::string fields = "present";
  bool acceptBackdated = false;
  ReportOptions reports = {};
  std::string workbook = {};
};

/// Which master of which company.
struct MasterOptions {
  std::string company;
  std::string kind;
  /// Name of the miscellaneous master; may stay empty where the company has only one.
  std::string miscellaneousMaster = {};
};

struct MasterImportOptions {
  MasterOptions master;
  ReportOptions reports = {};
  std::string workbook = {};
};

struct MastersFromOptions {
  MasterOptions master;
  /// The master workbook to be written.
  std::string out = {};
  /// The asset workbook.
  std::string workbook = {};
};

struct SqlOptions {
  std::string company;
  /// Nothing: the statements come from standard input.
  std::optional<std::string> statement = {};
};

/// A bulk update of existing assets.
struct UpdateOptions {
  std::string company;
  std::string workbook;
};

struct CheckFileOptions {
  std::string file;
};

struct BulkUpdate;

/// How the server of the companies is reached.
struct ServerFileOptions {
  std::string server;
  /// "WINNT" for the Windows login, anything else for a login of the server.
  std::string authentication;
  std::string user = {};
};

/// Writes what a program folder needs where it is absent.
Exit runSetup(Session& session);
/// Writes the scrambled `Orva.ini` of a server; the password is read from standard input.
Exit runServerFile(Session& session, const ServerFileOptions& options);
Exit runCompanies(Session& session);
Exit runNew(Session& session, const NewOptions& options);
Exit runDelete(Session& session, const DeleteOptions& options);
Exit runFields(Session& session, const ImportChoice& choice);
Exit runImport(Session& session, const ImportOptions& options);
Exit runMasters(Session& session, const MasterImportOptions& options);
Exit runMastersFrom(Session& session, const MastersFromOptions& options);
Exit runUpdate(Session& session, const BulkUpdate& update, const UpdateOptions& options);
Exit runSql(Session& session, const SqlOptions& options);
/// Prints what is wrong with an Access file; `kRowsInError` when something is.
Exit runCheckFile(Session& session, const CheckFileOptions& options);

/// The selection that a choice names; nothing after the user was told of an unknown kind or mode.
std::optional<Selection> selectionOf(Session& session, const ImportChoice& choice);

}  // namespace orva
