#include "KvLayoutSelector.h"

#include "layout/KvLayoutSelectorImpl.h"
#include "platform/OwnSizes.h"

#include <algorithm>

namespace {

constexpr UINT kScrollBarId = 1000;
constexpr int kMotionTick = 16; // milliseconds
constexpr QSize kSizeHint(640, 96);
constexpr QSize kLeastSize(96, 56);
const QSizePolicy kRowPolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);

} // namespace

CKvLayoutSelector::CKvLayoutSelector() : m_impl(std::make_unique<Impl>(*this))
{
    setFocusPolicy(Qt::ClickFocus);
    setSizePolicy(kRowPolicy);
    setEnabled(false);
}

CKvLayoutSelector::CKvLayoutSelector(QWidget* parent) : CKvLayoutSelector()
{
    CreateWhenShown(parent);
}

CKvLayoutSelector::~CKvLayoutSelector() = default;

int CKvLayoutSelector::Create(const CRect& rect, UINT id, CWnd* parent, DWORD style)
{
    if (IsCreated())
        return 0;
    const CRect shape = rect.IsRectEmpty() ? CRect(geometry()) : rect; // which then stays
    m_impl->vertical = m_impl->verticalBySetter.value_or(shape.Width() < shape.Height());
    if (m_impl->vertical && sizePolicy() == kRowPolicy)
        setSizePolicy(kRowPolicy.transposed());
    CreateWnd(style | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_BORDER, rect, parent, id);
    const CRect barRect = _GetScrollbarRect();
    if (!barRect.IsRectEmpty()) {
        auto bar = std::make_unique<CKvScrollBar>();
        kv::KeepOwnSizes(*bar);
        bar->setLayoutDirection(Qt::LeftToRight); // as the strip runs in every language
        bar->Create(m_impl->vertical ? Qt::Vertical : Qt::Horizontal, WS_CHILD | WS_VISIBLE, barRect, this,
                    kScrollBarId);
        bar->installEventFilter(this);
        m_impl->bar = bar.release(); // this window's now
    }
    _UpdateClient();
    return 1;
}

int CKvLayoutSelector::Create(UINT id, CWnd* parent, DWORD style)
{
    const CRect set = testAttribute(Qt::WA_Resized) || !parent ? geometry() : parent->rect();
    return Create(set, id, parent, style);
}

int CKvLayoutSelector::CreateSelf()
{
    return Create(geometry(), GetDlgCtrlID(), parentWidget(), 0);
}

void CKvLayoutSelector::SetVertical(BOOL vertical)
{
    const bool wasVertical = IsVertical() != 0;
    m_impl->verticalBySetter = vertical != 0;
    if (wasVertical == (vertical != 0))
        return;
    const QSizePolicy ownPolicy = wasVertical ? kRowPolicy.transposed() : kRowPolicy;
    if (IsCreated() && sizePolicy() == ownPolicy)
        setSizePolicy(ownPolicy.transposed());
    m_impl->vertical = vertical != 0;
    if (m_impl->bar)
        m_impl->bar->setOrientation(vertical ? Qt::Vertical : Qt::Horizontal);
    if (IsCreated())
        _UpdateClient();
    updateGeometry();
}

BOOL CKvLayoutSelector::IsVertical() const
{
    return (IsCreated() ? m_impl->vertical : m_impl->verticalBySetter.value_or(false)) ? 1 : 0;
}

void CKvLayoutSelector::SetData(SIZE layoutSize, IKvLayoutSelectorData* layouts)
{
    if (layouts)
        layouts->AddRef(); // before the release of the old ones, which may be the same
    m_impl->data.reset(layouts);
    if (m_impl->drag)
        m_impl->EndDrag();
    m_impl->DropMotion();
    m_impl->collapsed.reset();
    m_impl->seenCount = -1; // other parts for a screen reader, even if as many
    m_impl->layoutSize = layoutSize;
    m_impl->cache.AskAgain();
    m_impl->hot = -1;
    setEnabled(layouts != nullptr);
    _UpdateLayoutThumb();
}

BOOL CKvLayoutSelector::GetData(IKvLayoutSelectorData** out) const
{
    if (!out)
        return 0;
    *out = m_impl->data.get();
    if (!*out)
        return 0;
    (*out)->AddRef();
    return 1;
}

void CKvLayoutSelector::EnableSelect(BOOL enable)
{
    m_impl->showsSelection = enable != 0;
    m_impl->Repaint();
}

BOOL CKvLayoutSelector::IsSelectionShown() const
{
    return m_impl->showsSelection ? 1 : 0;
}

int CKvLayoutSelector::GetFirstNumber() const
{
    return m_impl->cache.FirstNumber();
}

void CKvLayoutSelector::SetFirstNumber(int number)
{
    m_impl->cache.SetFirstNumber(number);
    m_impl->Repaint();
}

void CKvLayoutSelector::UpdateScroll()
{
    m_impl->cache.AskAgain();
    m_impl->UpdateScroll();
}

void CKvLayoutSelector::NotifyUnitChanged(int index)
{
    m_impl->cache.AskAgain(index);
    if (index < 0 || index >= m_impl->Count())
        return;
    m_impl->RepaintUnit(index);
    m_impl->access.NameChanged(static_cast<kv::AccessibleParts::Key>(index));
}

void CKvLayoutSelector::Paint()
{
    m_impl->cache.AskAgain();
    m_impl->Repaint();
}

void CKvLayoutSelector::ScrollView(BOOL forward)
{
    IKvScrollLineHelper& line = m_impl->Line();
    const std::int64_t length = forward ? line.GetViewLength() : -line.GetViewLength();
    const std::int64_t target = std::clamp<std::int64_t>(GetScrollTarget() + length, 0, line.GetRange());
    if (!isVisible()) {
        m_impl->ScrollTo(target);
        return;
    }
    m_impl->motion = kv::StripMotion{line.GetPosition(), target, {}};
    m_impl->motion->clock.start();
    SetTimer(kv::kStripMotionTimer, kMotionTick);
}

std::int64_t CKvLayoutSelector::GetScrollTarget() const
{
    return m_impl->motion ? m_impl->motion->target : m_impl->Line().GetPosition();
}

void CKvLayoutSelector::EnsureVisible(int index)
{
    if (index >= 0 && index < m_impl->Count())
        m_impl->ShowAtOnce(index);
}

int CKvLayoutSelector::GetFocusIndex() const
{
    return std::min(m_impl->focus, m_impl->Count() - 1);
}

void CKvLayoutSelector::SetFocusIndex(int index)
{
    m_impl->SetFocusMark(std::clamp(index, -1, m_impl->Count() - 1));
}

void CKvLayoutSelector::SetGuiBasicSettings(SKvGuiBasicSettings* settings)
{
    m_impl->settings = settings;
    m_impl->Repaint();
}

UINT CKvLayoutSelector::OnGetDlgCode()
{
    return DLGC_WANTARROWS | DLGC_WANTCHARS;
}

QSize CKvLayoutSelector::sizeHint() const
{
    return IsVertical() ? kSizeHint.transposed() : kSizeHint;
}

QSize CKvLayoutSelector::minimumSizeHint() const
{
    return IsVertical() ? kLeastSize.transposed() : kLeastSize;
}

void CKvLayoutSelector::_UpdateClient()
{
    m_impl->UpdateClient();
}

void CKvLayoutSelector::_UpdateLayoutThumb()
{
    m_impl->UpdateThumbs();
}

CRect CKvLayoutSelector::_GetScrollbarRect() const
{
    return kv::StripLayout::ScrollBarRect(GetClientRect(), m_impl->vertical);
}

int CKvLayoutSelector::_GetThumbRect(int index, RECT* out) const
{
    if (!out || !m_impl->IsInView(index))
        return 0;
    *out = m_impl->RectOf(index);
    return 1;
}

int CKvLayoutSelector::_FindThumbRect(CPoint point) const
{
    return m_impl->HitTest(point);
}

void CKvLayoutSelector::_DrawLayoutView(Graphics& graphics)
{
    _Drawbackground(graphics);
    _DrawLayoutThumb(graphics);
    m_impl->painter.DrawBorder(graphics, GetClientRect());
}

void CKvLayoutSelector::_Drawbackground(Graphics& graphics)
{
    m_impl->painter.DrawBackground(graphics, GetClientRect(), m_impl->Look());
}

void CKvLayoutSelector::_DrawLayoutThumb(Graphics& graphics)
{
    const kv::StripLook look = m_impl->Look();
    const kv::StripLayout::Range range = m_impl->InView(kv::StripLayout::kShadow);
    const int focused = m_impl->RingedLayout();
    for (int index = range.begin; index < range.end; ++index)
        m_impl->DrawUnit(graphics, m_impl->RectOf(index), index, look, focused);
}

void CKvLayoutSelector::_DrawThumbUnit(Graphics* graphics, CRect rect, int index)
{
    if (graphics && index >= 0)
        m_impl->DrawUnit(*graphics, rect, index, m_impl->Look(), m_impl->RingedLayout());
}
