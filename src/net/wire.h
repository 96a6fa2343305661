#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "painting/squares.h"

namespace morva {

inline constexpr int kPort = 2948;

/// The types of messages, whose digit stands first in a message. The bare words "me" and "you" have none.
inline constexpr int kWords = 0;  ///< chat and canned words
inline constexpr int kBoard = 1;  ///< moves, boards, new games
inline constexpr int kNick = 2;
inline constexpr int kTrash = 3;
inline constexpr int kChange = 4;

inline constexpr std::string_view kBoardHead = "1__";  ///< the front of a board: the digit and a mark in its payload
inline constexpr std::size_t kBoardBytes = kBoardHead.size() + kSquares;  ///< of a board with no bytes behind it

/// Whether only quiet ends `message`: a chat line, a nick, a trashed square, a board line longer than the board.
inline bool RunsToEnd(std::string_view message) {
  return message.starts_with('0') || message.starts_with('2') || message.starts_with('3') ||
         (message.starts_with(kBoardHead) && message.size() > kBoardBytes);
}

/// How long the connection must be quiet, in milliseconds, to end such a message. One that is cut where it can't end
/// gets more time for its rest, and so does a long one, which comes in several packets, whose last can be late. Older
/// versions of the program know the first two only.
inline constexpr int kQuietMs = 20;
inline constexpr int kLongQuietMs = 250;
inline constexpr int kLastQuietMs = 600;
inline constexpr std::size_t kLongMessage = 512;  ///< bytes; a longer one counts as long

/// Sends a typed message: the digit, and the text, which is UTF-8 here and encoded for the wire.
void Transmit(const std::string& text, int dtype);
inline void Transmit(int number, int dtype) { Transmit(std::to_string(number), dtype); }

}  // namespace morva
