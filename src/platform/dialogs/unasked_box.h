#pragma once

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPointer>
#include <vector>

namespace morva {

/// A box that comes by itself, in front of all our windows, of which none takes input until it is closed. It is not
/// answered by what was meant for something else: what writes text goes on into the chat line. Enter answers, and Space
/// where that line is empty, after 700 ms without a key, counted from when the box is seen; Escape does where there is
/// but one answer. Tab, arrows, Alt with a letter and the mouse always work.
///
/// Qt would drop what is typed between the coming of a modal box and its getting the focus, so to Qt it is none.
class UnaskedBox : public QMessageBox {
 public:
  /// The line can be none.
  UnaskedBox(QWidget* parent, QWidget* line);
  ~UnaskedBox() override;

  /// The one in front; none where none is open.
  static UnaskedBox* Newest() { return open_.empty() ? nullptr : open_.back(); }

  bool eventFilter(QObject* receiver, QEvent* event) override;

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  bool TakesPress(bool own, const QKeyEvent& key);
  bool Answers(const QKeyEvent& key, bool quiet) const;
  bool LineIsEmpty() const;
  void HandOn(const QKeyEvent& key) const;

  inline static std::vector<UnaskedBox*> open_;
  QPointer<QWidget> line_;
  QElapsedTimer quiet_;  // since it was seen, or since the last key
};

}  // namespace morva
