#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>
#include <functional>

namespace morva {

/// Thrown where the program would end.
struct Ended {};

/// Lets events run until the condition holds, for at most this long; whether it held.
inline bool Await(const std::function<bool()>& condition, int ms = 5000) {
  QElapsedTimer clock;
  clock.start();
  while (!condition()) {
    if (clock.elapsed() > ms) return false;
    QTest::qWait(5);
  }
  return true;
}

}  // namespace morva
