#include "platform/window/dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QMessageBox>
#include <QStandardPaths>
#include <algorithm>

#include "platform/system/qt_text.h"
#include "platform/window/native_window.h"

namespace morva {

namespace {

constexpr int kNarrowestBox = 220;  // pixels
constexpr int kLongestText = 500;   // characters; the buttons must stay on the screen

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

// A box belongs to the window that the user works in, and where that is another program's, to our main one.
QWidget* Parent() {
  QWidget* active = QApplication::activeWindow();
  if (active != nullptr && active->windowType() == Qt::Tool) active = active->parentWidget();
  if (active != nullptr) return active;
  const QWidgetList windows = QApplication::topLevelWidgets();
  const auto ours = std::find_if(windows.begin(), windows.end(), [](const QWidget* window) {
    return NativeWindow::Of(window) != nullptr && window->isVisible() && window->windowType() == Qt::Window;
  });
  return ours == windows.end() ? nullptr : *ours;
}

// Shows it until it is answered. Not every window manager gives the keys back to the window that had them.
int Answer(QDialog& box) {
  const int answer = box.exec();
  if (QWidget* parent = box.parentWidget()) parent->activateWindow();
  return answer;
}

bool Ask(CommonDialog& settings, QFileDialog::AcceptMode mode) {
  QFileDialog dialog(Parent(), QtText(settings.DialogTitle), StartFolder(settings.InitDir));
  dialog.setAcceptMode(mode);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setNameFilter(QtText(settings.Filter).section('|', 0, 0));
  dialog.setOption(QFileDialog::DontConfirmOverwrite, (settings.Flags & kOverwritePrompt) == 0);
  dialog.setWindowFlag(Qt::WindowStaysOnTopHint);
  if (!settings.FileName.empty() && !QDir::isAbsolutePath(QtText(settings.FileName))) {
    dialog.selectFile(QtText(settings.FileName));
  }
  QStringList chosen;
  do {
    chosen = Answer(dialog) == QDialog::Accepted ? dialog.selectedFiles() : QStringList();
    // A pattern asks for a name; it is none.
  } while (!chosen.isEmpty() && chosen.front().contains('*'));
  if (chosen.isEmpty()) return false;
  settings.FileName = StdText(chosen.front());
  return true;
}

}  // namespace

MsgBoxResult MsgBox(const std::string& text, const std::string& title, MsgBoxButtons buttons, MsgBoxIcon icon) {
  QMessageBox box(Parent());
  box.setTextFormat(Qt::PlainText);
  const QString whole = QtText(text);
  box.setText(whole.size() <= kLongestText ? whole : whole.left(kLongestText) + "…");
  box.setWindowTitle(QtText(title));
  box.setIcon(IconOf(icon));
  box.setStandardButtons(buttons == MsgBoxButtons::kOk ? QMessageBox::StandardButtons(QMessageBox::Ok)
                                                       : QMessageBox::Yes | QMessageBox::No);
  if (buttons == MsgBoxButtons::kYesNo) box.setEscapeButton(QMessageBox::No);
  box.setWindowFlag(Qt::WindowStaysOnTopHint);
  // Wide enough for its title.
  auto* grid = qobject_cast<QGridLayout*>(box.layout());
  grid->addItem(new QSpacerItem(kNarrowestBox, 0), grid->rowCount(), 0, 1, grid->columnCount());
  switch (Answer(box)) {
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
