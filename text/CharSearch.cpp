#include "text/CharSearch.h"

#include "core/CodePoints.h"

#include <algorithm>
#include <optional>

namespace kv {

namespace {

constexpr char kEndOfName = '\n';
constexpr char kWordBegin = ' ';

bool IsBlank(wchar_t unit)
{
    return unit == L' ' || unit == L'\t' || unit == L'\n' || unit == L'\r' || unit == 0xA0;
}

std::wstring_view Trimmed(std::wstring_view text)
{
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// The number that 1 to 6 hexadecimal digits spell.
std::optional<char32_t> HexNumber(std::wstring_view digits)
{
    if (digits.empty() || digits.size() > 6)
        return std::nullopt;
    char32_t number = 0;
    for (const wchar_t digit : digits) {
        const wchar_t lower = digit >= L'A' && digit <= L'F' ? digit - L'A' + L'a' : digit;
        if (lower >= L'0' && lower <= L'9')
            number = number * 16 + static_cast<char32_t>(lower - L'0');
        else if (lower >= L'a' && lower <= L'f')
            number = number * 16 + static_cast<char32_t>(lower - L'a' + 10);
        else
            return std::nullopt;
    }
    return number;
}

/// The digits after a prefix that makes them a code.
std::optional<std::wstring_view> CodeDigits(std::wstring_view query)
{
    if (query.size() < 2)
        return std::nullopt;
    const bool isUnicode = (query[0] == L'U' || query[0] == L'u') && query[1] == L'+';
    const bool isHex = query[0] == L'0' && (query[1] == L'x' || query[1] == L'X');
    return isUnicode || isHex ? std::optional(query.substr(2)) : std::nullopt;
}

/// The first one behind `after` but `other`, then the first of all; -1 for none.
struct NameMatches
{
    int next = -1;
    int first = -1;
};
NameMatches FindByName(std::wstring_view query, const CodeTable& table, const CharNameIndex& names, int after,
                       int other)
{
    NameMatches matches;
    names.Find(NameWords(query), [&](char16_t code) {
        const int place = PlaceOf(table, code);
        if (place < 0 || place == other)
            return false;
        if (matches.first < 0)
            matches.first = place;
        if (place > after)
            matches.next = place;
        return matches.next >= 0;
    });
    return matches;
}

/// The character that the query is, or whose code it is; -1 for none.
int FindExactly(std::wstring_view query, const CodeTable& table)
{
    const CodePoint only = NextCodePoint(query, 0);
    if (const int place = only.length == query.size() ? PlaceOf(table, only.value) : -1; place >= 0)
        return place;
    const auto code = HexNumber(query);
    return code ? PlaceOf(table, *code) : -1;
}

} // namespace

void CharNameIndex::Add(char16_t code, std::string_view name)
{
    m_codes.push_back(code);
    m_begins.push_back(static_cast<std::uint32_t>(m_text.size()));
    m_text += kWordBegin;
    m_text += name;
    std::replace(m_text.end() - static_cast<std::ptrdiff_t>(name.size()), m_text.end(), '-', kWordBegin);
    m_text += kEndOfName;
}

std::string_view CharNameIndex::Name(std::size_t record) const
{
    const std::size_t begin = m_begins[record];
    const std::size_t end = record + 1 < m_begins.size() ? m_begins[record + 1] : m_text.size();
    return std::string_view(m_text).substr(begin, end - begin);
}

// Searches the whole text at once: that goes much faster than a search in each name.
std::size_t CharNameIndex::NextWith(const std::string& word, std::size_t record) const
{
    if (record >= m_begins.size())
        return m_begins.size();
    const std::size_t place = m_text.find(word, m_begins[record]);
    if (place == std::string::npos)
        return m_begins.size();
    const auto from = m_begins.begin() + static_cast<std::ptrdiff_t>(record);
    return static_cast<std::size_t>(std::upper_bound(from, m_begins.end(), place) - m_begins.begin()) - 1;
}

bool CharNameIndex::HasAll(std::size_t record, const std::vector<std::string>& words) const
{
    const std::string_view name = Name(record);
    return std::all_of(words.begin(), words.end(),
                       [name](const std::string& word) { return name.find(word) != std::string_view::npos; });
}

bool CharNameIndex::Find(const std::vector<std::string>& words,
                         const std::function<bool(char16_t)>& visit) const
{
    if (words.empty())
        return false;
    for (std::size_t record = NextWith(words.front(), 0); record < m_codes.size();
         record = NextWith(words.front(), record + 1)) {
        if (HasAll(record, words) && visit(m_codes[record]))
            return true;
    }
    return false;
}

std::vector<std::string> NameWords(std::wstring_view query)
{
    std::vector<std::string> words;
    bool inWord = false;
    for (const wchar_t unit : query) {
        const bool isSeparator = IsBlank(unit) || unit == L'-' || unit == L',';
        if (!isSeparator && !inWord)
            words.emplace_back(1, kWordBegin);
        inWord = !isSeparator;
        if (isSeparator)
            continue;
        const bool isLower = unit >= L'a' && unit <= L'z';
        // What no name holds must not match either.
        words.back() += isLower                      ? static_cast<char>(unit - L'a' + L'A')
                        : unit > L' ' && unit < 0x7F ? static_cast<char>(unit)
                                                     : '\x7F';
    }
    std::sort(words.begin(), words.end(),
              [](const std::string& a, const std::string& b) { return a.size() > b.size(); });
    return words;
}

int FindCharacter(std::wstring_view query, const CodeTable& table, const CharNameIndex& names, int after)
{
    if (query.empty())
        return -1;
    // A blank may be what is looked for.
    const bool isOne = NextCodePoint(query, 0).length == query.size();
    const std::wstring_view words = Trimmed(query);
    if (words.empty())
        return isOne ? FindExactly(query, table) : -1;
    query = words;
    if (const auto digits = CodeDigits(query)) {
        const auto code = HexNumber(*digits);
        return code ? PlaceOf(table, *code) : -1;
    }
    // The exact one comes first, then the names in order, and round again.
    const int exact = FindExactly(query, table);
    if (exact >= 0 && after < 0)
        return exact;
    const NameMatches matches = FindByName(query, table, names, after == exact ? -1 : after, exact);
    if (matches.next >= 0)
        return matches.next;
    return exact >= 0 ? exact : matches.first;
}

} // namespace kv
