#include "platform/system/event_loop.h"

#include <QCoreApplication>

namespace morva {

void Post(std::function<void()> routine) {
  if (QCoreApplication* program = QCoreApplication::instance()) {
    QMetaObject::invokeMethod(program, std::move(routine), Qt::QueuedConnection);
  }
}

}  // namespace morva
