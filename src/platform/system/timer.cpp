#include "platform/system/timer.h"

#include <QTimer>
#include <algorithm>

namespace morva {

namespace {
constexpr int kShortestTick = 15;
}

Timer::Timer(int interval_ms)
    : Interval(interval_ms, [this] { Start(); }),
      Enabled(true, [this] { Start(); }),
      timer_(std::make_unique<QTimer>()) {
  timer_->setTimerType(Qt::PreciseTimer);
  QObject::connect(timer_.get(), &QTimer::timeout, [this] {
    if (Tick) Tick();
  });
  Start();
}

Timer::~Timer() = default;

void Timer::Start() {
  if (Enabled() && Interval() > 0) {
    timer_->start(std::max(Interval(), kShortestTick));
  } else {
    timer_->stop();
  }
}

}  // namespace morva
