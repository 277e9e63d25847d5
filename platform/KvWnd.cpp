#include "platform/KvWndImpl.h"
#include "platform/LanguageChange.h"
#include "platform/LeftControlKey.h"
#include "platform/MessageDispatch.h"
#include "platform/VirtualKey.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QTextDocument>
#include <QToolTip>

#include <utility>

CKvWnd::CKvWnd() : m_impl(std::make_unique<Impl>())
{
    kv::WatchControlKeys();
    setMouseTracking(true); // hover, and a move that tells of a button-up seen elsewhere
}

CKvWnd::~CKvWnd() = default;

int CKvWnd::CreateWnd(UINT style, const CRect& rect, CWnd* parent, DWORD id)
{
    if (m_impl->created)
        return 0;
    m_impl->created = true;
    if (m_impl->isCreatingItself)
        return 1; // it is what it was made and set to
    const QRect before = geometry();
    const bool wasMoved = testAttribute(Qt::WA_Moved);
    const bool wasResized = testAttribute(Qt::WA_Resized);
    setParent(parent);
    KvSetDlgItemId(this, id);
    if (!rect.IsRectEmpty()) {
        setGeometry(rect);
    } else {
        if (wasMoved)
            move(before.topLeft());
        if (wasResized)
            resize(before.size());
    }
    if (style & WS_TABSTOP)
        setFocusPolicy(Qt::StrongFocus);
    if (style & WS_DISABLED)
        setEnabled(false);
    setVisible((style & WS_VISIBLE) != 0);
    return 1;
}

void CKvWnd::CreateWhenShown(QWidget* parent)
{
    setParent(parent);
    if (focusPolicy() != Qt::NoFocus)
        setFocusPolicy(Qt::StrongFocus);
    m_impl->createsItself = true;
}

int CKvWnd::CreateSelf()
{
    return CreateWnd(0, {}, parentWidget(), GetDlgCtrlID());
}

BOOL CKvWnd::IsCreated() const
{
    return m_impl->created ? 1 : 0;
}

UINT CKvWnd::GetDlgCtrlID() const
{
    return KvGetDlgItemId(const_cast<CKvWnd*>(this)); // reads only
}

void CKvWnd::SetDlgCtrlID(UINT id)
{
    KvSetDlgItemId(this, id);
}

CRect CKvWnd::GetClientRect() const
{
    return rect();
}

BOOL CKvWnd::OnNotify(WPARAM, LPARAM, LRESULT*)
{
    return 0;
}

BOOL CKvWnd::OnCommand(WPARAM, LPARAM, LRESULT*)
{
    return 0;
}

BOOL CKvWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    if (message == WM_GETDLGCODE) {
        *result = static_cast<LRESULT>(OnGetDlgCode());
        return 1;
    }
    return kv::DispatchToHandlers(
        message, [&] { return OnNotify(wParam, lParam, result); },
        [&] { return OnCommand(wParam, lParam, result); });
}

void CKvWnd::OnPaint(Graphics&) {}
void CKvWnd::OnSize(int, int) {}

BOOL CKvWnd::OnKeyDown(UINT, Qt::KeyboardModifiers)
{
    return 0;
}

BOOL CKvWnd::OnChar(UINT)
{
    return 0;
}

UINT CKvWnd::OnGetDlgCode()
{
    return 0;
}

bool CKvWnd::WantsShortcut(UINT, Qt::KeyboardModifiers, UINT) const
{
    return false;
}

void CKvWnd::OnSetFocus() {}
void CKvWnd::OnKillFocus() {}
void CKvWnd::OnEnable(BOOL) {}
void CKvWnd::OnTimer(UINT) {}
void CKvWnd::OnCaptureChanged() {}
void CKvWnd::OnSkinChanged() {}

QString CKvWnd::ToolTipAt(CPoint, CRect&) const
{
    return {};
}

void CKvWnd::SetTimer(UINT id, int milliseconds)
{
    m_impl->timers[id].start(milliseconds, this);
}

void CKvWnd::KillTimer(UINT id)
{
    m_impl->timers.erase(id);
}

bool CKvWnd::IsLeftControlDown() const
{
    return kv::IsLeftControlDown();
}

bool CKvWnd::event(QEvent* event)
{
    if (const auto handled =
            kv::DispatchMessage(*event, [this](auto... message) { return OnWndMsg(message...); }))
        return *handled;
    switch (event->type()) {
    case QEvent::ShortcutOverride: {
        auto& key = static_cast<QKeyEvent&>(*event);
        if (WantsShortcut(kv::VirtualKey(key), key.modifiers(), kv::KeyCharacter(key))) {
            event->accept();
            return true;
        }
        break;
    }
    case QEvent::ToolTip: {
        const auto& help = static_cast<const QHelpEvent&>(*event);
        CRect area = rect();
        const QString text = ToolTipAt(help.pos(), area);
        if (text.isEmpty())
            break;
        const QString shown = Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
        QToolTip::showText(help.globalPos(), shown, this, area);
        return true;
    }
    case QEvent::Polish: {
        // Comes before a layout asks for sizes. The style has its turn first: it may bring the font.
        const QPointer<CKvWnd> self(this);
        const bool result = QWidget::event(event);
        if (self && !m_impl->created && std::exchange(m_impl->createsItself, false)) {
            m_impl->isCreatingItself = true;
            CreateSelf();
            if (self)
                m_impl->isCreatingItself = false;
        }
        return result;
    }
    default:
        break;
    }
    return QWidget::event(event);
}

bool CKvWnd::focusNextPrevChild(bool next)
{
    return (OnGetDlgCode() & DLGC_WANTTAB) == 0 && QWidget::focusNextPrevChild(next);
}

void CKvWnd::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    OnPaint(painter);
}

void CKvWnd::resizeEvent(QResizeEvent*)
{
    if (m_impl->created)
        OnSize(width(), height());
}

void CKvWnd::timerEvent(QTimerEvent* event)
{
    for (const auto& [id, timer] : m_impl->timers) {
        if (timer.timerId() == event->timerId()) {
            OnTimer(id);
            return;
        }
    }
    QWidget::timerEvent(event);
}

void CKvWnd::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::EnabledChange) {
        OnEnable(isEnabled() ? 1 : 0);
    } else if (event->type() == QEvent::LanguageChange && !kv::IsLanguageChangeOwn()) {
        updateGeometry();
        update();
        OnSkinChanged();
    }
}
