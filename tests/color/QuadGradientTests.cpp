// The four-corner fill against the same fan reckoned pixel by pixel.
#include "tests/color/PixelPicture.h"
#include "tests/color/PlainQuad.h"

#include <gtest/gtest.h>
#include <random>

namespace {

using kv::PixelFormat;
using kv::QuadColours;

// The largest difference of any channel, after one fill.
double WorstError(PixelPicture& picture, const PlainFill& fill, const QuadColours& corners)
{
    const PixelPicture before = picture;
    kv::FillQuadGradient(picture.View(), fill.format, kv::DeviceGrid(fill.ratio), fill.rect, corners);
    return WorstError(
        {picture.width, picture.height}, fill, corners, [&](int i, int j) { return before.At(i, j); },
        [&](int i, int j) { return picture.At(i, j); });
}

constexpr PixelFormat kFormats[] = {PixelFormat::Argb32, PixelFormat::Argb32Premultiplied,
                                    PixelFormat::Rgb32};

TEST(QuadGradient, FollowsTheFanWhateverTheSizeAndTheColours)
{
    std::mt19937 random(31);
    const auto below = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    for (int round = 0; round < 400; ++round) {
        const bool opaque = round % 2 == 0;
        QuadColours corners;
        for (std::uint32_t& corner : corners)
            corner = static_cast<std::uint32_t>(random()) | (opaque ? 0xFF000000u : 0u);
        PixelPicture picture({1 + below(round % 20 == 0 ? 700 : 70), 1 + below(50)});
        for (std::uint32_t& pixel : picture.pixels) {
            const auto alpha = static_cast<std::uint32_t>(below(3) * 127 + below(2));
            pixel = kv::MakeColour(alpha, alpha / 2, alpha, static_cast<std::uint32_t>(below(3)) * alpha / 2);
        }
        constexpr double ratios[] = {1, 1.25, 1.5, 2};
        PlainFill fill{{}, ratios[below(4)], kFormats[below(3)]};
        fill.rect.left = below(60) - 30;
        fill.rect.top = below(40) - 20;
        fill.rect.right = fill.rect.left + 1 + below(picture.width + 20);
        fill.rect.bottom = fill.rect.top + 1 + below(60);
        const double worst = WorstError(picture, fill, corners);
        ASSERT_LE(worst, opaque ? 0.52 : 2.0) << "round " << round;
    }
}

TEST(QuadGradient, KnownPlaces)
{
    const QuadColours corners{0xFFFF0000u, 0xFF00FF00u, 0xFF0000FFu, 0xFFFF00FFu};
    PixelPicture picture({200, 100}, 1, 0);
    kv::FillQuadGradient(picture.View(), PixelFormat::Rgb32, kv::DeviceGrid(1), {0, 0, 200, 100}, corners);
    EXPECT_EQ(picture.At(0, 0), corners[0]) << "only this pixel is its corner";
    EXPECT_EQ(picture.At(199, 0), 0xFF01FE00u);
    EXPECT_EQ(picture.At(100, 50), 0xFF7F3F7Fu) << "the centre is rounded down";
    EXPECT_EQ(picture.At(100, 0), 0xFF808000u) << "half way along the top";
    EXPECT_EQ(picture.At(0, 50), 0xFF800080u);

    kv::FillQuadGradient(picture.View(), PixelFormat::Argb32, kv::DeviceGrid(1), {0, 0, 200, 100},
                         {0xFF123456u, 0xFF123456u, 0xFF123456u, 0xFF123456u});
    EXPECT_EQ(picture.pixels, PixelPicture({200, 100}, 1, 0xFF123456u).pixels)
        << "four equal corners are flat";
    kv::FillQuadGradient(picture.View(), PixelFormat::Argb32, kv::DeviceGrid(1), {0, 0, 200, 100},
                         {0x00FFFFFFu, 0x00FFFFFFu, 0x00FFFFFFu, 0x00FFFFFFu});
    EXPECT_EQ(picture.pixels, PixelPicture({200, 100}, 1, 0xFF123456u).pixels) << "nothing covers nothing";
}

TEST(QuadGradient, RectanglesNowhereAndEverywhere)
{
    constexpr int far = 2147483647;
    constexpr QuadColours white{0xFFFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu};
    const struct
    {
        CRect rect;
        std::uint32_t colour;
    } cases[] = {
        {{5, 5, 5, 9}, 7u},
        {{9, 5, 5, 9}, 7u},
        {{-9, -9, 0, 0}, 7u},
        {{30, 0, 40, 20}, 7u},
        {{far, far, -far, -far}, 7u},
        {{-far, -far, far, far}, 0xFFFFFFFFu},
        {{0, 0, 30, 20}, 0xFFFFFFFFu},
    };
    for (const auto& test : cases) {
        PixelPicture picture({30, 20}, 1, 7u);
        kv::FillQuadGradient(picture.View(), PixelFormat::Argb32, kv::DeviceGrid(1), test.rect, white);
        EXPECT_EQ(picture.pixels, PixelPicture({30, 20}, 1, test.colour).pixels)
            << test.rect.left << ' ' << test.rect.right;
    }
    kv::FillQuadGradient({nullptr, 0, 0, 0}, PixelFormat::Argb32, kv::DeviceGrid(1), {0, 0, 9, 9}, white);
}

} // namespace
