#include "subtitles/SubtitleMarkup.h"

#include <algorithm>
#include <cctype>
#include <initializer_list>
#include <iterator>
#include <sstream>

namespace titler {
namespace {

/// Where the markup that begins at `text` ends: "<i>", "</c>", "<00:01.000>" and "{\an8}"; 0 for none.
std::size_t MarkupLength(std::string_view text)
{
    const bool isBrace = text.front() == '{';
    const std::size_t name = isBrace || text.substr(0, 2) != "</" ? 1 : 2;
    const auto c = static_cast<unsigned char>(name < text.size() ? text[name] : '\0');
    const bool begins = isBrace ? c == '\\' : std::isalpha(c) != 0 || (name == 1 && std::isdigit(c) != 0);
    const std::size_t end = text.find_first_of(isBrace ? "{}\n" : "<>\n", 1);
    const bool ends = end != text.npos && text[end] == (isBrace ? '}' : '>');
    const std::string_view inside = text.substr(1, end - 1);
    const bool isTime =
        inside.find(':') != inside.npos && inside.find_first_not_of("0123456789:.") == inside.npos;
    return begins && ends && (std::isdigit(c) == 0 || isTime) ? end + 1 : 0;
}

/// Goes through a text: `onMarkup` gets each piece of markup, the rest comes to `out`.
template <typename OnMarkup>
void Walk(std::string_view text, std::string& out, OnMarkup onMarkup)
{
    while (!text.empty()) {
        const bool mayBegin = text.front() == '<' || text.front() == '{';
        const std::size_t length = mayBegin ? MarkupLength(text) : 0;
        if (length > 0)
            onMarkup(text.substr(0, length));
        else
            out += text.front();
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
}

/// "font" of "</FONT>"; empty for a time.
std::string TagName(std::string_view tag)
{
    std::string name;
    for (std::size_t at = tag[1] == '/' ? 2 : 1; std::isalpha(static_cast<unsigned char>(tag[at])) != 0; ++at)
        name += static_cast<char>(std::tolower(static_cast<unsigned char>(tag[at])));
    return name;
}

bool IsShared(std::string_view tagName)
{
    return tagName == "b" || tagName == "i" || tagName == "u";
}

/// The settings for a numeric pad's place, 1 at the bottom left; null for what is more than a place.
const char* SettingsOfPlace(std::string_view braces)
{
    static constexpr const char* settings[] = {"align:left",        "",
                                               "align:right",       "line:50%,center align:left",
                                               "line:50%,center",   "line:50%,center align:right",
                                               "line:0 align:left", "line:0",
                                               "line:0 align:right"};
    constexpr std::string_view begin = "{\\an";
    const bool isPlace = braces.size() == begin.size() + 2 && braces.substr(0, begin.size()) == begin;
    const int place = isPlace ? braces[begin.size()] - '1' : -1;
    return place >= 0 && place < static_cast<int>(std::size(settings)) ? settings[place] : nullptr;
}

/// Without the settings of these names; they are parted by blanks.
std::string WithoutSettings(const std::string& settings, std::initializer_list<std::string_view> names)
{
    std::string kept;
    std::istringstream parts(settings);
    for (std::string part; parts >> part;) {
        const bool goes = std::any_of(names.begin(), names.end(), [&](std::string_view name) {
            return part.compare(0, name.size(), name) == 0;
        });
        if (!goes)
            (kept += kept.empty() ? "" : " ") += part;
    }
    return kept;
}

/// WebVTT knows no braces: the first place in them becomes settings, all else goes.
class BracesAsSettings
{
public:
    explicit BracesAsSettings(WrittenText& written) : m_written(written) {}

    void Take(std::string_view braces)
    {
        const char* const place = SettingsOfPlace(braces);
        if (place == nullptr || m_isPlaced) {
            m_written.loses = true;
            return;
        }
        m_isPlaced = true;
        const std::string others = WithoutSettings(m_written.settings, {"line:", "align:"});
        m_written.settings = place;
        if (!others.empty())
            m_written.settings += (m_written.settings.empty() ? "" : " ") + others;
    }

private:
    WrittenText& m_written;
    bool m_isPlaced = false;
};

WrittenText WebVttWithoutBraces(const SubtitleRow& row)
{
    WrittenText written{{}, row.settings};
    BracesAsSettings braces(written);
    Walk(row.text, written.text, [&](std::string_view markup) {
        if (markup.front() == '{')
            braces.Take(markup);
        else
            written.text += markup;
    });
    return written;
}

/// Tags that SubRip knows and WebVTT does not; whatever neither knows is text.
WrittenText SubRipAsWebVtt(std::string_view text)
{
    WrittenText written;
    BracesAsSettings braces(written);
    Walk(text, written.text, [&](std::string_view markup) {
        if (markup.front() == '{') {
            braces.Take(markup);
            return;
        }
        const std::string name = TagName(markup);
        const std::size_t begin = markup[1] == '/' ? 2 : 1;
        if (name == "font" || name == "s")
            written.loses = true;
        else if (IsShared(name)) // small letters count in WebVTT
            ((written.text += markup.substr(0, begin)) += name) += markup.substr(begin + name.size());
        else
            written.text += markup;
    });
    return written;
}

/// Voices, classes, languages, ruby and times of words go; of "<i.loud>" the class.
WrittenText WebVttAsSubRip(std::string_view text)
{
    static constexpr std::string_view gone[] = {"", "c", "lang", "rt", "ruby", "v"};
    WrittenText written;
    Walk(text, written.text, [&](std::string_view markup) {
        const std::string name = markup.front() == '<' ? TagName(markup) : std::string("{");
        const std::size_t end = (markup[1] == '/' ? 2 : 1) + name.size();
        if (std::find(std::begin(gone), std::end(gone), name) != std::end(gone)) {
            written.loses = true;
        } else if (IsShared(name) && markup[end] != '>') {
            written.loses = true;
            (written.text += markup.substr(0, end)) += '>';
        } else {
            written.text += markup;
        }
    });
    return written;
}

} // namespace

std::string WithoutMarkup(std::string_view text)
{
    std::string plain;
    Walk(text, plain, [](std::string_view) {});
    return plain;
}

WrittenText MarkupIn(const SubtitleRow& row, SubtitleFormat format)
{
    if (row.origin == format)
        return format == SubtitleFormat::WebVtt ? WebVttWithoutBraces(row)
                                                : WrittenText{row.text, row.settings};
    if (row.origin == SubtitleFormat::PlainText)
        return {row.text, {}};
    return format == SubtitleFormat::WebVtt ? SubRipAsWebVtt(row.text) : WebVttAsSubRip(row.text);
}

} // namespace titler
