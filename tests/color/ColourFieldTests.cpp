// The pixels of fields and sliders against the same colours reckoned one by one.
#include "color/Checkerboard.h"
#include "color/ColourFieldRaster.h"
#include "tests/color/PixelPicture.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace {

using kv::ColourChannel;
using kv::ColourState;
using kv::Hsb;
using kv::Rgb;

struct Picture : PixelPicture
{
    Picture(CSize logical, double ratio) : PixelPicture(logical, ratio, 7u, 3) {}
    // The rule, written down anew.
    double PlaceX(int i) const { return size.cx > 1 ? std::min(i / grid.Ratio() / (size.cx - 1), 1.0) : 0; }
    double PlaceY(int j) const
    {
        return size.cy > 1 ? std::max((size.cy - 1 - j / grid.Ratio()) / (size.cy - 1), 0.0) : 0;
    }
};

// By the formula of sectors, another than the one that draws.
Rgb BySectors(const Hsb& hsb)
{
    const double sector = hsb.hue >= 360 ? 0 : hsb.hue / 60;
    const double f = sector - std::floor(sector);
    const double v = hsb.brightness;
    const double p = v * (1 - hsb.saturation);
    const double q = v * (1 - hsb.saturation * f);
    const double t = v * (1 - hsb.saturation * (1 - f));
    const Rgb sectors[] = {{v, t, p}, {q, v, p}, {p, v, t}, {p, q, v}, {t, p, v}, {v, p, q}};
    return sectors[static_cast<int>(sector)];
}

Rgb FieldColour(int lock, const ColourState& colour, double x, double y)
{
    const Rgb& rgb = colour.GetRgb();
    const Hsb& hsb = colour.GetHsb();
    switch (lock) {
    case 1:
        return {rgb.red, x, y};
    case 2:
        return {x, rgb.green, y};
    case 3:
        return {x, y, rgb.blue};
    case 4:
        return BySectors({hsb.hue, x, y});
    case 5:
        return BySectors({360 * x, hsb.saturation, y});
    default:
        return BySectors({360 * x, y, hsb.brightness});
    }
}

double Error(std::uint32_t pixel, const Rgb& exact)
{
    const double red = std::fabs(kv::RedOf(pixel) - 255 * exact.red);
    const double green = std::fabs(kv::GreenOf(pixel) - 255 * exact.green);
    const double blue = std::fabs(kv::BlueOf(pixel) - 255 * exact.blue);
    return kv::AlphaOf(pixel) == 255 ? std::max({red, green, blue}) : 1000;
}

TEST(ColourField, EveryPixelIsItsPlacesColour)
{
    std::mt19937 random(17);
    std::uniform_real_distribution<double> unit(0, 1);
    const CSize sizes[] = {{256, 256}, {67, 31}, {1, 9}, {10, 1}, {3, 3}, {0, 5}};
    for (const CSize& size : sizes) {
        for (const double ratio : {1.0, 1.25, 1.5, 2.0}) {
            for (int lock = 1; lock <= 6; ++lock) {
                ColourState colour;
                colour.SetHsb({360 * unit(random), unit(random), unit(random)});
                Picture picture(size, ratio);
                kv::DrawColourField(picture.View(), picture.grid, size, lock, colour);
                double worst = 0;
                for (int j = 0; j < picture.height; ++j) {
                    for (int i = 0; i < picture.width; ++i)
                        worst = std::max(
                            worst, Error(picture.At(i, j),
                                         FieldColour(lock, colour, picture.PlaceX(i), picture.PlaceY(j))));
                    for (int i = picture.width; i < picture.stride; ++i)
                        ASSERT_EQ(picture.At(i, j), 7u) << "beyond the row";
                }
                EXPECT_LE(worst, 0.52)
                    << "lock " << lock << ", " << size.cx << " x " << size.cy << " at " << ratio;
            }
        }
    }
}

TEST(ColourField, CornersOfFullFields)
{
    const struct
    {
        int lock;
        std::uint32_t colour;
        std::uint32_t topLeft, topRight, bottomLeft, bottomRight;
    } cases[] = {
        {1, 0xFF800000u, 0xFF8000FFu, 0xFF80FFFFu, 0xFF800000u, 0xFF80FF00u},
        {2, 0xFF008000u, 0xFF0080FFu, 0xFFFF80FFu, 0xFF008000u, 0xFFFF8000u},
        {3, 0x00000080u, 0xFF00FF80u, 0xFFFFFF80u, 0xFF000080u, 0xFFFF0080u},
        {4, 0xFF0000FFu, 0xFFFFFFFFu, 0xFF0000FFu, 0xFF000000u, 0xFF000000u},
        {5, 0xFF0000FFu, 0xFFFF0000u, 0xFFFF0000u, 0xFF000000u, 0xFF000000u},
        {6, 0xFF0000FFu, 0xFFFF0000u, 0xFFFF0000u, 0xFFFFFFFFu, 0xFFFFFFFFu},
    };
    for (const auto& test : cases) {
        Picture picture({90, 50}, 1.5);
        kv::DrawColourField(picture.View(), picture.grid, picture.size, test.lock, ColourState(test.colour));
        EXPECT_EQ(picture.At(0, 0), test.topLeft) << test.lock;
        EXPECT_EQ(picture.At(picture.width - 1, 0), test.topRight) << test.lock;
        EXPECT_EQ(picture.At(0, picture.height - 1), test.bottomLeft) << test.lock;
        EXPECT_EQ(picture.At(picture.width - 1, picture.height - 1), test.bottomRight) << test.lock;
    }
}

TEST(ColourSlider, ShowsItsChannelUpwards)
{
    const struct
    {
        int lock;
        std::uint32_t top, bottom;
    } cases[] = {
        {10, 0xFFFF6699u, 0xFF006699u}, {11, 0xFF33FF99u, 0xFF330099u}, {12, 0xFF3366FFu, 0xFF336600u},
        {13, 0xFFFF0000u, 0xFFFF0000u}, {14, 0xFF004D99u, 0xFF999999u}, {15, 0xFF55AAFFu, 0xFF000000u},
    };
    for (const auto& test : cases) {
        Picture picture({20, 121}, 1.25);
        kv::DrawColourSlider(picture.View(), picture.grid, picture.size, test.lock, ColourState(0x40336699u));
        EXPECT_EQ(picture.At(0, 0), test.top) << test.lock;
        EXPECT_EQ(picture.At(picture.width - 1, picture.height - 1), test.bottom) << test.lock;
    }
    Picture hues({5, 7}, 1);
    kv::DrawColourSlider(hues.View(), hues.grid, hues.size, 13, ColourState(0xFF000000u));
    EXPECT_EQ(hues.At(2, 4), 0xFF00FF00u) << "pure hues, whatever the colour";
}

TEST(AlphaSlider, ColourOverTheBoard)
{
    for (const double ratio : {1.0, 1.25, 2.0}) {
        Picture picture({21, 256}, ratio);
        Picture board(picture.size, ratio);
        kv::DrawAlphaSlider(picture.View(), picture.grid, picture.size, ColourState(0x00FF8000u));
        kv::DrawCheckerboard(board.View(), board.grid, {0, 0, board.width, board.height});
        for (int j = 0; j < picture.height; ++j) {
            const double alpha = std::round(255 * picture.PlaceY(j)) / 255;
            for (int i = 0; i < picture.width; ++i) {
                const double grey = kv::RedOf(board.At(i, j));
                const Rgb exact{(255 * alpha + grey * (1 - alpha)) / 255,
                                (128 * alpha + grey * (1 - alpha)) / 255, grey * (1 - alpha) / 255};
                ASSERT_LE(Error(picture.At(i, j), exact), 0.51) << i << ' ' << j << " at " << ratio;
            }
        }
    }
}

TEST(Checkerboard, IsAnchoredAtThePicturesCorner)
{
    const struct
    {
        double ratio;
        const char* rows[7]; ///< '#' is dark, ' ' not drawn
    } cases[] = {
        {1,
         {"          ", "  ##....##", "  ##....##", "  ##....##", "  ..####..", "  ..####..", "          "}},
        {1.25,
         {"          ", "  ###.....", "  ###.....", "  ###.....", "  ###.....", "  ...#####", "          "}},
    };
    for (const auto& test : cases) {
        Picture picture({10, 7}, 1);
        kv::DrawCheckerboard(picture.View(), kv::DeviceGrid(test.ratio), {2, 1, 99, 6});
        for (int j = 0; j < 7; ++j) {
            std::string row;
            for (int i = 0; i < 10; ++i)
                row += picture.At(i, j) == 0xFFCCCCCCu ? '#' : picture.At(i, j) == 0xFFDDDDDDu ? '.' : ' ';
            EXPECT_EQ(row, test.rows[j]) << test.ratio;
        }
    }
}

} // namespace
