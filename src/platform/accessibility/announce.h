#pragma once

#include <string>

namespace morva {

/// Lets a screen reader say the text, wherever the user is and without taking the focus. Texts that come together are
/// said one after the other. Nothing happens where no assistive tool listens.
void Announce(const std::string& text);

}  // namespace morva
