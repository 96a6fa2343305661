#pragma once

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <map>

namespace morva {

/// Keeps what a key that is held down sends again and again from acting again and again.
class HeldKeys {
 public:
  /// Whether a key event is to reach the widget. Each press is; its auto-repeats are where they edit text or move a
  /// cursor, in the control that got the press.
  bool LetThrough(const QWidget& widget, const QKeyEvent& event);

 private:
  void Note(const QWidget& receiver, const QKeyEvent& event);
  bool IsRepeat(const QKeyEvent& event) const;

  std::map<int, QPointer<const QWidget>> pressed_;  ///< who got the press of each key that may go on
  int released_ = 0;                                ///< the key that went up last, and when by the display's clock
  quint64 released_at_ = 0;
};

/// Sees every event of the program before its receiver does: keeps the user's input from a disabled window, and begins
/// and feeds the drag.
class InputGate : public QObject {
 public:
  bool eventFilter(QObject* receiver, QEvent* event) override;

 private:
  void NoteComing(const QWidget& widget, const QEvent& event);
  bool HasJustCome(const QWidget& window) const;

  HeldKeys held_;
  QPointer<const QWidget> newest_;  ///< the window that was shown last
  QElapsedTimer newest_seen_;
};

}  // namespace morva
