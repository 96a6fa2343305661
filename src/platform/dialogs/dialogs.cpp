#include "platform/dialogs/dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QMessageBox>
#include <QPointer>
#include <QStandardPaths>
#include <QTimer>
#include <algorithm>

#include "platform/accessibility/announce.h"
#include "platform/dialogs/unasked_box.h"
#include "platform/drawing/pixels.h"
#include "platform/system/qt_text.h"
#include "platform/window/native_window.h"
#include "platform/window/stacking.h"

namespace morva {

namespace {

constexpr int kNarrowestBox = 220;  // pixels of any size of everything: title bars have but one
constexpr int kLookAgainMs = 100;
constexpr int kLongestText = 500;  // characters; the buttons must stay on the screen

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
  // What is no folder would stand in the dialog as a file's name.
  for (const auto place : {QStandardPaths::DocumentsLocation, QStandardPaths::HomeLocation}) {
    QString path = QStandardPaths::writableLocation(place);
    if (QFileInfo(path).isDir()) return path;
  }
  return QDir::currentPath();
}

// A box belongs to the window that the user works in, and where that is another program's, to our main one.
QWidget* Parent() {
  QWidget* active = QApplication::activeWindow();
  if (active != nullptr && active->windowType() == Qt::Tool) active = active->parentWidget();
  return active != nullptr ? active : Stacking::Main();
}

void SetUp(QMessageBox& box, const std::string& text, const std::string& title) {
  box.setTextFormat(Qt::PlainText);
  const QString whole = QtText(text);
  box.setText(whole.size() <= kLongestText ? whole : whole.left(kLongestText) + "…");
  box.setWindowTitle(QtText(title));
  box.setAccessibleName(box.text());  // which stands on a Braille line beside the button
  box.setStandardButtons(QMessageBox::Ok);
  box.setWindowFlag(Qt::WindowStaysOnTopHint);
  // Wide enough for its title.
  auto* grid = qobject_cast<QGridLayout*>(box.layout());
  grid->addItem(new QSpacerItem(std::max(kNarrowestBox, ToPixels(kNarrowestBox * kTwipsPerPixel)), 0), grid->rowCount(),
                0, 1, grid->columnCount());
}

// Not every window manager gives the keys back to the window that had them.
void GiveKeysBack(const QDialog& box) {
  QWidget* next = QApplication::activeModalWidget();
  if (next == nullptr || next == &box) next = box.parentWidget();
  if (next != nullptr) next->activateWindow();
}

// Shows it until it is answered.
int Answer(QDialog& box) {
  const int answer = box.exec();
  GiveKeysBack(box);
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
  Stacking::LetAllBeCovered(true);  // a desktop's own dialog can't be told to stay on top, too
  do {
    chosen = Answer(dialog) == QDialog::Accepted ? dialog.selectedFiles() : QStringList();
    // A pattern asks for a name; it is none.
  } while (!chosen.isEmpty() && chosen.front().contains('*'));
  Stacking::LetAllBeCovered(false);
  if (chosen.isEmpty()) return false;
  settings.FileName = StdText(chosen.front());
  return true;
}

}  // namespace

MsgBoxResult MsgBox(const std::string& text, const std::string& title, MsgBoxButtons buttons, MsgBoxIcon icon,
                    MsgBoxCause cause) {
  QMessageBox box(Parent());
  box.setIcon(IconOf(icon));  // lays everything out anew
  SetUp(box, text, title);
  if (buttons == MsgBoxButtons::kYesNo) {
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    Announce("Yes or No");
  }
  if (cause == MsgBoxCause::kByItself) new UnaskedBox(box);
  switch (Answer(box)) {
    case QMessageBox::Yes:
      return MsgBoxResult::kYes;
    case QMessageBox::No:
      return MsgBoxResult::kNo;
    default:
      return MsgBoxResult::kOk;
  }
}

void ShowNotice(const std::string& text, const std::string& title, const std::function<bool()>& busy,
                const std::function<void()>& closed) {
  if (QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr || busy()) {
    QTimer::singleShot(kLookAgainMs, Stacking::Main(), [=] { ShowNotice(text, title, busy, closed); });
    return;
  }
  auto* box = new QMessageBox(Parent());
  SetUp(*box, text, title);
  box->setAttribute(Qt::WA_DeleteOnClose);
  QObject::connect(box, &QMessageBox::finished, [closed, parent = QPointer(box->parentWidget())] {
    if (parent != nullptr) parent->activateWindow();
    closed();
  });
  new UnaskedBox(*box);
  box->setModal(true);
  box->show();
}

bool CommonDialog::ShowOpen() { return Ask(*this, QFileDialog::AcceptOpen); }

bool CommonDialog::ShowSave() { return Ask(*this, QFileDialog::AcceptSave); }

}  // namespace morva
