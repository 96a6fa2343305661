#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <string>

#include "platform/colors.h"
#include "platform/values.h"

namespace morva {

inline QString QtText(const std::string& text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// A tool tip that shows the text as it stands: the toolkit would guess at what is markup in it.
inline QString TipText(const std::string& text) {
  return text.empty() ? QString() : "<p style='white-space:pre-wrap'>" + QtText(text).toHtmlEscaped() + "</p>";
}

inline std::string StdText(const QString& text) { return text.toStdString(); }

inline QColor QtColor(Color color) {
  const Color value = Resolved(color);
  return QColor(static_cast<int>(value & 0xFFU), static_cast<int>(value >> 8U & 0xFFU),
                static_cast<int>(value >> 16U & 0xFFU));
}

inline Color ColorOf(const QColor& color) {
  return static_cast<Color>(color.red()) | static_cast<Color>(color.green()) << 8U |
         static_cast<Color>(color.blue()) << 16U;
}

inline int ToPixels(double twips) { return RoundToEven(twips / kTwipsPerPixel); }

/// The program's font in a size of points of 20 twips, 15 twips to the pixel.
QFont ProgramFont(double points = 8.25, bool bold = false);

}  // namespace morva
