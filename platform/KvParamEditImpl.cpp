#include "platform/KvParamEditImpl.h"

#include "KvMenu.h"
#include "platform/ColourClipboard.h"
#include "platform/NumberAccess.h"
#include "platform/OwnSizes.h"
#include "platform/SkinColours.h"
#include "platform/VirtualKey.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QPointer>

#include <utility>

namespace {

constexpr int kPage = 10;
constexpr UINT kMenu = 20360;

enum MenuCommand : UINT
{
    kMenuCut = 20361,
    kMenuCopy = 20362,
    kMenuPaste = 20363,
    kMenuDelete = 20364,
    kMenuSelectAll = 20365,
};

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
    TellNumber();
}

void CKvParamEdit::Impl::ShowHostsNumber()
{
    if (!isNotifying)
        notified = entry.Value();
    ShowNumber();
}

void CKvParamEdit::Impl::TellNumber()
{
    const int number = entry.Value();
    if (std::exchange(told, number) != number)
        kv::TellNumberChanged(control);
}

bool CKvParamEdit::Impl::Notify(EKvColorPhase phase)
{
    const QPointer<CKvParamEdit> alive(&control);
    const UINT id = control.GetDlgCtrlID();
    KvParamEditRecord record{{&control, id, kKvColorNotifyCode}, phase};
    const bool outer = std::exchange(isNotifying, true);
    KvSendMessage(control.parentWidget(), WM_NOTIFY, id, reinterpret_cast<LPARAM>(&record));
    if (alive)
        emit alive->ValueChanged(phase);
    if (const int now = alive ? entry.Value() : 0; alive && std::exchange(notified, now) != now)
        emit alive->ValueEdited(now);
    if (!alive)
        return false;
    isNotifying = outer;
    return true;
}

bool CKvParamEdit::Impl::Send(const kv::NumberRun& run)
{
    return (!run.begins || Notify(kKvPhaseBegin)) && (!run.continues || Notify(kKvPhaseContinue)) &&
           (!run.ends || Notify(kKvPhaseEnd));
}

std::optional<kv::NumberRun>
CKvParamEdit::Impl::Change(const std::function<kv::NumberRun(kv::NumberEntry&)>& change)
{
    kv::NumberEntry tried = entry;
    if (change(tried).begins) {
        const QPointer<CKvParamEdit> alive(&control);
        emit control.RunBeginning();
        if (!alive)
            return std::nullopt;
    }
    return change(entry);
}

void CKvParamEdit::Impl::ChangeOnce(const std::function<kv::NumberRun(kv::NumberEntry&)>& change)
{
    if (!Commit())
        return;
    const auto run = Change(change);
    if (!run || !run->begins)
        return;
    ShowNumber();
    if (line->hasFocus())
        line->selectAll();
    Send(*run);
}

bool CKvParamEdit::Impl::Commit()
{
    if (!entry.IsTyping())
        return true;
    const auto run = Change([](kv::NumberEntry& number) { return number.Commit(); });
    if (!run)
        return false;
    ShowNumber();
    return Send(*run);
}

// Where the focus goes to a neighbour or nowhere, the toolkit still works on what a parent may delete in
// its handler.
bool CKvParamEdit::Impl::CommitOnLeaving()
{
    const QWidget* const next = QApplication::focusWidget();
    const QWidget* const parent = control.parentWidget();
    if (next && parent && !parent->isAncestorOf(next))
        return Commit();
    EndLater();
    return true;
}

void CKvParamEdit::Impl::EndLater()
{
    if (!entry.IsTyping() && !entry.IsScrubbing())
        return;
    const auto end = [this] {
        const bool isUsable = control.isEnabled() && control.isVisible();
        if (entry.IsScrubbing() && !isUsable)
            control.EndScrub(false);
        else if (!control.isEnabled())
            control.StopTyping();
        else if (!isUsable || !line->hasFocus())
            Commit();
    };
    QMetaObject::invokeMethod(&control, end, Qt::QueuedConnection);
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
    ChangeOnce([steps](kv::NumberEntry& number) { return number.StepBy(steps); });
}

void CKvParamEdit::Impl::Paste()
{
    const auto number = kv::ParseWholeNumber(KvFromQString(QApplication::clipboard()->text()));
    if (!number) {
        emit control.ForeignPasted();
        return;
    }
    // As it can be typed: without a sign where there are no numbers below 0.
    const int typed = std::max(*number, std::min(0, entry.Minimum()));
    WithLine([this, typed] { line->insert(QString::number(typed)); });
}

void CKvParamEdit::Impl::OnTyped()
{
    const QString text = line->text();
    const auto run = Change([&text](kv::NumberEntry& number) { return number.Type(KvFromQString(text)); });
    if (!run)
        return;
    if (line->text() != text) // what the owner did before this run wrote the number anew
        line->setText(text);
    TellNumber();
    Send(*run);
}

void CKvParamEdit::Impl::WithLine(const std::function<void()>& act)
{
    const QPointer<CKvParamEdit> alive(&control);
    isActing = true;
    act();
    if (!alive)
        return;
    isActing = false;
    if (std::exchange(isEdited, false))
        OnTyped();
}

void CKvParamEdit::Impl::OnEdited()
{
    if (isActing)
        isEdited = true;
    else
        QMetaObject::invokeMethod(
            &control, [this] { OnTyped(); }, Qt::QueuedConnection);
}

// The toolkit's own menu knows neither a colour on the clipboard nor who is to have it.
void CKvParamEdit::Impl::OpenMenu(CPoint screen)
{
    CKvMenu menu;
    menu.LoadMenu(kMenu);
    const bool canPaste = kv::ClipboardHasColour() || !QApplication::clipboard()->text().isEmpty();
    const bool isChosen = line->hasSelectedText();
    for (const UINT command : {kMenuCut, kMenuCopy, kMenuDelete})
        menu.EnableMenuItem(command, isChosen ? 1 : 0);
    menu.EnableMenuItem(kMenuPaste, canPaste ? 1 : 0);
    const QPointer<CKvParamEdit> alive(&control);
    const UINT command = menu.TrackPopupMenu(TPM_RETURNCMD, screen, &control);
    if (!alive || !control.isEnabled())
        return;
    switch (command) {
    case kMenuCut:
        WithLine([this] { line->cut(); });
        break;
    case kMenuCopy:
        line->copy();
        break;
    case kMenuPaste:
        Paste();
        break;
    case kMenuDelete:
        WithLine([this] { line->del(); });
        break;
    case kMenuSelectAll:
        line->selectAll();
        break;
    default:
        break;
    }
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
    QString sheet =
        QStringLiteral("QLineEdit { background: transparent; border: none; padding: 0; margin: 0; "
                       "@sizes color: @text; selection-background-color: @selected; "
                       "selection-color: @highlighted; }"
                       "QLineEdit:disabled { color: @disabled; }");
    sheet.replace(QLatin1String("@text"), kv::TextColour().name());
    sheet.replace(QLatin1String("@disabled"), kv::DisabledTextColour().name());
    sheet.replace(QLatin1String("@selected"),
                  kv::SkinColour(L"keReportListSelectedBKColor", 0xFF4A5568u).name());
    sheet.replace(QLatin1String("@highlighted"),
                  kv::SkinColour(L"keReportListSelectedTextColor", 0xFFFFFFFFu).name());
    sheet.replace(QLatin1String("@sizes"), QLatin1String(kv::kOwnSizes));
    line->setStyleSheet(sheet);
    control.update();
}
