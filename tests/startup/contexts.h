#pragma once

#include <string>

#include "startup/company_context.h"

namespace orva {

/// A context as start-up leaves it for the server "S".
inline CompanyContext serverContext(const std::string& authenticationKind) {
  CompanyContext context;
  context.isSqlServer = true;
  context.server = "S";
  context.authenticationKind = authenticationKind;
  context.userId = "sa";
  context.password = "pw";
  context.providerClause = "Provider=SQLOLEDB.1;Persist Security Info=False;";
  context.databaseReference = "ORVA";
  return context;
}

}  // namespace orva
