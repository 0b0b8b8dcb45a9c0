#include "fakes/query_rows.h"

namespace orva {

std::string rowsOf(Connection& connection, const std::string& sql) {
  const auto rows = connection.open(sql);
  std::string text;
  for (; !rows->eof(); rows->moveNext()) {
    std::string line;
    for (const FieldInfo& field : rows->fields()) {
      line += (line.empty() ? "" : "|") + rows->get(field.name).toText();
    }
    text += (text.empty() ? "" : "/") + line;
  }
  return text;
}

}  // namespace orva
