#include "platform/system/plain_files.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "platform/system/qt_text.h"

namespace morva {

bool FileExists(const std::string& name) { return QFileInfo(QtText(name)).isFile(); }

std::optional<std::string> ReadFile(const std::string& name, std::size_t most) {
  // Anything but a plain file may never come to an end, or never answer.
  if (!FileExists(name)) return std::nullopt;
  QFile file(QtText(name));
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  return file.read(static_cast<qint64>(most)).toStdString();
}

bool WriteFile(const std::string& name, std::string_view bytes) {
  // A device or a pipe would be replaced by a file.
  if (QFileInfo::exists(QtText(name)) && !FileExists(name)) return false;
  QSaveFile file(QtText(name));
  if (!file.open(QIODevice::WriteOnly)) return false;
  // A full disk can take a part, which commit alone would make the file.
  const auto size = static_cast<qint64>(bytes.size());
  return file.write(bytes.data(), size) == size && file.flush() && file.commit();
}

}  // namespace morva
