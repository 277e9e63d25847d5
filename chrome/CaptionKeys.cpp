#include "chrome/CaptionKeys.h"

#include "platform/VirtualKey.h"

#include <QApplication>
#include <QKeyEvent>

#include <utility>

namespace kv {

namespace {

/// Keys that the bar takes while it has the focus.
bool IsFocusKey(const QKeyEvent& event)
{
    if (event.key() == Qt::Key_Backtab)
        return true;
    if (HeldModifiers(event.modifiers()) != Qt::NoModifier)
        return false;
    switch (event.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
    case Qt::Key_Escape:
    case Qt::Key_Tab:
    case Qt::Key_F10:
        return true;
    default:
        return false;
    }
}

} // namespace

CaptionKeys::CaptionKeys(CaptionStrip& strip, std::function<void()> told)
    : m_strip(strip)
    , m_told(std::move(told))
    , m_tips(strip, [this] { return Stops(); })
{
    // A click on a button of a caption leaves the focus where the user works.
    for (const UINT number : kCaptionButtons)
        m_strip.Button(number).setFocusPolicy(Qt::NoFocus);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget* old, QWidget* now) { OnFocusChanged(old, now); });
    // Of the application, not of the frame: the bar may move to another frame, and keys of a frame go to its
    // children first.
    qApp->installEventFilter(this);
}

bool CaptionKeys::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return watched->isWidgetType() &&
               OnKey(static_cast<const QWidget&>(*watched), static_cast<QKeyEvent&>(*event));
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        m_escaped.reset();
        m_tips.End();
        Leave();
        return false;
    case QEvent::Wheel:
        m_tips.End();
        return false;
    case QEvent::Show:
    case QEvent::Hide:
        if (watched->isWidgetType() && static_cast<const QWidget*>(watched)->windowType() == Qt::Popup)
            OnPopup(event->type() == QEvent::Show);
        return false;
    case QEvent::WindowDeactivate:
        if (watched == m_strip.Frame()) {
            m_tips.End();
            Leave();
        }
        return false;
    default:
        return false;
    }
}

// Also of one that a menu entry's mnemonic opened: its command, too, finds the focus where it was.
void CaptionKeys::OnPopup(bool opened)
{
    const QPointer<CaptionKeys> self(this);
    if (opened) {
        m_tips.End();
        Leave();
    }
    if (self)
        m_strip.PopupsChanged();
}

bool CaptionKeys::IsListening(const QWidget& receiver) const
{
    const QWidget* frame = m_strip.Frame();
    const QWidget* modal = QApplication::activeModalWidget();
    return receiver.window() == frame && m_strip.Bar().isVisible() && m_strip.Bar().isEnabled() &&
           !QApplication::activePopupWidget() && (!modal || modal == frame);
}

bool CaptionKeys::OnKey(const QWidget& receiver, QKeyEvent& event)
{
    if (receiver.windowType() == Qt::Popup && event.type() == QEvent::KeyPress) {
        m_escaped.reset();
        if (event.key() == Qt::Key_Escape)
            m_escaped = OpenPart(m_pressed);
    }
    if (!IsListening(receiver))
        return false;
    if (event.type() == QEvent::ShortcutOverride)
        return OnKeyOverride(receiver, event);
    if (event.type() == QEvent::KeyPress)
        return OnKeyPress(receiver, event);
    OnKeyRelease(event);
    return false;
}

bool CaptionKeys::OnKeyOverride(const QWidget& receiver, QKeyEvent& event)
{
    if (event.key() != Qt::Key_Alt)
        m_tips.End(); // perhaps a shortcut of the host: no press will come
    if (m_focus && IsOurs(&receiver) && IsFocusKey(event)) {
        event.accept();
        return true;
    }
    // It comes up to the frame only when nobody on the way wants the key.
    if (&receiver == m_strip.Frame())
        m_unclaimed = event.keyCombination();
    return false;
}

bool CaptionKeys::OnKeyPress(const QWidget& receiver, const QKeyEvent& event)
{
    const bool isFree = std::exchange(m_unclaimed, std::nullopt) == event.keyCombination();
    if (event.key() == Qt::Key_Alt) {
        if (!event.isAutoRepeat())
            m_tips.Begin(event.modifiers());
        return false;
    }
    m_tips.End();
    if (m_focus && IsOurs(&receiver) && IsFocusKey(event))
        return OnFocusKey(event);
    if (!isFree || event.isAutoRepeat())
        return false;
    if (event.key() == Qt::Key_F10 && HeldModifiers(event.modifiers()) == Qt::NoModifier) {
        Enter();
        return true;
    }
    return PressTip(event);
}

void CaptionKeys::OnKeyRelease(const QKeyEvent& event)
{
    if (event.key() != Qt::Key_Alt || event.isAutoRepeat())
        return;
    if (!m_tips.End())
        return;
    if (m_focus)
        Leave();
    else
        Enter();
}

bool CaptionKeys::OnFocusKey(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Left:
        Step(CaptionStep::Previous);
        break;
    case Qt::Key_Right:
        Step(CaptionStep::Next);
        break;
    case Qt::Key_Home:
        Step(CaptionStep::First);
        break;
    case Qt::Key_End:
        Step(CaptionStep::Last);
        break;
    case Qt::Key_Up:
        break;
    case Qt::Key_Down:
        if (OpensPopup(*m_focus) && !event.isAutoRepeat())
            Press(CaptionHit(*m_focus));
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (!event.isAutoRepeat())
            Press(CaptionHit(*m_focus));
        break;
    default:
        Leave();
    }
    return true;
}

bool CaptionKeys::PressTip(const QKeyEvent& event)
{
    const UINT key = MnemonicKey(event);
    if (key == 0 || HeldModifiers(event.modifiers()) != Qt::AltModifier)
        return false;
    for (const CaptionTip& tip : m_tips.All()) {
        if (static_cast<UINT>(tip.key) != key)
            continue;
        if (tip.kind == KeyTipKind::Mnemonic)
            return false;
        const CaptionHit part = tip.stop.hit;
        Press(part);
        return true; // of a disabled part, too: an editor would type it
    }
    return false;
}

} // namespace kv
