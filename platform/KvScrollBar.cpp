#include "KvScroll.h"
#include "platform/ReportLayout.h"
#include "platform/SkinBar.h"

#include <QStyle>
#include <QStyleOptionSlider>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double kLongestThumb = 1 << 30;

UINT CodeOf(int action)
{
    switch (action) {
    case QAbstractSlider::SliderSingleStepAdd:
        return SB_LINEDOWN;
    case QAbstractSlider::SliderSingleStepSub:
        return SB_LINEUP;
    case QAbstractSlider::SliderPageStepAdd:
        return SB_PAGEDOWN;
    case QAbstractSlider::SliderPageStepSub:
        return SB_PAGEUP;
    case QAbstractSlider::SliderToMinimum:
        return SB_TOP;
    default:
        return SB_BOTTOM;
    }
}

} // namespace

struct CKvScrollBar::Impl
{
    explicit Impl(CKvScrollBar& bar) : colours(bar) {}

    kv::SkinBar colours;
    std::int64_t range = 0;
    std::int64_t length = 10; ///< of the view
    std::int64_t position = 0;
    std::int64_t told = 0; ///< the position that `ScrollPosEdited` told last, or the host's since
    bool isSending = false;
    bool isSetting = false; ///< by a setter, which is silent
    QRect paintedThumb;

    kv::ReportBarScale Scale() const { return kv::ReportBarScale(range); }
};

CKvScrollBar::CKvScrollBar() : m_impl(std::make_unique<Impl>(*this))
{
    setFocusPolicy(Qt::NoFocus);
    setRange(0, 0);
    connect(this, &QAbstractSlider::actionTriggered, this, &CKvScrollBar::Act);
    connect(this, &QAbstractSlider::valueChanged, this, &CKvScrollBar::Track);
    connect(this, &QAbstractSlider::sliderReleased, this, [this] {
        Send(SB_THUMBPOSITION);
        Send(SB_ENDSCROLL);
    });
}

CKvScrollBar::CKvScrollBar(QWidget* parent) : CKvScrollBar()
{
    setParent(parent);
}

CKvScrollBar::~CKvScrollBar() = default;

int CKvScrollBar::Create(Qt::Orientation orientation, UINT style, const CRect& rect, CWnd* parent, UINT id)
{
    if (!parent)
        return 0;
    setOrientation(orientation);
    setParent(parent);
    KvSetDlgItemId(this, id);
    setGeometry(rect);
    setEnabled((style & WS_DISABLED) == 0);
    setVisible((style & WS_VISIBLE) != 0);
    return 1;
}

UINT CKvScrollBar::GetDlgCtrlID() const
{
    return KvGetDlgItemId(const_cast<CKvScrollBar*>(this)); // reads only
}

void CKvScrollBar::SetDlgCtrlID(UINT id)
{
    KvSetDlgItemId(this, id);
}

void CKvScrollBar::SetScroll(IKvScrollLineHelper& line)
{
    m_impl->range = line.GetRange();
    m_impl->length = line.GetViewLength();
    m_impl->position = line.GetPosition();
    Show();
}

void CKvScrollBar::SetScrollRange(std::int64_t range)
{
    m_impl->range = std::max<std::int64_t>(range, 0);
    Show();
}

void CKvScrollBar::SetViewLength(std::int64_t length)
{
    m_impl->length = std::max<std::int64_t>(length, 1);
    Show();
}

void CKvScrollBar::Show()
{
    m_impl->isSetting = true;
    const int range = m_impl->Scale().Range();
    const double scale = m_impl->range > 0 ? range / static_cast<double>(m_impl->range) : 1.0;
    setRange(0, range);
    // The toolkit makes the thumb page ÷ (range + page).
    setPageStep(static_cast<int>(
        std::clamp(std::round(static_cast<double>(m_impl->length) * scale), 1.0, kLongestThumb)));
    m_impl->isSetting = false;
    SetScrollPos(m_impl->position);
}

void CKvScrollBar::SetScrollPos(std::int64_t position)
{
    m_impl->position = std::clamp<std::int64_t>(position, 0, m_impl->range);
    if (!m_impl->isSending)
        m_impl->told = m_impl->position;
    m_impl->isSetting = true;
    setValue(m_impl->Scale().ToBar(m_impl->position));
    m_impl->isSetting = false;
}

std::int64_t CKvScrollBar::GetScrollPos() const
{
    return m_impl->position;
}

std::int64_t CKvScrollBar::GetScrollRange() const
{
    return m_impl->range;
}

std::int64_t CKvScrollBar::GetViewLength() const
{
    return m_impl->length;
}

void CKvScrollBar::LoadSkin()
{
    m_impl->colours.Load();
}

void CKvScrollBar::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

void CKvScrollBar::paintEvent(QPaintEvent* event)
{
    m_impl->paintedThumb = ThumbRect();
    QScrollBar::paintEvent(event);
}

// Most changes of a long range move the thumb by less than a pixel, and a bar takes longer to paint than the
// view beside it.
void CKvScrollBar::sliderChange(SliderChange change)
{
    if (change == SliderOrientationChange || ThumbRect() != m_impl->paintedThumb)
        QScrollBar::sliderChange(change);
}

QRect CKvScrollBar::ThumbRect() const
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    return style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
}

void CKvScrollBar::Act(int action)
{
    if (action == SliderMove || action == SliderNoAction)
        return;
    setSliderPosition(value()); // how far a line or page goes is the parent's to say
    if (!isEnabled())
        return; // a screen reader can ask it all the same
    Send(CodeOf(action));
}

void CKvScrollBar::Track()
{
    if (m_impl->isSetting)
        return;
    if (!isEnabled()) {
        SetScrollPos(m_impl->position);
        return;
    }
    m_impl->position = m_impl->Scale().ToOffset(value());
    Send(isSliderDown() ? SB_THUMBTRACK : SB_THUMBPOSITION);
}

void CKvScrollBar::Send(UINT code)
{
    const UINT message = orientation() == Qt::Vertical ? WM_VSCROLL : WM_HSCROLL;
    const bool outer = std::exchange(m_impl->isSending, true);
    KvSendMessage(parentWidget(), message, MAKEWPARAM(code, static_cast<UINT>(m_impl->position)),
                  reinterpret_cast<LPARAM>(this));
    m_impl->isSending = outer;
    const std::int64_t position = m_impl->position;
    const bool isOther = std::exchange(m_impl->told, position) != position;
    emit ScrollRequested(static_cast<int>(code));
    if (isOther)
        emit ScrollPosEdited(position);
}
