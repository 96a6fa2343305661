#pragma once

#include <string>

namespace morva {

/// The address by which other computers reach this one: that of the interface of the default route; without a route the
/// best one there is, link-local ones late and loopback last. Sends nothing.
std::string LocalAddress();

}  // namespace morva
