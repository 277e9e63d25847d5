// What is found wrong with a file of translations.
#include "tools/texts/TextFile.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using kv::TextItem;

// The faults of one translation of one text.
std::vector<std::string> FaultsOf(const std::wstring& text, const std::string& translation)
{
    return kv::CheckTextFile({{L"Strings", L"7", text}}, "[Strings]\n7=" + translation + "\n");
}

TEST(TextFile, TheBuiltInTextsAsAFileLackNothing)
{
    std::vector<TextItem> items = kv::LibraryTexts();
    items.push_back({L"Strings", L"50000", L" blanks\tand\r\nbreaks \\ "});
    const std::vector<std::string> faults = kv::CheckTextFile(items, kv::MakeTextFile(items));
    EXPECT_EQ(faults, std::vector<std::string>());
    for (const wchar_t* section : {L"Strings", L"Menus", L"Dialogs", L"Tips"})
        EXPECT_TRUE(std::any_of(items.begin(), items.end(),
                                [&](const TextItem& item) { return item.section == section; }));
}

TEST(TextFile, MissingAndSuperfluousKeysAreTold)
{
    const std::vector<TextItem> items = {{L"Strings", L"7", L"Two\nlines"}, {L"Menus", L"1.2", L"Cut"}};
    const std::vector<std::string> faults = kv::CheckTextFile(
        items,
        "[Strings]\n7=\n8=x\n[Menus]\n1.2=Ausschneiden\n1.2=Schneiden\n[Tips]\n7=x\n[Anything]\n9=x\n");
    EXPECT_EQ(faults, (std::vector<std::string>{
                          "Menus 1.2: stands twice", "[Anything]: there is no such section",
                          "Strings 8: the program has no such text", "Tips 7: the program has no such text",
                          "missing: [Strings] 7=Two\\nlines"}));
}

TEST(TextFile, WhatCannotBeReadIsTold)
{
    const std::vector<TextItem> items = {{L"Strings", L"7", L"a\nb"}};
    const auto faults = [&](const char* bytes) { return kv::CheckTextFile(items, bytes); };
    EXPECT_EQ(faults("; a remark\r\n\r\n# another\r\n[Strings]\r\n7=x\\ny\r\n"), std::vector<std::string>());
    EXPECT_EQ(faults("[Strings]\n7=x\\ny\nnonsense\n"), std::vector<std::string>{"line 3: has no \"=\""});
    EXPECT_EQ(faults("[Strings]\n7=x\\n\xFCy\n"), std::vector<std::string>{"the file is not UTF-8"});
    EXPECT_EQ(FaultsOf(L"one", "\\q").size(), 1u);
    EXPECT_EQ(FaultsOf(L"one", "eins\\").size(), 1u);
}

TEST(TextFile, PlaceholdersMayChangePlacesButNotGetLost)
{
    const std::vector<std::string> none;
    EXPECT_EQ(FaultsOf(L"%s, %d to %.1f %%", "%s, %d – %.1f %%"), none);
    EXPECT_EQ(FaultsOf(L"%s, %d", "%2$d: %1$s"), none);
    EXPECT_EQ(FaultsOf(L"%1 of %2 %", "%2: %1 %"), none);
    EXPECT_EQ(FaultsOf(L"a\nb\tc", "x\\ny\\tz"), none);
    EXPECT_EQ(FaultsOf(L"Logs (*.log *.txt), see --help <File>", "<File>, --help: (*.txt *.log)"), none);
    EXPECT_EQ(FaultsOf(L"wheel--zoom", "Rad: zoomen"), none) << "a dash, no option";
    EXPECT_EQ(FaultsOf(L"%s, %d", "%d, %s").size(), 1u) << "they are filled in order";
    EXPECT_EQ(FaultsOf(L"%s, %d", "%2$d").size(), 1u);
    EXPECT_EQ(FaultsOf(L"%s, %d", "%1$s, %d").size(), 1u) << "some counted, some not";
    EXPECT_EQ(FaultsOf(L"%.1f", "%f").size(), 1u);
    EXPECT_EQ(FaultsOf(L"%d %%", "%d %").size(), 1u);
    EXPECT_EQ(FaultsOf(L"%1 of %2", "%1 von %3").size(), 1u);
    EXPECT_EQ(FaultsOf(L"one line", "zwei\\nZeilen").size(), 1u);
    EXPECT_EQ(FaultsOf(L"PNG (*.png)", "PNG (*.jpg)").size(), 1u);
    EXPECT_EQ(FaultsOf(L"see --help", "siehe --hilfe").size(), 1u);
}

TEST(TextFile, LettersForAltArePresentAndUniqueInAMenu)
{
    EXPECT_EQ(FaultsOf(L"&Open", "開く(&O)"), std::vector<std::string>());
    EXPECT_EQ(FaultsOf(L"Cut && paste", "Schneiden && kleben"), std::vector<std::string>());
    EXPECT_EQ(FaultsOf(L"&Open", "Öffnen").size(), 1u);
    EXPECT_EQ(FaultsOf(L"&Open", "&Öffn&en").size(), 1u);
    EXPECT_EQ(FaultsOf(L"Cut & paste", "Schneiden &kleben").size(), 1u);
    EXPECT_EQ(FaultsOf(L"&Open", "&Öffnen"), std::vector<std::string>());
    EXPECT_EQ(FaultsOf(L"&Open", "ف&تح").size(), 1u) << "the underline parts joined letters";
    EXPECT_EQ(FaultsOf(L"&Open", "&開く").size(), 1u) << "on no keyboard";
    const std::vector<TextItem> items = {
        {L"Menus", L"1.1", L"&Add"},
        {L"Menus", L"1.2", L"&Remove"},
        {L"Menus", L"1.3", L"Add &mark"},
        {L"Menus", L"1.4", L"Remove &mark"}, // in the place of the one before
        {L"Menus", L"2.1", L"&Add"}};
    EXPECT_EQ(kv::CheckTextFile(items,
                                "[Menus]\n1.1=&Dazu\n1.2=&Weg\n1.3=&Marke dazu\n1.4=&Marke weg\n2.1=&Dazu\n"),
              std::vector<std::string>());
    EXPECT_EQ(kv::CheckTextFile(
                  items, "[Menus]\n1.1=&Dazu\n1.2=Weg &damit\n1.3=&Marke dazu\n1.4=&Marke weg\n2.1=&Dazu\n"),
              std::vector<std::string>{"Menus 1.2: another entry of the menu has the same letter for Alt"});
}

TEST(TextFile, ALineDoesNotBreakBeforeASign)
{
    EXPECT_EQ(FaultsOf(L"Sure?", "Bien sûr ?").size(), 1u);
    EXPECT_EQ(FaultsOf(L"“x”", "« x\u00A0»").size(), 1u);
    EXPECT_EQ(FaultsOf(L"“x”", "«\u00A0x »").size(), 1u);
    EXPECT_EQ(FaultsOf(L"“x”; sure?", "«\u00A0x\u00A0»\u202F; bien sûr\u00A0?"), std::vector<std::string>());
}

} // namespace
