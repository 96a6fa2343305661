#include "platform/timer.h"

#include <QTimer>
#include <algorithm>

namespace morva {

namespace {
constexpr int kShortestTick = 15;
}

class Timer::Impl : public QTimer {};

Timer::Timer(int interval_ms) : Interval(interval_ms), impl_(std::make_unique<Impl>()) {
  impl_->setTimerType(Qt::PreciseTimer);
  QObject::connect(impl_.get(), &QTimer::timeout, [this] {
    if (Tick) Tick();
  });
  const auto apply = [this] {
    if (Enabled() && Interval() > 0) {
      impl_->start(std::max(Interval(), kShortestTick));
    } else {
      impl_->stop();
    }
  };
  Interval.assigned = Enabled.assigned = apply;
  apply();
}

Timer::~Timer() = default;

}  // namespace morva
