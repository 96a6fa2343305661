#include "platform/system/local_address.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <optional>

namespace morva {

namespace {

// An address of either family, as the system's calls take it.
union Address {
  sockaddr any;
  sockaddr_in v4;
  sockaddr_in6 v6;
};

std::string TextOf(const Address& address) {
  char text[INET6_ADDRSTRLEN] = "";
  const bool v4 = address.any.sa_family == AF_INET;
  const void* const bytes = v4 ? static_cast<const void*>(&address.v4.sin_addr) : &address.v6.sin6_addr;
  return ::inet_ntop(address.any.sa_family, bytes, text, sizeof(text));
}

// Connecting a datagram socket sends nothing: the system only chooses the way, and with it the own address.
std::optional<std::string> AddressOnTheWayTo(const Address& outside, socklen_t size) {
  const int socket = ::socket(outside.any.sa_family, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (socket < 0) return std::nullopt;
  Address own{};
  socklen_t own_size = sizeof(own);
  const bool found = ::connect(socket, &outside.any, size) == 0 && ::getsockname(socket, &own.any, &own_size) == 0;
  ::close(socket);
  return found ? std::optional(TextOf(own)) : std::nullopt;
}

// How well an address serves another computer; 0: not at all.
int Worth(const Address& address) {
  if (address.any.sa_family == AF_INET) {
    const unsigned bits = ntohl(address.v4.sin_addr.s_addr);
    if (bits >> 24U == 127) return 0;
    return bits >> 16U == 0xA9FE ? 2 : 4;  // 169.254
  }
  if (IN6_IS_ADDR_LOOPBACK(&address.v6.sin6_addr)) return 0;
  return IN6_IS_ADDR_LINKLOCAL(&address.v6.sin6_addr) ? 1 : 3;
}

std::string BestOfAll() {
  std::string best = "127.0.0.1";
  int worth = 0;
  ifaddrs* all = nullptr;
  if (::getifaddrs(&all) != 0) return best;
  for (const ifaddrs* entry = all; entry != nullptr; entry = entry->ifa_next) {
    if (entry->ifa_addr == nullptr || (entry->ifa_flags & IFF_UP) == 0) continue;
    const int family = entry->ifa_addr->sa_family;
    if (family != AF_INET && family != AF_INET6) continue;
    const Address& address = *reinterpret_cast<const Address*>(entry->ifa_addr);
    if (Worth(address) <= worth) continue;
    worth = Worth(address);
    best = TextOf(address);
    // Such an address is good for one of the interfaces alone.
    if (worth == 1) best += std::string("%") + entry->ifa_name;
  }
  ::freeifaddrs(all);
  return best;
}

}  // namespace

std::string LocalAddress() {
  // Addresses kept for examples: nobody has them, and they lie outside of every network.
  Address outside{};
  outside.v4.sin_family = AF_INET;
  outside.v4.sin_port = htons(9);
  ::inet_pton(AF_INET, "192.0.2.1", &outside.v4.sin_addr);
  if (const auto address = AddressOnTheWayTo(outside, sizeof(outside.v4))) return *address;
  outside = {};
  outside.v6.sin6_family = AF_INET6;
  outside.v6.sin6_port = htons(9);
  ::inet_pton(AF_INET6, "2001:db8::1", &outside.v6.sin6_addr);
  if (const auto address = AddressOnTheWayTo(outside, sizeof(outside.v6))) return *address;
  return BestOfAll();
}

}  // namespace morva
