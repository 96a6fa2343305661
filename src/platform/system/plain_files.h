#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace morva {

/// Whether there is a plain file of that name (UTF-8; without a folder: in the current folder).
bool FileExists(const std::string& name);

/// The bytes of a plain file, at most `most` of them; nothing where it can't be read.
std::optional<std::string> ReadFile(const std::string& name, std::size_t most = 16U << 20U);

/// Whether WriteFile would find a place and the right to write the file; nothing is left behind.
bool CanWriteFile(const std::string& name);

/// Writes the whole file or leaves what was there untouched. False: it could not be written.
bool WriteFile(const std::string& name, std::string_view bytes);

}  // namespace morva
