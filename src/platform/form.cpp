#include "platform/form.h"

#include <QApplication>
#include <QCloseEvent>
#include <QIcon>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QWindow>
#include <cmath>

#include "platform/drag.h"
#include "platform/edge.h"
#include "platform/qt_values.h"
#include "platform/registry.h"

namespace morva {

namespace {

Qt::WindowFlags FlagsOf(const FormStyle& style) {
  if (style.round) {
    return Qt::ToolTip | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint | Qt::WindowDoesNotAcceptFocus;
  }
  if (style.frame == FormStyle::Frame::kNone) return Qt::SplashScreen | Qt::FramelessWindowHint;
  Qt::WindowFlags flags = style.on_task_bar ? Qt::Window : Qt::Dialog;
  if (style.frame == FormStyle::Frame::kSizableWidth) flags = Qt::Tool;
  if (!style.title_bar) return flags | Qt::FramelessWindowHint;
  flags |= Qt::CustomizeWindowHint | Qt::WindowTitleHint;
  if (style.close_box) flags |= Qt::WindowCloseButtonHint | Qt::WindowSystemMenuHint;
  if (style.minimise_box) flags |= Qt::WindowMinimizeButtonHint;
  if (style.maximise_box) flags |= Qt::WindowMaximizeButtonHint;
  return flags;
}

QRect TwipsToPixels(double left, double top, QSize size) { return {QPoint(ToPixels(left), ToPixels(top)), size}; }

// The toolkit's own ellipses are not alike on all sides.
QRegion RoundRegion(QSize size) {
  QRegion region;
  for (int y = 0; y < size.height(); ++y) {
    const double height = 2 * (y + 0.5) / size.height() - 1;  // of this row's middle, -1 to 1
    const int margin = qRound(size.width() * (1 - std::sqrt(1 - height * height)) / 2);
    region += QRect(margin, y, size.width() - 2 * margin, 1);
  }
  return region;
}

bool OnAnyScreen(const QRect& place) {
  const auto screens = QGuiApplication::screens();
  return std::any_of(screens.begin(), screens.end(),
                     [&](const QScreen* screen) { return screen->geometry().intersects(place); });
}

}  // namespace

// A dialog that the window manager draws no frame for has this one of its own, in pixels.
constexpr int kOwnFrame = 3;

// The window in the toolkit: a menu bar where there is a menu, the client area below it.
class Form::Native_ : public QWidget {
 public:
  Native_(Form& form, const FormStyle& style) : QWidget(nullptr, FlagsOf(style)), form_(form), style_(style) {
    client_.setMouseTracking(true);
    client_.installEventFilter(this);
    if (style.round) setAttribute(Qt::WA_ShowWithoutActivating);
    activation_.setSingleShot(true);
    connect(&activation_, &QTimer::timeout, [this] { Activated(); });
  }

  void LayClient() {
    const int bar = BarHeight();
    if (bar_ != nullptr) bar_->setGeometry(0, 0, width(), bar);
    client_.setGeometry(rect().adjusted(Edge(), Edge() + bar, -Edge(), -Edge()));
  }

  int Edge() const { return style_.frame == FormStyle::Frame::kFixed && !style_.title_bar ? kOwnFrame : 0; }

  int BarHeight() const { return bar_ == nullptr ? 0 : bar_->sizeHint().height(); }

  // Sets the client area, and with it what the user may do to the size.
  void SizeClient(QSize client) {
    const QSize whole = client + QSize(2 * Edge(), 2 * Edge() + BarHeight());
    switch (style_.frame) {
      case FormStyle::Frame::kSizable:
        setMinimumSize(whole / 3);
        resize(whole);
        break;
      case FormStyle::Frame::kSizableWidth:
        setMinimumSize(whole);
        setMaximumSize(QWIDGETSIZE_MAX, whole.height());
        resize(whole);
        break;
      default:
        setFixedSize(whole);
    }
    if (style_.round) setMask(RoundRegion(whole));
    LayClient();
  }

  QMenuBar& Bar() {
    if (bar_ == nullptr) {
      bar_ = new QMenuBar(this);
      bar_->setNativeMenuBar(false);
      bar_->setFont(ProgramFont(9));
    }
    return *bar_;
  }

  void CentreOnce() {
    if (style_.start != FormStyle::Start::kCentred || placed_) return;
    QRect place = frameGeometry();
    place.moveCenter(screen()->availableGeometry().center());
    MoveTo(place.topLeft());
  }

  void MoveTo(QPoint corner) {
    placed_ = true;
    place_ = corner;
    if (OnAnyScreen({corner, frameGeometry().size()})) move(corner);
    ShowWhereSeen();
  }

  // A window that is placed off every screen is out of sight, whatever the window manager thinks of such places.
  void ShowWhereSeen() {
    const bool seen = wanted_ && OnAnyScreen({place_, frameGeometry().size()});
    if (seen == isVisible()) return;
    setVisible(seen);
    if (seen && focusWidget() == nullptr) FocusFirstStop();
    // Some window managers hand the activation to another window; the program's own order of steps relies on it.
    if (seen && !style_.round) activation_.start(300);
  }

  QPoint Corner() const { return isVisible() ? frameGeometry().topLeft() : place_; }

  void Want(bool wanted) {
    wanted_ = wanted;
    if (wanted) CentreOnce();
    ShowWhereSeen();
  }

  bool event(QEvent* event) override {
    // What reaches a window that is gone must not wake what it refers to.
    if (event->type() == QEvent::WindowActivate && wanted_) {
      if (form_.Enabled()) {
        Activated();
      } else {
        QTimer::singleShot(0, this, [] { ActivateEnabledForm(); });
      }
    }
    return QWidget::event(event);
  }

  bool eventFilter(QObject* /*client*/, QEvent* event) override {
    switch (event->type()) {
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonRelease:
        return ClientMouse(*static_cast<QMouseEvent*>(event));
      case QEvent::Paint:
        PaintClient();
        return true;
      default:
        return false;
    }
  }

  QWidget client_{this};
  QPixmap background_;
  QPushButton* default_button_ = nullptr;
  QPushButton* cancel_button_ = nullptr;
  std::vector<QWidget*> tab_order_;
  bool loading_ = true;

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    if (Edge() == 0) return;
    QPainter painter(this);
    PaintEdge(painter, rect(), Edge::kRaised, palette());
  }

  void resizeEvent(QResizeEvent* /*event*/) override {
    LayClient();
    if (!loading_) form_.Form_Resize();
  }

  void moveEvent(QMoveEvent* /*event*/) override {
    if (isVisible()) place_ = frameGeometry().topLeft();
  }

  // Some window managers offer to minimise what is not meant to be: it would be hard to find again.
  void changeEvent(QEvent* event) override {
    if (event->type() == QEvent::WindowStateChange && isMinimized() && !style_.minimise_box) {
      QTimer::singleShot(0, this, [this] { setWindowState(windowState() & ~Qt::WindowMinimized); });
    }
    QWidget::changeEvent(event);
  }

  void closeEvent(QCloseEvent* event) override {
    event->ignore();
    if (style_.close_box && form_.unload) form_.unload();
  }

  void keyPressEvent(QKeyEvent* event) override {
    auto* focused = qobject_cast<QPushButton*>(focusWidget());
    QPushButton* pressed = nullptr;
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
      pressed = focused != nullptr ? focused : default_button_;
    } else if (event->key() == Qt::Key_Escape) {
      if (style_.escape_closes) return form_.unload();
      pressed = cancel_button_;
    }
    if (pressed != nullptr) {
      pressed->click();
    } else {
      QWidget::keyPressEvent(event);
    }
  }

 private:
  // The toolkit would begin with what was put on the window first.
  void FocusFirstStop() const {
    const auto first = std::find_if(tab_order_.begin(), tab_order_.end(), [](const QWidget* stop) {
      return stop->isEnabled() && (stop->focusPolicy() & Qt::TabFocus) != 0;
    });
    if (first != tab_order_.end()) (*first)->setFocus();
  }

  static void ActivateEnabledForm() {
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
      const Form* form = FormOf(window);
      if (form == nullptr || !form->Enabled() || !window->isVisible() || window->windowType() == Qt::Tool) continue;
      window->raise();
      window->activateWindow();
    }
  }

  void Activated() {
    const bool awaited = activation_.isActive();
    activation_.stop();
    if (!wanted_ || (!awaited && !isActiveWindow())) return;
    form_.Form_Activate();
    form_.Form_GotFocus();
  }

  bool ClientMouse(const QMouseEvent& event) {
    // What a control lets through is not meant for the window.
    if (client_.childAt(event.position().toPoint()) != nullptr) return true;
    const QPointF twips = event.position() * kTwipsPerPixel;
    if (event.type() == QEvent::MouseButtonPress) {
      form_.Form_MouseDown(static_cast<int>(event.button()), static_cast<int>(event.modifiers() >> 25U) & 7,
                           static_cast<float>(twips.x()), static_cast<float>(twips.y()));
    } else if (event.button() == Qt::LeftButton) {
      form_.Form_Click();
    }
    return true;
  }

  void PaintClient() {
    QPainter painter(&client_);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.fillRect(client_.rect(), QtColor(form_.BackColor()));
    if (!background_.isNull()) painter.drawPixmap(client_.rect(), background_);
  }

  Form& form_;
  FormStyle style_;
  QMenuBar* bar_ = nullptr;
  QTimer activation_;
  QPoint place_;
  bool placed_ = false;
  bool wanted_ = false;
};

Form::Form(const FormStyle& style) : native_(std::make_unique<Native_>(*this, style)) {
  Register(native_.get(), this);
  native_->setFont(ProgramFont());
  Caption.assigned = [this] {
    // The toolkit reads [*] as a mark of its own.
    native_->setWindowTitle(QtText(Caption()).replace("[*]", "[*][*]"));
  };
  Left.read = [this] { return native_->Corner().x() * 1.0 * kTwipsPerPixel; };
  Top.read = [this] { return native_->Corner().y() * 1.0 * kTwipsPerPixel; };
  Left.assigned = [this] { native_->MoveTo({ToPixels(Left.Assigned()), native_->Corner().y()}); };
  Top.assigned = [this] { native_->MoveTo({native_->Corner().x(), ToPixels(Top.Assigned())}); };
  Width.read = [this] { return native_->frameGeometry().width() * 1.0 * kTwipsPerPixel; };
  Height.read = [this] { return native_->frameGeometry().height() * 1.0 * kTwipsPerPixel; };
  ScaleWidth.read = [this] { return native_->client_.width() * 1.0 * kTwipsPerPixel; };
  ScaleHeight.read = [this] { return native_->client_.height() * 1.0 * kTwipsPerPixel; };
  ScaleWidth.assigned = [this] { native_->SizeClient({ToPixels(ScaleWidth.Assigned()), native_->client_.height()}); };
  ScaleHeight.assigned = [this] { native_->SizeClient({native_->client_.width(), ToPixels(ScaleHeight.Assigned())}); };
  Enabled.assigned = [this] {
    if (Enabled()) return;
    Drag::Abandon(*this);
    if (QWidget* popup = QApplication::activePopupWidget()) popup->close();
  };
  BackColor.assigned = [this] { native_->client_.update(); };
  Caption = style.caption;
  native_->SizeClient({ToPixels(style.scale_width), ToPixels(style.scale_height)});
  if (style.start == FormStyle::Start::kByCode) {
    native_->MoveTo(TwipsToPixels(style.left, style.top, {}).topLeft());
  }
  native_->loading_ = false;
}

Form::~Form() {
  Drag::Abandon(*this);
  Forget(native_.get());
  native_->hide();
}

void Form::Show() {
  native_->Want(true);
  if (!native_->isVisible() || native_->testAttribute(Qt::WA_ShowWithoutActivating)) return;
  native_->raise();
  native_->activateWindow();
}

void Form::Hide() { native_->Want(false); }

void Form::SetFocus() {
  // What the other player does must not take the user away from another program.
  if (QGuiApplication::applicationState() != Qt::ApplicationActive) return;
  // Each move comes here, and asking the window manager takes longer than painting it.
  if (QApplication::activeWindow() == native_.get()) return;
  native_->raise();
  native_->activateWindow();
}

void Form::PopupMenu(Menu& menu, double x, double y) {
  if (menu.menu_ == nullptr) return;
  menu.menu_->exec(native_->client_.mapToGlobal(QPoint(ToPixels(x), ToPixels(y))));
}

void Form::StayOnTop(bool on) {
  if (QWindow* window = native_->windowHandle()) {
    native_->overrideWindowFlags(native_->windowFlags().setFlag(Qt::WindowStaysOnTopHint, on));
    window->setFlag(Qt::WindowStaysOnTopHint, on);
    // A window that may be covered again is not covered yet.
    native_->raise();
  } else {
    native_->setWindowFlag(Qt::WindowStaysOnTopHint, on);
  }
}

QWidget* Form::Native() const { return native_.get(); }

QWidget* Form::Client() const { return &native_->client_; }

double Form::ClientLeft() const {
  return (native_->client_.mapToGlobal(QPoint()).x() - native_->Corner().x()) * 1.0 * kTwipsPerPixel;
}

double Form::ClientTop() const {
  return (native_->client_.mapToGlobal(QPoint()).y() - native_->Corner().y()) * 1.0 * kTwipsPerPixel;
}

void Form::Place(const std::vector<LayoutRow>& rows) {
  for (const LayoutRow& row : rows) {
    QWidget* parent = row.in != nullptr ? row.in->Native() : Client();
    row.control.Native()->setObjectName(row.name);
    row.control.PlaceOn(parent, row.left, row.top, row.width, row.height);
    if (!row.text.empty()) row.control.SetLayoutText(row.text);
  }
}

void Form::TabOrder(const std::vector<Control*>& order) {
  for (std::size_t i = 1; i < order.size(); ++i) QWidget::setTabOrder(order[i - 1]->Native(), order[i]->Native());
  for (const Control* control : order) native_->tab_order_.push_back(control->Native());
}

void Form::SetMenu(std::initializer_list<Menu::Row> rows) {
  std::vector<QMenu*> open;  // the menu that each depth adds to
  for (auto row = rows.begin(); row != rows.end(); ++row) {
    open.resize(static_cast<std::size_t>(row->depth));
    const auto below = row + 1;
    QMenu* menu = below != rows.end() && below->depth > row->depth ? new QMenu(native_.get()) : nullptr;
    QAction* action = menu != nullptr ? menu->menuAction() : new QAction(native_.get());
    row->item.menu_ = menu;
    row->item.Become(action, *row);
    if (menu != nullptr) menu->setFont(ProgramFont(9));
    if (!open.empty()) {
      open.back()->addAction(action);
    } else if (!row->hidden) {
      native_->Bar().addAction(action);
    }
    open.push_back(menu);
  }
  native_->SizeClient({ToPixels(ScaleWidth()), ToPixels(ScaleHeight())});
}

void Form::SetPicture(const std::string& name) {
  native_->background_ = QPixmap(QtText(":/pictures/" + name + ".png"));
  native_->client_.update();
}

void Form::DefaultButton(Control& button) {
  native_->default_button_ = static_cast<QPushButton*>(button.Native());
  native_->default_button_->setDefault(true);
}

void Form::CancelButton(Control& button) { native_->cancel_button_ = static_cast<QPushButton*>(button.Native()); }

}  // namespace morva
