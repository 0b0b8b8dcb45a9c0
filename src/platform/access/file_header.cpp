#include "platform/access/file_header.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "platform/access/access_file_error.h"
#include "platform/access/rc4.h"
#include "platform/access/text_cell.h"

namespace orva::access {
namespace {

constexpr char kEngineName[] = "Standard Jet DB";
constexpr char kLaterEngineName[] = "Standard ACE DB";
constexpr Byte kMaskKey[] = {0xC7, 0xDA, 0x39, 0x6B};
constexpr std::uint32_t kBuildWritten = 9756;

void applyMask(ByteSpan page) { Rc4(kMaskKey).apply(page.subspan(header_at::kMasked, header_at::kMaskedLength)); }

/// The password is coded once more, with the whole days of the creation date.
void applyDateMask(ByteSpan page) {
  const double date = doubleAt(page, header_at::kCreationDate);
  const bool usable = std::isfinite(date) && std::abs(date) < 2e9;
  const auto days = static_cast<std::uint32_t>(usable ? static_cast<std::int32_t>(date) : 0);
  for (std::size_t i = 0; i < header_at::kPasswordLength; ++i) {
    page[header_at::kPassword + i] ^= static_cast<Byte>(days >> (8 * (i % 4)));
  }
}

bool hasName(ByteView page, const char* name) { return std::memcmp(page.data() + header_at::kName, name, 15) == 0; }

std::string passwordIn(ByteView plain) {
  std::u16string text;
  for (std::size_t i = 0; i < header_at::kPasswordLength; i += 2) {
    const auto unit = static_cast<char16_t>(u16At(plain, header_at::kPassword + i));
    if (unit == 0) break;
    text.push_back(unit);
  }
  return toUtf8(text);
}

}  // namespace

bool looksLikeAccessFile(ByteView firstBytes) {
  return firstBytes.size() >= 20 && (hasName(firstBytes, kEngineName) || hasName(firstBytes, kLaterEngineName));
}

FileHeader FileHeader::read(ByteView page) {
  require(looksLikeAccessFile(page), "the file is not an Access database");
  const std::uint32_t version = u32At(page, header_at::kVersion);
  require(version != 0, "the file has the format of Access 97, which is older than Access 2000");
  require(version == 1 && hasName(page, kEngineName), "the file has a format newer than that of Access 2003");
  Page plain;
  std::copy_n(page.begin(), kPageSize, plain.begin());
  applyMask(plain);
  applyDateMask(plain);
  return {.freeMap = slotAddressAt(plain, header_at::kFreeMap),
          .scramblingKey = u32At(plain, header_at::kScramblingKey),
          .build = u32At(plain, header_at::kBuild),
          .sortOrder = u16At(plain, header_at::kSortOrder),
          .creationDate = doubleAt(plain, header_at::kCreationDate),
          .password = passwordIn(plain)};
}

void writeNewHeader(ByteSpan page, ByteView creationDate) {
  putU32(page, 0, 0x100);
  std::memcpy(page.data() + header_at::kName, kEngineName, 15);
  putU32(page, header_at::kVersion, 1);
  putSlotAddress(page, header_at::kFreeMap, {kGlobalMapPage, 0});
  putSlotAddress(page, header_at::kSecondMap, {kGlobalMapPage, 1});
  for (PageNumber table = kObjectsPage; table <= kRelationshipsPage; ++table) {
    putU32(page, header_at::kSystemTables + std::size_t{4} * (table - kObjectsPage), table);
  }
  putU16(page, header_at::kCodePage, 1252);
  putU32(page, header_at::kBuild, kBuildWritten);
  putU16(page, header_at::kSortOrder, kGeneralSortOrder);
  std::copy(creationDate.begin(), creationDate.end(), page.begin() + header_at::kCreationDate);
  applyDateMask(page);
  applyMask(page);
  putU32(page, header_at::kConstants, 1620);
  std::memcpy(page.data() + header_at::kConstants + 4, "4.0", 4);
  for (std::size_t at = header_at::kUserSlots + 1; at < kPageSize; at += 2) page[at] = 1;
}

void writePassword(ByteSpan page, std::string_view password) {
  const std::u16string text = toUtf16(password);
  if (text.size() > header_at::kPasswordLength / 2) {
    throw AccessFileError(provider_number::kUnspecified, "A database password has at most 20 characters.");
  }
  applyMask(page);
  std::fill_n(page.begin() + header_at::kPassword, header_at::kPasswordLength, Byte{0});
  for (std::size_t i = 0; i < text.size(); ++i) putU16(page, header_at::kPassword + 2 * i, text[i]);
  applyDateMask(page);
  applyMask(page);
}

}  // namespace orva::access
