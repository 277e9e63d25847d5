// A report list in a window, whose cells can be edited.
#pragma once

#include "KvReportListCtrl.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QTest>

#include <functional>
#include <gtest/gtest.h>

namespace kv::test {

class TestList : public CKvReportListCtrl
{
public:
    using CKvReportListCtrl::EditCell;
    using CKvReportListCtrl::EndEdit;
    using CKvReportListCtrl::EnsureVisible;
    using CKvReportListCtrl::GetCellRect;
    using CKvReportListCtrl::GetCellsRect;
    using CKvReportListCtrl::GetCurrentItem;
    using CKvReportListCtrl::GetEditColumn;
    using CKvReportListCtrl::GetEditLine;
    using CKvReportListCtrl::GetScrollOffset;
    using CKvReportListCtrl::InsertColumn;
    using CKvReportListCtrl::InsertRow;
    using CKvReportListCtrl::IsEditing;
    using CKvReportListCtrl::NextShownRow;
    using CKvReportListCtrl::RemoveAllRows;
    using CKvReportListCtrl::RemoveRows;
    using CKvReportListCtrl::SetAutoSizeColumn;
    using CKvReportListCtrl::SetCellColors;
    using CKvReportListCtrl::SetHeaderText;
    using CKvReportListCtrl::SetItemHeight;
    using CKvReportListCtrl::SetItemText;
    using CKvReportListCtrl::SetRowFilter;
    using CKvReportListCtrl::SetScrollOffset;
    using CKvReportListCtrl::SortRows;
    using CKvReportListCtrl::ToolTipAt;
    using CKvReportListCtrl::UpdateLine;

    int Add(const std::wstring& text, int line = -1, int height = 0)
    {
        return InsertRow(line, {text, L"second"}, height);
    }

    struct Modify
    {
        int kind;
        CArray<int, int> rows;
        int column;
        friend bool operator==(const Modify&, const Modify&) = default;
    };
    std::vector<Modify> modifies;
    bool isMultiLine = false;
    int cancelled = -2;
    int scrolled = 0;
    std::function<void()> committed;
    std::function<void()> userScrolled;
    std::function<void()> asked; ///< by whatever asks about a cell or its text
    int dragged = -1;

protected:
    void _OnNotifyItemModify(int kind, const CArray<int, int>& rows, int column) override
    {
        modifies.push_back({kind, rows, column});
    }
    void Ask() const
    {
        if (const auto tell = asked)
            tell();
    }
    BOOL _CanEditCell(int, int) override
    {
        Ask();
        return 1;
    }
    BOOL _IsMultiLineCell(int, int) override
    {
        Ask();
        return isMultiLine;
    }
    CString _GetEditText(int line, int column) override
    {
        CString text = CKvReportListCtrl::_GetEditText(line, column);
        Ask();
        return text;
    }
    BOOL _OnActivate(int, int) override
    {
        Ask();
        return 0;
    }
    BOOL _BeginRowDrag(int line) override
    {
        dragged = line;
        Ask();
        return 0;
    }
    BOOL _ValidateEdit(int, int, const CString& text, CString& why) override
    {
        Ask();
        why = L"no";
        return text != L"bad";
    }
    void _CancelEdit(int line, int) override { cancelled = line; }
    void _CommitEdit(int line, int column, const CString& text) override
    {
        CKvReportListCtrl::_CommitEdit(line, column, text);
        if (const auto tell = committed)
            tell();
    }
    void _OnUserScroll() override
    {
        ++scrolled;
        if (const auto tell = userScrolled)
            tell();
    }
    CString _GetItemDescription(int line) const override { return line == 3 ? L"third" : L""; }
};

class ReportList : public testing::Test
{
protected:
    ReportList()
    {
        parent.resize(400, 200);
        list.Create({0, 0, 300, 144}, WS_CHILD | WS_VISIBLE, &parent, 5); // five lines of 24
        list.InsertColumn(L"First", 100);
        list.InsertColumn(L"Second", 80);
        parent.show();
        QApplication::setActiveWindow(&parent);
        list.setFocus();
    }
    // A button that went down on a list which died of it would be down in all later tests.
    ~ReportList() override
    {
        struct Taker : QWidget
        {
            void mouseReleaseEvent(QMouseEvent* event) override { event->accept(); }
        } taker;
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton})
            QTest::mouseRelease(&taker, button);
    }
    void Fill(int count)
    {
        for (int i = 0; i < count; ++i)
            list.Add(L"row " + std::to_wstring(i));
        list.modifies.clear();
    }
    /// Another list, which the test is to delete.
    TestList* Doomed(int count)
    {
        auto* doomed = new TestList;
        doomed->Create({0, 0, 300, 144}, WS_CHILD | WS_VISIBLE, &parent, 6);
        doomed->InsertColumn(L"First", 100);
        doomed->InsertColumn(L"Second", 100);
        for (int i = 0; i < count; ++i)
            doomed->Add(L"row");
        doomed->SetSelItem(0);
        doomed->raise();
        doomed->setFocus();
        return doomed;
    }
    void Click(int line, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mouseClick(&list, Qt::LeftButton, modifiers, QRect(list.GetCellRect(line, 0)).center());
    }
    CArray<int, int> Selected() const
    {
        CArray<int, int> lines{77};
        list.GetSelItems(lines);
        return lines;
    }
    QPlainTextEdit* Editor() const { return qobject_cast<QPlainTextEdit*>(QApplication::focusWidget()); }
    void Key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&list, static_cast<Qt::Key>(key), modifiers);
    }

    QWidget parent;
    TestList list;
};

using Lines = CArray<int, int>;

} // namespace kv::test
