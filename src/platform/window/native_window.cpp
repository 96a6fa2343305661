#include "platform/window/native_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QStyleOptionDockWidget>
#include <algorithm>
#include <utility>

#include "platform/controls/qt_keys.h"
#include "platform/drawing/desktop_colors.h"
#include "platform/drawing/edge.h"
#include "platform/drawing/fonts.h"
#include "platform/drawing/picture.h"
#include "platform/drawing/pixels.h"
#include "platform/window/session.h"

namespace morva {

namespace {

// A dialog that the window manager draws no frame for has this one of its own, and a docked window this strip for its
// caption. Twips.
constexpr double kOwnFrame = 45;
constexpr double kStrip = 330;

QSize PixelsOf(QSizeF twips) { return {ToPixels(twips.width()), ToPixels(twips.height())}; }

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

// Whether the key changes or ends a line of text, and would not move about in a list or on a board.
bool IsTyping(const QKeyEvent& event) { return IsEnter(event) || WritesText(event); }

}  // namespace

bool WritesText(const QKeyEvent& key) {
  if (key.key() == Qt::Key_Backspace || key.key() == Qt::Key_Delete || key.matches(QKeySequence::Paste)) return true;
  const bool command = (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
  return !command && !key.text().isEmpty() && key.text().front().isPrint();
}

NativeWindow::NativeWindow(FormEvents& events, const FormStyle& style)
    : QWidget(nullptr, FlagsOf(style)), events_(events), style_(style) {
  setFont(ProgramFont());
  client_.installEventFilter(this);
  setAttribute(Qt::WA_ShowWithoutActivating, style.round || style.frame == FormStyle::Frame::kSizableWidth);
}

NativeWindow::~NativeWindow() {
  // The windows that belong to this one are their own owners. (Asking Qt for children of this class would find every
  // widget: the class has no meta-object of its own.)
  const QObjectList all = children();
  for (QObject* child : all) {
    if (auto* window = dynamic_cast<NativeWindow*>(child)) window->setParent(nullptr);
  }
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

bool NativeWindow::HasTitleBar() const {
  return isWindow() && style_.title_bar && style_.frame != FormStyle::Frame::kNone;
}

int NativeWindow::Edge() const {
  return style_.frame == FormStyle::Frame::kFixed && !style_.title_bar ? std::max(2, ToPixels(kOwnFrame)) : 0;
}

int NativeWindow::BarHeight() const { return bar_ == nullptr ? 0 : bar_->sizeHint().height(); }

int NativeWindow::StripHeight() const { return IsDocked() ? ToPixels(kStrip) : 0; }

int NativeWindow::DockWidth() const { return docked_ == nullptr ? 0 : ToPixels(docked_->style_.scale_width); }

void NativeWindow::SizeClient(QSizeF twips) {
  const QSize client = PixelsOf(twips);
  const QSize whole = client + QSize(2 * Edge() + DockWidth(), 2 * Edge() + BarHeight() + StripHeight());
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
  LayClient();
}

void NativeWindow::LayClient() {
  const int bar = BarHeight();
  if (bar_ != nullptr) bar_->setGeometry(0, 0, width(), bar);
  client_.setGeometry(rect().adjusted(Edge(), Edge() + bar + StripHeight(), -Edge() - DockWidth(), -Edge()));
  if (docked_ != nullptr) docked_->move(width() - DockWidth(), bar);
}

void NativeWindow::Rescale() {
  setFont(ProgramFont());
  if (bar_ != nullptr) bar_->setFont(ProgramFont(9));
  const auto menus = findChildren<QMenu*>();
  for (QMenu* menu : menus) menu->setFont(ProgramFont(9));
  if (isMaximized() || isFullScreen()) {
    LayClient();
  } else {
    SizeClient(client_twips_);
  }
  events_.Form_Resize();
}

void NativeWindow::resizeEvent(QResizeEvent* /*event*/) {
  LayClient();
  const QSize client = client_.size();
  if (client != PixelsOf(client_twips_)) client_twips_ = {ToTwips(client.width()), ToTwips(client.height())};
  events_.Form_Resize();
}

void NativeWindow::BelongTo(NativeWindow& owner) {
  const bool tool = style_.frame == FormStyle::Frame::kSizableWidth;
  const bool child = style_.within_owner || (!CanPlaceWindows() && (tool || !style_.title_bar));
  setParent(&owner, child ? Qt::SubWindow : windowFlags());
  if (!IsDocked()) return;
  owner.docked_ = this;
  owner.SizeClient(owner.client_twips_);
  SizeClient(client_twips_);
}

void NativeWindow::TakeFocus() {
  // A window manager brings forward what it gives the focus to, and takes a request of its own amiss.
  if (!HasWindowManager() || !isWindow()) raise();
  activateWindow();
}

// Qt would begin with what was put on the window first.
void NativeWindow::FocusFirstStop() {
  const bool types_elsewhere = text_line != nullptr && Of(text_line) != this;
  const auto first = std::find_if(tab_order_.begin(), tab_order_.end(), [](const QWidget* stop) {
    return stop->isEnabled() && (stop->focusPolicy() & Qt::TabFocus) != 0;
  });
  if (types_elsewhere || (!isWindow() && first == tab_order_.end())) {
    client_.setFocus();  // no control uses up what is typed
  } else if (first != tab_order_.end()) {
    (*first)->setFocus();
  }
}

void NativeWindow::ForgetHidden() {
  if (!isVisible()) destroy();
}

void NativeWindow::SetTabOrder(std::vector<QWidget*> order) {
  tab_order_ = std::move(order);
  for (std::size_t i = 1; i < tab_order_.size(); ++i) setTabOrder(tab_order_[i - 1], tab_order_[i]);
}

void NativeWindow::SetBackground(const std::string& picture) {
  background_ = picture;
  client_.update();
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
  QPainter painter(this);
  if (Edge() > 0) PaintEdge(painter, rect(), Edge::kRaised, palette());
  if (!IsDocked()) return;
  QStyleOptionDockWidget strip;
  strip.initFrom(this);
  strip.rect.setHeight(StripHeight());
  strip.title = windowTitle();
  style()->drawControl(QStyle::CE_DockWidgetTitle, &strip, &painter, this);
}

void NativeWindow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange) events_.Form_SysColorsChanged();
  if (event->type() == QEvent::WindowTitleChange) update();
  QWidget::changeEvent(event);
}

void NativeWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (style_.close_box && events_.unload) events_.unload();
}

void NativeWindow::keyPressEvent(QKeyEvent* event) {
  auto* focused = qobject_cast<QPushButton*>(focusWidget());
  QPushButton* pressed = nullptr;
  if (IsEnter(*event)) {
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
    if (home->takes_input) home->TakeFocus();
  }
  text_line->setFocus();
  QKeyEvent copy(event.type(), event.key(), event.modifiers(), event.text(), event.isAutoRepeat(),
                 static_cast<ushort>(event.count()));
  QApplication::sendEvent(text_line, &copy);
  return true;
}

bool NativeWindow::ClientMouse(const QMouseEvent& event) {
  // What a control lets through is not meant for the window.
  if (client_.childAt(event.position().toPoint()) != nullptr) return true;
  const auto x = static_cast<float>(ToTwips(event.position().x()));
  const auto y = static_cast<float>(ToTwips(event.position().y()));
  if (event.type() == QEvent::MouseButtonPress) {
    events_.Form_MouseDown(static_cast<int>(event.button()), ShiftOf(event.modifiers()), x, y);
  } else if (event.button() == Qt::LeftButton) {
    events_.Form_Click();
  }
  return true;
}

void NativeWindow::PaintClient() {
  QPainter painter(&client_);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  if (style_.round) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QtColor(background_color));
    painter.drawEllipse(client_.rect());
    return;
  }
  painter.fillRect(client_.rect(), QtColor(background_color));
  if (!background_.empty()) painter.drawPixmap(client_.rect(), StoredPicture(background_));
}

}  // namespace morva
