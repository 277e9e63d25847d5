// The find and replace dialog: what the editor is asked, and what the user is told.
#include "KvFindReplaceTxtDlg.h"

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace {

/// Writes down what it is asked.
class Editor : public IKvFindReplaceTxtNotify
{
public:
    std::vector<CString> log;
    int result = 0;
    std::function<void()> meanwhile = [] {};

    int Find(const wchar_t* text, BOOL matchCase) override
    {
        log.push_back(L"find [" + CString(text) + L"]" + (matchCase ? L" case" : L""));
        meanwhile();
        return result;
    }
    int Replace(const wchar_t* text, const wchar_t* replacement, BOOL matchCase, BOOL all) override
    {
        log.push_back(L"replace [" + CString(text) + L"] [" + replacement + L"]" +
                      (matchCase ? L" case" : L"") + (all ? L" all" : L""));
        meanwhile();
        return result;
    }
};

class FindReplaceDialog : public testing::Test
{
protected:
    void SetUp() override
    {
        KvSetMessageBoxHandler([this](HWND owner, const std::wstring& text, UINT style) {
            boxes.push_back(text);
            boxOwner = owner;
            boxStyle = style;
            return IDOK;
        });
        dialog = std::make_unique<CKvFindReplaceTxtDlg>();
        ASSERT_EQ(dialog->Create(&parent), 1);
        dialog->SetNotify(&editor);
    }
    void TearDown() override { KvSetMessageBoxHandler({}); }

    void Show()
    {
        dialog->show();
        QApplication::setActiveWindow(dialog.get());
    }
    QLineEdit& Edit(UINT id) { return *qobject_cast<QLineEdit*>(dialog->GetDlgItem(id)); }
    void Click(UINT id) { qobject_cast<QAbstractButton*>(dialog->GetDlgItem(id))->click(); }
    CString Text(UINT id) { return KvFromQString(Edit(id).text()); }
    std::vector<CString> Asked() { return std::exchange(editor.log, {}); }

    Editor editor;
    QWidget parent;
    std::unique_ptr<CKvFindReplaceTxtDlg> dialog;
    std::vector<CString> boxes;
    HWND boxOwner = nullptr;
    UINT boxStyle = 0;
};

using Log = std::vector<CString>;

TEST_F(FindReplaceDialog, PassesEveryRequestOn)
{
    EXPECT_FALSE(dialog->isVisible());
    Click(kKvFindNextButton);
    EXPECT_EQ(Asked(), Log{L"find []"}); // as it is
    Click(kKvReplaceButton);
    Click(kKvReplaceAllButton);
    EXPECT_EQ(Asked(), Log{}); // nothing to look for
    Edit(kKvFindEdit).setText(QStringLiteral("Aurora"));
    Edit(kKvReplaceEdit).setText(QStringLiteral("%s"));
    Click(kKvReplaceButton);
    Click(kKvMatchCaseCheck);
    Click(kKvReplaceAllButton);
    Click(kKvFindNextButton);
    EXPECT_EQ(Asked(),
              (Log{L"replace [Aurora] [%s]", L"replace [Aurora] [%s] case all", L"find [Aurora] case"}));
    EXPECT_TRUE(boxes.empty());
    dialog->SetNotify(nullptr);
    Click(kKvFindNextButton);
    EXPECT_EQ(Asked(), Log{});
}

TEST_F(FindReplaceDialog, TellsWhatWasNotFound)
{
    CStringArray entries{L"50", L"", L"%s"};
    dialog->SetFindString(entries);
    CStringArray none;
    dialog->SetFindString(none);
    for (const int result : {0, 1, 3, -1}) {
        editor.result = result;
        dialog->FindNext();
    }
    EXPECT_TRUE(boxes.empty());
    editor.result = 2;
    dialog->FindNext();
    EXPECT_EQ(boxes, Log{L"Can not Find \"50%s\"!"});
    EXPECT_EQ(boxStyle, MB_OK | MB_ICONINFORMATION);
    EXPECT_EQ(boxOwner, &parent); // a host's F3 while the dialog is hidden
    Show();
    Click(kKvReplaceAllButton);
    EXPECT_EQ(boxes.size(), 2u);
    EXPECT_EQ(boxOwner, dialog.get());
}

TEST_F(FindReplaceDialog, KeysFindHideAndBringTextsBack)
{
    Show();
    QLineEdit& find = Edit(kKvFindEdit);
    ASSERT_EQ(QApplication::focusWidget(), &find);
    QTest::keyClicks(&find, QStringLiteral("one"));
    QTest::keyClick(&find, Qt::Key_Return);
    find.setText(QStringLiteral("two"));
    Edit(kKvReplaceEdit).setFocus();
    QTest::keyClick(&Edit(kKvReplaceEdit), Qt::Key_F3);
    EXPECT_EQ(Asked(), (Log{L"find [one]", L"find [two]"}));
    QTest::keyClick(&find, Qt::Key_Up);
    EXPECT_EQ(Text(kKvFindEdit), L"one"); // "two" stands there already
    find.undo();
    EXPECT_EQ(Text(kKvFindEdit), L"two");
    QTest::keyClick(&find, Qt::Key_Up);
    EXPECT_EQ(Text(kKvFindEdit), L"one");
    QTest::keyClick(&find, Qt::Key_Down);
    EXPECT_EQ(Text(kKvFindEdit), L"two");
    QTest::keyClick(&Edit(kKvReplaceEdit), Qt::Key_Up);
    EXPECT_EQ(Text(kKvReplaceEdit), L""); // each edit has its own texts
    QTest::keyClick(&find, Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    Show();
    EXPECT_EQ(find.selectedText(), QStringLiteral("two"));
    Edit(kKvReplaceEdit).setFocus();
    CStringArray texts{L"three"}; // as a host's Ctrl+F does while the dialog is shown
    dialog->SetFindString(texts);
    EXPECT_EQ(QApplication::focusWidget(), &find);
    EXPECT_EQ(find.selectedText(), QStringLiteral("three"));
    texts = {L"two"};
    dialog->SetFindString(texts);
    dialog->close();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->DestroyWindow(), 1);
    EXPECT_EQ(dialog->Create(&parent), 1);
    EXPECT_EQ(Text(kKvFindEdit), L"two");
    QTest::keyClick(&Edit(kKvFindEdit), Qt::Key_Up);
    EXPECT_EQ(Text(kKvFindEdit), L"one");
}

TEST_F(FindReplaceDialog, OutlivesWhatTheEditorDoesToIt)
{
    editor.result = 2;
    editor.meanwhile = [this] { dialog.reset(); };
    CStringArray entries{L"gone"};
    dialog->SetFindString(entries);
    dialog->FindNext();
    EXPECT_FALSE(dialog);
    EXPECT_TRUE(boxes.empty());

    auto window = std::make_unique<QWidget>();
    CKvFindReplaceTxtDlg orphan;
    orphan.Create(window.get());
    orphan.show();
    window.reset();
    EXPECT_FALSE(orphan.IsCreated());
    orphan.SetNotify(&editor);
    editor.meanwhile = [] {};
    orphan.FindNext();
    EXPECT_EQ(boxes, Log{L"Can not Find \"\"!"});
}

} // namespace
