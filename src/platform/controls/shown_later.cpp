#include "platform/controls/shown_later.h"

#include <QCoreApplication>
#include <QEvent>

namespace morva {

class ShownLater::Impl : public QObject {
 public:
  bool event(QEvent* event) override {
    if (event->type() != QEvent::UpdateRequest) return QObject::event(event);
    show();
    requested = false;
    return true;
  }
  std::function<void()> show;
  bool requested = false;
};

ShownLater::ShownLater(std::function<void()> show) : impl_(std::make_unique<Impl>()) { impl_->show = std::move(show); }

ShownLater::~ShownLater() = default;

void ShownLater::Request() {
  if (impl_->requested) return;
  impl_->requested = true;
  // With the priority of painting, so that a square that was drawn on before is painted before.
  QCoreApplication::postEvent(impl_.get(), new QEvent(QEvent::UpdateRequest), Qt::LowEventPriority);
}

bool ShownLater::Requested() const { return impl_->requested; }

}  // namespace morva
