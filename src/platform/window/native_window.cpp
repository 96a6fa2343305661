#include "platform/window/native_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "platform/drawing/edge.h"
#include "platform/drawing/fonts.h"
#include "platform/drawing/picture.h"
#include "platform/drawing/pixels.h"
#include "platform/drawing/qt_color.h"

namespace morva {

namespace {

// A dialog that the window manager draws no frame for has this one of its own, in twips.
constexpr double kOwnFrame = 45;
// What stands farther to the left or above is meant to be out of sight, however large the screen. Twips.
constexpr double kOutOfSight = -9000;

Qt::WindowFlags FlagsOf(const FormStyle& style) {
  if (style.round) return Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus;
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

QSize PixelsOf(QSizeF twips) { return {ToPixels(twips.width()), ToPixels(twips.height())}; }

// The screen that shows most of the place, or is the next one to it.
const QScreen* ScreenFor(const QRect& place) {
  const auto distance = [&place](const QScreen* screen) {
    const QRect shown = screen->geometry().intersected(place);
    return std::pair(-shown.width() * shown.height(), (screen->geometry().center() - place.center()).manhattanLength());
  };
  const auto screens = QGuiApplication::screens();
  return *std::min_element(screens.begin(), screens.end(),
                           [&](const QScreen* a, const QScreen* b) { return distance(a) < distance(b); });
}

// To the left of all screens, or above them, is where the program puts what should not be seen.
bool InSight(const QRect& place) {
  const QPoint corner = place.topLeft() - NativeWindow::screen_origin;
  if (ToTwips(std::min(corner.x(), corner.y())) < kOutOfSight) return false;
  const QRect screens = QGuiApplication::primaryScreen()->virtualGeometry();
  return place.right() >= screens.left() && place.bottom() >= screens.top();
}

QPoint WhollyOn(const QRect& screen, const QRect& place) {
  return {std::max(screen.left(), std::min(place.left(), screen.right() + 1 - place.width())),
          std::max(screen.top(), std::min(place.top(), screen.bottom() + 1 - place.height()))};
}

bool PlacesWindows() { return !QGuiApplication::platformName().startsWith("wayland"); }

// What the window manager draws round a window with a title bar, as last seen; nothing where there is none.
std::optional<QMargins>& Frame() {
  static std::optional<QMargins> frame;
  return frame;
}

bool NoWindowManager() { return Frame() && Frame()->isNull(); }

// Whether the key changes or ends a line of text, and would not move about in a list or on a board.
bool IsTyping(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
      return true;
    default:
      break;
  }
  if (event.matches(QKeySequence::Paste)) return true;
  const bool command = (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
  return !command && !event.text().isEmpty() && event.text().front().isPrint();
}

void ActivateEnabledForm() {
  const QWidgetList windows = QApplication::topLevelWidgets();
  for (QWidget* window : windows) {
    auto* form = dynamic_cast<NativeWindow*>(window);
    if (form != nullptr && form->takes_input && form->isVisible() && form->windowType() != Qt::Tool) form->TakeKeys();
  }
}

}  // namespace

NativeWindow::NativeWindow(FormEvents& events, const FormStyle& style)
    : QWidget(nullptr, FlagsOf(style)), events_(events), style_(style) {
  setFont(ProgramFont());
  client_.setMouseTracking(true);
  client_.installEventFilter(this);
  setAttribute(Qt::WA_ShowWithoutActivating, style.round || style.frame == FormStyle::Frame::kSizableWidth);
  activation_.setSingleShot(true);
  activation_.callOnTimeout([this] { AwaitActivation(); });
  settling_.setSingleShot(true);
  settling_.callOnTimeout([this] { SettleOnTop(); });
}

NativeWindow::~NativeWindow() {
  // The windows that belong to this one are their own owners.
  const auto windows = findChildren<NativeWindow*>(Qt::FindDirectChildrenOnly);
  for (NativeWindow* window : windows) window->setParent(nullptr);
}

NativeWindow* NativeWindow::Of(const QWidget* widget) {
  for (; widget != nullptr; widget = widget->isWindow() ? nullptr : widget->parentWidget()) {
    if (const auto* window = dynamic_cast<const NativeWindow*>(widget)) return const_cast<NativeWindow*>(window);
  }
  return nullptr;
}

QMenuBar& NativeWindow::Bar() {
  if (bar_ == nullptr) {
    bar_ = new QMenuBar(this);
    bar_->setNativeMenuBar(false);
    bar_->setFont(ProgramFont(9));
  }
  return *bar_;
}

void NativeWindow::SizeClient(QSizeF twips) {
  const QSize client = PixelsOf(twips);
  const QSize whole = client + QSize(2 * Edge(), 2 * Edge() + BarHeight());
  switch (style_.frame) {
    case FormStyle::Frame::kSizable:
      setMinimumSize(whole / 3);
      resize(whole);
      break;
    case FormStyle::Frame::kSizableWidth:
      setMinimumSize(ToPixels(style_.scale_width), whole.height());
      setMaximumSize(QWIDGETSIZE_MAX, whole.height());
      resize(whole);
      break;
    default:
      setFixedSize(whole);
  }
  // On the way there the limits alone may have made it another size.
  client_twips_ = twips;
  if (style_.round) setMask(RoundRegion(whole));
  LayClient();
}

void NativeWindow::Rescale() {
  setFont(ProgramFont());
  if (bar_ != nullptr) bar_->setFont(ProgramFont(9));
  const auto menus = findChildren<QMenu*>();
  for (QMenu* menu : menus) menu->setFont(ProgramFont(9));
  if (!background_name_.empty()) SetBackground(background_name_);
  const bool filling = isMaximized() || isFullScreen();
  filling ? LayClient() : SizeClient(client_twips_);
  events_.Form_Resize();
}

void NativeWindow::MoveTo(QPoint corner) {
  placed_ = true;
  centred_ = false;
  asked_ = place_ = corner;
  const QRect place(corner, OuterSize());
  if (!isWindow()) {
    move(parentWidget()->mapFromGlobal(corner));
  } else if (InSight(place)) {
    const QPoint nearest = place_ = WhollyOn(ScreenFor(place)->availableGeometry(), place);
    if (isVisible()) {  // the widget itself is slow to learn of its frame
      const QMargins frame = windowHandle()->frameMargins();
      windowHandle()->setPosition(nearest + QPoint(frame.left(), frame.top()));
    } else {
      move(nearest);
    }
  }
  given_ = place_;
  ShowWhereSeen();
}

QPoint NativeWindow::Corner() const { return isWindow() || !isVisible() ? place_ : mapToGlobal(QPoint()); }

QSize NativeWindow::OuterSize() const {
  if (!HasTitleBar()) return size();
  return isVisible() ? windowHandle()->frameGeometry().size() : size().grownBy(Frame().value_or(QMargins()));
}

void NativeWindow::SetShown(bool shown) {
  shown_ = shown;
  if (shown) CentreOnce();
  ShowWhereSeen();
}

void NativeWindow::BelongTo(NativeWindow& owner) {
  const bool part = style_.round || (!style_.title_bar && !PlacesWindows());
  setParent(&owner, part ? Qt::SubWindow : windowFlags());
}

void NativeWindow::TakeKeys() {
  // A window manager brings forward what it gives the keys to, and takes a request of its own amiss.
  if (NoWindowManager() || !isWindow()) raise();
  activateWindow();
}

void NativeWindow::StayOnTop(bool on) {
  on_top_ = on;
  forward_ = forward_ || on;
  if (windowHandle() == nullptr && isWindow()) setWindowFlag(Qt::WindowStaysOnTopHint, on);
  if (windowHandle() != nullptr) settling_.start(0);
}

void NativeWindow::SettleOnTop() {
  const bool forward = std::exchange(forward_, false);
  QWindow* window = windowHandle();
  if (window == nullptr || !shown_) return;
  if (window->flags().testFlag(Qt::WindowStaysOnTopHint) != on_top_) {
    overrideWindowFlags(windowFlags().setFlag(Qt::WindowStaysOnTopHint, on_top_));
    window->setFlag(Qt::WindowStaysOnTopHint, on_top_);
  }
  if (forward && (!on_top_ || NoWindowManager())) raise();
}

void NativeWindow::SetTabOrder(std::vector<QWidget*> order) {
  tab_order_ = std::move(order);
  for (std::size_t i = 1; i < tab_order_.size(); ++i) setTabOrder(tab_order_[i - 1], tab_order_[i]);
}

void NativeWindow::SetBackground(const std::string& picture) {
  background_name_ = picture;
  background_ = StoredPicture(picture);
  client_.update();
}

bool NativeWindow::event(QEvent* event) {
  // What reaches a window that is gone must not wake what it refers to.
  if (event->type() == QEvent::WindowActivate && shown_) {
    if (takes_input) {
      if (!activation_.isActive() || MeetFrame()) Activated();
    } else {
      QTimer::singleShot(0, this, [] { ActivateEnabledForm(); });
    }
  }
  return QWidget::event(event);
}

bool NativeWindow::eventFilter(QObject* /*client*/, QEvent* event) {
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

void NativeWindow::paintEvent(QPaintEvent* /*event*/) {
  if (Edge() == 0) return;
  QPainter painter(this);
  PaintEdge(painter, rect(), Edge::kRaised, palette());
}

void NativeWindow::resizeEvent(QResizeEvent* /*event*/) {
  LayClient();
  const QSize client = client_.size();
  if (client != PixelsOf(client_twips_)) client_twips_ = {ToTwips(client.width()), ToTwips(client.height())};
  if (!loading) events_.Form_Resize();
}

void NativeWindow::moveEvent(QMoveEvent* /*event*/) {
  if (isVisible() && isWindow()) place_ = windowHandle()->framePosition();
}

// Some window managers offer to minimise what is not meant to be: it would be hard to find again.
void NativeWindow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::WindowStateChange && isMinimized() && !style_.minimise_box) {
    QTimer::singleShot(0, this, [this] { setWindowState(windowState() & ~Qt::WindowMinimized); });
  }
  if (event->type() == QEvent::PaletteChange) events_.Form_SysColorsChanged();
  QWidget::changeEvent(event);
}

void NativeWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (style_.close_box && events_.unload) events_.unload();
}

void NativeWindow::keyPressEvent(QKeyEvent* event) {
  auto* focused = qobject_cast<QPushButton*>(focusWidget());
  QPushButton* pressed = nullptr;
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    pressed = focused != nullptr ? focused : default_button;
  } else if (event->key() == Qt::Key_Escape) {
    if (style_.escape_closes) return events_.unload();
    pressed = cancel_button;
  }
  if (pressed != nullptr) {
    pressed->click();
  } else if (!PassToTextLine(*event)) {
    QWidget::keyPressEvent(event);
  }
}

bool NativeWindow::PassToTextLine(const QKeyEvent& event) {
  if (text_line.isNull() || focusWidget() == text_line || !IsTyping(event)) return false;
  if (NativeWindow* home = Of(text_line); home != this) {
    client_.setFocus();
    if (home->takes_input) home->TakeKeys();
  }
  text_line->setFocus();
  QKeyEvent copy(event.type(), event.key(), event.modifiers(), event.text(), event.isAutoRepeat(),
                 static_cast<ushort>(event.count()));
  QApplication::sendEvent(text_line, &copy);
  return true;
}

bool NativeWindow::HasTitleBar() const {
  return isWindow() && style_.title_bar && style_.frame != FormStyle::Frame::kNone;
}

int NativeWindow::Edge() const {
  return style_.frame == FormStyle::Frame::kFixed && !style_.title_bar ? std::max(2, ToPixels(kOwnFrame)) : 0;
}

int NativeWindow::BarHeight() const { return bar_ == nullptr ? 0 : bar_->sizeHint().height(); }

void NativeWindow::LayClient() {
  const int bar = BarHeight();
  if (bar_ != nullptr) bar_->setGeometry(0, 0, width(), bar);
  client_.setGeometry(rect().adjusted(Edge(), Edge() + bar, -Edge(), -Edge()));
}

void NativeWindow::CentreOnce() {
  if (style_.start != FormStyle::Start::kCentred || placed_) return;
  QRect place({}, OuterSize());
  place.moveCenter(screen()->availableGeometry().center());
  MoveTo(place.topLeft());
  centred_ = true;
}

// Whether the frame round the window is known, or there will be none. A centred window is centred with it.
bool NativeWindow::MeetFrame() {
  if (!HasTitleBar() || NoWindowManager() || windowHandle() == nullptr) return true;
  const QMargins frame = windowHandle()->frameMargins();
  if (frame.isNull()) return false;
  if (std::exchange(centred_, false) && frame != Frame()) {
    placed_ = false;
    CentreOnce();
    centred_ = false;
  }
  Frame() = frame;
  return true;
}

// Some window managers tell of the frame only after the activation, and some hand the activation to another window; the
// program's own order of steps relies on both.
void NativeWindow::AwaitActivation() {
  constexpr int kLookMs = 20;
  const bool framed = MeetFrame();
  if ((!framed || !isActiveWindow()) && --looks_left_ > 0) return activation_.start(kLookMs);
  if (!framed && !Frame()) Frame() = QMargins();
  Activated();
}

// A window that is placed out of sight is not shown, whatever the window manager thinks of such places.
void NativeWindow::ShowWhereSeen() {
  const bool seen = shown_ && InSight({place_, OuterSize()});
  if (seen == isVisible()) return;
  const bool had_keys = isActiveWindow();
  if (seen && !isWindow()) had_focus_ = window()->focusWidget();
  setVisible(seen);
  if (!seen) {
    activation_.stop();
    if (isWindow()) QTimer::singleShot(0, this, [this] { ForgetHidden(); });
    // Without a window manager, or with some, nobody else would give the keys to another window.
    if (had_keys && isWindow()) ActivateEnabledForm();
    if (had_focus_ != nullptr) had_focus_->setFocus();
    return;
  }
  if (!isWindow()) raise();
  if (style_.round) return;
  if (text_line != nullptr && Of(text_line) != this) {
    client_.setFocus();  // no control uses up what is typed
  } else if (focusWidget() == nullptr || !isWindow()) {
    FocusFirstStop();
  }
  looks_left_ = isWindow() && !testAttribute(Qt::WA_ShowWithoutActivating) ? 15 : 1;
  activation_.start(0);
}

// Assistive tools go on seeing a window that is only hidden.
void NativeWindow::ForgetHidden() {
  if (!isVisible()) destroy();
}

// The toolkit would begin with what was put on the window first.
void NativeWindow::FocusFirstStop() const {
  const auto first = std::find_if(tab_order_.begin(), tab_order_.end(), [](const QWidget* stop) {
    return stop->isEnabled() && (stop->focusPolicy() & Qt::TabFocus) != 0;
  });
  if (first != tab_order_.end()) (*first)->setFocus();
}

void NativeWindow::Activated() {
  activation_.stop();
  if (!shown_) return;
  events_.Form_Activate();
  events_.Form_GotFocus();
}

bool NativeWindow::ClientMouse(const QMouseEvent& event) {
  // What a control lets through is not meant for the window.
  if (client_.childAt(event.position().toPoint()) != nullptr) return true;
  const auto x = static_cast<float>(ToTwips(event.position().x()));
  const auto y = static_cast<float>(ToTwips(event.position().y()));
  if (event.type() == QEvent::MouseButtonPress) {
    events_.Form_MouseDown(static_cast<int>(event.button()), static_cast<int>(event.modifiers() >> 25U) & 7, x, y);
  } else if (event.button() == Qt::LeftButton) {
    events_.Form_Click();
  }
  return true;
}

void NativeWindow::PaintClient() {
  QPainter painter(&client_);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.fillRect(client_.rect(), QtColor(background_color));
  if (!background_.isNull()) painter.drawPixmap(client_.rect(), background_);
}

}  // namespace morva
