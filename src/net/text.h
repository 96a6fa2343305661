#pragma once

#include <string>
#include <string_view>

namespace morva {

/// Text inside the program is UTF-8; the wire has bytes. For every valid text t without control characters
/// TextOf(BytesOf(t)) == t.

/// The bytes to send for `text`: ISO 8859-1, one byte a character, as long as every character has a byte there and the
/// bytes could not be taken for UTF-8; UTF-8 otherwise. An invalid byte in `text` is sent as U+FFFD.
std::string BytesOf(std::string_view text);

/// The text for `bytes` that arrived: UTF-8 if they are valid as such, else ISO 8859-1, and made Printable.
std::string TextOf(std::string_view bytes);

/// `text` as pasted into one line: each tab and each end of a line (LF, CR, CR LF) is a blank.
std::string SingleLine(std::string_view text);

/// `text`, valid UTF-8, or as much of it as stands on one line of a box: 40 characters and an ellipsis.
std::string Shortened(std::string_view text);

/// `text` with U+FFFD in place of every control character (C0, DEL, C1, the line and paragraph separators, the controls
/// of writing direction, the byte order mark) and of every byte that is not valid UTF-8. No overlong forms, surrogates
/// or characters above U+10FFFF are valid.
std::string Printable(std::string_view text);

}  // namespace morva
