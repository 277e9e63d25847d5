#include "text/CharSearchBox.h"

#include <QPainter>
#include <QStyle>

namespace kv {

namespace {
constexpr int kMargin = 8;
constexpr float kFaultOpacity = 0.75F;
} // namespace

void CharSearchBox::ShowFault(const QString& text)
{
    if (m_fault == text)
        return;
    m_fault = text;
    const int room = text.isEmpty() ? 0 : fontMetrics().horizontalAdvance(text) + kMargin;
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    setTextMargins(isMirrored ? room : 0, 0, isMirrored ? 0 : room, 0);
    setAccessibleDescription(text);
    update();
}

void CharSearchBox::paintEvent(QPaintEvent* event)
{
    QLineEdit::paintEvent(event);
    if (m_fault.isEmpty())
        return;
    QPainter painter(this);
    QColor colour = palette().color(QPalette::Text);
    colour.setAlphaF(kFaultOpacity);
    painter.setPen(colour);
    const auto end = static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignRight));
    painter.drawText(rect().adjusted(kMargin, 0, -kMargin, 0), end | Qt::AlignVCenter, m_fault);
}

} // namespace kv
