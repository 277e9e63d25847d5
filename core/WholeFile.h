// Reading and writing files as a whole.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kv {

/// Reads a whole regular file. @param path wide path. @param limit files above that many bytes are refused.
/// @param error receives a message that names the file, when not null.
std::optional<std::string> ReadWholeFile(std::wstring_view path, std::string* error = nullptr,
                                         std::size_t limit = std::size_t{1} << 30);

/// Replaces a file atomically: the bytes are written beside it, flushed to the disk and renamed over it, so
/// that a crash at any moment leaves the old file or the new one. Mode and owner of an existing file (on
/// Windows its attributes and access rights) survive, a symbolic link keeps pointing to the file that is
/// replaced. A new file gets the usual mode.
/// @return false, with the old file whole and nothing left beside it, when anything fails; so it does on
/// Windows while somebody holds the file open.
bool WriteWholeFile(std::wstring_view path, std::string_view bytes, std::string* error = nullptr);

enum class NewFile
{
    Made,
    IsThere, ///< something of that name is, and stays as it is
    Failed
};

/// Makes an empty file, or none: not even one that somebody else makes at this moment is touched.
/// @param error receives a message that names the file, when not null and none was made.
NewFile CreateEmptyFile(std::wstring_view path, std::string* error = nullptr);

} // namespace kv
