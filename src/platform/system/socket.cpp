#include "platform/system/socket.h"

#include <fcntl.h>

#include <QNetworkInterface>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUdpSocket>

#include "platform/system/qt_text.h"

namespace morva {

namespace {

// IPv6 addresses are often written in brackets, which Qt would look up as a part of a name.
QString Address(const std::string& typed) {
  const QString address = QtText(typed).trimmed();
  const bool in_brackets = address.startsWith('[') && address.endsWith(']');
  return in_brackets ? address.mid(1, address.size() - 2) : address;
}

// How well an address serves another computer; 0: not at all.
int Worth(const QHostAddress& address) {
  const bool v4 = address.protocol() == QAbstractSocket::IPv4Protocol;
  if (address.isLoopback()) return 0;
  if (address.isLinkLocal()) return v4 ? 2 : 1;
  return v4 ? 4 : 3;
}

QHostAddress BestAddress() {
  // Addresses reserved for examples, outside of every network. Connecting a datagram socket sends nothing; the system
  // only chooses the route, and with it the local address.
  for (const char* outside : {"192.0.2.1", "2001:db8::1"}) {
    QUdpSocket way;
    way.connectToHost(QHostAddress(outside), 9);
    if (way.state() == QAbstractSocket::ConnectedState) return way.localAddress();
  }
  QHostAddress best(QHostAddress::LocalHost);
  const QList<QHostAddress> all = QNetworkInterface::allAddresses();
  for (const QHostAddress& address : all) {
    if (Worth(address) > Worth(best)) best = address;
  }
  return best;
}

}  // namespace

std::string LocalAddress() { return StdText(BestAddress().toString()); }

// Qt only makes the connection; TcpStream then carries the data.
class Socket::Impl : public QTcpServer {
 public:
  explicit Impl(Socket& owner) : owner_(owner) {}

  void Connect() {
    Abandon();
    attempt_ = new QTcpSocket;
    QObject::connect(attempt_, &QTcpSocket::connected, [this] {
      auto stream =
          std::make_unique<TcpStream>(::fcntl(static_cast<int>(attempt_->socketDescriptor()), F_DUPFD_CLOEXEC, 0));
      Abandon();
      if (owner_.Connected) owner_.Connected(std::move(stream));
    });
    attempt_->connectToHost(Address(owner_.RemoteHost), static_cast<quint16>(owner_.RemotePort));
  }

  void Abandon() {
    if (attempt_ == nullptr) return;
    attempt_->disconnect();
    attempt_->abort();
    attempt_->deleteLater();
    attempt_ = nullptr;
  }

  std::unique_ptr<TcpStream> waiting_;

 protected:
  void incomingConnection(qintptr descriptor) override {
    auto stream = std::make_unique<TcpStream>(static_cast<int>(descriptor));
    if (waiting_) return;
    waiting_ = std::move(stream);
    if (owner_.ConnectionRequest) owner_.ConnectionRequest(0);
  }

 private:
  Socket& owner_;
  QTcpSocket* attempt_ = nullptr;
};

Socket::Socket() : impl_(std::make_unique<Impl>(*this)) {}

Socket::~Socket() { Close(); }

bool Socket::Listen() { return impl_->listen(QHostAddress::Any, static_cast<quint16>(LocalPort)); }

void Socket::Connect() { impl_->Connect(); }

std::unique_ptr<TcpStream> Socket::Accept(int /*requestID*/) { return std::move(impl_->waiting_); }

void Socket::Close() {
  impl_->close();
  impl_->Abandon();
}

}  // namespace morva
