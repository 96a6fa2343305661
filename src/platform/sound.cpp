#include "platform/sound.h"

#include <QAudioDevice>
#include <QAudioSink>
#include <QBuffer>
#include <QMediaDevices>
#include <QtEndian>
#include <memory>

namespace morva {

namespace {

constexpr std::size_t kWaveHeader = 44;

struct Playing {
  QByteArray samples;
  QBuffer source;
  std::unique_ptr<QAudioSink> sink;
};

// The header of the stored sounds is always the plain one: format at 20, data from 44 on.
QAudioFormat FormatOf(std::span<const unsigned char> wave) {
  QAudioFormat format;
  format.setChannelCount(qFromLittleEndian<quint16>(&wave[22]));
  format.setSampleRate(static_cast<int>(qFromLittleEndian<quint32>(&wave[24])));
  format.setSampleFormat(wave[34] == 8 ? QAudioFormat::UInt8 : QAudioFormat::Int16);
  return format;
}

void Ignore(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& /*message*/) {}

}  // namespace

void PlaySoundImage(std::span<const unsigned char> wave) {
  if (wave.size() <= kWaveHeader) return;
  // A machine without an audio device is silent; the multimedia library would complain of it at every sound.
  const QtMessageHandler complaints = qInstallMessageHandler(Ignore);
  static std::unique_ptr<Playing> playing;
  playing.reset();
  const QAudioDevice device = QMediaDevices::defaultAudioOutput();
  if (!device.isNull()) {
    playing = std::make_unique<Playing>();
    playing->samples = QByteArray::fromRawData(reinterpret_cast<const char*>(wave.data() + kWaveHeader),
                                               static_cast<qsizetype>(wave.size() - kWaveHeader));
    playing->source.setBuffer(&playing->samples);
    playing->source.open(QIODevice::ReadOnly);
    playing->sink = std::make_unique<QAudioSink>(device, FormatOf(wave));
    playing->sink->start(&playing->source);
  }
  qInstallMessageHandler(complaints);
}

}  // namespace morva
