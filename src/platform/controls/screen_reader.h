#pragma once

#include <functional>
#include <string>

class QWidget;

namespace morva {

/// What controls and windows have for a screen reader. The application fills it in; until then nobody listens.
struct ScreenReader {
  /// Has the text said, wherever the user is.
  std::function<void(const std::string& text)> Say = [](const std::string&) {};
  /// To be called when assistive tools can have to call the control or window something else now.
  std::function<void(QWidget& widget)> NameMayChange = [](QWidget&) {};
};

inline ScreenReader screen_reader;

}  // namespace morva
