#include "chrome/KeyTips.h"

#include <utility>

namespace kv {

namespace {

constexpr std::wstring_view kLetters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr int kDigits = 9;

/// Latin letters in upper case; 0 for everything else, which not every keyboard has.
wchar_t Letter(wchar_t character)
{
    if (character >= L'a' && character <= L'z')
        return static_cast<wchar_t>(character - L'a' + L'A');
    return kLetters.find(character) == std::wstring_view::npos ? wchar_t{0} : character;
}

bool BeginsWord(std::wstring_view text, std::size_t at)
{
    return at == 0 || text[at - 1] == L' ' || (text[at] <= L'Z' && text[at - 1] >= L'a');
}

class KeyTips
{
public:
    explicit KeyTips(std::size_t count) : m_tips(count) {}

    void Reserve(std::wstring_view keys) { m_taken += keys; }

    bool Take(std::size_t part, wchar_t key)
    {
        if (key == 0 || m_tips[part] != 0 || m_taken.find(key) != std::wstring::npos)
            return false;
        m_taken += key;
        m_tips[part] = key;
        return true;
    }

    /// The first letter of a word if one is free, else any of the text.
    bool TakeLetterOf(std::size_t part, std::wstring_view text)
    {
        for (const bool isInitial : {true, false}) {
            for (std::size_t i = 0; i < text.size(); ++i) {
                if ((!isInitial || BeginsWord(text, i)) && Take(part, Letter(text[i])))
                    return true;
            }
        }
        return false;
    }

    void TakeAnyLetter(std::size_t part)
    {
        for (const wchar_t letter : kLetters) {
            if (Take(part, letter))
                return;
        }
    }

    std::vector<wchar_t> Tips() && { return std::move(m_tips); }

private:
    std::vector<wchar_t> m_tips;
    std::wstring m_taken;
};

template <typename Function>
void ForEach(const std::vector<KeyTipPart>& parts, KeyTipKind kind, Function function)
{
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (parts[i].kind == kind)
            function(i);
    }
}

} // namespace

std::vector<wchar_t> AssignKeyTips(const std::vector<KeyTipPart>& parts, std::wstring_view held)
{
    KeyTips tips(parts.size());
    ForEach(parts, KeyTipKind::Mnemonic, [&](std::size_t i) {
        if (kLetters.find(parts[i].mnemonic) != std::wstring_view::npos)
            tips.Take(i, parts[i].mnemonic);
    });
    tips.Reserve(held);
    int tabs = 0;
    ForEach(parts, KeyTipKind::Tab, [&](std::size_t i) {
        if (tabs++ < kDigits)
            tips.Take(i, static_cast<wchar_t>(L'0' + tabs));
    });
    // Before the many tabs, which would leave no letter.
    ForEach(parts, KeyTipKind::Button, [&](std::size_t i) { tips.TakeLetterOf(i, parts[i].label); });
    ForEach(parts, KeyTipKind::Button, [&](std::size_t i) { tips.TakeAnyLetter(i); });
    ForEach(parts, KeyTipKind::Tab, [&](std::size_t i) { tips.TakeLetterOf(i, parts[i].label); });
    return std::move(tips).Tips();
}

} // namespace kv
