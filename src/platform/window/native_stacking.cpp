#include "platform/window/native_window.h"

#include <QApplication>
#include <QWindow>
#include <utility>

#include "platform/window/x_within_wayland.h"

// Which window lies before which, and which has the keys.

namespace morva {

bool NativeWindow::PlacesWindows() { return !QGuiApplication::platformName().startsWith("wayland"); }

void NativeWindow::BelongTo(NativeWindow& owner) {
  const bool part = style_.within_owner || (!style_.title_bar && (!PlacesWindows() || XWithinWayland()));
  setParent(&owner, part ? Qt::SubWindow : windowFlags());
}

bool NativeWindow::SharesKeys() const { return beside_owner_ || (!PlacesWindows() && windowType() == Qt::Tool); }

void NativeWindow::TakeKeys() {
  if (SharesKeys()) return;
  // A window manager brings forward what it gives the keys to, and takes a request of its own amiss.
  if (NoWindowManager() || !isWindow()) raise();
  activateWindow();
}

void NativeWindow::ActivateEnabled() {
  const QWidgetList windows = QApplication::topLevelWidgets();
  for (QWidget* window : windows) {
    auto* form = dynamic_cast<NativeWindow*>(window);
    if (form != nullptr && form->takes_input && form->isVisible() && form->windowType() != Qt::Tool) form->TakeKeys();
  }
}

void NativeWindow::StayOnTop(bool on) {
  on_top_ = on;
  forward_ = forward_ || on;
  settling_.start(0);
}

// What is to make room for a window must have done so before that one comes: some window managers leave it in front.
void NativeWindow::LetBeCovered() {
  const QWidgetList windows = QApplication::topLevelWidgets();
  for (QWidget* window : windows) {
    auto* form = dynamic_cast<NativeWindow*>(window);
    if (form == nullptr || form->on_top_ || form->forward_ || !form->settling_.isActive()) continue;
    form->settling_.stop();
    form->SettleOnTop();
  }
}

void NativeWindow::LetAllBeCovered(bool be) {
  covered = be;
  const QWidgetList windows = QApplication::topLevelWidgets();
  for (QWidget* window : windows) {
    if (auto* form = dynamic_cast<NativeWindow*>(window); form != nullptr && form->on_top_) form->SettleOnTop();
  }
}

void NativeWindow::SettleOnTop() {
  // A window that stays on top from the moment it is shown, some window managers never let be covered again.
  if (windowHandle() == nullptr || !isVisible()) return;
  windowHandle()->setFlag(Qt::WindowStaysOnTopHint, on_top_ && !covered);
  if (std::exchange(forward_, false) && (!on_top_ || NoWindowManager())) raise();
}

}  // namespace morva
