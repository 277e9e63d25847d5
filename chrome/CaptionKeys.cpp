#include "chrome/CaptionKeys.h"

#include "chrome/HostMnemonics.h"
#include "chrome/KeyTipOverlay.h"
#include "chrome/MenuBarModel.h"
#include "platform/VirtualKey.h"

#include <QApplication>
#include <QKeyEvent>

#include <algorithm>
#include <chrono>
#include <utility>

namespace kv {

namespace {

using namespace std::chrono_literals;

constexpr auto kTipDelay = 400ms;   ///< a quick Alt with a letter shows no tips
constexpr int kLabelsBelowBand = 4; ///< the labels' middle, clear of the items' letters

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

bool IsAltAlone(Qt::KeyboardModifiers modifiers)
{
    return (HeldModifiers(modifiers) & ~Qt::AltModifier) == Qt::NoModifier;
}

} // namespace

CaptionKeys::CaptionKeys(CaptionStrip& strip, std::function<void()> told)
    : m_strip(strip)
    , m_told(std::move(told))
{
    // A click on a button of a caption leaves the focus where the user works.
    for (const UINT number : kCaptionButtons)
        m_strip.Button(number).setFocusPolicy(Qt::NoFocus);
    m_tipTimer.setSingleShot(true);
    m_tipTimer.setInterval(kTipDelay);
    connect(&m_tipTimer, &QTimer::timeout, this, [this] { ShowTips(); });
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget* old, QWidget* now) { OnFocusChanged(old, now); });
    // Of the application, not of the frame: the bar may move to another frame, and keys of a frame go to its
    // children first.
    qApp->installEventFilter(this);
}

CaptionKeys::~CaptionKeys() = default;

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
        EndAlt();
        Leave();
        return false;
    case QEvent::Wheel:
        EndAlt();
        return false;
    case QEvent::Show:
    case QEvent::Hide:
        if (watched->isWidgetType() && static_cast<const QWidget*>(watched)->windowType() == Qt::Popup)
            OnPopup(event->type() == QEvent::Show);
        return false;
    case QEvent::WindowDeactivate:
        if (watched == m_strip.Frame()) {
            EndAlt();
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
        EndAlt();
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
        EndAlt(); // perhaps a shortcut of the host: no press will come
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
            BeginAlt(event.modifiers());
        return false;
    }
    EndAlt();
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
    const bool wasAlone = m_altAlone;
    EndAlt();
    if (!wasAlone)
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
    for (const Tip& tip : Tips()) {
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

std::vector<CaptionKeys::Tip> CaptionKeys::Tips() const
{
    std::vector<CaptionStop> stops = Stops();
    // No letter that another workspace may use for its own closes the window.
    const CaptionHit close{CaptionPart::Button, kKvCaptionClose};
    std::erase_if(stops, [&close](const CaptionStop& stop) { return stop.hit == close; });
    std::vector<KeyTipPart> parts;
    for (const CaptionStop& stop : stops) {
        const int index = stop.hit.index;
        KeyTipPart part;
        if (stop.hit.part == CaptionPart::Flag) {
            part.label = SwitchText();
        } else if (stop.hit.part == CaptionPart::Button) {
            const CKvButton& button = m_strip.Button(static_cast<UINT>(index));
            part.label = button.GetWindowText();
            if (part.label.empty())
                part.label = KvFromQString(button.toolTip());
        } else if (m_strip.Form().itemsArePopups) {
            char mnemonic = 0;
            part.kind = KeyTipKind::Mnemonic;
            part.mnemonic = FindMnemonic(m_strip.Item(index).text, mnemonic)
                                ? static_cast<unsigned char>(mnemonic)
                                : wchar_t{0};
        } else {
            part.kind = KeyTipKind::Tab;
            part.label = m_strip.Item(index).text;
        }
        parts.push_back(std::move(part));
    }
    const std::vector<wchar_t> keys = AssignKeyTips(parts, HostMnemonics(*m_strip.Frame()));
    std::vector<Tip> tips;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (keys[i] != 0)
            tips.push_back({stops[i], parts[i].kind, keys[i]});
    }
    return tips;
}

wchar_t CaptionKeys::KeyOf(const CaptionHit& part) const
{
    for (const Tip& tip : Tips()) {
        if (tip.stop.hit == part)
            return tip.stop.enabled ? tip.key : wchar_t{0};
    }
    return 0;
}

void CaptionKeys::BeginAlt(Qt::KeyboardModifiers modifiers)
{
    EndAlt();
    if (!IsAltAlone(modifiers))
        return;
    m_altAlone = true;
    m_tipTimer.start();
}

void CaptionKeys::EndAlt()
{
    m_altAlone = false;
    m_tipTimer.stop();
    m_overlay.reset();
}

void CaptionKeys::ShowTips()
{
    std::vector<KeyTipLabel> labels;
    for (const Tip& tip : Tips()) {
        if (tip.stop.enabled)
            labels.push_back({QString(QChar(static_cast<char16_t>(tip.key))), tip.stop.rect});
    }
    m_overlay = std::make_unique<KeyTipOverlay>(m_strip.Bar(), std::move(labels),
                                                m_strip.Band().bottom + kLabelsBelowBand);
}

} // namespace kv
