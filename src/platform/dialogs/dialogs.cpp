#include "platform/dialogs/dialogs.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QMessageBox>
#include <QPointer>
#include <QStandardPaths>
#include <QTimer>
#include <algorithm>
#include <memory>

#include "platform/accessibility/announce.h"
#include "platform/dialogs/unasked_box.h"
#include "platform/drawing/pixels.h"
#include "platform/system/plain_files.h"
#include "platform/system/qt_text.h"
#include "platform/window/native_window.h"
#include "platform/window/stacking.h"

namespace morva {

namespace {

constexpr int kNarrowestBox = 220;  // pixels at any zoom: title bars do not zoom
constexpr int kLookAgainMs = 100;
constexpr int kLongestText = 500;  // characters; the buttons must stay on the screen

int file_dialogs = 0;  // that are open

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
  box.setDefaultButton(QMessageBox::Ok);
  box.setWindowFlag(Qt::WindowStaysOnTopHint);
  // Wide enough for its title.
  auto* grid = qobject_cast<QGridLayout*>(box.layout());
  grid->addItem(new QSpacerItem(std::max(kNarrowestBox, ToPixels(kNarrowestBox * kTwipsPerPixel)), 0), grid->rowCount(),
                0, 1, grid->columnCount());
}

// Not every window manager gives the focus back to the window that had it.
void GiveFocusBack(const QDialog& box, QWidget* before) {
  QWidget* next = UnaskedBox::Newest();
  if (next == nullptr) next = QApplication::activeModalWidget();
  if (next == nullptr || next == &box) next = before != nullptr ? before : box.parentWidget();
  if (next != nullptr) next->activateWindow();
}

// Shows it until it is answered.
int Answer(QDialog& box) {
  const QPointer before = Parent();
  const int answer = box.exec();
  GiveFocusBack(box, before);
  return answer;
}

// A menu would close, and what is typed into a file dialog is a name.
void WhenFree(const std::function<void()>& show) {
  if (file_dialogs == 0 && QApplication::activePopupWidget() == nullptr) return show();
  QTimer::singleShot(kLookAgainMs, qApp, [show] { WhenFree(show); });
}

std::unique_ptr<UnaskedBox> MakeUnasked(const std::string& text, const std::string& title, QMessageBox::Icon icon) {
  NativeWindow* table = Stacking::Main();
  auto box = std::make_unique<UnaskedBox>(table, table == nullptr ? nullptr : table->text_line);
  box->setIcon(icon);  // lays everything out anew
  SetUp(*box, text, title);
  QObject::connect(box.get(), &QMessageBox::finished,
                   [&shown = *box, before = QPointer(Parent())] { GiveFocusBack(shown, before); });
  return box;
}

// What keeps a file of that name from being written, in a sentence; empty for nothing.
std::string Obstacle(const QString& path) {
  const QFileInfo file(path);
  const std::string folder = StdText(QDir::toNativeSeparators(file.path()));
  if (!QFileInfo(file.path()).isDir()) return "There is no folder " + folder + ".";
  return CanWriteFile(StdText(path)) ? "" : "You may not write " + StdText(file.fileName()) + " in " + folder + ".";
}

// Asks until there is a name that will do. Empty: the user gave none.
QString Chosen(QFileDialog& dialog) {
  while (Answer(dialog) == QDialog::Accepted) {
    QString path = dialog.selectedFiles().value(0);
    if (QFileInfo(path).fileName().contains('*')) continue;  // a pattern asks for a name; it is none
    const std::string obstacle = dialog.acceptMode() == QFileDialog::AcceptSave ? Obstacle(path) : "";
    if (obstacle.empty()) return path;
    MsgBox(obstacle, StdText(dialog.windowTitle()));
    if (QFileInfo(path).dir().exists()) dialog.selectFile(path);  // elsewhere the name stands as it was typed
  }
  return {};
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
  Stacking::LetAllBeCovered(true);  // a desktop's own dialog can't be told to stay on top, too
  ++file_dialogs;
  const QString chosen = Chosen(dialog);
  --file_dialogs;
  Stacking::LetAllBeCovered(false);
  if (chosen.isEmpty()) return false;
  settings.FileName = StdText(chosen);
  return true;
}

}  // namespace

void MsgBox(const std::string& text, const std::string& title) {
  QMessageBox box(Parent());
  box.setIcon(QMessageBox::Critical);  // lays everything out anew
  SetUp(box, text, title);
  Answer(box);
}

void ShowNotice(const std::string& text, const std::string& title, const std::function<void()>& closed) {
  WhenFree([=] {
    UnaskedBox* box = MakeUnasked(text, title, QMessageBox::NoIcon).release();
    box->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(box, &QMessageBox::finished, closed);
    box->show();
  });
}

void ShowQuestion(const std::string& text, const std::string& title, const std::function<void(bool yes)>& answered) {
  WhenFree([=] {
    const std::unique_ptr<UnaskedBox> box = MakeUnasked(text, title, QMessageBox::Warning);
    box->setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box->setDefaultButton(QMessageBox::Yes);  // of itself each desktop has its own
    Announce("Yes or No");
    QEventLoop open;
    QObject::connect(box.get(), &QMessageBox::finished, &open, &QEventLoop::quit);
    box->show();
    open.exec();
    answered(box->clickedButton() == box->button(QMessageBox::Yes));
  });
}

bool CommonDialog::ShowOpen() { return Ask(*this, QFileDialog::AcceptOpen); }

bool CommonDialog::ShowSave() { return Ask(*this, QFileDialog::AcceptSave); }

}  // namespace morva
