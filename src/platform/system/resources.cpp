#include "platform/system/resources.h"

#include <QResource>

#include "platform/system/qt_text.h"

namespace morva {

std::span<const unsigned char> LoadResData(int id, const std::string& type) {
  const QResource resource(QtText(":/" + type + "/" + std::to_string(id)));
  if (!resource.isValid()) return {};
  return {resource.data(), static_cast<std::size_t>(resource.size())};
}

}  // namespace morva
