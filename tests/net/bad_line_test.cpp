#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <random>
#include <string>
#include <vector>

#include "net/message_reader.h"
#include "net/send_queue.h"

namespace morva {
namespace {

using Messages = std::vector<std::string>;
bool IsLine(const std::string& message) { return message.starts_with('0'); }

using Random = std::mt19937;

int Below(int n, Random& random) { return static_cast<int>(random() % static_cast<unsigned>(n)); }

const std::string& OneOf(const Messages& messages, Random& random) { return messages[random() % messages.size()]; }

/// One direction of the line. What is written comes in order and whole, after a delay; on a bad line that varies, the
/// bytes are cut and put together anew, the packets of a long message come up to 300 ms apart, and nothing comes
/// through in every fourth second. Times are ms.
struct Way {
  int delay;
  bool bad;
  Random& random;
  std::deque<std::pair<int, std::string>> pieces = {};  ///< when each comes, and what it brings
  int acknowledged_at = 0;

  int Through(int now) {
    const int due = now + delay + (bad ? Below(20, random) : 0);
    return bad && due % 4000 >= 3000 ? due / 4000 * 4000 + 4000 : due;
  }

  void Write(std::string bytes, int now) {
    int due = Through(now);
    while (!bytes.empty()) {
      const std::size_t packet = std::min<std::size_t>(bytes.size(), 1400);
      const std::size_t size = bad && Below(3, random) > 0 ? std::min<std::size_t>(packet, 1 + random() % 9) : packet;
      due = std::max(due, pieces.empty() ? 0 : pieces.back().first);
      pieces.emplace_back(due, bytes.substr(0, size));
      bytes.erase(0, size);
      if (bad) due += size == 1400 ? Below(300, random) : Below(4, random) * Below(4, random);
    }
    acknowledged_at = std::max(acknowledged_at, Through(pieces.back().first));
  }

  std::string Read(int now) {
    std::string bytes;
    for (; !pieces.empty() && pieces.front().first <= now; pieces.pop_front()) bytes += pieces.front().second;
    return bytes;
  }
};

/// One copy of the program, as far as the wire goes.
struct End {
  Way way_out;
  SendQueue queue = {};
  MessageReader reader = MessageReader();
  Messages sent = {}, got = {};
  int last_action_at = 0;  ///< when it has arrived here

  void Send(const std::string& message, int now) {
    sent.push_back(message);
    queue.Put(message, now);
  }

  void Turn(End& other, int now) {
    if (way_out.acknowledged_at <= now) queue.Acknowledged(now, 2 * way_out.delay);
    while (const auto message = queue.Next(now)) way_out.Write(*message, now);
    const std::string bytes = other.way_out.Read(now);
    if (!bytes.empty()) reader.Bytes(bytes, now);
    while (const auto message = reader.Next(now)) {
      got.push_back(*message);
      if (!IsLine(*message)) last_action_at = now;
    }
  }
};

TEST(BadLine, LosesNothing) {
  const Messages endings{"", "15236", "me", "1", "37", "1new", "0", "1__", "a good move"};
  const Messages actions{
      "35",    "312",  "363",   "30",     "41230", "407616777215", "me",   "you", "1__" + std::string(64, 'e'),
      "15236", "1new", "1newc", "1clear", "10116", "16301",        "10000"};
  for (unsigned seed = 1; seed <= 12; ++seed) {
    Random random(seed);
    std::vector<End> ends{{{40, true, random}}, {{40, true, random}}};
    int now = 1;
    const auto wait = [&](int ms) {
      for (const int until = now + ms; now < until; ++now) {
        for (std::size_t i = 0; i < 2; ++i) ends[i].Turn(ends[1 - i], now);
      }
    };
    // Both say a line, and act right behind it; sometimes they say and do more.
    for (int round = 0; round < 500; ++round) {
      for (End& end : ends) {
        for (int left = Below(4, random) == 0 ? 3 : 1; left > 0; --left) {
          std::string line = "0" + std::to_string(round) + " " + OneOf(endings, random);
          if (Below(20, random) == 0) line += std::string(random() % 9000, 'x') + " 15236.";
          end.Send(line, now);
          wait(Below(3, random) * Below(200, random));
          for (int left_to_do = 1 + Below(3, random); left_to_do > 0; --left_to_do)
            end.Send(OneOf(actions, random), now);
        }
      }
      wait(Below(2500, random));
    }
    wait(20000);
    for (std::size_t i = 0; i < 2; ++i) {
      // An action may go before the lines that would have held it up.
      Messages &sent = ends[i].sent, &got = ends[1 - i].got;
      for (Messages* messages : {&sent, &got}) std::stable_partition(messages->begin(), messages->end(), IsLine);
      const auto [a, b] = std::mismatch(sent.begin(), sent.end(), got.begin(), got.end());
      ASSERT_TRUE(sent == got) << "seed " << seed << ": instead of " << (a == sent.end() ? "nothing" : a->substr(0, 80))
                               << " came " << (b == got.end() ? "nothing" : b->substr(0, 80));
    }
  }
}

TEST(GoodLine, IsNotSlowedAndLetsMovesPassWords) {
  const Messages lines(30, "0hi"), calls(30, "0yours");
  const struct {
    int delay;
    Messages words;
    std::size_t arrive;  ///< of them
    int slowest;         ///< ms from the sending until the move has arrived
  } rows[] = {{0, {}, 0, 0},         {20, {}, 0, 20},      {0, {"0hi"}, 1, 101},
              {20, {"0hi"}, 1, 125}, {0, {"37"}, 1, 101},  {0, {"0" + std::string(9000, 'x')}, 1, 1000},
              {20, calls, 30, 1000}, {20, lines, 30, 1000}};
  for (const auto& row : rows) {
    Random random;
    End ann{{row.delay, false, random}}, bob{{row.delay, false, random}};
    for (const std::string& word : row.words) ann.Send(word, 1);
    ann.Send("15236", 1);
    for (int now = 1; now < 10000; ++now) {
      ann.Turn(bob, now);
      bob.Turn(ann, now);
    }
    ASSERT_EQ(bob.got.size(), row.arrive + 1);
    EXPECT_LE(bob.last_action_at, 1 + row.slowest) << row.delay << row.words.size();
  }
}

}  // namespace
}  // namespace morva
