#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>
#include <functional>
#include <string>

namespace morva {

/// What the user does with the file dialog that the next menu click opens. It looks at the dialog's title, and says
/// whether there was a dialog at all.
class DialogUser {
 public:
  /// An empty name cancels. meanwhile runs while the dialog is open.
  explicit DialogUser(std::string name, std::function<void()> meanwhile = {})
      : name_(std::move(name)), meanwhile_(std::move(meanwhile)) {
    QObject::connect(&clock_, &QTimer::timeout, [this] { Answer(); });
    clock_.start(5);
  }
  bool saw_dialog() const { return !title.empty(); }
  std::string title, filter;
  int questions = 0;

 private:
  void Answer() {
    QWidget* shown = QApplication::activeModalWidget();
    if (auto* question = qobject_cast<QMessageBox*>(shown)) {
      ++questions;
      question->button(QMessageBox::Yes)->click();
      return;
    }
    auto* dialog = qobject_cast<QFileDialog*>(shown);
    if (dialog == nullptr || saw_dialog()) return;
    title = dialog->windowTitle().toStdString();
    filter = dialog->nameFilters().join(";").toStdString();
    if (meanwhile_) meanwhile_();
    if (name_.empty()) {
      dialog->reject();
      return;
    }
    // Typed, as a user does: selecting a file that isn't there does nothing.
    dialog->findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(name_));
    // The question whether to overwrite comes from within, and the clock must go on for it.
    QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection);
  }

  std::string name_;
  std::function<void()> meanwhile_;
  QTimer clock_;
};

}  // namespace morva
