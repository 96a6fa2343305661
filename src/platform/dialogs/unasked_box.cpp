#include "platform/dialogs/unasked_box.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include "platform/window/native_window.h"

namespace morva {

namespace {
constexpr int kDeafMs = 700;
constexpr int kRepeatMs = 150;  // well over the pause between two signs of life of a key that is held down
}  // namespace

UnaskedBox::UnaskedBox(QWidget& box) : QObject(&box), box_(box) {
  QWidget* focused = QApplication::focusWidget();
  if (qobject_cast<QLineEdit*>(focused) != nullptr && NativeWindow::Of(focused) != nullptr) line_ = focused;
  QCoreApplication::instance()->installEventFilter(this);
}

bool UnaskedBox::eventFilter(QObject* receiver, QEvent* event) {
  if (!receiver->isWidgetType() || static_cast<QWidget*>(receiver)->window() != &box_) return false;
  if (event->type() == QEvent::Paint && !seen_.isValid()) seen_.start();
  const bool deaf = !seen_.isValid() || seen_.elapsed() < kDeafMs;
  switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
      if (!IsHeld(static_cast<QKeyEvent*>(event)->key(), deaf) && !deaf) return false;
      if (deaf) HandOn(*event);
      event->accept();
      return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
      return deaf;
    case QEvent::Close:
      if (!deaf || !event->spontaneous()) return false;
      event->ignore();
      return true;
    default:
      return false;
  }
}

// A key that is held down was meant for what had the keys when it went down. The toolkit can't always tell.
bool UnaskedBox::IsHeld(int key, bool deaf) {
  const auto known = held_.find(key);
  const bool held = known != held_.end() && known->second.elapsed() < kRepeatMs;
  if (held || deaf) {
    held_[key].start();
  } else if (known != held_.end()) {
    held_.erase(known);
  }
  return held;
}

void UnaskedBox::HandOn(const QEvent& event) const {
  if (line_ == nullptr || event.type() == QEvent::ShortcutOverride) return;
  const auto& key = static_cast<const QKeyEvent&>(event);
  // The menu's shortcuts are not typed into the line.
  if ((key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0) return;
  QKeyEvent typed(key.type(), key.key(), key.modifiers(), key.text(), key.isAutoRepeat());
  QCoreApplication::sendEvent(line_, &typed);
}

}  // namespace morva
