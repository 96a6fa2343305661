#include "platform/drag.h"

#include <QApplication>
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

// Where a drag is: over a control, over the bare window (no control), or outside or over another window (no place at
// all).
struct Target {
  Control* control = nullptr;
  QPointF twips;
};

void EndDoubt();

struct Running {
  Running(Control& from, Form& window) : source(from), form(window) {
    doubt.setSingleShot(true);
    doubt.callOnTimeout(EndDoubt);
  }
  Control& source;
  Form& form;
  std::optional<Target> target;
  QTimer doubt;                    // runs while the window may have been lost
  std::optional<QPoint> released;  // where the button was released in the meantime
};

std::optional<Running> running;

bool SamePlace(const std::optional<Target>& a, const std::optional<Target>& b) {
  return a.has_value() == b.has_value() && (!a || a->control == b->control);
}

std::optional<Target> TargetAt(const Form& form, QPoint screen) {
  const QWidget* client = form.Client();
  const QPoint place = client->mapFromGlobal(screen);
  const bool covered = QApplication::topLevelAt(screen) != form.Native();
  if (covered || !client->rect().contains(place)) return std::nullopt;
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

void EndDoubt() {
  running->doubt.stop();
  if (!running->form.Native()->isActiveWindow()) {
    Cancel();
  } else if (running->released) {
    DropAt(*running->released);
  }
}

// A window that has just been clicked can hear late that it had been left before: it is lost only if it is not back in
// a moment, and a release waits for that.
void Doubt() {
  constexpr int kMomentMs = 250;
  running->doubt.start(kMomentMs);
}

QCursor Hand() {
  static const QCursor hand(QPixmap(":/pictures/hand.png"), 20, 0);
  return hand;
}

}  // namespace

void Drag::Begin(Control& source, QPoint screen) {
  Form* form = FormOf(source.Native());
  if (form == nullptr || running) return;
  running.emplace(source, *form);
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
      if (!running->doubt.isActive()) DropAt(*running->released);
      return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      // The user goes on here: there was nothing to doubt.
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
      if (FormOf(&receiver) == &running->form) Doubt();
      return false;
    case QEvent::WindowActivate:
      if (FormOf(&receiver) == &running->form && running->doubt.isActive()) EndDoubt();
      return false;
    default:
      return false;
  }
}

}  // namespace morva
