// Undo in the lists of texts: what is one step, what it knows of its rows, and what the host hears.
#include "TextListFixture.h"

#include <QPointer>
#include <QSignalSpy>

#include <memory>
#include <random>

namespace {

using namespace kv::test;

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

TEST_F(TextList, AStepWhoseRowIsGoneLeavesWithoutAWord)
{
    list.AddString({L"a", L"b"});
    Type(0, "edited");
    Type(1, "b2");
    list.DeleteString(1);
    QSignalSpy texts(&list, &CKvTextListBase::TextEdited);
    Undo();
    EXPECT_EQ(Texts(), (CStringArray{L"a"})) << "passed over";
    EXPECT_EQ(list.GetUndoStack()->count(), 1);
    EXPECT_EQ(texts.size(), 1);
    list.ResetContent(1);
    EXPECT_FALSE(list.GetUndoStack()->canUndo() || list.GetUndoStack()->canRedo());
    EXPECT_FALSE(list.IsModified());
}

TEST_F(TextList, WhatTheHostDoesAsAStepIsNamedAndSilent)
{
    list.AddString({L"a", L"b"});
    QSignalSpy rows(&list, &CKvTextListBase::RowsEdited);
    EXPECT_EQ(list.RunAsStep(L"nothing", [] {}), 0);
    EXPECT_EQ(list.RunAsStep(L"host's", [&] { list.DeleteString(1); }), 1);
    EXPECT_EQ(rows.size(), 0);
    EXPECT_EQ(list.GetUndoStack()->undoText(), "host's");
    Undo();
    EXPECT_EQ(rows.size(), 1);
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
        if (list.GetItemCount() > 0 && below(4) == 0)
            Type(below(list.GetItemCount()), "user's");
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
        auto* victim = new TextTestList;
        victim->Create({0, 0, 200, 100}, WS_CHILD | WS_VISIBLE, &parent, 6);
        victim->AddString({L"a", L"b"});
        victim->SetSelItem(0);
        victim->setFocus();
        const QPointer<TextTestList> alive(victim);
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

} // namespace
