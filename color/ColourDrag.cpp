#include "color/ColourDrag.h"

#include "KvPlatform.h"
#include "color/ColourText.h"
#include "platform/ColourClipboard.h"

#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QPixmap>

#include <cmath>

namespace kv {

namespace {

constexpr int kSide = 20;
constexpr qsizetype kLongestText = 200; // of a colour, with blanks around it

QPixmap DraggedPicture(const QWidget& source, std::uint32_t colour)
{
    const qreal ratio = source.devicePixelRatioF();
    QPixmap picture(QSize(kSide, kSide) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    painter.fillRect(QRect(1, 1, kSide - 2, kSide - 2), Qt::white);
    painter.fillRect(QRect(1, 1, kSide - 2, kSide - 2), QColor::fromRgba(colour));
    return picture;
}

} // namespace

std::unique_ptr<QMimeData> ColourDragData(std::uint32_t colour)
{
    std::unique_ptr<QMimeData> data = ColourData(colour);
    data->setText(KvToQString(ColourText(colour)));
    return data;
}

std::optional<std::uint32_t> DroppedColour(const QMimeData* data)
{
    if (!data)
        return std::nullopt;
    if (const std::optional<std::uint32_t> colour = ColourOf(*data))
        return colour;
    if (!data->hasText())
        return std::nullopt;
    // Asked at each move of a drag, which may carry a whole book.
    const QString text = data->text();
    if (text.size() > kLongestText)
        return std::nullopt;
    const std::optional<TypedColour> typed = ParseColourText(KvFromQString(text));
    return typed ? std::optional(typed->colour) : std::nullopt;
}

QPoint PixelOf(const QDropEvent& event)
{
    const QPointF position = event.position();
    return {static_cast<int>(std::floor(position.x())), static_cast<int>(std::floor(position.y()))};
}

void AnswerDrag(QDropEvent& event, bool takes)
{
    if (!takes) {
        event.ignore();
        return;
    }
    event.setDropAction(Qt::CopyAction);
    event.accept();
}

void DragColour(QWidget& source, std::uint32_t colour)
{
    auto* drag = new QDrag(&source); // the toolkit deletes it
    drag->setMimeData(ColourDragData(colour).release());
    drag->setPixmap(DraggedPicture(source, colour));
    drag->setHotSpot({kSide / 2, kSide / 2});
    drag->exec(Qt::CopyAction);
}

} // namespace kv
