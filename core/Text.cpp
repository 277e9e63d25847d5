#include "core/Text.h"

#include "core/CodePoints.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace kv {
namespace {

// A byte that is no UTF-8 stands in a wide file name as the lone surrogate U+DC80 … U+DCFF.
constexpr char32_t kEscapedBytes = 0xDC00;

bool IsEscapedByte(char32_t character)
{
    return character >= kEscapedBytes + 0x80 && character <= kEscapedBytes + 0xFF;
}

std::wstring Widen(std::string_view ascii)
{
    return {ascii.begin(), ascii.end()};
}

/// A placeholder at the start of a text; length 0 when there is none.
struct Placeholder
{
    std::size_t length = 0;
    std::optional<std::size_t> position; ///< of the argument that it names
};

Placeholder PlaceholderAt(std::wstring_view text)
{
    if (!text.starts_with(L'%'))
        return {};
    Placeholder placeholder;
    std::size_t at = 1;
    if (text.size() > 3 && text[1] >= L'1' && text[1] <= L'9' && text[2] == L'$') {
        placeholder.position = static_cast<std::size_t>(text[1] - L'1');
        at = 3;
    }
    for (const std::wstring_view form : {L"s", L"d", L".1f"}) {
        if (text.substr(at).starts_with(form))
            placeholder.length = at + form.size();
    }
    return placeholder;
}

} // namespace

CodePoint NextCodePoint(std::string_view bytes, std::size_t at)
{
    const auto byte = [bytes](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const char32_t lead = byte(at);
    if (lead < 0x80)
        return {lead, 1, true};
    if (lead < 0xC2 || lead > 0xF4)
        return {kReplacementCharacter, 1, false};

    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    char32_t value = lead & (0x7Fu >> length);
    // The second byte's range keeps out overlong forms, surrogates and values above U+10FFFF.
    char32_t low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    char32_t high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    for (std::size_t i = 1; i < length; ++i) {
        if (at + i >= bytes.size() || byte(at + i) < low || byte(at + i) > high)
            return {kReplacementCharacter, i, false};
        value = (value << 6) | (byte(at + i) & 0x3Fu);
        low = 0x80;
        high = 0xBF;
    }
    return {value, length, true};
}

void AppendUtf8(std::string& out, char32_t character)
{
    const auto put = [&out](char32_t byte) { out.push_back(static_cast<char>(byte)); };
    if (character < 0x80) {
        put(character);
    } else if (character < 0x800) {
        put(0xC0 | (character >> 6));
        put(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        put(0xE0 | (character >> 12));
        put(0x80 | ((character >> 6) & 0x3F));
        put(0x80 | (character & 0x3F));
    } else {
        put(0xF0 | (character >> 18));
        put(0x80 | ((character >> 12) & 0x3F));
        put(0x80 | ((character >> 6) & 0x3F));
        put(0x80 | (character & 0x3F));
    }
}

void AppendWide(std::wstring& out, char32_t character)
{
    if constexpr (sizeof(wchar_t) == 2) {
        if (character >= 0x10000) {
            out.push_back(static_cast<wchar_t>(0xD800 + ((character - 0x10000) >> 10)));
            out.push_back(static_cast<wchar_t>(0xDC00 + ((character - 0x10000) & 0x3FF)));
            return;
        }
    }
    out.push_back(static_cast<wchar_t>(character));
}

std::string ToUtf8(std::wstring_view text)
{
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const CodePoint next = NextCodePoint(text, at);
        AppendUtf8(out, next.valid ? next.value : kReplacementCharacter);
        at += next.length;
    }
    return out;
}

std::wstring FromUtf8(std::string_view bytes)
{
    std::wstring out;
    out.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        const CodePoint next = NextCodePoint(bytes, at);
        AppendWide(out, next.value);
        at += next.length;
    }
    return out;
}

std::wstring FromFileName(std::string_view bytes)
{
    std::wstring out;
    out.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        const CodePoint next = NextCodePoint(bytes, at);
        if (next.valid) {
            AppendWide(out, next.value);
            at += next.length;
        } else {
            AppendWide(out, kEscapedBytes + static_cast<unsigned char>(bytes[at]));
            ++at;
        }
    }
    return out;
}

std::string ToFileName(std::wstring_view name)
{
    std::string out;
    out.reserve(name.size());
    for (std::size_t at = 0; at < name.size();) {
        const CodePoint next = NextCodePoint(name, at);
        if (IsEscapedByte(next.value))
            out.push_back(static_cast<char>(next.value - kEscapedBytes));
        else
            AppendUtf8(out, next.valid ? next.value : kReplacementCharacter);
        at += next.length;
    }
    return out;
}

std::wstring FillText(std::wstring_view text, std::initializer_list<std::wstring_view> arguments)
{
    std::wstring out;
    std::size_t next = 0;
    while (!text.empty()) {
        const std::size_t literal = std::min(text.find(L'%'), text.size());
        out += text.substr(0, literal);
        text.remove_prefix(literal);

        const Placeholder placeholder = PlaceholderAt(text);
        const std::size_t argument = placeholder.position.value_or(next);
        if (placeholder.length > 0 && argument < arguments.size()) {
            out += arguments.begin()[argument];
            next += placeholder.position ? 0 : 1;
            text.remove_prefix(placeholder.length);
        } else if (!text.empty()) {
            out += L'%';
            text.remove_prefix(text.starts_with(L"%%") ? 2 : 1);
        }
    }
    return out;
}

std::wstring NumberText(std::int64_t value)
{
    std::array<char, 24> digits;
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    return Widen({digits.data(), result.ptr});
}

std::wstring NumberText(double value, int decimals)
{
    // Room for the largest double and for every decimal.
    std::array<char, 512> digits;
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                      std::chars_format::fixed, std::clamp(decimals, 0, 100));
    return Widen({digits.data(), result.ptr});
}

} // namespace kv
