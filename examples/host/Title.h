// What the host edits: a title's filling, the places where it stands in time, and its way between them.
#pragma once

#include <KvQt.h>

#include <QPainter>

#include <map>

constexpr int kLastFrame = 100;
constexpr QPointF kPlaces[] = {{0.5, 0.5}, {0.3, 0.2}, {0.7, 0.2}, {0.3, 0.8}, {0.5, 0.8}, {0.7, 0.8}};

struct Title
{
    std::vector<SKvCGGradientKey> stops = {
        {0xFF3A86FF, 0, 0.5f}, {0xFFFF5D8F, 0.5f, 0.5f}, {0xFFFFB347, 1, 0.5f}};
    SKvParamEaseData ease{kKvEaseSmooth, 0.5, 0,   0.5, 0, 0, 0,
                          100,           100, -30, 130, 0}; // of each way, in percent
    std::map<int, int> keys = {{10, 1}, {70, 5}};           // a frame's place; never empty
    bool isAnimated = true;                                 // else the first key counts

    int PlaceAt(int frame) const
    {
        const auto after = keys.upper_bound(frame);
        return isAnimated && after != keys.begin() ? std::prev(after)->second : keys.begin()->second;
    }
    /// The title's middle, as fractions of the picture.
    QPointF At(int frame) const
    {
        const auto after = keys.upper_bound(frame);
        const QPointF from = kPlaces[PlaceAt(frame)];
        if (!isAnimated || after == keys.begin() || after == keys.end())
            return from;
        const double start = std::prev(after)->first;
        const double way = KvToEasingCurve(ease).valueForProgress((frame - start) / (after->first - start));
        return from + (kPlaces[after->second] - from) * way;
    }
    void Paint(QPainter& painter, const QRect& picture, QPointF at) const
    {
        painter.fillRect(picture, QColor(20, 24, 34));
        QFont font = painter.font();
        font.setPixelSize(picture.height() / 6);
        font.setBold(true);
        painter.setFont(font);
        QRect text = QFontMetrics(font).boundingRect("HARBOUR");
        text.moveCenter(picture.topLeft() +
                        QPoint(int(at.x() * picture.width()), int(at.y() * picture.height())));
        painter.setPen(QPen(QBrush(KvToLinearGradient(stops, text)), 1));
        painter.drawText(text, Qt::AlignCenter | Qt::TextDontClip, "HARBOUR");
    }
};
