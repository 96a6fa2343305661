#include "platform/window/x_within_wayland.h"

#include <xcb/xproto.h>

#include <QGuiApplication>
#include <QWindow>
#include <cstdlib>
#include <memory>

namespace morva {

namespace {

template <class T>
struct Reply : std::unique_ptr<T, void (*)(void*)> {
  explicit Reply(T* reply) : std::unique_ptr<T, void (*)(void*)>(reply, std::free) {}
};

}  // namespace

bool XWithinWayland() {
  static const bool answer =
      qEnvironmentVariableIsSet("WAYLAND_DISPLAY") && QGuiApplication::platformName() == QLatin1String("xcb");
  return answer;
}

std::optional<XPlace> PlaceByX(const QWindow& window) {
  if (!XWithinWayland()) return {};
  xcb_connection_t* x = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
  const auto id = static_cast<xcb_window_t>(window.winId());
  const auto screen = xcb_setup_roots_iterator(xcb_get_setup(x)).data->root;
  const auto place_asked = xcb_translate_coordinates(x, id, screen, 0, 0);
  const auto parent_asked = xcb_query_tree(x, id);
  const auto in_parent_asked = xcb_get_geometry(x, id);
  const Reply place(xcb_translate_coordinates_reply(x, place_asked, nullptr));
  const Reply parent(xcb_query_tree_reply(x, parent_asked, nullptr));
  const Reply in_parent(xcb_get_geometry_reply(x, in_parent_asked, nullptr));
  if (place == nullptr || parent == nullptr || in_parent == nullptr) return {};
  constexpr int kShadow = 32;  // no frame is as wide
  const bool framed = parent->parent != screen;
  const bool shadowed = framed && in_parent->x > kShadow;
  const double pixel = window.devicePixelRatio();
  return XPlace{.on_screen = QPoint(place->dst_x, place->dst_y) / pixel,
                .in_frame = framed ? QPoint(in_parent->x, in_parent->y) / pixel : QPoint(),
                .shadow = shadowed ? qRound(kShadow / pixel) : 0};
}

}  // namespace morva
