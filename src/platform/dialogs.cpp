#include "platform/dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QStandardPaths>

#include "platform/qt_values.h"

namespace morva {

namespace {

QMessageBox::Icon IconOf(MsgBoxIcon icon) {
  switch (icon) {
    case MsgBoxIcon::kCritical:
      return QMessageBox::Critical;
    case MsgBoxIcon::kExclamation:
      return QMessageBox::Warning;
    default:
      return QMessageBox::NoIcon;
  }
}

QString StartFolder(const std::string& wanted) {
  const QFileInfo folder(QtText(wanted));
  if (folder.isDir() && folder.isWritable()) return folder.filePath();
  return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

bool Ask(CommonDialog& settings, QFileDialog::AcceptMode mode) {
  QFileDialog dialog(QApplication::activeWindow(), QtText(settings.DialogTitle), StartFolder(settings.InitDir));
  dialog.setAcceptMode(mode);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setNameFilter(QtText(settings.Filter).section('|', 0, 0));
  dialog.setOption(QFileDialog::DontConfirmOverwrite, (settings.Flags & kOverwritePrompt) == 0);
  dialog.setWindowFlag(Qt::WindowStaysOnTopHint);
  if (!settings.FileName.empty() && !QDir::isAbsolutePath(QtText(settings.FileName))) {
    dialog.selectFile(QtText(settings.FileName));
  }
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return false;
  settings.FileName = StdText(dialog.selectedFiles().front());
  return true;
}

}  // namespace

MsgBoxResult MsgBox(const std::string& text, const std::string& title, MsgBoxButtons buttons, MsgBoxIcon icon) {
  QMessageBox box(QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  box.setText(QtText(text));
  box.setWindowTitle(QtText(title));
  box.setIcon(IconOf(icon));
  box.setStandardButtons(buttons == MsgBoxButtons::kOk ? QMessageBox::StandardButtons(QMessageBox::Ok)
                                                       : QMessageBox::Yes | QMessageBox::No);
  if (buttons == MsgBoxButtons::kYesNo) box.setEscapeButton(QMessageBox::No);
  box.setWindowFlag(Qt::WindowStaysOnTopHint);
  switch (box.exec()) {
    case QMessageBox::Yes:
      return MsgBoxResult::kYes;
    case QMessageBox::No:
      return MsgBoxResult::kNo;
    default:
      return MsgBoxResult::kOk;
  }
}

bool CommonDialog::ShowOpen() { return Ask(*this, QFileDialog::AcceptOpen); }

bool CommonDialog::ShowSave() { return Ask(*this, QFileDialog::AcceptSave); }

}  // namespace morva
