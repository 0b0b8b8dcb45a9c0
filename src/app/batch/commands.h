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

struct ImportOptions {
  ImportChoice choice;
  /// "all", "present", or Excel names joined with ",".
  std::string fields = "present";
  bool validateOnly = false;
  bool acceptBackdated = false;
  std::string resultsFile = {};
  std::string marksFile = {};
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

struct BulkUpdate;

/// Writes what a program folder needs where it is absent.
Exit runSetup(Session& session);
Exit runCompanies(Session& session);
Exit runNew(Session& session, const NewOptions& options);
Exit runDelete(Session& session, const DeleteOptions& options);
Exit runFields(Session& session, const ImportChoice& choice);
Exit runImport(Session& session, const ImportOptions& options);
Exit runUpdate(Session& session, const BulkUpdate& update, const UpdateOptions& options);
Exit runSql(Session& session, const SqlOptions& options);

/// The selection that a choice names; nothing after the user was told of an unknown kind or mode.
std::optional<Selection> selectionOf(Session& session, const ImportChoice& choice);

}  // namespace orva
