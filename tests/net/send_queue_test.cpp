#include "net/send_queue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "net/message_reader.h"

namespace morva {
namespace {

const std::string kBoard = "1__" + std::string(64, 'p');

TEST(SendQueue, KnowsWhatRunsToTheEnd) {
  for (const std::string message : {"0hello", "0", "2Ada", "2", "36", "312"})
    EXPECT_TRUE(RunsToEnd(message)) << message;
  EXPECT_TRUE(RunsToEnd(kBoard + "p"));
  for (const std::string message : {"15236", "1new", "1newc", "1clear", "44030", "me", "you", "", kBoard.c_str()}) {
    EXPECT_FALSE(RunsToEnd(message)) << message;
  }
}

TEST(SendQueue, SendsInOrderAndWithoutDelayWhatEndsByItself) {
  SendQueue queue;
  EXPECT_EQ(queue.WaitMs(7), -1);
  EXPECT_EQ(queue.Next(7), std::nullopt);
  queue.Put("15236");
  queue.Put("");
  queue.Put(kBoard);
  queue.Put("me");
  EXPECT_FALSE(queue.Empty());
  EXPECT_EQ(queue.WaitMs(7), 0);
  EXPECT_EQ(queue.Next(7), "15236");
  EXPECT_EQ(queue.Next(7), kBoard);
  EXPECT_EQ(queue.Next(7), "me");
  EXPECT_TRUE(queue.Empty());
  EXPECT_EQ(queue.WaitMs(7), -1);
}

TEST(SendQueue, PausesBehindWhatRunsToTheEnd) {
  for (const std::string& first : {std::string("0hi"), std::string("2Ada"), std::string("36"), kBoard + "pp"}) {
    SCOPED_TRACE(first);
    SendQueue queue;
    queue.Put(first);
    ASSERT_EQ(queue.Next(1000), first);
    EXPECT_EQ(queue.WaitMs(1001), -1);
    queue.Put("15236");  // the pause counts from the sending, also for what is put later
    queue.Put("me");
    EXPECT_EQ(queue.WaitMs(1000), 100);
    EXPECT_EQ(queue.Next(1099), std::nullopt);
    EXPECT_EQ(queue.WaitMs(1099), 1);
    EXPECT_EQ(queue.WaitMs(1100), 0);
    EXPECT_EQ(queue.Next(1100), "15236");
    EXPECT_EQ(queue.Next(1100), "me") << "no pause behind a move";
  }
}

TEST(SendQueue, CountsEveryPauseFromTheLastSending) {
  SendQueue queue;
  for (const std::string message : {"0one", "0two", "15236"}) queue.Put(message);
  EXPECT_EQ(queue.Next(-500), "0one");
  EXPECT_EQ(queue.Next(-401), std::nullopt);
  EXPECT_EQ(queue.Next(-400), "0two");
  EXPECT_EQ(queue.Next(-399), std::nullopt);
  EXPECT_EQ(queue.WaitMs(5'000'000'000), 0);
  EXPECT_EQ(queue.Next(5'000'000'000), "15236");
}

TEST(SendQueue, PausesLongerBehindALongMessage) {
  SendQueue queue;
  queue.Put("0" + std::string(600, 'x'));
  queue.Put("15236");
  ASSERT_TRUE(queue.Next(0));
  EXPECT_EQ(queue.Next(299), std::nullopt) << "the other side is still waiting for its end";
  EXPECT_EQ(queue.Next(300), "15236");
}

TEST(SendQueue, SendsSoThatTheReaderFindsEveryMessage) {
  const std::string choices[] = {"0hi 15236", "0me",   "2Ada",  "36",    "36",     "312",  "30",   "me",
                                 "you",       "15236", "44030", "1newc", "1clear", "1new", kBoard, kBoard + "ppp12"};
  for (unsigned seed = 1; seed <= 500; ++seed) {
    std::mt19937 random(seed);
    SendQueue queue;
    std::vector<std::string> expected;
    for (int left = 20; left > 0; --left) queue.Put(expected.emplace_back(choices[random() % std::size(choices)]));

    MessageReader reader;
    std::vector<std::string> found;
    std::int64_t now = 0;
    while (!queue.Empty()) {
      const int wait = queue.WaitMs(now);
      if (reader.QuietNeeded() > 0 && wait >= reader.QuietNeeded()) reader.Quiet();
      now += wait;
      reader.Bytes(*queue.Next(now));
    }
    reader.Quiet();
    while (auto message = reader.Next()) found.push_back(*message);
    for (std::string& message : expected) message.resize(std::min(message.size(), kBoard.size()));
    ASSERT_EQ(found, expected) << "seed " << seed;
  }
}

}  // namespace
}  // namespace morva
