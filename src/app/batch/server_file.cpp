#include <istream>
#include <string>
#include <vector>

#include "app/batch/commands.h"
#include "platform/files.h"
#include "platform/values/text.h"
#include "startup/orva_ini.h"
#include "startup/shared_error_report.h"

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

std::vector<std::string> scrambledLines(const ServerFileOptions& options, const std::string& password) {
  std::vector<std::string> lines;
  for (const std::string& clear : {"SERVER=" + options.server, "AUTHENTICATION=" + options.authentication,
                                   "USERID=" + options.user, "PASSWORD=" + password}) {
    lines.push_back(scramble(clear));
  }
  return lines;
}

/// The file has a line each: a few characters (such as "ì" of the Western code page) would be
/// stored as the end of a line.
bool fitsOnLines(const std::vector<std::string>& lines) {
  for (const std::string& line : lines) {
    if (line.find_first_of(std::string_view("\r\n\0\x1A", 4)) != std::string::npos) return false;
  }
  return true;
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
  const auto lines = scrambledLines(options, byWindows ? std::string() : readPassword(session.streams().in));
  if (!fitsOnLines(lines)) {
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
