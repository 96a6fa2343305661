#include "platform/window/spoken_window.h"

#include <QMenuBar>

#include "platform/controls/spoken.h"
#include "platform/window/announce_native.h"
#include "platform/window/native_window.h"

namespace morva {

namespace {

QAccessible::Role RoleOf(const QWidget& window) {
  return window.windowType() == Qt::Dialog ? QAccessible::Dialog : QAccessible::Window;
}

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
    // The marker of the last move.
    if (widget()->windowType() == Qt::ToolTip) state.invisible = 1;
    return state;
  }

 protected:
  QObjectList Children() const override {
    QObjectList children;
    for (QObject* child : widget()->children()) {
      if (qobject_cast<QMenuBar*>(child) != nullptr || IsStatusBar(child)) children << child;
    }
    return children << &window_.Client();
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
