// The time ruler's geometry: which frames it shows, where its ticks and keys stand. Logical pixels.
#pragma once

#include "project/TimeCode.h"

#include <QRectF>

#include <vector>

namespace titler {

/// The frames that are shown, from `first` at the left to `first + span` at the right.
struct TimeView
{
    double first = 0;
    double span = 1;

    /// Scaled by `factor` around a frame, which stays where it is; not beyond the project, and not closer
    /// than a few frames.
    TimeView Zoomed(double factor, double around, int lastFrame) const;
    TimeView Moved(double by, int lastFrame) const;
    /// The nearest view within the project that shows the frame.
    TimeView Showing(int frame, int lastFrame) const;

    bool operator==(const TimeView&) const = default;
};

struct TimeTick
{
    int frame;
    bool major; ///< carries a label
};

struct TimeLayout
{
    static constexpr int kRuler = 26;      ///< height of the ticks and labels
    static constexpr double kMarker = 4.5; ///< half the size of a key's marker
    static constexpr double kReach = 6;    ///< from a marker's centre, to hit it
    static constexpr double kLowestLane = 9;
    static constexpr double kHighestLane = 18;

    static constexpr int kNames = 112; ///< the column of the names, or more

    /// @param namesWidth what the lanes' names need; they get at most a third of the width.
    TimeLayout(const QSize& size, const TimeView& view, int lanes, int namesWidth = kNames);

    QRectF ruler; ///< ticks, from the plot's left to its right
    QRectF lanes; ///< below it
    double left;  ///< of the first shown frame
    double right; ///< of the last one
    TimeView view;
    int laneCount; ///< 1 when there is no room for all: then all keys share it
    double laneHeight;
    double names = 0; ///< width of the column with the lanes' names; 0 without

    double ToX(double frame) const { return left + (frame - view.first) / view.span * (right - left); }
    double ToFrame(double x) const { return view.first + (x - left) / (right - left) * view.span; }
    /// The frame whose place is nearest, within what is shown.
    int NearestFrame(double x) const;
    QRectF Lane(int lane) const;
    QPointF Marker(int lane, int frame) const;
    /// Ascending, all within the view. @param labelWidth of a time code.
    std::vector<TimeTick> Ticks(const FrameRate& rate, double labelWidth) const;
};

} // namespace titler
