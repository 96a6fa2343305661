#include "platform/system/socket.h"

#include <sys/socket.h>

#include <QElapsedTimer>
#include <QNetworkInterface>
#include <QTcpServer>
#include <QTcpSocket>

#include "platform/system/qt_text.h"

namespace morva {

namespace {

constexpr int kFlushMs = 2000;
constexpr int kGoodbyeMs = 500;
// What waits here is bounded; the rest waits at the sender, by the connection's own flow control.
constexpr qint64 kReadBuffer = 1 << 16;

bool ReachableFromOutside(const QHostAddress& address) { return !address.isLoopback() && !address.isLinkLocal(); }

}  // namespace

class Socket::Impl {
 public:
  explicit Impl(Socket& owner) : owner_(owner) {
    QObject::connect(&server_, &QTcpServer::newConnection, [this] {
      waiting_.reset(server_.nextPendingConnection());
      waiting_->setParent(nullptr);
      if (owner_.ConnectionRequest) owner_.ConnectionRequest(0);
    });
  }

  void Use(std::unique_ptr<QTcpSocket> connection) {
    connection_ = std::move(connection);
    connection_->setReadBufferSize(kReadBuffer);
    connection_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    QObject::connect(connection_.get(), &QTcpSocket::connected, [this] {
      connection_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
      if (owner_.Connected) owner_.Connected();
    });
    QObject::connect(connection_.get(), &QTcpSocket::readyRead, [this] {
      if (owner_.DataArrival) owner_.DataArrival();
    });
    QObject::connect(connection_.get(), &QTcpSocket::disconnected, [this] {
      if (owner_.Closed) owner_.Closed();
    });
  }

  void Drop() {
    server_.close();
    if (!connection_) return;
    connection_->disconnect();
    SayGoodbye();
    connection_.release()->deleteLater();
  }

  Socket& owner_;
  QTcpServer server_;
  std::unique_ptr<QTcpSocket> waiting_;
  std::unique_ptr<QTcpSocket> connection_;

 private:
  // Bytes that arrive after the socket is gone make the system take back what it has not delivered yet; so the writing
  // side is closed first, and the rest of what comes in is read until the other side has closed too.
  void SayGoodbye() {
    if (connection_->state() != QAbstractSocket::ConnectedState) {
      connection_->abort();
      return;
    }
    QElapsedTimer clock;
    clock.start();
    while (connection_->bytesToWrite() > 0 && clock.elapsed() < kFlushMs) {
      if (!connection_->waitForBytesWritten(kFlushMs)) break;
    }
    ::shutdown(static_cast<int>(connection_->socketDescriptor()), SHUT_WR);
    clock.restart();
    while (connection_->state() == QAbstractSocket::ConnectedState && clock.elapsed() < kGoodbyeMs) {
      connection_->readAll();
      connection_->waitForReadyRead(kGoodbyeMs);
    }
    connection_->abort();
  }
};

Socket::Socket() : impl_(std::make_unique<Impl>(*this)) {}

Socket::~Socket() { impl_->Drop(); }

std::string Socket::LocalIP() const {
  QHostAddress best(QHostAddress::LocalHost);
  for (const QNetworkInterface& interface : QNetworkInterface::allInterfaces()) {
    if (!interface.flags().testFlag(QNetworkInterface::IsUp)) continue;
    for (const QNetworkAddressEntry& entry : interface.addressEntries()) {
      if (!ReachableFromOutside(entry.ip())) continue;
      if (entry.ip().protocol() == QAbstractSocket::IPv4Protocol) return StdText(entry.ip().toString());
      best = entry.ip();
    }
  }
  return StdText(best.toString());
}

bool Socket::Listen() { return impl_->server_.listen(QHostAddress::Any, static_cast<quint16>(LocalPort)); }

void Socket::Connect() {
  impl_->Use(std::make_unique<QTcpSocket>());
  impl_->connection_->connectToHost(QtText(RemoteHost).trimmed(), static_cast<quint16>(RemotePort));
}

void Socket::Accept(int /*requestID*/) {
  if (impl_->waiting_) impl_->Use(std::move(impl_->waiting_));
}

void Socket::Close() { impl_->Drop(); }

void Socket::SendData(std::string_view bytes) {
  QTcpSocket* connection = impl_->connection_.get();
  if (connection == nullptr || connection->state() != QAbstractSocket::ConnectedState) return;
  connection->write(bytes.data(), static_cast<qint64>(bytes.size()));
  connection->flush();
}

std::string Socket::GetData(std::size_t most) {
  return impl_->connection_ ? impl_->connection_->read(static_cast<qint64>(most)).toStdString() : std::string();
}

bool Socket::HasData() {
  QTcpSocket* connection = impl_->connection_.get();
  if (connection == nullptr) return false;
  if (connection->bytesAvailable() > 0) return true;
  return connection->state() == QAbstractSocket::ConnectedState && connection->waitForReadyRead(0);
}

}  // namespace morva
