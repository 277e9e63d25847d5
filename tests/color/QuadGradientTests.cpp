// The four-corner fill against the same fan reckoned pixel by pixel.
#include "color/GradientColour.h"
#include "color/QuadGradient.h"
#include "tests/color/PixelPicture.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace {

using kv::PixelFormat;
using kv::QuadColours;

using Channels = std::array<double, 4>; // alpha, red, green, blue

Channels ChannelsOf(std::uint32_t colour)
{
    return {kv::AlphaOf(colour) + 0.0, kv::RedOf(colour) + 0.0, kv::GreenOf(colour) + 0.0,
            kv::BlueOf(colour) + 0.0};
}

// The gradient's own colour at a place, by barycentric weights in the triangle that holds it.
Channels Fan(const QuadColours& corners, double x, double y)
{
    const Channels tl = ChannelsOf(corners[0]);
    const Channels tr = ChannelsOf(corners[1]);
    const Channels bl = ChannelsOf(corners[2]);
    const Channels br = ChannelsOf(corners[3]);
    const Channels centre = ChannelsOf(kv::QuadCentre(corners));
    const auto in = [&](const Channels& first, const Channels& second, double depth, double along) {
        Channels mixed{};
        for (std::size_t c = 0; c < 4; ++c)
            mixed[c] = first[c] * (1 - along - depth) + second[c] * (along - depth) + centre[c] * 2 * depth;
        return mixed;
    };
    const double depth = std::min({x, y, 1 - x, 1 - y});
    if (depth == y)
        return in(tl, tr, depth, x);
    if (depth == x)
        return in(tl, bl, depth, y);
    return depth == 1 - x ? in(tr, br, depth, y) : in(bl, br, depth, x);
}

// Drawn over a pixel, without any rounding.
Channels Over(const Channels& top, std::uint32_t pixel, PixelFormat format)
{
    const double alpha = top[0] / 255;
    Channels below = ChannelsOf(pixel);
    if (format == PixelFormat::Rgb32)
        below[0] = 255;
    Channels out{};
    out[0] = top[0] + below[0] * (1 - alpha);
    for (std::size_t c = 1; c < 4; ++c) {
        if (format == PixelFormat::Argb32)
            out[c] = out[0] > 0 ? (top[c] * top[0] + below[c] * below[0] * (1 - alpha)) / out[0] : 0;
        else
            out[c] = top[c] * alpha + below[c] * (1 - alpha);
    }
    return out;
}

struct Fill
{
    CRect rect;
    double ratio = 1;
    PixelFormat format = PixelFormat::Argb32;
};

// The largest difference of any channel, after one fill.
double WorstError(PixelPicture& picture, const Fill& fill, const QuadColours& corners)
{
    const PixelPicture before = picture;
    const kv::DeviceGrid grid(fill.ratio);
    kv::FillQuadGradient(picture.View(), fill.format, grid, fill.rect, corners);
    double worst = 0;
    for (int j = 0; j < picture.height; ++j) {
        for (int i = 0; i < picture.width; ++i) {
            if (i < grid.Edge(fill.rect.left) || i >= grid.Edge(fill.rect.right) ||
                j < grid.Edge(fill.rect.top) || j >= grid.Edge(fill.rect.bottom)) {
                worst = picture.At(i, j) == before.At(i, j) ? worst : 1000;
                continue;
            }
            const double x = std::max((i / fill.ratio - fill.rect.left) / fill.rect.Width(), 0.0);
            const double y = std::max((j / fill.ratio - fill.rect.top) / fill.rect.Height(), 0.0);
            const Channels exact = Over(Fan(corners, x, y), before.At(i, j), fill.format);
            const Channels drawn = ChannelsOf(picture.At(i, j));
            // Where next to nothing is seen of a straight colour, it has no digits to be right in.
            const bool counts = fill.format != PixelFormat::Argb32 || exact[0] >= 1;
            for (std::size_t c = 0; c < (counts ? 4u : 1u); ++c)
                worst = std::max(worst, std::fabs(drawn[c] - exact[c]));
        }
    }
    return worst;
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
        Fill fill{{}, ratios[below(4)], kFormats[below(3)]};
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
