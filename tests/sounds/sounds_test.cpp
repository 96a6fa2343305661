// Listens, at the card of a sound server of its own, to what the program plays.

#include <fcntl.h>
#include <unistd.h>

#include <QProcess>
#include <QTemporaryDir>
#include <csignal>
#include <cstdlib>
#include <utility>

#include "platform/system/sound.h"
#include "tests/game.h"

namespace morva {
namespace {

/// A stream of sound as the server hands it out, 22,050 frames a second: each the left and the right sample of 16 bits.
using Frames = std::u32string;

constexpr int kRate = 22050;
constexpr std::size_t kEnough = 64;  // frames that tell one sound from another
constexpr int kLongMs = 20000;       // a busy machine takes its time
constexpr struct {
  int rate, bits, channels, bytes;
} kSounds[] = {{11025, 8, 1, 4282},   {22050, 16, 1, 90090},  {22050, 16, 1, 130002},
               {22050, 16, 1, 68456}, {22050, 16, 2, 274412}, {22050, 16, 2, 656868},
               {22050, 16, 1, 47034}, {11025, 8, 1, 714},     {22050, 16, 1, 270}};

/// The stored sound, 0 for 101, from the first frame that can be heard on.
Frames Stored(int which) {
  const auto wave = LoadResData(101 + which, "CUSTOM");
  const auto& sound = kSounds[which];
  EXPECT_EQ(wave.size(), 44U + static_cast<std::size_t>(sound.bytes)) << which;
  Frames frames;
  int peak = 0;
  const std::size_t bytes = sound.bits / 8;
  for (std::size_t at = 44; at + bytes <= wave.size(); at += bytes) {
    const int value = bytes == 1 ? (wave[at] - 128) * 256 : static_cast<std::int16_t>(wave[at] | wave[at + 1] << 8);
    const auto sample = static_cast<std::uint16_t>(value);
    peak = std::max(peak, std::abs(value));
    if (sound.channels == 2 && at / bytes % 2 == 1) {
      frames.back() = (frames.back() & 0xFFFFU) | sample << 16U;
    } else {
      frames.append(kRate / sound.rate, sample | sample << 16U);
    }
  }
  EXPECT_TRUE(peak > 0.05 * 32768 && peak <= 0.708 * 32768) << which << ": " << peak;  // loud enough, never clipped
  return frames.substr(frames.find_first_not_of(U'\0'));
}

class Sounds : public GameTest {
 protected:
  void SetUp() override {
    qputenv("PULSE_SERVER", "unix:" + folder_.filePath("pulse").toUtf8());
    for (int which = 0; which < 9; ++which) stored_.push_back(Stored(which));
    StartServer();
    ASSERT_NO_FATAL_FAILURE(Sit());
    frmChess->mnuPlaySounds.Click();
    frmChess->mnuAcceptMessages.Checked = false;
  }

  void TearDown() override {
    GameTest::TearDown();
    EndServer();
  }

  /// A server whose one card is a pipe with little room in it.
  void StartServer() {
    const QString socket = folder_.filePath("pulse"), card = folder_.filePath("card");
    pulse_.start("pulseaudio", {"-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "-L",
                                "module-native-protocol-unix auth-anonymous=1 socket=" + socket, "-L",
                                "module-pipe-sink rate=22050 channels=2 format=s16le file=" + card});
    ASSERT_TRUE(Await([&] { return QFile::exists(socket) && QFile::exists(card); }, kLongMs)) << "no pulseaudio";
    card_ = ::open(card.toUtf8(), O_RDONLY | O_NONBLOCK);
    ASSERT_GT(::fcntl(card_, F_SETPIPE_SZ, 1), 0);
  }

  void EndServer() {
    pulse_.terminate();
    EXPECT_TRUE(pulse_.waitForFinished());
    ::close(card_);
  }

  /// Takes so much sound, as a card does: 10 ms of it each 10 ms. Where the computer is busy all goes slower.
  void Listen(int ms = 10) {
    const std::size_t enough = stream_.size() + static_cast<std::size_t>(kRate * ms / 1000);
    QElapsedTimer clock;
    for (clock.start(); stream_.size() < enough && clock.elapsed() < 20 * ms;) {
      QTest::qWait(10);
      char32_t frames[kRate / 100];
      const auto bytes = ::read(card_, frames, sizeof(frames));
      if (bytes > 0) stream_.append(frames, static_cast<std::size_t>(bytes) / sizeof(char32_t));
    }
    for (; at_ + kEnough <= stream_.size(); ++at_) {
      const auto begins = std::find_if(stored_.begin(), stored_.end(), [this](const Frames& sound) {
        return stream_.compare(at_, kEnough, sound, 0, kEnough) == 0;
      });
      if (begins != stored_.end()) {
        cut_off_ = played_ < stored_[playing_].size();
        playing_ = static_cast<std::size_t>(begins - stored_.begin());
        heard_.push_back(101 + static_cast<int>(playing_));
        played_ = 1;
      } else if (played_ < stored_[playing_].size() && stream_[at_] == stored_[playing_][played_]) {
        ++played_;
      } else if (stream_[at_] != 0) {
        heard_.push_back(0);
        at_ += kEnough;
      }
    }
  }

  /// The sounds that have begun since the last call, once there are so many; 0 for what is none, or two at once.
  std::vector<int> Heard(std::size_t count = 1) {
    QElapsedTimer clock;
    for (clock.start(); heard_.size() < count && clock.elapsed() < kLongMs;) Listen();
    return std::exchange(heard_, {});
  }

  QTemporaryDir folder_;
  QProcess pulse_;
  int card_ = -1;
  std::vector<Frames> stored_;
  Frames stream_;
  std::size_t at_ = 0;                 ///< so much of the stream has been heard
  std::vector<int> heard_;             ///< the sounds in it, 101 on
  std::size_t playing_ = 0;            ///< the last of them, from 0 on
  std::size_t played_ = Frames::npos;  ///< so much of it
  bool cut_off_ = false;               ///< whether the one before was
};

TEST_F(Sounds, EachEventCutsOffTheSoundBeforeWithItsOwn) {
  FrmChess& game = *frmChess;
  const std::pair<Menu*, int> chosen[] = {
      {&game.mnuNewChess, 103}, {&game.mnuNewCheckers, 103}, {&game.mnuClear, 103},
      {&game.mnuCheck, 104},    {&game.mnuCheckMate, 104},   {&game.mnuStaleMate, 105},
      {&game.mnuIWin, 106},     {&game.mnuWakeUp, 0},        {&game.mnuShowLast, 0}};
  const std::pair<std::string, int> received[] = {
      {"1new", 103},   {"1newc", 103},  {"1clear", 103},     {"1__" + kStart, 103}, {"11228", 101},
      {"0hello", 108}, {"0check", 104}, {"0cmate", 105},     {"0smate", 105},       {"0yours", 107},
      {"0iwin", 106},  {"35", 0},       {"407616777215", 0}, {"2Bob", 0},           {"me", 0},
      {"you", 0},      {"1nonsense", 0}};
  std::vector<std::tuple<std::string, std::function<void()>, int>> events{{"drop", [] { Drag(52, 36); }, 101},
                                                                          {"key", [] { Key(Qt::Key_A); }, 109},
                                                                          {"line", [] { Key(Qt::Key_Return); }, 108}};
  for (const auto& [item, sound] : chosen) events.emplace_back(item->Caption(), item->Click, sound);
  for (const auto& [message, sound] : received)
    events.emplace_back(
        message, [text = message] { Tell(text); }, sound);
  std::stable_partition(events.begin(), events.end(), [](const auto& event) { return std::get<int>(event) != 0; });
  int before = 0;
  for (const auto& [name, act, sound] : events) {
    act();
    if (sound == 0) continue;
    EXPECT_EQ(Heard(), std::vector{sound}) << name;
    EXPECT_TRUE(cut_off_ || before < 102 || before > 107) << name;
    before = sound;
  }
  game.mnuPlaySounds.Click();
  for (const auto& [name, act, sound] : events) act();
  const std::size_t played = played_;
  Listen(500);
  EXPECT_EQ(Heard(0), std::vector<int>{});
  EXPECT_GT(played_, played) << "what had begun plays on";
}

// How many are lost where the computer itself comes too late is left open.
TEST_F(Sounds, NoneIsLostBecauseTheNextFollowsSoon) {
  for (int n = 0; n < 20; ++n) Key(Qt::Key_A), Listen(100);
  Listen(300);
  EXPECT_GE(Heard(0).size(), 15);
  int moves = 0;
  for (int n = 0; n < 12; ++n) {
    Tell(n % 2 == 0 ? "15236" : "13652");
    Listen(60);
    Key(Qt::Key_A);
    EXPECT_TRUE(Await([this] { return Listen(), !heard_.empty() && heard_.back() == 109; }, kLongMs));
    moves += static_cast<int>(Heard() == std::vector{101, 109} && cut_off_);
  }
  EXPECT_GE(moves, 9);
}

TEST_F(Sounds, NobodyWaitsForAServer) {
  const auto type = [] {
    for (int n = 0; n < 50; ++n) Key(Qt::Key_A), QTest::qWait(2);
  };
  Key(Qt::Key_A);
  EXPECT_EQ(Heard(), std::vector{109});
  testing::internal::CaptureStderr();
  ::kill(static_cast<pid_t>(pulse_.processId()), SIGSTOP);
  type();
  ::kill(static_cast<pid_t>(pulse_.processId()), SIGCONT);
  Listen(1000);
  EXPECT_LT(Heard().size(), 4) << "nothing piles up";
  EndServer();
  type();
  StartServer();
  EXPECT_TRUE(Await([this] { return Key(Qt::Key_A), Listen(200), !heard_.empty(); }, kLongMs));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace morva
