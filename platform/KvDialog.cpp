#include "KvWnd.h"
#include "platform/KvDialogImpl.h"
#include "platform/LanguageChange.h"
#include "platform/MessageDispatch.h"
#include "platform/OwnSizes.h"

#include <QLayout>
#include <QShowEvent>

#include <algorithm>
#include <optional>
#include <utility>

namespace {

// The toolkit has a number of its own for Cancel.
int ToolkitResult(int result)
{
    return result == IDCANCEL ? static_cast<int>(QDialog::Rejected) : result;
}

} // namespace

CKvDialog::CKvDialog(UINT templateNumber, CWnd* parent) : m_impl(std::make_unique<Impl>(*this))
{
    m_impl->modalTemplate = templateNumber;
    m_impl->parent = parent;
    setAttribute(Qt::WA_QuitOnClose, false); // its parent does not own it, but it is no main window
}

CKvDialog::~CKvDialog()
{
    CKvDialog::DestroyWindow();
}

int CKvDialog::DoModal()
{
    if (m_impl->isModal)
        return -1;
    const QPointer<CKvDialog> self(this);
    m_impl->isModal = true;
    const int result = m_impl->RunModal();
    if (self)
        m_impl->isModal = false;
    return result;
}

int CKvDialog::Create(UINT templateNumber, CWnd* parent)
{
    if (IsCreated() || m_impl->isModal || m_impl->isMaking || !kv::FindDialog(templateNumber))
        return 0;
    m_impl->parent = parent;
    const QPointer<CKvDialog> self(this);
    m_impl->MakeWindow(templateNumber);
    if (!self || !IsCreated())
        return 0;
    if (isWindow())
        m_impl->Place();
    return 1;
}

BOOL CKvDialog::IsCreated() const
{
    return m_impl->isCreated ? 1 : 0;
}

int CKvDialog::DestroyWindow()
{
    if (!m_impl->isCreated)
        return 0;
    const QPointer<CKvDialog> self(this);
    TakeAnswer(IDCANCEL);
    if (!self || !m_impl->isCreated)
        return 1;
    m_impl->isCreated = false;
    disconnect(m_impl->parentDies);
    const std::vector<Impl::Item> items = std::exchange(m_impl->items, {});
    hide();
    for (const Impl::Item& item : items)
        delete item.control;
    return 1;
}

void CKvDialog::EndDialog(int result)
{
    const QPointer<CKvDialog> self(this);
    if (!TakeAnswer(result) || !self || !IsCreated())
        return;
    QDialog::done(ToolkitResult(result));
    if (self && !m_impl->isModal)
        DestroyWindow();
}

int CKvDialog::TakeAnswer(int result)
{
    if (!m_impl->isCreated || m_impl->ending->hasEnded)
        return 0;
    *m_impl->ending = {true, result}; // first: the handler may delete the dialog
    OnAnswer(result);
    return 1;
}

void CKvDialog::OnAnswer(int) {}

UINT CKvDialog::GetDlgCtrlID() const
{
    return KvGetDlgItemId(const_cast<CKvDialog*>(this)); // reads only
}

HWND CKvDialog::GetDlgItem(UINT id) const
{
    return KvGetDlgItem(const_cast<CKvDialog*>(this), id); // reads only
}

CRect CKvDialog::MapDialogRect(const CRect& units) const
{
    return kv::ToPixels(IsCreated() ? m_impl->units : kv::DialogUnitsOf(font()), units);
}

void CKvDialog::UpdateDialogControls()
{
    struct ItemState : CCmdUI
    {
        QPointer<QWidget> control; // what answers may destroy the window
        QPointer<QWidget> refuge;
        void Enable(BOOL enable) override
        {
            if (!control)
                return;
            // Else the toolkit hands the focus to the next button, where the next Space does something else.
            const QWidget* const focus = control->window()->focusWidget();
            const bool hasFocus = focus && (focus == control || control->isAncestorOf(focus));
            if (!enable && refuge && refuge != control && hasFocus)
                refuge->setFocus();
            control->setEnabled(enable != 0);
        }
    };
    const QPointer<CKvDialog> self(this);
    const std::vector<Impl::Item> items = m_impl->items;
    for (const Impl::Item& item : items) {
        if (!self)
            return;
        if (!item.control || item.place->id == kv::kNoDialogItem)
            continue;
        ItemState state;
        state.m_nID = item.place->id;
        state.control = item.control;
        state.refuge = m_impl->FirstTabStop();
        OnCmdUpdateUI(&state);
    }
}

BOOL CKvDialog::OnInitDialog()
{
    return 1;
}

void CKvDialog::OnOK()
{
    EndDialog(IDOK);
}

void CKvDialog::OnCancel()
{
    EndDialog(IDCANCEL);
}

LRESULT CKvDialog::OnKickIdle(WPARAM, LPARAM)
{
    return 0;
}

void CKvDialog::OnCmdUpdateUI(CCmdUI*) {}

void CKvDialog::SetGuiBasicSettings(SKvGuiBasicSettings* settings)
{
    if (m_impl->settings && !settings)
        setFont({});
    m_impl->settings = settings;
    if (m_impl->isCreated) {
        m_impl->ApplyLook();
        m_impl->Measure();
    }
}

// A dialog with a layout is as large as that says.
QSize CKvDialog::sizeHint() const
{
    return m_impl->isCreated && !layout() ? m_impl->smallest : QDialog::sizeHint();
}

QSize CKvDialog::minimumSizeHint() const
{
    return m_impl->isCreated && !layout() ? m_impl->smallest : QDialog::minimumSizeHint();
}

int CKvDialog::exec()
{
    return ToolkitResult(DoModal());
}

void CKvDialog::accept()
{
    OnOK();
}

void CKvDialog::reject()
{
    OnCancel();
}

void CKvDialog::done(int result)
{
    EndDialog(result == Rejected ? IDCANCEL : result);
}

BOOL CKvDialog::OnNotify(WPARAM, LPARAM, LRESULT*)
{
    return 0;
}

BOOL CKvDialog::OnCommand(WPARAM wParam, LPARAM, LRESULT*)
{
    switch (LOWORD(wParam)) {
    case IDOK:
        OnOK();
        return 1;
    case IDCANCEL:
        OnCancel();
        return 1;
    default:
        return 0;
    }
}

BOOL CKvDialog::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    switch (message) {
    case WM_KICKIDLE:
        *result = OnKickIdle(wParam, lParam);
        return 1;
    case WM_CLOSE:
        OnCancel();
        return 1;
    default:
        return kv::DispatchToHandlers(
            message, [&] { return OnNotify(wParam, lParam, result); },
            [&] { return OnCommand(wParam, lParam, result); });
    }
}

void CKvDialog::OnSkinChanged()
{
    if (!m_impl->isCreated)
        return;
    m_impl->ApplyLook();
    m_impl->ApplyTexts();
    m_impl->MeasureTexts();
}

int CKvDialog::ReplaceDlgItem(UINT id, QWidget* control)
{
    const auto item = std::find_if(m_impl->items.begin(), m_impl->items.end(),
                                   [id](const Impl::Item& one) { return one.place->id == id; });
    if (item == m_impl->items.end() || !control)
        return 0;
    if (item->control == control)
        return 1;
    delete item->control;
    item->control = control;
    if (qobject_cast<CKvWnd*>(control) && control->styleSheet().isEmpty())
        kv::KeepOwnSizes(*control);
    KvSetDlgItemId(control, id);
    m_impl->LayOut();
    m_impl->OrderTabs();
    return 1;
}

bool CKvDialog::event(QEvent* event)
{
    if (const auto answered =
            kv::DispatchMessage(*event, [this](auto... message) { return OnWndMsg(message...); }))
        return *answered;
    const bool handled = QDialog::event(event);
    if (event->type() == QEvent::FontChange && m_impl->isCreated)
        m_impl->FontChanged();
    else if (event->type() == QEvent::StyleChange && m_impl->isCreated)
        m_impl->KeepLook();
    else if (event->type() == QEvent::ParentChange && m_impl->isCreated)
        m_impl->TakeParentsFont();
    else if (event->type() == QEvent::LayoutDirectionChange && m_impl->isCreated)
        m_impl->LayOut();
    else if (event->type() == QEvent::LanguageChange && !kv::IsLanguageChangeOwn())
        OnSkinChanged();
    return handled;
}

bool CKvDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FontChange && watched == parentWidget())
        m_impl->TakeParentsFont();
    return QDialog::eventFilter(watched, event);
}

void CKvDialog::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    if (m_impl->isCreated)
        m_impl->LayOut();
}

void CKvDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    // Made before its parent's window was shown, which had neither place nor window then.
    if (!event->spontaneous() && !m_impl->isPlaced) {
        const std::optional<QPoint> chosen =
            testAttribute(Qt::WA_Moved) ? std::optional(pos()) : std::nullopt;
        m_impl->Place();
        if (chosen)
            move(*chosen);
    }
    m_impl->idle = std::make_unique<kv::IdleUpdate>(
        [this](int count) { return KvSendMessage(this, WM_KICKIDLE, 0, count) != 0; });
}

void CKvDialog::hideEvent(QHideEvent* event)
{
    m_impl->idle.reset();
    QDialog::hideEvent(event);
}
