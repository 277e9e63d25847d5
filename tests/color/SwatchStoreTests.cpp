// The swatch profile, value by value and file by file.
#include "color/SwatchStore.h"
#include "core/Text.h"
#include "tests/core/TemporaryFolder.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace kv {
namespace {

using Colours = std::vector<std::uint32_t>;

constexpr std::uint32_t kWhite = 0xFFFFFFFFu;

constexpr char kTwoByTwo[] = "; mine\n"
                             "[SolidColorTemplate_Head]\n"
                             "TemplateLine=2\n"
                             "Colors Per Line=2\n"
                             "[SolidColorLine_1]\n"
                             "Color_1= 1,2,3,255\n"
                             "Color_2= 4,5,6,255\n"
                             "[SolidColorLine_2]\n"
                             "Color_1= 7,8,9,255\n"
                             "Color_2= 10,11,12,0\n"
                             "[SolidColorLine_Altered_2]\n"
                             "Color_2= 255,0,0,128\n"
                             "Note=kept\n"
                             "[SolidColorLine_Altered_1]\n"
                             "Color_1=300,0,0,255\n"
                             "Color_2=20\n";

const Colours kFactory{0xFF010203u, 0xFF040506u, 0xFF070809u, 0x000A0B0Cu};
const Colours kAltered{kWhite, kWhite, kWhite, 0x80FF0000u};

TEST(SwatchProfile, Values)
{
    const struct
    {
        const wchar_t* value;
        std::uint32_t colour;
    } cases[] = {
        {L" 255,0,0,128", 0x80FF0000u},
        {L"1,2,3,4", 0x04010203u},
        {L"300,0,0,255", kWhite},
        {L"0,0,0,256", kWhite},
        {L"0,-1,0,255", kWhite},
        {L"0,99999999999999999999,0,1", kWhite},
        {L"", kWhite},
        {L"10", kWhite},
        {L"10,20", 0xFF0AFFFFu},
        {L"10,20,30", 0xFF0A14FFu},
        {L"10,20,30,", 0xFF0A141Eu},
        {L"10,20,30, ", 0x000A141Eu},
        {L",,,", 0xFF000000u},
        {L"x,1x,+2,\t3 4", 0x03000102u},
        {L"1,2,3,4,999", 0x04010203u},
        {L"1,2,3,00000000000000000000000255", 0x19010203u}, // 31 characters
        {L"                              1,\v2,\f3,4", 0x04010203u},
    };
    for (const auto& test : cases)
        EXPECT_EQ(ParseSwatch(test.value), test.colour) << testing::PrintToString(test.value);
    EXPECT_EQ(SwatchValue(0x80FF0001u), L" 255,0,1,128");
}

TEST(SwatchProfile, HeadCounts)
{
    const struct
    {
        const char* lines;
        const char* perLine;
        std::size_t count; ///< 0 is a failure
    } cases[] = {
        {"1", "1", 1},         {"0", "4", 0},         {"4", "-1", 0},    {"", "4", 0},
        {"65536", "1", 65536}, {"1", "65536", 65536}, {"65537", "1", 0}, {"2147483647", "2147483647", 0},
        {"65536", "65536", 0}, {"256", "257", 0},     {" 2x", "3", 6},
    };
    for (const auto& test : cases) {
        const ProfileDocument profile(std::string("[SolidColorTemplate_Head]\nTemplateLine=") + test.lines +
                                      "\nColors Per Line=" + test.perLine + "\n");
        const auto colours = ReadSwatches(profile, SwatchSet::Altered);
        EXPECT_EQ(colours ? colours->size() : 0, test.count) << test.lines << " x " << test.perLine;
    }
}

TEST(SwatchStore, NamesMayBeOfAnyCaseAndValuesQuoted)
{
    const TemporaryFolder folder;
    const std::wstring path = folder.Wide("swatches.ini");
    folder.Put("swatches.ini", "[SOLIDCOLORTEMPLATE_head]\ntemplateline=\"1\"\nCOLORS PER LINE='4'\n"
                               "[solidcolorline_ALTERED_1]\ncolor_1=\"1,2,3,4\"\nCOLOR_2= ' 5,6,7,8' \n"
                               "Color_3=\"9,9,9,9\nColor_4='9,9,9,9\"\nCOLOR_4=1,1,1,1\n");
    SwatchStore store;
    ASSERT_TRUE(store.Initialise(path, false));
    EXPECT_EQ(store.Colours(), (Colours{0x04010203u, 0x08050607u, 0x09000909u, 0x09000909u}));
    store.SetColour(0, 0xFF0A0B0Cu);
    ASSERT_TRUE(store.Write(path));
    const std::string bytes = folder.Get("swatches.ini");
    EXPECT_NE(bytes.find("color_1= 10,11,12,255\n"), std::string::npos) << "in the place that it had";
    EXPECT_EQ(bytes.find("Color_1"), std::string::npos) << bytes;
}

TEST(SwatchProfile, FactoryIsWhole)
{
    const ProfileDocument profile(FactorySwatchProfile());
    const auto factory = ReadSwatches(profile, SwatchSet::Factory);
    ASSERT_TRUE(factory);
    EXPECT_EQ(factory->size(), 32u);
    EXPECT_EQ(ReadSwatches(profile, SwatchSet::Altered), factory);
    EXPECT_EQ(profile.Value(L"SolidColorLine_1", L"Color_1"), L" 235,16,16,255");
    EXPECT_EQ(profile.Value(L"SolidColorLine_Altered_8", L"Color_4"), L" 169,205,214,255");
    for (const std::uint32_t colour : *factory) {
        EXPECT_EQ(colour >> 24, 255u);
        for (const int shift : {0, 8, 16})
            EXPECT_TRUE((colour >> shift & 0xFF) >= 16 && (colour >> shift & 0xFF) <= 235)
                << std::hex << colour;
    }
}

TEST(SwatchStore, LoadsOnceAndResets)
{
    const TemporaryFolder folder;
    folder.Put("swatches.ini", kTwoByTwo);
    const std::wstring path = folder.Wide("swatches.ini");

    SwatchStore store;
    EXPECT_TRUE(store.Initialise(path, false));
    EXPECT_EQ(store.Colours(), kAltered);
    EXPECT_TRUE(store.SetColour(3, 5));
    EXPECT_FALSE(store.SetColour(4, 5));
    EXPECT_FALSE(store.SetColour(-1, 5));
    EXPECT_FALSE(store.Initialise(path, false)) << "once";
    EXPECT_EQ(store.Colours()[3], 5u);
    EXPECT_EQ(folder.Get("swatches.ini"), kTwoByTwo) << "loading writes nothing";

    EXPECT_TRUE(store.Initialise(path, true));
    EXPECT_EQ(store.Colours(), kFactory);
    SwatchStore next;
    EXPECT_TRUE(next.Initialise(path, false));
    EXPECT_EQ(next.Colours(), kFactory) << "the factory's have become the user's";
    const std::string bytes = folder.Get("swatches.ini");
    EXPECT_TRUE(bytes.starts_with("; mine\n"));
    EXPECT_NE(bytes.find("Note=kept\n"), std::string::npos);
}

TEST(SwatchStore, AFailedLoadIsNotRepeated)
{
    const TemporaryFolder folder;
    const std::wstring path = folder.Wide("swatches.ini");
    SwatchStore store;
    EXPECT_FALSE(store.Initialise(path, false));
    folder.Put("swatches.ini", kTwoByTwo);
    EXPECT_FALSE(store.Initialise(path, false));
    EXPECT_EQ(store.Count(), 0);
    EXPECT_TRUE(store.Initialise(path, true)) << "a reset is always tried";
    EXPECT_EQ(store.Colours(), kFactory);
}

TEST(SwatchStore, FailuresLeaveArrayAndFile)
{
    const TemporaryFolder folder;
    folder.Put("swatches.ini", kTwoByTwo);
    SwatchStore store;
    ASSERT_TRUE(store.Read(folder.Wide("swatches.ini"), SwatchSet::Altered));
    for (const char* other : {"", "[SolidColorTemplate_Head]\nTemplateLine=2\nColors Per Line=3\n",
                              "[SolidColorTemplate_Head]\nTemplateLine=0\nColors Per Line=2\n"}) {
        folder.Put("other.ini", other);
        EXPECT_FALSE(store.Write(folder.Wide("other.ini")));
        EXPECT_EQ(folder.Get("other.ini"), other);
    }
    EXPECT_FALSE(store.Read(folder.Wide("other.ini"), SwatchSet::Altered));
    EXPECT_FALSE(store.Read(folder.Wide("missing.ini"), SwatchSet::Altered));
    EXPECT_FALSE(store.Write(folder.Wide("missing.ini")));
    EXPECT_EQ(store.Colours(), kAltered);
    EXPECT_EQ(folder.Count(), 2);
}

TEST(SwatchStore, InstallsWhereThereIsNone)
{
    const TemporaryFolder folder;
    EXPECT_TRUE(InstallFactorySwatches(folder.Wide("swatches.ini")));
    EXPECT_EQ(folder.Get("swatches.ini"), FactorySwatchProfile());
    folder.Put("swatches.ini", "mine");
    EXPECT_TRUE(InstallFactorySwatches(folder.Wide("swatches.ini")));
    EXPECT_EQ(folder.Get("swatches.ini"), "mine");
    EXPECT_FALSE(InstallFactorySwatches(folder.Wide("no folder/swatches.ini")));
}

TEST(SwatchStore, TheMostSwatchesAreWrittenAndRead)
{
    const TemporaryFolder folder;
    folder.Put("swatches.ini", "[SolidColorTemplate_Head]\nTemplateLine=65536\nColors Per Line=1\n");
    const std::wstring path = folder.Wide("swatches.ini");
    SwatchStore store;
    ASSERT_TRUE(store.Initialise(path, false));
    for (int index = 0; index < store.Count(); ++index)
        store.SetColour(index, 0x9E3779B9u * static_cast<std::uint32_t>(index));
    ASSERT_TRUE(store.Write(path));
    SwatchStore next;
    ASSERT_TRUE(next.Initialise(path, false));
    EXPECT_EQ(next.Colours(), store.Colours());
}

#ifndef _WIN32
// One of two processes that share a profile: its swatches are all of its one colour.
class Saver
{
public:
    Saver(const std::wstring& path, const Colours& both, std::size_t own)
    {
        if (::pipe(m_orders.data()) != 0)
            return;
        m_process = ::fork();
        if (m_process != 0)
            return;
        ::close(m_orders[1]);
        char order = 0;
        bool isRight = true;
        while (::read(m_orders[0], &order, 1) == 1)
            isRight = isRight && Save(path, both, own);
        ::_exit(isRight ? 0 : 1);
    }
    void Order(int saves) const
    {
        const std::string orders(static_cast<std::size_t>(saves), '.');
        EXPECT_EQ(::write(m_orders[1], orders.data(), orders.size()), saves);
    }
    /// @return whether all of its saves went well.
    bool Finish()
    {
        ::close(m_orders[0]);
        ::close(m_orders[1]);
        int status = -1;
        return m_process > 0 && ::waitpid(m_process, &status, 0) == m_process && status == 0;
    }

private:
    static bool Save(const std::wstring& path, const Colours& both, std::size_t own)
    {
        SwatchStore store;
        if (!store.Read(path, SwatchSet::Altered))
            return false;
        for (int index = 0; index < store.Count(); ++index)
            store.SetColour(index, both[own]);
        if (!store.Write(path) || !store.Read(path, SwatchSet::Altered))
            return false;
        const Colours& read = store.Colours();
        return std::count(read.begin(), read.end(), both[0]) == store.Count() ||
               std::count(read.begin(), read.end(), both[1]) == store.Count();
    }

    std::array<int, 2> m_orders{-1, -1};
    ::pid_t m_process = -1;
};

TEST(SwatchStore, TwoProcessesThatSaveLeaveTheWholeFileOfTheLast)
{
    const TemporaryFolder folder;
    folder.Put("swatches.ini", "[SolidColorTemplate_Head]\nTemplateLine=10\nColors Per Line=40\n");
    const std::wstring path = folder.Wide("swatches.ini");
    const Colours both{0xFF102030u, 0x80405060u};
    for (const std::size_t last : {0u, 1u}) {
        Saver one(path, both, last);
        Saver other(path, both, 1 - last);
        one.Order(20);
        other.Order(20);
        EXPECT_TRUE(other.Finish());
        one.Order(1);
        EXPECT_TRUE(one.Finish());
        SwatchStore store;
        ASSERT_TRUE(store.Read(path, SwatchSet::Altered));
        EXPECT_EQ(store.Colours(), Colours(400, both[last]));
        EXPECT_EQ(folder.Count(), 1) << "nothing is left beside it";
    }
}
#endif

} // namespace
} // namespace kv
