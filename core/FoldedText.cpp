#include "core/FoldedText.h"

#include "core/CodePoints.h"
#include "core/Wildcard.h"

namespace kv {
namespace {

// Most texts are ASCII, and this is all that they cost.
inline char32_t FoldedAt(std::wstring_view text, std::size_t at)
{
    const auto unit = static_cast<char32_t>(text[at]);
    if (unit < 0x80)
        return unit - U'A' < 26 ? unit + (U'a' - U'A') : unit;
    return FoldCase(NextCodePoint(text, at).value);
}

/// A character and its folding take the same number of units: no folding leaves its plane.
bool StandsAt(std::wstring_view text, std::size_t at, std::wstring_view folded)
{
    for (std::size_t i = 0; i < folded.size();) {
        const CodePoint wanted = NextCodePoint(folded, i);
        if (FoldedAt(text, at + i) != wanted.value)
            return false;
        i += wanted.length;
    }
    return true;
}

} // namespace

std::wstring FoldText(std::wstring_view text)
{
    std::wstring folded;
    folded.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const CodePoint point = NextCodePoint(text, at);
        if (point.valid)
            AppendWide(folded, FoldCase(point.value));
        else
            folded += text[at];
        at += point.length;
    }
    return folded;
}

std::size_t FindFolded(std::wstring_view text, std::wstring_view folded, std::size_t from)
{
    if (folded.size() > text.size())
        return std::wstring_view::npos;
    const std::size_t last = text.size() - folded.size();
    const char32_t first = NextCodePoint(folded, 0).value;
    for (std::size_t at = from; at <= last; ++at) {
        if (FoldedAt(text, at) == first && StandsAt(text, at, folded))
            return at;
    }
    return std::wstring_view::npos;
}

} // namespace kv
