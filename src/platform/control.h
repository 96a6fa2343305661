#pragma once

#include <array>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include "platform/property.h"

class QWidget;

namespace morva {

class Form;

inline constexpr int kLeftButton = 1;
inline constexpr int kRightButton = 2;
inline constexpr int kMiddleButton = 4;

/// What a drag tells the control under the pointer.
enum class DragState : int { kEnter = 0, kLeave = 1, kOver = 2 };

using MouseHandler = std::function<void(int Button, int Shift, float X, float Y)>;

/// A thing on a window. Lengths are twips within the window or the containing control. A control does not take part in
/// anything before its window has placed it (Form::Place).
class Control {
 public:
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control();

  Property<double> Left, Top, Width, Height;  ///< twips
  Property<bool> Visible{true};
  Property<bool> Enabled{true};       ///< False greys the control and stops the user's input
  Property<std::string> ToolTipText;  ///< also what a screen reader reads
  std::string Tag;                    ///< free text
  int Index = -1;                     ///< place in its control array

  std::function<void()> Click, GotFocus;
  MouseHandler MouseDown, MouseMove;  ///< X and Y in twips within the control
  std::function<void(Control& Source, float X, float Y, DragState State)> DragOver;
  std::function<void(Control& Source, float X, float Y)> DragDrop;

  bool AutomaticDrag = false;  ///< a left press starts a drag of this control
  bool TabStop = true;         ///< whether Tab can give it the focus; read when the control is placed

  void SetFocus();

  QWidget* Native() const;
  /// Puts the control on a window, behind what was placed before. parent is the window's client area or a control.
  virtual void PlaceOn(QWidget* parent, double left, double top, double width, double height);
  /// The text that the layout gives: caption or text, by kind.
  virtual void SetLayoutText(const std::string& text) = 0;

 protected:
  explicit Control(std::unique_ptr<QWidget> widget);
  /// Whether the toolkit leaves the mouse on this control to its handlers: on pictures and labels, not on buttons.
  virtual bool TakesMouse() const { return true; }

 private:
  class EventFilter;
  void Lay();
  std::unique_ptr<QWidget> widget_;
  std::unique_ptr<EventFilter> filter_;
};

/// Controls of one kind under one name, told apart by the index First to First + N - 1. Another index throws
/// std::out_of_range.
template <class C, int N, int First = 0>
class ControlArray {
 public:
  ControlArray() {
    for (int i = 0; i < N; ++i) items_[i].Index = First + i;
  }
  C& operator()(int index) { return items_.at(static_cast<std::size_t>(index - First)); }
  const C& operator()(int index) const { return items_.at(static_cast<std::size_t>(index - First)); }
  auto begin() { return items_.begin(); }
  auto end() { return items_.end(); }
  static constexpr int LBound() { return First; }
  static constexpr int UBound() { return First + N - 1; }

 private:
  std::array<C, N> items_;
};

}  // namespace morva
