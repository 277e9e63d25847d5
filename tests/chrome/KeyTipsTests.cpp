// Which keys the parts of a caption strip get.
#include "chrome/KeyTips.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace {

using kv::KeyTipKind;
using kv::KeyTipPart;

KeyTipPart Entry(wchar_t mnemonic)
{
    return {KeyTipKind::Mnemonic, L"Entry", mnemonic};
}

KeyTipPart Tab(const wchar_t* name)
{
    return {KeyTipKind::Tab, name};
}

KeyTipPart Button(const wchar_t* name)
{
    return {KeyTipKind::Button, name};
}

std::wstring Tips(const std::vector<KeyTipPart>& parts, std::wstring_view held = {})
{
    std::wstring tips;
    for (const wchar_t tip : kv::AssignKeyTips(parts, held))
        tips += tip == 0 ? L'-' : tip;
    return tips;
}

TEST(KeyTips, EveryKindHasItsKeys)
{
    struct
    {
        const char* name;
        std::vector<KeyTipPart> parts;
        const wchar_t* tips;
        const wchar_t* held = L"";
    } const rows[] = {
        {"window buttons",
         {Button(L"AppMenu"), Button(L"Minimize"), Button(L"Maximize"), Button(L"Close")},
         L"AMXC"},
        {"an entry beats a button before it", {Button(L"Fine"), Entry(L'F')}, L"IF"},
        {"a lower-case mnemonic has no tip", {Entry(L'f'), Button(L"Fine")}, L"-F"},
        {"two entries with one mnemonic", {Entry(L'E'), Entry(L'E')}, L"E-"},
        {"no letter", {Entry(0), Entry(L'5'), Entry(L'É'), Entry(L'-')}, L"----"},
        {"initials of words first", {Button(L"Media"), Button(L"my Clips"), Button(L"smartTool")}, L"MCS"},
        {"inner capitals are initials", {Button(L"Ab"), Button(L"aTool")}, L"AT"},
        {"any free letter", {Button(L"Абв"), Button(L""), Button(L"B")}, L"ACB"},
        {"tabs by their place", {Tab(L"Design"), Button(L"Design"), Tab(L"Animate")}, L"1D2"},
        {"the host's keys", {Button(L"Maximize"), Tab(L"Text"), Entry(L'M')}, L"ATM", L"MX1"},
        {"the tenth tab",
         {Tab(L"a"), Tab(L"a"), Tab(L"a"), Tab(L"a"), Tab(L"a"), Tab(L"a"), Tab(L"a"), Tab(L"a"), Tab(L"a"),
          Tab(L"ab"), Tab(L"ab"), Tab(L"ab"), Button(L"b")},
         L"123456789A--B"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Tips(row.parts, row.held), row.tips) << row.name;
}

TEST(KeyTips, AThousandTabsTakeNoKeyFromAnybody)
{
    std::vector<KeyTipPart> parts = {Button(L"Close"), Button(L"Clear")};
    const std::wstring alone = Tips(parts);
    for (int i = 0; i < 1000; ++i)
        parts.push_back(Tab((L"Tab " + std::to_wstring(i) + L"abcdefghijklmnopqrstuvwxyz").c_str()));
    const std::wstring tips = Tips(parts);
    EXPECT_EQ(tips.substr(0, 2), alone);
    std::wstring given = tips;
    given.erase(std::remove(given.begin(), given.end(), L'-'), given.end());
    EXPECT_EQ(given.size(), 9u + 26u);
    EXPECT_EQ(std::set<wchar_t>(given.begin(), given.end()).size(), given.size());
    parts.push_back(Tab(L"One more"));
    EXPECT_EQ(Tips(parts), tips + L"-");
}

} // namespace
