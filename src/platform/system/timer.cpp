#include "platform/system/timer.h"

#include <QTimer>
#include <algorithm>

namespace morva {

namespace {
constexpr int kShortestTick = 15;
}

class Timer::Impl : public QTimer {};

Timer::Timer(int interval_ms)
    : Interval(interval_ms, [this] { Start(); }), Enabled(true, [this] { Start(); }), impl_(std::make_unique<Impl>()) {
  impl_->setTimerType(Qt::PreciseTimer);
  QObject::connect(impl_.get(), &QTimer::timeout, [this] {
    if (Tick) Tick();
  });
  Start();
}

Timer::~Timer() = default;

void Timer::Start() {
  if (Enabled() && Interval() > 0) {
    impl_->start(std::max(Interval(), kShortestTick));
  } else {
    impl_->stop();
  }
}

}  // namespace morva
