// A log list of ten lines' height, and what one needs to fill it.
#pragma once

#include "KvAppLogListCtrl.h"
#include "KvGuiRes.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <string>

class TestLog : public CKvAppLogListCtrl
{
public:
    using CKvAppLogListCtrl::_AddNewLogLine;
    using CKvAppLogListCtrl::_CheckMaxLogLineCounts;
    using CKvAppLogListCtrl::_FormatLogLine;
    using CKvAppLogListCtrl::ToolTipAt;
    using CKvReportListCtrl::GetCellRect;
    using CKvReportListCtrl::GetScrollOffset;
    using CKvReportListCtrl::InsertColumn;
    using CKvReportListCtrl::IsEndInView;
    using CKvReportListCtrl::IsRowShown;
    using CKvReportListCtrl::RemoveRows;
    using CKvReportListCtrl::SetItemText;
    using CKvReportListCtrl::SetScrollOffset;

    int inserted = 0; ///< lines, as far as is told
    std::function<void(int line)> drawing;

protected:
    void _OnNotifyItemModify(int kind, const CArray<int, int>& rows, int column) override
    {
        CKvAppLogListCtrl::_OnNotifyItemModify(kind, rows, column);
        inserted += kind == kKvReportInserted ? static_cast<int>(rows.size()) : 0;
    }
    void DrawItem(Graphics* graphics, int line, int column) override
    {
        if (drawing)
            drawing(line);
        CKvAppLogListCtrl::DrawItem(graphics, line, column);
    }
};

inline SKvAppLogMsgData Message(int type, const std::wstring& text, WORD day = 1, WORD level = 5)
{
    SKvAppLogMsgData message{};
    message.type = type;
    message.level = level;
    message.time = {2016, 3, 0, day, 9, 5, 7, 42};
    text.copy(message.text, 511);
    return message;
}

class LogFixture : public testing::Test
{
protected:
    LogFixture()
    {
        parent.resize(700, 300);
        log.Create({0, 0, 600, 264}, WS_CHILD | WS_VISIBLE, &parent, 7);
        log.Initialize(1);
        parent.show();
        QApplication::setActiveWindow(&parent);
        log.setFocus();
    }
    void Fill(int count, int type = 0)
    {
        for (int i = 0; i < count; ++i)
            log.AddAppLogMsg(Message(type, L"message " + std::to_wstring(i)));
    }
    /// The lines as a person tells them apart: type, "#" or "" and the content.
    std::vector<std::wstring> Lines() const
    {
        std::vector<std::wstring> lines;
        for (int line = 0; line < log.GetItemCount(); ++line)
            lines.push_back(log.GetItemText(line, 0) + L":" + log.GetItemText(line, 3));
        return lines;
    }
    CArray<int, int> Selected() const
    {
        CArray<int, int> lines{77};
        log.GetSelItems(lines);
        return lines;
    }
    /// Another list, which the test is to delete.
    TestLog* Doomed(const wchar_t* text)
    {
        auto* doomed = new TestLog;
        doomed->Create({0, 0, 300, 200}, WS_CHILD | WS_VISIBLE, &parent, 9);
        doomed->Initialize(1);
        doomed->AddAppLogMsg(Message(0, text));
        return doomed;
    }
    /// Makes a skin of these lines the present one, until `SetSkinFolder(nullptr)`.
    void SetSkin(const QByteArray& colours)
    {
        QFile file(folder.filePath("skin.ini"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[Colors]\n" + colours);
        file.close();
        KvGuiRes::SetSkinFolder(KvFromQString(folder.path()).c_str());
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&log, key, modifiers);
    }

    using Selection = CArray<int, int>;
    QTemporaryDir folder;
    QWidget parent;
    TestLog log; // dies before its parent
};
