// What plays the sounds: a part of its own, loaded at the first of them.

#include <QAudioDevice>
#include <QAudioSink>
#include <QCoreApplication>
#include <QIODevice>
#include <QMediaDevices>
#include <QPointer>
#include <QtEndian>
#include <algorithm>
#include <cstring>
#include <memory>
#include <span>
#include <vector>

namespace morva {

namespace {

struct Frame {
  qint16 left = 0, right = 0;
};

constexpr int kRate = 22050;
constexpr qint64 kFrame = sizeof(Frame);
constexpr qint64 kBuffered = 100'000;          // microseconds
constexpr qint64 kRestAfter = kRate * kFrame;  // bytes of silence after which the device gets a rest

// The header of the stored sounds is always the plain one: format from 20 on, samples from 44 on.
std::vector<Frame> FramesOf(std::span<const unsigned char> wave) {
  constexpr std::size_t kHeader = 44;
  if (wave.size() <= kHeader) return {};
  const int channels = qFromLittleEndian<quint16>(&wave[22]);
  const auto rate = static_cast<int>(qFromLittleEndian<quint32>(&wave[24]));
  const std::size_t bytes = wave[34] / 8U;
  const auto sample = [&](std::size_t at) {
    return bytes == 1 ? static_cast<qint16>((wave[at] - 128) * 256) : qFromLittleEndian<qint16>(&wave[at]);
  };
  std::vector<Frame> frames;
  const std::size_t step = bytes * static_cast<std::size_t>(channels);
  for (std::size_t at = kHeader; at + step <= wave.size(); at += step) {
    const Frame frame{sample(at), sample(at + step - bytes)};
    frames.insert(frames.end(), static_cast<std::size_t>(kRate / rate), frame);
  }
  return frames;
}

// One stream for all sounds: opening one takes the sound server longer than a short sound lasts. Between sounds the
// stream is silent, and soon at rest.
class Speaker : public QIODevice {
 public:
  Speaker(const QAudioDevice& device, QObject* parent) : QIODevice(parent) {
    QAudioFormat format;
    format.setSampleRate(kRate);
    format.setChannelCount(2);
    format.setSampleFormat(QAudioFormat::Int16);
    sink_ = std::make_unique<QAudioSink>(device, format);
    sink_->setBufferSize(format.bytesForDuration(kBuffered));
    open(ReadOnly);
    sink_->start(this);
  }

  void Play(std::vector<Frame> frames) {
    frames_ = std::move(frames);
    played_ = 0;
    silence_ = 0;
    if (sink_->state() == QAudio::SuspendedState) sink_->resume();
  }

  bool Works() const { return sink_->state() != QAudio::StoppedState; }

  bool isSequential() const override { return true; }
  qint64 bytesAvailable() const override { return kRestAfter; }

 protected:
  qint64 readData(char* data, qint64 most) override {
    const qint64 wanted = most / kFrame;
    const qint64 sounding = std::min(wanted, static_cast<qint64>(frames_.size()) - played_);
    if (sounding > 0) std::memcpy(data, frames_.data() + played_, static_cast<std::size_t>(sounding * kFrame));
    std::memset(data + sounding * kFrame, 0, static_cast<std::size_t>((wanted - sounding) * kFrame));
    played_ += sounding;
    silence_ = sounding > 0 ? 0 : silence_ + wanted * kFrame;
    if (silence_ > kRestAfter)
      QMetaObject::invokeMethod(
          this, [this] { Rest(); }, Qt::QueuedConnection);
    return wanted * kFrame;
  }
  qint64 writeData(const char* /*data*/, qint64 /*size*/) override { return -1; }

 private:
  void Rest() {
    if (silence_ > kRestAfter && sink_->state() == QAudio::ActiveState) sink_->suspend();
  }

  std::unique_ptr<QAudioSink> sink_;
  std::vector<Frame> frames_;
  qint64 played_ = 0;   // frames
  qint64 silence_ = 0;  // bytes since the last sound
};

// None where there is no audio device.
Speaker* TheSpeaker() {
  static QPointer<Speaker> speaker;
  if (speaker && !speaker->Works()) delete speaker;
  if (!speaker) {
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    if (!device.isNull()) speaker = new Speaker(device, QCoreApplication::instance());
  }
  return speaker;
}

void Ignore(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& /*message*/) {}

// A machine without an audio device is silent; the multimedia library would complain of it at every sound.
class Hush {
 public:
  Hush() : complaints_(qInstallMessageHandler(Ignore)) {}
  ~Hush() { qInstallMessageHandler(complaints_); }
  Hush(const Hush&) = delete;
  Hush& operator=(const Hush&) = delete;

 private:
  QtMessageHandler complaints_;
};

}  // namespace

extern "C" void PlayThroughSpeaker(std::span<const unsigned char> wave) {
  const Hush hush;
  if (Speaker* speaker = TheSpeaker()) speaker->Play(FramesOf(wave));
}

}  // namespace morva
