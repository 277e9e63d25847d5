// The report list as a derived list and its user see it.
#include "ReportListFixture.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QPaintEvent>
#include <QPointer>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTextDocumentFragment>
#include <QToolTip>

#include <utility>

namespace {

using namespace kv::test;

/// Gathers what a widget is asked to paint.
class PaintWatch : public QObject
{
public:
    PaintWatch(QWidget& widget, QRegion& region) : m_region(region) { widget.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            m_region += static_cast<QPaintEvent*>(event)->region();
        return false;
    }

private:
    QRegion& m_region;
};

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

TEST_F(ReportList, SizesComeDownToWhatAListCanShow)
{
    constexpr int kHuge = std::numeric_limits<int>::max();
    for (const int column : {0, 1})
        list.SetColumnWidth(column, kHuge);
    EXPECT_EQ(list.GetColumnWidth(1), 32767);
    list.Add(L"row", -1, kHuge);
    list.Add(L"row");
    list.SetItemHeight(1, kHuge);
    EXPECT_EQ(list.GetItemHeight(0), 32767);
    EXPECT_EQ(list.GetItemHeight(1), 32767);
    list.SetScrollOffset({kHuge, kHuge});
    EXPECT_EQ(list.GetScrollOffset().x, 2 * 32767 - list.GetCellsRect().Width());
    EXPECT_EQ(list.GetScrollOffset().y, 2 * 32767 - list.GetCellsRect().Height());
    list.EditCell(1, 1);
    EXPECT_EQ(Editor()->height(), 32767);
    list.grab();
}

TEST_F(ReportList, LinesWithoutAHeightOfTheirOwnFollowTheFont)
{
    Fill(3);
    const int usual = list.GetItemHeight(0);
    list.SetItemHeight(1, usual);
    list.Add(L"row", -1, usual);
    const QFont font = list.font();
    QFont larger = font;
    larger.setPixelSize(60);
    list.setFont(larger);
    EXPECT_GE(list.minimumSizeHint().height(), 2 * QFontMetrics(larger).height()) << "header and a row";
    EXPECT_GE(list.GetItemHeight(0), 60);
    EXPECT_EQ(list.GetItemHeight(1), usual);
    EXPECT_EQ(list.GetItemHeight(3), usual);
    list.Add(L"row", -1, list.GetItemHeight(0));
    list.setFont(font);
    EXPECT_EQ(list.GetItemHeight(2), usual);
    EXPECT_GE(list.GetItemHeight(4), 60);
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

TEST_F(ReportList, ToolTipShowsACutTextAsItIs)
{
    list.Add(L"a & b <i>is no markup</i>, and too long");
    CRect area;
    const QString tip = list.ToolTipAt({20, 30}, area);
    EXPECT_EQ(tip, "a & b <i>is no markup</i>, and too long");
    QHelpEvent help(QEvent::ToolTip, {20, 30}, list.mapToGlobal(QPoint(20, 30)));
    QApplication::sendEvent(&list, &help);
    EXPECT_EQ(QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText(), tip) << "and shown as it is";
    EXPECT_EQ(list.ToolTipAt({120, 30}, area), QString()) << "what is whole needs none";
}

TEST_F(ReportList, OnlyWhatMovesTheLinesIsTheUsersScrolling)
{
    Fill(30);
    Click(0);
    const auto scrolledBy = [&](auto act) {
        list.scrolled = 0;
        act();
        return list.scrolled;
    };
    const auto key = [this](Qt::Key code) { return [this, code] { Key(code); }; };
    bool isTaken = false;
    const auto wheel = [&](int delta) {
        return [&, delta] {
            QWheelEvent event({20, 60}, list.mapToGlobal(QPointF(20, 60)), {}, {0, delta}, {}, {},
                              Qt::NoScrollPhase, false);
            QApplication::sendEvent(&list, &event);
            isTaken = event.isAccepted();
        };
    };
    EXPECT_EQ(scrolledBy(key(Qt::Key_Down)), 0) << "in view";
    EXPECT_EQ(scrolledBy(key(Qt::Key_Right)), 0);
    EXPECT_EQ(scrolledBy(wheel(120)), 0) << "at the end";
    EXPECT_FALSE(isTaken) << "what the list stands in scrolls";
    EXPECT_EQ(scrolledBy(key(Qt::Key_PageDown)), 1);
    EXPECT_EQ(scrolledBy(key(Qt::Key_End)), 1);
    EXPECT_EQ(scrolledBy(key(Qt::Key_Down)), 0) << "there is no further line";
    EXPECT_EQ(scrolledBy(wheel(120)), 1);
    EXPECT_TRUE(isTaken);
    EXPECT_EQ(scrolledBy([&] { list.EnsureVisible(0); }), 0) << "the list itself";
}

TEST_F(ReportList, HostMayDeleteTheListInAnySelectionSignal)
{
    using List = TestList;
    const auto at = [](List& one, int line) { return QRect(one.GetCellRect(line, 0)).center(); };
    const auto key = [](int code, Qt::KeyboardModifiers modifiers = {}) {
        return [=](List& one) { QTest::keyClick(&one, static_cast<Qt::Key>(code), modifiers); };
    };
    const auto typed = [](int code) {
        return [=](List& one) {
            one.EditCell(1, 0);
            QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(code));
        };
    };
    const std::pair<const char*, std::function<void(List&)>> cases[] = {
        {"press", [&](List& one) { QTest::mousePress(&one, Qt::LeftButton, {}, at(one, 2)); }},
        {"click on a selected line",
         [&](List& one) { QTest::mouseClick(&one, Qt::LeftButton, {}, at(one, 0)); }},
        {"press beside the lines",
         [&](List& one) {
             QTest::mousePress(&one, Qt::LeftButton, {}, {20, 140});
         }},
        {"right press", [&](List& one) { QTest::mousePress(&one, Qt::RightButton, {}, at(one, 2)); }},
        {"down", key(Qt::Key_Down)},
        {"page down", key(Qt::Key_PageDown)},
        {"end", key(Qt::Key_End, Qt::ShiftModifier)},
        {"space", key(Qt::Key_Space, Qt::ControlModifier)},
        {"select all", key(Qt::Key_A, Qt::ControlModifier)},
        {"Tab in the editor", typed(Qt::Key_Tab)},
        {"Enter in the editor", typed(Qt::Key_Return)},
    };
    for (const auto& [name, act] : cases) {
        SCOPED_TRACE(name);
        List* doomed = Doomed(3);
        const QPointer<List> guard(doomed);
        QObject::connect(doomed, &List::SelectionEdited, &parent, [doomed] { delete doomed; });
        act(*doomed);
        EXPECT_FALSE(guard);
        delete guard;
    }
}

TEST_F(ReportList, DerivedListMayDieWhenTheUserScrolls)
{
    const std::pair<const char*, std::function<void(TestList&)>> cases[] = {
        {"key", [](TestList& one) { QTest::keyClick(&one, Qt::Key_End); }},
        {"wheel",
         [](TestList& one) {
             QWheelEvent event({20, 60}, one.mapToGlobal(QPointF(20, 60)), {}, {0, -120}, {}, {},
                               Qt::NoScrollPhase, false);
             QApplication::sendEvent(&one, &event);
         }},
        {"bar",
         [](TestList& one) {
             one.findChild<QScrollBar*>()->triggerAction(QAbstractSlider::SliderPageStepAdd);
         }},
        {"dragging beyond the view",
         [](TestList& one) {
             QCursor::setPos(one.mapToGlobal(QPoint(20, 190)));
             QTest::mousePress(&one, Qt::LeftButton, {}, {20, 60});
         }},
    };
    for (const auto& [name, act] : cases) {
        SCOPED_TRACE(name);
        const QPointer<TestList> doomed(Doomed(30));
        QApplication::processEvents(); // places the bar
        doomed->userScrolled = [doomed] { delete doomed; };
        act(*doomed);
        EXPECT_TRUE(QTest::qWaitFor([&] { return doomed.isNull(); }));
        delete doomed;
    }
}

TEST_F(ReportList, PaintsWhatChangedAlone)
{
    Fill(30);
    QApplication::processEvents(); // a window paints only once it is exposed
    const auto painted = [this] {
        QRegion region;
        PaintWatch watch(list, region);
        QApplication::sendPostedEvents();
        QEvent now(QEvent::UpdateRequest); // the toolkit would wait for some milliseconds
        QApplication::sendEvent(&parent, &now);
        return (region & QRect(list.GetCellsRect())).boundingRect();
    };
    painted();
    EXPECT_TRUE(painted().isEmpty());
    const CRect cells = list.GetCellsRect();
    const auto row = [&](int line) { return QRect(0, list.GetCellRect(line, 0).top, cells.Width(), 24); };
    list.UpdateLine(2);
    EXPECT_EQ(painted(), row(2));
    list.SetItemText(3, 1, L"new");
    list.SetItemText(20, 1, L"out of view");
    EXPECT_EQ(painted(), row(3));
    Key(Qt::Key_Down);
    EXPECT_EQ(painted(), row(0)) << "the first line is selected and has the focus";
    list.Add(L"at the end");
    EXPECT_TRUE(painted().isEmpty());
    list.SetScrollOffset({0, 24});
    EXPECT_EQ(painted(), row(5)) << "the rest is moved";
    list.SetColumnWidth(0, 50);
    EXPECT_EQ(painted(), QRect(cells));
}

TEST_F(ReportList, HeadingsBeginWhereTheirColumnsDo)
{
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    list.SetHeaderText(0, L"Name");
    list.SetHeaderText(1, L"الاسم");
    // Whether there is more of the heading in the right half of its column.
    const auto isRight = [this](int column) {
        QRect room(list.GetCellRect(0, column));
        room = QRect(room.left() + 2, 2, room.width() - 6, 20);
        const QImage shown = list.grab(room).toImage();
        int balance = 0;
        for (int y = 0; y < shown.height(); ++y)
            for (int x = 0; x < shown.width(); ++x)
                if (shown.pixel(x, y) != shown.pixel(0, 0))
                    balance += 2 * x < shown.width() ? -1 : 1;
        EXPECT_NE(balance, 0);
        return balance > 0;
    };
    for (const wchar_t* text : {L"one", L"واحد"}) { // whatever the direction of heading, cells and program
        list.InsertRow(0, {text, text});
        QApplication::processEvents();
        EXPECT_FALSE(isRight(0));
        EXPECT_FALSE(isRight(1));
    }
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
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

TEST_F(ReportList, IsATableToAScreenReader)
{
    Fill(10);
    list.SetSelItem(3);
    list.SetRowFilter([](const KvReportRow& row) { return row.Text(0) != L"row 0"; });
    QAccessibleInterface* container = QAccessible::queryAccessibleInterface(&list);
    QAccessibleTableInterface* table = container->tableInterface();
    ASSERT_TRUE(table);
    EXPECT_EQ(std::pair(table->rowCount(), table->columnCount()), std::pair(9, 2));
    EXPECT_EQ(table->columnDescription(1), "Second");
    EXPECT_EQ(table->selectedRows(), QList<int>{2});
    EXPECT_EQ(table->selectedCellCount(), 2);
    EXPECT_EQ(table->cellAt(9, 0), nullptr);
    EXPECT_EQ(table->cellAt(0, 2), nullptr);
    QAccessibleInterface* cell = table->cellAt(2, 0);
    EXPECT_EQ(table->selectedCells().first(), cell);
    EXPECT_EQ(cell->text(QAccessible::Name), "row 3");
    EXPECT_EQ(cell->text(QAccessible::Description), "third, Second: second");
    EXPECT_TRUE(cell->state().editable);
    EXPECT_EQ(container->focusChild(), cell);
    EXPECT_EQ(cell->rect().size(), QRect(list.GetCellRect(3, 0)).size());
    EXPECT_EQ(container->childAt(cell->rect().center().x(), cell->rect().center().y()), cell);
    const auto expectAt = [&](int row, int column) {
        QAccessibleTableCellInterface* place = cell->tableCellInterface();
        EXPECT_EQ(std::pair(place->rowIndex(), place->columnIndex()), std::pair(row, column));
        const int before = container->childCount() - (table->rowCount() + 1) * 2; // the scroll bars
        EXPECT_EQ(container->indexOfChild(cell), before + (row + 1) * 2 + column);
        EXPECT_EQ(container->child(container->indexOfChild(cell)), cell);
    };
    expectAt(2, 0);
    list.Add(L"above", 0);
    expectAt(3, 0);
    QAccessibleInterface* header = cell->tableCellInterface()->columnHeaderCells().value(0);
    ASSERT_TRUE(header);
    EXPECT_EQ(header->role(), QAccessible::ColumnHeader);
    EXPECT_EQ(header->text(QAccessible::Name), "First");
    EXPECT_TRUE(table->selectRow(0));
    EXPECT_EQ(Selected(), (Lines{0, 4}));
    EXPECT_TRUE(table->unselectRow(3));
    EXPECT_EQ(Selected(), (Lines{0}));
    cell->actionInterface()->doAction("edit");
    EXPECT_EQ(std::pair(list.GetEditLine(), list.GetEditColumn()), std::pair(4, 0));
    list.RemoveRows(4, 1);
    EXPECT_FALSE(cell->isValid());
}

} // namespace
