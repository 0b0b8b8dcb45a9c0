#include "masters/nearest_names.h"

#include <gtest/gtest.h>

namespace orva {
namespace {

using Texts = std::vector<std::string>;

TEST(NearestNames, ToleratesSignsCaseAndSingleLetters) {
  const NearestNames names({"58RC", "Stores", "Store Room", "Godavari Motors", "Godavari Motors Ltd", "HR", "Accounts",
                            "लेखा विभाग", "Größe", "--", ""});
  struct Case {
    const char* name;
    Texts nearest;
  };
  const Case kCases[] = {
      {"58 RC", {"58RC"}},
      {"58-rc.", {"58RC"}},
      {"H.R.", {"HR"}},
      {"Stroes", {"Stores"}},
      {"godavri motors", {"Godavari Motors", "Godavari Motors Ltd"}},
      {"Acounts", {"Accounts"}},
      {"लेखा  विभाग", {"लेखा विभाग"}},
      {"GRÖßE", {"Größe"}},
      {"Laboratory", {}},
      {"विक्रय", {}},
  };
  for (const Case& c : kCases) EXPECT_EQ(names.nearest(c.name), c.nearest) << c.name;
  EXPECT_EQ(names.nearest("Godavari Motors", 1), Texts{"Godavari Motors"});
}

}  // namespace
}  // namespace orva
