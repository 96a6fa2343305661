#include "platform/system/sound.h"

#include <QCoreApplication>
#include <QLibrary>
#include <QResource>
#include <QTimer>

#include "platform/system/qt_text.h"

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

std::span<const unsigned char> LoadResData(int id, const std::string& type) {
  const QResource resource(QtText(":/" + type + "/" + std::to_string(id)));
  if (!resource.isValid()) return {};
  return {resource.data(), static_cast<std::size_t>(resource.size())};
}

// Opening the device takes longer than painting a move: painting goes first.
void PlaySoundImage(std::span<const unsigned char> wave) {
  constexpr int kAfterPaintingMs = 1;
  QTimer::singleShot(kAfterPaintingMs, QCoreApplication::instance(), [wave] {
    static const Play play = Speaker();
    if (play != nullptr) play(wave);
  });
}

}  // namespace morva
