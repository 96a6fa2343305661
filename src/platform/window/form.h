#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "platform/controls/control.h"
#include "platform/drawing/colors.h"
#include "platform/window/form_events.h"
#include "platform/window/form_style.h"
#include "platform/window/menu.h"

class QPoint;
class QWidget;

namespace morva {

/// A row of a window's control table, front to back.
struct LayoutRow {
  Control& control;
  double left, top, width, height;  ///< twips within the window, or within the control `in`
  std::string text = {};            ///< caption, text or picture, by kind
  Control* in = nullptr;
};

class NativeWindow;
class Placing;
class Stacking;

/// A window. It is made by Window<T>, which calls Form_Load right after. Positions are twips on the screen of the outer
/// corner, frame included.
class Form : public FormEvents {
 public:
  explicit Form(const FormStyle& style);
  ~Form() override;

  Property<std::string> Caption;
  Property<std::string> SpokenName;          ///< what assistive tools call it where it has no caption
  Property<double> Left, Top;                ///< twips on the screen; out of sight above or to the left of every screen
  Property<double> ScaleWidth, ScaleHeight;  ///< client area, twips
  Property<bool> Enabled;  ///< False stops the user's input, and nothing else: no grey, no stopped timer
  Property<Color> BackColor;
  std::string Tag;

  double Width() const;  ///< outer size, twips
  double Height() const;

  /// Makes it a window of the other, which it then stays in front of. To be called before it is shown.
  void BelongTo(Form& owner);
  /// What is typed where no control of this window takes it goes to that line, which gets the focus. The line may stand
  /// on another window, which then becomes the one that the user works in.
  void TypeInto(Control& line);
  void Show();
  void Hide();
  /// Hides it for good; it counts no more among the windows that are loaded.
  void Leave();
  /// Makes it the window that the user works in, unless that is another program's, a box, a file dialog or a menu.
  void SetFocus();
  /// Has the desktop point at the window until the user looks at it. Nothing happens while one of the program's windows
  /// is active.
  void AskForAttention();
  /// Opens a menu's items at the place, twips within the client area, and waits until it is closed.
  void PopupMenu(Menu& menu, double x, double y);
  /// Keeps the window above all others, or lets it be covered again.
  void StayOnTop(bool on);
  /// Whether the desktop lets it stay on top at all.
  bool CanStayOnTop() const;

  QWidget* Native() const;  ///< the window itself
  QWidget* Client() const;  ///< the area below the menu bar
  /// What the window manager's frame and the menu bar take at the left and top of the client area, twips.
  double ClientLeft() const;
  double ClientTop() const;

 protected:
  /// Puts the controls on the window, front to back.
  void Place(const std::vector<LayoutRow>& rows);
  void TabOrder(const std::vector<Control*>& order);
  void SetMenu(std::initializer_list<Menu::Row> rows);
  void SetPicture(const std::string& name);  ///< a stored picture as the background
  void DefaultButton(Control& button);       ///< Enter clicks it, unless another button has the focus
  void CancelButton(Control& button);        ///< Escape clicks it

 private:
  void MoveTo(QPoint corner);

  std::unique_ptr<NativeWindow> native_;
  std::unique_ptr<Placing> placing_;
  std::unique_ptr<Stacking> stacking_;
};

/// Keeps its window above all others while ontop is True.
class FormExtender {
 public:
  explicit FormExtender(Form& form) : ontop(false, [this, &form] { form.StayOnTop(ontop()); }) {}
  Property<bool> ontop;
};

}  // namespace morva
