// What is unsaved is kept beside the user's files, and offered by the next start.
#include "SubtitleWindow.h"
#include "recovery/Autosave.h"
#include "recovery/RecoveryDialog.h"

#include <QDir>
#include <QListWidget>
#include <QPushButton>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

using namespace titler;

namespace {

struct Recovery : SubtitleWindow
{
    Recovery()
    {
        place = folder.filePath("recovery");
        EXPECT_EQ(window.Project().SaveAs(folder.filePath("fade.ktitle")), "");
        QApplication::processEvents();
    }
    std::unique_ptr<Autosave> Start()
    {
        return std::make_unique<Autosave>(window.Project(), panel, place, AutosavePace{0, 0});
    }
    void Retitle(const QString& text)
    {
        window.Project().Edit(EditKind::Single, "text", [&](Project& project) { project.title.text = text; });
    }
    QStringList Files() { return QDir(place).entryList({"*.unsaved"}, QDir::Files); }
    /// What a running program's file holds, read past its lock.
    bool Holds(const char* text)
    {
        QFile file(place + '/' + Files().value(0));
        return file.open(QIODevice::ReadOnly) && file.readAll().contains(text);
    }
    bool WaitForNone()
    {
        return QTest::qWaitFor([&] { return QDir(place).entryList(QDir::Files).isEmpty(); });
    }
    /// As a program that is killed leaves it: the file is there, and nobody holds it.
    void Leave(const QString& title, const QDateTime& time)
    {
        UnsavedWork work{"/films/" + title + ".ktitle", true, NewProject(), {}, time};
        work.project.title.text = title;
        RecoveryFile file(folder.filePath("running"));
        ASSERT_TRUE(file.Write(work).IsKept());
        QDir().mkpath(place);
        for (const QString& name : QDir(file.Folder()).entryList({"*.unsaved"}, QDir::Files))
            ASSERT_TRUE(QFile::copy(file.Folder() + '/' + name, place + '/' + name));
        file.Remove();
    }

    QString place;
};

TEST_F(Recovery, UnsavedWorkIsThereAsLongAsItIsUnsaved)
{
    const std::unique_ptr<Autosave> autosave = Start();
    QApplication::processEvents();
    EXPECT_FALSE(QDir(place).exists()) << "there is nothing to keep";
    Retitle("Second");
    ASSERT_TRUE(QTest::qWaitFor([&] { return Holds("Second"); }));
    EXPECT_TRUE(RecoveryFile::FindLeft(place).empty()) << "its program runs";
    window.Project().Undo();
    EXPECT_TRUE(WaitForNone());
    window.Project().Redo();
    ASSERT_TRUE(QTest::qWaitFor([&] { return Holds("Second"); }));
    EXPECT_EQ(window.Project().SaveAs(folder.filePath("fade.ktitle")), "");
    EXPECT_TRUE(WaitForNone());
}

TEST_F(Recovery, AnEndOfTheProgramTakesItAway)
{
    std::unique_ptr<Autosave> autosave = Start();
    Retitle("Second");
    ASSERT_TRUE(QTest::qWaitFor([&] { return Holds("Second"); }));
    autosave.reset();
    EXPECT_TRUE(QDir(place).entryList(QDir::Files).isEmpty());
}

TEST_F(Recovery, WhatADragHasDoneIsKeptWhileItLasts)
{
    const std::unique_ptr<Autosave> autosave = Start();
    const int run = window.Project().BeginRun("drag");
    window.Project().UpdateRun([](Project& project) { project.title.text = "Half"; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return Holds("Half"); }));
    EXPECT_TRUE(window.Project().IsInRun(run)) << "and nobody has ended it";
    window.Project().CancelRun();
    EXPECT_TRUE(WaitForNone()) << "nothing is unsaved any more";
}

TEST_F(Recovery, WhatIsTypedInACellIsKeptWhileItIsOpen)
{
    ASSERT_TRUE(Import(kThree));
    window.Project().EndRun();
    panel.Steps().setClean();
    EXPECT_EQ(window.Project().SaveAs(folder.filePath("fade.ktitle")), "");
    const std::unique_ptr<Autosave> autosave = Start();
    panel.List().setFocus();
    Press(Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(&panel.List(), Qt::Key_F2);
    ASSERT_TRUE(panel.List().IsEditing());
    QTest::keyClicks(QApplication::focusWidget(), "typed");
    ASSERT_TRUE(QTest::qWaitFor([&] { return Holds("typed"); }));
    EXPECT_TRUE(panel.List().IsEditing()) << "and the cell stays open";
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_TRUE(WaitForNone());
}

TEST_F(Recovery, SubtitlesComeBackWithAllThatBelongsToThem)
{
    ASSERT_TRUE(Import("WEBVTT Film\r\n\r\nSTYLE\r\n::cue {}\r\n\r\nfirst\r\n"
                       "00:00:01.003 --> 00:00:02.000 align:left\r\nOne\r\n\r\n"
                       "00:00:03.000 --> 00:00:04.000\r\nTwo\r\n",
                       "in.vtt"));
    Press(Qt::Key_1, Qt::AltModifier);
    const std::unique_ptr<Autosave> autosave = Start();
    Retitle("Second");
    ASSERT_TRUE(QTest::qWaitFor([&] { return Holds("Second"); }));
    const SubtitleState before = panel.State().value();
    const Lines rows = Rows();
    // The same, as a file has it.
    const SubtitleState state = SubtitlesFromJson(SubtitlesToJson(before));
    ASSERT_TRUE(Import(kThree));
    panel.Restore(state);
    EXPECT_EQ(Rows(), rows);
    EXPECT_EQ(panel.FileName(), folder.filePath("in.vtt"));
    EXPECT_EQ(panel.IsModified(), before.isModified);
    const QByteArray written = Export("in.vtt");
    for (const char* part : {"WEBVTT Film\r\n", "::cue", "first\r\n00:00:01.003", "align:left"})
        EXPECT_TRUE(written.contains(part)) << part << " in " << written.toStdString();
}

TEST_F(Recovery, WhatIsDoneWhileRowsAreReadIsInTheirState)
{
    QByteArray file;
    for (int i = 0; i < 300; ++i)
        file += QStringLiteral("%1\n00:%2:%3,000 --> 00:%2:%3,900\nText %1\n\n")
                    .arg(i + 1)
                    .arg(i / 60, 2, 10, QLatin1Char('0'))
                    .arg(i % 60, 2, 10, QLatin1Char('0'))
                    .toUtf8();
    ASSERT_TRUE(Import(file));
    const auto read = [this] { EXPECT_FALSE(panel.State(QDeadlineTimer(0))) << "some are still to be read"; };
    read();
    list.SetTimeCode(0, 7, 1);
    list.DeleteItem(5);
    list.InserItem(3, L"New", 1, 2, L"Top");
    read();
    list.SetSelItem(10);
    list.setFocus();
    Press(Qt::Key_Delete);
    ASSERT_EQ(list.GetItemCount(), 299);
    read();
    panel.Steps().undo();
    list.ModifyItem(10, L"Back, and changed", nullptr, nullptr, nullptr);
    list.SortItems(kKvSubTitleText, 0);
    const SubtitleState state = panel.State().value();
    ASSERT_EQ(state.rows.size(), 300u);
    for (int row = 0; row < 300; ++row) {
        const SubtitleState::Row& is = *state.rows[static_cast<std::size_t>(row)];
        EXPECT_EQ(is.text.toStdWString(), list.GetItemText(row, kKvSubTitleText));
        EXPECT_EQ(is.templateName.toStdWString(), list.GetItemText(row, kKvSubTitleTemplate));
        EXPECT_EQ((SubtitleTimes{is.in, is.out}), list.Times(row)) << row;
    }
}

TEST_F(Recovery, TheNextStartRestoresDiscardsOrWaits)
{
    const QDateTime now = QDateTime::currentDateTime();
    Leave("Older", now.addSecs(-60));
    Leave("Newer", now);
    QFile broken(place + "/broken.unsaved");
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("{\"version\": 1");
    broken.close();
    window.KeepWork(place);
    window.Project().New();
    const auto offer = [&](const char* button) {
        QTimer::singleShot(0, [button] {
            auto* dialog = qobject_cast<RecoveryDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            for (QPushButton* each : dialog->findChildren<QPushButton*>())
                if (each->text().remove('&') == QLatin1String(button))
                    return each->click();
            FAIL() << "no button " << button;
        });
        return window.OfferWork();
    };
    EXPECT_FALSE(offer("Later"));
    EXPECT_EQ(Files().size(), 3);
    answer = IDYES;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<RecoveryDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        EXPECT_TRUE(RecoveryFile::FindLeft(place).empty()) << "another program is offered it, too";
        auto& left = *dialog->findChild<QListWidget*>();
        ASSERT_EQ(left.count(), 2);
        EXPECT_TRUE(left.item(0)->text().startsWith("Newer.ktitle\n"));
        left.setCurrentRow(1);
        for (QPushButton* each : dialog->findChildren<QPushButton*>())
            if (each->text() == "&Discard")
                each->click();
        EXPECT_EQ(left.count(), 1);
        dialog->accept();
    });
    EXPECT_TRUE(window.OfferWork());
    EXPECT_EQ(asked.size(), 1);
    EXPECT_EQ(window.Project().Current().title.text, "Newer");
    EXPECT_EQ(window.Project().FileName(), "/films/Newer.ktitle");
    EXPECT_TRUE(window.Project().IsModified());
    EXPECT_EQ(Files().size(), 2) << "the broken one, and what is not saved still";
    EXPECT_FALSE(window.OfferWork()) << "it is this program's";
}

#ifdef Q_OS_UNIX
TEST_F(Recovery, AFullDiskIsSaidOnceAndKeepsWhatIsThere)
{
    const std::unique_ptr<Autosave> autosave = Start();
    Retitle("Second");
    ASSERT_TRUE(QTest::qWaitFor([&] { return Holds("Second"); }));
    QStringList said;
    int kept = 0;
    QObject::connect(autosave.get(), &Autosave::Failed, [&](const QString& fault) { said << fault; });
    QObject::connect(autosave.get(), &Autosave::Kept, [&] { ++kept; });
    const auto old = std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit full{1, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
    Retitle("Third");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !said.isEmpty(); }));
    Retitle("Fourth");
    QTest::qWait(50); // it tries again, without a word
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, old);
    EXPECT_EQ(said.size(), 1);
    EXPECT_TRUE(Holds("Second") || Holds("Fourth")) << "nothing is lost";
    EXPECT_TRUE(QTest::qWaitFor([&] { return kept > 0 && Holds("Fourth"); }));
}
#endif

} // namespace
