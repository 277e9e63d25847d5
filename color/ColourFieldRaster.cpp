#include "color/ColourFieldRaster.h"

#include "color/Checkerboard.h"
#include "color/ColourMapLayout.h"
#include "color/PixelLanes.h"

#include <algorithm>
#include <vector>

namespace kv {

namespace {

using enum ColourChannel;

constexpr std::uint32_t kOpaque = 0xFF000000u;
constexpr Rgb kWhite{1, 1, 1};

/// The places of a picture's device pixels.
class Places
{
public:
    Places(const DeviceGrid& grid, CSize size) : m_ratio(grid.Ratio()), m_size(size) {}

    double X(int column) const { return PlaceOfPixel(column / m_ratio, m_size.cx); }
    double Y(int row) const { return PlaceOfRow(row / m_ratio, m_size.cy); }

private:
    double m_ratio;
    CSize m_size;
};

/// A red, green or blue alone, at a place.
std::uint32_t PrimaryAt(ColourChannel channel, double place)
{
    const int shift = channel == Red ? 16 : channel == Green ? 8 : 0;
    return ByteOf(place) << shift;
}

/// Every pixel is its column's channel, its row's and the one that is locked.
void DrawRgbField(PixelView picture, const Places& places, int lock, const ColourState& colour)
{
    const FieldAxes axes = AxesOf(lock);
    const ColourChannel locked = LockedChannel(lock);
    const std::uint32_t base = kOpaque | PrimaryAt(locked, colour.Place(locked));
    std::vector<std::uint32_t> columns(static_cast<std::size_t>(picture.width));
    for (int i = 0; i < picture.width; ++i)
        columns[static_cast<std::size_t>(i)] = PrimaryAt(axes.x, places.X(i));
    for (int y = 0; y < picture.height; ++y) {
        const std::uint32_t row = base | PrimaryAt(axes.y, places.Y(y));
        std::transform(columns.begin(), columns.end(), picture.Row(y),
                       [row](std::uint32_t column) { return column | row; });
    }
}

/// How far the channels of a hue lie under the full brightness, 0 … 1 each.
Rgb FallOf(double hue)
{
    const Rgb pure = HsbToRgb({hue, 1, 1});
    return {kWhite.red - pure.red, kWhite.green - pure.green, kWhite.blue - pure.blue};
}

/// A weight of 0 … 1 as a fraction of 65,536.
Lane WeightLane(double weight)
{
    return static_cast<Lane>(std::min(weight * 65536 + 0.5, 65535.0));
}

/// A channel of a pixel is its row's `top` less its column's weight of its row's `fall`; both 0 … 255.
struct HsbRow
{
    double top;
    double fall;
};

/// The columns' weights: the channels' share in the fall. The alpha lanes have none.
std::vector<Lane> ColumnWeights(int width, const Places& places, int lock, const ColourState& colour)
{
    const Hsb& hsb = colour.GetHsb();
    std::vector<Lane> weights(4 * static_cast<std::size_t>(WholeGroups(width)));
    for (int i = 0; i < width; ++i) {
        const double place = places.X(i);
        const ColourChannel locked = LockedChannel(lock);
        const double share = locked == Hue ? place : locked == Saturation ? hsb.saturation : 1.0;
        const Rgb fall = FallOf(locked == Hue ? hsb.hue : 360 * place);
        Lane* const lanes = weights.data() + std::ptrdiff_t{4} * i;
        lanes[0] = WeightLane(share * fall.blue);
        lanes[1] = WeightLane(share * fall.green);
        lanes[2] = WeightLane(share * fall.red);
    }
    return weights;
}

HsbRow RowOf(double place, int lock, const ColourState& colour)
{
    const double brightness = colour.GetHsb().brightness;
    if (LockedChannel(lock) == Brightness)
        return {255 * brightness, 255 * brightness * place};
    return {255 * place, 255 * place};
}

inline void WriteGroup(std::uint8_t* __restrict bytes, const Lane* __restrict weights, const LaneGroup& top,
                       Lane fall)
{
    for (int i = 0; i < kLanes; ++i) {
        const auto fallen = static_cast<Lane>((std::uint32_t{weights[i]} * fall) >> 16);
        bytes[i] =
            static_cast<std::uint8_t>(static_cast<Lane>(top[static_cast<std::size_t>(i)] - fallen) >> 8);
    }
}

void DrawHsbRow(std::uint32_t* pixels, int width, const std::vector<Lane>& weights, const HsbRow& row)
{
    const Lane top = RoundingLane(row.top);
    const LaneGroup tops = Repeated({top, top, top, RoundingLane(255)});
    const auto fall = static_cast<Lane>(row.fall * 256);
    auto* bytes = reinterpret_cast<std::uint8_t*>(pixels);
    const Lane* lanes = weights.data();
    const int whole = 4 * (width / kGroup * kGroup);
    for (int i = 0; i < whole; i += kLanes)
        WriteGroup(bytes + i, lanes + i, tops, fall);
    if (whole < 4 * width) {
        std::array<std::uint8_t, kLanes> group;
        WriteGroup(group.data(), lanes + whole, tops, fall);
        std::copy_n(group.data(), 4 * width - whole, bytes + whole);
    }
}

} // namespace

void DrawColourField(PixelView picture, const DeviceGrid& grid, CSize size, int lock,
                     const ColourState& colour)
{
    const Places places(grid, size);
    if (!IsHsb(LockedChannel(lock))) {
        DrawRgbField(picture, places, lock, colour);
        return;
    }
    const std::vector<Lane> weights = ColumnWeights(picture.width, places, lock, colour);
    for (int y = 0; y < picture.height; ++y)
        DrawHsbRow(picture.Row(y), picture.width, weights, RowOf(places.Y(y), lock, colour));
}

void DrawColourSlider(PixelView picture, const DeviceGrid& grid, CSize size, int lock,
                      const ColourState& colour)
{
    const Places places(grid, size);
    const ColourChannel channel = SliderChannel(lock);
    ColourState shown = colour;
    if (channel == Hue)
        shown.SetHsb({0, 1, 1});
    for (int y = 0; y < picture.height; ++y) {
        shown.Move(channel, places.Y(y));
        std::fill_n(picture.Row(y), picture.width, kOpaque | shown.Value());
    }
}

void DrawAlphaSlider(PixelView picture, const DeviceGrid& grid, CSize size, const ColourState& colour)
{
    const Places places(grid, size);
    for (int y = 0; y < picture.height; ++y) {
        const std::uint32_t shown = Packed(colour.GetRgb(), ByteOf(places.Y(y)));
        DrawCheckerRow(picture.Row(y), 0, picture.width, grid, CheckerSquare(grid, y), BoardUnder(shown));
    }
}

} // namespace kv
