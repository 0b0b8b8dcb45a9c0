#include <istream>
#include <string>
#include <vector>

#include "app/batch/commands.h"
#include "platform/database.h"
#include "platform/files.h"
#include "platform/values/text.h"
#include "startup/orva_ini.h"
#include "startup/shared_error_report.h"
#include "startup/windows_text.h"

namespace orva {
namespace {

constexpr std::string_view kWindowsLogin = "WINNT";

/// The first line of standard input; nothing of it is printed anywhere.
std::string readPassword(std::istream& in) {
  std::string line;
  std::getline(in, line);
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return line;
}

std::vector<std::string> scrambledLines(const ServerFileOptions& options, const std::string& password, bool asWindows) {
  std::vector<std::string> lines;
  for (const std::string& clear : {"SERVER=" + options.server, "AUTHENTICATION=" + options.authentication,
                                   "USERID=" + options.user, "PASSWORD=" + password}) {
    lines.push_back(scramble(asWindows ? asWindowsBytes(clear) : clear));
  }
  return lines;
}

/// The file has a line each: a few characters (such as "ì" of the Western code page) would be
/// stored as the end of a line, others be read as letters of another encoding.
bool comesBack(const std::vector<std::string>& lines, const ServerFileOptions& options, const std::string& password) {
  for (const std::string& line : lines) {
    if (line.find_first_of(std::string_view("\r\n\0\x1A", 4)) != std::string::npos) return false;
  }
  const auto read = serverDescribedBy(lines);
  return read && read->server == options.server && read->authenticationKind == options.authentication &&
         read->userId == options.user && read->password == password;
}

/// The connection string is joined without quotes: a ";" would end the value, blanks around it
/// and a quote in front would be lost.
bool fitsTheConnectionString(const std::string& value) {
  return ConnectionClauses("Value=" + value + ";Next=").get("Value") == value;
}

/// The plain file of an Access installation names the data folder, which is stored nowhere else.
void keepPlainFile(Session& session, const std::string& path) {
  const Files& files = session.services().files;
  if (!files.exists(path) || readOrvaIni(files, path).isSqlServer) return;
  const std::string kept = path + ".access";
  session.services().files.remove(kept, true);
  session.services().files.copy(path, kept);
  session.out() << kept << '\n';
}

bool refuse(Session& session, std::string_view text) {
  session.tell(text);
  return false;
}

bool isComplete(Session& session, const ServerFileOptions& options) {
  if (trim(options.server).empty()) return refuse(session, "The server's name is missing.");
  const bool byWindows = equalsNoCase(options.authentication, kWindowsLogin);
  if (byWindows && !options.user.empty()) return refuse(session, "A Windows login (WINNT) takes no user.");
  if (!byWindows && options.user.empty()) return refuse(session, "A SQL Server login needs --user.");
  return true;
}

bool writeServerFile(Session& session, const ServerFileOptions& options) {
  if (!isComplete(session, options)) return false;
  const bool byWindows = equalsNoCase(options.authentication, kWindowsLogin);
  const std::string password = byWindows ? std::string() : readPassword(session.streams().in);
  for (const std::string& value : {options.server, options.user, password}) {
    if (fitsTheConnectionString(value)) continue;
    return refuse(session,
                  "The server, user or password holds a \";\", or a blank or quote at its edge, which a "
                  "connection string cannot carry.");
  }
  // In the code page the main system can read the file, too.
  auto lines = scrambledLines(options, password, true);
  if (!comesBack(lines, options, password)) lines = scrambledLines(options, password, false);
  if (!comesBack(lines, options, password)) {
    return refuse(session, "The server, user or password holds a character that Orva.ini cannot keep.");
  }
  const std::string path = joinPath(session.company().programFolder, "Orva.ini");
  keepPlainFile(session, path);
  session.services().files.writeLines(path, lines);
  session.out() << path << '\n';
  return true;
}

}  // namespace

Exit runServerFile(Session& session, const ServerFileOptions& options) {
  try {
    return writeServerFile(session, options) ? Exit::kDone : Exit::kFailed;
  } catch (const std::exception& error) {
    reportError(session.dialogs(), error);
    return Exit::kFailed;
  }
}

}  // namespace orva
