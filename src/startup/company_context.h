#pragma once

#include <memory>
#include <string>

#include "platform/database.h"
#include "platform/services.h"
#include "startup/connection_strings.h"
#include "startup/dialect.h"

namespace orva {

/// Switches of the company's `Parameter` row. All off when the program starts.
struct ParameterFlags {
  bool additionalBook1 = false;           ///< `farate1`; stays on once it was on
  bool additionalBook2 = false;           ///< `farate2`; stays on once it was on
  bool automaticIdentifiers = false;      ///< `autoAssetid`
  bool costCentres = false;               ///< `centre`
  bool users = false;                     ///< `Users`
  bool validation = false;                ///< `Validation`
  bool regulatoryClassification = false;  ///< `AsPerRBI`
};

/// What start-up and Open find out and every later screen reads, with the one
/// shared connection.
struct CompanyContext {
  std::string programFolder;
  std::string dataFolder;
  bool isSqlServer = false;
  std::string server;
  std::string authenticationKind;
  std::string userId;
  std::string password;
  /// First line of `SqlProviderConnection.ini`.
  std::string providerClause;
  /// Access: full path of the company's .mdb; SQL Server: catalog name.
  std::string databaseReference;
  /// Access: data folder + "\Orva.mdb"; SQL Server: "ORVA".
  std::string systemDatabase;
  std::string companyCode;
  std::string companyName;
  /// Text after "/F" on the command line.
  std::string commandLineCompany;
  ParameterFlags flags;
  std::unique_ptr<Connection> connection;

  const DialectTokens& dialect() const { return isSqlServer ? sqlServerTokens() : accessTokens(); }
};

/// Connection string of the opened company for the context's kind of database.
std::string companyConnectionString(const CompanyContext& context);

/// Closes the shared connection if it is open and opens it on the context's
/// database reference, client-side cursor. Throws `ProviderError`.
void openCompanyConnection(CompanyContext& context, const Services& services);

/// Which flags `readParameterFlags` touches: an import screen that reconnects
/// leaves `AsPerRBI` as Open read it.
enum class FlagReading { kAtOpen, kAtReconnect };

/// Reads the flags from the first row of `select * from parameter`; with no row every
/// flag keeps its value. Throws `ProviderError`.
void readParameterFlags(CompanyContext& context, FlagReading reading);

/// What the import screens do before they move on: open the shared connection
/// afresh and read the flags again.
void reconnect(CompanyContext& context, const Services& services);

}  // namespace orva
