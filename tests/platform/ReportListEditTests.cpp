// Editing a cell of the report list in its place.
#include "ReportListFixture.h"

#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPointer>

#include <utility>

namespace {

using namespace kv::test;

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

TEST_F(ReportList, EditorHasTheLettersOfItsCell)
{
    Fill(2);
    list.setStyleSheet("QTextEdit, QPlainTextEdit { font: italic 30px }");
    list.EditCell(0, 0);
    ASSERT_TRUE(Editor());
    EXPECT_EQ(QFontInfo(Editor()->font()).pixelSize(), QFontInfo(list.font()).pixelSize());
    EXPECT_FALSE(Editor()->font().italic());
    QFont large = list.font();
    large.setPixelSize(26);
    list.setFont(large);
    EXPECT_EQ(Editor()->font().pixelSize(), 26);
}

// Whoever is asked or told may insert lines above.
TEST_F(ReportList, EditingGoesOnInItsLineWhereverThatIsMoved)
{
    Fill(4);
    Click(1);
    list.asked = [this] { list.Add(L"above", 0); };
    const auto textAt = [this](int line) { return line < 0 ? L"" : list.GetItemText(line, 0); };
    ASSERT_TRUE(list.EditCell(list.FindItem(L"row 1", 0), 0));
    EXPECT_EQ(textAt(list.GetEditLine()), L"row 1");
    QTest::keyClicks(Editor(), "typed");
    QTest::keyClick(Editor(), Qt::Key_Tab);
    EXPECT_EQ(list.FindItem(L"typed", 0) + 1, list.FindItem(L"row 2", 0)) << "the row that was open";
    EXPECT_EQ(textAt(list.GetEditLine()), L"typed");
    EXPECT_EQ(list.GetEditColumn(), 1);
    list.EndEdit(0);
    list.asked = nullptr;
    list.SetScrollOffset({0, 0});
    list.RemoveAllRows();
    Fill(4);
    list.asked = [this] { list.Add(L"above", 0); };
    const QPoint row = QRect(list.GetCellRect(2, 0)).center();
    QTest::mouseDClick(&list, Qt::LeftButton, {}, row);
    EXPECT_EQ(textAt(list.GetEditLine()), L"row 2") << "double click";
    list.EndEdit(0);
    QTest::mouseRelease(&list, Qt::LeftButton);
    list.asked = nullptr;
    list.SetSelItem(list.FindItem(L"row 2", 0));
    list.EnsureVisible(list.GetLastSelItem());
    list.asked = [this] { list.Add(L"above", 0); };
    const QPoint from = QRect(list.GetCellRect(list.GetLastSelItem(), 0)).center();
    QTest::mousePress(&list, Qt::LeftButton, {}, from);
    QTest::mouseMove(&list, from + QPoint(QApplication::startDragDistance() + 1, 0));
    QTest::mouseRelease(&list, Qt::LeftButton, {}, from);
    EXPECT_GE(list.dragged, 0);
    ASSERT_EQ(Selected().size(), 1u);
    EXPECT_EQ(textAt(Selected()[0]), L"row 2") << "a drag that is none";
}

TEST_F(ReportList, AnOpenCellIsCancelledWhenTheListIsDisabled)
{
    Fill(3);
    for (QWidget* disabled : {static_cast<QWidget*>(&list), &parent}) {
        list.EditCell(1, 0);
        QTest::keyClicks(Editor(), "typed");
        list.cancelled = -2;
        disabled->setEnabled(false);
        QApplication::sendPostedEvents();
        EXPECT_FALSE(list.IsEditing());
        EXPECT_EQ(list.cancelled, 1);
        EXPECT_EQ(list.GetItemText(1, 0), L"row 1");
        disabled->setEnabled(true);
    }
}

// Rows that others change while a cell is open: bars and limits are those of a fresh layout.
TEST_F(ReportList, AnOpenCellKeepsTheLayoutTrueWhileRowsChange)
{
    Fill(3);
    list.EditCell(1, 0);
    const auto barShows = [this] { return list.GetCellsRect().right < list.width(); };
    for (int i = 0; i < 9; ++i)
        list.Add(L"more", 0);
    EXPECT_EQ(list.GetEditLine(), 10);
    EXPECT_TRUE(barShows());
    list.SetScrollOffset({0, 100'000});
    EXPECT_EQ(list.GetScrollOffset().y, 12 * 24 - 120) << "all lines can be come to";
    list.RemoveRows(0, 9);
    EXPECT_FALSE(barShows());
    EXPECT_EQ(list.GetScrollOffset().y, 0);
    list.SetItemHeight(1, 100);
    EXPECT_TRUE(barShows());
    EXPECT_EQ(Editor()->height(), 100);
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
    const auto caret = [this] {
        return Editor()->viewport()->mapTo(&list, Editor()->cursorRect().topLeft()).x();
    };
    EXPECT_EQ(caret() + 5, list.GetCellsRect().right);
    QTest::keyClick(Editor(), Qt::Key_Home);
    EXPECT_GE(caret() - 5, 0);
    list.EndEdit(0);
    EXPECT_EQ(list.GetScrollOffset().x, 0) << "without the editor everything fits again";
    list.SetAutoSizeColumn(1);
    const CRect before = list.GetCellsRect();
    list.EditCell(0, 1);
    EXPECT_EQ(list.GetCellsRect(), before) << "a short text takes no more room than its cell";
}

TEST_F(ReportList, OpenEditorFillsItsCellAsThatChanges)
{
    QFont font = list.font();
    font.setPixelSize(10); // has room in its row, whatever font it is
    list.setFont(font);
    Fill(3);
    list.EditCell(1, 0);
    EXPECT_EQ(Editor()->size(), QSize(100, 24));
    list.SetItemHeight(1, 60);
    EXPECT_EQ(Editor()->height(), 60);
    list.SetColumnWidth(0, 150);
    EXPECT_EQ(Editor()->width(), 150);
    list.SetItemHeight(1, 12);
    EXPECT_LT(Editor()->height(), 60);
    EXPECT_GE(Editor()->height(), QFontMetrics(list.font()).height()) << "its text needs more than its cell";
    list.SetAutoSizeColumn(0);
    EXPECT_EQ(Editor()->width(), 220);
    list.resize(200, 144);
    EXPECT_EQ(Editor()->width(), 120);
}

TEST_F(ReportList, HostMayDeleteTheListWhenAnOpenCellIsLeft)
{
    QLineEdit other(&parent);
    other.show();
    const QPoint row(20, 60);
    const std::pair<const char*, std::function<void(TestList&)>> cases[] = {
        {"press", [&](TestList& one) { QTest::mousePress(&one, Qt::LeftButton, {}, row); }},
        {"right press", [&](TestList& one) { QTest::mousePress(&one, Qt::RightButton, {}, row); }},
        {"double click", [&](TestList& one) { QTest::mouseDClick(&one, Qt::LeftButton, {}, row); }},
        {"hidden", [](TestList& one) { one.hide(); }},
        {"focus elsewhere", [&](TestList&) { other.setFocus(); }},
        {"another cell", [](TestList& one) { one.EditCell(1, 1); }},
    };
    for (const auto& [name, act] : cases) {
        SCOPED_TRACE(name);
        TestList* doomed = Doomed(3);
        doomed->EditCell(0, 0);
        ASSERT_TRUE(Editor());
        QTest::keyClicks(Editor(), "typed");
        const QPointer<TestList> guard(doomed);
        doomed->committed = [guard] { delete guard; };
        act(*doomed);
        QApplication::sendPostedEvents();
        EXPECT_FALSE(guard);
        delete guard;
    }
}

TEST_F(ReportList, WhatIsTypedGoesWithTheList)
{
    bool isCommitted = false;
    for (const bool withParent : {false, true}) {
        auto* window = new QWidget;
        auto* doomed = Doomed(1);
        doomed->setParent(window);
        doomed->committed = [&] { isCommitted = true; };
        window->show();
        doomed->EditCell(0, 0);
        QTest::keyClicks(doomed->findChild<QPlainTextEdit*>(), "typed");
        delete (withParent ? window : static_cast<QWidget*>(doomed));
        if (!withParent)
            delete window;
        QApplication::processEvents();
    }
    EXPECT_FALSE(isCommitted);
}

TEST_F(ReportList, TheEditorReadsAsItsTextDoes)
{
    list.SetAutoSizeColumn(0);
    Fill(1);
    list.EditCell(0, 0);
    const auto caretAt = [this](const QString& text) {
        Editor()->clear();
        for (const QChar character : text) // typed
            Editor()->insertPlainText(character);
        return Editor()->cursorRect().center().x() > Editor()->width() / 2 ? "right" : "left";
    };
    EXPECT_STREQ(caretAt("abc"), "left");
    EXPECT_STREQ(caretAt("\u0645\u0631"), "right");
    EXPECT_STREQ(caretAt("- 1 \u05d0"), "right") << "the first letter decides";
    EXPECT_STREQ(caretAt("a \u05d0"), "left");
    EXPECT_STREQ(caretAt("\u05d0\nabc"), "right") << "of the whole text";
}

TEST_F(ReportList, RefusedTextKeepsTheFocus)
{
    QLineEdit other(&parent);
    other.show();
    Fill(4);
    Click(1);
    list.EditCell(0, 0);
    QTest::keyClicks(Editor(), "bad");
    other.setFocus();
    QApplication::sendPostedEvents();
    ASSERT_TRUE(Editor()) << "given back";
    EXPECT_EQ(Editor()->accessibleDescription(), "no");
    Click(2);
    QTest::mouseDClick(&list, Qt::LeftButton, {}, QRect(list.GetCellRect(2, 0)).center());
    QTest::mouseClick(&list, Qt::RightButton, {}, QRect(list.GetCellRect(2, 0)).center());
    ASSERT_TRUE(Editor());
    EXPECT_EQ(list.GetEditLine(), 0);
    EXPECT_EQ(Selected(), (Lines{1})) << "nothing behind the open cell is touched";
    QTest::keyClicks(Editor(), "!");
    EXPECT_EQ(Editor()->accessibleDescription(), "");
    QTest::keyClick(Editor(), Qt::Key_Escape);
    EXPECT_FALSE(list.IsEditing());
    EXPECT_EQ(list.GetItemText(0, 0), L"row 0");
}

TEST_F(ReportList, WhatTheEditorCannotHoldIsNoEdit)
{
    list.isMultiLine = true;
    for (const wchar_t* text : {L"a\u2029b",
                                L"a\xFDD0"
                                L"b\xFDD1",
                                L"a\r\nb\rc", L"a\u2028b", L"a\u00A0b"})
        list.Add(text);
    list.modifies.clear();
    for (int line = 0; line < list.GetItemCount(); ++line) {
        list.EditCell(line, 0);
        list.EndEdit(1);
    }
    EXPECT_TRUE(list.modifies.empty());
}

TEST_F(ReportList, EditorGrowsWithWhatAnInputMethodComposes)
{
    Fill(1);
    list.EditCell(0, 0);
    const int width = Editor()->width();
    QInputMethodEvent compose(QString(40, QChar(0x6F22)), {});
    QApplication::sendEvent(Editor(), &compose);
    EXPECT_GT(Editor()->width(), width + 100);
    QInputMethodEvent giveUp({}, {});
    QApplication::sendEvent(Editor(), &giveUp);
    EXPECT_EQ(Editor()->width(), width);
}

TEST_F(ReportList, EditorKeepsTheRightButtonToItself)
{
    Fill(2);
    list.EditCell(0, 0);
    QTest::mouseClick(Editor()->viewport(), Qt::RightButton, {}, QPoint(4, 4));
    EXPECT_TRUE(list.IsEditing());
}

TEST_F(ReportList, KeysWithModifiersEndNothing)
{
    Fill(2);
    list.isMultiLine = true;
    list.EditCell(0, 0);
    QTest::keyClicks(Editor(), "typed");
    for (const auto& [key, modifier] :
         {std::pair(Qt::Key_Tab, Qt::ControlModifier), std::pair(Qt::Key_Tab, Qt::MetaModifier),
          std::pair(Qt::Key_Return, Qt::ControlModifier)}) {
        QTest::keyClick(Editor(), key, modifier);
        ASSERT_TRUE(list.IsEditing());
        EXPECT_EQ(Editor()->toPlainText(), "typed");
    }
}

} // namespace
