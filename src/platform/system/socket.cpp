#include "platform/system/socket.h"

#include <fcntl.h>

#include <QTcpServer>
#include <QTcpSocket>

#include "platform/system/qt_text.h"

namespace morva {

namespace {

// IPv6 addresses are often written in brackets, which Qt would look up as a part of a name.
QString Address(const std::string& typed) {
  const QString address = QtText(typed).trimmed();
  const bool in_brackets = address.startsWith('[') && address.endsWith(']');
  return in_brackets ? address.mid(1, address.size() - 2) : address;
}

}  // namespace

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
