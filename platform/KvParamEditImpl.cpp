#include "platform/KvParamEditImpl.h"

#include "platform/NumberAccess.h"
#include "platform/SkinColours.h"
#include "platform/VirtualKey.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPointer>

#include <utility>

namespace {

constexpr int kPage = 10;

bool IsPaste(const QKeyEvent& key)
{
    return key.matches(QKeySequence::Paste);
}

/// The steps of a key; 0 for a key that does not step.
int StepsOf(const QKeyEvent& key)
{
    if (kv::IsCommand(key.modifiers()))
        return 0;
    switch (key.key()) {
    case Qt::Key_Up:
        return key.modifiers().testFlag(Qt::ShiftModifier) ? kPage : 1;
    case Qt::Key_Down:
        return key.modifiers().testFlag(Qt::ShiftModifier) ? -kPage : -1;
    case Qt::Key_PageUp:
        return kPage;
    case Qt::Key_PageDown:
        return -kPage;
    default:
        return 0;
    }
}

bool IsEnter(const QKeyEvent& key)
{
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

} // namespace

void CKvParamEdit::Impl::ShowNumber()
{
    line->setText(QString::number(entry.Value()));
    kv::TellNumberChanged(control);
}

bool CKvParamEdit::Impl::Notify(EKvColorPhase phase)
{
    const QPointer<CKvParamEdit> alive(&control);
    const UINT id = control.GetDlgCtrlID();
    KvParamEditRecord record{{&control, id, kKvColorNotifyCode}, phase};
    KvSendMessage(control.parentWidget(), WM_NOTIFY, id, reinterpret_cast<LPARAM>(&record));
    if (alive)
        emit alive->ValueChanged(phase);
    return !alive.isNull();
}

bool CKvParamEdit::Impl::Send(const kv::NumberRun& run)
{
    return (!run.begins || Notify(kKvPhaseBegin)) && (!run.continues || Notify(kKvPhaseContinue)) &&
           (!run.ends || Notify(kKvPhaseEnd));
}

bool CKvParamEdit::Impl::Commit()
{
    if (!entry.IsTyping())
        return true;
    const kv::NumberRun run = entry.Commit();
    ShowNumber();
    return Send(run);
}

// Where the focus goes to a neighbour or nowhere, the toolkit still works on what a parent may delete in
// its handler: the end waits until that is done.
bool CKvParamEdit::Impl::CommitOnLeaving()
{
    const QWidget* const next = QApplication::focusWidget();
    const QWidget* const parent = control.parentWidget();
    if (next && parent && !parent->isAncestorOf(next))
        return Commit();
    const auto commit = [this] {
        if (!line->hasFocus())
            Commit();
    };
    QMetaObject::invokeMethod(&control, commit, Qt::QueuedConnection);
    return true;
}

bool CKvParamEdit::Impl::SendTakingBack(const kv::NumberRun& run)
{
    ShowNumber();
    isTakingBack = true;
    if (!Send(run))
        return false;
    isTakingBack = false;
    return true;
}

void CKvParamEdit::Impl::StepBy(int steps)
{
    if (!Commit())
        return;
    const kv::NumberRun run = entry.StepBy(steps);
    if (!run.begins)
        return;
    ShowNumber();
    line->selectAll();
    Send(run);
}

void CKvParamEdit::Impl::Paste()
{
    const QString text = QApplication::clipboard()->text();
    if (kv::ParseWholeNumber(KvFromQString(text))) {
        line->insert(text.trimmed());
        OnTyped();
        return;
    }
    if (Commit())
        emit control.ForeignPasted();
}

void CKvParamEdit::Impl::OnTyped()
{
    const kv::NumberRun run = entry.Type(KvFromQString(line->text()));
    if (run.begins || run.continues)
        kv::TellNumberChanged(control);
    Send(run);
}

// The toolkit's line is not to be deleted by a handler while it is at work.
bool CKvParamEdit::Impl::Forward(QEvent& event)
{
    const QPointer<CKvParamEdit> alive(&control);
    isForwarding = true;
    line->event(&event);
    if (!alive)
        return true;
    isForwarding = false;
    if (std::exchange(isEdited, false))
        OnTyped();
    return true;
}

void CKvParamEdit::Impl::OnEdited()
{
    if (isForwarding)
        isEdited = true;
    else
        QMetaObject::invokeMethod(
            &control, [this] { OnTyped(); }, Qt::QueuedConnection);
}

void CKvParamEdit::Impl::OpenMenu(QContextMenuEvent& event)
{
    QMenu* const menu = line->createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (QAction* action : menu->actions()) {
        if (action->shortcut() != QKeySequence(QKeySequence::Paste) &&
            action->objectName() != QLatin1String("edit-paste"))
            continue;
        action->disconnect(line);
        action->setEnabled(true);
        connect(
            action, &QAction::triggered, &control, [this] { Paste(); }, Qt::QueuedConnection);
    }
    menu->popup(event.globalPos());
}

bool CKvParamEdit::Impl::RunKey(const QKeyEvent& key)
{
    if (entry.IsScrubbing()) {
        if (key.key() == Qt::Key_Escape)
            control.EndScrub(true);
        return true;
    }
    if (const int steps = StepsOf(key)) {
        StepBy(steps);
        return true;
    }
    if (IsPaste(key)) {
        Paste();
        return true;
    }
    if (key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab)
        return !Commit(); // and then it leads on
    if (!entry.IsTyping() || (!IsEnter(key) && key.key() != Qt::Key_Escape))
        return false;
    if (IsEnter(key)) {
        const QPointer<QLineEdit> alive(line);
        if (Commit() && alive)
            alive->selectAll();
    } else {
        SendTakingBack(entry.TakeBack());
    }
    return true;
}

bool CKvParamEdit::Impl::TakesBeforeShortcuts(const QKeyEvent& key) const
{
    const bool isOpen = entry.IsTyping() || entry.IsScrubbing();
    return StepsOf(key) != 0 || IsPaste(key) || (isOpen && (IsEnter(key) || key.key() == Qt::Key_Escape));
}

// A palette is not enough: below a dialog's style sheet the toolkit paints its own background.
void CKvParamEdit::Impl::ApplyLook()
{
    QString sheet = QStringLiteral("QLineEdit { background: transparent; border: none; padding: 0; "
                                   "color: @text; selection-background-color: @selected; "
                                   "selection-color: @highlighted; }"
                                   "QLineEdit:disabled { color: @disabled; }");
    sheet.replace(QLatin1String("@text"), kv::TextColour().name());
    sheet.replace(QLatin1String("@disabled"), kv::DisabledTextColour().name());
    sheet.replace(QLatin1String("@selected"),
                  kv::SkinColour(L"keReportListSelectedBKColor", 0xFF4A5568u).name());
    sheet.replace(QLatin1String("@highlighted"),
                  kv::SkinColour(L"keReportListSelectedTextColor", 0xFFFFFFFFu).name());
    line->setStyleSheet(sheet);
    control.update();
}
