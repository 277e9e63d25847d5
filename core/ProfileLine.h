// The spelling of profile files: bytes to text, what a line is, and which texts a line can hold.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kv {

inline constexpr std::string_view kUtf8Bom = "\xEF\xBB\xBF";

constexpr bool IsProfileBlank(char character)
{
    return character == ' ' || character == '\t';
}

constexpr bool IsLineBreak(char character)
{
    return character == '\n' || character == '\r';
}

constexpr bool EndsLine(std::string_view text)
{
    return !text.empty() && IsLineBreak(text.back());
}

/// The text without the blanks at its end.
std::string_view TrimRight(std::string_view text);

/// The bytes of a profile file as UTF-8: UTF-16 with a byte order mark is converted and loses the mark, all
/// else stays as it is.
std::string DecodeProfile(std::string_view bytes);

/// The first line end of a text, LF if it has none.
std::string_view LineEndOf(std::string_view text);

/// What a line is.
struct ProfileLine
{
    enum class Kind
    {
        Other,
        Section,
        Key
    } kind = Kind::Other;
    std::string_view name;
    std::size_t head = 0; ///< of a key line what stands before the value, of a section line all of it
};

/// @param line one line without its line end.
ProfileLine ParseProfileLine(std::string_view line);

// True when a text is read back as it was written.
bool CanBeSection(std::wstring_view name);
bool CanBeKey(std::wstring_view name);
bool CanBeValue(std::wstring_view value);

/// The leading digits (with a sign) behind blanks, saturating; 0 without digits.
int LeadingInteger(std::wstring_view text);

} // namespace kv
