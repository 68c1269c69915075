#pragma once

#include <fstream>
#include <string>
#include <string_view>

/// Files that a user names: read only if they are regular files, written whole or not at all.

/// Opens a regular file for reading. False for anything missing or unreadable, for a directory and for a device.
[[nodiscard]] bool OpenForReading(const std::string& path, std::ifstream& file);

/// How writing a file ended.
enum class FileOutcome {
    written,
    not_opened,   ///< no file can be created at this place
    not_written,  ///< the device is full, or fails
};

/// Makes `text` the content of the file. It goes to a temporary file in the same folder, which then takes the place of
/// the old one: a full disk or a kill leaves the old file as it was, never a part of the new one. What a kill leaves
/// beside it, NAME.vorka-XXXXXX, is removed when the same file is next written. A symbolic link is followed, also where
/// nothing is yet; what is no regular file (a device, a pipe) is written to directly. Owner, group and permissions of
/// an old file stay, but for set-user-ID, set-group-ID and the sticky bit; if the owner can't be kept, nothing is
/// written.
[[nodiscard]] FileOutcome ReplaceFile(const std::string& path, std::string_view text);
