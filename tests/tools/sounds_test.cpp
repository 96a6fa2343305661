// Listens to the wave files that make_sounds wrote into MORVA_SOUNDS_DIR.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <functional>
#include <iterator>
#include <numbers>
#include <numeric>
#include <stdexcept>
#include <string>
#include <vector>

namespace morva {
namespace {

struct Expected {
  int id, rate, bits, channels, dataBytes;
};
constexpr Expected kExpected[] = {
    {101, 11025, 8, 1, 4282},   {102, 22050, 16, 1, 90090},  {103, 22050, 16, 1, 130002},
    {104, 22050, 16, 1, 68456}, {105, 22050, 16, 2, 274412}, {106, 22050, 16, 2, 656868},
    {107, 22050, 16, 1, 47034}, {108, 11025, 8, 1, 714},     {109, 22050, 16, 1, 270},
};

std::string bytesOf(int id) {
  std::ifstream file(MORVA_SOUNDS_DIR "/" + std::to_string(id) + ".wav", std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string number(int value, int bytes) {
  std::string out;
  for (int i = 0; i < bytes; ++i) out += static_cast<char>(value >> (8 * i));
  return out;
}

using Samples = std::vector<double>;

// One channel, with full scale at 1.
struct Wave {
  double rate;
  Samples samples;
  Samples between(double from, double to) const {
    return {samples.begin() + std::lround(from * rate), samples.begin() + std::lround(to * rate)};
  }
};

Wave listen(int id, int channel = 0) {
  const Expected& e = *std::ranges::find(kExpected, id, &Expected::id);
  const std::string bytes = bytesOf(id);
  const std::size_t width = e.bits / 8;
  if (bytes.size() != 44u + e.dataBytes) throw std::runtime_error("no whole sound " + std::to_string(id));
  Wave wave{static_cast<double>(e.rate), {}};
  for (std::size_t at = 44 + channel * width; at + width <= bytes.size(); at += width * e.channels) {
    const int low = static_cast<unsigned char>(bytes[at]);
    wave.samples.push_back(width == 1 ? (low - 128) / 128.0
                                      : (low + 256 * static_cast<signed char>(bytes[at + 1])) / 32768.0);
  }
  return wave;
}

double peak(const Samples& samples) {
  return std::abs(*std::ranges::max_element(samples, {}, [](double s) { return std::abs(s); }));
}

double rms(const Samples& samples) {
  return std::sqrt(std::inner_product(samples.begin(), samples.end(), samples.begin(), 0.0) / std::size(samples));
}

double decibels(double ratio) { return 20 * std::log10(ratio); }

// The strongest pitch from `low` up to `high`, to an eighth of a semitone.
double strongestPitch(const Wave& wave, double from, double to, double low, double high) {
  const Samples part = wave.between(from, to);
  double best = 0, most = -1;
  for (double hz = low; hz < high; hz *= std::exp2(1 / 96.0)) {
    double re = 0, im = 0;
    for (std::size_t i = 0; i < part.size(); ++i) {
      const double turn = 2 * std::numbers::pi * static_cast<double>(i);
      const double value = part[i] * (1 - std::cos(turn / static_cast<double>(part.size())));
      re += value * std::cos(turn * hz / wave.rate);
      im += value * std::sin(turn * hz / wave.rate);
    }
    if (const double strength = std::hypot(re, im); strength > most) {
      most = strength;
      best = hz;
    }
  }
  return best;
}

// The moments, in seconds, at which a loud sound at least doubles within ten milliseconds.
Samples strikes(const Wave& wave) {
  constexpr double kBlock = 0.01, kShortest = 0.09;
  Samples found;
  double before = 0;
  for (double at = 0; (at + kBlock) * wave.rate < static_cast<double>(wave.samples.size()); at += kBlock) {
    const double now = peak(wave.between(at, at + kBlock));
    const bool fresh = found.empty() || at - found.back() > kShortest;
    if (fresh && now > 2 * before && now > 0.15 * peak(wave.samples)) found.push_back(at);
    before = now;
  }
  return found;
}

TEST(Sounds, EveryFileHasItsFormatAndLengthToTheByte) {
  for (const Expected& e : kExpected) {
    const std::string bytes = bytesOf(e.id);
    const int frame = e.channels * e.bits / 8;
    EXPECT_EQ(bytes.size(), 44u + e.dataBytes) << e.id;
    EXPECT_EQ(bytes.substr(0, 44), "RIFF" + number(36 + e.dataBytes, 4) + "WAVEfmt " + number(16, 4) + number(1, 2) +
                                       number(e.channels, 2) + number(e.rate, 4) + number(e.rate * frame, 4) +
                                       number(frame, 2) + number(e.bits, 2) + "data" + number(e.dataBytes, 4))
        << e.id;
  }
}

TEST(Sounds, NoneClipsOrClicksOrLeansAndAllAreHeard) {
  for (const Expected& e : kExpected) {
    for (int channel = 0; channel < e.channels; ++channel) {
      SCOPED_TRACE(std::to_string(e.id) + " channel " + std::to_string(channel));
      const Samples samples = listen(e.id, channel).samples;
      ASSERT_FALSE(samples.empty());
      const double step = e.bits == 8 ? 1 / 128.0 : 1 / 32768.0;
      EXPECT_LE(decibels(peak(samples)), -3);
      EXPECT_LE(std::abs(samples.front()), step);
      EXPECT_LE(std::abs(samples.back()), step);
      EXPECT_NEAR(std::accumulate(samples.begin(), samples.end(), 0.0) / std::size(samples), 0, 0.001);
      EXPECT_GT(decibels(rms(samples)), -38);
      EXPECT_LT(decibels(rms(samples)), -14);
    }
  }
}

TEST(Sounds, StereoIsWideAndBalanced) {
  for (const int id : {105, 106}) {
    const Samples left = listen(id, 0).samples, right = listen(id, 1).samples;
    ASSERT_EQ(left.size(), right.size());
    Samples apart(left.size());
    std::ranges::transform(left, right, apart.begin(), std::minus<>());
    EXPECT_GT(rms(apart), 0.1 * rms(left)) << id;
    EXPECT_NEAR(decibels(rms(left) / rms(right)), 0, 3) << id;
  }
}

TEST(Sounds, KnocksDieAwayAndSoftenWithTheirTask) {
  const Wave move = listen(101), chat = listen(108), key = listen(109);
  EXPECT_GT(rms(move.between(0, 0.1)), 10 * rms(move.between(0.2, 0.38)));
  EXPECT_GT(rms(chat.between(0, 0.02)), 5 * rms(chat.between(0.04, 0.06)));
  EXPECT_GT(peak(move.samples), 2 * peak(chat.samples));
  EXPECT_GT(peak(chat.samples), 3 * peak(key.samples));

  const Wave row = listen(103);
  Samples pitches;
  for (const double at : strikes(row)) pitches.push_back(strongestPitch(row, at, at + 0.08, 300, 560));
  ASSERT_GE(pitches.size(), 10u);
  EXPECT_GT(std::ranges::max(pitches), 1.3 * std::ranges::min(pitches));
}

TEST(Sounds, FiguresRiseFallAndCallAsTheyShould) {
  const Wave check = listen(104);
  EXPECT_NEAR(strongestPitch(check, 0.02, 0.18, 440, 2000), 880, 10);
  EXPECT_NEAR(strongestPitch(check, 0.25, 0.6, 440, 2000), 1175, 10);

  for (const int channel : {0, 1}) {
    const Wave end = listen(105, channel);
    double before = 480;
    for (const double at : {0.05, 0.42, 0.78, 1.15}) {
      const double hz = strongestPitch(end, at, at + 0.26, 250, 480);
      EXPECT_LT(hz, 0.96 * before) << "at " << at;
      before = hz;
    }
  }

  const Wave alarm = listen(107);
  EXPECT_GT(rms(alarm.between(0.05, 0.3)), 2 * rms(alarm.between(0.36, 0.43)));
  EXPECT_GT(rms(alarm.between(0.5, 0.75)), 2 * rms(alarm.between(0.36, 0.43)));
}

TEST(Sounds, TheFanfareNeverPausesAndComesHome) {
  const Wave wave = listen(106);
  for (double at = 0; at < 6; at += 0.25) EXPECT_GT(rms(wave.between(at, at + 0.25)), 0.04) << "at " << at;
  EXPECT_LT(rms(wave.between(7.3, 7.44)), 0.05 * rms(wave.between(4.5, 5)));
  EXPECT_NEAR(strongestPitch(wave, 5, 5.4, 900, 1200), 1046.5, 8);
  EXPECT_NEAR(strongestPitch(wave, 5, 5.4, 100, 170), 130.8, 2);
}

}  // namespace
}  // namespace morva
