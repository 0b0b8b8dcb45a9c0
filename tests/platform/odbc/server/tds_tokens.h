#pragma once

#include <string>
#include <vector>

#include "platform/database.h"
#include "platform/odbc/server/tds_bytes.h"

namespace orva::tds {

/// An error as the server sends it.
struct ServerError {
  int number = 0;
  std::string text;
};

/// How an answer, or a part of it, ends: DONE, DONEPROC, DONEINPROC.
enum class Done { kBatch = 0xFD, kProcedure = 0xFE, kInProcedure = 0xFF };
namespace done_status {
inline constexpr unsigned kFinal = 0;
inline constexpr unsigned kMore = 1;
inline constexpr unsigned kError = 2;
inline constexpr unsigned kCount = 0x10;
inline constexpr unsigned kAttention = 0x20;
}  // namespace done_status

void writeColumns(Writer& out, const std::vector<FieldInfo>& fields);
void writeRow(Writer& out, const std::vector<FieldInfo>& fields, const std::vector<Value>& row);
void writeDone(Writer& out, Done token, unsigned status, std::uint64_t rows = 0);
/// Severity 10 and below is information.
void writeMessage(Writer& out, const ServerError& error, unsigned severity);
void writeReturnStatus(Writer& out);
/// The handle of a prepared statement, given back by the procedure that prepares.
void writeHandle(Writer& out, int handle);
void writeLogin(Writer& out, const std::string& catalog);

/// A parameter of a remote call as the text of a literal.
struct Parameter {
  std::string name;
  std::string literal;
  Value value;
};
Parameter readParameter(Reader& in);

}  // namespace orva::tds
