// The two colour models against each other and against whole-number arithmetic; colours as text.
#include "color/ColourMapLayout.h"
#include "color/ColourSpace.h"
#include "color/ColourText.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

using kv::Hsb;
using kv::Rgb;

// Hue by whole numbers, rounded down: no rounding can go wrong in it.
int WholeHue(int red, int green, int blue)
{
    const int high = std::max({red, green, blue});
    const int chroma = high - std::min({red, green, blue});
    if (chroma == 0)
        return 0;
    const int sixth = 60;
    if (high == red)
        return (sixth * (green - blue) + (green < blue ? 360 * chroma : 0)) / chroma;
    if (high == green)
        return (sixth * (blue - red) + 120 * chroma) / chroma;
    return (sixth * (red - green) + 240 * chroma) / chroma;
}

TEST(ColourSpace, EveryOpaqueColourComesBack)
{
    std::uint32_t wrong = 0;
    std::uint32_t wrongHue = 0;
    for (std::uint32_t colour = 0xFF000000u; colour != 0; ++colour) {
        const Hsb hsb = kv::RgbToHsb(kv::RgbOf(colour));
        wrong += kv::Packed(kv::HsbToRgb(hsb)) == colour ? 0 : 1;
        const auto red = static_cast<int>(kv::RedOf(colour));
        const auto green = static_cast<int>(kv::GreenOf(colour));
        const auto blue = static_cast<int>(kv::BlueOf(colour));
        wrongHue += kv::WholeDegrees(hsb.hue) == WholeHue(red, green, blue) ? 0 : 1;
    }
    EXPECT_EQ(wrong, 0u);
    EXPECT_EQ(wrongHue, 0u);
}

TEST(ColourSpace, PercentsAreThoseOfTheTrueProduct)
{
    for (int high = 1; high < 256; ++high) {
        for (int low = 0; low <= high; ++low) {
            const Hsb hsb = kv::RgbToHsb({high / 255.0, low / 255.0, low / 255.0});
            ASSERT_EQ(kv::WholePercent(hsb.saturation), 100 * (high - low) / high) << high << ' ' << low;
            ASSERT_EQ(kv::WholePercent(hsb.brightness), 100 * high / 255) << high;
        }
    }
    for (int percent = 0; percent <= 100; ++percent)
        EXPECT_EQ(kv::WholePercent(percent / 100.0), percent);
}

TEST(ColourSpace, KnownColours)
{
    const struct
    {
        const char* name;
        std::uint32_t colour;
        Hsb hsb;
    } cases[] = {
        {"black", 0xFF000000u, {0, 0, 0}},     {"white", 0xFFFFFFFFu, {0, 0, 1}},
        {"grey", 0xFF333333u, {0, 0, 0.2}},    {"red", 0xFFFF0000u, {0, 1, 1}},
        {"yellow", 0xFFFFFF00u, {60, 1, 1}},   {"green", 0xFF00FF00u, {120, 1, 1}},
        {"cyan", 0xFF00FFFFu, {180, 1, 1}},    {"blue", 0xFF0000FFu, {240, 1, 1}},
        {"magenta", 0xFFFF00FFu, {300, 1, 1}}, {"dark pink", 0xFF663366u, {300, 0.5, 0.4}},
    };
    for (const auto& test : cases) {
        const Hsb hsb = kv::RgbToHsb(kv::RgbOf(test.colour));
        EXPECT_NEAR(hsb.hue, test.hsb.hue, 1e-9) << test.name;
        EXPECT_NEAR(hsb.saturation, test.hsb.saturation, 1e-12) << test.name;
        EXPECT_NEAR(hsb.brightness, test.hsb.brightness, 1e-12) << test.name;
        EXPECT_EQ(kv::Packed(kv::HsbToRgb(test.hsb)), test.colour) << test.name;
    }
    EXPECT_EQ(kv::HsbToRgb({360, 1, 1}), kv::HsbToRgb({0, 1, 1}));
    EXPECT_LT(kv::RgbToHsb({1, 0, 1e-18}).hue, 360) << "next to red";
}

TEST(ColourSpace, OddValuesArePutInRange)
{
    const double nan = std::nan("");
    EXPECT_EQ(kv::InRange(Hsb{nan, nan, -1}), (Hsb{0, 0, 0}));
    EXPECT_EQ(kv::InRange(Hsb{-90, 2, 0.5}), (Hsb{270, 1, 0.5}));
    EXPECT_EQ(kv::InRange(Hsb{360, 1, HUGE_VAL}), (Hsb{360, 1, 1}));
    EXPECT_EQ(kv::InRange(Hsb{HUGE_VAL, 1, 1}), (Hsb{0, 1, 1}));
    EXPECT_LE(kv::InRange(Hsb{-1e-18, 1, 1}).hue, 360);
    EXPECT_EQ(kv::InRange(Rgb{nan, 7, -7}), (Rgb{0, 1, 0}));
    EXPECT_EQ(kv::ByteOf(nan), 0u);
}

// A row that stands for exactly half a step is rounded up, as a column is.
TEST(ColourMapLayout, RowsAndColumnsGiveTheSameBytes)
{
    for (int size = 2; size < 600; ++size) {
        for (int pixel = 0; pixel < size; ++pixel) {
            const int exact = (2 * 255 * pixel + size - 1) / (2 * (size - 1));
            const kv::ColourPlace place = kv::PlaceAt({0, 0, size, size}, {pixel, size - 1 - pixel});
            ASSERT_EQ(kv::ByteOf(place.x), static_cast<std::uint32_t>(exact)) << pixel << " of " << size;
            ASSERT_EQ(kv::ByteOf(place.y), static_cast<std::uint32_t>(exact)) << pixel << " of " << size;
        }
    }
}

TEST(ColourMapLayout, PixelsAndPlacesAreInverse)
{
    const CRect client(5, 7, 105, 207);
    for (int y = client.top; y < client.bottom; ++y) {
        const CPoint point(client.left + (y - client.top) / 2, y);
        EXPECT_EQ(kv::PointOf(client, kv::PlaceAt(client, point)), point);
    }
    const struct
    {
        CPoint point;
        double x;
        double y;
    } cases[] = {{{5, 206}, 0, 0}, {{104, 7}, 1, 1}, {{-50, 300}, 0, 0}, {{500, -9}, 1, 1}};
    for (const auto& test : cases) {
        EXPECT_EQ(kv::PlaceAt(client, test.point).x, test.x);
        EXPECT_EQ(kv::PlaceAt(client, test.point).y, test.y);
    }
    EXPECT_EQ(kv::PlaceAt({0, 0, 1, 0}, {9, 9}).x, 0) << "no size to speak of";
    EXPECT_EQ(kv::PointOf({3, 4, 3, 4}, {1, 1}), CPoint(3, 4));
}

TEST(ColourText, Reads)
{
    constexpr std::uint32_t none = 1; // no text gives this one
    const struct
    {
        const wchar_t* text;
        std::uint32_t colour;
        bool hasAlpha = false;
    } cases[] = {
        {L"#fA0", 0xFFFFAA00u},
        {L"#12aBcD", 0xFF12ABCDu},
        {L"\t#80ff0000\n", 0x80FF0000u, true},
        {L"rgb(1,2,3)", 0xFF010203u},
        {L" RGB ( 255 , 0 ,007 ) ", 0xFFFF0007u},
        {L"", none},
        {L"#", none},
        {L"#12", none},
        {L"#1234", none},
        {L"#12345", none},
        {L"#1234567", none},
        {L"#123456789", none},
        {L"#12 456", none},
        {L"#g00", none},
        {L"#\uFF11\uFF12\uFF13", none},
        {L"123456", none},
        {L"rgb", none},
        {L"rgb(", none},
        {L"rgb)", none},
        {L"rgb()", none},
        {L"rgb(1,2)", none},
        {L"rgb(1,2,3,4)", none},
        {L"rgb(1,2,256)", none},
        {L"rgb(1,-2,3)", none},
        {L"rgb(1,2,99999999999)", none},
        {L"rgb(1 2 3)", none},
        {L"rgba(1,2,3,4)", none},
    };
    for (const auto& test : cases) {
        const auto typed = kv::ParseColourText(test.text);
        EXPECT_EQ(typed.has_value(), test.colour != none) << ::testing::PrintToString(test.text);
        if (typed) {
            EXPECT_EQ(*typed, (kv::TypedColour{test.colour, test.hasAlpha}))
                << ::testing::PrintToString(test.text);
        }
    }
    EXPECT_EQ(kv::ColourText(0x0A0b0C0Du), L"#0a0b0c0d");
}

} // namespace
