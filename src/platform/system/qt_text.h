#pragma once

#include <QString>
#include <algorithm>
#include <string>

namespace morva {

inline QString QtText(const std::string& text) { return QString::fromStdString(text); }

inline std::string StdText(const QString& text) { return text.toStdString(); }

/// Characters: setting a line takes the longer the longer it is, seen or not.
inline constexpr qsizetype kShort = 1000;
inline constexpr std::size_t kShortBytes = 4 * kShort;

/// The beginning of a text of any length, with "…" where it goes on.
inline QString ShortText(const std::string& text) {
  const QString shown = QtText(text.substr(0, kShortBytes));
  return shown.size() <= kShort ? shown : shown.left(kShort) + "…";
}

/// The same from its end.
inline QString ShortEnd(const std::string& text) {
  const QString shown = QtText(text.substr(text.size() - std::min(text.size(), kShortBytes)));
  return shown.size() <= kShort ? shown : "…" + shown.right(kShort);
}

/// A tool tip that shows the text as it stands: Qt would guess at markup in it.
inline QString TipText(const std::string& text) {
  return text.empty() ? QString() : "<p style='white-space:pre-wrap'>" + ShortText(text).toHtmlEscaped() + "</p>";
}

}  // namespace morva
