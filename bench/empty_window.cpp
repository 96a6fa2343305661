// What the program's windows are measured against: a window with nothing on it.
// empty_window WIDTH HEIGHT

#include <QApplication>
#include <QWidget>
#include <cstdlib>

int main(int argc, char** argv) {
  QApplication::setStyle("Fusion");
  QApplication application(argc, argv);
  if (argc != 3) return 2;
  // The program's first window has no frame either: the window manager draws one before the window's own pixels come.
  QWidget window(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint);
  window.setFixedSize(std::atoi(argv[1]), std::atoi(argv[2]));
  window.show();
  return QApplication::exec();
}
