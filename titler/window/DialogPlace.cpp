#include "window/DialogPlace.h"

#include <algorithm>

namespace titler {

QPoint PlaceBeside(const QRect& seen, QSize dialog, const QRect& room)
{
    constexpr int gap = 8;
    const QPoint most(room.right() + 1 - dialog.width(), room.bottom() + 1 - dialog.height());
    const auto within = [&](QPoint at) {
        return QPoint(std::max(room.left(), std::min(at.x(), most.x())),
                      std::max(room.top(), std::min(at.y(), most.y())));
    };
    const auto covered = [&](QPoint at) {
        const QRect common = QRect(at, dialog).intersected(seen);
        return static_cast<qint64>(common.width()) * common.height();
    };
    const int x = seen.x() + (seen.width() - dialog.width()) / 2;
    const int y = seen.y() + (seen.height() - dialog.height()) / 2;
    const QPoint behind(seen.x() + seen.width() + gap, seen.y() + seen.height() + gap);
    // The first of the best: below is next to the time.
    QPoint best = within({x, behind.y()});
    for (const QPoint at : {QPoint(behind.x(), y), QPoint(seen.left() - gap - dialog.width(), y),
                            QPoint(x, seen.top() - gap - dialog.height()), most,
                            QPoint(room.left(), most.y()), QPoint(most.x(), room.top()), room.topLeft()})
        if (covered(within(at)) < covered(best))
            best = within(at);
    return best;
}

} // namespace titler
