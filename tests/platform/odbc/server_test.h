#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "platform/odbc/server_home.h"

namespace orva {

/// Runs each test at both places; skipped where there is no server.
class ServerTest : public testing::TestWithParam<Where> {
 protected:
  void SetUp() override {
    if (!ServerHome::isThere(GetParam())) GTEST_SKIP() << "ORVA_TEST_SQLSERVER names no server";
    home = std::make_unique<ServerHome>(GetParam());
  }
  bool isReal() const { return GetParam() == Where::kRealServer; }

  std::unique_ptr<ServerHome> home;
};

inline std::string whereName(const testing::TestParamInfo<Where>& where) {
  return where.param == Where::kTestServer ? "TestServer" : "RealServer";
}

/// Number and text of the failure of `action`; zero when it did not fail.
template <typename Action>
ProviderError failureOf(Action action) {
  try {
    action();
  } catch (const ProviderError& error) {
    return error;
  }
  return {0, "it did not fail"};
}

}  // namespace orva
