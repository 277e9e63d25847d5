// Moving a top-level window by its caption and resizing it by its edges: by the window manager where it
// takes the job, else by hand.
#pragma once

#include <QPoint>

class QWidget;

namespace kv {

/// The left button went down on the caption of `source.window()`: once the pointer has gone the toolkit's
/// drag distance with the button down, the window follows it. A maximised window is restored under the
/// pointer first, one on the full screen stays. Escape brings a window that is moved by hand back.
/// @param point client coordinates of `source`.
void StartWindowMove(QWidget& source, QPoint point);

/// The left button went down on those edges (FrameEdge bits) of a window.
/// @param screen where it went down.
void StartFrameResize(QWidget& window, unsigned edges, QPoint screen);

/// The pointer's shape over those edges.
Qt::CursorShape FrameEdgeCursor(unsigned edges);

} // namespace kv
