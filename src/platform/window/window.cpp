#include "platform/window/window.h"

#include <QApplication>
#include <QIcon>
#include <algorithm>
#include <string>
#include <vector>

#include "platform/drawing/picture.h"
#include "platform/window/drag.h"
#include "platform/window/native_window.h"

namespace morva {

namespace {

std::vector<Form*>& LoadedForms() {
  static std::vector<Form*> forms;
  return forms;
}

QIcon ProgramIcon() {
  QIcon icon;
  for (const int size : {16, 32, 48, 64, 128}) icon.addPixmap(StoredPicture("icon-" + std::to_string(size), 1));
  return icon;
}

}  // namespace

void WindowLoaded(Form& form) {
  LoadedForms().push_back(&form);
  // The start-up picture has no frame that could show the icon, and should not wait for it.
  const bool framed = !form.Native()->windowFlags().testFlag(Qt::FramelessWindowHint);
  if (framed && QApplication::windowIcon().isNull()) QApplication::setWindowIcon(ProgramIcon());
}

void WindowUnloaded(std::unique_ptr<Form> form) {
  struct Gone : QObject {
    std::unique_ptr<Form> form;
  };
  auto& loaded = LoadedForms();
  loaded.erase(std::remove(loaded.begin(), loaded.end(), form.get()), loaded.end());
  Drag::Abandon(*NativeWindow::Of(form->Native()));
  form->Hide();
  auto* gone = new Gone;
  gone->form = std::move(form);
  gone->deleteLater();
  if (loaded.empty()) QCoreApplication::quit();
}

bool AnyWindowLoaded() { return !LoadedForms().empty(); }

void UnloadAllWindows() {
  const std::vector<Form*> left = LoadedForms();
  for (auto form = left.rbegin(); form != left.rend(); ++form) {
    if ((*form)->unload) (*form)->unload();
  }
}

}  // namespace morva
