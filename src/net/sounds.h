#pragma once

namespace morva {

/// The ids of the stored sounds. 102 is stored, too, and nothing plays it.
inline constexpr int kNoSound = 0;
inline constexpr int kMoveSound = 101;
inline constexpr int kBoardSound = 103;  ///< the whole board changes
inline constexpr int kCheckSound = 104;
inline constexpr int kMateSound = 105;
inline constexpr int kWinSound = 106;
inline constexpr int kWakeUpSound = 107;
inline constexpr int kLineSound = 108;  ///< a chat line, said or heard
inline constexpr int kKeySound = 109;   ///< a key typed into the chat line

}  // namespace morva
