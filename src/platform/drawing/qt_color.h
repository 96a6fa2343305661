#pragma once

#include <QColor>

#include "platform/drawing/desktop_colors.h"

namespace morva {

inline QColor QtColor(Color color) {
  const Color value = Resolved(color);
  return QColor(static_cast<int>(value & 0xFFU), static_cast<int>(value >> 8U & 0xFFU),
                static_cast<int>(value >> 16U & 0xFFU));
}

}  // namespace morva
