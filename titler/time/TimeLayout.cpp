#include "time/TimeLayout.h"

#include <algorithm>
#include <cmath>

namespace titler {
namespace {

constexpr double kFewestFrames = 8;
constexpr int kNamesFrom = 420; // a narrower ruler has no room for names
constexpr int kMargin = 12;     // half a label, and the playhead's head
constexpr double kLabelGap = 14;
constexpr double kNearestTicks = 6;

// Distances of ticks in counted frames, ascending; each one that divides a second, a minute, an hour.
std::vector<qint64> Steps(int nominal)
{
    std::vector<qint64> steps;
    for (const int frames : {1, 2, 5, 6, 10, 12, 15, 25})
        if (nominal % frames == 0 && frames < nominal)
            steps.push_back(frames);
    for (const int seconds : {1, 2, 5, 10, 15, 30, 60, 120, 300, 600, 900, 1800, 3600, 7200, 18000, 36000})
        steps.push_back(static_cast<qint64>(seconds) * nominal);
    return steps;
}

} // namespace

TimeView TimeView::Zoomed(double factor, double around, int lastFrame) const
{
    const double whole = std::max(1, lastFrame);
    const double wanted = std::clamp(span * factor, std::min(kFewestFrames, whole), whole);
    const TimeView view{around - (around - first) * wanted / span, wanted};
    return view.Moved(0, lastFrame);
}

TimeView TimeView::Moved(double by, int lastFrame) const
{
    const double whole = std::max(1, lastFrame);
    const double kept = std::min(span, whole);
    return {std::clamp(first + by, 0.0, whole - kept), kept};
}

TimeView TimeView::Showing(int frame, int lastFrame) const
{
    if (frame < first)
        return Moved(frame - first, lastFrame);
    return Moved(std::max(0.0, frame - first - span), lastFrame);
}

TimeLayout::TimeLayout(const QSize& size, const TimeView& shown, int lanes_, int namesWidth) : view(shown)
{
    names = size.width() >= kNamesFrom ? std::clamp(namesWidth, kNames, size.width() / 3) : 0;
    left = names + kMargin;
    right = std::max(left + 1, static_cast<double>(size.width() - kMargin));
    ruler = QRectF(left, 0, right - left, kRuler);
    lanes = QRectF(left, kRuler, right - left, std::max(0, size.height() - kRuler));
    const double each = lanes.height() / std::max(1, lanes_);
    laneCount = each < kLowestLane ? 1 : std::max(1, lanes_);
    laneHeight = std::min(lanes.height() / laneCount, kHighestLane);
}

int TimeLayout::NearestFrame(double x) const
{
    const double frame = std::clamp(ToFrame(x), view.first, view.first + view.span);
    return static_cast<int>(std::lround(frame));
}

QRectF TimeLayout::Lane(int lane) const
{
    const int at = std::min(lane, laneCount - 1);
    return {lanes.left(), lanes.top() + at * laneHeight, lanes.width(), laneHeight};
}

QPointF TimeLayout::Marker(int lane, int frame) const
{
    return {ToX(frame), Lane(lane).center().y()};
}

std::vector<TimeTick> TimeLayout::Ticks(const FrameRate& rate, double labelWidth) const
{
    const std::vector<qint64> steps = Steps(rate.nominal);
    const double pixels = (right - left) / view.span; // for a frame
    const auto isWide = [&](double room) { return [=](qint64 s) { return double(s) * pixels >= room; }; };
    const auto major = std::find_if(steps.begin(), steps.end() - 1, isWide(labelWidth + kLabelGap));
    const auto fits = [&](qint64 step) { return *major % step == 0 && isWide(kNearestTicks)(step); };
    const auto minor = std::find_if(steps.begin(), major, fits);

    std::vector<TimeTick> ticks;
    const double end = view.first + view.span;
    // The labels count on where drop frame leaves some out: they lie ahead of the frames.
    for (qint64 label = static_cast<qint64>(std::ceil(view.first)) / *minor * *minor;; label += *minor) {
        const qint64 frame = FrameOfLabel(label, rate);
        if (static_cast<double>(frame) > end)
            break;
        if (static_cast<double>(frame) >= view.first && (ticks.empty() || frame > ticks.back().frame))
            ticks.push_back({static_cast<int>(frame), label % *major == 0});
    }
    return ticks;
}

} // namespace titler
