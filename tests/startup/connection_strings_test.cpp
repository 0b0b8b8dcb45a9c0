#include "startup/connection_strings.h"

#include "startup/contexts.h"

namespace orva {
namespace {

TEST(ConnectionStrings, OfAccess) {
  CompanyContext context;
  context.databaseReference = "C:\\Data\\ABCOrva.mdb";
  EXPECT_EQ(companyConnectionString(context),
            "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=C:\\Data\\ABCOrva.mdb;Persist Security Info=False;"
            "Jet OLEDB:Database Password=Tbnq;");
  EXPECT_EQ(accessListingConnectionString("C:\\Data\\ABCOrva.mdb"),
            "Provider=Microsoft.Jet.OLEDB.4.0;Data Source= C:\\Data\\ABCOrva.mdb ;Persist Security Info=False;"
            "Jet OLEDB:Database Password=Tbnq;");
}

TEST(ConnectionStrings, OfAServer) {
  CompanyContext context = serverContext("winnt");
  context.databaseReference = "ABCORVA";
  EXPECT_EQ(companyConnectionString(context),
            "Provider=SQLOLEDB.1;Integrated Security = SSPI;Persist Security Info=False;Initial Catalog=ABCORVA;"
            "Data Source=S");
  EXPECT_EQ(serverConnectionString(context, kMasterCatalog),
            "Provider=SQLOLEDB.1;Integrated Security = SSPI;Persist Security Info=False;Initial Catalog=master;"
            "Data Source=S");
  for (const char* kind : {"SQL", ""}) {
    context.authenticationKind = kind;
    EXPECT_EQ(companyConnectionString(context),
              "Provider=SQLOLEDB.1;Persist Security Info=False;User ID=sa;Password=pw;Initial Catalog=ABCORVA;"
              "Data Source=S");
    EXPECT_EQ(serverConnectionString(context, kMasterCatalog),
              "Provider=SQLOLEDB.1;Persist Security Info=False;User ID=sa;Password=pw;Initial Catalog=master;"
              "Data Source=S");
  }
}

}  // namespace
}  // namespace orva
