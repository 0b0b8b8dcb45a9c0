#include "masters/master_posting.h"

#include <gtest/gtest.h>

#include "masters/master_screen.h"

namespace orva {
namespace {

using Texts = std::vector<std::string>;

/// Posts rows that no check has seen: codes are made where they are blank.
class Posting : public MasterScreen {
 public:
  using MasterScreen::MasterScreen;

  PostResult post(MasterKindId kind, const Sheet2D& rows) {
    TextTable table;
    table.reset(static_cast<int>(rows[0].size()));
    for (const auto& cells : rows) {
      const int row = table.addRow();
      for (std::size_t column = 0; column < cells.size(); ++column) {
        table.setCell(row, static_cast<int>(column), cells[column]);
      }
    }
    grid.setTable(table);
    ImportRun run{fakes.services, company, selection, catalogue, grid, found, progress, saved};
    return postMasters(run, {.kind = kind});
  }

 private:
  Selection selection;
  Catalogue catalogue;
  Findings found;
  FlexGrid grid{"grid1"}, saved{"flxSave"};
  Label message{"lblMsg2"}, current{"lblCurrentStatus"};
  ProgressBar bar{"ProgressBar1"};
  RunProgress progress{{message, current, bar, fakes.eventLoop}};
};

struct Case {
  MasterKindId kind;
  /// Codes that the company has beside "0007".
  Texts codes;
  /// Next code on Access and on SQL Server.
  const char* access;
  const char* server;
};

const char* tableOf(MasterKindId kind) {
  return kind == MasterKindId::kCostCentre ? "Costcentre (CentreCode)"
         : kind == MasterKindId::kVendor   ? "Vendor (Vendorcode)"
                                           : "Users (Usedby)";
}

TEST(NextCode, IsOneMoreThanTheHighestNumberOfTheDialectsOrder) {
  const Case kCases[] = {
      {MasterKindId::kCostCentre, {"ABC"}, "0008", "0008"},
      {MasterKindId::kCostCentre, {"9", "10"}, "0011", "0011"},
      {MasterKindId::kVendor, {"9", "10", "X1"}, "0011", "0011"},
      {MasterKindId::kVendor, {"12345"}, "12346", "12346"},
      {MasterKindId::kUser, {"9", "10"}, "0011", "0010"},
      {MasterKindId::kUser, {"Z"}, "0008", "0008"},
  };
  for (const SqlDialect dialect : kBothDialects) {
    for (const Case& c : kCases) {
      Posting posting(dialect);
      const std::string target = tableOf(c.kind);
      for (const std::string& code : c.codes) {
        posting.prepare({"insert into " + target + " values ('" + code + "')"});
      }
      const bool isCentre = c.kind == MasterKindId::kCostCentre, isUser = c.kind == MasterKindId::kUser;
      const std::string name = isCentre ? "COSTCENTRE" : isUser ? "Username" : "VendorName";
      const std::string code = isCentre ? "CentreCode" : isUser ? "Usercode" : "VendorCode";
      EXPECT_TRUE(posting.post(c.kind, {{name, code}, {"New one", " "}}).finished);
      const std::string table = target.substr(0, target.find(' '));
      const std::string field = isUser ? "Usedby" : code;
      EXPECT_EQ(posting.rows("select " + field + " from " + table + " where " + (isCentre ? "CentreName" : name) +
                             " = 'New one'"),
                Texts{dialect == SqlDialect::kAccess ? c.access : c.server})
          << table << testing::PrintToString(c.codes);
    }
  }
}

TEST(NextCode, StartsAtOneAndCountsOnFromRowToRow) {
  for (const SqlDialect dialect : kBothDialects) {
    Posting posting(dialect);
    posting.prepare({"delete from Vendor", "insert into Vendor (Vendorcode) values ('V1')"});
    EXPECT_EQ(posting.post(MasterKindId::kVendor, {{"VendorCode", "VendorName"}, {"", "A"}, {"", "B"}}).rowsPosted, 2);
    EXPECT_EQ(posting.rows("select Vendorcode from Vendor where Vendorcode <> 'V1' order by VendorName"),
              (Texts{"0001", "0002"}));
  }
}

TEST(NextCode, OfACostCentreIsThatOfItsNameWhereThereIsOne) {
  for (const SqlDialect dialect : kBothDialects) {
    Posting posting(dialect);
    EXPECT_TRUE(posting.post(MasterKindId::kCostCentre, {{"CentreCode", "COSTCENTRE"}, {"", "works "}}).finished);
    EXPECT_EQ(posting.rows("select CentreCode, CentreName from Costcentre order by CentreName"),
              (Texts{"0007|Works", "0007|works"}));
  }
}

}  // namespace
}  // namespace orva
