// Profile files by name: one call reads or writes one value.
#pragma once

namespace KvProfileFileUtils {

/// The leading digits (with a sign) of a value, saturating; `defaultValue` when the key is missing.
int GetInt(const wchar_t* file, const wchar_t* section, const wchar_t* key, int defaultValue);

/// Copies a value into `buffer`, cut to `size` − 1 characters (never inside a surrogate pair) and terminated;
/// the default when the key is missing. @return the number of characters copied.
int GetString(const wchar_t* file, const wchar_t* section, const wchar_t* key, wchar_t* buffer, int size,
              const wchar_t* defaultValue);

/// Writes a value, atomically. @return 1; 0 with the old file whole.
int WriteInt(const wchar_t* file, const wchar_t* section, const wchar_t* key, int value);
int WriteString(const wchar_t* file, const wchar_t* section, const wchar_t* key, const wchar_t* value);

/// Writes the mark of the profile's version: key "Version" of section "ProfileVersion".
int WriteProfileVer(const wchar_t* file, int version);

} // namespace KvProfileFileUtils
