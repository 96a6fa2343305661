#pragma once

#include <string>

namespace morva {

inline constexpr int kPort = 2948;

/// The types of message; each leads its messages as a digit. The bare words "me" and "you" have none.
inline constexpr int kWords = 0;  ///< chat and canned words
inline constexpr int kBoard = 1;  ///< moves, boards, new games
inline constexpr int kNick = 2;
inline constexpr int kTrash = 3;
inline constexpr int kChange = 4;

inline constexpr char kBoardMark[] = "__";  ///< leads a board line in its payload

/// Sends a typed message: the digit and the text, UTF-8 here and as the wire has it there.
void Transmit(const std::string& text, int dtype);
inline void Transmit(int number, int dtype) { Transmit(std::to_string(number), dtype); }

}  // namespace morva
