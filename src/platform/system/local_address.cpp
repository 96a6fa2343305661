#include "platform/system/local_address.h"

#include <QNetworkInterface>
#include <QUdpSocket>

#include "platform/system/qt_text.h"

namespace morva {

namespace {

// How well an address serves another computer; 0: not at all.
int Worth(const QHostAddress& address) {
  const bool v4 = address.protocol() == QAbstractSocket::IPv4Protocol;
  if (address.isLoopback()) return 0;
  if (address.isLinkLocal()) return v4 ? 2 : 1;
  return v4 ? 4 : 3;
}

QHostAddress Best() {
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

std::string LocalAddress() { return StdText(Best().toString()); }

}  // namespace morva
