// What the tests of the workspace of subtitles share.
#pragma once

#include "KvAppLogListCtrl.h"
#include "log/LogPanel.h"
#include "subtitles/SubtitleList.h"
#include "subtitles/SubtitlePanel.h"
#include "subtitles/SubtitleText.h"
#include "window/MainWindow.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QInputDialog>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUndoStack>

#include <gtest/gtest.h>

namespace titler {

inline constexpr const char* kThree = "1\n00:00:01,000 --> 00:00:03,000\nHello there\nfriend\n\n"
                                      "2\nnot a time\nlost\n\n"
                                      "3\n00:00:04,000 --> 00:00:06,000\n\xe4\xbd\xa0\xe5\xa5\xbd\n\n";

/// The program's window with its subtitles in front, 25 frames a second.
struct SubtitleWindow : testing::Test
{
    SubtitleWindow()
    {
        window.resize(780, 560);
        window.Project().Edit(EditKind::Single, "rate", [](Project& project) {
            SetVideoFormat(project, {kKvAspect16x9, kKvFrameRate25, kKvScanProgressive, 1920, 1080});
            project.duration = 1000;
        });
        window.Show(Workspace::Subtitles);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        KvSetMessageBoxHandler([this](HWND, const std::wstring& text, UINT) {
            asked << QString::fromStdWString(text);
            return answer;
        });
    }
    ~SubtitleWindow() override { KvSetMessageBoxHandler({}); }
    bool Import(const QByteArray& bytes, const char* name = "in.srt")
    {
        QFile file(folder.filePath(QLatin1String(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        return panel.Import(file.fileName());
    }
    QByteArray Export(const char* name)
    {
        QFile file(folder.filePath(QLatin1String(name)));
        EXPECT_TRUE(panel.Export(file.fileName()));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    std::string Row(int row)
    {
        DWORD in = kNoTime;
        DWORD out = kNoTime;
        list.GetTimeCode(row, in, out);
        const QString text = QString::fromStdWString(list.GetItemText(row, kKvSubTitleText));
        const QString all = QStringLiteral("%1-%2 %3").arg(static_cast<int>(in)).arg(static_cast<int>(out));
        return all.arg(text).toStdString();
    }
    using Lines = std::vector<std::string>;
    Lines Rows()
    {
        Lines rows;
        for (int row = 0; row < list.GetItemCount(); ++row)
            rows.push_back(Row(row));
        return rows;
    }
    void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&list, static_cast<Qt::Key>(key), modifiers);
    }
    void OpenCell(const QString& typed) // of the current row's text, and types over it
    {
        Press(Qt::Key_F2);
        QWidget* editor = QApplication::focusWidget();
        ASSERT_TRUE(list.IsEditing());
        QTest::keyClicks(editor, typed);
    }
    void SetRate(EKvFrameRate rate)
    {
        window.Project().Edit(EditKind::Single, "rate", [&](Project& project) {
            SetVideoFormat(project, {kKvAspect16x9, rate, kKvScanProgressive, 1280, 720});
        });
    }
    QAction* Command(const QString& name)
    {
        for (QAction* command : panel.Commands())
            if (command != nullptr && command->text().remove(u'&').startsWith(name))
                return command;
        return nullptr;
    }
    // Answers the questions to come, one after the other; the last one is cancelled unless it was accepted.
    void Answer(QStringList answers, QString* label = nullptr)
    {
        QTimer::singleShot(0, &window, [=] {
            auto* dialog = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            for (const QString& typed : answers) {
                dialog->setTextValue(typed);
                dialog->accept();
                if (!dialog->isVisible())
                    return;
            }
            if (label != nullptr)
                *label = dialog->labelText();
            dialog->reject();
        });
    }
    void Shift(const QString& by)
    {
        Answer({by});
        Command("Shift")->trigger();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window)) << "its keys work again";
    }
    void Select(int row) // as the user does
    {
        list.setFocus();
        Press(Qt::Key_Home);
        for (int i = 0; i < row; ++i)
            Press(Qt::Key_Down);
    }
    bool LogHas(const QString& text)
    {
        CKvAppLogListCtrl& log = window.Log().List();
        for (int line = 0; line < log.GetItemCount(); ++line)
            if (QString::fromStdWString(log.GetItemText(line, 3)).contains(text))
                return true;
        return false;
    }

    QTemporaryDir folder;
    MainWindow window;
    SubtitlePanel& panel = window.Subtitles();
    SubtitleList& list = panel.List();
    QStringList asked;
    int answer = IDYES;
};

} // namespace titler
