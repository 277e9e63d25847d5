// The pixels of the three pictures, against the rules that make them.
#include "color/GradientColour.h"
#include "color/GradientModel.h"
#include "color/GradientRaster.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace {

constexpr std::uint32_t kFrame = 0xFFFFA500u;

struct Picture
{
    Picture(int w, int h) : pixels(static_cast<std::size_t>(w * h), 0x12345678u), width(w), height(h) {}
    kv::PixelView View() { return {pixels.data(), width, height, width}; }
    std::uint32_t At(int x, int y) const { return pixels[static_cast<std::size_t>(y * width + x)]; }

    std::vector<std::uint32_t> pixels;
    int width;
    int height;
};

Picture Palette(int width, int height, std::span<const kv::BlendEntry> blend, double ratio = 1.0)
{
    const kv::DeviceGrid grid(ratio);
    Picture picture(grid.Edge(width), grid.Edge(height));
    kv::DrawPalette(picture.View(), grid, width, blend, kFrame);
    return picture;
}

// A row of the picture as text: '#' where it has the colour.
std::string Row(const Picture& picture, int y, std::uint32_t colour)
{
    std::string row;
    for (int x = 0; x < picture.width; ++x)
        row += picture.At(x, y) == colour ? '#' : '.';
    return row;
}

// The pixel by the rule, in the plainest way.
double Ideal(std::span<const kv::BlendEntry> blend, int width, int x, int y, int shift)
{
    const double t = (x - 3.0) / (width - 7);
    std::size_t next = 1;
    while (next + 1 < blend.size() && !(t < blend[next].position))
        ++next;
    const kv::BlendEntry& a = blend[next - 1];
    const kv::BlendEntry& b = blend[next];
    const double f =
        b.position > a.position ? std::clamp((t - a.position) / (b.position - a.position), 0.0, 1.0) : 1;
    const auto channel = [&](int s) {
        const double from = (a.colour >> s) & 0xFF;
        const double to = (b.colour >> s) & 0xFF;
        return from + (to - from) * f;
    };
    const double grey = (x / 4 + y / 4) % 2 == 0 ? 0xCC : 0xDD;
    const double alpha = channel(24) / 255;
    return channel(shift) * alpha + grey * (1 - alpha);
}

void ExpectPaletteByTheRule(std::span<const kv::BlendEntry> blend, int width, int height)
{
    const Picture picture = Palette(width, height, blend);
    double worst = 0;
    for (int y = 2; y < height - 2; ++y) {
        for (int x = 4; x < width - 4; ++x) {
            for (const int shift : {0, 8, 16}) {
                const double drawn = (picture.At(x, y) >> shift) & 0xFF;
                worst = std::max(worst, std::fabs(drawn - Ideal(blend, width, x, y, shift)));
            }
            ASSERT_EQ(picture.At(x, y) >> 24, 0xFFu);
        }
    }
    EXPECT_LE(worst, 0.51) << width << " x " << height;
}

TEST(GradientRaster, PaletteFollowsTheBlendAndTheBoard)
{
    std::mt19937 random(20240607);
    std::uniform_real_distribution<float> unit(0.0f, 1.0f);
    for (const int stops : {1, 2, 4, 40, 255}) {
        SCOPED_TRACE(stops);
        std::vector<SKvCGGradientKey> keys;
        for (int i = 0; i < stops; ++i)
            keys.push_back({static_cast<std::uint32_t>(random()), unit(random), unit(random)});
        std::sort(keys.begin(), keys.end(), [](auto& a, auto& b) { return a.position < b.position; });
        for (const bool enabled : {true, false})
            ExpectPaletteByTheRule(kv::MakeBlend(keys, enabled), 211 + stops, 29);
    }
    const kv::BlendEntry nothing[] = {{0, 0}, {1, 0}};
    EXPECT_EQ(Palette(40, 20, {}).pixels, Palette(40, 20, nothing).pixels) << "no stops: the board alone";
}

TEST(GradientRaster, HardEdgeFallsOnTheColumnOfItsPlace)
{
    const SKvCGGradientKey keys[] = {{0xFF000000u, 0.5f, 0.5f}, {0xFFFFFFFFu, 0.5f, 0.5f}};
    const Picture picture = Palette(107, 20, kv::MakeBlend(keys, true));
    EXPECT_EQ(picture.At(52, 5), 0xFF000000u);
    EXPECT_EQ(picture.At(53, 5), 0xFFFFFFFFu);
}

TEST(GradientRaster, FrameStandsClearOfThePicturesEdge)
{
    const Picture picture = Palette(20, 10, {});
    const std::string outside(20, '.');
    const std::string line = "...##############...";
    const std::string sides = "...#............#...";
    const std::string rows[] = {outside, line, sides, sides, sides, sides, sides, sides, line, outside};
    for (int y = 0; y < 10; ++y)
        EXPECT_EQ(Row(picture, y, kFrame), rows[y]) << y;
    EXPECT_EQ(picture.At(0, 5), 0u);
    EXPECT_EQ(picture.At(19, 9), 0u);
    EXPECT_EQ(picture.At(4, 2), 0xFFDDDDDDu) << "the board is anchored at the picture's corner";
    EXPECT_EQ(picture.At(4, 4), 0xFFCCCCCCu);
}

TEST(GradientRaster, NothingIsDrawnOutsideASmallPicture)
{
    const kv::BlendEntry blend[] = {{0, 0xFF0000FFu}, {1, 0xFFFF0000u}};
    for (const double ratio : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        for (int size = 1; size < 14; ++size) {
            Picture picture = Palette(size, 2 + size / 2, blend, ratio);
            EXPECT_NE(picture.At(0, 0), 0x12345678u) << "every pixel is set";
            for (const int x : {-10000000, -1, size, 10000000}) {
                kv::DrawKeyPointer(picture.View(), kv::DeviceGrid(ratio), x, 9, 0xFFFFFFFFu);
                kv::DrawMidPointPointer(picture.View(), kv::DeviceGrid(ratio), x, 0xFFFFFFFFu);
            }
        }
    }
}

TEST(GradientRaster, MarkerIsATriangleOfFiftyPixels)
{
    Picture strip(13, 13);
    strip.View().Fill(0xFF5A5A5Au);
    kv::DrawKeyPointer(strip.View(), kv::DeviceGrid(1), 6, 9, 0x80FF0000u);
    constexpr std::uint32_t lightened = 0xFFFF7F7Fu;
    const int widths[] = {1, 1, 3, 3, 5, 5, 7, 7, 9, 9, 0, 0, 0};
    for (int y = 0; y < 13; ++y) {
        const int reach = widths[y] / 2;
        const std::string side(static_cast<std::size_t>(6 - reach), '.');
        const std::string middle(static_cast<std::size_t>(widths[y]), '#');
        EXPECT_EQ(Row(strip, y, lightened), widths[y] == 0 ? std::string(13, '.') : side + middle + side);
    }
}

TEST(GradientRaster, MidPointIsAThinDiamondAndATickFourPixels)
{
    Picture strip(11, 10);
    strip.View().Fill(0);
    kv::DrawMidPointPointer(strip.View(), kv::DeviceGrid(1), 4, 0xFF808080u);
    kv::DrawTick(strip.View(), kv::DeviceGrid(1), 9);
    const std::string rows[] = {"...........", "...........", "....#......", "...#.#.....", "..#...#....",
                                ".#.....#...", "..#...#....", "...#.#.....", "....#......", "..........."};
    for (int y = 0; y < 10; ++y) {
        EXPECT_EQ(Row(strip, y, 0xFF808080u), rows[y]) << y;
        EXPECT_EQ(strip.At(9, y), y >= 3 && y <= 6 ? 0xFF804040u : 0u) << y;
    }
}

TEST(GradientRaster, MarkersAreSymmetricAndUnblurredAtAnyRatio)
{
    for (const double ratio : {1.25, 1.5, 1.75, 2.0, 2.5, 3.0}) {
        const kv::DeviceGrid grid(ratio);
        for (int x = 8; x < 16; ++x) {
            Picture strip(grid.Edge(24), grid.Edge(13));
            strip.View().Fill(0);
            kv::DrawKeyPointer(strip.View(), grid, x, 9, 0xFF0000FFu);
            kv::DrawMidPointPointer(strip.View(), grid, x, 0xFF808080u);
            const int line = grid.Line();
            const int left = grid.LineAt(x);
            for (int y = 0; y < strip.height; ++y)
                for (int dx = 0; dx < grid.Edge(7); ++dx)
                    ASSERT_EQ(strip.At(left - dx, y), strip.At(left + line - 1 + dx, y)) << ratio << ' ' << x;
            EXPECT_NEAR(left + line / 2.0, (x + 0.5) * ratio, 0.5) << "centred on its logical pixel";
        }
    }
    const Picture picture = Palette(100, 30, {}, 1.5);
    EXPECT_EQ(Row(picture, 20, kFrame), ".....##" + std::string(137, '.') + "##....");
}

} // namespace
