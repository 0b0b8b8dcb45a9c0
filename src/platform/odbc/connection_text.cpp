#include "platform/odbc/connection_text.h"

#include <array>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <system_error>

#include "platform/values/text.h"

namespace orva::odbc {
namespace {

/// Names under which drivers for the server are registered, the best first.
constexpr std::string_view kKnownDrivers[] = {
#ifndef _WIN32
    "FreeTDS",
#endif
    "ODBC Driver 18 for SQL Server",
    "ODBC Driver 17 for SQL Server",
    "ODBC Driver 13 for SQL Server",
    "ODBC Driver 11 for SQL Server",
    "SQL Server Native Client 11.0",
    "SQL Server Native Client 10.0",
    "SQL Server",
};

constexpr const char* kUsualPlaces[] = {
    "/usr/lib/x86_64-linux-gnu/odbc/libtdsodbc.so",
    "/usr/lib/aarch64-linux-gnu/odbc/libtdsodbc.so",
    "/usr/lib64/libtdsodbc.so.0",
    "/usr/lib64/libtdsodbc.so",
    "/usr/lib/libtdsodbc.so",
    "/usr/local/lib/libtdsodbc.so",
};

constexpr std::string_view kProtocols[] = {"tcp:", "lpc:", "admin:"};

bool isYes(std::string_view value) {
  for (const std::string_view yes : {"yes", "true", "sspi", "mandatory", "strict", "1"}) {
    if (equalsNoCase(value, yes)) return true;
  }
  return false;
}

std::string firstOf(const ConnectionClauses& clauses, std::initializer_list<std::string_view> names) {
  for (const std::string_view name : names) {
    if (const auto value = clauses.find(name)) return *value;
  }
  return {};
}

/// Keywords "NAME=value;", each value so quoted that none can add another keyword.
class KeywordText {
 public:
  explicit KeywordText(bool freeTds) : freeTds_(freeTds) {}

  void add(std::string_view name, std::string_view value) {
    if (value.empty()) return;
    constexpr std::string_view kSpecial = "[]{}(),;?*=!@'\" ";
    const bool isQuoted = value.find_first_of(kSpecial) != std::string_view::npos;
    text_ += std::string(name) + "=" + (isQuoted ? quoted(name, value) : std::string(value)) + ";";
  }
  std::string take() { return std::move(text_); }

 private:
  /// FreeTDS knows no doubled brace: for it a value ends at a brace before a semicolon.
  std::string quoted(std::string_view name, std::string_view value) const {
    if (!freeTds_) return "{" + replaceAll(value, "}", "}}") + "}";
    if (value.find("};") == std::string_view::npos) return "{" + std::string(value) + "}";
    throw ProviderError(provider_number::kUnspecified,
                        "The driver cannot be given the " +
                            std::string(name == "PWD" ? "password" : "text for " + std::string(name)) +
                            ": it holds the characters \"};\".");
  }

  bool freeTds_;
  std::string text_;
};

bool isFreeTds(const std::string& driver) {
  const std::string name = toUpper(driver);
  return name.find("TDS") != std::string::npos;
}

void addServer(KeywordText& text, const ServerName& server, bool freeTds) {
  if (freeTds) {
    const bool byInstance = !server.instance.empty() && server.port.empty();
    text.add("SERVER", byInstance ? server.host + "\\" + server.instance : server.host);
    text.add("PORT", byInstance ? "" : server.port.empty() ? "1433" : server.port);
    return;
  }
  std::string name = server.host;
  if (!server.port.empty()) {
    name += "," + server.port;
  } else if (!server.instance.empty()) {
    name += "\\" + server.instance;
  }
  text.add("SERVER", name);
}

void addLogin(KeywordText& text, const ConnectionClauses& clauses) {
  const std::string integrated = firstOf(clauses, {"Integrated Security", "Trusted_Connection"});
  if (isYes(integrated)) {
    text.add("Trusted_Connection", "Yes");
    return;
  }
  text.add("UID", firstOf(clauses, {"User ID", "UID"}));
  text.add("PWD", firstOf(clauses, {"Password", "PWD"}));
}

void addEncryption(KeywordText& text, const ConnectionClauses& clauses, bool freeTds) {
  const std::string asked = firstOf(clauses, {"Use Encryption for Data", "Encrypt"});
  if (freeTds) {
    text.add("Encryption", asked.empty() ? "" : isYes(asked) ? "require" : "request");
    return;
  }
  // The provider of old encrypted only when asked; the drivers of today refuse a server
  // whose certificate nobody signed unless they are told not to.
  text.add("Encrypt", isYes(asked) ? "yes" : "no");
  if (isYes(firstOf(clauses, {"Trust Server Certificate", "TrustServerCertificate"})))
    text.add("TrustServerCertificate", "yes");
}

void readSeconds(const std::string& text, unsigned& seconds) {
  unsigned read = 0;
  const auto end = text.data() + text.size();
  const auto [stop, fault] = std::from_chars(text.data(), end, read);
  if (fault == std::errc() && stop == end) seconds = read;
}

}  // namespace

ServerName serverNameOf(std::string_view dataSource) {
  std::string_view rest = trim(dataSource);
  for (const std::string_view protocol : kProtocols) {
    if (equalsNoCase(rest.substr(0, protocol.size()), protocol)) rest = trim(rest.substr(protocol.size()));
  }
  ServerName server;
  if (const std::size_t comma = rest.rfind(','); comma != std::string_view::npos) {
    server.port = trim(rest.substr(comma + 1));
    rest = trim(rest.substr(0, comma));
  }
  if (const std::size_t slash = rest.find('\\'); slash != std::string_view::npos) {
    server.instance = trim(rest.substr(slash + 1));
    rest = trim(rest.substr(0, slash));
  }
  const bool isThisMachine = rest.empty() || rest == "." || equalsNoCase(rest, "(local)");
  server.host = isThisMachine ? "localhost" : std::string(rest);
  return server;
}

std::span<const char* const> usualDriverPlaces() { return kUsualPlaces; }

std::string driverFor(const ConnectionClauses& clauses, const std::vector<std::string>& registered,
                      std::span<const char* const> places) {
  if (std::string named = clauses.get("Driver"); !named.empty()) return named;
  if (const char* named = std::getenv("ORVA_ODBC_DRIVER"); named && *named) return named;
  for (const std::string_view known : kKnownDrivers) {
    for (const std::string& name : registered) {
      if (equalsNoCase(name, known)) return name;
    }
  }
  std::error_code ignored;
  for (const char* place : places) {
    if (std::filesystem::exists(place, ignored)) return place;
  }
  throw ProviderError(provider_number::kUnspecified,
                      "No ODBC driver for SQL Server is installed on this machine. Install one, or name it in the "
                      "environment variable ORVA_ODBC_DRIVER.");
}

std::string connectionText(const ConnectionClauses& clauses, const std::string& driver) {
  const bool freeTds = isFreeTds(driver);
  KeywordText text(freeTds);
  text.add("DRIVER", driver);
  addServer(text, serverNameOf(firstOf(clauses, {"Data Source", "Server", "Address"})), freeTds);
  text.add("DATABASE", firstOf(clauses, {"Initial Catalog", "Database"}));
  addLogin(text, clauses);
  addEncryption(text, clauses, freeTds);
  if (freeTds) {
    text.add("TDS_Version", "7.4");
    text.add("ClientCharset", "UTF-8");
  }
  text.add("APP", "ORVA Import");
  return text.take();
}

TimeLimits timeLimits(const ConnectionClauses& clauses) {
  TimeLimits limits;
  readSeconds(firstOf(clauses, {"Connect Timeout", "Connection Timeout"}), limits.login);
  readSeconds(firstOf(clauses, {"General Timeout"}), limits.statement);
  return limits;
}

}  // namespace orva::odbc
