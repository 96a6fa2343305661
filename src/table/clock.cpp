#include "table/clock.h"

#include "platform/system/values.h"

namespace morva {

void Clock::AddSecond() {
  ++sec;
  if (sec == 60) {
    sec = 0;
    ++min;
  }
  if (min == 60) {
    min = 0;
    ++hour;
  }
}

std::string Clock::Text() const { return TwoDigits(hour) + ":" + TwoDigits(min) + ":" + TwoDigits(sec); }

}  // namespace morva
