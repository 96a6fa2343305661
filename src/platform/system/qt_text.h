#pragma once

#include <QString>
#include <string>

namespace morva {

inline QString QtText(const std::string& text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string StdText(const QString& text) { return text.toStdString(); }

/// A tool tip that shows the text as it stands: the toolkit would guess at what is markup in it.
inline QString TipText(const std::string& text) {
  return text.empty() ? QString() : "<p style='white-space:pre-wrap'>" + QtText(text).toHtmlEscaped() + "</p>";
}

}  // namespace morva
