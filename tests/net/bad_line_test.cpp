#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <random>
#include <string>
#include <vector>

#include "net/message_reader.h"
#include "net/send_queue.h"
#include "net/wire.h"

namespace morva {
namespace {

using Messages = std::vector<std::string>;

class Chance {
 public:
  explicit Chance(unsigned seed) : random_(seed) {}
  int Below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }
  int Between(int least, int most) { return least + Below(most - least + 1); }

 private:
  std::mt19937 random_;
};

/// What a line is like: the delay of a packet in ms, and whether it cuts what it carries and lets nothing through in
/// every fourth second.
struct Weather {
  int least_delay, most_delay;
  bool bad;
};

/// One direction of the line. What is written comes in order and whole, but late, and on a bad line cut and together
/// with other bytes; the packets of a long message can come 300 ms apart. Times are ms.
class Way {
 public:
  Way(Weather weather, Chance& chance) : weather_(weather), chance_(chance) {}

  void Write(const std::string& bytes, int now) {
    int due = Through(now);
    for (std::size_t at = 0; at < bytes.size();) {
      const std::size_t packet = std::min<std::size_t>(bytes.size() - at, 1400);
      const std::size_t cut =
          !weather_.bad || chance_.Below(3) == 0 ? packet : 1 + static_cast<std::size_t>(chance_.Below(9));
      const std::size_t size = std::min(cut, packet);
      due = std::max(due, pieces_.empty() ? 0 : pieces_.back().due);
      pieces_.push_back({due, bytes.substr(at, size)});
      at += size;
      if (weather_.bad) due += size == 1400 ? chance_.Below(300) : chance_.Below(4) * chance_.Below(4);
    }
    acknowledged_at_ = std::max(acknowledged_at_, Through(pieces_.back().due));
  }

  std::string Read(int now) {
    std::string bytes;
    for (; !pieces_.empty() && pieces_.front().due <= now; pieces_.pop_front()) bytes += pieces_.front().bytes;
    return bytes;
  }

  bool Acknowledged(int now) const { return acknowledged_at_ <= now; }

 private:
  int Through(int now) {
    const int due = now + chance_.Between(weather_.least_delay, weather_.most_delay);
    return weather_.bad && due % 4000 >= 3000 ? due / 4000 * 4000 + 4000 : due;
  }

  struct Piece {
    int due;
    std::string bytes;
  };
  Weather weather_;
  Chance& chance_;
  std::deque<Piece> pieces_;
  int acknowledged_at_ = 0;
};

/// One copy of the program, as far as the wire goes.
class End {
 public:
  End(Weather weather, Chance& chance) : round_trip_(2 * weather.least_delay), way_out_(weather, chance) {}

  void Send(const std::string& message, int now) {
    sent.push_back(message);
    queue_.Put(message, now);
  }

  void Turn(End& other, int now) {
    if (queue_.AwaitsAcknowledgement() && way_out_.Acknowledged(now)) queue_.Acknowledged(now, round_trip_);
    while (const auto message = queue_.Next(now)) way_out_.Write(*message, now);
    const std::string bytes = other.way_out_.Read(now);
    if (!bytes.empty()) reader_.Bytes(bytes, now);
    while (auto message = reader_.Next(now)) {
      got.push_back(std::move(*message));
      got_at.push_back(now);
    }
  }

  Messages sent, got;
  std::vector<int> got_at;  ///< ms, of each

 private:
  int round_trip_;
  Way way_out_;
  SendQueue queue_;
  MessageReader reader_;
};

std::string Two(int square) { return std::to_string(100 + square).substr(1); }

/// What a player does now and then, or all the time.
std::string Action(Chance& chance) {
  const auto square = [&chance] { return Two(chance.Below(64)); };
  switch (chance.Below(9)) {
    case 0:
      return "3" + std::to_string(chance.Below(64));
    case 1:
      return "4" + square() + std::to_string(chance.Below(9)) + (chance.Below(2) == 0 ? "0" : "16777215");
    case 2:
      return chance.Below(2) == 0 ? "me" : "you";
    case 3:
      return "1__" + std::string(64, static_cast<char>('d' + chance.Below(20)));
    case 4:
      return Messages{"1new", "1newc", "1clear"}[static_cast<std::size_t>(chance.Below(3))];
    default:
      return "1" + square() + square();
  }
}

std::string Line(Chance& chance, int number) {
  static const char* const endings[] = {"", "15236", "me", "1", "37", "1new", "0", "1__", "a good move"};
  std::string line = "0" + std::to_string(number) + " " + endings[chance.Below(9)];
  if (chance.Below(20) == 0) line += std::string(static_cast<std::size_t>(chance.Below(9000)), 'x') + " 15236.";
  return line;
}

Messages Only(const Messages& messages, bool words) {
  Messages chosen;
  std::copy_if(messages.begin(), messages.end(), std::back_inserter(chosen),
               [words](const std::string& message) { return message.starts_with('0') == words; });
  return chosen;
}

/// Both players say a line, and act right behind it; sometimes they say and do more.
void Play(std::vector<End>& ends, Chance& chance, int rounds) {
  int now = 1;
  const auto wait = [&](int ms) {
    for (const int until = now + ms; now < until; ++now) {
      ends[0].Turn(ends[1], now);
      ends[1].Turn(ends[0], now);
    }
  };
  for (int round = 0; round < rounds; ++round) {
    for (End& end : ends) {
      for (int left = chance.Below(4) == 0 ? 3 : 1; left > 0; --left) {
        end.Send(Line(chance, round), now);
        wait(chance.Below(3) * chance.Below(200));
        for (int actions = chance.Between(1, 3); actions > 0; --actions) end.Send(Action(chance), now);
      }
    }
    wait(chance.Below(2500));
  }
  wait(20000);
}

TEST(BadLine, LosesNothing) {
  for (unsigned seed = 1; seed <= 12; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Chance chance(seed);
    const Weather weather{40, 60, true};
    std::vector<End> ends{{weather, chance}, {weather, chance}};
    Play(ends, chance, 500);
    for (int i = 0; i < 2; ++i) {
      // An action may go before the lines that would have held it up.
      for (const bool words : {true, false}) {
        const Messages sent = Only(ends[i].sent, words), got = Only(ends[1 - i].got, words);
        const auto [a, b] = std::mismatch(sent.begin(), sent.end(), got.begin(), got.end());
        ASSERT_TRUE(a == sent.end() && b == got.end())
            << "instead of " << (a == sent.end() ? "nothing" : a->substr(0, 80)) << " came "
            << (b == got.end() ? "nothing" : b->substr(0, 80));
      }
    }
  }
}

TEST(GoodLine, IsNotSlowedAndLetsMovesPassWords) {
  const Messages lines(30, "0hi"), canned(100, "0yours");
  const struct {
    int delay;
    Messages words;
    std::size_t arrive;  ///< of them
    int slowest;         ///< ms from the sending until the move has arrived
  } rows[] = {{0, {}, 0, 0},         {20, {}, 0, 20},      {0, {"0hi"}, 1, 101},
              {20, {"0hi"}, 1, 125}, {0, {"37"}, 1, 101},  {0, {"0" + std::string(9000, 'x')}, 1, 1000},
              {20, canned, 1, 125},  {20, lines, 30, 1000}};
  for (const auto& row : rows) {
    Chance chance(1);
    const Weather weather{row.delay, row.delay, false};
    End ann(weather, chance), bob(weather, chance);
    for (const std::string& word : row.words) ann.Send(word, 1);
    ann.Send("15236", 1);
    for (int now = 1; now < 10000; ++now) {
      ann.Turn(bob, now);
      bob.Turn(ann, now);
    }
    ASSERT_EQ(bob.got.size(), row.arrive + 1);
    const auto move = std::find(bob.got.begin(), bob.got.end(), "15236") - bob.got.begin();
    EXPECT_LE(bob.got_at[static_cast<std::size_t>(move)], 1 + row.slowest) << row.delay << row.words.size();
  }
}

}  // namespace
}  // namespace morva
