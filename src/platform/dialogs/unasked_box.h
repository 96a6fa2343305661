#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <map>

namespace morva {

/// Keeps a box that comes by itself from being answered by what was meant for something else: for 700 ms from when it
/// is seen it takes no click and no key. Text typed in that time goes on into the line of the program that had the keys
/// when the box came, or nowhere.
class UnaskedBox : public QObject {
 public:
  /// To be made before the box is shown; lives as long as the box.
  explicit UnaskedBox(QWidget& box);

  bool eventFilter(QObject* receiver, QEvent* event) override;

 private:
  bool IsHeld(int key, bool deaf);
  void HandOn(const QEvent& event) const;

  QWidget& box_;
  QPointer<QWidget> line_;  ///< that had the keys
  QElapsedTimer seen_;
  std::map<int, QElapsedTimer> held_;  ///< keys that went down too early, and their last sign of life
};

}  // namespace morva
