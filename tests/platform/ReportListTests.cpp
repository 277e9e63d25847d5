// The report list as a derived list and its user see it.
#include "KvReportListCtrl.h"

#include <QAccessible>
#include <QApplication>
#include <QPlainTextEdit>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {

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
    using CKvReportListCtrl::SetItemText;
    using CKvReportListCtrl::SetRowFilter;
    using CKvReportListCtrl::SetScrollOffset;
    using CKvReportListCtrl::SortRows;

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

protected:
    void _OnNotifyItemModify(int kind, const CArray<int, int>& rows, int column) override
    {
        modifies.push_back({kind, rows, column});
    }
    BOOL _CanEditCell(int, int) override { return 1; }
    BOOL _IsMultiLineCell(int, int) override { return isMultiLine; }
    BOOL _ValidateEdit(int, int, const CString& text, CString& why) override
    {
        why = L"no";
        return text != L"bad";
    }
    void _CancelEdit(int line, int) override { cancelled = line; }
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
    void Fill(int count)
    {
        for (int i = 0; i < count; ++i)
            list.Add(L"row " + std::to_wstring(i));
        list.modifies.clear();
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

TEST_F(ReportList, TellsOnceOfEachChange)
{
    Fill(3);
    list.Add(L"x", 1);
    list.SetItemText(0, 1, L"new");
    list.SetItemText(0, 1, L"new");
    list.SortRows({3, 2, 1, 0});
    list.RemoveRows(Lines{3, 1, 1, 9, -1});
    list.RemoveRows(1, 5);
    list.RemoveAllRows();
    const std::vector<TestList::Modify> expected{{1, {1}, -1},    {4, {0}, 1},  {5, {3, 2, 1, 0}, -1},
                                                 {2, {1, 3}, -1}, {2, {1}, -1}, {3, {}, -1}};
    EXPECT_EQ(list.modifies, expected);
}

TEST_F(ReportList, OutOfRangeIsRefused)
{
    Fill(2);
    EXPECT_EQ(list.Add(L"x", 3), -1);
    EXPECT_EQ(list.Add(L"x", -2), -1);
    EXPECT_EQ(list.SortRows({0, 0}), 0);
    EXPECT_EQ(list.GetItemText(2, 0), L"");
    EXPECT_EQ(list.GetItemHeight(-1), 0);
    EXPECT_EQ(list.SetColumnWidth(2, 50), 0);
    EXPECT_EQ(list.SetColumnWidth(0, 5), 1);
    EXPECT_EQ(list.GetColumnWidth(0), 20);
    EXPECT_EQ(list.FindItem(L"row 1", 0), 1);
    EXPECT_EQ(list.FindItem(L"Row 1", 0), -1);
    EXPECT_EQ(list.FindItem(L"row 0", 0, 1), -1);
    DWORD back = 1;
    DWORD text = 2;
    EXPECT_EQ(list.GetCellColors(0, 0, &back, &text), 0);
    back = 0xFF102030u;
    list.SetCellColors(0, 0, &back, nullptr);
    back = 0;
    EXPECT_EQ(list.GetCellColors(0, 0, &back, &text), 1);
    EXPECT_EQ(back, 0xFF102030u);
    EXPECT_EQ(text, 2u);
    EXPECT_TRUE(list.modifies.empty());
}

TEST_F(ReportList, QueriesAnswerAtOnce)
{
    Fill(20);
    EXPECT_EQ(list.GetVisibleCount(), 5);
    list.EnsureVisible(9);
    EXPECT_EQ(list.GetTopIndex(), 5);
    list.SetScrollOffset({0, 130});
    EXPECT_EQ(list.GetTopIndex(), 5);
    EXPECT_EQ(list.GetVisibleCount(), 4) << "the first and the last are cut";
    list.Add(L"above", 0);
    EXPECT_EQ(list.GetTopIndex(), 6) << "what is in view stays";
    list.RemoveRows(0, 8);
    EXPECT_EQ(list.GetTopIndex(), 0);
    list.RemoveAllRows();
    EXPECT_EQ(list.GetTopIndex(), 0);
    EXPECT_EQ(list.GetVisibleCount(), 0);
}

TEST_F(ReportList, MouseSelects)
{
    Fill(5);
    QSignalSpy told(&list, &CKvReportListCtrl::SelectionEdited);
    Click(1);
    EXPECT_EQ(Selected(), (Lines{1}));
    Click(3, Qt::ShiftModifier);
    EXPECT_EQ(Selected(), (Lines{1, 2, 3}));
    Click(2, Qt::ControlModifier);
    EXPECT_EQ(Selected(), (Lines{1, 3}));
    EXPECT_EQ(told.size(), 3);
    Click(3);
    EXPECT_EQ(Selected(), (Lines{3})) << "a click on a selected line ends with it alone";
    const QPoint from = QRect(list.GetCellRect(0, 0)).center();
    QTest::mousePress(&list, Qt::LeftButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, from + QPoint(0, 48), list.mapToGlobal(from + QPoint(0, 48)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&list, &move);
    QTest::mouseRelease(&list, Qt::LeftButton, {}, from + QPoint(0, 48));
    EXPECT_EQ(Selected(), (Lines{0, 1, 2}));
    told.clear();
    list.SetSelItem(4);
    list.SetSelItem(9);
    EXPECT_EQ(Selected(), (Lines{4}));
    list.SetSelItem(-1);
    EXPECT_EQ(list.GetLastSelItem(), -1);
    EXPECT_EQ(told.size(), 0) << "setters are silent";
}

TEST_F(ReportList, KeysMoveAndSelect)
{
    Fill(20);
    Key(Qt::Key_Down);
    EXPECT_EQ(Selected(), (Lines{0}));
    Key(Qt::Key_PageDown);
    EXPECT_EQ(Selected(), (Lines{5}));
    Key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(Selected(), (Lines{5, 6}));
    Key(Qt::Key_Down, Qt::ControlModifier);
    Key(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(Selected(), (Lines{5, 6, 7}));
    Key(Qt::Key_End);
    EXPECT_EQ(Selected(), (Lines{19}));
    EXPECT_EQ(list.GetTopIndex(), 15);
    Key(Qt::Key_Home, Qt::ShiftModifier);
    EXPECT_EQ(list.GetSelCount(), 20);
    EXPECT_EQ(list.GetTopIndex(), 0);
    list.SetSelItem(-1);
    Key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(list.GetSelCount(), 20);
}

TEST_F(ReportList, FilterHidesWithoutMovingTheRest)
{
    Fill(40);
    list.SetSelItem(3);
    list.SetScrollOffset({0, 240});
    list.SetRowFilter([](const KvReportRow& row) { return row.Text(0).back() % 2 == 0; });
    EXPECT_EQ(list.GetTopIndex(), 10);
    EXPECT_TRUE(list.IsItemSelected(3));
    EXPECT_EQ(list.GetItemCount(), 40);
    EXPECT_EQ(list.NextShownRow(10, 1), 12);
    EXPECT_EQ(list.NextShownRow(10, -1), 8);
    Key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(list.GetSelCount(), 20);
    list.SetRowFilter({});
    EXPECT_EQ(list.GetTopIndex(), 10);
}

TEST_F(ReportList, ColumnEdgeDragsAndEscapeUndoes)
{
    list.SetAutoSizeColumn(1);
    EXPECT_EQ(list.GetColumnWidth(1), 200);
    const auto drag = [this](int dx) {
        QTest::mousePress(&list, Qt::LeftButton, {}, {100, 10});
        QMouseEvent move(QEvent::MouseMove, QPointF(100 + dx, 10), list.mapToGlobal(QPointF(100 + dx, 10)),
                         Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&list, &move);
    };
    drag(-95);
    EXPECT_EQ(list.GetColumnWidth(0), 20);
    EXPECT_EQ(list.GetColumnWidth(1), 280);
    Key(Qt::Key_Escape);
    EXPECT_EQ(list.GetColumnWidth(0), 100);
    QTest::mouseRelease(&list, Qt::LeftButton, {}, {5, 10});
    drag(10);
    QTest::mouseRelease(&list, Qt::LeftButton, {}, {110, 10});
    EXPECT_EQ(list.GetColumnWidth(0), 110);
}

TEST_F(ReportList, EnterCommitsTabGoesOnEscapeCancels)
{
    Fill(3);
    Click(0);
    Key(Qt::Key_F2);
    ASSERT_TRUE(Editor());
    QTest::keyClicks(Editor(), "typed");
    QTest::keyClick(Editor(), Qt::Key_Return);
    EXPECT_EQ(list.GetItemText(0, 0), L"typed");
    EXPECT_EQ(Selected(), (Lines{1}));
    list.EditCell(1, 0);
    QTest::keyClick(Editor(), Qt::Key_Tab);
    EXPECT_EQ(list.GetEditColumn(), 1);
    QTest::keyClick(Editor(), Qt::Key_Tab);
    EXPECT_EQ(std::pair(list.GetEditLine(), list.GetEditColumn()), std::pair(2, 0));
    QTest::keyClicks(Editor(), "bad");
    QTest::keyClick(Editor(), Qt::Key_Return);
    EXPECT_TRUE(list.IsEditing()) << "a refused text stays open";
    QTest::keyClick(Editor(), Qt::Key_Escape);
    EXPECT_FALSE(list.IsEditing());
    EXPECT_EQ(list.cancelled, 2);
    EXPECT_EQ(list.GetItemText(2, 0), L"row 2");
    list.modifies.clear();
    list.EditCell(2, 0);
    list.EndEdit(1);
    EXPECT_TRUE(list.modifies.empty()) << "an unchanged text changes nothing";
}

TEST_F(ReportList, OpenEditorFollowsItsLine)
{
    Fill(3);
    list.isMultiLine = true;
    list.EditCell(1, 0);
    QTest::keyClicks(Editor(), "a");
    QTest::keyClick(Editor(), Qt::Key_Return, Qt::ShiftModifier);
    QTest::keyClicks(Editor(), "b");
    list.Add(L"above", 0);
    list.SortRows({3, 2, 1, 0});
    EXPECT_EQ(list.GetEditLine(), 1);
    list.EndEdit(1);
    EXPECT_EQ(list.GetItemText(1, 0), L"a\nb");
    list.EditCell(1, 0);
    list.RemoveRows(1, 1);
    EXPECT_FALSE(list.IsEditing());
    EXPECT_EQ(list.cancelled, -1);
}

TEST_F(ReportList, CaretStaysFivePixelsInside)
{
    Fill(1);
    list.EditCell(0, 1);
    QTest::keyClicks(Editor(), QString(80, QLatin1Char('W')));
    const auto caret = [this] { return Editor()->mapTo(&list, Editor()->cursorRect().topLeft()).x(); };
    EXPECT_EQ(caret() + 5, list.GetCellsRect().right);
    QTest::keyClick(Editor(), Qt::Key_Home);
    EXPECT_GE(caret() - 5, 0);
    list.EndEdit(0);
    EXPECT_EQ(list.GetScrollOffset().x, 0) << "without the editor everything fits again";
}

TEST_F(ReportList, PaintsTheCellsOwnColours)
{
    Fill(2);
    const DWORD back = 0xFF204060u;
    list.SetCellColors(1, 1, &back, nullptr);
    const QPoint inside = QRect(list.GetCellRect(1, 1)).topRight() - QPoint(5, -3);
    EXPECT_EQ(list.grab().toImage().pixelColor(inside), QColor::fromRgba(back));
    list.SetSelItem(1);
    EXPECT_NE(list.grab().toImage().pixelColor(inside), QColor::fromRgba(back));
}

TEST_F(ReportList, LinesAreFoundByAScreenReader)
{
    Fill(10);
    list.SetSelItem(1);
    QAccessibleInterface* container = QAccessible::queryAccessibleInterface(&list);
    const int first = container->childCount() - 10;
    QAccessibleInterface* line = container->child(first + 1);
    EXPECT_EQ(line->text(QAccessible::Name), "First: row 1, Second: second");
    EXPECT_TRUE(line->state().selected);
    EXPECT_EQ(container->indexOfChild(line), first + 1);
    EXPECT_EQ(container->focusChild(), line);
    list.Add(L"above", 0);
    EXPECT_EQ(container->indexOfChild(line), first + 2);
}

} // namespace
