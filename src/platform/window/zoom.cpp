#include "platform/window/zoom.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenuBar>
#include <QScreen>
#include <QWheelEvent>
#include <QWindow>
#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "platform/controls/control.h"
#include "platform/controls/screen_reader.h"
#include "platform/drawing/fonts.h"
#include "platform/drawing/pixels.h"
#include "platform/window/drag.h"
#include "platform/window/native_window.h"
#include "platform/window/placing.h"
#include "platform/window/session.h"
#include "platform/window/stacking.h"

namespace morva {

namespace {

constexpr std::array<double, 6> kSteps{0.75, 1, 1.25, 1.5, 2, 3};
constexpr int kWheelStep = 120;  // eighths of a degree

// What has to fit the screen, in twips: the client area of the main window, and the width of the tool window.
QSizeF main_client;
double tool_width = 0;
// Until the user chooses a step, or the frame is known, the first one is still to be found.
bool is_first_step = false;

// The window that stays where it is: the main one; before there is one any that is seen.
const Stacking* Anchor() {
  const auto& all = Stacking::All();
  const auto first = std::find_if(all.begin(), all.end(), [](const Stacking* window) {
    return window->Window().isVisible() && window->Window().isWindow();
  });
  return first == all.end() ? nullptr : *first;
}

// Measures by another zoom for as long as it lives.
class AtZoom {
 public:
  explicit AtZoom(double factor) : before_(std::exchange(zoom_factor, factor)) {}
  ~AtZoom() { zoom_factor = before_; }
  AtZoom(const AtZoom&) = delete;
  AtZoom& operator=(const AtZoom&) = delete;

 private:
  double before_;
};

int MenuHeight() {
  QMenuBar bar;
  bar.setFont(ProgramFont(9));
  bar.addAction("M");
  return bar.sizeHint().height();
}

// Whether the main window fits the screen at that zoom, with so many pixels of frame round it, and with the tool window
// beside it, where that is asked for.
bool Fits(double factor, QSize frame, bool with_tool) {
  const AtZoom measuring(factor);
  const QSize room = QGuiApplication::primaryScreen()->availableSize() - frame;
  const bool docked = !CanPlaceWindows();
  const int beside = with_tool || docked ? ToPixels(tool_width) + (docked ? 0 : frame.width()) : 0;
  if (ToPixels(main_client.width()) + beside > room.width()) return false;
  // Measuring the menu takes fonts, which take as long to find as all else before the first window.
  constexpr int kHighBar = 100;  // pixels; no menu is as high
  const int height = ToPixels(main_client.height()), spare = room.height() - height;
  return spare >= kHighBar * std::max(1.0, factor) || (spare > 0 && MenuHeight() <= spare);
}

// The largest step at which the table can be seen whole: with the tool window, where that fits beside it at 100 per
// cent.
double LargestStep() {
  const QSize frame = QSize(0, 0).grownBy(Placing::Frame().value_or(QMargins()));
  const bool with_tool = Fits(1, frame, true);
  const auto last =
      std::find_if(kSteps.rbegin(), kSteps.rend(), [&](double step) { return Fits(step, frame, with_tool); });
  return last == kSteps.rend() ? kSteps.front() : *last;
}

double FirstStep(QSize frame) { return Fits(1, frame, false) ? 1 : kSteps.front(); }

// Has every control and window apply the zoom.
void Rescale(double factor) {
  zoom_factor = factor;
  QApplication::setFont(ProgramFont());
  const QWidgetList widgets = QApplication::allWidgets();
  for (QWidget* widget : widgets) {
    QEvent changed(QEvent::StyleChange);  // the style's lengths have changed
    QApplication::sendEvent(widget, &changed);
  }
  RescaleControls();
  for (const Stacking* window : Stacking::All()) window->Window().Rescale();
}

QPoint ClientCorner(const Stacking& window) {
  return window.Place().Corner() + window.Place().WithinFrame() + window.Window().Client().pos();
}

void Resize(double factor) {
  const Stacking* anchor = Anchor();
  if (factor == zoom_factor || anchor == nullptr) return;
  const double ratio = factor / zoom_factor;
  const QRect frame(anchor->Place().Corner(), anchor->Place().OuterSize());
  const QPoint client = ClientCorner(*anchor);
  QPoint corner = anchor->Place().AskedCorner();
  std::vector<std::pair<const Stacking*, QPoint>> others;  // and where each of them stood
  for (const Stacking* window : Stacking::All()) {
    const bool moves = window != anchor && window->Window().isWindow() && window->Place().IsPlaced();
    if (moves) others.emplace_back(window, window->Place().AskedCorner());
  }

  Rescale(factor);
  const QSize size = anchor->Place().OuterSize();
  // From the anchor's corner to another window's: one that stands over the anchor keeps its place on the client area,
  // one at its right keeps to the frame, which does not grow.
  const QPoint inside = ClientCorner(*anchor) - anchor->Place().Corner();
  const auto moved = [&](QPoint before) -> QPoint {
    if (before.x() < frame.right()) return inside + (before - client) * ratio;
    return QPoint(size.width(), 0) + (before - frame.topRight() - QPoint(1, 0)) * ratio;
  };
  // One window alone stands in the middle of the screen, and stays there.
  const bool alone =
      std::none_of(others.begin(), others.end(), [](const auto& other) { return other.first->Window().isVisible(); });
  if (alone) corner += QRect({}, frame.size()).center() - QRect({}, size).center();
  // It makes room for its tool window.
  QRect all(corner, size);
  for (const auto& [window, before] : others) {
    const bool beside = window->Window().isVisible() && window->Window().windowType() == Qt::Tool;
    if (!beside || window->Window().screen() != anchor->Window().screen()) continue;
    all |= QRect(corner + moved(before), window->Place().OuterSize());
  }
  anchor->Place().MoveTo(corner, all);
  const QPoint first = anchor->Window().screen()->virtualGeometry().topLeft();
  for (const auto& [window, before] : others) {
    const QPoint after = anchor->Place().Corner() + moved(before);
    window->Place().MoveTo({std::max(after.x(), first.x()), std::max(after.y(), first.y())});
  }
  for (const Stacking* window : Stacking::All()) window->Place().KeepWithinOwner();
  Drag::GoOnAtNewSize();
}

// By the user. What flies has been told where to in pixels of the old zoom.
void Choose(double step) {
  is_first_step = false;
  const auto flies = [](const Stacking* window) { return window->Window().Style().round; };
  if (std::none_of(Stacking::All().begin(), Stacking::All().end(), flies)) Resize(step);
  screen_reader.Say(std::to_string(std::lround(100 * zoom_factor)) + " per cent");
}

void Step(int direction) {
  const auto now = std::find(kSteps.begin(), kSteps.end(), zoom_factor) - kSteps.begin();
  const double next =
      kSteps.at(static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(now + direction, 0, kSteps.size() - 1)));
  Choose(direction < 0 ? next : std::max(zoom_factor, std::min(next, LargestStep())));
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
      if (pressed) Choose(1);
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

}  // namespace

void Zoom::BeginFor(double client_width, double client_height, double beside) {
  main_client = {client_width, client_height};
  tool_width = beside;
  is_first_step = true;
  constexpr QSize kUsualFrame(10, 36);  // pixels
  zoom_factor = FirstStep(kUsualFrame);
  QApplication::setFont(ProgramFont());
  // The frame that the window manager really draws shows only with the first window that has one.
  Stacking::frame_is_known = [](QSize frame) {
    if (std::exchange(is_first_step, false)) Resize(FirstStep(frame));
  };
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
