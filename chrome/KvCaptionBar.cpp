#include "KvCaptionBar.h"

#include "KvGuiRes.h"
#include "chrome/CaptionButtons.h"
#include "chrome/CaptionLayout.h"
#include "chrome/CaptionStrip.h"
#include "platform/FrameState.h"
#include "platform/WindowDrag.h"

#include <QMouseEvent>
#include <QPointer>

#include <algorithm>

namespace {

constexpr int kFallbackHeight = 96; ///< where the skin has no background
constexpr int kLeastWidth = 240;    ///< that a layout is asked for

int SkinHeight()
{
    const int height = KvGuiRes::LoadImageW(L"ribbontitlebar_bk").Size().height();
    return height > 0 ? height : kFallbackHeight;
}

} // namespace

CKvCaptionBar::CKvCaptionBar(std::unique_ptr<kv::CaptionStrip> strip) : m_strip(std::move(strip))
{
    m_strip->Attach(*this);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

CKvCaptionBar::~CKvCaptionBar()
{
    m_strip->Detach();
}

int CKvCaptionBar::Create(UINT style, const CRect& rect, CWnd* parent, DWORD id)
{
    if (IsCreated())
        return 0;
    if (Make(style & ~WS_VISIBLE, rect, parent, id))
        setVisible((style & WS_VISIBLE) != 0);
    return 1;
}

int CKvCaptionBar::CreateSelf()
{
    Make(0, geometry(), parentWidget(), GetDlgCtrlID());
    return 1;
}

// @return false when the bar is gone: what is laid out is the host's, too.
bool CKvCaptionBar::Make(UINT style, const CRect& rect, CWnd* parent, DWORD id)
{
    m_height = SkinHeight();
    CKvWnd::CreateWnd(style, {rect.left, rect.top, rect.right, rect.top + m_height}, parent, id);
    m_strip->TakeGrowth();
    resize(width(), sizeHint().height());
    m_strip->CreateButtons();
    const QPointer<CKvCaptionBar> self(this);
    m_strip->Remeasure();
    return !self.isNull();
}

void CKvCaptionBar::SetGuiBasicSettings(SKvGuiBasicSettings* settings)
{
    m_strip->SetSettings(settings); // the bar may be gone
}

QSize CKvCaptionBar::sizeHint() const
{
    const QSize least = minimumSizeHint();
    return {std::max(least.width(), m_strip->WholeWidth()), least.height()};
}

QSize CKvCaptionBar::minimumSizeHint() const
{
    return {kLeastWidth, (IsCreated() ? m_height : SkinHeight()) + m_strip->Growth()};
}

BOOL CKvCaptionBar::OnCommand(WPARAM wParam, LPARAM /*lParam*/, LRESULT* /*result*/)
{
    return HIWORD(wParam) == BN_CLICKED && m_strip->Command(LOWORD(wParam)) ? 1 : 0;
}

void CKvCaptionBar::OnPaint(Graphics& graphics)
{
    m_strip->Paint(graphics);
}

void CKvCaptionBar::OnSize(int /*width*/, int /*height*/)
{
    m_strip->Layout();
}

void CKvCaptionBar::OnSkinChanged()
{
    m_strip->SkinChanged();
}

QString CKvCaptionBar::ToolTipAt(CPoint point, CRect& area) const
{
    return m_strip->TipAt(point, area);
}

// --- Mouse ---

void CKvCaptionBar::OnLButtonDown(Qt::KeyboardModifiers modifiers, CPoint point)
{
    const kv::CaptionHit hit = kv::HitTestCaption(point, m_strip->Parts());
    switch (hit.part) {
    case kv::CaptionPart::Button: // a disabled one
        break;
    case kv::CaptionPart::Item:
        m_strip->PressItem(hit.index);
        break;
    case kv::CaptionPart::Flag:
        m_strip->PressFlag();
        break;
    case kv::CaptionPart::Edge:
        kv::StartFrameResize(*window(), static_cast<unsigned>(hit.index), mapToGlobal(point));
        break;
    case kv::CaptionPart::Caption:
        OnHitCaption(point);
        break;
    case kv::CaptionPart::Client:
        CKvWnd::OnLButtonDown(modifiers, point);
        break;
    }
}

void CKvCaptionBar::OnLButtonDblClk(Qt::KeyboardModifiers modifiers, CPoint point)
{
    if (kv::HitTestCaption(point, m_strip->Parts()).part != kv::CaptionPart::Caption)
        OnLButtonDown(modifiers, point);
    else if (kv::HasMaximiseBox(*window()))
        m_strip->RequestMaximised(kv::FrameShowState(*window()) != kv::kShowMaximised);
}

void CKvCaptionBar::OnLButtonUp(Qt::KeyboardModifiers /*modifiers*/, CPoint point)
{
    m_strip->Hover(point);
}

void CKvCaptionBar::mouseMoveEvent(QMouseEvent* event)
{
    m_leftDown = event->buttons().testFlag(Qt::LeftButton);
    CKvWnd::mouseMoveEvent(event);
}

void CKvCaptionBar::OnMouseMove(Qt::KeyboardModifiers /*modifiers*/, CPoint point)
{
    if (m_leftDown)
        return;
    m_strip->Hover(point);
    const kv::CaptionHit hit = kv::HitTestCaption(point, m_strip->Parts());
    ShowEdgeCursor(hit.part == kv::CaptionPart::Edge ? static_cast<unsigned>(hit.index) : 0);
}

void CKvCaptionBar::OnMouseLeave()
{
    m_strip->Hover(std::nullopt);
    ShowEdgeCursor(0);
}

// Not a tool window, which stands below the strip.
bool CKvCaptionBar::TakesBorderAt(CPoint point) const
{
    const QWidget* part = childAt(point);
    while (part && part->parentWidget() != this)
        part = part->parentWidget();
    return !part || m_strip->IsButton(part);
}

int CKvCaptionBar::CaptionBottom() const
{
    return m_strip->Band().bottom;
}

void CKvCaptionBar::ShowEdgeCursor(unsigned edges)
{
    if (edges == m_cursorEdges)
        return;
    m_cursorEdges = edges;
    if (edges != 0)
        setCursor(kv::FrameEdgeCursor(edges));
    else
        unsetCursor();
}

void CKvCaptionBar::OnContextMenu(CPoint point)
{
    auto* frame = qobject_cast<CKvFrameWnd*>(window());
    if (frame && kv::HitTestCaption(point, m_strip->Parts()).part == kv::CaptionPart::Caption)
        frame->OpenSystemMenu(mapToGlobal(point));
    else
        CKvWnd::OnContextMenu(point);
}

// --- The toolkit's events ---

bool CKvCaptionBar::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::ChildAdded:
        if (QObject* child = static_cast<QChildEvent*>(event)->child(); child->isWidgetType())
            child->installEventFilter(this);
        break;
    case QEvent::Show:
    case QEvent::ParentChange:
        if (IsCreated())
            m_strip->WatchFrame();
        break;
    case QEvent::FontChange: {
        const bool result = CKvWnd::event(event);
        if (IsCreated())
            m_strip->FontChanged();
        return result;
    }
    default:
        break;
    }
    return CKvWnd::event(event);
}

bool CKvCaptionBar::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::WindowStateChange:
        if (watched == window())
            m_strip->FrameStateChanged();
        break;
    case QEvent::Enter:
        // The toolkit tells a parent nothing when the pointer goes from it to its child.
        if (watched->parent() == this)
            OnMouseLeave();
        break;
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
        if (m_strip->IsButton(watched))
            m_strip->PartsChanged();
        break;
    case QEvent::ToolTip:
        if (m_strip->Form().coloursTips && m_strip->IsButton(watched))
            kv::CaptionButtons::ColourTip(static_cast<QWidget&>(*watched));
        break;
    default:
        break;
    }
    return CKvWnd::eventFilter(watched, event);
}
