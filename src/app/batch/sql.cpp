#include <iterator>
#include <memory>

#include "app/batch/commands.h"
#include "app/batch/sql_script.h"
#include "platform/database.h"
#include "startup/opening.h"
#include "startup/shared_error_report.h"

namespace orva {
namespace {

/// Keeps the boxes back until it is known whether they matter.
class HeldDialogs : public Dialogs {
 public:
  explicit HeldDialogs(Dialogs& shown) : shown_(shown) {}
  Answer show(const Message& message) override {
    held_.push_back(message);
    return message.buttons == MessageButtons::kOk ? Answer::kOk : Answer::kNo;
  }
  std::optional<std::string> openFile(const FileQuestion&) override { return std::nullopt; }
  void release() {
    for (const Message& message : held_) shown_.show(message);
  }

 private:
  Dialogs& shown_;
  std::vector<Message> held_;
};

/// Opens as the start screen does. That a company cannot be imported into (it makes no
/// identifiers of its own) is no obstacle here.
bool openForStatements(Session& session, const std::string& code) {
  if (!session.load()) return false;
  HeldDialogs dialogs(session.dialogs());
  Services services{session.services().databases, session.services().workbooks, session.services().files, dialogs,
                    session.services().shell,     session.services().eventLoop};
  const OpenResult result = openCompany(session.company(), services, code);
  if (result == OpenResult::kFailed) dialogs.release();
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
