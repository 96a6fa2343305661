#include "platform/application.h"

#include <malloc.h>

#include <QApplication>
#include <QIcon>
#include <QKeyEvent>
#include <QProxyStyle>
#include <QSettings>
#include <QTimer>
#include <algorithm>
#include <cstdlib>
#include <vector>

#include "platform/drag.h"
#include "platform/qt_values.h"
#include "platform/registry.h"
#include "platform/window.h"

// Outside any namespace: the macro declares a function.
static void InitStoredFiles() { Q_INIT_RESOURCE(stored); }

namespace morva {

std::function<void()> end_program = [] { std::quick_exit(0); };

void End() {
  end_program();
  std::abort();
}

namespace {

std::vector<Form*>& LoadedForms() {
  static std::vector<Form*> forms;
  return forms;
}

std::string& TitleText() {
  static std::string title = "Morva";
  return title;
}

constexpr int kLargeBlock = 128 * 1024;  // bytes

bool IsInput(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::InputMethod:
    case QEvent::Close:
    case QEvent::Drop:
      return true;
    default:
      return false;
  }
}

bool IsShortcutOf(const QWidget& window, const QKeyEvent& key) {
  const QKeySequence pressed(key.keyCombination());
  const auto actions = window.findChildren<QAction*>();
  return std::any_of(actions.begin(), actions.end(),
                     [&](const QAction* action) { return action->shortcut() == pressed; });
}

// Sees every event of the program before its receiver does.
class Gate : public QObject {
 public:
  bool eventFilter(QObject* receiver, QEvent* event) override {
    const bool input = IsInput(event->type());
    const bool activation = event->type() == QEvent::WindowActivate || event->type() == QEvent::WindowDeactivate;
    if (!input && !activation) return false;
    if (!receiver->isWidgetType()) return false;
    const auto& widget = *static_cast<QWidget*>(receiver);
    if (Drag::Takes(widget, *event)) return true;
    const Form* form = FormOf(&widget);
    if (!input || form == nullptr) return false;
    if (!form->Enabled()) {
      // An accepted override keeps a shortcut from acting; an ignored close keeps the window.
      event->setAccepted(event->type() != QEvent::Close);
      return true;
    }
    if (event->type() == QEvent::ShortcutOverride && IsShortcutOf(*form->Native(), *static_cast<QKeyEvent*>(event))) {
      // A line edit would claim the key before the menu sees it.
      event->ignore();
      return true;
    }
    return false;
  }
};

// One look everywhere: the layouts are made for it to the pixel.
class Style : public QProxyStyle {
 public:
  Style() : QProxyStyle("Fusion") {}

  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
    if (metric == PM_ExclusiveIndicatorWidth || metric == PM_ExclusiveIndicatorHeight) return 12;
    if (metric == PM_RadioButtonLabelSpacing) return 3;
    return QProxyStyle::pixelMetric(metric, option, widget);
  }

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* answer) const override {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    return QProxyStyle::styleHint(hint, option, widget, answer);
  }
};

QIcon ProgramIcon() {
  QIcon icon;
  for (const int size : {16, 32, 48, 64, 128, 256}) icon.addFile(QString(":/pictures/icon-%1.png").arg(size));
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
  Drag::Abandon(*form);
  form->Hide();
  form->Left.assigned = form->Top.assigned = nullptr;
  auto* gone = new Gone;
  gone->form = std::move(form);
  gone->deleteLater();
  if (loaded.empty()) QCoreApplication::quit();
}

class Application::Impl {
 public:
  Impl(int& argc, char** argv) : app_(argc, argv) { app_.installEventFilter(&gate_); }

 private:
  QApplication app_;
  Gate gate_;
};

Application::Application(int& argc, char** argv) {
  // Pictures are drawn by way of large images that live for a moment: their memory goes back to the system at once.
  ::mallopt(M_MMAP_THRESHOLD, kLargeBlock);
  // Where a Wayland session lets no program place its windows, the X server beside it does.
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "xcb;wayland");
  QApplication::setStyle(new Style);
  InitStoredFiles();
  impl_ = std::make_unique<Impl>(argc, argv);
  QApplication::setApplicationName("morva");
  // The toolkit's file dialog would leave a settings file behind; this program remembers nothing.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, "/dev/null");
  QApplication::setDesktopFileName("morva");
  QApplication::setFont(ProgramFont());
  QApplication::setQuitOnLastWindowClosed(false);
}

Application::~Application() {
  const std::vector<Form*> left = LoadedForms();
  for (auto form = left.rbegin(); form != left.rend(); ++form) {
    if ((*form)->unload) (*form)->unload();
  }
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

int Application::Run() { return LoadedForms().empty() ? 0 : QApplication::exec(); }

// Not the toolkit's display name: that would stand behind every window's caption.
void App::SetTitle(const std::string& title) { TitleText() = title; }

std::string App::Title() { return TitleText(); }

const int App::Major = MORVA_MAJOR;
const int App::Minor = MORVA_MINOR;
const int App::Revision = MORVA_REVISION;

std::string App::Version() {
  return std::to_string(Major) + "." + std::to_string(Minor) + "." + std::to_string(Revision);
}

std::string App::Path() { return StdText(QCoreApplication::applicationDirPath()); }

}  // namespace morva
