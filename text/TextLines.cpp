#include "text/TextLines.h"

namespace kv {

namespace {

constexpr std::wstring_view kBreaks = L"\r\n";

// Cuts the first line off, with its break.
std::wstring_view TakeLine(std::wstring_view& text)
{
    const std::size_t end = text.find_first_of(kBreaks);
    const std::wstring_view line = text.substr(0, end);
    if (end == std::wstring_view::npos)
        text = {};
    else
        text.remove_prefix(end + (text.substr(end, 2) == kBreaks ? 2 : 1));
    return line;
}

} // namespace

std::vector<std::wstring> SplitLines(std::wstring_view text)
{
    std::vector<std::wstring> lines;
    while (!text.empty())
        lines.emplace_back(TakeLine(text));
    return lines;
}

std::wstring FirstLine(std::wstring_view text)
{
    return std::wstring(TakeLine(text));
}

std::wstring JoinLines(const std::vector<std::wstring>& lines)
{
    std::wstring text;
    for (const std::wstring& line : lines) {
        if (&line != &lines.front())
            text += L'\n';
        text += line;
    }
    return text;
}

} // namespace kv
