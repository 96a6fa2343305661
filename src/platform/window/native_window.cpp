#include "platform/window/native_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "platform/controls/native.h"
#include "platform/drawing/edge.h"
#include "platform/drawing/fonts.h"
#include "platform/drawing/picture.h"
#include "platform/drawing/pixels.h"
#include "platform/drawing/qt_color.h"
#include "platform/window/input.h"

namespace morva {

namespace {

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
bool IsTyping(const QKeyEvent& event) {
  return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter || WritesText(event);
}

}  // namespace

NativeWindow::NativeWindow(FormEvents& events, const FormStyle& style)
    : QWidget(nullptr, FlagsOf(style)), events_(events), style_(style) {
  setFont(ProgramFont());
  client_.installEventFilter(this);
  setAttribute(Qt::WA_ShowWithoutActivating, style.round || style.frame == FormStyle::Frame::kSizableWidth);
  activation_.setSingleShot(true);
  activation_.callOnTimeout([this] { AwaitActivation(); });
  settling_.setSingleShot(true);
  settling_.callOnTimeout([this] { SettleOnTop(); });
  standing_.setSingleShot(true);
  standing_.callOnTimeout([this] { StandBesideOwner(); });
}

NativeWindow::~NativeWindow() {
  // The windows that belong to this one are their own owners. (Asking the toolkit for children of this class would find
  // every widget: the class has no meta-object of its own.)
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

NativeWindow* NativeWindow::Main() {
  const QWidgetList windows = QApplication::topLevelWidgets();
  const auto main = std::find_if(windows.begin(), windows.end(), [](const QWidget* window) {
    return Of(window) != nullptr && window->isVisible() && window->windowType() == Qt::Window;
  });
  return main == windows.end() ? nullptr : Of(*main);
}

QMenuBar& NativeWindow::Bar() {
  if (bar_ == nullptr) {
    bar_ = new QMenuBar(this);
    bar_->setNativeMenuBar(false);
    bar_->setFont(ProgramFont(9));
  }
  return *bar_;
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
  if (event->type() == QEvent::WindowActivate && SharesKeys() && QApplication::activeWindow() == this) {
    // The focus stays where it was in the window that it belongs to; from there it also goes to this one.
    QTimer::singleShot(0, this, [this] { QApplication::setActiveWindow(parentWidget()); });
  }
  // What reaches a window that is gone must not wake what it refers to.
  if (event->type() == QEvent::WindowActivate && shown_) {
    if (takes_input) {
      if (!activation_.isActive() || MeetFrame()) Activated();
    } else {
      QTimer::singleShot(0, this, [] { ActivateEnabled(); });
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
  if (!background_.isNull()) painter.drawPixmap(client_.rect(), background_);
}

}  // namespace morva
