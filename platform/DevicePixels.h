// Places on whole device pixels, for painters whose edges and lines are to be sharp at any pixel ratio.
#pragma once

#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <cmath>

namespace kv {

/// Where a painter's logical coordinates fall on the device pixels of its target, which need not be the
/// screen's. Holds for the painter's transformation at the time of construction, without rotation.
class DevicePixels
{
public:
    explicit DevicePixels(const QPainter& painter)
        : m_toDevice(painter.deviceTransform())
        , m_toLogical(m_toDevice.inverted())
        , m_hairline(std::max(1.0, std::floor(m_toDevice.m22())))
    {
    }

    /// The logical rectangle with every edge moved to the nearest edge between device pixels.
    QRectF Snapped(const QRectF& rect) const
    {
        const QRectF device = m_toDevice.mapRect(rect);
        return ToLogical(std::round(device.left()), std::round(device.top()), std::round(device.right()),
                         std::round(device.bottom()));
    }
    /// A level line: the device pixels from the one that holds `y` down, a logical pixel thick or a little
    /// less.
    QRectF Row(double left, double right, double y) const
    {
        const QRectF device = m_toDevice.mapRect(QRectF(QPointF(left, y), QPointF(right, y)));
        const double top = Holding(device.top());
        return ToLogical(std::round(device.left()), top, std::round(device.right()), top + m_hairline);
    }
    /// An upright line, likewise from the device pixel that holds `x` rightwards.
    QRectF Column(double x, double top, double bottom) const
    {
        const QRectF device = m_toDevice.mapRect(QRectF(QPointF(x, top), QPointF(x, bottom)));
        const double left = Holding(device.left());
        return ToLogical(left, std::round(device.top()), left + m_hairline, std::round(device.bottom()));
    }
    /// The thickness of such a line in logical pixels.
    double Hairline() const { return m_toLogical.mapRect(QRectF(0, 0, m_hairline, m_hairline)).height(); }

    /// The corner between device pixels that is nearest to a logical point, in device pixels.
    QPoint Nearest(const QPointF& point) const { return m_toDevice.map(point).toPoint(); }
    /// The logical point that falls on a corner between device pixels.
    QPointF ToLogical(const QPoint& device) const { return m_toLogical.map(QPointF(device)); }

private:
    // The pixel that holds a place, but for rounding.
    static double Holding(double device) { return std::floor(device + 1.0 / 256); }
    QRectF ToLogical(double left, double top, double right, double bottom) const
    {
        return m_toLogical.mapRect(QRectF(QPointF(left, top), QPointF(right, bottom)));
    }

    QTransform m_toDevice;
    QTransform m_toLogical;
    double m_hairline;
};

} // namespace kv
