#include "platform/application.h"

#include <malloc.h>

#include <QAccessible>
#include <QApplication>
#include <QLoggingCategory>
#include <QNetworkProxyFactory>
#include <QSettings>
#include <QWidget>
#include <cstdio>
#include <cstdlib>

#include "platform/accessibility/announce.h"
#include "platform/accessibility/announce_native.h"
#include "platform/accessibility/spoken_controls.h"
#include "platform/accessibility/spoken_window.h"
#include "platform/controls/screen_reader.h"
#include "platform/drawing/fonts.h"
#include "platform/style.h"
#include "platform/system/qt_text.h"
#include "platform/window/input.h"
#include "platform/window/session.h"
#include "platform/window/window.h"

// Outside any namespace: the macro declares a function.
static void InitStoredFiles() { Q_INIT_RESOURCE(stored); }

namespace morva {

std::function<void()> end_program = [] {
  // Ending can take a while; nobody should have to wait for it.
  const QWidgetList windows = QApplication::topLevelWidgets();
  for (QWidget* window : windows) window->hide();
  QApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers);
  // Qt's own threads go on to the very end; what they miss by then concerns nobody.
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  std::quick_exit(0);
};

void End() {
  end_program();
  std::abort();
}

namespace {

constexpr int kLargeBlock = 128 * 1024;  // bytes

// Without a display Qt would report its plug-ins and abort.
void SayThatThereIsNoDisplay(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type != QtFatalMsg) return;
  std::fputs("morva: there is no display, X11 or Wayland, to open a window on\n", stderr);
  std::_Exit(1);
}

}  // namespace

struct Application::Impl {
  Impl(int& argc, char** argv) : app(argc, argv) {}
  QApplication app;
  InputGate gate;
};

Application::Application(int& argc, char** argv) {
  // Pictures are drawn by way of large, short-lived images: their memory goes back to the system at once.
  ::mallopt(M_MMAP_THRESHOLD, kLargeBlock);
  ChoosePlatform();
  // Qt complains of each request that a Wayland session does not grant; the program goes on without.
  QLoggingCategory::setFilterRules(
      QString("qt.qpa.wayland*=false\ndefault.warning=%1").arg(IsWaylandSession() ? "false" : "true"));
  // The proxy that a desktop sets is for web pages. To ask for it can take as long as a script on the network does.
  QNetworkProxyFactory::setUseSystemConfiguration(false);
  auto* style = new Style;
  QApplication::setStyle(style);
  InitStoredFiles();
  qInstallMessageHandler(SayThatThereIsNoDisplay);
  impl_ = std::make_unique<Impl>(argc, argv);
  qApp->installEventFilter(&impl_->gate);
  qApp->installEventFilter(style);
  screen_reader = {Announce, TellNameLater};
  LeadIntoPopupMenus();
  for (const auto interfaces : {SpokenControl, SpokenWindow, SpokenAnnouncement}) {
    QAccessible::installFactory(interfaces);
  }
  qInstallMessageHandler(nullptr);
  QApplication::setApplicationName("morva");
  // Qt's file dialog would leave a settings file behind; this program remembers nothing.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, "/dev/null");
  QApplication::setDesktopFileName("morva");
  QApplication::setFont(ProgramFont());
  QApplication::setQuitOnLastWindowClosed(false);
}

Application::~Application() {
  UnloadAllWindows();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

int Application::Run() { return AnyWindowLoaded() ? QApplication::exec() : 0; }

const int App::Major = MORVA_MAJOR;
const int App::Minor = MORVA_MINOR;
const int App::Revision = MORVA_REVISION;

std::string App::Version() {
  return std::to_string(Major) + "." + std::to_string(Minor) + "." + std::to_string(Revision);
}

std::string App::Path() { return StdText(QCoreApplication::applicationDirPath()); }

}  // namespace morva
