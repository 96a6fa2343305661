#include "platform/files.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "platform/qt_values.h"

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
  QSaveFile file(QtText(name));
  if (!file.open(QIODevice::WriteOnly)) return false;
  file.write(bytes.data(), static_cast<qint64>(bytes.size()));
  return file.commit();
}

}  // namespace morva
