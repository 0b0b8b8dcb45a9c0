#include <gtest/gtest.h>

#include <csignal>
#include <sstream>

#include "fakes/fake_desktop.h"
#include "platform/console/console_dialogs.h"
#include "platform/console/quiet_event_loop.h"

namespace orva {
namespace {

TEST(ConsoleDialogs, PrintsTitleTextAndAnswer) {
  std::ostringstream output;
  ConsoleDialogs dialogs(output);
  const Message question{.text = "Delete ABC", .title = "ORVA", .buttons = MessageButtons::kYesNo};
  EXPECT_EQ(dialogs.show({.text = "Company Does not Exist", .title = ""}), Answer::kOk);
  EXPECT_EQ(dialogs.show(question), Answer::kNo) << "nobody has allowed anything";
  dialogs.setAnswerRule([](const Message&) { return Answer::kYes; });
  EXPECT_EQ(dialogs.show(question), Answer::kYes);
  EXPECT_EQ(output.str(), "[] Company Does not Exist\n[ORVA] Delete ABC [No]\n[ORVA] Delete ABC [Yes]\n");
}

TEST(QuietEventLoop, RepaintsAtMostSixtyTimesASecond) {
  FakeClock clock;
  QuietEventLoop loop(clock);
  int repaints = 0;
  for (int millisecond = 0; millisecond < 1000; ++millisecond) {
    clock.time += std::chrono::milliseconds(1);
    repaints += loop.repaintDue() ? 1 : 0;
    loop.yield();
  }
  EXPECT_LE(repaints, 60);
  EXPECT_GE(repaints, 50);
}

TEST(QuietEventLoop, AnInterruptReachesTheRunOnceAtItsNextYield) {
  FakeClock clock;
  QuietEventLoop loop(clock);
  int stops = 0;
  loop.onInterrupt([&] { ++stops; });
  loop.yield();
  EXPECT_EQ(stops, 0);
  std::raise(SIGINT);
  EXPECT_EQ(stops, 0);
  loop.yield();
  loop.yield();
  EXPECT_EQ(stops, 1);
}

}  // namespace
}  // namespace orva
