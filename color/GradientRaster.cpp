#include "color/GradientRaster.h"

#include "color/GradientColour.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace kv {

namespace {

constexpr std::uint32_t kTickColour = 0xFF804040u;
constexpr std::uint32_t kWhite = 0xFFFFFFFFu;
constexpr int kTickTop = 3;
constexpr int kTickBottom = 7;

constexpr int kDiamondCentre = 5;
constexpr int kDiamondReach = 3;
constexpr int kMarkerReach = 4;
constexpr int kMarkerHeight = 10;

constexpr int kSquare = 4;
constexpr float kLightGrey = 0xDD;
constexpr float kDarkGrey = 0xCC;

} // namespace

void PixelView::Fill(std::uint32_t colour) const
{
    for (int y = 0; y < height; ++y)
        std::fill_n(Row(y), width, colour);
}

void PixelView::FillRect(int left, int top, int right, int bottom, std::uint32_t colour) const
{
    const int from = std::max(left, 0);
    const int count = std::min(right, width) - from;
    if (count <= 0)
        return;
    for (int y = std::max(top, 0); y < std::min(bottom, height); ++y)
        std::fill_n(Row(y) + from, count, colour);
}

int DeviceGrid::Edge(double logical) const
{
    return static_cast<int>(std::floor(logical * m_ratio + 0.5));
}

int DeviceGrid::Length(double logical) const
{
    return std::max(1, Edge(logical));
}

int DeviceGrid::LineAt(int pixel) const
{
    // Nudged so that a centre half way between two device pixels goes the same way everywhere.
    return static_cast<int>(std::floor(pixel * m_ratio + (m_ratio - Line()) / 2 + 0.5 + 1e-6));
}

namespace {

/// Two rows of the bar are all there is: they differ in where the checkerboard's dark squares lie.
struct PaletteRows
{
    std::vector<std::uint32_t> even;
    std::vector<std::uint32_t> odd;
};

/// One stretch of the blend in the columns from `first` up to `last`: channel values at `first` and their
/// steps to the next column. Alpha is 0..1.
struct ColourRamp
{
    float alpha, red, green, blue;
    float alphaStep, redStep, greenStep, blueStep;
};

ColourRamp MakeRamp(const BlendEntry& from, const BlendEntry& to, double firstPlace, double placeStep)
{
    const double length = to.position - from.position;
    const double start = length > 0 ? (firstPlace - from.position) / length : 0.0;
    const double step = length > 0 ? placeStep / length : 0.0;
    const auto at = [start](std::uint32_t a, std::uint32_t b) {
        return static_cast<float>(a + (static_cast<double>(b) - a) * start);
    };
    const auto slope = [step](std::uint32_t a, std::uint32_t b) {
        return static_cast<float>((static_cast<double>(b) - a) * step);
    };
    const std::uint32_t a = from.colour;
    const std::uint32_t b = to.colour;
    return {at(AlphaOf(a), AlphaOf(b)) / 255,    at(RedOf(a), RedOf(b)),
            at(GreenOf(a), GreenOf(b)),          at(BlueOf(a), BlueOf(b)),
            slope(AlphaOf(a), AlphaOf(b)) / 255, slope(RedOf(a), RedOf(b)),
            slope(GreenOf(a), GreenOf(b)),       slope(BlueOf(a), BlueOf(b))};
}

std::uint32_t Opaque(float red, float green, float blue)
{
    // Signed conversions are the ones that have vector instructions everywhere.
    const auto channel = [](float value) {
        return static_cast<std::uint32_t>(static_cast<std::int32_t>(value + 0.5f));
    };
    return 0xFF000000u | (channel(red) << 16) | (channel(green) << 8) | channel(blue);
}

/// Draws a ramp over the checkerboard, into both rows at once. `grey` holds the board of the even row.
void DrawRamp(const ColourRamp& ramp, int count, const float* __restrict grey, std::uint32_t* __restrict even,
              std::uint32_t* __restrict odd)
{
    for (int i = 0; i < count; ++i) {
        const auto offset = static_cast<float>(i);
        const float alpha = ramp.alpha + ramp.alphaStep * offset;
        const float below = 1.0f - alpha;
        const float red = (ramp.red + ramp.redStep * offset) * alpha;
        const float green = (ramp.green + ramp.greenStep * offset) * alpha;
        const float blue = (ramp.blue + ramp.blueStep * offset) * alpha;
        const float evenGrey = grey[i] * below;
        const float oddGrey = (kLightGrey + kDarkGrey - grey[i]) * below;
        even[i] = Opaque(red + evenGrey, green + evenGrey, blue + evenGrey);
        odd[i] = Opaque(red + oddGrey, green + oddGrey, blue + oddGrey);
    }
}

/// The checkerboard's first row of squares, a grey a column.
std::vector<float> BoardRow(const DeviceGrid& grid, int columns)
{
    std::vector<float> row(static_cast<std::size_t>(columns));
    for (int square = 0, from = 0; from < columns; ++square) {
        const int to = std::clamp(grid.Edge((square + 1) * kSquare), from + 1, columns);
        std::fill(row.begin() + from, row.begin() + to, square % 2 == 0 ? kDarkGrey : kLightGrey);
        from = to;
    }
    return row;
}

/// The columns from `left` up to `right` of both rows, with the blend drawn over the checkerboard.
void DrawBlend(PaletteRows& rows, const DeviceGrid& grid, int width, int left, int right,
               std::span<const BlendEntry> blend)
{
    const std::vector<float> board = BoardRow(grid, right);
    const double perColumn = 1.0 / (grid.Ratio() * (width - 7));
    const auto place = [&](int column) { return (column / grid.Ratio() - 3) / (width - 7); };
    const auto draw = [&](const BlendEntry& from, const BlendEntry& to, int first, int last) {
        DrawRamp(MakeRamp(from, to, place(first), perColumn), last - first, board.data() + first,
                 rows.even.data() + first, rows.odd.data() + first);
    };
    if (blend.empty()) {
        draw({0.0, 0}, {1.0, 0}, left, right);
        return;
    }
    int column = left;
    for (std::size_t i = 1; i < blend.size() && column < right; ++i) {
        // The columns before the entry's place; a column exactly on it belongs to the next stretch.
        const double edge = std::ceil((blend[i].position * (width - 7) + 3) * grid.Ratio());
        const int last = std::min(right, static_cast<int>(edge));
        if (last <= column)
            continue;
        draw(blend[i - 1], blend[i], column, last);
        column = last;
    }
    if (column < right)
        draw(blend.back(), blend.back(), column, right);
}

} // namespace

void DrawPalette(PixelView picture, const DeviceGrid& grid, int width, std::span<const BlendEntry> blend,
                 std::uint32_t frameColour)
{
    const int left = grid.Edge(3);
    const int top = grid.Edge(1);
    const int right = std::min(grid.Edge(width - 3), picture.width);
    const int bottom = picture.height - grid.Edge(1);
    const int line = grid.Line();
    if (right - left <= 2 * line || bottom - top <= 2 * line) {
        picture.Fill(0);
        picture.FillRect(left, top, right, bottom, frameColour);
        return;
    }

    PaletteRows rows;
    for (std::vector<std::uint32_t>* row : {&rows.even, &rows.odd}) {
        row->assign(static_cast<std::size_t>(picture.width), 0);
        std::fill(row->begin() + left, row->begin() + right, frameColour);
    }
    DrawBlend(rows, grid, width, left + line, right - line, blend);

    picture.FillRect(0, 0, picture.width, top, 0);
    picture.FillRect(0, bottom, picture.width, picture.height, 0);
    for (const int edge : {top, bottom - line}) {
        picture.FillRect(0, edge, left, edge + line, 0);
        picture.FillRect(left, edge, right, edge + line, frameColour);
        picture.FillRect(right, edge, picture.width, edge + line, 0);
    }
    const std::size_t bytes = static_cast<std::size_t>(picture.width) * sizeof(std::uint32_t);
    int square = 0;
    for (int y = top + line; y < bottom - line; ++y) {
        while (grid.Edge((square + 1) * kSquare) <= y)
            ++square;
        std::memcpy(picture.Row(y), (square % 2 == 0 ? rows.even : rows.odd).data(), bytes);
    }
}

void DrawTick(PixelView picture, const DeviceGrid& grid, int x)
{
    const int left = grid.LineAt(x);
    picture.FillRect(left, grid.Edge(kTickTop), left + grid.Line(), grid.Edge(kTickBottom), kTickColour);
}

void DrawMidPointPointer(PixelView picture, const DeviceGrid& grid, int x, std::uint32_t colour)
{
    const int line = grid.Line();
    const int reach = grid.Length(kDiamondReach);
    const int centreX = grid.LineAt(x);
    const int centreY = grid.LineAt(kDiamondCentre);
    // Distances are counted from the centre line, which may be more than one device pixel wide.
    const auto distance = [line](int pixel) { return std::max({0, -pixel, pixel - (line - 1)}); };
    for (int dy = -reach; dy < reach + line; ++dy) {
        for (int dx = -reach; dx < reach + line; ++dx) {
            const int away = distance(dx) + distance(dy);
            if (away <= reach && away > reach - line)
                picture.FillRect(centreX + dx, centreY + dy, centreX + dx + 1, centreY + dy + 1, colour);
        }
    }
}

void DrawKeyPointer(PixelView picture, const DeviceGrid& grid, int x, int y, std::uint32_t colour)
{
    const std::uint32_t shown = DrawOver(colour, kWhite);
    const int reach = grid.Length(kMarkerReach);
    const int rows = grid.Length(kMarkerHeight);
    const int left = grid.LineAt(x);
    const int right = left + grid.Line();
    const int top = grid.Edge(y + 1) - rows;
    for (int row = 0; row < rows; ++row) {
        const int widening = row * (reach + 1) / rows;
        picture.FillRect(left - widening, top + row, right + widening, top + row + 1, shown);
    }
}

} // namespace kv
