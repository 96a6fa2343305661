#include "platform/window/stacking.h"

#include <QApplication>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "platform/window/native_window.h"
#include "platform/window/placing.h"
#include "platform/window/session.h"

namespace morva {

namespace {

constexpr int kLookMs = 20;  // for the frame and the activation
constexpr int kLooks = 15;

std::vector<Stacking*>& Loaded() {
  static std::vector<Stacking*> all;
  return all;
}

}  // namespace

Stacking::Stacking(NativeWindow& window, Placing& placing) : window_(window), placing_(placing) {
  Loaded().push_back(this);
  window.installEventFilter(this);
  activation_.setSingleShot(true);
  activation_.callOnTimeout([this] { AwaitActivation(); });
  settling_.setSingleShot(true);
  settling_.callOnTimeout([this] { SettleOnTop(); });
}

Stacking::~Stacking() { std::erase(Loaded(), this); }

const std::vector<Stacking*>& Stacking::All() { return Loaded(); }

NativeWindow* Stacking::Main() {
  const auto main = std::find_if(All().begin(), All().end(), [](const Stacking* window) {
    return window->window_.isVisible() && window->window_.windowType() == Qt::Window;
  });
  return main == All().end() ? nullptr : &(*main)->window_;
}

void Stacking::Show() {
  if (state_ == State::kHidden) state_ = State::kShown;
  placing_.CentreOnce();
  ShowWhereSeen();
  const bool takes_focus = window_.isVisible() && !window_.testAttribute(Qt::WA_ShowWithoutActivating);
  if (takes_focus) window_.TakeFocus();
}

void Stacking::Hide() {
  state_ = State::kHidden;
  if (!window_.isHidden()) Disappear();
}

void Stacking::Leave() {
  Hide();
  std::erase(Loaded(), this);
}

// A window that is placed out of sight is not shown, whatever the window manager thinks of such places. Nor is one that
// belongs to another before that one: some window managers would then keep it over all windows of the program, and a
// Wayland session would not know what it belongs to.
void Stacking::ShowWhereSeen() {
  const bool owner_hidden =
      window_.isWindow() && window_.parentWidget() != nullptr && window_.parentWidget()->isHidden();
  const bool seen = state_ != State::kHidden && !placing_.IsOutOfSight() && !owner_hidden;
  if (seen && window_.isHidden()) {
    Appear();
  } else if (!seen && !window_.isHidden()) {
    state_ = State::kShown;
    Disappear();
  }
}

void Stacking::Appear() {
  if (!window_.isWindow()) had_focus_ = window_.window()->focusWidget();
  LetBeCovered();
  window_.show();
  for (Stacking* other : All()) {
    if (other->window_.parentWidget() == &window_) other->ShowWhereSeen();
  }
  if (on_top_) settling_.start(0);
  if (!window_.isWindow()) window_.raise();
  if (window_.Style().round) return;
  const bool takes_focus = !window_.testAttribute(Qt::WA_ShowWithoutActivating);
  if (window_.isWindow() ? window_.focusWidget() == nullptr : takes_focus) window_.FocusFirstStop();
  state_ = State::kAwaited;
  looks_left_ = window_.isWindow() && takes_focus ? kLooks : 1;
  activation_.start(0);
}

void Stacking::Disappear() {
  const bool was_active = window_.isActiveWindow(), had_focus = window_.isAncestorOf(QApplication::focusWidget());
  window_.hide();
  activation_.stop();
  if (window_.isWindow()) {
    QTimer::singleShot(0, &window_, [&window = window_] { window.ForgetHidden(); });
    // Without a window manager, or with some, nobody else would give the focus to another window.
    if (was_active) ActivateEnabled();
  } else if (had_focus && had_focus_ != nullptr) {
    had_focus_->setFocus();
  }
}

// Some window managers tell of the frame only after the activation, and some hand the activation to another window; the
// program's own order of steps relies on both. A busy one takes its time before it lets the window be seen at all.
void Stacking::AwaitActivation() {
  const bool framed = placing_.MeetFrame();
  const bool seen = window_.windowHandle() == nullptr || window_.windowHandle()->isExposed();
  if ((!framed || !window_.isActiveWindow()) && (!seen || --looks_left_ > 0)) return activation_.start(kLookMs);
  Activated();
}

void Stacking::Activated() {
  activation_.stop();
  state_ = State::kActive;
  window_.Events().Form_Activate();
  window_.Events().Form_GotFocus();
  if (Placing::Frame() && frame_is_known) frame_is_known(QSize(0, 0).grownBy(*Placing::Frame()));
}

bool Stacking::eventFilter(QObject* /*window*/, QEvent* event) {
  // A late event must not reload an unloaded window.
  if (state_ == State::kHidden) return false;
  if (event->type() == QEvent::WindowActivate) {
    if (!window_.takes_input) {
      QTimer::singleShot(0, this, [] { ActivateEnabled(); });
    } else if (state_ != State::kAwaited || placing_.MeetFrame()) {
      Activated();
    }
  }
  if (event->type() == QEvent::WindowStateChange && window_.isMinimized() && !window_.Style().minimise_box) {
    QTimer::singleShot(kLookMs, this, [this] { UndoMinimise(); });
  }
  return false;
}

// Some window managers offer to minimise what is not meant to be: it would be hard to find again. Others minimise a
// window together with its owner.
void Stacking::UndoMinimise() {
  const QWidget* owner = window_.parentWidget();
  if (owner == nullptr || !owner->isMinimized()) window_.setWindowState(window_.windowState() & ~Qt::WindowMinimized);
}

void Stacking::ActivateEnabled() {
  for (const Stacking* other : All()) {
    NativeWindow& window = other->window_;
    if (window.takes_input && window.isVisible() && window.windowType() != Qt::Tool) window.TakeFocus();
  }
}

void Stacking::StayOnTop(bool on) {
  on_top_ = on;
  forward_ = forward_ || on;
  settling_.start(0);
}

// Drops stay-on-top before the next window is shown: some window managers leave in front what had it then.
void Stacking::LetBeCovered() {
  for (Stacking* other : All()) {
    if (other->on_top_ || other->forward_ || !other->settling_.isActive()) continue;
    other->settling_.stop();
    other->SettleOnTop();
  }
}

void Stacking::LetAllBeCovered(bool be) {
  all_covered_ = be;
  for (Stacking* other : All()) {
    if (other->on_top_) other->SettleOnTop();
  }
}

void Stacking::SettleOnTop() {
  // A window that stays on top from the moment it is shown, some window managers never let be covered again.
  if (!window_.isWindow() || window_.windowHandle() == nullptr || !window_.isVisible()) return;
  const bool on_top = on_top_ && !all_covered_;
  if (window_.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint) != on_top) {
    window_.windowHandle()->setFlag(Qt::WindowStaysOnTopHint, on_top);
    // KWin hides utility windows while another program is active, those on top, too. Setting the flag resets the type.
    for (const bool on : {false, true}) window_.setAttribute(Qt::WA_X11NetWmWindowTypeDialog, on);
  }
  if (std::exchange(forward_, false) && (!on_top_ || !HasWindowManager())) window_.raise();
}

}  // namespace morva
