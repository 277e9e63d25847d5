// Where a dialog opens so that what it changes stays in sight.
#pragma once

#include <QPoint>
#include <QRect>

namespace titler {

/// The place for a dialog of that size, frame included, that covers the least of `seen`: beside it or in a
/// corner of `room`, always within `room` as far as the size allows.
QPoint PlaceBeside(const QRect& seen, QSize dialog, const QRect& room);

} // namespace titler
