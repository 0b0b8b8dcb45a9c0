#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/odbc/column.h"

namespace orva::odbc {

/// The bound arguments of one statement. They stay where they are between two runs, so that
/// the driver need not prepare the statement again.
class Parameters {
 public:
  /// Takes the values of the next run over, binding what is not bound yet. Gives the
  /// driver's answer to the binding.
  SQLRETURN set(SQLHSTMT statement, const std::vector<Argument>& arguments);

 private:
  struct Slot {
    SQLSMALLINT valueType = SQL_C_CHAR;
    SQLPOINTER data = nullptr;
    SQLLEN room = 0;
    SQLLEN length = 0;
    bool bound = false;
    unsigned char flag = 0;
    std::int64_t whole = 0;
    double number = 0;
    SQL_TIMESTAMP_STRUCT instant = {};
    std::string narrow = {};
    std::u16string wide = {};
  };

  static void prepare(Slot& slot, const WireType& wire);
  static void fill(Slot& slot, const Argument& argument);
  static void fillText(Slot& slot, const std::string& text);
  static void place(Slot& slot, void* data, std::size_t room);

  std::vector<Slot> slots_;
};

SQL_TIMESTAMP_STRUCT instantOf(Date date);

}  // namespace orva::odbc
