#include "core/ProfileLine.h"

#include "core/CodePoints.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace kv {
namespace {

constexpr std::string_view kBlanks = " \t";

std::string_view TrimLeft(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text;
}

/// UTF-8 of UTF-16 bytes; half a character becomes U+FFFD.
std::string FromUtf16(std::string_view bytes, bool bigEndian)
{
    const auto unit = [bytes, bigEndian](std::size_t at) {
        const char32_t first = static_cast<unsigned char>(bytes[at]);
        const char32_t second = static_cast<unsigned char>(bytes[at + 1]);
        return bigEndian ? first << 8 | second : second << 8 | first;
    };
    std::string out;
    out.reserve(bytes.size());
    std::size_t at = 0;
    for (; at + 1 < bytes.size(); at += 2) {
        char32_t character = unit(at);
        if (IsSurrogate(character)) {
            const char32_t next = at + 3 < bytes.size() ? unit(at + 2) : 0;
            if (character < 0xDC00 && next >= 0xDC00 && next <= 0xDFFF) {
                character = 0x10000 + ((character - 0xD800) << 10) + (next - 0xDC00);
                at += 2;
            } else {
                character = kReplacementCharacter;
            }
        }
        AppendUtf8(out, character);
    }
    if (at < bytes.size())
        AppendUtf8(out, kReplacementCharacter);
    return out;
}

/// True when a text survives the way to UTF-8 in one line and back.
bool IsOneLine(std::wstring_view text)
{
    for (std::size_t at = 0; at < text.size();) {
        const CodePoint next = NextCodePoint(text, at);
        if (!next.valid || next.value == U'\n' || next.value == U'\r')
            return false;
        at += next.length;
    }
    return true;
}

} // namespace

std::string_view TrimRight(std::string_view text)
{
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

std::string DecodeProfile(std::string_view bytes)
{
    const bool bigEndian = bytes.starts_with("\xFE\xFF");
    if (!bigEndian && !bytes.starts_with("\xFF\xFE"))
        return std::string(bytes);
    std::string text = FromUtf16(bytes.substr(2), bigEndian);
    std::size_t marks = 0;
    while (std::string_view(text).substr(marks).starts_with(kUtf8Bom))
        marks += kUtf8Bom.size();
    text.erase(0, marks);
    return text;
}

std::string_view LineEndOf(std::string_view text)
{
    const auto at = std::find_if(text.begin(), text.end(), IsLineBreak);
    if (at == text.end())
        return "\n";
    text.remove_prefix(static_cast<std::size_t>(at - text.begin()));
    return text.substr(0, text.starts_with("\r\n") ? 2 : 1);
}

ProfileLine ParseProfileLine(std::string_view line)
{
    const std::string_view text = TrimLeft(line);
    if (text.empty() || text.front() == ';' || text.front() == '#')
        return {};
    if (text.front() == '[') {
        const std::size_t close = text.find(']');
        if (close == std::string_view::npos)
            return {};
        return {ProfileLine::Kind::Section, text.substr(1, close - 1), line.size()};
    }
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos || equals == 0)
        return {};
    const std::string_view name = TrimRight(text.substr(0, equals));
    std::string_view value = text.substr(equals + 1);
    if (name.size() < equals)
        value = TrimLeft(value);
    return {ProfileLine::Kind::Key, name, line.size() - value.size()};
}

bool CanBeSection(std::wstring_view name)
{
    return IsOneLine(name) && name.find(L']') == std::wstring_view::npos;
}

bool CanBeKey(std::wstring_view name)
{
    // A byte order mark would be one if the key came first in the file.
    constexpr std::wstring_view kNotFirst = L" \t;#[\xFEFF";
    constexpr std::wstring_view kNotLast = L" \t";
    return !name.empty() && IsOneLine(name) && name.find(L'=') == std::wstring_view::npos &&
           kNotFirst.find(name.front()) == std::wstring_view::npos &&
           kNotLast.find(name.back()) == std::wstring_view::npos;
}

bool CanBeValue(std::wstring_view value)
{
    return IsOneLine(value);
}

int LeadingInteger(std::wstring_view text)
{
    constexpr std::int64_t kLimit = std::numeric_limits<int>::max();
    text.remove_prefix(std::min(text.find_first_not_of(L" \t\n\v\f\r"), text.size()));
    const bool negative = text.starts_with(L'-');
    if (negative || text.starts_with(L'+'))
        text.remove_prefix(1);
    std::int64_t value = 0;
    for (const wchar_t digit : text) {
        if (digit < L'0' || digit > L'9')
            break;
        value = std::min(value * 10 + (digit - L'0'), kLimit + 1);
    }
    return static_cast<int>(negative ? -value : std::min(value, kLimit));
}

} // namespace kv
