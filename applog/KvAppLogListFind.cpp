// The log list's search.
#include "applog/KvAppLogListImpl.h"

#include <QShortcut>

bool CKvAppLogListCtrl::Impl::IsMatch(int line) const
{
    return !needle.IsEmpty() && list.IsRowShown(line) && TypeAt(line) >= 0 &&
           needle.IsIn(list.CKvReportListCtrl::GetItemText(line, kv::kAppLogContent));
}

void CKvAppLogListCtrl::Impl::OpenFind()
{
    if (!findBar) {
        const auto next = [this](int step) { FindNext(step); };
        findBar =
            new kv::AppLogFindBar(&list, {[this] { FindTextChanged(); }, next, [this] { CloseFind(); }});
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
    }
    const bool wasOpen = IsFindOpen();
    findBar->show();
    PlaceFindBar();
    findBar->FocusText();
    if (wasOpen)
        return;
    needle = kv::AppLogMatcher(findBar->Text(), findBar->MatchCase());
    Recount();
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
    needle = {};
    Recount();
}

void CKvAppLogListCtrl::Impl::PlaceFindBar()
{
    const int height = IsFindOpen() ? findBar->sizeHint().height() : 0;
    list.SetFooterHeight(height);
    if (height > 0)
        findBar->setGeometry(0, list.height() - height, list.width(), height);
}

void CKvAppLogListCtrl::Impl::FindTextChanged()
{
    {
        const Operation operation(*this);
        needle = kv::AppLogMatcher(findBar->Text(), findBar->MatchCase());
        Recount();
    }
    FindNext(1, true);
}

void CKvAppLogListCtrl::Impl::Recount()
{
    matchCount = 0;
    matchPlace = 0;
    const int count = needle.IsEmpty() ? 0 : list.GetItemCount();
    for (int line = 0; line < count; ++line)
        matchCount += IsMatch(line) ? 1 : 0;
    list.UpdateCells();
    AskOverlay();
}

// Selects and shows the first match behind or before the current line, then from the other end.
void CKvAppLogListCtrl::Impl::FindNext(int step, bool withCurrent)
{
    const QPointer<CKvAppLogListCtrl> self(&list);
    {
        const Operation operation(*this);
        const int count = list.GetItemCount();
        int line = list.GetCurrentItem() + (withCurrent ? 0 : step);
        int left = count;
        for (; left > 0; --left, line += step) {
            line = count > 0 ? (line % count + count) % count : 0;
            if (IsMatch(line))
                break;
        }
        if (left == 0)
            return;
        list.SetSelItem(line);
        list.EnsureVisible(line);
        matchPlace = 0;
        for (int before = 0; before <= line; ++before)
            matchPlace += IsMatch(before) ? 1 : 0;
        UpdateOverlay();
    }
    if (self)
        Q_EMIT self->SelectionEdited();
}
