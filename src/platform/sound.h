#pragma once

#include <span>

namespace morva {

/// Plays a wave image in the background and returns at once; the sound that is playing stops. The bytes must stay
/// where they are. What can't be played, or where there is no audio device: silence.
void PlaySoundImage(std::span<const unsigned char> wave);

}  // namespace morva
