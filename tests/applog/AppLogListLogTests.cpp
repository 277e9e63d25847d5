// Saving, loading, copying, the menu and the clearing of the log list.
#include "AppLogListFixture.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QDate>
#include <QFileDialog>
#include <QMenu>
#include <QPointer>
#include <QSignalSpy>
#include <QTimer>

#include <functional>

namespace {

class AppLogListLog : public LogFixture
{
protected:
    ~AppLogListLog() override { KvSetMessageBoxHandler({}); }

    std::wstring Path(const char* name = "a.log") const { return KvFromQString(folder.filePath(name)); }
    QByteArray Bytes(const char* name = "a.log") const
    {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll().replace("\r\n", "\n") : QByteArray("none");
    }
    QString Copied() const { return QApplication::clipboard()->text(); }
    /// Opens the context menu, looks at it, and chooses an item by its text; an empty one chooses none.
    void Menu(const QString& choice, const std::function<void(QMenu&)>& look = {})
    {
        QTimer::singleShot(0, [&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_TRUE(menu);
            if (look)
                look(*menu);
            for (QAction* action : menu->actions()) {
                if (!choice.isEmpty() && action->text() == choice) {
                    menu->setActiveAction(action);
                    QTest::keyClick(menu, Qt::Key_Return);
                    return;
                }
            }
            menu->close();
        });
        QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 200}, log.mapToGlobal(QPoint(5, 200)));
        QApplication::sendEvent(&log, &event);
    }
    void Answer(int answer)
    {
        KvSetMessageBoxHandler([this, answer](HWND, const std::wstring& text, UINT style) {
            boxes.push_back(text);
            styles.push_back(style);
            return answer;
        });
    }

    std::vector<std::wstring> boxes;
    std::vector<UINT> styles;
};

TEST_F(AppLogListLog, WhatIsSavedIsLoadedAgain)
{
    log.AddAppLogMsg({Message(1, L"eins"), Message(0, L"two\r\nlines\x2028"), Message(3, L"\u00E4", 2, 123)});
    EXPECT_EQ(log.SaveAppLogToFile(Path().c_str(), 0), 1);
    EXPECT_EQ(Bytes(), "[1][05][2016/03/01-09:05:07.042][eins]\n"
                       "[0][05][2016/03/01-09:05:07.042][two\n\tlines\xE2\x80\xA8]\n"
                       "[3][123][2016/03/02-09:05:07.042][\xC3\xA4]\n");
    TestLog other;
    other.Initialize(1);
    other.AddAppLogMsg(Message(5, L"before", 9));
    EXPECT_EQ(other.LoadAppLogFmFile(Path().c_str(), 0), 1);
    EXPECT_EQ(other.GetItemCount(), 6) << "date lines at both new days";
    EXPECT_EQ(other.LoadAppLogFmFile(Path().c_str(), 1), 1);
    EXPECT_EQ(other.GetItemCount(), 4) << "none before the first message";
    EXPECT_EQ(other.GetItemText(1, 3), L"two\nlines\x2028");
    EXPECT_EQ(other.GetLastSelItem(), 3);
    EXPECT_EQ(other.GetTypeCount(5), 0);
    for (const wchar_t* path : {static_cast<const wchar_t*>(nullptr), L"", L"/", L"/nowhere.log"})
        EXPECT_EQ(other.LoadAppLogFmFile(path, 1), 0);
    EXPECT_EQ(other.GetItemCount(), 4);
    QFile(folder.filePath("empty.log")).open(QIODevice::WriteOnly);
    EXPECT_EQ(other.LoadAppLogFmFile(Path("empty.log").c_str(), 0), 1);
    EXPECT_EQ(other.GetItemCount(), 4);
    EXPECT_EQ(other.LoadAppLogFmFile(Path("empty.log").c_str(), 1), 1);
    EXPECT_EQ(other.GetItemCount(), 0);
}

TEST_F(AppLogListLog, SelectedLinesAndNothingToWrite)
{
    Answer(IDOK);
    log.AddTimeSeparateLine({2016, 3, 0, 1, 0, 0, 0, 0});
    log.SetSelItem(0);
    QApplication::clipboard()->setText("as before");
    for (const int selectedOnly : {0, 1}) {
        EXPECT_EQ(log.SaveAppLogToFile(Path().c_str(), selectedOnly), 0);
        EXPECT_EQ(log.SaveAppLogToSysClipboard(selectedOnly), 0);
    }
    EXPECT_EQ(Bytes(), "none");
    EXPECT_EQ(Copied(), "as before");
    log.AddAppLogMsg({Message(1, L"a"), Message(2, L"b\nb"), Message(3, L"c")});
    log.SetSelItem({3, 0, 2});
    EXPECT_EQ(log.SaveAppLogToFile(Path().c_str(), 1), 1);
    EXPECT_EQ(Bytes().count('\n'), 3);
    EXPECT_EQ(log.SaveAppLogToSysClipboard(1), 1);
    const QString both = "[2][05][2016/03/01-09:05:07.042][b\nb]\n[3][05][2016/03/01-09:05:07.042][c]";
    EXPECT_EQ(Copied(), both);
    EXPECT_EQ(log.SaveAppLogToSysClipboard(0), 1);
    EXPECT_EQ(Copied().count('\n'), 3);
    Key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Copied(), both);
    Key(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "[2][05][b\nb]\n[3][05][c]");
    log.SetTypeFilter(1u << 3);
    Key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Copied(), "[3][05][2016/03/01-09:05:07.042][c]") << "hidden lines do not count";
    EXPECT_EQ(log.SaveAppLogToFile(Path("no/such.log").c_str(), 0), 0);
    EXPECT_EQ(log.SaveAppLogToFile(nullptr, 0), 0);
    EXPECT_TRUE(boxes.empty()) << "a host's calls show none";
}

TEST_F(AppLogListLog, MenuHoldsItsItems)
{
    const auto items = [this] {
        QStringList lines;
        Menu({}, [&](QMenu& menu) {
            for (const QAction* action : menu.actions())
                lines << (action->isSeparator() ? "-" : action->text()) + (action->isChecked() ? "*" : "") +
                             (action->isEnabled() ? "" : "!");
        });
        return lines;
    };
    EXPECT_EQ(items(), (QStringList{"Displays Up to 1000 lines", "Displays Up to 2000 lines",
                                    "Displays Up to 3000 lines", "Displays Up to custom(500) lines*", "-",
                                    "Save As Selected Log to Disk File...!",
                                    "Save As All Log to Disk File...", "-", "Copy Selected Log to Clipboard!",
                                    "Copy All Log to Clipboard", "-", "Clear All Log!"}));
    log.AddAppLogMsg(Message(0, L"x"));
    Menu("Displays Up to 2000 lines");
    EXPECT_EQ(log.GetMaxLogLineCounts(), 2000);
    EXPECT_EQ(items(), (QStringList{"Displays Up to 1000 lines", "Displays Up to 2000 lines*",
                                    "Displays Up to 3000 lines", "-", "Save As Selected Log to Disk File...",
                                    "Save As All Log to Disk File...", "-", "Copy Selected Log to Clipboard",
                                    "Copy All Log to Clipboard", "-", "Clear All Log"}));
    log.SetTypeFilter(2);
    EXPECT_TRUE(items().contains("Copy Selected Log to Clipboard!")) << "what is selected is hidden";
    log.SetMaxLogLineCounts(7, 0);
    Menu("Displays Up to custom(7) lines");
    EXPECT_EQ(log.GetMaxLogLineCounts(), 7);
}

TEST_F(AppLogListLog, MenuSavesAndTellsWhatWentWrong)
{
    Answer(IDOK);
    const auto save = [this](const char* name) {
        QTimer::singleShot(0, [this, name] { // behind the menu's
            QTimer::singleShot(0, [this, name] {
                auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
                ASSERT_TRUE(dialog);
                EXPECT_EQ(dialog->defaultSuffix(), "log");
                EXPECT_EQ(dialog->nameFilters(), QStringList{"Log Files (*.log)"});
                EXPECT_EQ(dialog->selectedFiles().value(0).section('/', -1), "Untitled.log");
                dialog->setOption(QFileDialog::DontConfirmOverwrite);
                dialog->setDirectory(folder.path());
                dialog->selectFile(folder.filePath(name));
                QMetaObject::invokeMethod(dialog, "accept");
            });
        });
        Menu("Save As All Log to Disk File...");
    };
    save("a.log");
    EXPECT_EQ(boxes, (std::vector<std::wstring>{
                         L"Failed to save log information, it is empty or selection is empty."}));
    Menu("Copy All Log to Clipboard");
    EXPECT_EQ(boxes.back(), L"Failed to copy log information, it is empty or selection is empty.");
    boxes.clear();
    log.AddAppLogMsg(Message(0, L"x"));
    save("a.log");
    EXPECT_EQ(Bytes(), "[0][05][2016/03/01-09:05:07.042][x]\n");
    Menu("Copy All Log to Clipboard");
    EXPECT_EQ(Copied(), "[0][05][2016/03/01-09:05:07.042][x]");
    EXPECT_TRUE(boxes.empty());
    ASSERT_TRUE(QFile::link("/dev/full", folder.filePath("full.log")));
    ASSERT_TRUE(QFile::link(folder.filePath("loop.log"), folder.filePath("loop.log")));
    const std::pair<const char*, const wchar_t*> failures[] = {
        {"full.log", L": not a regular file."},
        {"no/such.log", L": No such file or directory."},
        {"loop.log", L": Too many levels of symbolic links."},
    };
    for (const auto& [name, reason] : failures) {
        boxes.clear();
        save(name);
        ASSERT_EQ(boxes.size(), 1u) << name;
        EXPECT_TRUE(boxes[0].starts_with(L"The log is not saved: cannot write '")) << name;
        EXPECT_TRUE(boxes[0].ends_with(reason)) << name;
    }
    EXPECT_EQ(log.SaveAppLogToFile(KvFromQString(folder.path()).c_str(), 0), 0) << "a folder";
}

TEST_F(AppLogListLog, ClearingAsksAndTellsTheParent)
{
    Fill(3);
    Answer(IDNO);
    Menu("Clear All Log");
    EXPECT_EQ(boxes, (std::vector<std::wstring>{L"Are you sure to clear all log ?"}));
    EXPECT_EQ(styles[0], MB_YESNOCANCEL | MB_ICONQUESTION);
    EXPECT_EQ(log.GetItemCount(), 3);
    QStringList told;
    KvMessageSink sink(&parent, [&](UINT message, WPARAM id, LPARAM record) -> std::optional<LRESULT> {
        const auto& header = *reinterpret_cast<const KvNotifyHeader*>(record);
        EXPECT_EQ(message, WM_NOTIFY);
        EXPECT_EQ(header.hwndFrom, &log);
        told << QString("%1 %2 %3 lines %4")
                    .arg(id)
                    .arg(header.idFrom)
                    .arg(header.code)
                    .arg(log.GetItemCount());
        return 0;
    });
    QObject::connect(&log, &CKvAppLogListCtrl::LogCleared, &parent, [&] { told << "signal"; });
    Answer(IDYES);
    Menu("Clear All Log");
    EXPECT_EQ(told, (QStringList{"7 7 1 lines 1", "signal"}));
    const QDate today = QDate::currentDate();
    EXPECT_EQ(log.GetItemText(0, 3).substr(0, 10), KvFromQString(today.toString("yyyy/MM/dd")));
    EXPECT_EQ(Selected(), Selection{});
    EXPECT_EQ(log.GetTypeCount(0), 0);
    log.AddAppLogMsg(Message(0, L"x", 28));
    EXPECT_EQ(log.GetItemCount(), 2) << "the message before is forgotten";
}

TEST_F(AppLogListLog, MayDieInItsMenuItsBoxAndItsNotification)
{
    for (const char* when : {"menu", "box", "notification"}) {
        const QPointer<TestLog> alive(Doomed(L"x"));
        KvSetMessageBoxHandler([&](HWND, const std::wstring&, UINT) {
            if (when == std::string("box"))
                delete alive;
            return IDYES;
        });
        KvMessageSink sink(&parent, [&](UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
            delete alive;
            return 0;
        });
        QTimer::singleShot(0, [&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_TRUE(menu);
            if (when == std::string("menu")) {
                delete alive;
                return;
            }
            menu->setActiveAction(menu->actions().back());
            QTest::keyClick(menu, Qt::Key_Return);
        });
        QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 100}, alive->mapToGlobal(QPoint(5, 100)));
        QApplication::sendEvent(alive, &event);
        EXPECT_TRUE(alive.isNull()) << when;
    }
}

} // namespace
