// Listens, through a sound server of its own, to what the program plays.

#include <QProcess>
#include <QTemporaryDir>
#include <cstdlib>

#include "platform/system/resources.h"
#include "tests/game.h"

namespace morva {
namespace {

/// A stream of sound as the server hands it out, 22,050 frames a second: each the left and the right sample of 16 bits.
using Frames = std::u32string;

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
      frames.append(22050 / sound.rate, sample | sample << 16U);
    }
  }
  EXPECT_TRUE(peak > 0.05 * 32768 && peak <= 0.708 * 32768) << which << ": " << peak;  // loud enough, never clipped
  return frames.substr(frames.find_first_not_of(U'\0'));
}

class Sounds : public GameTest {
 protected:
  void SetUp() override {
    const std::string socket = folder_.filePath("pulse").toStdString();
    qputenv("PULSE_SERVER", ("unix:" + socket).c_str());
    for (int which = 0; which < 9; ++which) stored_.push_back(Stored(which));
    pulse_.start("pulseaudio", {"-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "-L",
                                ("module-native-protocol-unix auth-anonymous=1 socket=" + socket).c_str(), "-L",
                                "module-null-sink sink_name=ear rate=22050 channels=2 format=s16le"});
    ASSERT_TRUE(Await([&] { return QFile::exists(socket.c_str()); }, kLongMs)) << "pulseaudio does not start";
    ear_.start("parec", {"-d", "ear.monitor", "--format=s16le", "--rate=22050", "--channels=2", "--latency-msec=20"});
    ASSERT_TRUE(Await([&] { return ear_.bytesAvailable() > 0; }, kLongMs)) << "parec hears nothing";
    Sit();
    frmChess->mnuPlaySounds.Click();
    frmChess->mnuAcceptMessages.Checked = false;
  }

  void TearDown() override {
    GameTest::TearDown();
    for (QProcess* process : {&ear_, &pulse_}) {
      process->terminate();
      EXPECT_TRUE(process->waitForFinished());
    }
  }

  /// The sounds heard since the last call; what is none of them, or two at once, is no sound.
  std::vector<int> Heard() {
    const QByteArray bytes = ear_.read(ear_.bytesAvailable() / 4 * 4);
    stream_.append(reinterpret_cast<const char32_t*>(bytes.data()), static_cast<std::size_t>(bytes.size()) / 4);
    std::vector<int> heard;
    while (at_ + kEnough <= stream_.size()) {
      if (played_ < stored_[playing_].size() && stream_[at_] == stored_[playing_][played_]) {
        ++at_;
        ++played_;
      } else if (stream_[at_] == 0) {
        ++at_;
      } else if (const auto [sound, place] = Recognised(); place != Frames::npos) {
        if (sound != playing_ || place == 0 || played_ == Frames::npos) {
          cut_off_ = played_ < stored_[playing_].size();
          heard.push_back(101 + static_cast<int>(sound));
        }
        playing_ = sound;
        played_ = place;
      } else {
        at_ += kEnough;
      }
    }
    return heard;
  }

  /// Which sound the stream goes on with, and where in it: at its start, or further on where a busy machine lost some.
  std::pair<std::size_t, std::size_t> Recognised() const {
    const Frames next = stream_.substr(at_, kEnough);
    std::pair<std::size_t, std::size_t> best{0, Frames::npos};
    for (std::size_t sound = 0; sound < stored_.size(); ++sound) {
      const std::size_t place = stored_[sound].find(next);
      if (place == 0 || best.second == Frames::npos) best = {sound, place};
    }
    return best;
  }

  QTemporaryDir folder_;
  QProcess pulse_, ear_;
  std::vector<Frames> stored_;
  Frames stream_;
  std::size_t at_ = 0;                 ///< so much of the stream has been heard
  std::size_t playing_ = 0;            ///< the last sound, from 0 on
  std::size_t played_ = Frames::npos;  ///< so much of it
  bool cut_off_ = false;               ///< whether the sound before was
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
    std::vector<int> heard;
    EXPECT_TRUE(Await([&] { return !(heard = Heard()).empty(); }, kLongMs)) << name;
    EXPECT_EQ(heard, std::vector{sound}) << name;
    EXPECT_TRUE(cut_off_ || before != 106) << name;
    before = sound;
  }
  game.mnuPlaySounds.Click();
  for (const auto& [name, act, sound] : events) act();
  const std::size_t played = played_;
  QTest::qWait(500);
  EXPECT_EQ(Heard(), std::vector<int>{});
  EXPECT_GT(played_, played) << "what had begun plays on";
}

}  // namespace
}  // namespace morva
