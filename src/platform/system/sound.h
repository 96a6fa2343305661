#pragma once

#include <span>

namespace morva {

/// Plays a stored wave image (8 or 16 bits, one or two channels, 11025 or 22050 Hz) in the background, from the next
/// turn of the event loop on; the sound that is playing stops. Where there is no audio device: silence.
void PlaySoundImage(std::span<const unsigned char> wave);

}  // namespace morva
