#include "KvParamEdit.h"

#include "platform/DevicePixels.h"
#include "platform/KvParamEditImpl.h"
#include "platform/NumberAccess.h"
#include "platform/SkinColours.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QRegularExpressionValidator>

#include <algorithm>

namespace {

constexpr int kBorder = 3; ///< wide enough to take hold of
constexpr DWORD kDefaultFieldColour = 0xFF1F1F22u;
constexpr DWORD kDefaultBorderColour = 0xFF686870u;

} // namespace

CKvParamEdit::CKvParamEdit() : m_impl(std::make_unique<Impl>(*this))
{
    kv::InstallNumberAccess();
    QLineEdit* const line = m_impl->line;
    line->setFrame(false);
    line->setAlignment(Qt::AlignRight);
    line->setAcceptDrops(false);
    line->setTextMargins(0, 0, 1, 0);
    line->installEventFilter(this);
    line->setCursor(Qt::IBeamCursor);
    connect(line, &QLineEdit::textEdited, this, [this] { m_impl->OnEdited(); });
    setFocusProxy(line);
    setFocusPolicy(Qt::ClickFocus); // the line's too
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    setCursor(Qt::SizeHorCursor);
    SetValueRange(0, 255);
    m_impl->ApplyLook();
}

CKvParamEdit::CKvParamEdit(QWidget* parent) : CKvParamEdit()
{
    CreateWhenShown(parent);
}

CKvParamEdit::~CKvParamEdit() = default;

int CKvParamEdit::Create(UINT style, CWnd* parent, DWORD id)
{
    if (!CreateWnd(style, {}, parent, id))
        return 0;
    OnSize(width(), height());
    return 1;
}

int CKvParamEdit::CreateSelf()
{
    return Create(0, parentWidget(), GetDlgCtrlID());
}

void CKvParamEdit::SetValue(int value)
{
    m_impl->isNotifying ? m_impl->entry.Answer(value) : m_impl->entry.SetValue(value);
    m_impl->ShowHostsNumber();
}

int CKvParamEdit::GetValue() const
{
    return m_impl->entry.Value();
}

void CKvParamEdit::SetValueRange(int minimum, int maximum)
{
    m_impl->entry.SetRange(minimum, maximum);
    const QString sign = m_impl->entry.Minimum() < 0 ? QStringLiteral("-?") : QString();
    auto* validator = new QRegularExpressionValidator(
        QRegularExpression(sign + QStringLiteral("[0-9]{0,10}")), m_impl->line);
    delete m_impl->line->validator();
    m_impl->line->setValidator(validator);
    m_impl->ShowHostsNumber();
    updateGeometry();
}

int CKvParamEdit::GetMinimum() const
{
    return m_impl->entry.Minimum();
}

int CKvParamEdit::GetMaximum() const
{
    return m_impl->entry.Maximum();
}

void CKvParamEdit::SetMinimum(int minimum)
{
    SetValueRange(minimum, std::max(minimum, GetMaximum()));
}

void CKvParamEdit::SetMaximum(int maximum)
{
    SetValueRange(std::min(GetMinimum(), maximum), maximum);
}

void CKvParamEdit::SetStep(int step)
{
    m_impl->entry.SetStep(step);
}

int CKvParamEdit::GetStep() const
{
    return m_impl->entry.Step();
}

void CKvParamEdit::EnterValue(int value)
{
    m_impl->ChangeOnce([value](kv::NumberEntry& number) { return number.Enter(value); });
}

void CKvParamEdit::SetLabel(const wchar_t* text)
{
    SetLabelText(text ? KvToQString(text) : QString());
}

void CKvParamEdit::SetLabelText(const QString& label)
{
    setToolTip(label);
    setAccessibleName(label);
    m_impl->line->setAccessibleName(label);
}

bool CKvParamEdit::IsTyping() const
{
    return m_impl->entry.IsTyping();
}

void CKvParamEdit::EndTyping()
{
    m_impl->Commit();
}

void CKvParamEdit::StopTyping()
{
    if (!m_impl->entry.IsTyping())
        return;
    const kv::NumberRun run = m_impl->entry.StopTyping();
    m_impl->ShowNumber();
    m_impl->Send(run);
}

bool CKvParamEdit::IsTakingBack() const
{
    return m_impl->isTakingBack;
}

void CKvParamEdit::BeginScrub()
{
    if (isEnabled() && !m_impl->entry.IsScrubbing() && m_impl->Commit())
        m_impl->entry.BeginScrub();
}

void CKvParamEdit::Scrub(int steps)
{
    const auto run = m_impl->Change([steps](kv::NumberEntry& number) { return number.Scrub(steps); });
    if (!run || *run == kv::NumberRun{})
        return;
    m_impl->ShowNumber();
    m_impl->Send(*run);
}

void CKvParamEdit::EndScrub(bool cancel)
{
    if (!m_impl->entry.IsScrubbing())
        return;
    const QPointer<CKvParamEdit> alive(this);
    m_impl->press.reset();
    ReleaseCapture();
    const kv::NumberRun run = m_impl->entry.EndScrub(cancel);
    cancel ? m_impl->SendTakingBack(run) : m_impl->Send(run);
}

QSize CKvParamEdit::sizeHint() const
{
    m_impl->line->ensurePolished(); // a host's style sheet may have given it letters of its own
    const QFontMetrics metrics = m_impl->line->fontMetrics();
    const auto digits = static_cast<int>(std::max(QString::number(m_impl->entry.Minimum()).size(),
                                                  QString::number(m_impl->entry.Maximum()).size()));
    return {metrics.horizontalAdvance(u'0') * (digits + 1) + 2 * kBorder + 4, metrics.height() + 2 * kBorder};
}

QSize CKvParamEdit::minimumSizeHint() const
{
    return sizeHint();
}

void CKvParamEdit::OnPaint(Graphics& graphics)
{
    const kv::DevicePixels pixels(graphics);
    const QRectF outer = pixels.Snapped(rect());
    const qreal line = pixels.Hairline();
    const QColor border = m_impl->line->hasFocus()
                              ? kv::FocusColour()
                              : kv::SkinColour(L"keWindowBorderColor", kDefaultBorderColour);
    graphics.setOpacity(isEnabled() ? 1 : 0.5);
    graphics.fillRect(outer, border);
    graphics.setOpacity(1);
    graphics.fillRect(outer.adjusted(line, line, -line, -line),
                      kv::SkinColour(L"keParamEditBKColor", kDefaultFieldColour));
}

void CKvParamEdit::OnSize(int, int)
{
    m_impl->line->setGeometry(rect().adjusted(kBorder, 1, -kBorder, -1));
}

void CKvParamEdit::OnLButtonDown(Qt::KeyboardModifiers, CPoint point)
{
    m_impl->press = point;
    SetCapture();
}

void CKvParamEdit::OnMouseMove(Qt::KeyboardModifiers modifiers, CPoint point)
{
    if (!m_impl->press) {
        CKvWnd::OnMouseMove(modifiers, point);
        return;
    }
    const QPoint way = QPoint(point) - QPoint(*m_impl->press);
    if (!m_impl->entry.IsScrubbing()) {
        if (way.manhattanLength() < QApplication::startDragDistance())
            return;
        if (!m_impl->Commit() || !m_impl->press) // a parent that opens a window there takes the mouse
            return;
        BeginScrub();
    }
    Scrub(way.x() - way.y());
}

void CKvParamEdit::OnLButtonUp(Qt::KeyboardModifiers, CPoint)
{
    m_impl->press.reset();
    ReleaseCapture();
    EndScrub(false);
}

void CKvParamEdit::OnMouseWheel(Qt::KeyboardModifiers modifiers, int delta, CPoint point)
{
    if (m_impl->entry.IsScrubbing())
        return;
    if (!m_impl->line->hasFocus()) { // else scrolling past it would change the number
        CKvWnd::OnMouseWheel(modifiers, delta, point);
        return;
    }
    const int steps = m_impl->wheel.Turn(delta);
    if (steps != 0)
        m_impl->StepBy(steps);
}

void CKvParamEdit::OnCaptureChanged()
{
    m_impl->press.reset();
    EndScrub(false);
}

void CKvParamEdit::OnEnable(BOOL enabled)
{
    update();
    if (!enabled)
        m_impl->EndLater();
}

void CKvParamEdit::hideEvent(QHideEvent* event)
{
    CKvWnd::hideEvent(event);
    m_impl->EndLater();
}

void CKvParamEdit::OnSkinChanged()
{
    m_impl->ApplyLook();
}

void CKvParamEdit::changeEvent(QEvent* event)
{
    CKvWnd::changeEvent(event);
    // The toolkit hands no font on to what has a style sheet of its own.
    if (event->type() == QEvent::FontChange)
        m_impl->line->setFont(font());
}

bool CKvParamEdit::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_impl->line)
        return CKvWnd::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::KeyPress:
        event->accept();
        if (!m_impl->RunKey(static_cast<const QKeyEvent&>(*event)))
            m_impl->WithLine([this, event] { m_impl->line->event(event); });
        return true;
    case QEvent::InputMethod:
        m_impl->WithLine([this, event] { m_impl->line->event(event); });
        return true;
    case QEvent::ShortcutOverride: {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (m_impl->TakesBeforeShortcuts(key)) {
            event->accept();
            return true;
        }
        // Without anything typed the host's own undo is meant.
        return !m_impl->entry.IsTyping() &&
               (key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo));
    }
    case QEvent::Wheel:
        QApplication::sendEvent(this, event);
        return true;
    case QEvent::ContextMenu:
        event->accept();
        m_impl->OpenMenu(static_cast<QContextMenuEvent&>(*event).globalPos());
        return true;
    case QEvent::FontChange:
        updateGeometry();
        return false;
    case QEvent::FocusIn:
        update();
        return false;
    case QEvent::FocusOut: {
        update();
        if (static_cast<const QFocusEvent&>(*event).reason() == Qt::PopupFocusReason)
            return false;
        return !m_impl->CommitOnLeaving();
    }
    default:
        return false;
    }
}
