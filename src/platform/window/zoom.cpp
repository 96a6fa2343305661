#include "platform/window/zoom.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenuBar>
#include <QScreen>
#include <QWheelEvent>
#include <QWindow>
#include <algorithm>
#include <array>
#include <vector>

#include "platform/controls/control.h"
#include "platform/drawing/fonts.h"
#include "platform/drawing/pixels.h"
#include "platform/window/drag.h"
#include "platform/window/native_window.h"

namespace morva {

namespace {

constexpr std::array<double, 6> kSteps{0.75, 1, 1.25, 1.5, 2, 3};
constexpr int kWheelStep = 120;  // eighths of a degree

std::vector<NativeWindow*> Windows() {
  std::vector<NativeWindow*> windows;
  const QWidgetList all = QApplication::allWidgets();
  for (QWidget* widget : all) {
    if (auto* window = dynamic_cast<NativeWindow*>(widget)) windows.push_back(window);
  }
  return windows;
}

// The window that stays where it is: the main one, before there is one any that is seen.
NativeWindow* Anchor(const std::vector<NativeWindow*>& windows) {
  NativeWindow* anchor = nullptr;
  for (NativeWindow* window : windows) {
    if (window->isVisible() && window->isWindow() && (anchor == nullptr || window->windowType() == Qt::Window))
      anchor = window;
  }
  return anchor;
}

QPoint ClientCorner(NativeWindow& window) {
  const QMargins frame = window.windowHandle()->frameMargins();
  return window.Corner() + QPoint(frame.left(), frame.top()) + window.Client().pos();
}

QRect Outer(const NativeWindow& window) { return {window.Corner(), window.OuterSize()}; }

// Where the corner of another window goes: one that stands over the anchor, or is to fly over it, keeps its place on
// the client area, one at its right keeps to the frame, which does not grow.
class Places {
 public:
  explicit Places(NativeWindow& anchor)
      : anchor_(anchor), frame_(Outer(anchor)), client_(ClientCorner(anchor)), factor_(size_factor) {}

  QPoint Moved(QPoint corner) const {
    const double ratio = size_factor / factor_;
    const QRect frame = Outer(anchor_);
    if (corner.x() >= frame_.right()) {
      const QPoint beside(frame_.right() + 1, frame_.top());
      return QPoint(frame.right() + 1, frame.top()) + (corner - beside) * ratio;
    }
    return ClientCorner(anchor_) + (corner - client_) * ratio;
  }

  // Where the twips of the screen begin, so that what is measured on the client area goes on being true.
  QPoint Origin() const {
    return ClientCorner(anchor_) - (client_ - NativeWindow::screen_origin) * (size_factor / factor_);
  }

 private:
  NativeWindow& anchor_;
  QRect frame_;
  QPoint client_;
  double factor_;
};

void Resize(double factor) {
  if (factor == size_factor) return;
  const std::vector<NativeWindow*> windows = Windows();
  NativeWindow* anchor = Anchor(windows);
  if (anchor == nullptr) return;
  const Places places(*anchor);
  const QSize old_size = anchor->OuterSize();
  QPoint corner = anchor->AskedCorner();
  std::vector<QPoint> corners;
  std::transform(windows.begin(), windows.end(), std::back_inserter(corners),
                 [](const NativeWindow* window) { return window->AskedCorner(); });

  size_factor = factor;
  QApplication::setFont(ProgramFont());
  const QWidgetList widgets = QApplication::allWidgets();
  for (QWidget* widget : widgets) {
    QEvent changed(QEvent::StyleChange);  // the style's lengths have changed
    QApplication::sendEvent(widget, &changed);
  }
  RescaleControls();
  for (NativeWindow* window : windows) window->Rescale();
  // One window alone stands in the middle of the screen, and stays there.
  const QSize grown = (anchor->OuterSize() - old_size) / 2;
  const auto seen = [](const NativeWindow* window) { return window->isVisible(); };
  if (std::count_if(windows.begin(), windows.end(), seen) == 1) corner -= QPoint(grown.width(), grown.height());
  anchor->MoveTo(corner);
  NativeWindow::screen_origin = places.Origin();
  const QRect screens = anchor->screen()->virtualGeometry();
  for (std::size_t i = 0; i < windows.size(); ++i) {
    if (windows[i] == anchor || !windows[i]->Placed()) continue;
    corner = places.Moved(corners[i]);
    if (windows[i]->isVisible()) corner = {std::max(corner.x(), screens.left()), std::max(corner.y(), screens.top())};
    windows[i]->MoveTo(corner);
  }
  Drag::GoOnAtNewSize();
}

void Step(int direction) {
  const auto now = std::find(kSteps.begin(), kSteps.end(), size_factor) - kSteps.begin();
  Resize(kSteps.at(static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(now + direction, 0, kSteps.size() - 1))));
}

bool TakesKey(QKeyEvent& event) {
  const auto modifiers = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
  if (modifiers != Qt::ControlModifier) return false;
  const bool pressed = event.type() == QEvent::KeyPress;
  switch (event.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      if (pressed) Step(1);
      break;
    case Qt::Key_Minus:
      if (pressed) Step(-1);
      break;
    case Qt::Key_0:
      if (pressed) Resize(1);
      break;
    default:
      return false;
  }
  event.accept();
  return true;
}

bool TakesWheel(QWheelEvent& event) {
  static int turned = 0;
  if (event.modifiers() != Qt::ControlModifier) return false;
  turned += event.angleDelta().y();
  for (; turned >= kWheelStep; turned -= kWheelStep) Step(1);
  for (; turned <= -kWheelStep; turned += kWheelStep) Step(-1);
  event.accept();
  return true;
}

int MenuHeight() {
  QMenuBar bar;
  bar.setFont(ProgramFont(9));
  bar.addAction("M");
  return bar.sizeHint().height();
}

}  // namespace

void Zoom::BeginFor(double client_width, double client_height) {
  constexpr QSize kFrame(10, 36);  // pixels; what the window manager really draws shows only later
  const QSize room = QGuiApplication::primaryScreen()->availableSize() - kFrame;
  constexpr int kHighBar = 100;  // pixels; no menu is as high
  size_factor = 1;
  const int width = ToPixels(client_width), height = ToPixels(client_height);
  // Measuring the menu takes fonts, which take as long to find as all else before the first window.
  const bool ample = height + kHighBar <= room.height();
  if (width > room.width() || (!ample && height + MenuHeight() > room.height())) size_factor = kSteps.front();
  QApplication::setFont(ProgramFont());
}

bool Zoom::Takes(QEvent& event) {
  switch (event.type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
      return TakesKey(static_cast<QKeyEvent&>(event));
    case QEvent::Wheel:
      return TakesWheel(static_cast<QWheelEvent&>(event));
    default:
      return false;
  }
}

}  // namespace morva
