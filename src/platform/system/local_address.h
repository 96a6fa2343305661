#pragma once

#include <string>

namespace morva {

/// The address by which other computers reach this one: that of the interface which the way out takes; without a way
/// out, the best that there is, link-local ones after the others and loopback last. Nothing is sent for it.
std::string LocalAddress();

}  // namespace morva
