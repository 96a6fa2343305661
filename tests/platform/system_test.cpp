#include <gtest/gtest.h>

#include <QTextDocumentFragment>
#include <climits>

#include "platform/system/qt_text.h"
#include "platform/system/timer.h"
#include "platform/system/values.h"
#include "tests/support.h"

namespace morva {
namespace {

TEST(Values, AreTheNumberThatATextStartsWith) {
  const std::pair<const char*, int> numbers[] = {
      {"0", 0},   {"63", 63},    {"007", 7},  {" \t12", 12},          {"+7", 7}, {" -7x", -7}, {"1 34", 1},
      {"1.9", 1}, {"5\1776", 5}, {"0x10", 0}, {"2147483648", INT_MAX}};
  for (const auto& [text, number] : numbers) EXPECT_EQ(LeadingNumber(text), number) << text;
  EXPECT_EQ(Val("-99999999999"), -INT_MAX);
  for (const char* text : {"", " ", "x1", "-", "+-7", "-+7", "--7", "- 7", ".5", "\n5", "\xD9\xA3"}) {
    EXPECT_TRUE(!LeadingNumber(text) && Val(text) == 0) << text;
  }
}

TEST(Tips, ShowTextAsItStands) {
  for (const char* text : {"<b>x</b> & &lt;i&gt;", "two  blanks"}) {
    EXPECT_EQ(QTextDocumentFragment::fromHtml(TipText(text)).toPlainText(), text);
  }
}

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
