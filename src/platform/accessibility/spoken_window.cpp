#include "platform/accessibility/spoken_window.h"

#include <QApplication>
#include <QMenuBar>
#include <QTimer>
#include <algorithm>

#include "platform/accessibility/announce.h"
#include "platform/accessibility/announce_native.h"
#include "platform/accessibility/spoken_controls.h"
#include "platform/window/native_window.h"

namespace morva {

namespace {

QAccessible::Role RoleOf(const NativeWindow& window) {
  const Qt::WindowType type = window.windowType();
  if (window.IsDocked()) return QAccessible::Grouping;
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

constexpr int kSettlingMs = 150;  // a screen reader speaks of the window below first

// The menus that open from no other menu. Qt tells nothing of what has the focus when they come and when they go.
class PopupMenus : public QObject {
 public:
  using QObject::QObject;

  bool eventFilter(QObject* object, QEvent* event) override {
    if (event->type() != QEvent::Show && event->type() != QEvent::Hide) return false;
    auto* menu = QAccessible::isActive() ? qobject_cast<QMenu*>(object) : nullptr;
    if (menu == nullptr || !menu->menuAction()->associatedObjects().isEmpty()) return false;
    if (event->type() == QEvent::Show) {
      QTimer::singleShot(kSettlingMs, menu, [menu] { LeadInto(*menu); });
    } else {
      QTimer::singleShot(kSettlingMs, this, [] { TellFocus(); });
    }
    return false;
  }

 private:
  static void LeadInto(QMenu& menu) {
    const QList<QAction*> items = menu.actions();
    const auto first = std::find_if(items.begin(), items.end(),
                                    [](const QAction* item) { return item->isEnabled() && !item->isSeparator(); });
    if (first == items.end()) return Announce("Nothing to choose");
    if (menu.activeAction() == nullptr) menu.setActiveAction(*first);
  }

  static void TellFocus() {
    if (QApplication::focusWidget() == nullptr) return;
    QAccessibleEvent focus(QApplication::focusWidget(), QAccessible::Focus);
    QAccessible::updateAccessibility(&focus);
  }
};

}  // namespace

void LeadIntoPopupMenus() { qApp->installEventFilter(new PopupMenus(qApp)); }

QAccessibleInterface* SpokenWindow(const QString& /*kind*/, QObject* object) {
  auto* widget = qobject_cast<QWidget*>(object);
  NativeWindow* window = NativeWindow::Of(widget);
  if (window == nullptr) return nullptr;
  if (window == widget) return new WindowInterface(*window);
  return &window->Client() == widget ? new SpokenContainer(*widget) : nullptr;
}

}  // namespace morva
