// What a move that arrives is measured against: a window of the same size, on which one square changes its colour for
// each byte that arrives.
// bare_square PORT

#include <QApplication>
#include <QPainter>
#include <QTcpServer>
#include <QTcpSocket>
#include <QWidget>
#include <cstdlib>

namespace {

class SquareWindow : public QWidget {
 public:
  SquareWindow() { setFixedSize(448, 539); }

  void NextColor() {
    red_ = !red_;
    update(kSquare);
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override { QPainter(this).fillRect(kSquare, red_ ? Qt::red : Qt::blue); }

 private:
  static constexpr QRect kSquare{0, 0, 56, 56};
  bool red_ = false;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication::setStyle("Fusion");
  QApplication application(argc, argv);
  if (argc != 2) return 2;
  SquareWindow window;
  QTcpServer server;
  QObject::connect(&server, &QTcpServer::newConnection, [&] {
    QTcpSocket* connection = server.nextPendingConnection();
    QObject::connect(connection, &QTcpSocket::readyRead, [&window, connection] {
      for (const char byte : connection->readAll()) {
        static_cast<void>(byte);
        window.NextColor();
      }
    });
  });
  if (!server.listen(QHostAddress::LocalHost, static_cast<quint16>(std::atoi(argv[1])))) return 1;
  window.show();
  return QApplication::exec();
}
