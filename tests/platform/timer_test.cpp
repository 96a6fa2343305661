#include "platform/system/timer.h"

#include <gtest/gtest.h>

#include "tests/support.h"

namespace morva {
namespace {

TEST(Timers, TickAgainAndAgainButNeverFasterThanTheyAreSeen) {
  Timer timer(1);
  int ticks = 0;
  timer.Tick = [&] { ++ticks; };
  QElapsedTimer clock;
  clock.start();
  ASSERT_TRUE(Await([&] { return ticks >= 10; }));
  EXPECT_GE(clock.elapsed(), 140);
  for (const bool by_interval : {true, false}) {
    timer.Interval = by_interval ? 0 : 1;
    timer.Enabled = by_interval;
    ticks = 0;
    QTest::qWait(60);
    EXPECT_EQ(ticks, 0);
    timer.Interval = 5;
    timer.Enabled = true;
    EXPECT_TRUE(Await([&] { return ticks > 0; }));
  }
}

}  // namespace
}  // namespace morva
