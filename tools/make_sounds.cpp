// make_sounds OUTDIR: composes the nine sounds of the table and writes them as 101.wav .. 109.wav.
// Every sound is computed from the numbers below, so each run writes the same bytes.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <initializer_list>
#include <iostream>
#include <numbers>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace morva {
namespace {

constexpr double kTurn = 2 * std::numbers::pi;

class Strip;

struct Sound {
  int id, rate, bits, channels, dataBytes;
  double peakDb;  // the loudest sample, against full scale
  void (*compose)(Strip&);

  constexpr int frameBytes() const { return channels * bits / 8; }
};

// A repeatable source of white noise in [-1, 1).
struct Noise {
  std::uint32_t state;
  double next() { return ((state = state * 1664525u + 1013904223u) >> 8) / 8388608.0 - 1; }
};

// A strip of silence to compose on. Its length comes from the sound and cannot change: what would ring past the end is
// dropped. Times are in seconds; pan runs from -1 (left) to 1 (right) and means nothing in mono.
class Strip {
 public:
  explicit Strip(const Sound& sound)
      : rate(sound.rate),
        channels(sound.channels),
        frames(sound.dataBytes / sound.frameBytes()),
        noise{static_cast<std::uint32_t>(sound.id)},
        samples_(channels * frames) {}

  const double rate;
  const int channels;
  const std::size_t frames;
  Noise noise;

  std::span<double> channel(int index) { return std::span(samples_).subspan(index * frames, frames); }

  // Adds voice(t), where t counts from the voice's own start.
  template <typename Voice>
  void play(double at, double seconds, double pan, Voice voice) {
    const auto first = std::min(frames, static_cast<std::size_t>(at * rate));
    const auto last = std::min(frames, first + static_cast<std::size_t>(seconds * rate));
    const double angle = (pan + 1) * kTurn / 8;
    const double left = channels == 1 ? 1 : std::cos(angle);
    for (std::size_t i = first; i < last; ++i) {
      const double value = voice(static_cast<double>(i - first) / rate);
      samples_[i] += left * value;
      if (channels == 2) samples_[frames + i] += std::sin(angle) * value;
    }
  }

 private:
  std::vector<double> samples_;
};

// ---- Instruments ----

// One way a struck body rings: its pitch relative to the body's, its loudness, and the time it takes to fall to 1/e.
struct Mode {
  double ratio, level, decay;
};

constexpr Mode kWood[] = {{0.58, 0.5, 0.04},   {1, 1, 0.031},      {1.93, 0.55, 0.019},
                          {3.05, 0.35, 0.012}, {4.6, 0.22, 0.008}, {7.1, 0.12, 0.005}};
constexpr Mode kMarimba[] = {{1, 1, 0.42}, {2, 0.08, 0.25}, {3.98, 0.22, 0.10}, {9.9, 0.05, 0.03}};
constexpr Mode kBell[] = {{0.5, 0.12, 0.7},   {1, 1, 0.55},       {1.004, 0.35, 0.6}, {2, 0.42, 0.36},
                          {3.01, 0.26, 0.22}, {4.17, 0.15, 0.12}, {5.43, 0.09, 0.07}};
constexpr Mode kTimpani[] = {{1, 1, 0.5}, {1.5, 0.55, 0.4}, {1.98, 0.3, 0.28}, {2.44, 0.2, 0.18}, {3.4, 0.12, 0.06}};

void strike(Strip& strip, std::span<const Mode> body, double at, double hz, double gain, double pan = 0) {
  for (const Mode& mode : body) {
    const double turn = kTurn * hz * mode.ratio;
    if (turn > 0.45 * kTurn * strip.rate) continue;
    strip.play(at, 9 * mode.decay, pan,
               [=](double t) { return gain * mode.level * std::exp(-t / mode.decay) * std::sin(turn * t); });
  }
}

// The brush of two surfaces meeting: a breath of noise around one pitch, kept below rate / 6, where the filter is
// stable.
void contact(Strip& strip, double at, double hz, double decay, double gain) {
  const double tune = 2 * std::sin(kTurn / 2 * std::min(hz / strip.rate, 0.16));
  double low = 0, band = 0;
  strip.play(at, 9 * decay, 0, [=, &strip](double t) mutable {
    low += tune * band;
    band += tune * (strip.noise.next() - low - 0.9 * band);
    return gain * std::min(1.0, t / 0.0008) * std::exp(-t / decay) * band;
  });
}

// A piece set on a board: it lands, then its base settles flat in two smaller touches.
void knock(Strip& strip, double at, double hz, double gain) {
  struct Touch {
    double delay, force, pitch;
  };
  for (const Touch touch : {Touch{0, 1, 1}, Touch{0.046, 0.26, 1.14}, Touch{0.077, 0.09, 1.2}}) {
    const double force = gain * touch.force;
    const double when = at + touch.delay * (1 + 0.12 * strip.noise.next());
    contact(strip, when, 2300, 0.0035, 0.9 * force);
    for (Mode mode : kWood) {
      mode.level *= 1 + 0.25 * strip.noise.next();
      mode.ratio *= 1 + 0.02 * strip.noise.next();
      strike(strip, {&mode, 1}, when, hz * touch.pitch, force);
    }
  }
}

// A mellow horn: harmonics that open with the breath, a late vibrato and a rounded release.
void horn(Strip& strip, double at, double seconds, double hz, double gain, double pan) {
  constexpr double kAttack = 0.035, kRelease = 0.09, kWobble = 5.3, kDepth = 0.0028;
  const int harmonics = std::min(14, static_cast<int>(0.45 * strip.rate / hz));
  strip.play(at, seconds + kRelease, pan, [=](double t) {
    const double rise = std::min(1.0, t / kAttack), fall = std::clamp((seconds + kRelease - t) / kRelease, 0.0, 1.0);
    const double bloom = 0.6 + 0.4 * std::exp(-t / 0.5);
    const double breath = std::sin(rise * kTurn / 4) * fall * fall * bloom;
    const double vibrato = kDepth * std::clamp((t - 0.25) / 0.3, 0.0, 1.0) / (kTurn * kWobble);
    const double phase = kTurn * hz * (t + vibrato * std::sin(kTurn * kWobble * t));
    const double open = 0.25 + 0.47 * breath;
    const double step = 2 * std::cos(phase);
    double sum = 0, level = 1, before = 0, sine = std::sin(phase);
    for (int n = 1; n <= harmonics; ++n) {
      sum += level * sine;
      level *= open;
      before = std::exchange(sine, step * sine - before);
    }
    return gain * breath * sum;
  });
}

// Two horns a hair apart in tune and in place. One leads: equals would silence each other as they drift out of step.
void horns(Strip& strip, double at, double seconds, double hz, double gain, double pan) {
  horn(strip, at, seconds, hz, gain * 0.8, pan - 0.2);
  horn(strip, at, seconds, hz * 1.0012, gain * 0.4, pan + 0.2);
}

// A small room around all that was played: four damped echoes in parallel, then two that blur them. The two ears stand
// a little apart.
void room(Strip& strip, double wet, double seconds) {
  std::vector<double> dry(strip.frames);
  for (int c = 0; c < strip.channels; ++c) {
    std::ranges::transform(dry, strip.channel(c), dry.begin(), std::plus<>());
  }
  for (int c = 0; c < strip.channels; ++c) {
    const double apart = 1 + 0.043 * c;
    std::vector<double> hall(strip.frames);
    for (const double delay : {0.0297, 0.0371, 0.0411, 0.0437}) {
      const auto lag = static_cast<std::size_t>(delay * apart * strip.rate);
      const double feedback = std::pow(0.001, delay / seconds);
      std::vector<double> loop(strip.frames);
      double damped = 0;
      for (std::size_t i = lag; i < strip.frames; ++i) {
        damped += 0.6 * (loop[i - lag] - damped);
        loop[i] = dry[i - lag] + feedback * damped;
        hall[i] += 0.25 * loop[i] / strip.channels;
      }
    }
    for (const double delay : {0.0050, 0.0017}) {
      const auto lag = static_cast<std::size_t>(delay * apart * strip.rate);
      std::vector<double> in = hall;
      for (std::size_t i = lag; i < strip.frames; ++i) hall[i] = in[i - lag] - 0.6 * in[i] + 0.6 * hall[i - lag];
    }
    for (std::size_t i = 0; i < strip.frames; ++i) strip.channel(c)[i] += wet * hall[i];
  }
}

// "A4" is 440 Hz: a letter, then an octave.
double pitch(std::string_view name) {
  constexpr std::array kSemitones = {9, 11, 0, 2, 4, 5, 7};
  const int fromA4 = kSemitones[name[0] - 'A'] - 9 + 12 * (name[1] - '4');
  return 440 * std::exp2(fromA4 / 12.0);
}

struct Note {
  double at, seconds, hz;
};

// Plays a line of music: notes ("-" rests), each followed by its length in counts of `count` seconds.
template <typename Player>
void perform(const char* line, double count, Player player) {
  std::istringstream music(line);
  std::string name;
  double at = 0, counts = 0;
  for (; music >> name >> counts; at += counts * count) {
    if (name != "-") player(Note{at, counts * count, pitch(name)});
  }
}

// ---- The sounds ----

void move(Strip& strip) {
  knock(strip, 0, 410, 1);
  room(strip, 0.12, 0.25);
}

void closing(Strip& strip) {
  perform("G5 1 E5 1 D5 1.2 C5 0.1 G4 0.1 C4 4", 0.21,
          [&](Note note) { strike(strip, kMarimba, note.at, note.hz, 1); });
  room(strip, 0.3, 0.9);
}

void setUp(Strip& strip) {
  double at = 0;
  for (const double hz : {395, 470, 430, 360, 520, 410, 455, 380, 490, 425, 345, 440, 405}) {
    knock(strip, at, hz, 0.7 + 0.2 * strip.noise.next());
    at += 0.175 + 0.05 * strip.noise.next();
  }
  knock(strip, at + 0.14, 330, 1);
  room(strip, 0.15, 0.3);
}

void check(Strip& strip) {
  perform("A5 1 D6 4", 0.19, [&](Note note) { strike(strip, kBell, note.at, note.hz, 1); });
  room(strip, 0.25, 0.8);
}

void gameOver(Strip& strip) {
  constexpr double kCount = 0.36, kLast = 3 * kCount;
  double pan = 0.45;
  perform("A4 1 F4 1 E4 1 D4 3", kCount, [&](Note note) {
    horns(strip, note.at, 0.92 * note.seconds, note.hz, 0.6, 0.5 * pan);
    strike(strip, kBell, note.at, note.hz, 0.3, pan);
    pan -= 0.3;
  });
  horns(strip, kLast, 3 * kCount, pitch("A3"), 0.33, 0);
  horns(strip, kLast, 3 * kCount, pitch("D3"), 0.33, 0);
  strike(strip, kTimpani, kLast, pitch("D2"), 0.5, -0.1);
  room(strip, 0.3, 1.3);
}

// Five horn lines with drums beneath; bells crown the last chord, which the room lets go.
void fanfare(Strip& strip) {
  constexpr double kCount = 1 / 6.0;
  const auto line = [&](double gain, double pan, const char* notes) {
    perform(notes, kCount, [&](Note note) { horns(strip, note.at, 0.93 * note.seconds, note.hz, gain, pan); });
  };
  const auto ring = [&](std::span<const Mode> body, double gain, double pan, const char* notes) {
    perform(notes, kCount, [&](Note note) { strike(strip, body, note.at, note.hz, gain, pan); });
  };
  line(0.8, -0.15, "G4 1 G4 1 G4 1  C5 3 E5 2 C5 1  G5 5 E5 1  A5 2 G5 1 F5 2 E5 1  D5 3 G5 1 A5 1 B5 1  C6 11");
  line(0.33, 0.4, "- 3  G4 6  C5 6  C5 3 A4 3  B4 3 D5 3  G5 11");
  line(0.33, -0.4, "- 3  E4 6  E4 6  A4 3 F4 3  F4 3 G4 3  C5 11");
  line(0.33, 0.25, "- 3  C4 6  G4 6  F4 3 D4 3  D4 3 F4 3  E4 11");
  line(0.4, -0.1, "- 3  C3 6  C3 6  F3 3 D3 3  G3 6  C3 11");
  ring(kTimpani, 0.9, 0.1, "- 3  C2 6  C2 6  F2 6  G2 6  C2 11");
  ring(kTimpani, 0.35, 0.1, "- 24  G2 .5 G2 .5 G2 .5 G2 .5 G2 .5 G2 .5");
  ring(kBell, 0.22, 0.3, "- 27.2  C6 .7 G6 5");
  ring(kBell, 0.22, -0.3, "- 27.55  E6 .7 C7 5");
  room(strip, 0.35, 1.5);
}

void wakeUp(Strip& strip) {
  perform("E5 1 B5 1.2 - 1.1  E5 1 B5 1.4", 0.135, [&](Note note) {
    horn(strip, note.at, 0.8 * note.seconds, note.hz, 0.8, 0);
    strike(strip, kMarimba, note.at, note.hz, 0.35);
  });
  room(strip, 0.2, 0.4);
}

void chatLine(Strip& strip) {
  constexpr Mode kTap[] = {{1, 1, 0.011}, {1.62, 0.5, 0.007}, {2.9, 0.3, 0.004}};
  contact(strip, 0, 1600, 0.003, 0.4);
  strike(strip, kTap, 0, 640, 1);
}

void typedKey(Strip& strip) {
  constexpr Mode kKey[] = {{1, 1, 0.0012}, {1.7, 0.5, 0.0007}};
  strike(strip, kKey, 0, 1500, 1);
}

// ---- Finishing and writing ----

// Brings one channel to rest at both ends and takes the constant offset out of it.
void settle(std::span<double> channel, double rate) {
  const auto n = static_cast<double>(channel.size() - 1);
  const double fadeIn = std::min(0.001 * rate, n / 20), fadeOut = std::min(0.4 * rate, n / 4);
  double sum = 0;
  for (std::size_t i = 0; i < channel.size(); ++i) {
    const auto x = static_cast<double>(i);
    const double edge = std::min({1.0, x / fadeIn, (n - x) / fadeOut});
    sum += channel[i] *= 0.5 - 0.5 * std::cos(edge * kTurn / 2);
  }
  for (std::size_t i = 0; i < channel.size(); ++i) {
    channel[i] -= sum / n * (1 - std::cos(kTurn * static_cast<double>(i) / n));
  }
}

// Rounds to whole steps, blurred by dither. The dither follows the sound down, so that the tail falls silent and does
// not hiss.
struct Rounder {
  Noise noise{1};
  double loudness = 0;

  int next(double steps) {
    loudness = std::max(std::abs(steps), loudness * 0.995);
    const double blur = 0.5 * (noise.next() + noise.next());
    return static_cast<int>(std::lrint(steps + std::min(1.0, loudness / 6) * blur));
  }
};

struct Number {
  int value, bytes;
};

void append(std::string& out, std::initializer_list<Number> numbers) {
  for (const Number& number : numbers) {
    for (int i = 0; i < number.bytes; ++i) out += static_cast<char>(number.value >> (8 * i));
  }
}

std::string waveFile(const Sound& sound, Strip& strip) {
  const int pace = sound.rate * sound.frameBytes();
  std::string out = "RIFF";
  append(out, {{36 + sound.dataBytes, 4}});
  out += "WAVEfmt ";
  append(out, {{16, 4}, {1, 2}, {sound.channels, 2}, {sound.rate, 4}, {pace, 4}, {sound.frameBytes(), 2}});
  append(out, {{sound.bits, 2}});
  out += "data";
  append(out, {{sound.dataBytes, 4}});

  double peak = 0;
  for (int c = 0; c < strip.channels; ++c) {
    settle(strip.channel(c), strip.rate);
    for (const double sample : strip.channel(c)) peak = std::max(peak, std::abs(sample));
  }
  const int rest = sound.bits == 8 ? 128 : 0;
  const double scale = (sound.bits == 8 ? 127 : 32767) * std::pow(10, sound.peakDb / 20) / peak;
  std::vector<Rounder> rounders(sound.channels);
  for (std::size_t i = 0; i < strip.frames; ++i) {
    for (int c = 0; c < sound.channels; ++c) {
      append(out, {{rest + rounders[c].next(strip.channel(c)[i] * scale), sound.bits / 8}});
    }
  }
  return out;
}

constexpr Sound kSounds[] = {
    {101, 11025, 8, 1, 4282, -4, move},        {102, 22050, 16, 1, 90090, -5, closing},
    {103, 22050, 16, 1, 130002, -4, setUp},    {104, 22050, 16, 1, 68456, -5, check},
    {105, 22050, 16, 2, 274412, -6, gameOver}, {106, 22050, 16, 2, 656868, -4, fanfare},
    {107, 22050, 16, 1, 47034, -7, wakeUp},    {108, 11025, 8, 1, 714, -12, chatLine},
    {109, 22050, 16, 1, 270, -24, typedKey},
};

constexpr bool holdsWholeFrames(const Sound& sound) { return sound.dataBytes % sound.frameBytes() == 0; }
static_assert(std::ranges::all_of(kSounds, holdsWholeFrames));

}  // namespace
}  // namespace morva

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: make_sounds OUTDIR\n";
    return 2;
  }
  const std::filesystem::path folder = argv[1];
  std::error_code ignored;
  std::filesystem::create_directories(folder, ignored);
  for (const morva::Sound& sound : morva::kSounds) {
    morva::Strip strip(sound);
    sound.compose(strip);
    const auto path = folder / (std::to_string(sound.id) + ".wav");
    std::ofstream file(path, std::ios::binary);
    if (!(file << morva::waveFile(sound, strip)).flush()) {
      std::cerr << "make_sounds: cannot write " << path.string() << "\n";
      return 1;
    }
  }
}
