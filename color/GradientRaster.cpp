#include "color/GradientRaster.h"

#include "color/Checkerboard.h"
#include "color/GradientColour.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
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

constexpr float kLightGrey = BlueOf(CheckerColours{}.light);
constexpr float kDarkGrey = BlueOf(CheckerColours{}.dark);

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

int DeviceGrid::Length(double logical) const
{
    return std::max(1, Edge(logical));
}

int DeviceGrid::LineAt(int pixel) const
{
    // Nudged so that a centre half way between two device pixels goes the same way everywhere.
    return Floor(pixel * m_ratio + (m_ratio - Line()) / 2 + 0.5 + 1e-6);
}

namespace {

/// A colour that is being mixed: red, green, blue and, in 0..255 too, alpha. An array, so that one vector
/// instruction treats all four.
using Mix = std::array<float, 4>;

/// What the columns of the bar are mixed from: the blend's colour and the checkerboard's grey in an even row
/// of squares.
struct Columns
{
    explicit Columns(int count)
        : mixes(std::make_unique_for_overwrite<Mix[]>(static_cast<std::size_t>(count)))
        , greys(std::make_unique_for_overwrite<float[]>(static_cast<std::size_t>(count)))
    {
    }

    std::unique_ptr<Mix[]> mixes;
    std::unique_ptr<float[]> greys;
};

Mix MixOf(std::uint32_t colour)
{
    const auto channel = [](std::uint32_t value) { return static_cast<float>(static_cast<int>(value)); };
    return {channel(RedOf(colour)), channel(GreenOf(colour)), channel(BlueOf(colour)),
            channel(AlphaOf(colour))};
}

/// Sets `count` columns that lie between two entries of the blend.
void DrawStretch(Mix* __restrict mixes, int count, const BlendEntry& from, const BlendEntry& to,
                 double firstPlace, double placeStep)
{
    const double length = to.position - from.position;
    const double perPlace = length > 0 ? 1 / length : 0.0;
    const auto first = static_cast<float>((firstPlace - from.position) * perPlace);
    const auto each = static_cast<float>(placeStep * perPlace);
    const Mix low = MixOf(from.colour);
    const Mix high = MixOf(to.colour);
    Mix start;
    Mix step;
    for (std::size_t c = 0; c < 4; ++c) {
        start[c] = low[c] + (high[c] - low[c]) * first;
        step[c] = (high[c] - low[c]) * each;
    }
    for (int i = 0; i < count; ++i) {
        const auto offset = static_cast<float>(i);
        for (std::size_t c = 0; c < 4; ++c)
            mixes[i][c] = start[c] + step[c] * offset;
    }
}

/// Sets the blend's colours in the columns from `left` up to `right`.
void DrawBlend(Columns& columns, const DeviceGrid& grid, int width, int left, int right,
               std::span<const BlendEntry> blend)
{
    const int span = width - 7;
    const double perColumn = 1.0 / (grid.Ratio() * span);
    const auto draw = [&](const BlendEntry& from, const BlendEntry& to, int first, int last) {
        DrawStretch(columns.mixes.get() + first, last - first, from, to, (first / grid.Ratio() - 3) / span,
                    perColumn);
    };
    int column = left;
    for (std::size_t i = 1; i < blend.size() && column < right; ++i) {
        // A column exactly on the entry's place belongs to the next stretch.
        const double edge = (blend[i].position * span + 3) * grid.Ratio();
        const int whole = static_cast<int>(edge);
        const int last = std::min(right, whole < edge ? whole + 1 : whole);
        if (last <= column)
            continue;
        draw(blend[i - 1], blend[i], column, last);
        column = last;
    }
    const BlendEntry rest = blend.empty() ? BlendEntry{0.0, 0} : blend.back();
    if (column < right)
        draw(rest, rest, column, right);
}

/// The checkerboard's first row of squares, a grey a column.
void DrawBoard(Columns& columns, const DeviceGrid& grid, int right)
{
    for (int square = 0, from = 0; from < right; ++square) {
        const int to = std::clamp(CheckerEdge(grid, square), from + 1, right);
        std::fill(columns.greys.get() + from, columns.greys.get() + to,
                  square % 2 == 0 ? kDarkGrey : kLightGrey);
        from = to;
    }
}

/// Two rows of the bar are all there is: they differ in where the checkerboard's dark squares lie.
struct PaletteRows
{
    std::vector<std::uint32_t> even;
    std::vector<std::uint32_t> odd;
};

/// An opaque pixel of truncated channels.
std::uint32_t Opaque(float red, float green, float blue)
{
    // Signed conversions are the ones that have vector instructions everywhere.
    const auto channel = [](float value) {
        return static_cast<std::uint32_t>(static_cast<std::int32_t>(value));
    };
    return 0xFF000000u | (channel(red) << 16) | (channel(green) << 8) | channel(blue);
}

/// Draws the blend over the checkerboard, into both rows at once.
void Compose(const Columns& columns, int left, int right, PaletteRows& rows)
{
    const Mix* __restrict mixes = columns.mixes.get();
    const float* __restrict greys = columns.greys.get();
    std::uint32_t* __restrict even = rows.even.data();
    std::uint32_t* __restrict odd = rows.odd.data();
    for (int i = left; i < right; ++i) {
        const float alpha = mixes[i][3] * (1.0f / 255);
        const float r = mixes[i][0] * alpha;
        const float g = mixes[i][1] * alpha;
        const float b = mixes[i][2] * alpha;
        const float below = 1.0f - alpha;
        // With the half that rounds.
        const float evenGrey = greys[i] * below + 0.5f;
        const float oddGrey = (kLightGrey + kDarkGrey - greys[i]) * below + 0.5f;
        even[i] = Opaque(r + evenGrey, g + evenGrey, b + evenGrey);
        odd[i] = Opaque(r + oddGrey, g + oddGrey, b + oddGrey);
    }
}

/// The rows between the frame's top and bottom line, with its sides.
PaletteRows MakeRows(const PixelView& picture, const DeviceGrid& grid, int width, int left, int right,
                     std::span<const BlendEntry> blend, std::uint32_t frameColour)
{
    PaletteRows rows;
    for (std::vector<std::uint32_t>* row : {&rows.even, &rows.odd}) {
        row->assign(static_cast<std::size_t>(picture.width), 0);
        std::fill(row->begin() + left, row->begin() + right, frameColour);
    }
    const int line = grid.Line();
    Columns columns(right);
    DrawBoard(columns, grid, right);
    DrawBlend(columns, grid, width, left + line, right - line, blend);
    Compose(columns, left + line, right - line, rows);
    return rows;
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

    const PaletteRows rows = MakeRows(picture, grid, width, left, right, blend, frameColour);
    picture.FillRect(0, 0, picture.width, top, 0);
    picture.FillRect(0, bottom, picture.width, picture.height, 0);
    for (const int edge : {top, bottom - line}) {
        picture.FillRect(0, edge, left, edge + line, 0);
        picture.FillRect(left, edge, right, edge + line, frameColour);
        picture.FillRect(right, edge, picture.width, edge + line, 0);
    }
    const std::size_t bytes = static_cast<std::size_t>(picture.width) * sizeof(std::uint32_t);
    for (int y = top + line; y < bottom - line; ++y)
        std::memcpy(picture.Row(y), (CheckerSquare(grid, y) % 2 == 0 ? rows.even : rows.odd).data(), bytes);
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
