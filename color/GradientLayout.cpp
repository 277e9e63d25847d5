#include "color/GradientLayout.h"

#include "color/GradientModel.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kv {

namespace {

// Pixels beyond every screen, with room for sums and for the screen's pixel ratio.
constexpr double kFarOut = 1e7;

constexpr int kBoxReach = 4;
constexpr int kMidPointBoxTop = 2;
constexpr int kMidPointBoxBottom = 8;

} // namespace

GradientLayout::GradientLayout(const CRect& clientRect)
    : client(clientRect)
    , midStrip(client.left, client.top, client.right, client.top + kMidStripHeight)
    , palette(client.left, midStrip.bottom, client.right, client.bottom - kKeyStripHeight)
    , keyStrip(client.left, palette.bottom, client.right, client.bottom)
{
}

int GradientLayout::GetDisplayPos(double position) const
{
    const double offset = std::isnan(position) ? 0.0 : Span() * position;
    // A span of 0 makes an infinite position not a number.
    const double inReach = std::isnan(offset) ? 0.0 : std::clamp(offset, -kFarOut, kFarOut);
    return client.left + kLeftMargin + static_cast<int>(inReach);
}

float GradientLayout::PositionAt(int x) const
{
    if (Span() == 0)
        return 0.0f;
    return static_cast<float>(x - client.left - kLeftMargin) / static_cast<float>(Span());
}

double GradientLayout::Shifted(double position, int pixels) const
{
    if (Span() <= 0)
        return position;
    const double from = std::isnan(position) ? 0.0 : position;
    const int column = GetDisplayPos(from) + pixels;
    // The float that will be stored may round to the column before or behind.
    auto shifted = static_cast<float>(from + pixels / static_cast<double>(Span()));
    constexpr float infinity = std::numeric_limits<float>::infinity();
    if (GetDisplayPos(shifted) < column)
        shifted = std::nextafter(shifted, infinity);
    else if (GetDisplayPos(shifted) > column)
        shifted = std::nextafter(shifted, -infinity);
    return shifted;
}

std::optional<float> GradientLayout::DraggedPosition(float start, int pixels) const
{
    if (Span() == 0)
        return std::nullopt;
    const float from = std::isnan(start) ? 0.0f : start;
    return ClampPosition(static_cast<float>(pixels) / static_cast<float>(Span()) + from);
}

std::optional<float> GradientLayout::DraggedMidPoint(const GradientModel& model, int key, float start,
                                                     int pixels) const
{
    const auto segment = model.Keys().subspan(static_cast<std::size_t>(key) - 1, 2);
    const int length = GetDisplayPos(segment[1].position) - GetDisplayPos(segment[0].position);
    if (length == 0)
        return std::nullopt;
    const float from = std::isnan(start) ? 0.0f : start;
    return std::clamp(static_cast<float>(pixels) / static_cast<float>(length) + from, kMidPointMin,
                      kMidPointMax);
}

CRect GradientLayout::KeyBox(double position) const
{
    const int x = GetDisplayPos(position);
    return {x - kBoxReach, keyStrip.top, x + kBoxReach, client.bottom};
}

CRect GradientLayout::MidPointBox(double place) const
{
    const int x = GetDisplayPos(place);
    return {x - kBoxReach, client.top + kMidPointBoxTop, x + kBoxReach, client.top + kMidPointBoxBottom};
}

int GradientLayout::HitKey(const GradientModel& model, CPoint point) const
{
    int index = 0;
    for (const SKvCGGradientKey& key : model.Keys()) {
        if (KeyBox(key.position).PtInRect(point))
            return index;
        ++index;
    }
    return -1;
}

int GradientLayout::HitMidPoint(const GradientModel& model, CPoint point) const
{
    for (const int key : {model.Selected() + 1, model.Selected()}) {
        if (model.IsMidPointShown(key) && MidPointBox(model.MidPointPlace(key)).PtInRect(point))
            return key;
    }
    return -1;
}

} // namespace kv
