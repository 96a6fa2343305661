#pragma once

#include <QPixmap>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <vector>

#include "platform/drawing/colors.h"
#include "platform/window/form_events.h"
#include "platform/window/form_style.h"

class QMenuBar;
class QPushButton;

namespace morva {

/// A form's window in the toolkit: a menu bar where there is a menu, the client area below it. Places on the screen are
/// those of the outer corner.
class NativeWindow : public QWidget {
 public:
  NativeWindow(FormEvents& events, const FormStyle& style);
  ~NativeWindow() override;

  /// The form's window that the widget stands on; none for the toolkit's own windows (menus, boxes).
  static NativeWindow* Of(const QWidget* widget);

  FormEvents& Events() { return events_; }
  QWidget& Client() { return client_; }
  QMenuBar& Bar();

  /// Sets the client area, and with it what the user may do to the size.
  void SizeClient(QSize client);
  void MoveTo(QPoint corner);
  QPoint Corner() const { return isVisible() ? frameGeometry().topLeft() : place_; }
  /// Shows it, unless it stands off every screen, or hides it.
  void SetShown(bool shown);

  /// Makes it a window of the other: it stays in front of it.
  void BelongTo(NativeWindow& owner);
  void SetTabOrder(std::vector<QWidget*> order);
  void SetBackground(const QPixmap& picture);

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
  int Edge() const;
  int BarHeight() const;
  void LayClient();
  void CentreOnce();
  void ShowWhereSeen();
  void ForgetHidden();
  void FocusFirstStop() const;
  void Activated();
  bool ClientMouse(const QMouseEvent& event);
  bool PassToTextLine(const QKeyEvent& event) const;
  void PaintClient();

  FormEvents& events_;
  FormStyle style_;
  QWidget client_{this};
  QMenuBar* bar_ = nullptr;
  QPixmap background_;
  std::vector<QWidget*> tab_order_;
  QTimer activation_;
  QPoint place_;
  bool placed_ = false;
  bool shown_ = false;  // whether the form is shown, seen or not
};

}  // namespace morva
