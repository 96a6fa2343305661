#pragma once

#include <functional>

namespace morva {

/// Has the event loop call `routine` in one of its next turns, on the window's thread. For any thread.
void Post(std::function<void()> routine);

}  // namespace morva
