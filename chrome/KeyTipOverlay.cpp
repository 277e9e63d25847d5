#include "chrome/KeyTipOverlay.h"

#include "platform/DevicePixels.h"
#include "platform/SkinColours.h"

#include <QPainter>

#include <algorithm>
#include <utility>

namespace kv {

namespace {

constexpr int kRoom = 4; ///< left and right of the text
constexpr qreal kCornerRadius = 2.5;

} // namespace

KeyTipOverlay::KeyTipOverlay(QWidget& bar, std::vector<KeyTipLabel> labels, int middle)
    : QWidget(&bar)
    , m_labels(std::move(labels))
    , m_middle(middle)
{
    setObjectName(QStringLiteral("kvKeyTips"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    QFont labelFont = bar.font();
    labelFont.setBold(true);
    setFont(labelFont);
    setGeometry(bar.rect());
    raise(); // above the buttons and the tool windows, which are children, too
    show();
}

QRect KeyTipOverlay::LabelRect(const KeyTipLabel& label) const
{
    const int height = fontMetrics().height();
    const int width = std::max(height, fontMetrics().horizontalAdvance(label.text) + 2 * kRoom);
    const int left = (label.part.left + label.part.right - width) / 2;
    return {std::clamp(left, 0, std::max(0, this->width() - width)), m_middle - height / 2, width, height};
}

void KeyTipOverlay::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const DevicePixels pixels(painter);
    const QColor background = SkinColour(L"keButtonTipsBackground", 0xFFF2F2F4);
    const QColor text = SkinColour(L"keButtonTipsText", 0xFF1B1B1D);
    for (const KeyTipLabel& label : m_labels) {
        const QRect box = LabelRect(label);
        const QRectF outer = pixels.Snapped(box);
        const qreal width = pixels.Hairline();
        painter.setPen(Qt::NoPen);
        painter.setBrush(text);
        painter.drawRoundedRect(outer, kCornerRadius, kCornerRadius);
        painter.setBrush(background);
        painter.drawRoundedRect(outer.adjusted(width, width, -width, -width), kCornerRadius - width,
                                kCornerRadius - width);
        painter.setPen(text);
        painter.drawText(box, Qt::AlignCenter, label.text);
    }
}

} // namespace kv
