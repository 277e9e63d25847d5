// The text list as its host and its user see it, and what it shares with the subtitle list.
#include "TextListFixture.h"

#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QSignalSpy>

namespace {

using namespace kv::test;

TEST_F(TextList, HostAddsAndRemoves)
{
    QSignalSpy told(&list, &CKvTextListBase::RowsEdited);
    EXPECT_EQ(list.AddString(L"a"), 0);
    EXPECT_EQ(list.AddString(static_cast<const wchar_t*>(nullptr)), -1);
    EXPECT_EQ(list.AddString(CStringArray{L"b", L"c"}), 1);
    EXPECT_EQ(list.AddString(CStringArray{}), -1);
    EXPECT_EQ(list.InsertString(3, L"end"), 3) << "at the count it appends";
    EXPECT_EQ(list.InsertString(5, L"x"), -1);
    EXPECT_EQ(list.InsertString(-2, L"x"), -1);
    EXPECT_EQ(list.InsertString(0, L"top"), 0);
    EXPECT_EQ(list.InsertString(0, nullptr), -1);
    EXPECT_EQ(list.DeleteString(1), 1);
    EXPECT_EQ(list.DeleteString(9), 0);
    EXPECT_EQ(list.DeleteString(0xFFFFFFFFu), 0);
    EXPECT_EQ(Texts(), (CStringArray{L"top", L"b", L"c", L"end"}));
    CString text = L"kept";
    EXPECT_EQ(list.GetString(4, text), 0);
    EXPECT_EQ(text, L"kept");
    EXPECT_EQ(list.GetString(3, text), 1);
    EXPECT_EQ(text, L"end");
    EXPECT_FALSE(list.IsModified());
    EXPECT_FALSE(list.GetUndoStack()->canUndo());
    EXPECT_EQ(told.size(), 0);
}

TEST_F(TextList, FocusIsTheSelectionOrWhatIsSelectedInTheOpenCell)
{
    list.AddString({L"one\r\ntwo", L"three", L"four\n\nsix\n", L""});
    list.SetSelItem(Lines{3, 2, 0});
    CStringArray texts{L"?"};
    EXPECT_EQ(list.GetTxtFocus(texts), 3);
    EXPECT_EQ(texts, (CStringArray{L"one\r\ntwo", L"four\n\nsix\n", L""}));
    list.GetMultiLinesTxtFocus(texts);
    EXPECT_EQ(texts, (CStringArray{L"one", L"two", L"four", L"", L"six"}));
    list.GetFirstLineTxtFocus(texts);
    EXPECT_EQ(texts, (CStringArray{L"one", L"four", L""}));
    list.EditCell(0, 0);
    QTest::keyClick(Editor(), Qt::Key_Home, Qt::ControlModifier);
    for (int i = 0; i < 5; ++i)
        QTest::keyClick(Editor(), Qt::Key_Right, Qt::ShiftModifier);
    list.GetTxtFocus(texts);
    EXPECT_EQ(texts, (CStringArray{L"one\nt"}));
    list.GetMultiLinesTxtFocus(texts);
    EXPECT_EQ(texts, (CStringArray{L"one", L"t"}));
    list.GetFirstLineTxtFocus(texts);
    EXPECT_EQ(texts, (CStringArray{L"one"}));
    list.GetSelectString(texts);
    EXPECT_EQ(texts.size(), 3u);
    list.EndEdit(1);
    EXPECT_EQ(list.GetItemText(0, 0), L"one\r\ntwo") << "an unchanged text keeps its breaks";
    EXPECT_FALSE(list.IsModified());
}

TEST_F(TextList, ColoursFollowTheirRows)
{
    list.AddString({L"b", L"a", L"c"});
    DWORD themeBack = 0;
    DWORD themeSelected = 0;
    list.GetItemBkColor(0, &themeBack, &themeSelected);
    const DWORD red = 0xFF802020u;
    const DWORD blue = 0xFF202080u;
    EXPECT_EQ(list.SetItemBkColor(3, &red, &red), 0);
    EXPECT_EQ(list.SetItemBkColor(0, &red, nullptr), 1);
    EXPECT_EQ(list.SetItemTextColor(0, nullptr, nullptr, &blue), 1);
    const auto check = [&](int line, const char* when) {
        DWORD normal = 0;
        DWORD selected = 0;
        EXPECT_EQ(list.GetItemBkColor(line, &normal, &selected), 1) << when;
        EXPECT_EQ(normal, red) << when;
        EXPECT_EQ(selected, themeSelected) << when;
        DWORD disabled = 0;
        list.GetItemTextColor(line, nullptr, nullptr, &disabled);
        EXPECT_EQ(disabled, blue) << when;
        DWORD back = 1;
        DWORD text = 2;
        EXPECT_EQ(list.GetCellColors(line, 0, &back, &text), 1) << when;
        EXPECT_EQ(back, red) << when;
        EXPECT_EQ(text, 2u) << "no text colour of its own while enabled";
        const int other = line == 0 ? 1 : 0;
        EXPECT_EQ(list.GetCellColors(other, 0, &back, &text), 0) << when;
    };
    check(0, "at first");
    list.SetSelItem(0);
    check(0, "selected");
    list.SortItems(0, 0);
    check(1, "sorted down");
    list.SetSelItem(1);
    Key(Qt::Key_Delete);
    Undo();
    check(1, "back by undo");
    list.SetSelItem(-1);
    const QPoint inside = QRect(list.GetCellRect(1, 0)).topRight() - QPoint(8, -4);
    EXPECT_EQ(list.grab().toImage().pixelColor(inside), QColor::fromRgba(red));
}

TEST_F(TextList, ClipboardKeysAndUndo)
{
    list.AddString({L"a", L"b", L"c"});
    QSignalSpy rows(&list, &CKvTextListBase::RowsEdited);
    list.SetSelItem(Lines{0, 2});
    Key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(Texts(), (CStringArray{L"b"}));
    EXPECT_EQ(QApplication::clipboard()->text(), "a\nc");
    EXPECT_EQ(Selected(), (Lines{0}));
    Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Texts(), (CStringArray{L"b", L"a", L"c"}));
    EXPECT_EQ(Selected(), (Lines{1, 2}));
    Undo();
    EXPECT_EQ(Texts(), (CStringArray{L"b"}));
    Undo();
    EXPECT_EQ(Texts(), (CStringArray{L"a", L"b", L"c"}));
    EXPECT_EQ(Selected(), (Lines{0, 2}));
    Redo();
    Redo();
    EXPECT_EQ(Texts(), (CStringArray{L"b", L"a", L"c"}));
    QApplication::clipboard()->setText(QStringLiteral("x\r\n\ny\n"));
    list.SetSelItem(0);
    Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Texts(), (CStringArray{L"b", L"x", L"", L"y", L"a", L"c"})) << "a row a line";
    Key(Qt::Key_A, Qt::ControlModifier);
    Key(Qt::Key_Delete);
    EXPECT_TRUE(Texts().empty());
    Key(Qt::Key_Delete);
    Undo();
    EXPECT_EQ(list.GetItemCount(), 6);
    EXPECT_EQ(rows.size(), 9) << "once a step, also undone or redone";
}

TEST_F(TextList, InsertsAndMovesByKey)
{
    list.AddString({L"a", L"b", L"c"});
    list.SetSelItem(1);
    Key(Qt::Key_Return, Qt::ControlModifier);
    ASSERT_EQ(list.GetEditLine(), 2);
    QTest::keyClicks(Editor(), "below");
    QTest::keyClick(Editor(), Qt::Key_Return, Qt::ShiftModifier);
    QTest::keyClicks(Editor(), "two");
    QTest::keyClick(Editor(), Qt::Key_Return);
    list.SetSelItem(0);
    Key(Qt::Key_Return, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_EQ(list.GetEditLine(), 0);
    QTest::keyClick(Editor(), Qt::Key_Escape);
    EXPECT_EQ(Texts(), (CStringArray{L"", L"a", L"b", L"below\ntwo", L"c"}));
    list.SetSelItem(Lines{0, 2});
    Key(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(Texts(), (CStringArray{L"a", L"below\ntwo", L"", L"b", L"c"}));
    EXPECT_EQ(Selected(), (Lines{2, 3}));
    Key(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(Texts(), (CStringArray{L"a", L"", L"b", L"below\ntwo", L"c"}));
    Undo();
    Undo();
    EXPECT_EQ(Texts(), (CStringArray{L"", L"a", L"b", L"below\ntwo", L"c"}));
    EXPECT_EQ(Selected(), (Lines{0, 2}));
}

TEST_F(TextList, DroppedTextBecomesRows)
{
    list.AddString({L"a", L"b"});
    QMimeData data;
    data.setText(QStringLiteral("x\ny"));
    const QPoint at(20, list.GetCellRect(1, 0).top + 3);
    QDragEnterEvent enter(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&list, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&list, &drop);
    EXPECT_EQ(drop.dropAction(), Qt::CopyAction) << "the other side keeps its text";
    EXPECT_EQ(Texts(), (CStringArray{L"a", L"x", L"y", L"b"}));
    Undo();
    EXPECT_EQ(Texts(), (CStringArray{L"a", L"b"}));
}

TEST_F(TextList, BrokenRowsOnTheClipboardAreLeftOut)
{
    list.AddString({L"a", L"b"});
    list.SetSelItem(Lines{0, 1});
    Key(Qt::Key_C, Qt::ControlModifier);
    const QString format = QStringLiteral("application/x-kv-text-rows");
    const QByteArray whole = QApplication::clipboard()->mimeData()->data(format);
    ASSERT_FALSE(whole.isEmpty());
    const qsizetype row = (whole.size() - 8) / 2; // behind the format's mark and the number of rows
    for (qsizetype length = 0; length <= whole.size(); ++length) {
        auto* cut = new QMimeData;
        cut->setData(format, whole.left(length));
        QApplication::clipboard()->setMimeData(cut);
        list.SetSelItem(-1);
        Key(Qt::Key_V, Qt::ControlModifier);
        CStringArray expected{L"a", L"b"};
        if (length >= 8 + row)
            expected.push_back(L"a");
        if (length == whole.size())
            expected.push_back(L"b");
        ASSERT_EQ(Texts(), expected) << length;
        while (list.GetItemCount() > 2)
            list.DeleteString(2);
    }
}

TEST_F(TextList, NoBreakSpacesSurviveEditing)
{
    list.AddString(L"Quoi\u00A0?");
    list.EditCell(0, 0);
    QTest::keyClick(Editor(), Qt::Key_End);
    QTest::keyClicks(Editor(), "!");
    list.EndEdit(1);
    EXPECT_EQ(list.GetItemText(0, 0), L"Quoi\u00A0?!");
}

} // namespace
