// The lists of texts in a window, of which five rows are in view.
#pragma once

#include "KvSubTitleTxtListEditor.h"
#include "KvTextEditListCtrl.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QTest>
#include <QUndoStack>

#include <gtest/gtest.h>

namespace kv::test {

inline constexpr DWORD kNone = 0xFFFFFFFFu;
using Lines = CArray<int, int>;

template <typename List>
class TestListOf : public List
{
public:
    using List::_GetItemDescription;
    using List::EditCell;
    using List::EndEdit;
    using List::EnsureVisible;
    using List::GetCellRect;
    using List::GetCurrentItem;
    using List::GetEditColumn;
    using List::GetEditLine;
    using List::GetScrollOffset;
    using List::IsEditing;
    using List::OnSkinChanged;
    using List::SetScrollOffset;
};

template <typename List>
class ListFixture : public testing::Test
{
protected:
    explicit ListFixture(int height)
    {
        parent.resize(600, 200);
        list.Create({0, 0, 500, height}, WS_CHILD | WS_VISIBLE, &parent, 5);
        parent.show();
        QApplication::setActiveWindow(&parent);
        list.setFocus();
    }
    QPlainTextEdit* Editor() const { return qobject_cast<QPlainTextEdit*>(QApplication::focusWidget()); }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&list, key, modifiers);
    }
    void Type(int line, int column, const char* text, Qt::Key end = Qt::Key_Return)
    {
        list.EditCell(line, column);
        QTest::keyClicks(Editor(), QLatin1String(text));
        QTest::keyClick(Editor(), end);
    }
    void Undo() { Key(Qt::Key_Z, Qt::ControlModifier); }
    void Redo() { Key(Qt::Key_Y, Qt::ControlModifier); }
    Lines Selected() const
    {
        Lines lines{77};
        list.GetAllSelItems(lines);
        return lines;
    }

    QWidget parent;
    TestListOf<List> list;
};

using TextTestList = TestListOf<CKvTextEditListCtrl>;

class TextList : public ListFixture<CKvTextEditListCtrl>
{
protected:
    TextList() : ListFixture(120) {}
    CStringArray Texts() const
    {
        CStringArray texts{L"?"};
        list.GetString(texts);
        return texts;
    }
    void Type(int line, const char* text, Qt::Key end = Qt::Key_Return)
    {
        ListFixture::Type(line, 0, text, end);
    }
};

class SubtitleFixture : public ListFixture<CKvSubTitleTxtListEditor>
{
protected:
    SubtitleFixture() : ListFixture(144) {} // with its header
    using Times = std::pair<DWORD, DWORD>;
    Times TimesOf(int line) const
    {
        Times times{1, 2};
        list.GetTimeCode(line, times.first, times.second);
        return times;
    }
};

} // namespace kv::test
