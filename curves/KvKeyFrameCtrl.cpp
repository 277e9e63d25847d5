#include "KvGuiRes.h"
#include "curves/KvKeyFrameCtrlImpl.h"
#include "platform/VirtualKey.h"

#include <QPointer>

#include <vector>

using namespace kv::keyframe;

CKvKeyFrameCtrl::CKvKeyFrameCtrl() : m_impl(std::make_unique<Impl>(*this))
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::TabFocus); // else it has no place in a form's tab order
}

CKvKeyFrameCtrl::CKvKeyFrameCtrl(QWidget* parent) : CKvKeyFrameCtrl()
{
    CreateWhenShown(parent);
}

CKvKeyFrameCtrl::~CKvKeyFrameCtrl() = default;

int CKvKeyFrameCtrl::Create(UINT id, CWnd* parent, DWORD style)
{
    const int result = CKvStatic::Create(style, parent, id);
    if (result && _Initialize())
        m_impl->ApplyPreset();
    return result;
}

int CKvKeyFrameCtrl::CreateSelf()
{
    return Create(GetDlgCtrlID(), parentWidget(), 0);
}

int CKvKeyFrameCtrl::SetVerticle(BOOL vertical)
{
    if (IsCreated())
        return 0;
    m_impl->vertical = vertical != 0;
    return 1;
}

int CKvKeyFrameCtrl::SetToggleCheck(BOOL check)
{
    if (!m_impl->HasButtons())
        return 0;
    m_impl->SetState(kToggle, check);
    return _ShowKeyFrameControl(check);
}

BOOL CKvKeyFrameCtrl::GetToggleCheck() const
{
    return m_impl->records[kToggle].state ? 1 : 0;
}

int CKvKeyFrameCtrl::SetKeyOperatorCheck(BOOL check)
{
    if (!m_impl->HasButtons())
        return 0;
    m_impl->SetState(kOperator, check);
    return 1;
}

BOOL CKvKeyFrameCtrl::GetKeyOperatorCheck() const
{
    return m_impl->records[kOperator].state ? 1 : 0;
}

int CKvKeyFrameCtrl::EnablePreviousKeyCtrl(BOOL enable)
{
    return m_impl->EnableButton(kPrevious, enable);
}

int CKvKeyFrameCtrl::EnableNextKeyCtrl(BOOL enable)
{
    return m_impl->EnableButton(kNext, enable);
}

void CKvKeyFrameCtrl::SetGuiBasicSettings(SKvGuiBasicSettings* settings)
{
    CKvStatic::SetGuiBasicSettings(settings);
    m_impl->settings = settings;
    std::vector<QPointer<QObject>> receivers; // one may delete another
    for (QObject* child : children())
        receivers.emplace_back(child);
    for (const QPointer<QObject>& receiver : receivers) {
        if (auto* window = dynamic_cast<IKvGuiWnd*>(receiver.data()))
            window->SetGuiBasicSettings(settings);
    }
}

void CKvKeyFrameCtrl::setEnabled(bool enabled)
{
    const QPointer<CKvKeyFrameCtrl> self(this);
    CKvStatic::setEnabled(enabled);
    if (self)
        m_impl->HearOwnState();
}

void CKvKeyFrameCtrl::setDisabled(bool disabled)
{
    setEnabled(!disabled);
}

QSize CKvKeyFrameCtrl::sizeHint() const
{
    const QSize size(static_cast<int>(kButtonCount) * kButtonLength, kThickness);
    return m_impl->vertical ? size.transposed() : size;
}

QSize CKvKeyFrameCtrl::minimumSizeHint() const
{
    return sizeHint();
}

int CKvKeyFrameCtrl::_Initialize()
{
    if (m_impl->HasButtons())
        return 0;
    CKvKeyFrameCtrl::OnSize(width(), height());
    for (std::size_t place = 0; place < kButtonCount; ++place)
        m_impl->CreateButton(place);
    m_impl->OrderTabs(); // before one stands for the strip, else the toolkit takes it for the last
    m_impl->MakeCurrent(kToggle);
    return _UpdateControl();
}

int CKvKeyFrameCtrl::_UpdateControl()
{
    if (!m_impl->HasButtons())
        return 0;
    m_impl->records[kToggle].state = 0; // whatever it was
    for (std::size_t place = 0; place < kButtonCount; ++place)
        m_impl->ShowState(place);
    return _ShowKeyFrameControl(GetToggleCheck());
}

int CKvKeyFrameCtrl::_ShowKeyFrameControl(BOOL show)
{
    if (!m_impl->HasButtons())
        return 0;
    for (const std::size_t place : {kPrevious, kOperator, kNext}) {
        if (!show)
            m_impl->Leave(place, kToggle);
        m_impl->records[place].button->setVisible(show != 0);
    }
    return 1;
}

void CKvKeyFrameCtrl::OnEnable(BOOL enabled)
{
    for (const Impl::Record& record : m_impl->records) {
        if (record.button)
            record.button->setEnabled(enabled != 0);
    }
}

void CKvKeyFrameCtrl::OnSize(int, int)
{
    m_impl->FixThickness();
    if (!m_impl->HasButtons())
        return;
    for (std::size_t place = 0; place < kButtonCount; ++place)
        m_impl->records[place].button->setGeometry(ButtonRect(GetClientRect(), place, m_impl->vertical));
}

BOOL CKvKeyFrameCtrl::OnEraseBkgnd(Graphics& graphics)
{
    DWORD colour = 0;
    if (const SKvGuiBasicSettings* settings = GuiBasicSettings())
        colour = settings->background;
    else if (!KvGuiRes::LoadColor(kBackgroundKey, colour))
        return 0;
    QRegion around(rect());
    for (const QObject* child : children()) {
        const auto* button = qobject_cast<const QAbstractButton*>(child);
        if (button && !button->isHidden())
            around = around.xored(button->geometry());
    }
    graphics.save();
    graphics.setClipRegion(around, Qt::IntersectClip);
    graphics.fillRect(rect(), QColor::fromRgba(colour));
    graphics.restore();
    return 1;
}

void CKvKeyFrameCtrl::OnBtnClickControl(UINT id)
{
    QWidget* const parent = parentWidget();
    if (!parent || !m_impl->HasButtons())
        return;
    EKvKeyFrameCode code = kKvKeyFrameNoButton;
    for (const ButtonKind& kind : kButtons) {
        if (kind.id == id)
            code = kind.code;
    }
    const bool wasAnimated = IsAnimated();
    const bool hadKey = HasKey();
    if (code == kKvKeyFrameToggle)
        SetToggleCheck(!GetToggleCheck());
    else if (code == kKvKeyFrameOperator)
        SetKeyOperatorCheck(!GetKeyOperatorCheck());

    KvNotifyHeader header{this, GetDlgCtrlID(), static_cast<std::uint32_t>(code)};
    const QPointer<CKvKeyFrameCtrl> self(this);
    KvSendMessage(parent, WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header));
    if (self)
        emit KeyFrameClicked(code);
    if (self && code == kKvKeyFrameToggle && IsAnimated() != wasAnimated) // the parent may have taken it back
        emit AnimatedEdited(IsAnimated());
    else if (self && code == kKvKeyFrameOperator && HasKey() != hadKey)
        emit KeyEdited(HasKey());
}

BOOL CKvKeyFrameCtrl::OnCommand(WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    if (HIWORD(wParam) != BN_CLICKED)
        return CKvStatic::OnCommand(wParam, lParam, result);
    *result = 0;
    OnBtnClickControl(LOWORD(wParam));
    return 1;
}

void CKvKeyFrameCtrl::OnPaint(Graphics& graphics)
{
    OnEraseBkgnd(graphics);
}

BOOL CKvKeyFrameCtrl::OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers)
{
    if (!m_impl->HasButtons() || kv::HeldModifiers(modifiers) != Qt::NoModifier)
        return 0;
    if (key == VK_SPACE) {
        m_impl->records[m_impl->current].button->click();
        return 1;
    }
    if (!kv::IsArrow(key))
        return 0;
    const int step = key == VK_LEFT || key == VK_UP ? -1 : 1;
    const std::size_t next = m_impl->UsableFrom(m_impl->current, step);
    m_impl->MakeCurrent(next);
    m_impl->records[next].button->setFocus(Qt::OtherFocusReason);
    return 1;
}

bool CKvKeyFrameCtrl::WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT) const
{
    // After a click with the mouse the arrows are still the host's.
    return m_impl->HasButtons() && m_impl->records[m_impl->current].button->IsFocusShown() &&
           kv::IsArrow(key) && kv::HeldModifiers(modifiers) == Qt::NoModifier;
}

void CKvKeyFrameCtrl::OnSkinChanged()
{
    QAccessibleEvent renamed(this, QAccessible::NameChanged); // in another language
    QAccessible::updateAccessibility(&renamed);
    for (const Impl::Record& record : m_impl->records) {
        if (record.button)
            record.button->setToolTip(KvToQString(KvGuiRes::LoadTip(record.button->GetDlgCtrlID())));
    }
}

bool CKvKeyFrameCtrl::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn) {
        for (std::size_t place = 0; place < kButtonCount; ++place) {
            if (watched == m_impl->records[place].button)
                m_impl->MakeCurrent(place);
        }
    }
    if (event->type() == QEvent::EnabledChange && watched == m_impl->watchedParent) {
        m_impl->HearOwnState();
        return false;
    }
    return CKvStatic::eventFilter(watched, event);
}

void CKvKeyFrameCtrl::changeEvent(QEvent* event)
{
    const QEvent::Type type = event->type();
    if (type == QEvent::EnabledChange && !m_impl->OwnStateChanged()) {
        QWidget::changeEvent(event); // an ancestor's change; the base class would take it for the strip's
        return;
    }
    CKvStatic::changeEvent(event);
    if (type == QEvent::ParentChange) {
        m_impl->WatchParent();
        m_impl->HearOwnState();
    }
}
