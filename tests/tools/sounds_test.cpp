// Listens to the wave files that make_sounds wrote into MORVA_SOUNDS_DIR.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <numbers>
#include <numeric>
#include <string>
#include <vector>

namespace morva {
namespace {

struct Sound {
  int id, rate, bits, channels, bytes;
};
constexpr Sound kSounds[] = {
    {101, 11025, 8, 1, 4282},   {102, 22050, 16, 1, 90090},  {103, 22050, 16, 1, 130002},
    {104, 22050, 16, 1, 68456}, {105, 22050, 16, 2, 274412}, {106, 22050, 16, 2, 656868},
    {107, 22050, 16, 1, 47034}, {108, 11025, 8, 1, 714},     {109, 22050, 16, 1, 270},
};

std::string fileOf(int id) {
  std::ifstream file(MORVA_SOUNDS_DIR "/" + std::to_string(id) + ".wav", std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string number(int value, int bytes) {
  std::string out;
  for (int i = 0; i < bytes; ++i) out += static_cast<char>(value >> (8 * i));
  return out;
}

// One channel of a sound, with full scale at 1. Times are in seconds.
class Wave {
 public:
  explicit Wave(int id, int channel = 0) {
    const Sound& sound = *std::ranges::find(kSounds, id, &Sound::id);
    const std::string bytes = fileOf(id);
    const int width = sound.bits / 8;
    rate_ = sound.rate;
    for (std::size_t at = 44 + channel * width; at + width <= bytes.size(); at += width * sound.channels) {
      const int low = static_cast<unsigned char>(bytes[at]);
      samples.push_back(width == 1 ? (low - 128) / 128.0
                                   : (low + 256 * static_cast<signed char>(bytes[at + 1])) / 32768.0);
    }
  }

  double peak() const {
    return std::abs(*std::ranges::max_element(samples, {}, [](double s) { return std::abs(s); }));
  }

  double loudness(double from = 0, double to = 100) const {
    const Samples part = between(from, to);
    return std::sqrt(std::inner_product(part.begin(), part.end(), part.begin(), 0.0) / std::size(part));
  }

  // The strongest pitch from low up to high, to an eighth of a semitone.
  double pitch(double from, double to, double low, double high) const {
    const Samples part = between(from, to);
    double best = 0, most = -1;
    for (double hz = low; hz < high; hz *= std::exp2(1 / 96.0)) {
      double re = 0, im = 0;
      for (std::size_t i = 0; i < part.size(); ++i) {
        const double turn = 2 * std::numbers::pi * static_cast<double>(i);
        const double value = part[i] * (1 - std::cos(turn / static_cast<double>(part.size())));
        re += value * std::cos(turn * hz / rate_);
        im += value * std::sin(turn * hz / rate_);
      }
      if (const double strength = std::hypot(re, im); strength > most) {
        most = strength;
        best = hz;
      }
    }
    return best;
  }

  using Samples = std::vector<double>;
  Samples samples;

 private:
  Samples between(double from, double to) const {
    const auto index = [this](double time) { return std::min(std::lround(time * rate_), std::ssize(samples)); };
    return {samples.begin() + index(from), samples.begin() + index(to)};
  }
  double rate_;
};

TEST(Sounds, EveryFileHasItsFormatAndLengthToTheByte) {
  for (const Sound& s : kSounds) {
    const std::string bytes = fileOf(s.id);
    const int frame = s.channels * s.bits / 8;
    EXPECT_EQ(bytes.size(), 44u + s.bytes) << s.id;
    EXPECT_EQ(bytes.substr(0, 44), "RIFF" + number(36 + s.bytes, 4) + "WAVEfmt " + number(16, 4) + number(1, 2) +
                                       number(s.channels, 2) + number(s.rate, 4) + number(s.rate * frame, 4) +
                                       number(frame, 2) + number(s.bits, 2) + "data" + number(s.bytes, 4))
        << s.id;
  }
}

TEST(Sounds, NoneClipsOrClicksOrLeansAndAllAreHeard) {
  for (const Sound& s : kSounds) {
    for (int channel = 0; channel < s.channels; ++channel) {
      SCOPED_TRACE(std::to_string(s.id) + " channel " + std::to_string(channel));
      const Wave wave(s.id, channel);
      ASSERT_FALSE(wave.samples.empty());
      const double step = s.bits == 8 ? 1 / 128.0 : 1 / 32768.0;
      EXPECT_LE(wave.peak(), 0.708);  // -3 dB
      EXPECT_LE(std::abs(wave.samples.front()), step);
      EXPECT_LE(std::abs(wave.samples.back()), step);
      EXPECT_NEAR(std::accumulate(wave.samples.begin(), wave.samples.end(), 0.0) / std::size(wave.samples), 0, 0.001);
      EXPECT_GT(wave.loudness(), 0.0126);  // -38 dB
      EXPECT_LT(wave.loudness(), 0.2);     // -14 dB
    }
  }
}

TEST(Sounds, StereoIsWideAndBalanced) {
  for (const int id : {105, 106}) {
    const Wave left(id, 0), right(id, 1);
    ASSERT_EQ(left.samples.size(), right.samples.size());
    Wave apart = left;
    for (std::size_t i = 0; i < apart.samples.size(); ++i) apart.samples[i] -= right.samples[i];
    EXPECT_GT(apart.loudness(), 0.1 * left.loudness()) << id;
    EXPECT_NEAR(left.loudness() / right.loudness(), 1, 0.4) << id;
  }
}

TEST(Sounds, EachSoundsLikeItsTask) {
  const Wave move(101), row(103), check(104), alarm(107), chat(108), key(109);
  EXPECT_GT(move.loudness(0, 0.1), 10 * move.loudness(0.2, 0.38));
  EXPECT_GT(chat.loudness(0, 0.02), 5 * chat.loudness(0.04, 0.06));
  EXPECT_GT(move.peak(), 2 * chat.peak());
  EXPECT_GT(chat.peak(), 3 * key.peak());
  for (double at = 0; at < 2.4; at += 0.3) EXPECT_GT(row.loudness(at, at + 0.3), 0.03) << "knocks at " << at;

  EXPECT_NEAR(check.pitch(0.02, 0.18, 440, 2000), 880, 10);
  EXPECT_NEAR(check.pitch(0.25, 0.6, 440, 2000), 1175, 10);
  for (const double call : {0.05, 0.5}) {
    EXPECT_GT(alarm.loudness(call, call + 0.25), 2 * alarm.loudness(0.36, 0.43)) << call;
  }
  for (const int channel : {0, 1}) {
    const Wave end(105, channel);
    double before = 480;
    for (const double at : {0.05, 0.42, 0.78, 1.15}) {
      const double hz = end.pitch(at, at + 0.26, 250, 480);
      EXPECT_LT(hz, 0.96 * before) << "at " << at;
      before = hz;
    }
  }
  const Wave fanfare(106);
  for (double at = 0; at < 6; at += 0.25) EXPECT_GT(fanfare.loudness(at, at + 0.25), 0.04) << "at " << at;
  EXPECT_LT(fanfare.loudness(7.3, 7.44), 0.05 * fanfare.loudness(4.5, 5));
  EXPECT_NEAR(fanfare.pitch(5, 5.4, 900, 1200), 1046.5, 8);
  EXPECT_NEAR(fanfare.pitch(5, 5.4, 100, 170), 130.8, 2);
}

}  // namespace
}  // namespace morva
