#pragma once

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "platform/colors.h"
#include "platform/control.h"
#include "platform/menu.h"

class QWidget;

namespace morva {

/// How a window looks and behaves at its edges.
struct FormStyle {
  enum class Frame { kNone, kFixed, kSizable, kSizableWidth };
  std::string caption = {};
  Frame frame = Frame::kFixed;
  double scale_width = 0, scale_height = 0;  ///< client area, twips
  bool close_box = true;                     ///< without it the window manager's ways of closing do nothing
  bool minimise_box = false;
  bool maximise_box = false;
  bool on_task_bar = false;
  bool escape_closes = false;  ///< Escape closes it, as the close box does
  bool title_bar = true;
  enum class Start { kCentred, kByCode } start = Start::kCentred;
  bool round = false;        ///< an ellipse that fills the client area; the window manager takes no part in it
  double left = 0, top = 0;  ///< with Start::kByCode: twips on the screen
};

/// A row of a window's control table, front to back.
struct LayoutRow {
  const char* name;
  Control& control;
  double left, top, width, height;  ///< twips within the window, or within the control `in`
  std::string text = {};            ///< caption, text or picture, by kind
  Control* in = nullptr;
};

/// A window. It is made by Window<T>, which calls Form_Load right after; the windows of the program derive from it and
/// override the events that they use. Positions are twips on the screen of the outer corner, frame included.
class Form {
 public:
  explicit Form(const FormStyle& style);
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;
  virtual ~Form();

  Property<std::string> Caption;
  Property<double> Left, Top;                ///< twips on the screen; a place off every screen puts it out of sight
  Property<double> Width, Height;            ///< outer size, twips; read only
  Property<double> ScaleWidth, ScaleHeight;  ///< client area, twips
  Property<bool> Enabled{true};  ///< False stops the user's input, and nothing else: no grey, no stopped timer
  Property<Color> BackColor{kButtonFace};
  std::string Tag;

  virtual void Form_Load() {}
  virtual void Form_Activate() {}
  virtual void Form_GotFocus() {}
  virtual void Form_Resize() {}
  virtual void Form_Unload() {}
  virtual void Form_Click() {}
  virtual void Form_MouseDown(int /*Button*/, int /*Shift*/, float /*X*/, float /*Y*/) {}
  virtual void Form_DragOver(Control& /*Source*/, float /*X*/, float /*Y*/, DragState /*State*/) {}

  void Show();
  void Hide();
  /// Makes it the window that the user works in, unless the user works in another program.
  void SetFocus();
  /// Opens a menu's items at the place, twips within the client area, and waits until it is closed.
  void PopupMenu(Menu& menu, double x, double y);
  /// Keeps the window above all others, or lets it be covered again.
  void StayOnTop(bool on);

  QWidget* Native() const;  ///< the window itself
  QWidget* Client() const;  ///< the area below the menu bar
  /// What the window manager's frame and the menu bar take at the left and top of the client area, twips.
  double ClientLeft() const;
  double ClientTop() const;

  std::function<void()> unload;  ///< set by Window<T>: ends this window

 protected:
  /// Puts the controls on the window, front to back.
  void Place(const std::vector<LayoutRow>& rows);
  void TabOrder(const std::vector<Control*>& order);
  void SetMenu(std::initializer_list<Menu::Row> rows);
  void SetPicture(const std::string& name);  ///< a stored picture as the background
  void DefaultButton(Control& button);       ///< Enter clicks it, unless another button has the focus
  void CancelButton(Control& button);        ///< Escape clicks it

 private:
  friend class Control;
  class Native_;
  std::unique_ptr<Native_> native_;
};

}  // namespace morva
