#include "subtitles/VttText.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>

namespace titler {
namespace {

struct NamedCharacter
{
    std::string_view name;
    std::string_view character;
};
constexpr NamedCharacter kNamed[] = {
    {"amp", "&"},
    {"lt", "<"},
    {"gt", ">"},
    {"nbsp", "\xC2\xA0"},
    {"lrm", "\xE2\x80\x8E"},
    {"rlm", "\xE2\x80\x8F"},
    {"quot", "\""},
    {"apos", "'"},
};

void AppendUtf8(std::string& out, std::uint32_t c)
{
    const auto tail = [&out, c](unsigned shift) { out += static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        tail(0);
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        tail(6), tail(0);
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        tail(12), tail(6), tail(0);
    }
}

/// "#233" or "#xE9".
bool AppendNumbered(std::string& out, std::string_view name)
{
    const bool isHex = name.size() > 1 && (name[1] == 'x' || name[1] == 'X');
    name.remove_prefix(isHex ? 2 : 1);
    std::uint32_t number = 0;
    const char* const end = name.data() + name.size();
    const auto [stop, error] = std::from_chars(name.data(), end, number, isHex ? 16 : 10);
    const bool isSurrogate = number >= 0xD800 && number <= 0xDFFF;
    if (error != std::errc() || stop != end || number < 0x20 || number > 0x10FFFF || isSurrogate)
        return false;
    AppendUtf8(out, number);
    return true;
}

bool AppendReference(std::string& out, std::string_view name)
{
    if (!name.empty() && name.front() == '#')
        return AppendNumbered(out, name);
    const auto* named = std::find_if(std::begin(kNamed), std::end(kNamed),
                                     [name](const NamedCharacter& n) { return n.name == name; });
    if (named == std::end(kNamed))
        return false;
    out += named->character;
    return true;
}

constexpr bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// Whether a tag begins here: "<i>", "</c>", "<v.loud Name>", or the time of a word, "<00:01.000>".
bool BeginsTag(std::string_view text)
{
    static constexpr std::string_view tags[] = {"b", "c", "font", "i", "lang", "rt", "ruby", "s", "u", "v"};
    const std::size_t close = text.find_first_of("<>", 1);
    if (close == text.npos || text[close] == '<')
        return false;
    std::string_view inside = text.substr(1, close - 1);
    if (!inside.empty() && inside.front() == '/')
        inside.remove_prefix(1);
    const auto word =
        static_cast<std::size_t>(std::find_if_not(inside.begin(), inside.end(), IsLetter) - inside.begin());
    if (word == 0)
        return !inside.empty() && inside.find_first_not_of("0123456789:.") == inside.npos;
    const bool ends =
        word == inside.size() || inside[word] == '.' || inside[word] == ' ' || inside[word] == '\t';
    return ends && std::find(std::begin(tags), std::end(tags), inside.substr(0, word)) != std::end(tags);
}

} // namespace

std::string FromVttText(std::string text)
{
    constexpr std::size_t longestName = 8; // "#x10FFFF"
    std::size_t at = text.find('&');
    if (at == text.npos)
        return text;
    const std::string_view all = text;
    std::string out;
    std::size_t copied = 0;
    for (; at != all.npos; at = all.find('&', at)) {
        out += all.substr(copied, at - copied);
        const std::size_t end = all.substr(at + 1, longestName + 1).find(';');
        const bool isReference = end != all.npos && AppendReference(out, all.substr(at + 1, end));
        if (!isReference)
            out += '&';
        at += isReference ? end + 2 : 1;
        copied = at;
    }
    out += all.substr(copied);
    return out;
}

void AppendVttText(std::string& out, std::string_view line)
{
    for (std::size_t at = 0; at < line.size(); ++at) {
        const char c = line[at];
        if (c == '&')
            out += "&amp;";
        else if (c == '<' && !BeginsTag(line.substr(at)))
            out += "&lt;";
        else if (c == '>' && at >= 2 && line.substr(at - 2, 2) == "--")
            out += "&gt;";
        else
            out += c;
    }
}

} // namespace titler
