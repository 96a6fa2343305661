#include "platform/window/window.h"

#include <QApplication>
#include <QIcon>
#include <string>
#include <vector>

#include "platform/drawing/picture.h"
#include "platform/window/native_window.h"
#include "platform/window/stacking.h"

namespace morva {

namespace {

QIcon ProgramIcon() {
  QIcon icon;
  for (const int size : {16, 32, 48, 64, 128}) icon.addPixmap(StoredPicture("icon-" + std::to_string(size), 1));
  return icon;
}

}  // namespace

void WindowLoaded(Form& form) {
  // The start-up picture has no frame that could show the icon, and should not wait for it.
  const bool framed = !form.Native()->windowFlags().testFlag(Qt::FramelessWindowHint);
  if (framed && QApplication::windowIcon().isNull()) QApplication::setWindowIcon(ProgramIcon());
}

void WindowUnloaded(std::unique_ptr<Form> form) {
  struct Gone : QObject {
    std::unique_ptr<Form> form;
  };
  form->Leave();
  auto* gone = new Gone;
  gone->form = std::move(form);
  gone->deleteLater();
  if (!AnyWindowLoaded()) QCoreApplication::quit();
}

bool AnyWindowLoaded() { return !Stacking::All().empty(); }

void UnloadAllWindows() {
  const std::vector<Stacking*> left = Stacking::All();
  for (auto window = left.rbegin(); window != left.rend(); ++window) {
    FormEvents& events = (*window)->Window().Events();
    if (events.unload) events.unload();
  }
}

}  // namespace morva
