#include "platform/system/sound.h"

#include <QCoreApplication>
#include <QLibrary>
#include <QTimer>

namespace morva {

namespace {

using Play = void (*)(std::span<const unsigned char> wave);

// The sound server's library and what it needs take a memory of 1.4 MB, so they are loaded when there is something to
// hear. Where one of them is missing: silence.
Play Speaker() {
  const QString program = QCoreApplication::applicationDirPath();
  for (const char* folder : {"/" MORVA_PARTS, ""}) {
    const auto found = QLibrary::resolve(program + folder + "/morva-sound", "PlayThroughSpeaker");
    if (found != nullptr) return reinterpret_cast<Play>(found);
  }
  return nullptr;
}

}  // namespace

// Opening the device takes longer than painting a move: painting goes first.
void PlaySoundImage(std::span<const unsigned char> wave) {
  constexpr int kAfterPaintingMs = 1;
  QTimer::singleShot(kAfterPaintingMs, QCoreApplication::instance(), [wave] {
    static const Play play = Speaker();
    if (play != nullptr) play(wave);
  });
}

}  // namespace morva
