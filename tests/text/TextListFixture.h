// A text list in a window, of which five rows are in view.
#pragma once

#include "KvTextEditListCtrl.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QTest>
#include <QUndoStack>

#include <gtest/gtest.h>

namespace kv::test {

using Lines = CArray<int, int>;

class TextTestList : public CKvTextEditListCtrl
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
    TextTestList list;
};

} // namespace kv::test
