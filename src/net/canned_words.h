#pragma once

#include <array>
#include <string>

#include "net/sounds.h"

namespace morva {

/// A call that shows as a box on the other side. It travels as a chat line of just its word.
struct CannedWord {
  const char* word;
  int sound_here;             ///< at the sender; kNoSound for none
  int sound_there;            ///< at the receiver
  const char* text;           ///< of the box
  bool names_sender = false;  ///< the sender's nick leads the text

  std::string TextFrom(const std::string& sender) const { return names_sender ? sender + text : text; }
};

inline constexpr CannedWord kWakeUp{"yours", kNoSound, kWakeUpSound, "Wake up!"};
inline constexpr CannedWord kCheck{"check", kCheckSound, kCheckSound, "Check!"};
inline constexpr CannedWord kCheckMate{"cmate", kCheckSound, kMateSound, "Checkmate!"};
inline constexpr CannedWord kStaleMate{"smate", kMateSound, kMateSound, "Stalemate!"};
inline constexpr CannedWord kIWin{"iwin", kWinSound, kWinSound, " wins!", true};

inline constexpr std::array kCannedWords{kWakeUp, kCheck, kCheckMate, kStaleMate, kIWin};

}  // namespace morva
