#include "imports/asset/posting/opening_depreciation.h"

#include "imports/asset/named_values.h"

namespace orva {
namespace {

/// One depreciation book: its tables, and the asset's columns that belong to it.
struct Book {
  std::string_view query;
  Query takeBack;
  Query rate;
  std::string_view codeField;
  std::string_view accumulatedField;
  bool ParameterFlags::*isKept = nullptr;
};

constexpr Book kBooks[] = {
    {.query = "select * from FaDep",
     .takeBack = {"delete from FaDep where docdt={#closing date} and assetid='{identifier}'"},
     .rate = {"Select * from FARate where  facode ='{code}' and accyear ='{year}'"},
     .codeField = "Facode",
     .accumulatedField = "Accdep"},
    {.query = "select * from FaDep1",
     .takeBack = {"delete from FaDep1 where docdt={#closing date} and assetid='{identifier}'"},
     .rate = {"Select * from FARate1 where  facode ='{code}' and accyear ='{year}'"},
     .codeField = "Facode1",
     .accumulatedField = "Accdep1",
     .isKept = &ParameterFlags::additionalBook1},
    {.query = "select * from FaDep2",
     .takeBack = {"delete from FaDep2 where docdt={#closing date} and assetid='{identifier}'"},
     .rate = {"Select * from FARate2 where  facode ='{code}' and accyear ='{year}'"},
     .codeField = "Facode2",
     .accumulatedField = "Accdep2",
     .isKept = &ParameterFlags::additionalBook2},
};

constexpr Query kAccountingYear = {"Select * from accyear where accyear ='{year}'"};
constexpr Query kAssetExists = {"Select assetid from asset where assetid ='{identifier}'"};

/// Columns of an entry that are the asset's own.
struct CopiedField {
  std::string_view entry;
  std::string_view asset;
};

constexpr CopiedField kCopied[] = {
    {"assetid", "Assetid"}, {"cocd", "Cocd"},           {"accyear", "Accyear"},           {"DateUsed", "Usedate"},
    {"defcode", "defcode"}, {"classcode", "classcode"}, {"subclasscode", "Subclasscode"}, {"cost", "Cost"},
};

std::unique_ptr<Recordset> open(const ImportRun& run, const Query& query, const QueryArguments& values) {
  return run.connection().open(composeQuery(query, run.dialect(), values));
}

void setRate(const ImportRun& run, const Book& book, Recordset& asset, Recordset& entry) {
  const auto rate =
      open(run, book.rate, NamedValues{{"code", asset.get(book.codeField)}, {"year", asset.get("Accyear")}});
  if (rate->eof()) return;
  entry.set("Method", rate->get("Method"));
  entry.set("Rate", rate->get("Rate"));
}

void fill(const Book& book, Recordset& asset, Recordset& entry, Date closing) {
  for (const CopiedField& field : kCopied) entry.set(field.entry, asset.get(field.asset));
  entry.set("docdt", closing);
  entry.set("docno", nullToText(asset.get("Docdt")));
  entry.set("facode", asset.get(book.codeField));
  if (const auto useDate = asset.get("Usedate").toDate()) entry.set("Days", daysBetween(*useDate, closing));
  const Currency accumulated = asset.get(book.accumulatedField).toCurrency().value_or(Currency());
  entry.set("amount", accumulated);
  entry.set("Accdep", accumulated);
  entry.set("flag", "O");
}

}  // namespace

Recordset& OpeningDepreciation::table(std::size_t book) {
  if (!tables_[book]) {
    tables_[book] = run_.connection().open(kBooks[book].query, CursorKind::kKeyset, LockKind::kPessimistic);
  }
  return *tables_[book];
}

void OpeningDepreciation::writeBook(std::size_t number, Recordset& asset, bool isNewAsset, Date closing) {
  const Book& book = kBooks[number];
  Recordset& entries = table(number);
  const std::string identifier = nullToText(asset.get("Assetid"));
  entries.filter("docdt=#" + closing.toMonthDayYear() + "# and Assetid='" + sqlEscape(identifier) + "'");
  const bool isThere = !entries.eof();
  // An entry of another asset of this identifier stays: storing the new asset will fail and say so.
  if (isThere && isNewAsset && !open(run_, kAssetExists, NamedValues{{"identifier", identifier}})->eof()) return;
  try {
    if (!isThere) {
      entries.addNew();
      entries.set("srno", std::to_string(++entriesWritten_[number]));
    }
    fill(book, asset, entries, closing);
    setRate(run_, book, asset, entries);
    entries.update();
    if (!isThere) added_.push_back({number, identifier, closing});
  } catch (const ProviderError&) {
    entries.cancel();
    throw;
  }
}

void OpeningDepreciation::takeBack() {
  for (const Added& entry : added_) {
    run_.connection().execute(
        composeQuery(kBooks[entry.book].takeBack, run_.dialect(),
                     NamedValues{{"closing date", entry.closing}, {"identifier", entry.identifier}}));
  }
  added_.clear();
}

void OpeningDepreciation::write(Recordset& asset, bool isNewAsset) {
  const auto year = open(run_, kAccountingYear, NamedValues{{"year", asset.get("Accyear")}});
  if (year->eof()) return;
  const auto closing = year->get("acccldt").toDate();
  if (!closing) return;
  for (std::size_t number = 0; number < std::size(kBooks); ++number) {
    const Book& book = kBooks[number];
    const bool isAdditional = book.isKept != nullptr;
    if (isAdditional && (!(run_.company.flags.*book.isKept) || asset.get(book.accumulatedField).isNull())) continue;
    writeBook(number, asset, isNewAsset, *closing);
  }
}

}  // namespace orva
