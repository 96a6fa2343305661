#pragma once

#include "platform/controls/control.h"
#include "platform/system/event_loop.h"

namespace morva {

/// Read-only text of many lines with a vertical scroll bar.
class TextLog : public Control {
 public:
  static constexpr int kEnd = 2147483647;  ///< for SelStart: behind the last character, however many there are
  TextLog();
  Property<std::string> Text;  ///< UTF-8, lines apart by CR LF
  Property<int> SelStart;      ///< characters; the end brings the end of the text into view
  /// Adds at the end, in a time that does not grow with the text.
  void Append(const std::string& more);
  void HideCaret();  ///< for good; the text can be selected all the same
  /// Scrolls by that many pages, up where negative.
  void ScrollPages(int pages);
  /// The text in view, UTF-8, lines apart by LF.
  std::string ShownText() const;
  void SetLayoutText(const std::string& text) override { Text = text; }
  void Rescale() override;

 private:
  void Show();
  std::string unshown_;  // appended, not on the screen yet
  ShownLater later_;
};

}  // namespace morva
