#include "platform/window/drag.h"

#include <QApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPixmap>
#include <QTimer>
#include <optional>

#include "platform/controls/control.h"
#include "platform/drawing/picture.h"
#include "platform/drawing/pixels.h"
#include "platform/window/native_window.h"
#include "platform/window/session.h"

namespace morva {

namespace {

// Where a drag is: over a control, over the bare window (no control), or outside or over another window (no place at
// all).
struct Target {
  Control* control = nullptr;
  float x = 0, y = 0;  // twips
};

// A place of the pointer: within the window, and on the screen, of which a window's own idea can be stale.
struct Pointer {
  explicit Pointer(const QMouseEvent& event)
      : window(event.scenePosition().toPoint()), screen(event.globalPosition().toPoint()) {}
  QPoint window, screen;
};

void GoOn();

struct Running {
  Running(Control& from, NativeWindow& begun_in, const Pointer& press) : source(from), window(begun_in), at(press) {
    deactivated.setSingleShot(true);
    deactivated.callOnTimeout(GoOn);
  }
  Control& source;
  NativeWindow& window;
  Pointer at;
  std::optional<Target> target;
  QTimer deactivated;               // runs from the deactivation of the window until that is sure to last
  std::optional<Pointer> released;  // where the button was released in the meantime
};

std::optional<Running> running;

bool SamePlace(const std::optional<Target>& a, const std::optional<Target>& b) {
  return a.has_value() == b.has_value() && (!a || a->control == b->control);
}

// Whether another window of ours lies there; it can't be told where the places on the screen don't fit.
bool Covered(const NativeWindow& window, const Pointer& at) {
  return window.mapToGlobal(at.window) == at.screen && QApplication::topLevelAt(at.screen) != &window;
}

std::optional<Target> TargetAt(NativeWindow& window, const Pointer& at) {
  const QWidget* client = &window.Client();
  const QPoint place = client->mapFrom(&window, at.window);
  if (!client->rect().contains(place) || Covered(window, at)) return std::nullopt;
  Control* control = ControlOf(client->childAt(place));
  const QWidget* widget = control != nullptr ? control->Native() : client;
  const QPoint pixels = widget->mapFrom(&window, at.window) - widget->contentsRect().topLeft();
  return Target{control, static_cast<float>(ToTwips(pixels.x())), static_cast<float>(ToTwips(pixels.y()))};
}

void Tell(const std::optional<Target>& target, DragState state) {
  if (!target) return;
  if (target->control == nullptr) {
    running->window.Events().Form_DragOver(running->source, target->x, target->y, state);
  } else if (target->control->DragOver) {
    target->control->DragOver(running->source, target->x, target->y, state);
  }
}

void MoveTo(const Pointer& at) {
  running->at = at;
  const std::optional<Target> target = TargetAt(running->window, at);
  if (SamePlace(target, running->target)) {
    running->target = target;
    Tell(target, DragState::kOver);
  } else {
    Tell(running->target, DragState::kLeave);
    running->target = target;
    Tell(target, DragState::kEnter);
  }
}

void Finish() {
  running.reset();
  QGuiApplication::restoreOverrideCursor();
}

void DropAt(const Pointer& at) {
  const std::optional<Target> target = TargetAt(running->window, at);
  Control& source = running->source;
  // The pointer may have come here without a movement.
  if (!SamePlace(target, running->target)) Tell(running->target, DragState::kLeave);
  Finish();
  if (target && target->control != nullptr && target->control->DragDrop) {
    target->control->DragDrop(source, target->x, target->y);
  }
}

void Cancel() {
  Tell(running->target, DragState::kLeave);
  Finish();
}

void GoOn() {
  running->deactivated.stop();
  if (!running->window.isActiveWindow()) {
    Cancel();
  } else if (running->released) {
    DropAt(*running->released);
  }
}

// A window that has just been clicked can hear late that it had been left before: it is lost only if it is not back in
// a moment, and a release waits for that.
void AwaitReactivation() {
  constexpr int kMomentMs = 250;
  running->deactivated.start(kMomentMs);
}

// As large as everything else on the window.
QCursor Hand(const QWidget& window) {
  constexpr int kSide = 32;
  constexpr int kFingertip = 20;
  const double scale = window.devicePixelRatioF();
  const double dots = scale * zoom_factor;  // a pixel of the layout
  QPixmap hand = StoredPicture("hand");
  const int side = qRound(kSide * dots);
  if (hand.width() != side) hand = hand.scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  hand.setDevicePixelRatio(scale);
  // Under X a cursor is measured in dots.
  const double unit = IsOnXServer() ? dots : zoom_factor;
  return QCursor(hand, qRound(kFingertip * unit), 0);
}

}  // namespace

void Drag::Begin(Control& source, const QMouseEvent& press) {
  NativeWindow* window = NativeWindow::Of(source.Native());
  if (window == nullptr || running) return;
  running.emplace(source, *window, Pointer(press));
  QGuiApplication::setOverrideCursor(Hand(*window));
  MoveTo(running->at);
}

void Drag::Abandon(const NativeWindow& window) {
  if (running && &running->window == &window) Cancel();
}

void Drag::GoOnAtNewSize() {
  if (!running) return;
  QGuiApplication::changeOverrideCursor(Hand(running->window));
  if (!running->released) MoveTo(running->at);
}

bool Drag::Takes(const QWidget& receiver, QEvent& event) {
  if (!running) return false;
  switch (event.type()) {
    case QEvent::MouseMove:
      if (!running->released) MoveTo(Pointer(static_cast<QMouseEvent&>(event)));
      return true;
    case QEvent::MouseButtonRelease:
      if (static_cast<QMouseEvent&>(event).button() != Qt::LeftButton) return true;
      running->released.emplace(static_cast<QMouseEvent&>(event));
      if (!running->deactivated.isActive()) DropAt(*running->released);
      return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      // The user goes on here: the window has not been left.
      if (running->released) {
        DropAt(*running->released);
        return false;
      }
      Cancel();
      return true;
    case QEvent::KeyPress:
      if (static_cast<QKeyEvent&>(event).key() != Qt::Key_Escape) return false;
      Cancel();
      return true;
    case QEvent::WindowDeactivate:
      if (receiver.window() == &running->window) AwaitReactivation();
      return false;
    case QEvent::WindowActivate:
      if (receiver.window() == &running->window && running->deactivated.isActive()) GoOn();
      return false;
    default:
      return false;
  }
}

}  // namespace morva
