#include "platform/system/sound.h"

#include <dlfcn.h>

#include <QCoreApplication>
#include <QTimer>

namespace morva {

namespace {

using Play = void (*)(std::span<const unsigned char> wave);

// The multimedia library and the thirty others that it needs are not loaded before there is something to hear. Where
// one of them is missing: silence.
Play Speaker() {
  static void* const part = ::dlopen("morva-sound.so", RTLD_NOW);
  return part == nullptr ? nullptr : reinterpret_cast<Play>(::dlsym(part, "PlayThroughSpeaker"));
}

}  // namespace

// Looking for the device takes longer than painting a move: what is heard follows what is seen.
void PlaySoundImage(std::span<const unsigned char> wave) {
  constexpr int kAfterPaintingMs = 1;
  QTimer::singleShot(kAfterPaintingMs, QCoreApplication::instance(), [wave] {
    if (const Play play = Speaker()) play(wave);
  });
}

}  // namespace morva
