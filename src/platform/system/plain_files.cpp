#include "platform/system/plain_files.h"

#include <fcntl.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "platform/system/qt_text.h"

namespace morva {

bool FileExists(const std::string& name) { return QFileInfo(QtText(name)).isFile(); }

std::optional<std::string> ReadFile(const std::string& name, std::size_t most) {
  // Reading anything but a plain file may never end.
  if (!FileExists(name)) return std::nullopt;
  QFile file(QtText(name));
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  return file.read(static_cast<qint64>(most)).toStdString();
}

namespace {

bool Overwrite(int file, std::string_view bytes) {
  return ::pwrite(file, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()) &&
         ::ftruncate(file, static_cast<off_t>(bytes.size())) == 0 && ::fsync(file) == 0;
}

// Where no second file can be made beside it, overwrites the old bytes. Room is allocated before anything is touched,
// and on failure the old bytes are written back.
bool WriteInPlace(const std::string& name, std::string_view bytes) {
  const auto before = ReadFile(name, static_cast<std::size_t>(QFileInfo(QtText(name)).size()));
  const int file = before ? ::open(name.c_str(), O_WRONLY | O_CLOEXEC) : -1;
  if (file < 0) return false;
  const bool grows = bytes.size() > before->size();
  const bool has_room = !grows || ::posix_fallocate(file, 0, static_cast<off_t>(bytes.size())) == 0;
  const bool written = has_room && Overwrite(file, bytes);
  if (!written) Overwrite(file, *before);
  return ::close(file) == 0 && written;
}

}  // namespace

bool CanWriteFile(const std::string& name) {
  if (QFileInfo::exists(QtText(name)) && !FileExists(name)) return false;
  if (QSaveFile(QtText(name)).open(QIODevice::WriteOnly)) return true;
  return QFile(QtText(name)).open(QIODevice::ReadWrite | QIODevice::ExistingOnly);
}

bool WriteFile(const std::string& name, std::string_view bytes) {
  // A device or a pipe would be replaced by a file.
  if (QFileInfo::exists(QtText(name)) && !FileExists(name)) return false;
  QSaveFile file(QtText(name));
  if (!file.open(QIODevice::WriteOnly)) return FileExists(name) && WriteInPlace(name, bytes);
  // A full disk can take some of the bytes, and commit alone would keep those.
  const auto size = static_cast<qint64>(bytes.size());
  return file.write(bytes.data(), size) == size && file.flush() && file.commit();
}

}  // namespace morva
