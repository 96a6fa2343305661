#include "platform/drag.h"

#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPixmap>
#include <QTimer>
#include <optional>

#include "platform/form.h"
#include "platform/registry.h"
#include "platform/values.h"

namespace morva {

namespace {

// Where a drag is: over a control, over the bare window (no control), or outside (no place at all).
struct Target {
  Control* control = nullptr;
  QPointF twips;
};

struct Running {
  Control& source;
  Form& form;
  std::optional<Target> target;
  bool in_doubt = false;           // the window may have been lost
  std::optional<QPoint> released;  // where the button was released in the meantime
};

std::optional<Running> running;

bool SamePlace(const std::optional<Target>& a, const std::optional<Target>& b) {
  return a.has_value() == b.has_value() && (!a || a->control == b->control);
}

std::optional<Target> TargetAt(const Form& form, QPoint screen) {
  const QWidget* client = form.Client();
  const QPoint place = client->mapFromGlobal(screen);
  if (!client->rect().contains(place)) return std::nullopt;
  Control* control = ControlOf(client->childAt(place));
  const QWidget* widget = control != nullptr ? control->Native() : client;
  return Target{control, QPointF(widget->mapFromGlobal(screen) - widget->contentsRect().topLeft()) * kTwipsPerPixel};
}

void Tell(const std::optional<Target>& target, DragState state) {
  if (!target) return;
  const auto x = static_cast<float>(target->twips.x());
  const auto y = static_cast<float>(target->twips.y());
  if (target->control == nullptr) {
    running->form.Form_DragOver(running->source, x, y, state);
  } else if (target->control->DragOver) {
    target->control->DragOver(running->source, x, y, state);
  }
}

void MoveTo(QPoint screen) {
  const std::optional<Target> target = TargetAt(running->form, screen);
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

void DropAt(QPoint screen) {
  const std::optional<Target> target = TargetAt(running->form, screen);
  Control& source = running->source;
  Finish();
  if (target && target->control != nullptr && target->control->DragDrop) {
    target->control->DragDrop(source, static_cast<float>(target->twips.x()), static_cast<float>(target->twips.y()));
  }
}

void Cancel() {
  Tell(running->target, DragState::kLeave);
  Finish();
}

// A window that has just been clicked can hear late that it had been left before: whether it is lost shows a moment
// later, and a release waits for that.
void Doubt() {
  constexpr int kMomentMs = 60;
  running->in_doubt = true;
  QTimer::singleShot(kMomentMs, [] {
    if (!running || !running->in_doubt) return;
    running->in_doubt = false;
    if (!running->form.Native()->isActiveWindow()) {
      Cancel();
    } else if (running->released) {
      DropAt(*running->released);
    }
  });
}

QCursor Hand() {
  static const QCursor hand(QPixmap(":/pictures/hand.png"), 20, 0);
  return hand;
}

}  // namespace

void Drag::Begin(Control& source, QPoint screen) {
  Form* form = FormOf(source.Native());
  if (form == nullptr || running) return;
  running.emplace(Running{source, *form, std::nullopt, false, std::nullopt});
  QGuiApplication::setOverrideCursor(Hand());
  MoveTo(screen);
}

void Drag::Abandon(const Form& form) {
  if (running && &running->form == &form) Cancel();
}

bool Drag::Takes(const QWidget& receiver, QEvent& event) {
  if (!running) return false;
  switch (event.type()) {
    case QEvent::MouseMove:
      MoveTo(static_cast<QMouseEvent&>(event).globalPosition().toPoint());
      return true;
    case QEvent::MouseButtonRelease:
      if (static_cast<QMouseEvent&>(event).button() != Qt::LeftButton) return true;
      running->released = static_cast<QMouseEvent&>(event).globalPosition().toPoint();
      if (!running->in_doubt) DropAt(*running->released);
      return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      Cancel();
      return true;
    case QEvent::KeyPress:
      if (static_cast<QKeyEvent&>(event).key() != Qt::Key_Escape) return false;
      Cancel();
      return true;
    case QEvent::WindowDeactivate:
      if (FormOf(&receiver) == &running->form) Doubt();
      return false;
    default:
      return false;
  }
}

}  // namespace morva
