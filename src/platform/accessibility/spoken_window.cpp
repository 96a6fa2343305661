#include "platform/accessibility/spoken_window.h"

#include <QMenuBar>

#include "platform/accessibility/announce_native.h"
#include "platform/accessibility/spoken_controls.h"
#include "platform/window/native_window.h"

namespace morva {

namespace {

QAccessible::Role RoleOf(const QWidget& window) {
  const Qt::WindowType type = window.windowType();
  return type == Qt::Dialog || type == Qt::SubWindow ? QAccessible::Dialog : QAccessible::Window;
}

// The marker of the last move is only looked at.
bool IsDecoration(const NativeWindow& window) { return window.Style().round; }

class WindowInterface : public SpokenContainer {
 public:
  explicit WindowInterface(NativeWindow& window) : SpokenContainer(window, RoleOf(window)), window_(window) {
    MakeStatusBar(window);
  }

  QString text(QAccessible::Text kind) const override {
    if (kind != QAccessible::Name || !widget()->accessibleName().isEmpty()) return SpokenContainer::text(kind);
    return widget()->windowTitle().replace("[*][*]", "[*]");
  }

  QAccessible::State state() const override {
    QAccessible::State state = SpokenContainer::state();
    if (IsDecoration(window_)) state.invisible = 1;
    return state;
  }

 protected:
  QObjectList Children() const override {
    QObjectList children;
    QObjectList over;  // windows that are a part of this one
    for (QObject* child : widget()->children()) {
      if (qobject_cast<QMenuBar*>(child) != nullptr || IsStatusBar(child)) children << child;
      const auto* part = dynamic_cast<const NativeWindow*>(child);
      if (part != nullptr && !part->isWindow() && part->isVisible() && !IsDecoration(*part)) over << child;
    }
    return children << &window_.Client() << over;
  }

 private:
  NativeWindow& window_;
};

}  // namespace

QAccessibleInterface* SpokenWindow(const QString& /*kind*/, QObject* object) {
  auto* widget = qobject_cast<QWidget*>(object);
  NativeWindow* window = NativeWindow::Of(widget);
  if (window == nullptr) return nullptr;
  if (window == widget) return new WindowInterface(*window);
  return &window->Client() == widget ? new SpokenContainer(*widget) : nullptr;
}

}  // namespace morva
