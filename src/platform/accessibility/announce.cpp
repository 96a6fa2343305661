#include "platform/accessibility/announce.h"

#include <QAccessible>
#include <QAccessibleObject>
#include <QApplication>
#include <QPointer>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "platform/accessibility/announce_native.h"
#include "platform/system/qt_text.h"
#include "platform/window/native_window.h"
#include "platform/window/stacking.h"

namespace morva {

namespace {

// What is announced waits until it joins what else is announced in the same moment, and until a change of the focus is
// through: a screen reader stops speaking for the new window. All in ms.
constexpr int kGathering = 60;
constexpr int kSettling = 150;
constexpr int kLongest = 5000;  // characters said at once

// An object that assistive tools see and nobody else does.
class SpokenNode : public QObject {
 public:
  SpokenNode(QObject* parent, QAccessible::Role node_role) : QObject(parent), role(node_role) {}
  QAccessible::Role role;
  QString words;
};

class NodeInterface : public QAccessibleObject {
 public:
  explicit NodeInterface(SpokenNode& node) : QAccessibleObject(&node), node_(node) {}
  QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(node_.parent()); }
  QAccessibleInterface* child(int index) const override {
    return QAccessible::queryAccessibleInterface(node_.children().value(index));
  }
  int childCount() const override { return static_cast<int>(node_.children().size()); }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return child == nullptr ? -1 : static_cast<int>(node_.children().indexOf(child->object()));
  }
  QString text(QAccessible::Text kind) const override { return kind == QAccessible::Name ? node_.words : QString(); }
  // Beside the window's corner: nobody finds it with the pointer.
  QRect rect() const override {
    const QAccessibleInterface* above = parent();
    const bool in_window = node_.role == QAccessible::StatusBar;
    return in_window ? QRect(above->rect().topLeft() - QPoint(1, 1), QSize(1, 1)) : above->rect();
  }
  QAccessible::Role role() const override { return node_.role; }
  // Tools read the words with the notification, and must not find them again among what the window shows.
  QAccessible::State state() const override {
    QAccessible::State state;
    state.invisible = node_.role == QAccessible::StaticText ? 1 : 0;
    return state;
  }
  QWindow* window() const override { return parent()->window(); }

 private:
  SpokenNode& node_;
};

void Tell(QObject* object, QAccessible::Event what) {
  QAccessibleEvent event(object, what);
  QAccessible::updateAccessibility(&event);
}

#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)

// Orca 48 speaks an announcement as it is; before each notification it says that it is one.
void Notify(NativeWindow& window, const QString& words) {
  QAccessibleAnnouncementEvent event(&window, words);
  QAccessible::updateAccessibility(&event);
}

#else

// Orca 43 speaks a notification that comes into view, wherever the focus is, and shows the labels in it in Braille.
void Notify(NativeWindow& window, const QString& words) {
  constexpr int kKept = 8;                         // announcements that a reader can still be asking for
  QAccessible::queryAccessibleInterface(&window);  // which makes the status bar
  const QObjectList& children = window.children();
  const auto bar = std::find_if(children.begin(), children.end(), IsStatusBar);
  // What was said shortly before can still be asked for. A new object each time: tools keep the names that they know.
  const QObjectList& kept = (*bar)->children();
  if (kept.size() == kKept) {
    Tell(kept.front(), QAccessible::ObjectDestroyed);
    delete kept.front();
  }
  auto* notification = new SpokenNode(*bar, QAccessible::Notification);
  (new SpokenNode(notification, QAccessible::StaticText))->words = words;
  Tell(notification, QAccessible::ObjectCreated);
  Tell(notification, QAccessible::ObjectShow);
}

#endif

// Our main window, and before there is one that which the user works in: with what is announced in a dialog Orca says
// the dialog's name.
NativeWindow* Announcing() {
  NativeWindow* main = Stacking::Main();
  return main != nullptr ? main : NativeWindow::Of(QApplication::activeWindow());
}

class Announcer : public QObject {
 public:
  explicit Announcer(QObject* parent) : QObject(parent) {
    due_.setSingleShot(true);
    due_.callOnTimeout(this, [this] { Say(); });
    connect(qGuiApp, &QGuiApplication::focusObjectChanged, this, [this] {
      if (due_.isActive()) due_.start(kSettling);
    });
  }

  void Add(QString text) {
    text = text.trimmed();
    if (text.isEmpty()) return;
    if (!waiting_.isEmpty()) waiting_ += QString(".!?:").contains(waiting_.back()) ? " " : ". ";
    waiting_ += text;
    waiting_ = waiting_.right(kLongest);
    if (!due_.isActive()) due_.start(kGathering);
  }

 private:
  void Say() {
    NativeWindow* window = Announcing();
    if (window != nullptr) Notify(*window, waiting_);
    waiting_.clear();
  }

  QString waiting_;
  QTimer due_;
};

}  // namespace

void Announce(const std::string& text) {
  if (!QAccessible::isActive()) return;
  static QPointer<Announcer> announcer;
  if (announcer == nullptr) announcer = new Announcer(qApp);
  announcer->Add(QtText(text));
}

void TellNameLater(QWidget& widget) {
  static const char kTold[] = "told_name";
  static QList<QPointer<QWidget>> renamed;
  if (!QAccessible::isActive() || renamed.contains(&widget)) return;
  renamed << &widget;
  if (renamed.size() > 1) return;
  QTimer::singleShot(0, qApp, [] {
    for (const QPointer<QWidget>& named : std::exchange(renamed, {})) {
      if (named == nullptr) continue;
      const QString name = QAccessible::queryAccessibleInterface(named)->text(QAccessible::Name);
      if (name == named->property(kTold)) continue;
      named->setProperty(kTold, name);
      Tell(named, QAccessible::NameChanged);
    }
  });
}

void MakeStatusBar(QWidget& window) { new SpokenNode(&window, QAccessible::StatusBar); }

bool IsStatusBar(const QObject* object) { return dynamic_cast<const SpokenNode*>(object) != nullptr; }

QAccessibleInterface* SpokenAnnouncement(const QString& /*kind*/, QObject* object) {
  auto* node = dynamic_cast<SpokenNode*>(object);
  return node == nullptr ? nullptr : new NodeInterface(*node);
}

}  // namespace morva
