#pragma once

#include <QString>
#include <string>

namespace morva {

inline QString QtText(const std::string& text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string StdText(const QString& text) { return text.toStdString(); }

/// The beginning of a text that may be of any length, with "…" where it goes on: setting a line takes the longer the
/// longer it is, seen or not.
inline QString ShortText(const std::string& text) {
  constexpr qsizetype kMost = 1000;
  constexpr std::size_t kMostBytes = 4 * kMost;
  const QString shown = QtText(text.substr(0, kMostBytes));
  return shown.size() <= kMost ? shown : shown.left(kMost) + "…";
}

/// A tool tip that shows the text as it stands: the toolkit would guess at what is markup in it.
inline QString TipText(const std::string& text) {
  return text.empty() ? QString() : "<p style='white-space:pre-wrap'>" + ShortText(text).toHtmlEscaped() + "</p>";
}

}  // namespace morva
