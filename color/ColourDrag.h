// A colour on its way between windows.
#pragma once

#include <QPoint>

#include <cstdint>
#include <memory>
#include <optional>

class QDropEvent;
class QMimeData;
class QWidget;

namespace kv {

/// The colour for a drop: as "DWCOLOR" and as text.
std::unique_ptr<QMimeData> ColourDragData(std::uint32_t colour);
/// The colour that is dropped, or none: a "DWCOLOR", else a colour's text, opaque where it names no alpha.
std::optional<std::uint32_t> DroppedColour(const QMimeData* data);
/// The pixel that the drag is over, as it is counted for a press.
QPoint PixelOf(const QDropEvent& event);
/// Takes an event of a drag as a copy, or refuses it.
void AnswerDrag(QDropEvent& event, bool takes);
/// Lets the user drag a colour, until it is dropped anywhere. The source may be gone afterwards.
void DragColour(QWidget& source, std::uint32_t colour);

} // namespace kv
