// The text list as its host and its user see it, and what it shares with the subtitle list.
#include "KvTextEditListCtrl.h"

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QUndoStack>

#include <gtest/gtest.h>
#include <random>

namespace {

using Lines = CArray<int, int>;

class TestList : public CKvTextEditListCtrl
{
public:
    using CKvTextEditListCtrl::EditCell;
    using CKvTextEditListCtrl::EndEdit;
    using CKvTextEditListCtrl::GetCellRect;
    using CKvTextEditListCtrl::GetCurrentItem;
    using CKvTextEditListCtrl::GetEditLine;
    using CKvTextEditListCtrl::GetScrollOffset;
    using CKvTextEditListCtrl::IsEditing;
    using CKvTextEditListCtrl::SetScrollOffset;
};

class TextList : public testing::Test
{
protected:
    TextList()
    {
        parent.resize(400, 200);
        list.Create({0, 0, 300, 120}, WS_CHILD | WS_VISIBLE, &parent, 5); // five rows
        parent.show();
        QApplication::setActiveWindow(&parent);
        list.setFocus();
    }
    CStringArray Texts() const
    {
        CStringArray texts{L"?"};
        list.GetString(texts);
        return texts;
    }
    Lines Selected() const
    {
        Lines lines;
        list.GetAllSelItems(lines);
        return lines;
    }
    QPlainTextEdit* Editor() const { return qobject_cast<QPlainTextEdit*>(QApplication::focusWidget()); }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&list, key, modifiers);
    }
    void Type(int line, const char* text, Qt::Key end = Qt::Key_Return)
    {
        list.EditCell(line, 0);
        QTest::keyClicks(Editor(), QLatin1String(text));
        QTest::keyClick(Editor(), end);
    }
    void Undo() { Key(Qt::Key_Z, Qt::ControlModifier); }
    void Redo() { Key(Qt::Key_Y, Qt::ControlModifier); }

    QWidget parent;
    TestList list;
};

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
    list.InsertString(0, L"new");
    check(1, "after an insertion above");
    list.SortItems(0, 1);
    EXPECT_EQ(Texts(), (CStringArray{L"a", L"b", L"c", L"new"}));
    check(1, "sorted");
    list.SortItems(0, 0);
    check(2, "sorted down");
    Key(Qt::Key_Delete);
    EXPECT_EQ(list.GetItemCount(), 3);
    Undo();
    check(2, "back by undo");
    EXPECT_EQ(Selected(), (Lines{2}));
    list.SetSelItem(-1);
    const QPoint inside = QRect(list.GetCellRect(2, 0)).topRight() - QPoint(8, -4);
    EXPECT_EQ(list.grab().toImage().pixelColor(inside), QColor::fromRgba(red));
}

TEST_F(TextList, CommitsOfOneCellAreOneStep)
{
    list.AddString({L"a", L"b"});
    QSignalSpy texts(&list, &CKvTextListBase::TextEdited);
    QSignalSpy rows(&list, &CKvTextListBase::RowsEdited);
    list.SetSelItem(0);
    Type(0, "one");
    EXPECT_EQ(Selected(), (Lines{1})) << "Enter goes on to the next row";
    Type(0, "two");
    Type(0, "gone", Qt::Key_Escape);
    EXPECT_EQ(Texts(), (CStringArray{L"two", L"b"}));
    EXPECT_EQ(list.GetUndoStack()->count(), 1);
    Type(1, "three");
    EXPECT_EQ(list.GetUndoStack()->count(), 2);
    EXPECT_TRUE(list.IsModified());
    list.InsertString(0, L"host");
    Undo();
    Undo();
    EXPECT_EQ(Texts(), (CStringArray{L"host", L"a", L"b"}));
    EXPECT_EQ(Selected(), (Lines{1})) << "as before the step";
    EXPECT_FALSE(list.IsModified()) << "all of it is undone";
    Redo();
    EXPECT_EQ(Texts(), (CStringArray{L"host", L"two", L"b"}));
    list.SetModify(0);
    Undo();
    EXPECT_TRUE(list.IsModified()) << "undo of what was saved";
    const std::vector<int> expected{0, 0, 1, 2, 1, 1, 1};
    ASSERT_EQ(texts.size(), static_cast<qsizetype>(expected.size()));
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(texts[static_cast<qsizetype>(i)][0].toInt(), expected[i]) << i;
    EXPECT_EQ(rows.size(), 0);
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

TEST_F(TextList, StepsKnowTheirRows)
{
    list.AddString({L"a", L"b", L"c", L"d"});
    Type(2, "edited");
    list.SetSelItem(1);
    Key(Qt::Key_Delete); // "b"
    list.SortItems(0, 0);
    list.InsertString(0, L"host");
    EXPECT_EQ(Texts(), (CStringArray{L"host", L"edited", L"d", L"a"}));
    Undo();
    EXPECT_EQ(Texts(), (CStringArray{L"host", L"b", L"edited", L"d", L"a"}))
        << "before the same row as before";
    list.DeleteString(2);
    QSignalSpy texts(&list, &CKvTextListBase::TextEdited);
    Undo();
    EXPECT_EQ(list.GetUndoStack()->count(), 1) << "the step of the row that is gone has left";
    EXPECT_EQ(texts.size(), 0);
    Redo();
    EXPECT_EQ(Texts(), (CStringArray{L"host", L"d", L"a"}));
    list.ResetContent(1);
    EXPECT_FALSE(list.GetUndoStack()->canUndo());
    EXPECT_FALSE(list.IsModified());
}

TEST_F(TextList, WhatTheHostDoesAsAStepIsUndoneWhole)
{
    list.AddString({L"a", L"b", L"c", L"d"});
    Type(1, "bb");
    const CStringArray before = Texts();
    QSignalSpy rows(&list, &CKvTextListBase::RowsEdited);
    EXPECT_EQ(list.RunAsStep(L"nothing", [] {}), 0);
    const auto change = [&] {
        list.DeleteString(1); // the row that the user has edited
        list.DeleteString(2);
        list.InsertString(0, L"first");
        list.InsertString(-1, L"last");
    };
    EXPECT_EQ(list.RunAsStep(L"host's", change), 1);
    EXPECT_EQ(rows.size(), 0);
    const CStringArray after = Texts();
    EXPECT_EQ(after, (CStringArray{L"first", L"a", L"c", L"last"}));
    EXPECT_EQ(list.GetUndoStack()->undoText(), "host's");
    for (int round = 0; round < 2; ++round) {
        Undo();
        EXPECT_EQ(Texts(), before);
        Undo();
        EXPECT_EQ(Texts(), (CStringArray{L"a", L"b", L"c", L"d"})) << "the row is still the user's";
        Redo();
        Redo();
        EXPECT_EQ(Texts(), after);
    }
}

// Rows that go one by one, each before one that goes later, between rows of the host's own, changed before,
// replaced within.
TEST_F(TextList, WhateverAHostsStepDidComesBackInOrder)
{
    std::mt19937 random(7);
    const auto below = [&](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
    int next = 0;
    const auto change = [&] {
        for (int i = below(12); i >= 0; --i) {
            const int count = list.GetItemCount();
            switch (count < 3 ? 0 : below(5)) {
            case 0:
            case 1:
                list.InsertString(below(count + 1), (L"r" + std::to_wstring(next++)).c_str());
                break;
            case 2:
                list.FindReplace(0, below(3), L"r1", L"x", 1);
                break;
            default:
                list.DeleteString(static_cast<UINT>(below(count)));
            }
        }
    };
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        const CStringArray before = Texts();
        if (list.RunAsStep(L"step", change) == 0)
            continue;
        const CStringArray after = Texts();
        Undo();
        ASSERT_EQ(Texts(), before);
        Redo();
        ASSERT_EQ(Texts(), after);
    }
    while (list.GetUndoStack()->canUndo())
        Undo();
    EXPECT_EQ(Texts(), CStringArray());
    EXPECT_FALSE(list.IsModified());
}

// What the host has removed by itself is gone for good: it comes back neither hollow nor at all.
TEST_F(TextList, RowsThatTheHostTookOutOfAStepStayAway)
{
    list.AddString({L"a", L"b", L"c"});
    const auto replaceB = [&] {
        list.DeleteString(1);
        list.InsertString(1, L"new");
    };
    ASSERT_EQ(list.RunAsStep(L"step", replaceB), 1);
    list.DeleteString(1);
    Undo();
    EXPECT_EQ(Texts(), (CStringArray{L"a", L"b", L"c"}));
    Redo();
    EXPECT_EQ(Texts(), (CStringArray{L"a", L"c"}));
    Undo();
    list.DeleteString(1);
    Redo();
    Undo();
    EXPECT_EQ(Texts(), (CStringArray{L"a", L"c"}));
}

TEST_F(TextList, HostsStepIsVoidOrAnOuterOnes)
{
    list.AddString({L"a", L"b"});
    const auto inner = [&] {
        list.DeleteString(0);
        EXPECT_EQ(list.RunAsStep(L"inner", [&] { list.DeleteString(0); }), 0);
    };
    EXPECT_EQ(list.RunAsStep(L"outer", inner), 1);
    EXPECT_EQ(list.GetUndoStack()->count(), 1);
    Undo();
    EXPECT_EQ(Texts(), (CStringArray{L"a", L"b"}));
    const auto all = [&] {
        list.DeleteString(0);
        list.ResetContent(0);
        list.AddString(L"c");
    };
    EXPECT_EQ(list.RunAsStep(L"all", all), 0);
    EXPECT_EQ(list.GetUndoStack()->count(), 0);
    EXPECT_FALSE(list.IsModified());
}

TEST_F(TextList, ModifiedIsWhatDiffersFromTheSavedContent)
{
    list.AddString({L"a", L"b"});
    Type(0, "x");
    Type(0, "a");
    EXPECT_FALSE(list.IsModified()) << "edited back";
    Type(0, "x");
    list.SetModify(0);
    Type(0, "y");
    Undo();
    EXPECT_FALSE(list.IsModified());
    Undo();
    EXPECT_TRUE(list.IsModified()) << "before what was saved";
    Redo();
    EXPECT_FALSE(list.IsModified());
    list.SetModify(1);
    Undo();
    Redo();
    EXPECT_TRUE(list.IsModified()) << "by the host's word";
}

TEST_F(TextList, TellsOnceWhenAStepChangesTheSelection)
{
    list.AddString({L"a", L"b", L"c"});
    list.SetSelItem(0);
    QStringList told;
    QObject::connect(&list, &CKvReportListCtrl::SelectionEdited, [&] { told += "selection"; });
    QObject::connect(&list, &CKvTextListBase::RowsEdited, [&] { told += "rows"; });
    QObject::connect(&list, &CKvTextListBase::TextEdited, [&] { told += "text"; });
    const auto toldBy = [&](auto act) {
        told.clear();
        act();
        return told.join(u' ');
    };
    EXPECT_EQ(toldBy([&] { Key(Qt::Key_Delete, Qt::KeypadModifier); }), "rows selection");
    EXPECT_EQ(toldBy([&] { Undo(); }), "rows selection");
    EXPECT_EQ(toldBy([&] { Redo(); }), "rows selection");
    EXPECT_EQ(toldBy([&] { Key(Qt::Key_Down, Qt::AltModifier); }), "rows") << "the same row is selected";
    list.EditCell(0, 0);
    QTest::keyClicks(Editor(), "x");
    EXPECT_EQ(toldBy([&] { list.EndEdit(1); }), "text");
    list.SetSelItem(-1);
    EXPECT_EQ(toldBy([&] { Undo(); }), "text selection");
}

TEST_F(TextList, HostsStackTakesTheSteps)
{
    auto stack = std::make_unique<QUndoStack>();
    list.SetUndoStack(stack.get());
    list.AddString(L"a");
    Type(0, "b");
    EXPECT_EQ(stack->undoText(), "edit text");
    stack->undo();
    EXPECT_EQ(Texts(), (CStringArray{L"a"}));
    list.ResetContent(0);
    list.AddString(L"new");
    stack->redo();
    EXPECT_EQ(Texts(), (CStringArray{L"new"})) << "of another content";
    stack.reset();
    Type(0, "c");
    EXPECT_EQ(list.GetUndoStack()->count(), 1) << "the list's own again";
}

TEST_F(TextList, HostMayDeleteTheListInAnAnswer)
{
    for (const bool isUndo : {false, true}) {
        auto* victim = new TestList;
        victim->Create({0, 0, 200, 100}, WS_CHILD | WS_VISIBLE, &parent, 6);
        victim->AddString({L"a", L"b"});
        victim->SetSelItem(0);
        victim->setFocus();
        const QPointer<TestList> alive(victim);
        const auto kill = [&] { delete victim; };
        if (!isUndo)
            QObject::connect(victim, &CKvTextListBase::RowsEdited, victim, kill);
        QTest::keyClick(victim, Qt::Key_Delete);
        if (isUndo) {
            QObject::connect(victim, &CKvTextListBase::RowsEdited, victim, kill);
            victim->GetUndoStack()->undo();
        }
        EXPECT_FALSE(alive);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

TEST_F(TextList, UndoRestoresTheScrollPosition)
{
    for (int i = 0; i < 50; ++i)
        list.AddString(std::to_wstring(i).c_str());
    list.SetSelItem(30);
    list.SetScrollOffset({0, 700});
    Key(Qt::Key_Delete);
    list.SetScrollOffset({0, 0});
    list.SetSelItem(1);
    Undo();
    EXPECT_EQ(list.GetScrollOffset(), CPoint(0, 700));
    EXPECT_EQ(Selected(), (Lines{30}));
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
    for (qsizetype length = 0; length < whole.size(); ++length) {
        auto* cut = new QMimeData;
        cut->setData(format, whole.left(length));
        QApplication::clipboard()->setMimeData(cut);
        list.SetSelItem(-1);
        Key(Qt::Key_V, Qt::ControlModifier);
        ASSERT_LE(list.GetItemCount(), 3) << length;
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
