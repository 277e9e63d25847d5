#include "color/QuadGradient.h"

#include "color/GradientColour.h"
#include "color/PixelLanes.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace kv {

namespace {

/// Blue, green, red, alpha.
using Channels = std::array<double, 4>;

Channels ChannelsOf(std::uint32_t colour)
{
    return {BlueOf(colour) + 0.0, GreenOf(colour) + 0.0, RedOf(colour) + 0.0, AlphaOf(colour) + 0.0};
}

Channels Combine(double a, const Channels& first, double b, const Channels& second, double c = 0,
                 const Channels& third = {})
{
    Channels sum;
    for (std::size_t i = 0; i < sum.size(); ++i)
        sum[i] = a * first[i] + b * second[i] + c * third[i];
    return sum;
}

/// A triangle's colour, an affine function of the place in the rectangle, 0 … 1 each way.
struct Plane
{
    Channels origin;
    Channels perX;
    Channels perY;

    Channels At(double x, double y) const { return Combine(1, origin, x, perX, y, perY); }
};

enum Triangle
{
    kTop,
    kLeft,
    kRight,
    kBottom,
};

std::array<Plane, 4> MakePlanes(const QuadColours& corners)
{
    const Channels tl = ChannelsOf(corners[0]);
    const Channels tr = ChannelsOf(corners[1]);
    const Channels bl = ChannelsOf(corners[2]);
    const Channels br = ChannelsOf(corners[3]);
    const Channels centre = ChannelsOf(QuadCentre(corners));
    // What the way from an edge to the opposite one adds, were it not for the centre's bend.
    const auto rise = [&](const Channels& a, const Channels& b) { return Combine(2, centre, -1, a, -1, b); };
    const Channels down = rise(tl, tr);
    const Channels right = rise(tl, bl);
    const Channels left = rise(tr, br);
    const Channels up = rise(bl, br);
    return {{
        {tl, Combine(1, tr, -1, tl), down},
        {tl, right, Combine(1, bl, -1, tl)},
        {Combine(1, tr, 1, left), Combine(0, left, -1, left), Combine(1, br, -1, tr)},
        {Combine(1, bl, 1, up), Combine(1, br, -1, bl), Combine(0, up, -1, up)},
    }};
}

// Sums of lanes may wrap on their way: what they come to lies in 0 … 255 and has half a unit of room for
// rounding on both sides.

constexpr int kBlock = 1024; // pixels that are drawn from one starting value

struct Ramp
{
    alignas(16) std::array<Lane, 4 * std::size_t{kBlock}> lanes;
};

LaneGroup StartOf(const Channels& channels)
{
    std::array<Lane, 4> pixel;
    std::transform(channels.begin(), channels.end(), pixel.begin(), RoundingLane);
    return Repeated(pixel);
}

/// What each of the first `count` pixels adds to the first one.
void MakeRamp(Ramp& ramp, const Channels& perPixel, int count)
{
    // Raised by a whole turn of the lane, so that truncation rounds.
    constexpr float raised = 65536.5f;
    std::array<float, 4> step;
    for (std::size_t c = 0; c < 4; ++c)
        step[c] = static_cast<float>(perPixel[c] * 256);
    for (int i = 0; i < count; ++i) {
        for (std::size_t c = 0; c < 4; ++c) {
            const float value = step[c] * static_cast<float>(i) + raised;
            ramp.lanes[4 * static_cast<std::size_t>(i) + c] =
                static_cast<Lane>(static_cast<std::int32_t>(value));
        }
    }
}

/// A group of pixels from its ramp and start.
inline void WriteGroup(std::uint8_t* __restrict bytes, const Lane* __restrict ramp, const LaneGroup& start)
{
    for (int i = 0; i < kLanes; ++i)
        bytes[i] =
            static_cast<std::uint8_t>(static_cast<Lane>(ramp[i] + start[static_cast<std::size_t>(i)]) >> 8);
}

void WriteOpaque(std::uint32_t* pixels, int count, const Ramp& ramp, const LaneGroup& start)
{
    const Lane* lanes = ramp.lanes.data();
    auto* bytes = reinterpret_cast<std::uint8_t*>(pixels);
    int left = count;
    for (; left >= kGroup; left -= kGroup, lanes += kLanes, bytes += kLanes)
        WriteGroup(bytes, lanes, start);
    if (left > 0) {
        std::array<std::uint8_t, kLanes> group;
        WriteGroup(group.data(), lanes, start);
        std::copy_n(group.data(), 4 * left, bytes);
    }
}

/// What a picture's alpha means to the two ways of blending.
constexpr std::uint32_t kOpaque = 0xFF000000u;

/// A group of pixels drawn over what is there. Works for opaque and for premultiplied pixels, when the alpha
/// lanes of the colours are full.
/// @param alphas holds the alpha in every lane.
inline void BlendGroup(std::uint8_t* __restrict bytes, const Lane* __restrict ramp, const LaneGroup& start,
                       const Lane* __restrict alphas, const LaneGroup& alphaStart)
{
    for (int i = 0; i < kLanes; ++i) {
        const auto lane = static_cast<std::size_t>(i);
        const auto top = static_cast<Lane>(static_cast<Lane>(ramp[i] + start[lane]) >> 8);
        const auto alpha = static_cast<Lane>(static_cast<Lane>(alphas[i] + alphaStart[lane]) >> 8);
        const auto sum = static_cast<Lane>(top * alpha + bytes[i] * (255 - alpha) + 128);
        bytes[i] = static_cast<std::uint8_t>(static_cast<Lane>(sum + (sum >> 8)) >> 8);
    }
}

/// One pixel drawn over a straight one.
std::uint32_t OverStraight(const Lane* ramp, const LaneGroup& start, const Lane* alphas,
                           const LaneGroup& alphaStart, std::uint32_t below)
{
    const auto value = [](const Lane* lanes, const LaneGroup& from, std::size_t c) {
        return static_cast<float>(static_cast<Lane>(lanes[c] + from[c]) - 128) * (1.0f / 256);
    };
    const float alpha = std::max(value(alphas, alphaStart, 0), 0.0f);
    const float rest = static_cast<float>(AlphaOf(below)) * (255 - alpha) * (1.0f / 255);
    const float sum = alpha + rest;
    if (sum < 0.5f)
        return 0;
    const float rounded = sum + 0.5f;
    std::uint32_t pixel = static_cast<std::uint32_t>(rounded) << 24;
    for (std::size_t c = 0; c < 3; ++c) {
        const auto under = static_cast<float>(below >> (8 * c) & 0xFFu);
        const float mixed = (value(ramp, start, c) * alpha + under * rest) / sum;
        pixel |= static_cast<std::uint32_t>(std::clamp(mixed + 0.5f, 0.0f, 255.0f)) << (8 * c);
    }
    return pixel;
}

/// How a triangle is drawn: steps within a block, and where a block starts.
struct Brush
{
    Plane plane;
    Ramp ramp;
    Ramp alphas; ///< not set in an opaque gradient
};

class QuadFill
{
public:
    QuadFill(PixelView picture, PixelFormat format, const DeviceGrid& grid, const CRect& rect,
             const CRect& pixels, const QuadColours& corners);
    void Draw();

private:
    void MakeBrushes(const QuadColours& corners);
    void DrawRow(int row);
    void DrawSpan(std::uint32_t* pixels, int count, const Brush& brush, double x, double y) const;
    void DrawBlock(std::uint32_t* pixels, int count, const Brush& brush, const Channels& first) const;
    void Blend(std::uint32_t* pixels, int count, const Brush& brush, const LaneGroup& start,
               const LaneGroup& alphaStart) const;
    double PlaceX(int column) const { return std::max((column - m_left) / m_width, 0.0); }
    double PlaceY(int row) const { return std::max((row - m_top) / m_height, 0.0); }

    PixelView m_picture;
    PixelFormat m_format;
    bool m_opaque;
    // The rectangle in device pixels, and the whole ones of the picture that it covers.
    double m_left, m_top, m_width, m_height;
    int m_firstColumn, m_lastColumn, m_firstRow, m_lastRow;
    std::unique_ptr<std::array<Brush, 4>> m_brushes;
};

/// A device pixel of a picture of that size.
int PixelIn(double pixel, int size)
{
    return static_cast<int>(std::clamp(pixel, 0.0, static_cast<double>(size)));
}

int EdgeIn(double edge, int size)
{
    return PixelIn(std::floor(edge + 0.5), size);
}

QuadFill::QuadFill(PixelView picture, PixelFormat format, const DeviceGrid& grid, const CRect& rect,
                   const CRect& pixels, const QuadColours& corners)
    : m_picture(picture)
    , m_format(format)
    , m_opaque((corners[0] & corners[1] & corners[2] & corners[3]) >= kOpaque)
    , m_left(rect.left * grid.Ratio())
    , m_top(rect.top * grid.Ratio())
    , m_width(rect.right * grid.Ratio() - m_left)
    , m_height(rect.bottom * grid.Ratio() - m_top)
    , m_firstColumn(std::max(pixels.left, PixelIn(std::floor(m_left), picture.width)))
    , m_lastColumn(std::min(pixels.right, PixelIn(std::floor(m_left + m_width) + 1, picture.width)))
    , m_firstRow(std::max(pixels.top, PixelIn(std::floor(m_top), picture.height)))
    , m_lastRow(std::min(pixels.bottom, PixelIn(std::floor(m_top + m_height) + 1, picture.height)))
{
    if (m_width > 0 && m_height > 0 && m_firstColumn < m_lastColumn && m_firstRow < m_lastRow)
        MakeBrushes(corners);
}

void QuadFill::MakeBrushes(const QuadColours& corners)
{
    m_brushes = std::make_unique_for_overwrite<std::array<Brush, 4>>();
    const std::array<Plane, 4> planes = MakePlanes(corners);
    // Whole groups are read, also where a row ends within one.
    const int count = std::min(WholeGroups(m_lastColumn - m_firstColumn), kBlock);
    for (std::size_t i = 0; i < planes.size(); ++i) {
        Brush& brush = (*m_brushes)[i];
        brush.plane = planes[i];
        Channels perPixel = Combine(1 / m_width, planes[i].perX, 0, {});
        if (!m_opaque)
            MakeRamp(brush.alphas, {perPixel[3], perPixel[3], perPixel[3], perPixel[3]}, count);
        perPixel[3] = 0;
        MakeRamp(brush.ramp, perPixel, count);
    }
}

void QuadFill::Draw()
{
    if (!m_brushes)
        return;
    for (int row = m_firstRow; row < m_lastRow; ++row)
        DrawRow(row);
}

/// A row crosses the left triangle, the top or bottom one, and the right one; on a border both say the same.
void QuadFill::DrawRow(int row)
{
    const double y = PlaceY(row);
    const double border = std::min(y, 1 - y);
    const int second = PixelIn(std::ceil(m_left + border * m_width), m_lastColumn);
    const int third = PixelIn(std::floor(m_left + (1 - border) * m_width) + 1, m_lastColumn);
    const struct
    {
        Triangle triangle;
        int end;
    } spans[] = {{kLeft, second}, {y < 0.5 ? kTop : kBottom, third}, {kRight, m_lastColumn}};

    std::uint32_t* const pixels = m_picture.Row(row);
    int column = m_firstColumn;
    for (const auto& span : spans) {
        const Brush& brush = (*m_brushes)[span.triangle];
        // The first column may lie a fraction of a pixel before the edge; the next is a whole one further.
        if (column < span.end && column < m_left) {
            DrawSpan(pixels + column, 1, brush, 0, y);
            ++column;
        }
        if (column < span.end) {
            DrawSpan(pixels + column, span.end - column, brush, PlaceX(column), y);
            column = span.end;
        }
    }
}

void QuadFill::DrawSpan(std::uint32_t* pixels, int count, const Brush& brush, double x, double y) const
{
    while (count > 0) {
        const int block = std::min(count, kBlock);
        DrawBlock(pixels, block, brush, brush.plane.At(x, y));
        pixels += block;
        count -= block;
        x += block / m_width;
    }
}

void QuadFill::DrawBlock(std::uint32_t* pixels, int count, const Brush& brush, const Channels& first) const
{
    const LaneGroup start = StartOf({first[0], first[1], first[2], 255});
    if (m_opaque)
        WriteOpaque(pixels, count, brush.ramp, start);
    else
        Blend(pixels, count, brush, start, StartOf({first[3], first[3], first[3], first[3]}));
}

bool AreOpaque(const std::uint32_t* pixels, int count)
{
    std::uint32_t all = kOpaque;
    for (int i = 0; i < count; ++i)
        all &= pixels[i];
    return all == kOpaque;
}

void QuadFill::Blend(std::uint32_t* pixels, int count, const Brush& brush, const LaneGroup& start,
                     const LaneGroup& alphaStart) const
{
    const Lane* ramp = brush.ramp.lanes.data();
    const Lane* alphas = brush.alphas.lanes.data();
    if (m_format == PixelFormat::Argb32 && !AreOpaque(pixels, count)) {
        for (std::ptrdiff_t i = 0; i < count; ++i)
            pixels[i] = OverStraight(ramp + 4 * i, start, alphas + 4 * i, alphaStart, pixels[i]);
        return;
    }
    auto* bytes = reinterpret_cast<std::uint8_t*>(pixels);
    const std::ptrdiff_t lanes = std::ptrdiff_t{4} * count;
    const std::ptrdiff_t whole = lanes / kLanes * kLanes;
    for (std::ptrdiff_t i = 0; i < whole; i += kLanes)
        BlendGroup(bytes + i, ramp + i, start, alphas + i, alphaStart);
    if (whole < lanes) {
        std::array<std::uint8_t, kLanes> group{};
        std::copy(bytes + whole, bytes + lanes, group.data());
        BlendGroup(group.data(), ramp + whole, start, alphas + whole, alphaStart);
        std::copy_n(group.data(), lanes - whole, bytes + whole);
    }
    if (m_format == PixelFormat::Rgb32)
        std::for_each_n(pixels, count, [](std::uint32_t& pixel) { pixel |= kOpaque; });
}

} // namespace

std::uint32_t QuadCentre(const QuadColours& corners)
{
    return MixColour(MixColour(corners[0], corners[1]), MixColour(corners[2], corners[3]));
}

void FillQuadGradient(PixelView picture, PixelFormat format, const DeviceGrid& grid, const CRect& rect,
                      const QuadColours& corners)
{
    const double ratio = grid.Ratio();
    const CRect pixels(EdgeIn(rect.left * ratio, picture.width), EdgeIn(rect.top * ratio, picture.height),
                       EdgeIn(rect.right * ratio, picture.width),
                       EdgeIn(rect.bottom * ratio, picture.height));
    FillQuadGradient(picture, format, grid, rect, pixels, corners);
}

void FillQuadGradient(PixelView picture, PixelFormat format, const DeviceGrid& grid, const CRect& rect,
                      const CRect& pixels, const QuadColours& corners)
{
    QuadFill(picture, format, grid, rect, pixels, corners).Draw();
}

} // namespace kv
