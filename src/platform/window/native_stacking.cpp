#include "platform/window/native_window.h"

#include <QApplication>
#include <QWindow>
#include <utility>

#include "platform/window/x_within_wayland.h"

// Which window lies before which, and which has the keys.

namespace morva {

namespace {

std::vector<NativeWindow*> TopLevelWindows() {
  std::vector<NativeWindow*> windows;
  const QWidgetList all = QApplication::topLevelWidgets();
  for (QWidget* widget : all) {
    if (auto* window = dynamic_cast<NativeWindow*>(widget)) windows.push_back(window);
  }
  return windows;
}

}  // namespace

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
  for (NativeWindow* window : TopLevelWindows()) {
    if (window->takes_input && window->isVisible() && window->windowType() != Qt::Tool) window->TakeKeys();
  }
}

void NativeWindow::StayOnTop(bool on) {
  on_top_ = on;
  forward_ = forward_ || on;
  settling_.start(0);
}

// What is to make room for a window must have done so before that one comes: some window managers leave it in front.
void NativeWindow::LetBeCovered() {
  for (NativeWindow* window : TopLevelWindows()) {
    if (window->on_top_ || window->forward_ || !window->settling_.isActive()) continue;
    window->settling_.stop();
    window->SettleOnTop();
  }
}

void NativeWindow::LetAllBeCovered(bool be) {
  all_covered_ = be;
  for (NativeWindow* window : TopLevelWindows()) {
    if (window->on_top_) window->SettleOnTop();
  }
}

void NativeWindow::SettleOnTop() {
  // A window that stays on top from the moment it is shown, some window managers never let be covered again.
  if (windowHandle() == nullptr || !isVisible()) return;
  windowHandle()->setFlag(Qt::WindowStaysOnTopHint, on_top_ && !all_covered_);
  if (std::exchange(forward_, false) && (!on_top_ || NoWindowManager())) raise();
}

}  // namespace morva
