#include "platform/dialogs/unasked_box.h"

#include <QApplication>
#include <QLineEdit>
#include <QTimer>

#include "platform/controls/qt_keys.h"
#include "platform/window/native_window.h"
#include "platform/window/session.h"

namespace morva {

namespace {
constexpr int kQuietMs = 700;
}

UnaskedBox::UnaskedBox(QWidget* parent, QWidget* line) : QMessageBox(parent), line_(line) {
  setModal(false);
  QCoreApplication::instance()->installEventFilter(this);
}

UnaskedBox::~UnaskedBox() { std::erase(open_, this); }

void UnaskedBox::showEvent(QShowEvent* event) {
  if (!event->spontaneous()) open_.push_back(this);
  QMessageBox::showEvent(event);
  if (!HasWindowManager()) activateWindow();
}

void UnaskedBox::hideEvent(QHideEvent* event) {
  if (!event->spontaneous()) std::erase(open_, this);
  QMessageBox::hideEvent(event);
}

bool UnaskedBox::eventFilter(QObject* receiver, QEvent* event) {
  // A file dialog that an answer has brought is Qt's to keep in front.
  if (Newest() != this || !receiver->isWidgetType() || QApplication::activeModalWidget() != nullptr) return false;
  const bool own = static_cast<QWidget*>(receiver)->window() == this;
  switch (event->type()) {
    case QEvent::Paint:
      if (own && !quiet_.isValid()) quiet_.start();
      return false;
    case QEvent::WindowActivate:
      if (!own) QTimer::singleShot(0, this, [this] { activateWindow(); });
      return !own;
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
      // What the button with the focus leaves alone comes by once more for the box.
      if (!event->spontaneous() || (own && focusWidget() != nullptr && receiver != focusWidget())) return false;
      if (!own) activateWindow();  // again: a busy window manager lets a request fall
      if (!TakesPress(own, *static_cast<QKeyEvent*>(event)) && own) return false;
      event->accept();
      return true;
    case QEvent::Close:
      if (!event->spontaneous() || (own && buttons().size() == 1)) return false;
      event->ignore();
      return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
    case QEvent::DragEnter:
      return !own && event->spontaneous();
    default:
      return false;
  }
}

// Whether the key, pressed in the box or in another window, is none of the box's buttons'.
bool UnaskedBox::TakesPress(bool own, const QKeyEvent& key) {
  const bool quiet = own && quiet_.isValid() && quiet_.elapsed() >= kQuietMs;
  const bool press = key.type() == QEvent::KeyPress;
  if (press && quiet_.isValid()) quiet_.start();
  if (!WritesText(key) && !IsEnter(key) && key.key() != Qt::Key_Escape) return false;
  if (Answers(key, quiet)) return false;
  if (press && WritesText(key)) HandOn(key);
  return true;
}

bool UnaskedBox::Answers(const QKeyEvent& key, bool quiet) const {
  if (key.key() == Qt::Key_Escape) return quiet && buttons().size() == 1;
  return quiet && (IsEnter(key) || (key.key() == Qt::Key_Space && LineIsEmpty()));
}

bool UnaskedBox::LineIsEmpty() const {
  const auto* line = qobject_cast<QLineEdit*>(line_);
  return line == nullptr || line->text().isEmpty();
}

void UnaskedBox::HandOn(const QKeyEvent& key) const {
  if (line_ == nullptr || !NativeWindow::Of(line_)->takes_input) return;
  line_->setFocus();  // in its own window, once that is in front again
  QKeyEvent typed(key.type(), key.key(), key.modifiers(), key.text(), key.isAutoRepeat());
  QCoreApplication::sendEvent(line_, &typed);
}

}  // namespace morva
