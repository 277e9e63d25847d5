#include "KvScroll.h"
#include "platform/ReportLayout.h"
#include "platform/SkinColours.h"

#include <QStyle>
#include <QStyleOptionSlider>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

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
    std::int64_t range = 0;
    std::int64_t position = 0;
    bool isSetting = false; ///< by a setter, which is silent
    QRect paintedThumb;

    kv::ReportBarScale Scale() const { return kv::ReportBarScale(range); }
};

CKvScrollBar::CKvScrollBar() : m_impl(std::make_unique<Impl>())
{
    setFocusPolicy(Qt::NoFocus);
    setRange(0, 0);
    connect(this, &QAbstractSlider::actionTriggered, this, &CKvScrollBar::Act);
    connect(this, &QAbstractSlider::valueChanged, this, &CKvScrollBar::Track);
    connect(this, &QAbstractSlider::sliderReleased, this, [this] {
        Send(SB_THUMBPOSITION);
        Send(SB_ENDSCROLL);
    });
    LoadSkin();
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
    m_impl->isSetting = true;
    const int range = m_impl->Scale().Range();
    const double scale = m_impl->range > 0 ? range / static_cast<double>(m_impl->range) : 1.0;
    setRange(0, range);
    // The toolkit makes the thumb page ÷ (range + page).
    setPageStep(static_cast<int>(
        std::clamp(std::round(static_cast<double>(line.GetViewLength()) * scale), 1.0, kLongestThumb)));
    m_impl->isSetting = false;
    SetScrollPos(line.GetPosition());
}

void CKvScrollBar::SetScrollPos(std::int64_t position)
{
    m_impl->position = std::clamp<std::int64_t>(position, 0, m_impl->range);
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

void CKvScrollBar::LoadSkin()
{
    setPalette(QPalette(kv::SkinColour(L"keReportListHeaderBKColor", 0xFF323236u),
                        kv::SkinColour(L"keReportListBKColor", 0xFF1F1F22u)));
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
    Send(CodeOf(action));
}

void CKvScrollBar::Track()
{
    if (m_impl->isSetting)
        return;
    m_impl->position = m_impl->Scale().ToOffset(value());
    Send(isSliderDown() ? SB_THUMBTRACK : SB_THUMBPOSITION);
}

void CKvScrollBar::Send(UINT code)
{
    const UINT message = orientation() == Qt::Vertical ? WM_VSCROLL : WM_HSCROLL;
    KvSendMessage(parentWidget(), message, MAKEWPARAM(code, static_cast<UINT>(m_impl->position)),
                  reinterpret_cast<LPARAM>(this));
}
