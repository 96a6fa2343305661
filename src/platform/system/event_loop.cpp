#include "platform/system/event_loop.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <algorithm>

namespace morva {

void Post(std::function<void()> routine) {
  if (QCoreApplication* program = QCoreApplication::instance()) {
    QMetaObject::invokeMethod(program, std::move(routine), Qt::QueuedConnection);
  }
}

class Timer::Impl : public QTimer {};

Timer::Timer(int interval_ms)
    : Interval(interval_ms, [this] { Start(); }), Enabled(true, [this] { Start(); }), impl_(std::make_unique<Impl>()) {
  impl_->setTimerType(Qt::PreciseTimer);
  impl_->callOnTimeout([this] {
    if (Tick) Tick();
  });
  Start();
}

Timer::~Timer() = default;

void Timer::Start() {
  constexpr int kShortestTick = 15;
  if (Enabled() && Interval() > 0) {
    impl_->start(std::max(Interval(), kShortestTick));
  } else {
    impl_->stop();
  }
}

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
