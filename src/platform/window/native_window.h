#pragma once

#include <QPointer>
#include <QWidget>
#include <string>
#include <vector>

#include "platform/drawing/colors.h"
#include "platform/window/form_events.h"
#include "platform/window/form_style.h"

class QMenuBar;
class QPushButton;

namespace morva {

/// Whether the key changes a line of text: it writes a character, pastes or deletes.
bool WritesText(const QKeyEvent& key);

/// A form's window in Qt: a menu bar where there is a menu, the client area below it.
///
/// A window that lies within its owner, or would have to stand at a place of it where windows can't be placed, is a
/// child widget of the owner; to the program it is a window all the same. The tool window is then docked: it has a
/// strip with its caption, and the owner grows at the right to hold it.
class NativeWindow : public QWidget {
 public:
  NativeWindow(FormEvents& events, const FormStyle& style);
  ~NativeWindow() override;

  /// The form's window that the widget stands on; none for Qt's own windows (menus, boxes).
  static NativeWindow* Of(const QWidget* widget);

  FormEvents& Events() { return events_; }
  const FormStyle& Style() const { return style_; }
  QWidget& Client() { return client_; }
  QMenuBar& Bar();
  /// Whether the window manager draws a frame with a title bar round it.
  bool HasTitleBar() const;
  bool IsDocked() const { return !isWindow() && style_.frame == FormStyle::Frame::kSizableWidth; }

  /// Sets the client area, and with it what the user may do to the size.
  void SizeClient(QSizeF twips);
  QSizeF ClientTwips() const { return client_twips_; }
  /// The size in pixels without what is docked to it, and without the window manager's frame.
  QSize OwnSize() const { return size() - QSize(DockWidth(), 0); }
  /// Applies the zoom, which has changed; the window stays where it is.
  void Rescale();

  /// Makes it a window of the other: it stays in front of it.
  void BelongTo(NativeWindow& owner);
  /// Makes it the active window.
  void TakeFocus();
  /// Gives the focus to the control to begin with.
  void FocusFirstStop();
  /// Gives up what the desktop knows of it while it is hidden: assistive tools would go on seeing it.
  void ForgetHidden();
  void SetTabOrder(std::vector<QWidget*> order);
  void SetBackground(const std::string& picture);  ///< a stored picture's name

  Color background_color = kButtonFace;
  bool takes_input = true;
  QPushButton* default_button = nullptr;
  QPushButton* cancel_button = nullptr;
  QPointer<QWidget> text_line;  ///< gets what is typed where no control takes it

  bool eventFilter(QObject* client, QEvent* event) override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  int Edge() const;
  int BarHeight() const;
  int StripHeight() const;
  int DockWidth() const;
  void LayClient();
  bool ClientMouse(const QMouseEvent& event);
  bool PassToTextLine(const QKeyEvent& event);
  void PaintClient();

  FormEvents& events_;
  FormStyle style_;
  QWidget client_{this};
  QMenuBar* bar_ = nullptr;
  std::string background_;
  QSizeF client_twips_;
  std::vector<QWidget*> tab_order_;
  QPointer<NativeWindow> docked_;
};

}  // namespace morva
