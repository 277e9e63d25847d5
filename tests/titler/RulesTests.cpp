// The user's naming rules: the file, the editor and what the media panel makes of them.
#include "media/MediaPanel.h"
#include "media/RuleTrial.h"
#include "media/RulesPanel.h"
#include "window/MainWindow.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

#include <gtest/gtest.h>

using namespace titler;

namespace {

struct RuleFile : testing::Test
{
    void Write(const QByteArray& bytes)
    {
        QFile out(file);
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    }
    QByteArray Read()
    {
        QFile in(file);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }

    QTemporaryDir folder;
    QString file = folder.filePath("deep/er/rules.ini");
};

void SetMain(NamingRules& rules, const QString& main)
{
    rules.Edit(RuleEdit::Single, "main", [&](RuleList& list) { list.rules[0].main = main; });
}

TEST_F(RuleFile, KeepsTheRulesAndWhatIsNotOurs)
{
    NamingRules first;
    EXPECT_EQ(first.Load(file), ""); // missing: the built-in rules
    ASSERT_EQ(first.All().size(), 5);
    EXPECT_EQ(first.Save(), "");
    EXPECT_FALSE(QFile::exists(file)) << "nothing was changed";
    SetMain(first, "<File>.mov");
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(file); })) << "it is written by itself";
    Write(Read() + "\n[Host]\nKey=1\n; remark\n");
    {
        NamingRules second;
        EXPECT_EQ(second.Load(file), "");
        EXPECT_EQ(second.All(), first.All());
        EXPECT_FALSE(second.Steps().canUndo());
        SetMain(second, "<File>.mxf");
    } // written when it goes
    EXPECT_TRUE(Read().contains("<File>.mxf"));
    EXPECT_TRUE(Read().contains("Key=1") && Read().contains("; remark"));
}

TEST_F(RuleFile, APatternTooLongToBeShownStays)
{
    const QByteArray wide(200, 'w');
    QDir().mkpath(QFileInfo(file).path());
    Write("[FileNamingRuleHead]\nFileNamingRuleCnt=1\n[FileNamingRule0]\nClass=9\nMainRule=" + wide +
          "\nAdditionRuleCount=2\nAdditionRule0=" + wide + "2\nAdditionRule1=<File>B\n");
    NamingRules rules;
    EXPECT_EQ(rules.Load(file), "");
    EXPECT_EQ(rules.All()[0].additions, (QStringList{"", "<File>B"}));
    rules.Edit(RuleEdit::Single, "class", [](RuleList& list) { list.rules[0].ruleClass = 1; });
    EXPECT_EQ(rules.Save(), "");
    EXPECT_TRUE(Read().contains("MainRule=" + wide + "\n") || Read().contains("MainRule=" + wide + "\r"));
    EXPECT_TRUE(Read().contains("AdditionRule0=" + wide + "2"));
    EXPECT_TRUE(Read().contains("Class=1"));
}

TEST_F(RuleFile, WhatCannotBeReadOrWrittenIsSaidAndLeftAlone)
{
    NamingRules rules;
    EXPECT_TRUE(rules.Load(folder.path()).contains(folder.path()));
    EXPECT_EQ(rules.All().size(), 0);
    EXPECT_EQ(rules.Selected(), -1);
    rules.Reset("reset");
    EXPECT_EQ(rules.Save(), ""); // of no file any more
    file = folder.filePath("file");
    Write("");
    NamingRules blocked;
    EXPECT_EQ(blocked.Load(folder.filePath("file/rules.ini")), "");
    SetMain(blocked, "x");
    EXPECT_TRUE(blocked.Save().contains("rules.ini"));
    EXPECT_NE(blocked.Save(), "") << "it is still not written";
}

TEST(RuleTrial, NamesTheFirstRuleAndPattern)
{
    struct Row
    {
        const char* main;
        const char* other;
        Trial trial;
        int rule;
        const char* addition;
    };
    const Row rows[] = {
        {"a.mxf", "a_A1.wav", Trial::Together, 0, "<File>_A<Number><Ext>"},
        {"/clips/a.mxf", "C:\\sound\\a A2.wav", Trial::Together, 0, "<File> A<Number><Ext>"},
        {"a.mxf", "b_A1.wav", Trial::NotTogether, -1, ""},
        {"a.mxf", "a_Ax.wav", Trial::NotTogether, -1, ""}, // no number to read
        {"a_A1.wav", "a_A2.wav", Trial::Together, 2,
         "<File><Ext>"}, // by the main pattern, which is asked with each
        {"noending", "a.wav", Trial::NoMainFile, -1, ""},
    };
    NamingRules rules;
    for (const Row& row : rows) {
        const TrialResult result = TryRules(rules.All(), row.main, row.other);
        EXPECT_EQ(result.trial, row.trial) << row.main << ' ' << row.other;
        EXPECT_EQ(result.rule, row.rule) << row.main << ' ' << row.other;
        EXPECT_EQ(result.addition.toStdString(), row.addition) << row.main << ' ' << row.other;
    }
    EXPECT_EQ(TryRules({}, "a.mxf", "a.wav").trial, Trial::NoMainFile);
}

struct RulesWorkspace : testing::Test
{
    RulesWorkspace()
    {
        window.resize(780, 560);
        window.Show(Workspace::Rules);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    template <typename Field>
    Field& Find(const char* name)
    {
        return *window.findChild<Field*>(QLatin1String(name));
    }
    QString Fault() { return fault.isHidden() ? QString() : fault.text(); }
    const NamingRule& Rule() { return rules.All()[rules.Selected()]; }
    void Undo() { QTest::keyClick(window.focusWidget(), Qt::Key_Z, Qt::ControlModifier); }

    QTemporaryDir folder;
    MainWindow window;
    NamingRules& rules = window.Rules();
    QTreeWidget& list = Find<QTreeWidget>("rules");
    QLineEdit& main = Find<QLineEdit>("ruleMain");
    QPlainTextEdit& additions = Find<QPlainTextEdit>("ruleAdditions");
    QLabel& fault = Find<QLabel>("ruleFault");
};

TEST_F(RulesWorkspace, TakesSoundPatternsAtOnceAndKeepsRefusedOnesInTheField)
{
    main.setFocus();
    main.selectAll();
    QTest::keyClicks(&main, "<File>_X");
    EXPECT_EQ(Rule().main, "<File>_X");
    EXPECT_EQ(list.topLevelItem(0)->text(1), "<File>_X");
    QTest::keyClicks(&main, "<Bad>");
    EXPECT_EQ(Rule().main, "<File>_X<Bad");
    EXPECT_TRUE(Fault().contains("<Bad>"));
    additions.setPlainText("<File><Ext>\n\n<File>?"); // a fault of the other field does not hide this one
    EXPECT_EQ(Rule().additions.size(), 4);
    additions.setPlainText("<File><Ext>\n\n<File>9");
    EXPECT_EQ(Rule().additions, (QStringList{"<File><Ext>", "<File>9"}));
    EXPECT_EQ(main.text(), "<File>_X<Bad>");
    EXPECT_TRUE(Fault().contains("<Bad>"));
    Undo(); // drops what was refused
    EXPECT_EQ(main.text(), "<File>_X<Bad");
    EXPECT_EQ(Fault(), "");
    Undo();
    EXPECT_EQ(Rule().additions.size(), 4);
    EXPECT_EQ(additions.toPlainText().count('\n'), 3);
    Undo();
    EXPECT_EQ(main.text(), "<File><Ext>");
    EXPECT_FALSE(rules.Steps().canUndo());
    EXPECT_FALSE(window.Project().Steps().canRedo()) << "the project has steps of its own";
}

TEST_F(RulesWorkspace, AddsMovesAndRemovesWithUndo)
{
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(rules.Selected(), 1);
    QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(rules.All().size(), 6);
    EXPECT_EQ(rules.Selected(), 2);
    EXPECT_EQ(window.focusWidget(), &main);
    QTest::keyClick(&main, Qt::Key_Up, Qt::AltModifier);
    QTest::keyClick(&main, Qt::Key_Up, Qt::AltModifier);
    QTest::keyClick(&main, Qt::Key_Up, Qt::AltModifier); // is the first
    EXPECT_EQ(rules.Selected(), 0);
    EXPECT_EQ(rules.All()[0].additions, QStringList("<File>_<Number><Ext>"));
    list.setFocus();
    for (int left = 6; left > 0; --left) {
        EXPECT_EQ(list.topLevelItemCount(), left);
        QTest::keyClick(&list, Qt::Key_Delete);
    }
    EXPECT_EQ(rules.Selected(), -1);
    EXPECT_FALSE(main.isEnabled());
    QTest::keyClick(&list, Qt::Key_Delete);
    rules.Steps().setIndex(0);
    EXPECT_EQ(rules.All(), NamingRules().All());
    EXPECT_EQ(list.topLevelItemCount(), 5);
    window.Show(Workspace::Design); // there the keys of the rules do nothing
    QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(rules.All().size(), 5);
}

TEST_F(RulesWorkspace, ChangedRulesGroupTheFolderAnew)
{
    for (const char* name : {"clip.mov", "clip-7.srt"})
        EXPECT_TRUE(QFile(folder.filePath(name)).open(QIODevice::WriteOnly));
    window.Media().OpenFolder(folder.path());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !window.Media().IsBusy(); }));
    EXPECT_EQ(window.Media().Model().ClipsWithSiblings(), 0);
    additions.setPlainText("<File>-<Number><Ext>");
    window.Show(Workspace::Clips);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !window.Media().IsBusy(); }));
    EXPECT_EQ(window.Media().Model().ClipsWithSiblings(), 1);
}

} // namespace
