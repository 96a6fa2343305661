#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/controls/keys.h"
#include "platform/system/property.h"

class QWidget;

namespace morva {

inline constexpr int kLeftButton = 1;
inline constexpr int kRightButton = 2;
inline constexpr int kMiddleButton = 4;

/// What a drag tells the control under the pointer.
enum class DragState : int { kEnter = 0, kLeave = 1, kOver = 2 };

/// What assistive tools take a control for.
enum class SpokenKind {
  kUsual,      ///< what Qt makes of its widget
  kNothing,    ///< mere decoration: it is not there
  kContainer,  ///< there as long as other controls stand in it
  kGroup,      ///< a container with a name, also of the controls that JoinGroup it
  kButton,
  kOption,
  kItem,  ///< one of many alike, of which nothing but the name is told
  kLine,
};

using MouseHandler = std::function<void(int Button, int Shift, float X, float Y)>;

/// A control on a window. Lengths are twips within the window or the containing control. It does nothing before its
/// window has placed it (Form::Place).
class Control : protected PropertyOwner {
 public:
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control();

  Property<double> Left, Top, Width, Height;  ///< twips
  Property<bool> Visible;
  Property<bool> Enabled;             ///< False greys the control and blocks the user's input
  Property<bool> TabStop;             ///< whether Tab leads here; at first as usual for its kind
  Property<std::string> ToolTipText;  ///< also what a screen reader reads
  std::string Tag;                    ///< free text
  int Index = -1;                     ///< place in its control array

  std::function<void()> Click, GotFocus;
  MouseHandler MouseDown, MouseMove;  ///< X and Y in twips within the control
  KeyHandler KeyDown;                 ///< while the control has the focus
  std::function<void(Control& Source, float X, float Y, DragState State)> DragOver;
  std::function<void(Control& Source, float X, float Y)> DragDrop;

  SpokenKind Kind = SpokenKind::kUsual;
  Property<std::string> SpokenName;     ///< its name for assistive tools, unless the caption serves
  std::function<std::string()> Spoken;  ///< the same for a button, an option or an item, asked for when needed

  /// Makes the control a member of that group for assistive tools: an option button in its frame. Members stand in the
  /// order in which they join.
  void JoinGroup(Control& group);
  const Control* Group() const { return group_; }
  const std::vector<Control*>& Members() const { return members_; }
  /// To be called when Spoken may give another name.
  void SpokenMayChange();

  bool AutomaticDrag = false;  ///< a left press starts a drag of this control

  void SetFocus();
  bool HasFocus() const;

  QWidget* Native() const;
  /// Puts the control on a window, behind what was placed before. parent is the window's client area or a control.
  virtual void PlaceOn(QWidget* parent, double left, double top, double width, double height);
  /// Applies a new zoom.
  virtual void Rescale();
  /// The text that the layout gives: caption or text, by kind.
  virtual void SetLayoutText(const std::string& /*text*/) {}

 protected:
  explicit Control(std::unique_ptr<QWidget> widget);

 private:
  class EventFilter;
  void Lay();
  std::unique_ptr<QWidget> widget_;
  const bool takes_mouse_;  // events end at the handlers, as on pictures and labels, and don't reach the widget
  std::unique_ptr<EventFilter> filter_;
  Control* group_ = nullptr;
  std::vector<Control*> members_;
};

/// The control's widget, as the class that it is of.
template <class W>
W& As(const Control& control) {
  return *static_cast<W*>(control.Native());
}

/// The control to which the widget belongs; none for a window and its bare client area.
Control* ControlOf(const QWidget* widget);

/// Applies a new zoom to every control.
void RescaleControls();

}  // namespace morva
