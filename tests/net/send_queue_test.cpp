#include "net/send_queue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "net/message_reader.h"

namespace morva {
namespace {

const std::string kBoard = "1__" + std::string(64, 'p');

TEST(SendQueue, PausesBehindWhatRunsToTheEnd) {
  const std::pair<int, std::vector<std::string>> cases[] = {
      {0, {"15236", "1new", "1newc", "1clear", "44030", "412616777215", "me", "you", kBoard}},
      {100, {"0hello", "0", "2Ada", "2", "36", "312", kBoard + "p", "0" + std::string(511, 'x')}},
      {300, {"0" + std::string(512, 'x'), kBoard + std::string(1000, 'p')}}};
  for (const auto& [pause, messages] : cases) {
    for (const std::string& message : messages) {
      SCOPED_TRACE(message.substr(0, 80));
      SendQueue queue;
      queue.Put("");
      EXPECT_TRUE(queue.Empty());
      queue.Put(message);
      EXPECT_EQ(queue.WaitMs(-500), 0);
      EXPECT_EQ(queue.Next(-500), message);
      EXPECT_TRUE(queue.Empty() && queue.WaitMs(-500) == -1 && !queue.Next(5000));
      queue.Put("0check");  // the pause counts from the sending, also for what is put later
      queue.Put("15236");
      EXPECT_EQ(queue.WaitMs(-500), pause);
      EXPECT_TRUE(pause == 0 || !queue.Next(-501 + pause));
      EXPECT_EQ(queue.Next(-500 + pause), "0check");
      EXPECT_EQ(queue.WaitMs(-499 + pause), 99);
      EXPECT_EQ(queue.Next(5'000'000'000), "15236");
      EXPECT_TRUE(queue.Empty());
    }
  }
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
