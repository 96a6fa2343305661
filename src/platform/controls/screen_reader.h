#pragma once

#include <functional>
#include <string>

class QWidget;

namespace morva {

/// The screen reader, for controls and windows. The application fills it in; until then nobody listens.
struct ScreenReader {
  /// Says the text, wherever the focus is.
  std::function<void(const std::string& text)> Say = [](const std::string&) {};
  /// To be called when the control or window may have another name for assistive tools.
  std::function<void(QWidget& widget)> NameMayChange = [](QWidget&) {};
};

inline ScreenReader screen_reader;

}  // namespace morva
