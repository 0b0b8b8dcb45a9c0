#include <cstddef>
#include <iterator>
#include <memory>

#include "app/batch/commands.h"
#include "app/batch/sql_script.h"
#include "platform/database.h"
#include "platform/values/text.h"
#include "startup/opening.h"
#include "startup/shared_error_report.h"

namespace orva {
namespace {

/// Opens as the start screen does. That a company cannot be imported into (it makes no
/// identifiers of its own) is no obstacle here.
bool openForStatements(Session& session, const std::string& code) {
  if (!session.load()) return false;
  if (trim(code).empty()) {
    session.tell("Please Select the Company");
    return false;
  }
  ConsoleDialogs& dialogs = session.dialogs();
  dialogs.hold();
  const OpenResult result = openCompany(session.company(), session.services(), code);
  const std::size_t refusal = result == OpenResult::kRefused ? 1 : 0;
  dialogs.resume(dialogs.heldCount() - refusal);
  return result != OpenResult::kFailed;
}

void printRows(std::ostream& out, Recordset& rows) {
  std::vector<std::string> cells;
  for (const FieldInfo& field : rows.fields()) cells.push_back(field.name);
  const std::vector<std::string> names = cells;
  out << tabbed(cells) << '\n';
  for (; !rows.eof(); rows.moveNext()) {
    for (std::size_t column = 0; column < names.size(); ++column) cells[column] = nullToText(rows.get(names[column]));
    out << tabbed(cells) << '\n';
  }
}

void runStatement(Session& session, std::string_view statement) {
  Connection& connection = *session.company().connection;
  if (givesRows(statement)) {
    printRows(session.out(), *connection.open(statement, CursorKind::kForwardOnly));
  } else {
    connection.execute(statement);
  }
}

void tellFailure(Session& session, const ProviderError& error, std::string_view statement) {
  constexpr std::size_t kShown = 200;
  reportError(session.dialogs(), error);
  session.streams().err << "Statement: " << cellText(statement.substr(0, kShown))
                        << (statement.size() > kShown ? "..." : "") << '\n';
}

std::string readAll(std::istream& in) { return {std::istreambuf_iterator<char>(in), {}}; }

}  // namespace

Exit runSql(Session& session, const SqlOptions& options) {
  if (!openForStatements(session, options.company)) return Exit::kFailed;
  const std::string script = options.statement ? *options.statement : readAll(session.streams().in);
  const bool done = forEachStatement(script, [&](std::string_view statement) {
    try {
      runStatement(session, statement);
      return true;
    } catch (const ProviderError& error) {
      tellFailure(session, error, statement);
      return false;
    }
  });
  return done ? Exit::kDone : Exit::kFailed;
}

}  // namespace orva
