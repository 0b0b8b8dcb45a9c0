#include <gtest/gtest.h>

#include <random>

#include "platform/embedded/company_file.h"

namespace orva::test {
namespace {

/// One statement after the other on an Access file and on an SQLite file: they must tell the same.
class TwoStores {
 public:
  explicit TwoStores(unsigned seed) : random_(seed) {
    both(
        "create table T (Id text(10), Name text(30), Amount currency, N number, Whole long, D date, Flag yesno, Note "
        "memo, primary key (Id))");
    if (seed % 2 == 0) both("create index ByName on T (Name)");
    if (seed % 3 != 0) both("create index ByDay on T (D)");
    if (seed % 3 == 0) both("create index ByBoth on T (Whole, Name)");
    both("create table Other (Code text(30), Amount currency)");
    // A row of T meets one of Other at the most: which of several decides, no one promises.
    for (const char* code : {"", "a", "ab", "aab", "b", "1", "10", "2", "\xC3\xA9", "e", "\\", "ss"}) {
      both("insert into Other values ('" + std::string(code) + "', " + std::to_string(below(50)) + ")");
    }
  }

  void addRow() {
    both("insert into T values ('" + std::to_string(below(400)) + "', " + orNull(text()) + ", " + orNull(amount()) +
         ", " + orNull(amount()) + ", " + orNull(std::to_string(below(9))) + ", " + orNull(day()) + ", " +
         (below(2) != 0 ? "true" : "false") + ", " + orNull(text()) + ")");
  }
  void change() {
    const std::string assignments[] = {"Name = " + orNull(text()),
                                       "Amount = Amount + 1",
                                       "D = " + orNull(day()),
                                       "Whole = " + std::to_string(below(9)),
                                       "Note = Name & 'x'",
                                       "Flag = not Flag",
                                       "N = N * 2, Name = Ucase(Name)"};
    both("update T set " + assignments[below(std::size(assignments))] + " where " + condition());
  }
  void remove() { both("delete from T where " + condition() + " and Whole = " + std::to_string(below(9))); }
  void join() {
    both("update T, Other set T.Amount = Other.Amount where T.Name = Other.Code and " + condition());
    both(
        "select T.Id from T left join Other on T.Name = Other.Code where Other.Amount is null and N is null order by "
        "T.Id");
    both("select T.Id, Other.Amount from T inner join Other on T.Name = Other.Code order by T.Id, Other.Amount");
  }
  void query() {
    const std::string orders[] = {"Id",    "Id desc",    "Name, Id",       "Name desc, Id desc",
                                  "D, Id", "D desc, Id", "Whole, Name, Id"};
    both("select Id, Name, Amount, N, Whole, D, Flag, Note from T where " + condition() + " order by " +
         orders[below(std::size(orders))]);
    both("select count(*), sum(Amount), min(D), Ucase(max(Name)) from T where " + condition());
  }
  void wholeTable() { both("select * from T order by Id"); }

 private:
  std::size_t below(std::size_t n) { return random_() % n; }
  std::string orNull(const std::string& value) { return below(6) == 0 ? "null" : value; }
  std::string amount() {
    return std::to_string(static_cast<int>(below(2000)) - 1000) + "." + std::to_string(below(100));
  }
  std::string day() {
    return "#" + std::to_string(1 + below(12)) + "/" + std::to_string(1 + below(28)) + "/" +
           std::to_string(1995 + below(6)) + "#";
  }
  std::string text() {
    static const char* const kParts[] = {"a",  "A", "ab", "AB",       "b",        "B ", " ",  "-", "_",        "1",
                                         "10", "2", "''", "\xC3\xA9", "\xC3\x89", "e",  "\\", "/", "\xC3\x9F", "ss"};
    std::string text;
    for (std::size_t i = below(4); i > 0; --i) text += kParts[below(std::size(kParts))];
    return "'" + text + "'";
  }
  std::string condition() {
    const std::string whole = std::to_string(below(9));
    const std::string conditions[] = {
        "Name = " + text(),
        "Ucase(Name) = Ucase(" + text() + ")",
        "trim(Name) = " + text(),
        "Name <> " + text(),
        "Whole = " + whole + " and Name <> 'a'",
        "Whole = " + whole + " and Name <> 'B'",
        "Name is null",
        "Name is not null and Note is null",
        "mid(Name, 1, 1) = 'A'",
        "left(Name, 2) = 'ab'",
        "Name > " + text(),
        "Name like 'a%'",
        "Id = '" + std::to_string(below(400)) + "'",
        "D = " + day(),
        "D >= " + day() + " and D < " + day(),
        "D is null",
        "N is null and Note is null",
        "Amount is null or Whole is null",
        "Flag is null",
        "Whole = " + whole + " and Name = " + text(),
        "Whole = " + whole + " and left(Name, 1) = 'b'",
        "Whole > " + whole,
        "Amount = " + amount(),
        "Amount between -100 and " + amount(),
        "val(Id) > " + whole + "0",
        "Flag = true and N < 10",
        "len(Name) = 2 and Whole <= " + whole,
    };
    return conditions[below(std::size(conditions))];
  }
  void both(const std::string& statement) {
    EXPECT_EQ(access_.outcome(statement), sqlite_.outcome(statement)) << statement;
  }

  std::mt19937 random_;
  CompanyFile access_{kAccessFile};
  CompanyFile sqlite_{kSqliteFile};
};

TEST(Stores, AgreeOnEveryStatement) {
  for (unsigned seed = 0; seed < 6 && !testing::Test::HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    TwoStores stores(seed);
    for (int i = 0; i < 150; ++i) stores.addRow();
    for (int i = 0; i < 60; ++i) {
      stores.change();
      stores.query();
      if (i % 10 == 0) stores.join();
      if (i % 8 == 0) stores.remove();
      stores.addRow();
    }
    stores.wholeTable();
  }
}

}  // namespace
}  // namespace orva::test
