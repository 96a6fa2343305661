#pragma once

#include <span>
#include <string>

namespace morva {

/// The bytes of what is stored in the program under a type and an id, for instance "CUSTOM" and 101; empty where
/// nothing is stored there. They stay for the life of the program.
std::span<const unsigned char> LoadResData(int id, const std::string& type);

/// Plays a stored wave image (8 or 16 bits, one or two channels, 11025 or 22050 Hz) in the background, from the next
/// turn of the event loop on; the sound that is playing stops. Where there is no audio device: silence.
void PlaySoundImage(std::span<const unsigned char> wave);

}  // namespace morva
