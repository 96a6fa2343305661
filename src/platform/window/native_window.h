#pragma once

#include <QPixmap>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <string>
#include <vector>

#include "platform/drawing/colors.h"
#include "platform/window/form_events.h"
#include "platform/window/form_style.h"

class QMenuBar;
class QPushButton;

namespace morva {

/// A form's window in the toolkit: a menu bar where there is a menu, the client area below it. Places on the screen are
/// those of the outer corner.
///
/// A window that belongs to another and moves over it, or has to stand at a place of it where the platform places no
/// windows, is a part of that other window to the toolkit; to the program it is a window all the same.
class NativeWindow : public QWidget {
 public:
  NativeWindow(FormEvents& events, const FormStyle& style);
  ~NativeWindow() override;

  /// The form's window that the widget stands on; none for the toolkit's own windows (menus, boxes).
  static NativeWindow* Of(const QWidget* widget);
  /// The main window that is seen; none before there is one.
  static NativeWindow* Main();

  FormEvents& Events() { return events_; }
  const FormStyle& Style() const { return style_; }
  QWidget& Client() { return client_; }
  QMenuBar& Bar();
  bool HasMenu() const { return bar_ != nullptr; }

  /// Sets the client area, and with it what the user may do to the size.
  void SizeClient(QSizeF twips);
  QSizeF ClientTwips() const { return client_twips_; }
  /// Takes up the size of everything, which has changed; it stays where it is.
  void Rescale();
  /// Puts it there, or as near as it takes to be wholly on the screen, and with it, if there is room, all of `around`.
  void MoveTo(QPoint corner, const QRect& around = {});
  /// Takes up where an X server within a Wayland session has it: the toolkit is not told when the session moves it.
  void MendPlace();
  bool Placed() const { return placed_; }
  QPoint Corner() const;
  /// From its corner to where the window manager's frame ends.
  QPoint WithinFrame() const;
  /// Where it would be if the screen were large enough for all that it was told.
  QPoint AskedCorner() const { return Corner() == given_ ? asked_ : Corner(); }
  /// The size with the window manager's frame; as long as the window was not seen, with the frame of the last one.
  QSize OuterSize() const;
  /// Shows it, unless it stands off every screen, or hides it.
  void SetShown(bool shown);

  /// Makes it a window of the other: it stays in front of it.
  void BelongTo(NativeWindow& owner);
  /// Makes it the window that the user works in.
  void TakeKeys();
  /// Whether it has the keys together with the window that it belongs to, whichever of them the session gives them to.
  bool SharesKeys() const;
  /// Keeps it above all windows, or lets it be covered again. Told to stay on top, it comes forward, whatever it is
  /// told next in the same turn of the event loop.
  void StayOnTop(bool on);
  /// Until it is told otherwise no window stays on top, whatever it is told itself.
  static void LetAllBeCovered(bool be);
  void SetTabOrder(std::vector<QWidget*> order);
  void SetBackground(const std::string& picture);  ///< a stored picture's name

  /// The pixel of the screen at which its twips begin: it moves where that keeps windows at their places while the size
  /// of everything changes.
  static inline QPoint screen_origin;

  Color background_color = kButtonFace;
  bool takes_input = true;
  bool loading = true;  ///< no event tells of a new size yet
  QPushButton* default_button = nullptr;
  QPushButton* cancel_button = nullptr;
  QPointer<QWidget> text_line;  ///< gets what is typed where no control takes it

  bool event(QEvent* event) override;
  bool eventFilter(QObject* client, QEvent* event) override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  static bool NoWindowManager();
  static bool PlacesWindows();
  static void ActivateEnabled();
  static void LetBeCovered();
  bool HasTitleBar() const;
  int Edge() const;
  int BarHeight() const;
  void LayClient();
  void CentreOnce();
  QPoint OwnersInside() const;
  void ShowWhereSeen();
  void StandBesideOwner();
  void ForgetHidden();
  void FocusFirstStop() const;
  void Activated();
  void SettleOnTop();
  void AwaitActivation();
  bool MeetFrame();
  bool ClientMouse(const QMouseEvent& event);
  bool PassToTextLine(const QKeyEvent& event);
  void PaintClient();

  FormEvents& events_;
  FormStyle style_;
  QWidget client_{this};
  QMenuBar* bar_ = nullptr;
  std::string background_name_;
  QPixmap background_;
  QSizeF client_twips_;
  std::vector<QWidget*> tab_order_;
  QTimer activation_;
  int looks_left_ = 0;  // for the frame and the activation
  QTimer settling_;
  QTimer standing_;                         // for the owner's place
  inline static bool all_covered_ = false;  // by a file dialog
  bool on_top_ = false;
  bool forward_ = false;  // asked to come forward
  QPoint place_;
  bool beside_owner_ = false;  // for good, wherever that goes
  QPoint asked_, given_;       // by the last MoveTo
  bool placed_ = false;
  bool centred_ = false;         // with a frame that was only guessed
  QPointer<QWidget> had_focus_;  // in the window that this one is a part of
  bool shown_ = false;           // whether the form is shown, seen or not
};

}  // namespace morva
