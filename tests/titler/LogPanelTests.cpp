// The workspace of the log: what its commands do.
#include "KvAppLogListCtrl.h"
#include "KvDialog.h"
#include "log/LogPanel.h"
#include "window/MainWindow.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

using namespace titler;

namespace {

struct LogWindow : testing::Test
{
    LogWindow()
    {
        window.Show(Workspace::Log);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        KvSetMessageBoxHandler([this](HWND, const std::wstring&, UINT) { return answer; });
        window.Say("one", LogType::Message);
        window.Say("two", LogType::Warning);
        window.Say("three", LogType::Error);
    }
    ~LogWindow() override { KvSetMessageBoxHandler({}); }
    void Press(int key, Qt::KeyboardModifiers modifiers)
    {
        QTest::keyClick(&list, static_cast<Qt::Key>(key), modifiers);
    }
    // What is shown; date lines have no content.
    QStringList Shown()
    {
        Press(Qt::Key_A, Qt::ControlModifier);
        CArray<int, int> lines;
        list.GetSelItems(lines);
        QStringList texts;
        for (const int line : lines)
            if (const CString text = list.GetItemText(line, 3); list.GetItemText(line, 0) != L"#")
                texts << QString::fromStdWString(text);
        return texts;
    }

    MainWindow window;
    CKvAppLogListCtrl& list = window.Log().List();
    int answer = IDYES;
};

TEST_F(LogWindow, FiltersByTypeAndText)
{
    const QList<QAction*> commands = window.Log().Commands();
    const auto errors = std::find_if(commands.begin(), commands.end(), [](const QAction* command) {
        return command != nullptr && command->text().contains("Errors");
    });
    ASSERT_NE(errors, commands.end());
    EXPECT_TRUE(QTest::qWaitFor([&] { return (*errors)->text().contains("(1)"); }));
    EXPECT_EQ(Shown(), (QStringList{"one", "two", "three"}));
    Press(Qt::Key_4, Qt::AltModifier);
    EXPECT_EQ(Shown(), (QStringList{"one", "two"}));
    Press(Qt::Key_F, Qt::ControlModifier | Qt::AltModifier);
    auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(field, nullptr);
    QTest::keyClicks(field, "t");
    list.setFocus();
    EXPECT_EQ(Shown(), QStringList{"two"});
    field->clear();
    Press(Qt::Key_4, Qt::AltModifier);
    EXPECT_EQ(Shown(), (QStringList{"one", "two", "three"}));
}

TEST_F(LogWindow, CopiesFollowsAndClears)
{
    Press(Qt::Key_C, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(QApplication::clipboard()->text().count(u'\n'), 2);
    Press(Qt::Key_L, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(list.GetFollowMode(), kKvAppLogFollowAlways);
    answer = IDNO;
    Press(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Shown().size(), 3);
    answer = IDYES;
    Press(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_EQ(list.GetItemCount(), 1);
    EXPECT_EQ(list.GetItemText(0, 0), L"#") << "the date is left";
    window.Say("four", LogType::Message);
    EXPECT_EQ(Shown(), QStringList{"four"});
    for (const QAction* command : window.Log().Commands()) {
        if (command != nullptr) {
            EXPECT_TRUE(command->isEnabled());
        }
    }
    window.Show(Workspace::Design);
    for (const QAction* command : window.Log().Commands()) {
        if (command != nullptr) {
            EXPECT_FALSE(command->isEnabled()) << "its key is another one there";
        }
    }
}

} // namespace
