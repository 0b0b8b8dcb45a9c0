#pragma once

#include "platform/workbook.h"

namespace orva {

/// The workbook service over Excel 97-2003 (BIFF8) files.
class XlsWorkbooks : public Workbooks {
 public:
  std::unique_ptr<Sheet> openSheet(const std::string& path, std::string_view sheetName, HeaderRow header) override;
  void write(const std::string& path, std::string_view sheetName,
             const std::vector<std::vector<OutputCell>>& rows) override;
};

}  // namespace orva
