#include "tools/texts/TextFile.h"

#include "core/ProfileDocument.h"
#include "core/Text.h"
#include "resources/Tables.h"

#include <algorithm>
#include <cwctype>
#include <map>
#include <optional>
#include <regex>
#include <set>
#include <utility>

namespace kv {
namespace {

constexpr const wchar_t* kMenus = L"Menus";
constexpr const wchar_t* kSections[] = {L"Strings", kMenus, L"Dialogs", L"Tips"};

void Add(std::vector<TextItem>& items, const wchar_t* section, std::span<const TextEntry> texts)
{
    for (const TextEntry& text : texts) {
        const std::wstring number = std::to_wstring(text.number);
        const bool hasGroup = text.group != 0;
        items.push_back(
            {section, hasGroup ? std::to_wstring(text.group) + L'.' + number : number, text.text});
    }
}

std::wstring Escaped(std::wstring_view text)
{
    std::wstring line;
    for (const wchar_t letter : text) {
        const std::size_t escape = std::wstring_view(L"\n\r\t\\").find(letter);
        if (escape == std::wstring_view::npos)
            line += letter;
        else
            line += {L'\\', L"nrt\\"[escape]};
    }
    return line;
}

std::wstring LineOf(const TextItem& item)
{
    return item.key + L'=' + Escaped(item.text); // no blanks: one behind the "=" is the text's own
}

/// What a translation must have as often as the text itself. Values may change their places, where the text
/// counts them ("%1") or a translation does ("%2$s").
std::multiset<std::wstring> MarksOf(const std::wstring& text)
{
    static const std::wregex mark(LR"(%%|%\d\$\.?\d*[a-z]|%\.?\d*[a-z]|%\d|\*\.[a-z]+|\B--[a-z][a-z-]*|)"
                                  LR"(<[A-Z][A-Za-z]*>|\\n|\\r|\\t|\\\\)");
    std::multiset<std::wstring> marks;
    std::vector<std::wstring> values; // as they are filled in
    bool isCounted = false;
    for (std::wsregex_iterator at(text.begin(), text.end(), mark), end; at != end; ++at) {
        std::wstring one = at->str();
        if (one.size() > 3 && one[2] == L'$') {
            isCounted = true;
            marks.insert(one);
        } else if (one.size() > 1 && one[0] == L'%' && std::iswalpha(static_cast<wint_t>(one.back()))) {
            values.push_back(std::move(one));
        } else {
            marks.insert(std::move(one));
        }
    }
    for (std::size_t i = 0; i < values.size() && !isCounted; ++i)
        marks.insert(L'%' + std::to_wstring(i + 1) + L'$' + values[i].substr(1));
    if (isCounted)
        marks.insert(values.begin(), values.end()); // mixed: none of them fits
    return marks;
}

/// The letters for Alt: those behind a single "&".
std::wstring MnemonicsOf(std::wstring_view text)
{
    std::wstring letters;
    for (std::size_t at = 0; at + 1 < text.size(); ++at) {
        if (text[at] != L'&')
            continue;
        if (text[at + 1] != L'&' && text[at + 1] != L' ')
            letters += static_cast<wchar_t>(std::towupper(static_cast<wint_t>(text[at + 1])));
        ++at;
    }
    return letters;
}

/// Letters of scripts that are joined, or of which a keyboard has none for each: an underline parts the ones,
/// Alt reaches the others with an input method alone.
bool IsNoAltLetter(wchar_t letter)
{
    return (letter >= 0x0590 && letter <= 0x08FF) || letter >= 0x2E80;
}

/// An ordinary blank where a line must not break: before a high sign, or within guillemets.
bool HasBreakBeforeSign(std::wstring_view text)
{
    for (std::size_t at = 1; at < text.size(); ++at)
        if ((text[at - 1] == L' ' &&
             std::wstring_view(L";:!?\u00BB").find(text[at]) != std::wstring_view::npos) ||
            (text[at - 1] == L'\u00AB' && text[at] == L' '))
            return true;
    return false;
}

/// A backslash before anything but n, r, t and itself.
bool HasUnknownEscape(std::wstring_view text)
{
    for (std::size_t at = text.find(L'\\'); at != std::wstring_view::npos; at = text.find(L'\\', at + 2))
        if (at + 1 == text.size() ||
            std::wstring_view(L"nrt\\").find(text[at + 1]) == std::wstring_view::npos)
            return true;
    return false;
}

class Check
{
public:
    Check(const std::vector<TextItem>& items, std::string_view bytes);
    std::vector<std::string> Run();

private:
    using Place = std::pair<std::wstring, std::wstring>; ///< section and key

    void Say(const TextItem& item, const wchar_t* fault)
    {
        m_faults.push_back(ToUtf8(item.section + L' ' + item.key + L": " + fault));
    }
    void CheckLines(std::wstring_view text);
    void FindSuperfluous();
    void CheckText(const TextItem& item, const std::wstring& translation);
    void CheckMenus();

    const std::vector<TextItem>& m_items;
    ProfileDocument m_document;
    std::map<Place, std::wstring> m_translations; ///< as the lines spell them
    std::vector<std::string> m_faults;
};

Check::Check(const std::vector<TextItem>& items, std::string_view bytes) : m_items(items), m_document(bytes)
{
    const std::wstring text = FromUtf8(bytes);
    if (ToUtf8(text) != bytes)
        m_faults.push_back("the file is not UTF-8");
    CheckLines(text);
}

// A document keeps what it does not understand, and knows the first of several lines alone.
void Check::CheckLines(std::wstring_view text)
{
    std::set<Place> seen;
    std::wstring section;
    int number = 0;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(L'\n', begin), text.size());
        std::wstring_view line = text.substr(begin, end - begin);
        begin = end + 1;
        ++number;
        if (line.ends_with(L'\r'))
            line.remove_suffix(1);
        if (line.empty() || line.starts_with(L';') || line.starts_with(L'#'))
            continue;
        const std::wstring key(line.substr(0, std::min(line.find_first_of(L"= "), line.size())));
        if (line.starts_with(L'[')) {
            section = line.substr(1, line.find(L']') - 1);
            if (std::find(std::begin(kSections), std::end(kSections), section) == std::end(kSections))
                m_faults.push_back(ToUtf8(L'[' + section + L"]: there is no such section"));
        } else if (line.find(L'=') == std::wstring_view::npos) {
            m_faults.push_back("line " + std::to_string(number) + ": has no \"=\"");
        } else if (!seen.insert({section, key}).second) {
            Say({section, key, {}}, L"stands twice");
        }
    }
}

void Check::FindSuperfluous()
{
    std::set<Place> known;
    for (const TextItem& item : m_items)
        known.insert({item.section, item.key});
    for (const wchar_t* section : kSections) {
        for (const auto& [key, value] : m_document.Section(section)) {
            const Place place(section, key);
            if (!known.contains(place))
                Say({section, key, {}}, L"the program has no such text");
            else if (!value.empty())
                m_translations.emplace(place, value);
        }
    }
}

void Check::CheckText(const TextItem& item, const std::wstring& translation)
{
    const std::wstring original = Escaped(item.text);
    if (MarksOf(original) != MarksOf(translation))
        Say(item, L"its placeholders, file patterns, options or line breaks are not those of the text");
    if (HasUnknownEscape(translation))
        Say(item, L"a backslash stands before something else than n, r, t or another one");
    const std::wstring wanted = MnemonicsOf(original);
    const std::wstring found = MnemonicsOf(translation);
    if (wanted.size() != found.size())
        Say(item, wanted.empty() ? L"has a letter for Alt (&), which the text has not"
                                 : L"needs one letter for Alt (&)");
    if (std::any_of(found.begin(), found.end(), IsNoAltLetter))
        Say(item,
            L"its letter for Alt (&) is of a script that has none: put a Latin one behind the text, (&X)");
    if (HasBreakBeforeSign(translation) && !HasBreakBeforeSign(original))
        Say(item, L"an ordinary blank stands before a sign or behind \u00AB: take a no-break one");
}

void Check::CheckMenus()
{
    std::map<std::pair<std::wstring, std::wstring>, std::wstring> taken; // menu and letter: the original's
    for (const TextItem& item : m_items) {
        const auto translation = m_translations.find({item.section, item.key});
        if (item.section != kMenus || translation == m_translations.end())
            continue;
        const std::wstring original = MnemonicsOf(item.text);
        const std::wstring letter = MnemonicsOf(translation->second);
        const std::wstring menu = item.key.substr(0, item.key.find(L'.'));
        const auto [other, isFirst] = taken.emplace(std::pair(menu, letter), original);
        // Entries that take one another's place may share a letter.
        if (!letter.empty() && !isFirst && other->second != original)
            Say(item, L"another entry of the menu has the same letter for Alt");
    }
}

std::vector<std::string> Check::Run()
{
    FindSuperfluous();
    for (const TextItem& item : m_items) {
        const auto translation = m_translations.find({item.section, item.key});
        if (translation == m_translations.end())
            m_faults.push_back(ToUtf8(L"missing: [" + item.section + L"] " + LineOf(item)));
        else
            CheckText(item, translation->second);
    }
    CheckMenus();
    return std::move(m_faults);
}

} // namespace

std::vector<TextItem> LibraryTexts()
{
    std::vector<TextItem> items;
    const std::span<const TextEntry> tables[] = {BuiltInStrings(), BuiltInMenuTexts(), BuiltInDialogTexts(),
                                                 BuiltInTips()};
    for (std::size_t i = 0; i < std::size(kSections); ++i)
        Add(items, kSections[i], tables[i]);
    return items;
}

std::string MakeTextFile(const std::vector<TextItem>& items)
{
    std::wstring text;
    for (const wchar_t* section : kSections) {
        text += std::wstring(text.empty() ? L"[" : L"\n[") + section + L"]\n";
        for (const TextItem& item : items)
            if (item.section == section)
                text += LineOf(item) + L'\n';
    }
    return ToUtf8(text);
}

std::vector<std::string> CheckTextFile(const std::vector<TextItem>& items, std::string_view bytes)
{
    return Check(items, bytes).Run();
}

} // namespace kv
