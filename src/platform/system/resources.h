#pragma once

#include <span>
#include <string>

namespace morva {

/// The bytes of what is stored in the program under a type and an id, for instance "CUSTOM" and 101; empty where
/// nothing is stored there. They stay for the life of the program.
std::span<const unsigned char> LoadResData(int id, const std::string& type);

}  // namespace morva
