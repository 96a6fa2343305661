// The sound player: a library of its own, loaded with the first sound.

#include <pulse/pulseaudio.h>

#include <QDeadlineTimer>
#include <QDir>
#include <QTimer>
#include <QtEndian>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace morva {

namespace {

using Wave = std::span<const unsigned char>;

struct Frame {
  qint16 left = 0, right = 0;
};

constexpr pa_sample_spec kFormat{PA_SAMPLE_S16NE, 22050, 2};
constexpr std::uint32_t kLatency = kFormat.rate * sizeof(Frame) / 50;  // bytes, of 20 ms
constexpr int kRestAfterMs = 10'000;                                   // longer than the longest sound
constexpr int kBetweenTriesMs = 1000;

// The header of the stored sounds is always the plain one: format from 20 on, samples from 44 on.
std::vector<Frame> FramesOf(Wave wave) {
  constexpr std::size_t kHeader = 44;
  if (wave.size() <= kHeader) return {};
  const int channels = qFromLittleEndian<quint16>(&wave[22]);
  const auto rate = qFromLittleEndian<quint32>(&wave[24]);
  const std::size_t bytes = wave[34] / 8U;
  const auto sample = [&](std::size_t at) {
    return bytes == 1 ? static_cast<qint16>((wave[at] - 128) * 256) : qFromLittleEndian<qint16>(&wave[at]);
  };
  std::vector<Frame> frames;
  const std::size_t step = bytes * static_cast<std::size_t>(channels);
  for (std::size_t at = kHeader; at + step <= wave.size(); at += step) {
    frames.insert(frames.end(), kFormat.rate / rate, {sample(at), sample(at + step - bytes)});
  }
  return frames;
}

template <auto End>
struct Ends {
  void operator()(auto* held) const { End(held); }
};

template <typename T, auto End>
using Held = std::unique_ptr<T, Ends<End>>;

// One stream to the sound server, opened at the first sound and kept: opening one takes longer than a short sound
// lasts. The library's own thread carries out each step and then begins the next, so that nobody waits for the server.
class Speaker {
 public:
  Speaker() : loop_(pa_threaded_mainloop_new()) {
    if (loop_) pa_threaded_mainloop_start(loop_.get());
    rest_.setSingleShot(true);
    rest_.callOnTimeout([this] {
      const Lock lock = Locked();
      Cork(true);
    });
  }

  ~Speaker() {
    if (loop_) pa_threaded_mainloop_stop(loop_.get());
    if (context_) pa_context_disconnect(context_.get());
  }

  void Play(Wave wave) {
    if (!loop_) return;
    rest_.start(kRestAfterMs);
    const Lock lock = Locked();
    next_ = wave;
    Proceed();
  }

 private:
  using Lock = Held<pa_threaded_mainloop, pa_threaded_mainloop_unlock>;
  using Operation = Held<pa_operation, pa_operation_unref>;

  Lock Locked() {
    pa_threaded_mainloop_lock(loop_.get());
    return Lock(loop_.get());
  }

  // Begins what is to be done next for the sound that waits, if any. Whatever is under way calls it once it is done.
  void Proceed() {
    if (next_.empty()) return;
    const auto server = context_ ? pa_context_get_state(context_.get()) : PA_CONTEXT_UNCONNECTED;
    if (!PA_CONTEXT_IS_GOOD(server)) return Connect();
    if (server != PA_CONTEXT_READY) return;
    if (!stream_) return OpenStream();
    const auto state = pa_stream_get_state(stream_.get());
    if (!PA_STREAM_IS_GOOD(state)) return pa_context_disconnect(context_.get());
    // Of sounds that come faster than the server answers the last one is played: nothing piles up.
    const bool flushing = flush_ && pa_operation_get_state(flush_.get()) == PA_OPERATION_RUNNING;
    if (state != PA_STREAM_READY || flushing) return;
    const auto flushed = [](pa_stream*, int, void* self) { static_cast<Speaker*>(self)->Write(); };
    flush_.reset(pa_stream_flush(stream_.get(), flushed, this));
  }

  template <typename T>
  static void Changed(T* /*state*/, void* self) {
    static_cast<Speaker*>(self)->Proceed();
  }

  void Connect() {
    // Where a session has no folder for servers, the library would make one in the home folder.
    const bool folder = qEnvironmentVariableIsSet("XDG_RUNTIME_DIR") || QDir::home().exists(".config/pulse");
    if (!next_try_.hasExpired() || !(folder || qEnvironmentVariableIsSet("PULSE_SERVER"))) return;
    next_try_.setRemainingTime(kBetweenTriesMs);
    stream_.reset();
    context_.reset(pa_context_new(pa_threaded_mainloop_get_api(loop_.get()), "Morva"));
    if (!context_) return;
    pa_context_set_state_callback(context_.get(), Changed, this);
    pa_context_connect(context_.get(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
  }

  void OpenStream() {
    stream_.reset(pa_stream_new(context_.get(), "Morva", &kFormat, nullptr));
    if (!stream_) return;
    pa_stream_set_state_callback(stream_.get(), Changed, this);
    // The server begins with the first frame that it gets, however short the sound is.
    const pa_buffer_attr buffer{UINT32_MAX, kLatency, sizeof(Frame), UINT32_MAX, UINT32_MAX};
    pa_stream_connect_playback(stream_.get(), nullptr, &buffer, PA_STREAM_ADJUST_LATENCY, nullptr, nullptr);
  }

  void Write() {
    auto frames = FramesOf(std::exchange(next_, {}));
    frames.resize(frames.size() + kFormat.rate / 5);  // some servers keep back the end that does not fill a block
    pa_stream_write(stream_.get(), frames.data(), frames.size() * sizeof(Frame), nullptr, 0, PA_SEEK_RELATIVE);
    Cork(false);
  }

  // A stream that plays nothing would keep the device awake.
  void Cork(bool cork) {
    if (stream_) Operation(pa_stream_cork(stream_.get(), static_cast<int>(cork), nullptr, nullptr));
  }

  Held<pa_threaded_mainloop, pa_threaded_mainloop_free> loop_;
  Held<pa_context, pa_context_unref> context_;
  Held<pa_stream, pa_stream_unref> stream_;
  Operation flush_;
  Wave next_;  // what is to be played, until the server gets it
  QDeadlineTimer next_try_{0};
  QTimer rest_;
};

}  // namespace

extern "C" void PlayThroughSpeaker(std::span<const unsigned char> wave) {
  static Speaker speaker;
  speaker.Play(wave);
}

}  // namespace morva
