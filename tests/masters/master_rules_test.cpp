#include "masters/master_rules.h"

#include <gtest/gtest.h>

#include "masters/master_screen.h"

namespace orva {
namespace {

using Texts = std::vector<std::string>;
using Kind = MasterKindId;

const std::string k11(11, 'c'), k31(31, 'c'), k51(51, 'c'), k256(256, 'c');

struct Case {
  Kind kind;
  Sheet2D sheet;
  /// One line a row: "E", columns, texts.
  Texts findings;
};

const Sheet2D kDepartments{{"DeptCode", "DeptName"}};
const Sheet2D kCentres{{"CentreCode", "COSTCENTRE"}};
const Sheet2D kVendors{{"VendorCode", "VendorName", "add1", "City", "Pin", "vattin", "csttin", "PAN"}};
const Sheet2D kUsers{{"Usercode", "Username"}};
const Sheet2D kLocations{{"LocCode", "MAINLOC", "SUBLOC", "PHYLOC"}};
const Sheet2D kEntries{{"Code", "MName"}};

Sheet2D with(Sheet2D sheet, const Sheet2D& rows) {
  sheet.insert(sheet.end(), rows.begin(), rows.end());
  return sheet;
}

const Case kCases[] = {
    {Kind::kDepartment,
     with(kDepartments, {{"D1", "Accounts"}, {"d1 ", "Sales"}, {"0007", "Purchase"}, {"", ""}, {"D2", " stores"}}),
     {"", "E|DeptCode| Duplicate Values Not Allowed ", "E|DeptCode| Duplicate Values Not Allowed ",
      "E|DeptCode,DeptName| Department Code cannot be Empty  ,  Department Name cannot be Empty ",
      "E|DeptName| Duplicate Values Not Allowed "}},
    {Kind::kDepartment,
     with(kDepartments, {{k11, "One"}, {k11, "Two"}, {"", "Three"}, {"", "Four"}, {"D9", k256}}),
     {"E|DeptCode|Department : " + k11 + " exceeds its maximum length ",
      "E|DeptCode,DeptCode|Department : " + k11 + " exceeds its maximum length  ,  Duplicate Values Not Allowed ",
      "E|DeptCode| Department Code cannot be Empty ", "E|DeptCode| Department Code cannot be Empty ",
      "E|DeptName| exceeds its maximum length "}},
    {Kind::kDepartment,
     with(kDepartments, {{"0007", "First"}, {"0007", "Second"}}),
     {"E|DeptCode| Duplicate Values Not Allowed ",
      "E|DeptCode,DeptCode| Duplicate Values Not Allowed  ,  Duplicate Values Not Allowed "}},
    {Kind::kCostCentre,
     with(kCentres, {{k31, "One"}, {"0007", "Two"}, {"0007", "Three"}, {"", " "}, {"C1", "WORKS"}}),
     {"E|CentreCode|CostCentre : " + k31 + " exceeds its maximum length ",
      "E|CentreCode| Duplicate Values Not Allowed ", "E|CentreCode| Duplicate Values Not Allowed ",
      "E|CentreCode,COSTCENTRE| Centre Code cannot be Empty  ,  Centre Name cannot be Empty ",
      "E|COSTCENTRE| Duplicate Values Not Allowed. "}},
    {Kind::kVendor,
     with(kVendors, {{"V1", "O'Neil & Sons", "", "", "", "", "", "AAAPL1234C"},
                     {"V1", "Acme", "", "", "1234567", "", "", "AAADL1234C"},
                     {k11, "", k256, k51, "", k51, k51, ""},
                     {"", "Bose", "", "", "", "", "", " aaapl1234c"}}),
     {"E|VendorName| Duplicate Values Not Allowed ",
      "E|VendorCode,Pin,PAN| Duplicate Values Not Allowed  ,  exceeds its maximum length  ,  Invalid PAN ",
      "E|VendorCode,VendorName,add1,City,vattin,csttin|Vendor Code : " + k11 +
          " exceeds its maximum length  , Vendor :  Name cannot be Empty  ,  exceeds its maximum length  ,  exceeds "
          "its "
          "maximum length  ,  exceeds its maximum length  ,  exceeds its maximum length ",
      "E|VendorCode,PAN|Vendor Code :  Vendor code cannot be Empty  ,  Invalid PAN "}},
    {Kind::kUser,
     with(kUsers, {{"U1", "O'Neil"},
                   {"U1", "A \"B\""},
                   {"0007", "Two\nlines"},
                   {k51, k51},
                   {"", ""},
                   {"U3", "Rao & Co. (R/D) #1"},
                   {"U4", "Rao\tA."}}),
     {"E|Username| contains quotes or any other special character ",
      "E|Usercode,Username| Duplicate Values Not Allowed  ,  contains quotes or any other special character ",
      "E|Usercode,Username|User : 0007 Duplicate Values Not Allowed.  ,  contains quotes or any other special "
      "character ",
      "E|Usercode,Username|User Name : " + k51 + " exceeds its maximum length  ,  exceeds its maximum length ",
      "E|Usercode,Username|Username :  cannot be Empty  , Username :  cannot be Empty ", "",
      "E|Username| contains quotes or any other special character "}},
    {Kind::kLocation,
     with(kLocations, {{"", "pune", "PLANT 1 ", "Bay 1"},
                       {"L1", "Pune", "Plant 1", "Bay 2"},
                       {"L1", "Pune", "Plant 1", "Bay 2"},
                       {"", "Pune", "", ""},
                       {"", k31, "Plant", "Bay"}}),
     {"E|MAINLOC,SUBLOC,PHYLOC| pune Duplicate Values Not Allowed.  ,  PLANT 1  Duplicate Values Not Allowed.  ,  Bay "
      "1 "
      "Duplicate Values Not Allowed. ",
      "", "", "E|SUBLOC,PHYLOC| cannot be Empty   ,  cannot be Empty  ", "E|MAINLOC| exceeds its maximum length "}},
    {Kind::kMiscellaneous,
     with(kEntries,
          {{"0007", "Renewal"}, {"0008", "Expansion"}, {"8", ""}, {k11, "Long"}, {"", "Blank"}, {"8", "Again"}}),
     {"E|Code| Duplicate Values Not Allowed ", "", "E|MName|Name :  cannot be Empty ",
      "E|Code|Code : " + k11 + " exceeds its maximum length ", "E|Code|Code :  cannot be Empty ",
      "E|Code| Duplicate Values Not Allowed "}},
};

TEST(MasterRules, FindWhatIsWrongInBothDialects) {
  for (const SqlDialect dialect : kBothDialects) {
    MasterScreen master(dialect);
    for (const Case& c : kCases) {
      EXPECT_EQ(master.findings(c.kind, c.sheet), c.findings) << masterKind(c.kind).batchName;
    }
  }
}

TEST(MasterRules, ACodeBelongsToItsMiscellaneousMaster) {
  MasterScreen master;
  const Sheet2D sheet = with(kEntries, {{"0007", "Grant"}});
  EXPECT_EQ(master.findings(Kind::kMiscellaneous, sheet, "Funding"), Texts{""});
  EXPECT_EQ(master.findings(Kind::kMiscellaneous, sheet, "Project"), Texts{"E|Code| Duplicate Values Not Allowed "});
}

TEST(MasterRules, NamesWithQuotesAndOfAnyScriptAreLookedUpAsTheyStand) {
  for (const SqlDialect dialect : kBothDialects) {
    MasterScreen master(dialect);
    master.prepare({"insert into Dept (Deptcode, DeptName) values ('Ü1', 'Größe')",
                    "insert into Dept (Deptcode, DeptName) values ('H1', 'लेखा')"});
    EXPECT_EQ(
        master.findings(
            Kind::kDepartment,
            with(kDepartments,
                 {{"ü1", "größe"}, {"X'1", "लेखा"}, {"x'1", "'; drop table Dept; --"}, {"{value}", "{DEPTCODE}"}})),
        (Texts{"E|DeptCode,DeptName| Duplicate Values Not Allowed  ,  Duplicate Values Not Allowed ",
               "E|DeptName| Duplicate Values Not Allowed ", "E|DeptCode| Duplicate Values Not Allowed ", ""}));
    EXPECT_EQ(master.rows("select Deptcode from Dept").size(), 3u);
  }
}

TEST(MasterRules, PanPattern) {
  struct PanCase {
    const char* pan;
    bool isValid;
  };
  const PanCase kPans[] = {{"AAAPL1234C", true},  {" AAAPL1234C ", true}, {"AAATZ9999z", true},  {"AAADL1234C", false},
                           {"aaapl1234c", false}, {"AAAPL123C", false},   {"AAAPL12345", false}, {"AAAPL1234CD", false},
                           {"AA1PL1234C", false}, {"AAAPLO234C", false},  {"", false},           {"ÄAAPL1234C", false}};
  for (const PanCase& c : kPans) EXPECT_EQ(ValidPanPattern(c.pan), c.isValid) << c.pan;
}

}  // namespace
}  // namespace orva
