#pragma once

#include <string>
#include <vector>

#include "masters/real_company.h"
#include "updates/bulk_update_screen.h"

namespace orva {

using Texts = std::vector<std::string>;
using Rows = std::vector<Texts>;

inline constexpr const char* kWorkbook = "c:\\books\\changes.xls";

/// A bulk update on a company with the assets A1 (used from 01/04/2005), A2 (02/04/2005) and "O'Neil" (no date put to
/// use).
template <class Screen>
class UpdateScreen : public RealCompany {
 public:
  explicit UpdateScreen(SqlDialect dialect = SqlDialect::kAccess) : RealCompany(dialect) {
    const std::string mark = dialect == SqlDialect::kAccess ? "#" : "'";
    prepare({"insert into Asset (Assetid, UseDate) values ('A1', " + mark + "04/01/2005" + mark + ")",
             "insert into Asset (Assetid, UseDate) values ('A2', " + mark + "04/02/2005" + mark + ")",
             "insert into Asset (Assetid) values ('O''Neil')"});
  }

  void run(const Rows& rows) {
    fakes.workbooks.putTexts(kWorkbook, "Asset", rows);
    screen.txtExcel.setText(kWorkbook);
    screen.btnImport_Click();
  }

  Screen screen{fakes.services, company};
};

}  // namespace orva
