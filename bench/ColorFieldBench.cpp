// A colour field of 256 x 256 pixels, beside the toolkit's colours reckoned one by one, and what it costs to
// convert a colour to hue, saturation and brightness and back.
#include "color/ColourFieldRaster.h"

#include <QColor>
#include <QImage>

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <random>
#include <vector>

namespace {

constexpr int kSize = 256;
constexpr std::uint32_t kColour = 0xFF3366C0u;

QImage NewPicture()
{
    QImage picture(kSize, kSize, QImage::Format_ARGB32_Premultiplied);
    picture.fill(0);
    return picture;
}

void DrawOurs(QImage& picture, int lock, const kv::ColourState& colour)
{
    const kv::PixelView view{reinterpret_cast<std::uint32_t*>(picture.bits()), kSize, kSize, kSize};
    kv::DrawColourField(view, kv::DeviceGrid(1), {kSize, kSize}, lock, colour);
}

/// Calls `colourAt(x, y)` with the places of each pixel, 0 … 255 upwards.
template <typename ColourAt>
void ForEachPixel(QImage& picture, ColourAt colourAt)
{
    for (int y = 0; y < kSize; ++y) {
        auto* const row = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < kSize; ++x)
            row[x] = colourAt(x, kSize - 1 - y);
    }
}

void DrawPeer(QImage& picture, int lock, const kv::ColourState& colour)
{
    constexpr float unit = 1.0f / (kSize - 1);
    const auto hue = static_cast<float>(colour.GetHsb().hue / 360);
    const auto saturation = static_cast<float>(colour.GetHsb().saturation);
    const auto brightness = static_cast<float>(colour.GetHsb().brightness);
    const int red = colour.Shown(kv::ColourChannel::Red);
    const int green = colour.Shown(kv::ColourChannel::Green);
    const int blue = colour.Shown(kv::ColourChannel::Blue);
    const auto hsv = [](float h, float s, float v) { return QColor::fromHsvF(h, s, v).rgb(); };
    const auto part = [](int place) { return unit * static_cast<float>(place); };
    switch (lock) {
    case 1:
        return ForEachPixel(picture, [&](int x, int y) { return QColor(red, x, y).rgb(); });
    case 2:
        return ForEachPixel(picture, [&](int x, int y) { return QColor(x, green, y).rgb(); });
    case 3:
        return ForEachPixel(picture, [&](int x, int y) { return QColor(x, y, blue).rgb(); });
    case 4:
        return ForEachPixel(picture, [&](int x, int y) { return hsv(hue, part(x), part(y)); });
    case 5:
        return ForEachPixel(picture, [&](int x, int y) { return hsv(part(x), saturation, part(y)); });
    default:
        return ForEachPixel(picture, [&](int x, int y) { return hsv(part(x), part(y), brightness); });
    }
}

bool PicturesAgree(int lock, const kv::ColourState& colour)
{
    QImage ours = NewPicture();
    QImage peer = NewPicture();
    DrawOurs(ours, lock, colour);
    DrawPeer(peer, lock, colour);
    for (int y = 0; y < kSize; ++y) {
        for (int x = 0; x < kSize; ++x) {
            const QRgb a = ours.pixel(x, y);
            const QRgb b = peer.pixel(x, y);
            if (std::abs(qRed(a) - qRed(b)) > 1 || std::abs(qGreen(a) - qGreen(b)) > 1 ||
                std::abs(qBlue(a) - qBlue(b)) > 1)
                return false;
        }
    }
    return true;
}

void Ours(benchmark::State& state)
{
    const int lock = static_cast<int>(state.range(0));
    const kv::ColourState colour(kColour);
    if (!PicturesAgree(lock, colour)) {
        state.SkipWithError("the two pictures differ");
        return;
    }
    QImage picture = NewPicture();
    for (auto _ : state) {
        DrawOurs(picture, lock, colour);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(Ours)->DenseRange(1, 6);

void PeerQColor(benchmark::State& state)
{
    const kv::ColourState colour(kColour);
    QImage picture = NewPicture();
    for (auto _ : state) {
        DrawPeer(picture, static_cast<int>(state.range(0)), colour);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(PeerQColor)->DenseRange(1, 6);

std::vector<std::uint32_t> RandomColours()
{
    std::mt19937 random(5);
    std::vector<std::uint32_t> colours(4096);
    for (std::uint32_t& colour : colours)
        colour = 0xFF000000u | static_cast<std::uint32_t>(random());
    return colours;
}

/// From 32 bits to hue, saturation and brightness and back to 32 bits.
template <typename Convert>
void ConvertAll(benchmark::State& state, Convert convert)
{
    const std::vector<std::uint32_t> colours = RandomColours();
    for (const std::uint32_t colour : colours) {
        if (convert(colour) != colour) {
            state.SkipWithError("a colour does not come back");
            return;
        }
    }
    for (auto _ : state) {
        for (const std::uint32_t colour : colours)
            benchmark::DoNotOptimize(convert(colour));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(colours.size()));
}

void ThereAndBack(benchmark::State& state)
{
    ConvertAll(state, [](std::uint32_t c) { return kv::Packed(kv::HsbToRgb(kv::RgbToHsb(kv::RgbOf(c)))); });
}
BENCHMARK(ThereAndBack);

void PeerThereAndBack(benchmark::State& state)
{
    ConvertAll(state, [](std::uint32_t c) { return QColor(c).toHsv().toRgb().rgb(); });
}
BENCHMARK(PeerThereAndBack);

} // namespace
