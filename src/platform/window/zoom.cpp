#include "platform/window/zoom.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenuBar>
#include <QScreen>
#include <QWheelEvent>
#include <QWindow>
#include <algorithm>
#include <array>
#include <optional>
#include <utility>
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

// What has to fit the screen, until the user chooses a size or the frame is known: the client area, in twips.
std::optional<QSizeF> to_fit;

std::vector<NativeWindow*> Windows() {
  std::vector<NativeWindow*> windows;
  const QWidgetList all = QApplication::allWidgets();
  for (QWidget* widget : all) {
    if (auto* window = dynamic_cast<NativeWindow*>(widget)) windows.push_back(window);
  }
  return windows;
}

// The window that stays where it is: the main one, which has a menu; before there is one any that is seen.
NativeWindow* Anchor(const std::vector<NativeWindow*>& windows) {
  NativeWindow* anchor = nullptr;
  const auto rank = [](const NativeWindow& window) {
    return window.HasMenu() ? 2 : window.windowType() == Qt::Window ? 1 : 0;
  };
  for (NativeWindow* window : windows) {
    if (!window->isVisible() || !window->isWindow()) continue;
    if (anchor == nullptr || rank(*window) > rank(*anchor)) anchor = window;
  }
  return anchor;
}

// The client area's corner within the frame.
QPoint ClientPlace(NativeWindow& window) {
  const QMargins frame = window.windowHandle()->frameMargins();
  return QPoint(frame.left(), frame.top()) + window.Client().pos();
}

// Where the corner of another window goes, from the anchor's: one that stands over the anchor, or is to fly over it,
// keeps its place on the client area, one at its right keeps to the frame, which does not grow.
class Places {
 public:
  explicit Places(NativeWindow& anchor)
      : anchor_(anchor),
        frame_(anchor.Corner(), anchor.OuterSize()),
        client_(anchor.Corner() + ClientPlace(anchor)),
        factor_(size_factor) {}

  QPoint Moved(QPoint corner) const {
    const double ratio = size_factor / factor_;
    if (corner.x() >= frame_.right()) {
      const QPoint beside(frame_.right() + 1, frame_.top());
      return QPoint(anchor_.OuterSize().width(), 0) + (corner - beside) * ratio;
    }
    return ClientPlace(anchor_) + (corner - client_) * ratio;
  }

  // Where the twips of the screen begin, so that what is measured on the client area goes on being true.
  QPoint Origin() const {
    return anchor_.Corner() + ClientPlace(anchor_) - (client_ - NativeWindow::screen_origin) * (size_factor / factor_);
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
  std::vector<std::pair<NativeWindow*, QPoint>> others;  // and where each of them stood
  for (NativeWindow* window : windows) {
    if (window != anchor) others.emplace_back(window, window->AskedCorner());
  }

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
  const bool alone =
      std::none_of(others.begin(), others.end(), [](const auto& other) { return other.first->isVisible(); });
  if (alone) corner -= QPoint(grown.width(), grown.height());
  // It makes room for its tool window.
  QRect all(corner, anchor->OuterSize());
  for (const auto& [window, before] : others) {
    const bool beside = window->isVisible() && window->windowType() == Qt::Tool;
    if (!beside || window->screen() != anchor->screen()) continue;
    all |= QRect(corner + places.Moved(before), window->OuterSize());
  }
  anchor->MoveTo(corner, all);
  NativeWindow::screen_origin = places.Origin();
  const QRect screens = anchor->screen()->virtualGeometry();
  for (const auto& [window, before] : others) {
    if (!window->Placed() || window->Style().within_owner) continue;
    QPoint after = anchor->Corner() + places.Moved(before);
    if (window->isVisible()) after = {std::max(after.x(), screens.left()), std::max(after.y(), screens.top())};
    window->MoveTo(after);
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
  to_fit.reset();
  event.accept();
  return true;
}

bool TakesWheel(QWheelEvent& event) {
  static int turned = 0;
  if (event.modifiers() != Qt::ControlModifier) return false;
  turned += event.angleDelta().y();
  for (; turned >= kWheelStep; turned -= kWheelStep) Step(1);
  for (; turned <= -kWheelStep; turned += kWheelStep) Step(-1);
  to_fit.reset();
  event.accept();
  return true;
}

int MenuHeight() {
  QMenuBar bar;
  bar.setFont(ProgramFont(9));
  bar.addAction("M");
  return bar.sizeHint().height();
}

// The largest step up to 100 per cent at which what has to fit does, within a frame.
double FittingStep(QSize frame) {
  const double now = std::exchange(size_factor, 1);
  constexpr int kHighBar = 100;  // pixels; no menu is as high
  const QSize room = QGuiApplication::primaryScreen()->availableSize() - frame;
  const int width = ToPixels(to_fit->width()), height = ToPixels(to_fit->height());
  // Measuring the menu takes fonts, which take as long to find as all else before the first window.
  const bool ample = height + kHighBar <= room.height();
  const bool fits = width <= room.width() && (ample || height + MenuHeight() <= room.height());
  size_factor = now;
  return fits ? 1 : kSteps.front();
}

}  // namespace

void Zoom::BeginFor(double client_width, double client_height) {
  to_fit.emplace(client_width, client_height);
  constexpr QSize kUsualFrame(10, 36);  // pixels
  size_factor = FittingStep(kUsualFrame);
  QApplication::setFont(ProgramFont());
}

void Zoom::FrameIsKnown(QSize frame) {
  if (!to_fit) return;
  const double step = FittingStep(frame);
  to_fit.reset();
  Resize(step);
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
