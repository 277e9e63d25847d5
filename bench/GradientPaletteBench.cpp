// The gradient's bar, 1,900 x 40, beside the toolkit's own linear gradient and a plain copy of the bytes.
#include "color/GradientBlend.h"
#include "color/GradientModel.h"
#include "color/GradientRaster.h"

#include <QImage>
#include <QLinearGradient>
#include <QPainter>

#include <benchmark/benchmark.h>
#include <cmath>
#include <cstring>
#include <random>

namespace {

constexpr int kWidth = 1900;
constexpr int kHeight = 40;

std::vector<SKvCGGradientKey> Stops(int count)
{
    std::mt19937 random(7);
    std::vector<SKvCGGradientKey> stops;
    for (int i = 0; i < count; ++i) {
        const float place = static_cast<float>(i) / static_cast<float>(count - 1);
        stops.push_back({static_cast<std::uint32_t>(random()), place, 0.5f});
    }
    return stops;
}

QImage NewPicture()
{
    QImage picture(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
    picture.fill(0);
    return picture;
}

kv::PixelView View(QImage& picture)
{
    return {reinterpret_cast<std::uint32_t*>(picture.bits()), picture.width(), picture.height(),
            picture.bytesPerLine() / 4};
}

void DrawOurs(QImage& picture, const std::vector<SKvCGGradientKey>& stops)
{
    kv::DrawPalette(View(picture), kv::DeviceGrid(1), kWidth, kv::MakeBlend(stops, true), 0xFFFFA500u);
}

// The same rectangle with the toolkit's gradient, over a board that is already there.
void FillPeer(QPainter& painter, const std::vector<kv::BlendEntry>& blend)
{
    QLinearGradient gradient(3, 2, kWidth - 4, 2);
    QGradientStops stops;
    for (const kv::BlendEntry& entry : blend)
        stops.append({entry.position, QColor::fromRgba(entry.colour)});
    gradient.setStops(stops);
    gradient.setInterpolationMode(QGradient::ComponentInterpolation);
    painter.fillRect(4, 2, kWidth - 8, kHeight - 4, gradient);
}

// Two opaque stops: the peer looks colours up in a table of 1,024 and cannot follow steep slopes closely.
bool PicturesAgree()
{
    const std::vector<SKvCGGradientKey> stops{{0xFF0000FFu, 0.0f, 0.5f}, {0xFFFFC000u, 1.0f, 0.25f}};
    QImage ours = NewPicture();
    QImage peer = NewPicture();
    DrawOurs(ours, stops);
    QPainter painter(&peer);
    FillPeer(painter, kv::MakeBlend(stops, true));
    painter.end();
    for (int x = 4; x < kWidth - 4; ++x) {
        const QRgb a = ours.pixel(x, kHeight / 2);
        const QRgb b = peer.pixel(x, kHeight / 2);
        if (std::abs(qRed(a) - qRed(b)) > 2 || std::abs(qGreen(a) - qGreen(b)) > 2 ||
            std::abs(qBlue(a) - qBlue(b)) > 2)
            return false;
    }
    return true;
}

void Ours(benchmark::State& state)
{
    if (!PicturesAgree()) {
        state.SkipWithError("the two pictures differ");
        return;
    }
    const std::vector<SKvCGGradientKey> stops = Stops(static_cast<int>(state.range(0)));
    QImage picture = NewPicture();
    for (auto _ : state) {
        DrawOurs(picture, stops);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(Ours)->Arg(4)->Arg(255);

void PeerLinearGradient(benchmark::State& state)
{
    const std::vector<kv::BlendEntry> blend = kv::MakeBlend(Stops(static_cast<int>(state.range(0))), true);
    QImage picture = NewPicture();
    picture.fill(0xFFCCCCCCu);
    QPainter painter(&picture);
    for (auto _ : state) {
        FillPeer(painter, blend);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(PeerLinearGradient)->Arg(4)->Arg(255);

void PeerCopy(benchmark::State& state)
{
    const QImage source = NewPicture();
    QImage picture = NewPicture();
    for (auto _ : state) {
        std::memcpy(picture.bits(), source.constBits(), static_cast<std::size_t>(source.sizeInBytes()));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(PeerCopy);

} // namespace
