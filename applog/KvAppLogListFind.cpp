// The log list's search.
#include "applog/KvAppLogListImpl.h"

#include <QShortcut>

bool CKvAppLogListCtrl::Impl::IsMatch(int line) const
{
    return !needle.IsEmpty() && list.IsRowShown(line) && TypeAt(line) >= 0 &&
           needle.IsIn(list.ViewItemText(line, kv::kAppLogContent));
}

void CKvAppLogListCtrl::Impl::OpenFind()
{
    const Operation operation(*this);
    if (!findBar)
        MakeFindBar();
    const bool wasOpen = IsFindOpen();
    findBar->show();
    PlaceFindBar();
    findBar->FocusText();
    if (wasOpen)
        return;
    searchId = list.GetRowId(list.GetCurrentItem());
    SetNeedle({findBar->Text(), findBar->MatchCase()});
}

void CKvAppLogListCtrl::Impl::MakeFindBar()
{
    const auto next = [this](int step) { FindNext(step); };
    findBar = new kv::AppLogFindBar(&list, {[this] { FindTextChanged(); }, next, [this] { CloseFind(); }});
    for (const auto& [keys, step] : {std::pair("F3", 1), std::pair("Shift+F3", -1)}) {
        auto* shortcut = new QShortcut(QKeySequence(QLatin1String(keys)), &list);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        QObject::connect(shortcut, &QShortcut::activated, &list, [this, next, by = step] {
            if (IsFindOpen())
                next(by);
            else
                OpenFind();
        });
    }
    // The search goes on from where the user is, whatever new messages select.
    QObject::connect(&list, &CKvReportListCtrl::SelectionEdited, &list, [this] {
        searchId = list.GetRowId(list.GetCurrentItem());
        isCounted = false;
        AskOverlay();
    });
}

void CKvAppLogListCtrl::Impl::CloseFind()
{
    if (!IsFindOpen())
        return;
    const bool hadFocus = findBar->isAncestorOf(list.window()->focusWidget());
    if (hadFocus)
        list.setFocus();
    findBar->hide();
    PlaceFindBar();
    SetNeedle({});
}

void CKvAppLogListCtrl::Impl::PlaceFindBar()
{
    const Quiet still(*this);
    if (findBar)
        findBar->TakeFont(list.font());
    const int height = IsFindOpen() ? findBar->sizeHint().height() : 0;
    KeepEnd([&] { list.SetFooterHeight(height); });
    if (height > 0)
        findBar->setGeometry(0, list.height() - height, list.width(), height);
}

void CKvAppLogListCtrl::Impl::SetNeedle(kv::AppLogMatcher matcher)
{
    needle = std::move(matcher);
    isCounted = false;
    list.UpdateCells();
    AskOverlay();
}

void CKvAppLogListCtrl::Impl::FindTextChanged()
{
    const Operation operation(*this);
    SetNeedle({findBar->Text(), findBar->MatchCase()});
    FindNext(1, true);
}

// By now a new message may have become the current line.
void CKvAppLogListCtrl::Impl::TellFound()
{
    const QPointer<CKvAppLogListCtrl> self(&list);
    const std::uint64_t found = searchId;
    Q_EMIT list.SelectionEdited();
    if (self)
        searchId = found;
}

// Selects and shows the first match behind or before the line that was gone to last.
void CKvAppLogListCtrl::Impl::FindNext(int step, bool withCurrent)
{
    const Operation operation(*this);
    const auto matches = [this](int line) { return IsMatch(line); };
    const int from = list.FindRow(searchId);
    GoToMatch(withCurrent && IsMatch(from) ? from
                                           : kv::NextAppLogMatch(list.GetItemCount(), from, step, matches));
}

void CKvAppLogListCtrl::Impl::GoToMatch(int line)
{
    if (line < 0)
        return;
    list.SetSelItem(line);
    list.EnsureVisible(line);
    searchId = list.GetRowId(line);
    isCounted = false;
    UpdateOverlay();
    // Later: whoever hears it may delete the list, and with it the find bar that is at work.
    QMetaObject::invokeMethod(
        &list, [this] { TellFound(); }, Qt::QueuedConnection);
}
