#include "platform/embedded/memory_index.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace orva::embedded {
namespace {

/// Few letters behind a few beginnings, some longer than what a block is found by.
std::string randomEntry(std::mt19937& random) {
  static const std::string kBeginnings[] = {"a", std::string(31, 'a'), std::string(40, 'a'), std::string(300, 'b')};
  static constexpr char kLetters[] = {'\0', '\x01', 'a', 'b', '\xFF'};
  std::string entry = kBeginnings[random() % std::size(kBeginnings)];
  for (std::size_t size = random() % 7; size > 0; --size) entry += kLetters[random() % std::size(kLetters)];
  return entry;
}

TEST(MemoryIndex, KeepsTheOrderOfASet) {
  std::mt19937 random(7);  // NOLINT(bugprone-random-generator-seed,cert-msc51-cpp): the same entries in every run
  MemoryIndex index;
  std::set<std::string> expected;
  for (int step = 0; step < 30'000; ++step) {
    const std::string entry = randomEntry(random);
    if (random() % 3 > 0) {
      index.insert(entry);
      expected.insert(entry);
    } else {
      index.erase(entry);
      expected.erase(entry);
    }
    if (step % 7'000 == 6'999) index.pack();
    const std::string wanted = randomEntry(random);
    const auto behind = expected.lower_bound(wanted);
    const MemoryIndex::Cursor found = index.lowerBound(wanted);
    ASSERT_EQ(found.atEnd() ? "" : found.entry(), behind == expected.end() ? "" : *behind) << step;
    const MemoryIndex::Cursor before = index.before(wanted);
    ASSERT_EQ(before.atEnd() ? "" : before.entry(), behind == expected.begin() ? "" : *std::prev(behind)) << step;
  }
  ASSERT_EQ(index.size(), expected.size());
  auto next = expected.begin();
  for (auto cursor = index.lowerBound({}); !cursor.atEnd(); cursor.next(), ++next) ASSERT_EQ(cursor.entry(), *next);
  EXPECT_EQ(next, expected.end());
}

}  // namespace
}  // namespace orva::embedded
