#include "KvButtons.h"
#include "KvGuiRes.h"
#include "platform/SkinColours.h"

#include <QAccessible>
#include <QFontMetrics>

#include <utility>

namespace {

constexpr int kGap = 4; ///< between picture and text

QSize PictureSize(const CKvButton& button)
{
    return KvGuiRes::LoadImageW(button.GetBitmapName().c_str()).Size();
}

} // namespace

CKvButton::CKvButton()
{
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
}

CKvButton::CKvButton(QWidget* parent) : CKvButton()
{
    CreateWhenShown(parent);
}

CKvButton::~CKvButton() = default;

void CKvButton::SetWindowText(const wchar_t* text)
{
    setText(text ? KvToQString(text) : QString());
}

void CKvButton::setText(const QString& text)
{
    if (std::exchange(m_text, text) == text)
        return;
    updateGeometry();
    update();
    QAccessibleEvent change(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&change);
}

std::wstring CKvButton::GetWindowText() const
{
    return KvFromQString(m_text);
}

void CKvButton::SetToolTip(const wchar_t* text)
{
    setToolTip(text ? KvToQString(text) : QString());
}

QSize CKvButton::sizeHint() const
{
    if (m_text.isEmpty())
        return CKvBitmapButton::sizeHint();
    const QSize picture = PictureSize(*this);
    const QFontMetrics metrics = fontMetrics();
    const int pictureWidth = picture.isEmpty() ? 0 : picture.width() + kGap;
    return {pictureWidth + metrics.horizontalAdvance(m_text), qMax(picture.height(), metrics.height())};
}

QRect CKvButton::PictureRoom() const
{
    if (m_text.isEmpty())
        return rect();
    const int width = sizeHint().width();
    if (width > this->width())
        return {};
    return {(this->width() - width) / 2, 0, PictureSize(*this).width(), height()};
}

QRect CKvButton::TextRoom() const
{
    const QRect picture = PictureRoom();
    if (picture.isEmpty())
        return rect();
    const int left = picture.right() + 1 + kGap;
    return {left, 0, width() - left, height()};
}

QColor CKvButton::TextColour() const
{
    if (!isEnabled())
        return kv::DisabledTextColour();
    return underMouse() || isDown() ? kv::HoverTextColour() : kv::TextColour();
}

void CKvButton::paintEvent(QPaintEvent* event)
{
    CKvBitmapButton::paintEvent(event);
    if (m_text.isEmpty())
        return;
    QPainter painter(this);
    painter.setPen(TextColour());
    QRect room = TextRoom();
    // The toolkit would centre by fractions: beside painted labels it is seen where it rounds otherwise.
    room.translate(0, (room.height() - fontMetrics().height()) / 2);
    const int across = room.width() == width() ? Qt::AlignHCenter : Qt::AlignLeft | Qt::AlignAbsolute;
    painter.drawText(room, across | Qt::AlignTop | Qt::TextSingleLine | Qt::TextDontClip,
                     fontMetrics().elidedText(m_text, Qt::ElideRight, room.width()));
}
