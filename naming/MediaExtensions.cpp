#include "naming/MediaExtensions.h"

#include "KvFileNaming.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace kv {
namespace {

// What recorders and editors write. A container that usually holds sound alone
// (m4a, mka, ogg) is not among them.
constexpr std::string_view kVideoExtensions[] = {
    "264", "265", "3g2",  "3gp",  "asf",  "av1",  "avi", "braw", "crm", "divx", "dv",  "f4v",
    "flv", "gxf", "h264", "h265", "hevc", "ivf",  "lxf", "m1v",  "m2t", "m2ts", "m2v", "m4v",
    "mkv", "mod", "mov",  "mp4",  "mpe",  "mpeg", "mpg", "mts",  "mxf", "nut",  "ogm", "ogv",
    "qt",  "r3d", "rm",   "rmvb", "tod",  "ts",   "vob", "webm", "wmv", "wtv",  "y4m", "yuv",
};

constexpr std::size_t kLongest = sizeof(std::uint32_t);

// An extension as a number that is quick to look up; 0 when it cannot be one of the table.
template <typename Character>
constexpr std::uint32_t Packed(std::basic_string_view<Character> extension)
{
    if (extension.size() > kLongest)
        return 0;
    std::uint32_t packed = 0;
    for (const Character character : extension) {
        if (character <= 0 || character >= 0x80)
            return 0;
        const bool isUpper = character >= 'A' && character <= 'Z';
        packed = (packed << 8) | static_cast<std::uint32_t>(character + (isUpper ? 'a' - 'A' : 0));
    }
    return packed;
}

constexpr auto kPackedExtensions = [] {
    std::array<std::uint32_t, std::size(kVideoExtensions)> packed{};
    std::transform(std::begin(kVideoExtensions), std::end(kVideoExtensions), packed.begin(), Packed<char>);
    std::sort(packed.begin(), packed.end());
    return packed;
}();
// 0 would be found for every extension that cannot be in the table.
static_assert(std::find(kPackedExtensions.begin(), kPackedExtensions.end(), 0u) == kPackedExtensions.end());

} // namespace

bool HasVideoExtension(std::wstring_view name)
{
    const std::size_t dot = name.rfind(L'.');
    if (dot == std::wstring_view::npos || dot == 0)
        return false;
    return std::binary_search(kPackedExtensions.begin(), kPackedExtensions.end(),
                              Packed(name.substr(dot + 1)));
}

} // namespace kv

bool KvHasVideoExtension(const wchar_t* name)
{
    return name && kv::HasVideoExtension(name);
}
