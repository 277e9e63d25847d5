#include "KvColorPanel.h"

#include "color/KvColorMapWndImpl.h"
#include "color/KvColorPanelImpl.h"
#include "platform/KvDialogImpl.h"
#include "platform/SkinColours.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

#include <utility>

namespace {

constexpr QSize kUsualSize(300, 220);

/// Which edit, channel or mode button an item is; out of the range for another item.
int IndexOf(UINT id, UINT first)
{
    return static_cast<int>(id) - static_cast<int>(first);
}

} // namespace

CKvColorPanel::CKvColorPanel() : m_impl(std::make_unique<Impl>(*this))
{
    CKvDialog::m_impl->paintsGround = true;
    setFocusPolicy(Qt::TabFocus); // else it has no place in a form's tab order
}

CKvColorPanel::CKvColorPanel(QWidget* parent) : CKvColorPanel()
{
    setParent(parent, Qt::Widget);
    m_impl->createsItself = true;
}

CKvColorPanel::~CKvColorPanel()
{
    m_impl->isDying = true;
    DestroyWindow(); // while what the children end still finds the panel
}

int CKvColorPanel::Create(CWnd* parent)
{
    if (IsCreated())
        return 0;
    const QPoint place = pos();
    if (parent) // heard before the dialog hears of it and destroys the window
        connect(parent, &QObject::destroyed, this, [this] { m_impl->listener.clear(); });
    if (!m_impl->isCreatingItself) {
        setParent(parent, Qt::Widget);
        move(place); // else the toolkit would place it as it places a dialog
    }
    return CKvDialog::Create(kKvColorPanelDialog, parent);
}

void CKvColorPanel::SetInitialMode(int hsb)
{
    if (!IsCreated())
        m_impl->model.SetMode(hsb ? kv::ColourMode::Hsb : kv::ColourMode::Rgb);
}

void CKvColorPanel::SetHsb(bool hsb)
{
    if (m_impl->map)
        m_impl->SetMode(hsb ? kv::ColourMode::Hsb : kv::ColourMode::Rgb);
    else
        SetInitialMode(hsb ? 1 : 0);
}

int CKvColorPanel::IsHSBMode() const
{
    return m_impl->model.Mode() == kv::ColourMode::Hsb ? 1 : 0;
}

void CKvColorPanel::SetColor(DWORD colour)
{
    if (!m_impl->model.SetColour(colour))
        return;
    // Escape is not to bring back what the host replaced; its answer to a change is part of that change.
    if (!m_impl->isNotifying) {
        m_impl->TakeHostsColour();
        m_impl->told = m_impl->model.Value();
    }
    m_impl->ShowColour();
}

DWORD CKvColorPanel::GetColor() const
{
    return m_impl->model.Value();
}

void CKvColorPanel::SetEnableState(EKvColorPanelState state)
{
    m_impl->model.SetState(state);
    const QPointer<CKvColorPanel> self(this); // an override of `OnCmdUpdateUI` may delete the panel
    UpdateDialogControls();
    if (self)
        TakeFocusAt(); // a disabled part takes none
}

// A host that gives the panel the focus means its first part, and its tab order all of them. With every part
// disabled it is no tab stop.
void CKvColorPanel::TakeFocusAt()
{
    QWidget* const first = CKvDialog::m_impl->FirstTabStop();
    setFocusProxy(nullptr); // which would get the policy, too
    if (!first && focusPolicy() != Qt::NoFocus) {
        m_impl->policy = focusPolicy();
        setFocusPolicy(Qt::NoFocus);
    } else if (first && focusPolicy() == Qt::NoFocus) {
        setFocusPolicy(std::exchange(m_impl->policy, Qt::NoFocus));
    }
    setFocusProxy(first);
}

EKvColorPanelState CKvColorPanel::GetEnableState() const
{
    return static_cast<EKvColorPanelState>(m_impl->model.State());
}

void CKvColorPanel::SetDlgCtrlID(UINT id)
{
    KvSetDlgItemId(this, id);
}

void CKvColorPanel::OnUpdateCmdUI(CCmdUI* command)
{
    switch (command->m_nID) {
    case kv::kPanelMap:
    case kv::kPanelSlider:
    case kv::kPanelFirstEdit:
    case kv::kPanelFirstEdit + 1:
    case kv::kPanelFirstEdit + 2:
    case kv::kPanelSwatches:
    case kv::kPanelRgb:
    case kv::kPanelHsb:
        command->Enable(m_impl->model.IsColourEnabled() ? 1 : 0);
        break;
    case kv::kPanelAlpha:
    case kv::kPanelFirstEdit + kv::ColourPanelModel::kAlphaEdit:
        command->Enable(m_impl->model.IsAlphaEnabled() ? 1 : 0);
        break;
    default:
        break;
    }
}

void CKvColorPanel::OnEnable(int enable)
{
    m_impl->isEnabled = enable != 0;
    const bool hadFocus = isAncestorOf(window()->focusWidget());
    const QPointer<CKvColorPanel> self(this); // what hears of it may delete the panel
    for (QWidget* child : findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        child->setEnabled(enable != 0);
        if (!self)
            return;
    }
    if (enable)
        UpdateDialogControls();
    if (!self)
        return;
    TakeFocusAt();
    if (!enable && hadFocus && !window()->focusWidget()) {
        m_impl->FocusBehind();
    }
}

int CKvColorPanel::PreTranslateMessage(MSG*)
{
    return 0; // also a press of the left button: it is each child's own
}

void CKvColorPanel::OnOK() {}

void CKvColorPanel::OnCancel() {}

void CKvColorPanel::OnAnswer(int)
{
    // A parent that deletes the panel does not expect to hear of it again, one that dies cannot.
    if (m_impl->isDying || !m_impl->listener)
        return;
    m_impl->isDestroying = true;
    if (m_impl->EndRuns())
        m_impl->isDestroying = false;
}

QSize CKvColorPanel::sizeHint() const
{
    return IsCreated() ? CKvDialog::sizeHint() : kUsualSize;
}

void CKvColorPanel::setVisible(bool visible)
{
    // A dialog that is shown takes the focus; a child leaves it where it is.
    if (isWindow())
        CKvDialog::setVisible(visible);
    else
        QWidget::setVisible(visible);
}

BOOL CKvColorPanel::OnSubclassControls()
{
    m_impl->MakeSwatches();
    m_impl->MakeMaps();
    m_impl->MakeButtons();
    m_impl->MakeEdits();
    return 1;
}

void CKvColorPanel::_NotifyChangeColor(int phase)
{
    const QPointer<CKvColorPanel> alive(this);
    if (phase == kKvPhaseBegin)
        m_impl->listener = parentWidget(); // a run's end is for the one who heard of its begin
    QWidget* const listener = m_impl->listener ? m_impl->listener.data() : parentWidget();
    const UINT id = GetDlgCtrlID();
    DWORD colour = m_impl->model.Value();
    KvColorNotifyRecord record{{this, id, kKvColorNotifyCode}, phase, &colour, sizeof(colour)};
    const bool outer = std::exchange(m_impl->isNotifying, true);
    KvSendMessage(listener, WM_NOTIFY, id, reinterpret_cast<LPARAM>(&record));
    if (alive && phase == kKvPhaseEnd)
        m_impl->listener.clear();
    if (alive)
        emit ColorChanged(phase);
    if (const DWORD now = alive ? GetColor() : 0; alive && std::exchange(m_impl->told, now) != now)
        emit ColorEdited(Colour());
    if (alive)
        m_impl->isNotifying = outer;
}

void CKvColorPanel::_ProcessColorMapNotify(UINT id)
{
    const CKvColorMapWnd* const source = m_impl->MapOf(id);
    if (!source)
        return;
    m_impl->model.Restore(source->m_impl->Colour());
    m_impl->ShowColour();
}

BOOL CKvColorPanel::OnInitDialog()
{
    OnSubclassControls();
    m_impl->ShowMode();
    if (!m_impl->isEnabled)
        OnEnable(0); // it was disabled before there was a child
    if (!isWindow()) {
        setTabOrder(this, m_impl->map); // made later than what a form has behind it
        CKvDialog::m_impl->OrderTabs();
    }
    TakeFocusAt();
    return 0; // the focus stays with the host
}

BOOL CKvColorPanel::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    if (lParam == 0)
        return CKvDialog::OnNotify(wParam, lParam, result);
    const auto& header = *reinterpret_cast<const KvNotifyHeader*>(lParam);
    const auto id = static_cast<UINT>(wParam);
    if (header.code != kKvColorNotifyCode || !m_impl->IsChild(id, header.hwndFrom))
        return CKvDialog::OnNotify(wParam, lParam, result);
    if (m_impl->MapOf(id)) {
        _ProcessColorMapNotify(id);
        _NotifyChangeColor(reinterpret_cast<const KvColorNotifyRecord*>(lParam)->phase);
        return 1;
    }
    if (id == kv::kPanelSwatches) {
        m_impl->TakeSwatch(*reinterpret_cast<const KvSwatchNotifyRecord*>(lParam));
        return 1;
    }
    const int edit = IndexOf(id, kv::kPanelFirstEdit);
    if (edit < 0 || edit >= kv::ColourPanelModel::kEdits)
        return CKvDialog::OnNotify(wParam, lParam, result);
    m_impl->TakeEdit(edit, reinterpret_cast<const KvParamEditRecord*>(lParam)->phase);
    return 1;
}

BOOL CKvColorPanel::OnCommand(WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    const UINT id = LOWORD(wParam);
    const int channel = IndexOf(id, kv::kPanelFirstChannel);
    if (channel >= 0 && channel < kv::ColourPanelModel::kChannels)
        m_impl->SetChannel(channel);
    else if (id == kv::kPanelRgb || id == kv::kPanelHsb)
        m_impl->EditMode(id == kv::kPanelHsb ? kv::ColourMode::Hsb : kv::ColourMode::Rgb);
    else
        return CKvDialog::OnCommand(wParam, lParam, result);
    return 1;
}

BOOL CKvColorPanel::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    if (message == WM_HSCROLL) {
        const auto* sender = reinterpret_cast<const QWidget*>(lParam);
        for (const UINT id : {UINT{kv::kPanelMap}, UINT{kv::kPanelSlider}, UINT{kv::kPanelAlpha}}) {
            if (!m_impl->IsChild(id, sender))
                continue;
            _ProcessColorMapNotify(id);
            _NotifyChangeColor(kKvPhaseContinue);
            return 1;
        }
    }
    if (message == WM_ENABLE) {
        OnEnable(wParam != 0 ? 1 : 0);
        return 1;
    }
    return CKvDialog::OnWndMsg(message, wParam, lParam, result);
}

void CKvColorPanel::OnCmdUpdateUI(CCmdUI* command)
{
    if (m_impl->isEnabled)
        OnUpdateCmdUI(command);
}

void CKvColorPanel::OnSkinChanged()
{
    CKvDialog::OnSkinChanged();
    if (m_impl->map)
        m_impl->NameChildren();
}

bool CKvColorPanel::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<const QKeyEvent&>(*event).matches(QKeySequence::Paste) && m_impl->CanPaste()) {
        event->accept();
        return true;
    }
    const QPointer<CKvColorPanel> self(this);
    const bool result = CKvDialog::event(event);
    if (event->type() == QEvent::Polish && self && std::exchange(m_impl->createsItself, false))
        m_impl->CreateSelf();
    return result;
}

void CKvColorPanel::paintEvent(QPaintEvent*)
{
    // Under a host's sheet every palette is its own, and the attribute tells of a ground that it gives all:
    // what the panel's own sheet names decides.
    const bool isStyled = testAttribute(Qt::WA_StyledBackground);
    if ((isStyled && styleSheet().contains(QLatin1String("background"))) || autoFillBackground())
        return;
    const bool isPalettes = testAttribute(Qt::WA_SetPalette) && !testAttribute(Qt::WA_StyleSheet) &&
                            palette().isBrushSet(palette().currentColorGroup(), backgroundRole());
    QPainter painter(this);
    if (const SKvGuiBasicSettings* settings = CKvDialog::m_impl->settings)
        painter.fillRect(rect(), QColor::fromRgb(settings->background));
    else if (isPalettes)
        painter.fillRect(rect(), palette().brush(backgroundRole()));
    else
        painter.fillRect(rect(), kv::SkinColour(L"keWindowBKColor", 0xFF2B2B2E));
    if (!isStyled || !styleSheet().contains(QLatin1String("border")))
        return;
    QStyleOption option; // its own frame is around the ground
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}

void CKvColorPanel::keyPressEvent(QKeyEvent* event)
{
    event->accept();
    if (event->matches(QKeySequence::Paste) && m_impl->CanPaste())
        m_impl->Paste();
    else if (!m_impl->WalkButtons(*event))
        event->ignore(); // also Enter and Escape: they are the host's
}
