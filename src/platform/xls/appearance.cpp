#include "platform/xls/appearance.h"

#include <algorithm>

#include "platform/values/text.h"

namespace orva::xls {
namespace {

constexpr char kAdvice[] = " Open it in Excel and save it as an Excel 97-2003 workbook.";

/// How files of other kinds begin, and what the user is told.
struct Beginning {
  std::string_view start;
  std::string_view looksLike;
};
constexpr Beginning kBeginnings[] = {
    {.start = "PK\x03\x04", .looksLike = "a workbook of the newer Excel format (xlsx)"},
    {.start = "PK\x05\x06", .looksLike = "an empty archive (zip)"},
    {.start = "%PDF", .looksLike = "a PDF document"},
    {.start = "{\\rtf", .looksLike = "a rich text document"},
};
constexpr Beginning kMarkup[] = {
    {.start = "<?xml", .looksLike = "an XML file"},
    {.start = "<!doctype html", .looksLike = "a web page (HTML)"},
    {.start = "<html", .looksLike = "a web page (HTML)"},
    {.start = "<table", .looksLike = "a web page (HTML)"},
    {.start = "<", .looksLike = "a web page (HTML) or another marked-up text"},
};
/// Streams that other programs keep in the same container.
constexpr Beginning kStreams[] = {
    {.start = "WordDocument", .looksLike = "a Word document"},
    {.start = "PowerPoint Document", .looksLike = "a presentation"},
    {.start = "__properties_version1.0", .looksLike = "a mail message"},
};

Refusal notWorkbook(std::string_view looksLike) {
  return {WorkbookFault::kNotWorkbook,
          "is not an Excel 97-2003 workbook: it looks like " + std::string(looksLike) + "." + kAdvice};
}

bool isOldStream(std::string_view start) {
  // Excel 2 to 4 wrote the records without a container: a BOF record of four or six bytes.
  return start.size() >= 4 && start[0] == '\x09' && (start[1] == 0 || start[1] == 2 || start[1] == 4) &&
         (start[2] == 4 || start[2] == 6) && start[3] == 0;
}

bool isText(std::string_view start) {
  return std::none_of(start.begin(), start.end(), [](char letter) {
    const auto code = static_cast<unsigned char>(letter);
    return code < 0x20 && letter != '\t' && letter != '\r' && letter != '\n' && letter != '\f';
  });
}

}  // namespace

Refusal foreignFile(ByteView file) {
  if (file.empty()) return {WorkbookFault::kNotWorkbook, "is empty: it is not an Excel 97-2003 workbook."};
  const ByteView head = file.first(std::min<std::size_t>(file.size(), 512));
  std::string start(head.begin(), head.end());
  for (const Beginning& known : kBeginnings) {
    if (start.starts_with(known.start)) return notWorkbook(known.looksLike);
  }
  if (isOldStream(start)) return oldFormat();
  if (start.starts_with("\xEF\xBB\xBF")) start.erase(0, 3);
  if (start.starts_with("\xFF\xFE") || start.starts_with("\xFE\xFF")) return notWorkbook("a text file (Unicode)");
  const std::string markup = toLower(trimSpace(start));
  for (const Beginning& known : kMarkup) {
    if (markup.starts_with(known.start)) return notWorkbook(known.looksLike);
  }
  if (isText(start)) return notWorkbook("a text file");
  return {WorkbookFault::kNotWorkbook, std::string("is not an Excel 97-2003 workbook.") + kAdvice};
}

Refusal foreignContainer(const CompoundFile& container) {
  if (container.hasStream("Book")) return oldFormat();
  if (container.hasStream("EncryptedPackage")) return encrypted();
  for (const Beginning& known : kStreams) {
    if (container.hasStream(known.start)) return notWorkbook(known.looksLike);
  }
  return {WorkbookFault::kNotWorkbook, "is not an Excel 97-2003 workbook: it holds no stream named \"Workbook\"."};
}

Refusal oldFormat() {
  return {WorkbookFault::kOldFormat, std::string("is a workbook of Excel 5.0/95 or older.") + kAdvice};
}

Refusal encrypted() {
  return {WorkbookFault::kEncrypted,
          "is protected by a password for opening. Open it in Excel, remove the password and save it again."};
}

}  // namespace orva::xls
