#include "naming/MediaTexts.h"

#include "core/CodePoints.h"
#include "core/Wildcard.h"

#include <algorithm>
#include <type_traits>

namespace kv {
namespace {

// Nearly all names are ASCII, and the plain loops for those become vector code.
template <typename Character>
bool IsAllAscii(std::basic_string_view<Character> text)
{
    using Unit = std::make_unsigned_t<Character>;
    Unit all = 0;
    for (const Character character : text)
        all = static_cast<Unit>(all | static_cast<Unit>(character));
    return all < 0x80;
}

template <typename To, typename From, typename Transform>
void AppendEach(std::basic_string<To>& out, std::basic_string_view<From> text, Transform transform)
{
    const std::size_t before = out.size();
    out.resize(before + text.size());
    std::transform(text.begin(), text.end(), out.begin() + static_cast<std::ptrdiff_t>(before), transform);
}

template <typename Character>
char ToLower(Character ascii)
{
    return static_cast<char>(ascii + (ascii >= 'A' && ascii <= 'Z' ? 'a' - 'A' : 0));
}

template <typename Visit>
void ForEachCharacter(std::wstring_view text, Visit visit)
{
    for (std::size_t at = 0; at < text.size();) {
        const CodePoint next = NextCodePoint(text, at);
        visit(next.value);
        at += next.length;
    }
}

// Unlike UTF-8 proper the encoding holds surrogates, and it needs no checking.
template <typename Visit>
void ForEachDecoded(std::string_view bytes, Visit visit)
{
    for (std::size_t at = 0; at < bytes.size();) {
        const auto byte = [&] { return static_cast<unsigned char>(bytes[at++]); };
        const char32_t lead = byte();
        const int more = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
        char32_t character = more == 0 ? lead : lead & (0x3Fu >> more);
        for (int i = 0; i < more; ++i)
            character = (character << 6) | (byte() & 0x3Fu);
        visit(character);
    }
}

} // namespace

void MediaTexts::Reserve(std::size_t count, std::size_t bytes)
{
    m_ends.reserve(count);
    m_bytes.reserve(bytes);
}

void MediaTexts::Add(std::wstring_view text)
{
    AppendEncoded(m_bytes, text);
    m_ends.push_back(m_bytes.size());
}

void MediaTexts::AddBytes(std::string_view bytes)
{
    m_bytes += bytes;
    m_ends.push_back(m_bytes.size());
}

void MediaTexts::AddFolded(std::string_view bytes)
{
    AppendFolded(m_bytes, bytes);
    m_ends.push_back(m_bytes.size());
}

void AppendEncoded(std::string& out, std::wstring_view text)
{
    if (IsAllAscii(text))
        AppendEach(out, text, [](wchar_t character) { return static_cast<char>(character); });
    else
        ForEachCharacter(text, [&out](char32_t character) { AppendUtf8(out, character); });
}

void AppendDecoded(std::wstring& out, std::string_view bytes)
{
    if (IsAllAscii(bytes))
        AppendEach(out, bytes, [](char byte) { return static_cast<wchar_t>(byte); });
    else
        ForEachDecoded(bytes, [&out](char32_t character) { AppendWide(out, character); });
}

void AppendFolded(std::string& out, std::string_view bytes)
{
    if (IsAllAscii(bytes))
        AppendEach(out, bytes, ToLower<char>);
    else
        ForEachDecoded(bytes, [&out](char32_t character) { AppendUtf8(out, FoldCase(character)); });
}

void AppendFolded(std::string& out, std::wstring_view text)
{
    if (IsAllAscii(text))
        AppendEach(out, text, ToLower<wchar_t>);
    else
        ForEachCharacter(text, [&out](char32_t character) { AppendUtf8(out, FoldCase(character)); });
}

} // namespace kv
