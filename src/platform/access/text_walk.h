#pragma once

#include <string>
#include <vector>

#include "platform/access/row_reader.h"
#include "platform/database.h"

namespace orva::access {

/// Shows text columns of every row of a table, in the order of the file. Nothing is changed on the way, so a page is
/// looked up once for all of its rows.
class TextWalk {
 public:
  TextWalk(PageFile& file, const TableDefinition& definition, const RowReader& rows, std::vector<std::size_t> columns);

  void run(const UsageMap& pages, const TextVisitor& visit);

 private:
  void visitPage(PageNumber number, const TextVisitor& visit);
  void readCells(ByteView row);

  PageFile& file_;
  const TableDefinition& definition_;
  const RowReader& rows_;
  std::vector<std::size_t> columns_;
  std::vector<std::optional<std::string_view>> cells_;
  std::vector<std::string> decoded_;  ///< texts that do not stand in the page as they are
};

}  // namespace orva::access
