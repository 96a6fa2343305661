#include "platform/window/session.h"

#include <xcb/xproto.h>

#include <QGuiApplication>
#include <QWindow>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>

namespace morva {

namespace {

template <class T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

xcb_connection_t* Server() { return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection(); }

xcb_atom_t Atom(std::string_view name) {
  const auto asked = xcb_intern_atom(Server(), 1, static_cast<std::uint16_t>(name.size()), name.data());
  const Reply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(Server(), asked, nullptr), std::free);
  return atom == nullptr ? xcb_atom_t{XCB_ATOM_NONE} : atom->atom;
}

// The numbers of a window's property; nothing where it has no such property.
template <std::size_t N>
std::optional<std::array<std::uint32_t, N>> Numbers(xcb_window_t window, xcb_atom_t property) {
  const auto asked = xcb_get_property(Server(), 0, window, property, XCB_ATOM_ANY, 0, N);
  const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(Server(), asked, nullptr), std::free);
  std::array<std::uint32_t, N> numbers{};
  if (reply == nullptr || xcb_get_property_value_length(reply.get()) != sizeof(numbers)) return std::nullopt;
  std::memcpy(numbers.data(), xcb_get_property_value(reply.get()), sizeof(numbers));
  return numbers;
}

// A window manager names a window of its own on the root window, and on that window itself: one that has ended leaves
// no more than the former behind.
bool FindWindowManager() {
  const xcb_atom_t check = Atom("_NET_SUPPORTING_WM_CHECK");
  const auto named = Numbers<1>(xcb_setup_roots_iterator(xcb_get_setup(Server())).data->root, check);
  return named && Numbers<1>(named->front(), check) == named;
}

}  // namespace

void ChoosePlatform() {
  if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) return;
  const bool x = !IsWaylandSession() || !qEnvironmentVariableIsEmpty("DISPLAY");
  qputenv("QT_QPA_PLATFORM", !x ? "wayland" : IsWaylandSession() ? "xcb;wayland" : "xcb");
}

bool IsWaylandSession() { return qEnvironmentVariableIsSet("WAYLAND_DISPLAY"); }

bool IsOnXServer() {
  static const bool answer = QGuiApplication::platformName() == QLatin1String("xcb");
  return answer;
}

bool CanPlaceWindows() {
  static const bool answer = !QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
  return answer;
}

bool HasWindowManager() {
  static const bool answer = !IsOnXServer() || FindWindowManager();
  return answer;
}

bool HasNoFrame(const QWindow& window) {
  // Elsewhere a frame is known from the start, or drawn outside of all that the program is told.
  if (!IsOnXServer()) return window.isExposed();
  static const xcb_atom_t extents = Atom("_NET_FRAME_EXTENTS");
  return Numbers<4>(static_cast<xcb_window_t>(window.winId()), extents) == std::array<std::uint32_t, 4>{};
}

}  // namespace morva
