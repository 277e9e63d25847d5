// Which file names look like video.
#pragma once

#include <string_view>

namespace kv {

/// True when a name ends in a usual video extension, in any case: "clip.MXF", not "clip.wav" or "mxf".
bool HasVideoExtension(std::wstring_view name);

} // namespace kv
