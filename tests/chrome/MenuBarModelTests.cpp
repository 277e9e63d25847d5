// Items, labels and mnemonics of a menu bar.
#include "chrome/MenuBarModel.h"

#include <gtest/gtest.h>

using namespace kv;

namespace {

TEST(MenuBarModel, MnemonicsAndLabels)
{
    constexpr int none = -1;
    const struct
    {
        const char* what;
        const wchar_t* text;
        int mnemonic;
        const wchar_t* label;
    } rows[] = {
        {"at the start", L"&File", 'F', L"File"},
        {"inside", L"Save &As", 'A', L"Save As"},
        {"no marker", L"File", none, L"File"},
        {"empty", L"", none, L""},
        {"only a marker", L"&", none, L""},
        {"marker last", L"Research &", none, L"Research "},
        {"lower case stays", L"&file", 'f', L"file"},
        {"the first of two", L"&Fil&e", 'F', L"File"},
        {"a doubled marker is its own mnemonic", L"Cut && &Paste", '&', L"Cut & Paste"},
        {"a doubled marker last", L"Cut &&", '&', L"Cut &"},
        {"a space", L"A& B", ' ', L"A B"},
        {"cut to its low byte", L"&\u0141odz", 'A', L"\u0141odz"},
        {"beyond 16 bits: that of the first half", L"&\U0001F641", 0x3D, L"\U0001F641"},
    };
    for (const auto& row : rows) {
        char mnemonic = 0;
        EXPECT_EQ(FindMnemonic(row.text, mnemonic) ? mnemonic : none, row.mnemonic) << row.what;
        EXPECT_EQ(EntryLabel(row.text), row.label) << row.what;
        EXPECT_EQ(EntryName(row.text), row.label) << row.what;
    }
    EXPECT_EQ(EntryLabel(L"\u958B\u304F(&O)\u2026"), L"\u958B\u304F(O)\u2026");
    EXPECT_EQ(EntryName(L"\u958B\u304F(&O)\u2026"), L"\u958B\u304F\u2026") << "a letter for its marker alone";
    EXPECT_EQ(EntryName(L"\u0645\u0644\u0641 (&F)"), L"\u0645\u0644\u0641") << "with its blank";
    for (const wchar_t* text : {L"Plan (B)", L"(&", L"(&B", L"(&&)"})
        EXPECT_EQ(EntryName(text), EntryLabel(text));
}

TEST(MenuBarModel, EntriesBecomeItemsAtTheirPositions)
{
    SKvMenuBarData data;
    EXPECT_EQ(data.productLabel + data.documentLabel, L"Mirabo-Untitled");
    data.SetEntries({{L"&File", true},
                     {L"&Edit", false}, // hidden, or a separator
                     {std::wstring(2000, L'x') + L"&Z", true},
                     {L"&file", true},
                     {L"&Format", true},
                     {L"&Edit", true}});
    ASSERT_EQ(data.items.size(), 5u);
    EXPECT_EQ(data.items[0].text, L"&File");
    EXPECT_EQ(data.items[1].text.size(), 1024u);
    EXPECT_EQ(data.items[1].position, 2);
    EXPECT_EQ(data.items[4].position, 5);

    EXPECT_EQ(data.FindAccelerateIndex('F'), 0) << "the first of equal ones";
    EXPECT_EQ(data.FindAccelerateIndex('f'), 2) << "case counts";
    EXPECT_EQ(data.FindAccelerateIndex('E'), 4) << "the index counts items only";
    EXPECT_EQ(data.FindAccelerateIndex('Z'), -1) << "cut off with its text";
    data.SetEntries({});
    EXPECT_TRUE(data.items.empty());
    EXPECT_EQ(data.FindAccelerateIndex('F'), -1);
}

} // namespace
