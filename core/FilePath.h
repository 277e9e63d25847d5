// Wide paths as the standard library has them.
#pragma once

#include "core/Text.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace kv {

/// The path that a wide one stands for, without loss; see FromFileName.
inline std::filesystem::path ToPath(std::wstring_view wide)
{
#ifdef _WIN32
    return wide;
#else
    return ToFileName(wide);
#endif
}

/// The inverse of ToPath.
inline std::wstring FromPath(const std::filesystem::path& path)
{
#ifdef _WIN32
    return path.native();
#else
    return FromFileName(path.native());
#endif
}

} // namespace kv
