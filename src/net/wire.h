#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "painting/squares.h"

namespace morva {

inline constexpr int kPort = 2948;

/// The types of message; each leads its messages as a digit. The bare words "me" and "you" have none.
inline constexpr int kWords = 0;  ///< chat and canned words
inline constexpr int kBoard = 1;  ///< moves, boards, new games
inline constexpr int kNick = 2;
inline constexpr int kTrash = 3;
inline constexpr int kChange = 4;

inline constexpr std::string_view kBoardHead = "1__";  ///< leads a board: the digit and a mark in its payload
inline constexpr std::size_t kBoardBytes =
    kBoardHead.size() + kSquares;  ///< of a board with a letter a square and no more

/// Whether the end of `message` shows only in the quiet behind it: a chat line, a nick, a trashed square, a board line
/// longer than the board.
inline bool RunsToEnd(std::string_view message) {
  return message.starts_with('0') || message.starts_with('2') || message.starts_with('3') ||
         (message.starts_with(kBoardHead) && message.size() > kBoardBytes);
}

/// How long the line is quiet, in milliseconds, before what runs to the end counts as over. A message that breaks off
/// where it can't end has more time for its rest, and so has a long one, which comes in several packets; the last of
/// them can be late. Older copies of the program know the first two alone.
inline constexpr int kQuietMs = 20;
inline constexpr int kLongQuietMs = 250;
inline constexpr int kLastQuietMs = 600;
inline constexpr std::size_t kLongMessage = 512;  ///< bytes; a longer one counts as long

/// Sends a typed message: the digit and the text, UTF-8 here and as the wire has it there.
void Transmit(const std::string& text, int dtype);
inline void Transmit(int number, int dtype) { Transmit(std::to_string(number), dtype); }

}  // namespace morva
