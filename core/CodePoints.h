// Reading and writing text one code point at a time.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

namespace kv {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;

constexpr bool IsSurrogate(char32_t character)
{
    return character >= 0xD800 && character <= 0xDFFF;
}

/// One code point and the number of units (bytes or wchar_ts) that it takes.
struct CodePoint
{
    char32_t value;
    std::size_t length;
    bool valid;
};

/// The code point at `at`, which lies inside the text. A surrogate pair is one where wchar_t is UTF-16.
inline CodePoint NextCodePoint(std::wstring_view text, std::size_t at)
{
    const auto unit = [text](std::size_t i) {
        return static_cast<char32_t>(static_cast<std::make_unsigned_t<wchar_t>>(text[i]));
    };
    const char32_t first = unit(at);
    if constexpr (sizeof(wchar_t) == 2) {
        if (first >= 0xD800 && first <= 0xDBFF && at + 1 < text.size()) {
            const char32_t second = unit(at + 1);
            if (second >= 0xDC00 && second <= 0xDFFF)
                return {0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00), 2, true};
        }
    }
    return {first, 1, !IsSurrogate(first) && first <= 0x10FFFF};
}

/// The code point at byte `at`, which lies inside the text. What is no UTF-8 is invalid, U+FFFD and as long
/// as the bytes that could have begun a character.
CodePoint NextCodePoint(std::string_view bytes, std::size_t at);

/// The length to which a text is cut for a buffer of `most` units: a surrogate pair is not cut in half.
inline std::size_t CutLength(std::wstring_view text, std::size_t most)
{
    if (text.size() <= most || most == 0)
        return std::min(text.size(), most);
    return NextCodePoint(text, most - 1).length > 1 ? most - 1 : most;
}

void AppendUtf8(std::string& out, char32_t character);
void AppendWide(std::wstring& out, char32_t character);

} // namespace kv
