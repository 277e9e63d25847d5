// Find and replace over titles and subtitles, and the character map, through the window's own commands.
#include "KvCharMapDlg.h"
#include "KvFindReplaceTxtDlg.h"
#include "SubtitleWindow.h"
#include "edit/PageSteps.h"
#include "project/Pages.h"
#include "window/Settings.h"
#include "window/Texts.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QStatusBar>

namespace titler {
namespace {

struct TextTools : SubtitleWindow
{
    TextTools()
    {
        window.Show(Workspace::Design);
        SetTitle("Ferry to the harbour");
        AddPage(window.Project());
        SetTitle("The last ferry, the first ferry");
        window.Project().ChoosePage(0);
        EXPECT_TRUE(Import("1\n00:00:01,000 --> 00:00:03,000\nA ferry leaves\n\n"
                           "2\n00:00:04,000 --> 00:00:06,000\nnobody\n\n"));
        window.Show(Workspace::Design);
    }
    void SetTitle(const char* text)
    {
        window.Project().Edit(EditKind::Single, "text",
                              [&](Project& project) { project.title.text = QLatin1String(text); });
    }
    void Run(UINT textId)
    {
        for (const auto& menu : window.AllCommands().Menus())
            for (QAction* action : menu->actions())
                if (action->text() == Text(textId))
                    return action->trigger();
        FAIL() << textId;
    }
    template <typename Dialog>
    Dialog& Open(UINT textId)
    {
        Run(textId);
        for (QWidget* one : QApplication::topLevelWidgets())
            if (auto* dialog = qobject_cast<Dialog*>(one); dialog != nullptr && dialog->isVisible())
                return *dialog;
        throw std::runtime_error("no dialog");
    }
    // Types the texts and presses a button of the dialog.
    void Ask(const char* find, const char* replacement, UINT button)
    {
        auto& dialog = Open<CKvFindReplaceTxtDlg>(kTextFindReplace);
        qobject_cast<QLineEdit*>(dialog.GetDlgItem(kKvFindEdit))->setText(QLatin1String(find));
        qobject_cast<QLineEdit*>(dialog.GetDlgItem(kKvReplaceEdit))->setText(QLatin1String(replacement));
        QTest::mouseClick(dialog.GetDlgItem(button), Qt::LeftButton);
    }
    QPlainTextEdit& Field()
    {
        for (auto* field : window.findChildren<QPlainTextEdit*>())
            if (field->accessibleName() == Text(kTextText).remove(u'&'))
                return *field;
        throw std::runtime_error("no field");
    }
    // Where the window is, and what is selected there.
    std::string Place()
    {
        if (window.Current() == Workspace::Subtitles)
            return "row " + std::to_string(panel.List().GetCurrentItem());
        const QTextCursor cursor = Field().textCursor();
        return "page " + std::to_string(window.Project().Current().pageIndex) + " " +
               std::to_string(cursor.selectionStart()) + "-" + std::to_string(cursor.selectionEnd());
    }
    QString Title(int page) { return PageAt(window.Project().Current(), page).title.text; }
};

TEST_F(TextTools, FindWalksThroughAllTitlesAndSubtitlesAndRoundAgain)
{
    Ask("ferry", "", kKvFindNextButton);
    std::vector<std::string> places{Place()};
    for (int i = 0; i < 4; ++i) {
        Run(kTextFindAgain);
        places.push_back(Place());
    }
    EXPECT_EQ(places,
              (std::vector<std::string>{"page 0 0-5", "page 1 9-14", "page 1 26-31", "row 0", "page 0 0-5"}));
    EXPECT_TRUE(window.statusBar()->currentMessage().startsWith(Text(kTextFoundAround, {QString()})));
    // The page that holds the hit goes between two searches: on from the beginning of the one that is shown.
    Run(kTextFindAgain);
    DeletePage(window.Project());
    Run(kTextFindAgain);
    EXPECT_EQ(Place(), "page 0 0-5");
    auto& dialog = Open<CKvFindReplaceTxtDlg>(kTextFindReplace);
    qobject_cast<QCheckBox*>(dialog.GetDlgItem(kKvMatchCaseCheck))->setChecked(true);
    Ask("FERRY", "", kKvFindNextButton);
    ASSERT_EQ(asked.size(), 1);
    EXPECT_TRUE(asked[0].contains(QStringLiteral("\"FERRY\"")));
}

TEST_F(TextTools, AnotherPageIsSearchedFromItsBeginning)
{
    Field().setFocus();
    Field().moveCursor(QTextCursor::End);
    window.Project().ChoosePage(1);
    Ask("ferry", "", kKvFindNextButton);
    EXPECT_EQ(Place(), "page 1 9-14");
}

TEST_F(TextTools, ASearchGoesOnWhenTheFoundRowIsGone)
{
    window.Show(Workspace::Subtitles);
    Ask("ferry", "", kKvFindNextButton);
    ASSERT_EQ(Place(), "row 0");
    QTest::keyClick(&panel.List(), Qt::Key_Delete);
    ASSERT_EQ(panel.List().GetItemCount(), 1);
    Run(kTextFindAgain);
    EXPECT_EQ(Place(), "page 0 0-5");
}

TEST_F(TextTools, ATitleThatWouldBecomeTooLongStays)
{
    const QString full(kLongestText, u'a');
    window.Project().Edit(EditKind::Single, "text", [&](Project& project) { project.title.text = full; });
    Ask("a", "bb", kKvReplaceButton); // shows the first
    QTest::mouseClick(Open<CKvFindReplaceTxtDlg>(kTextFindReplace).GetDlgItem(kKvReplaceButton),
                      Qt::LeftButton);
    EXPECT_EQ(Title(0), full);
    Ask("a", "bb", kKvReplaceAllButton);
    EXPECT_EQ(Title(0), full);
    EXPECT_EQ(Title(1), "The lbbst ferry, the first ferry") << "the others are replaced";
}

TEST_F(TextTools, ReplacingAllIsOneStepOfEachHistory)
{
    Ask("ferry", "boat", kKvReplaceAllButton);
    EXPECT_EQ(Title(0), "boat to the harbour");
    EXPECT_EQ(Title(1), "The last boat, the first boat");
    EXPECT_EQ(panel.List().GetItemText(0, kKvSubTitleText), L"A boat leaves");
    window.Project().Undo();
    EXPECT_EQ(Title(0), "Ferry to the harbour");
    EXPECT_EQ(Title(1), "The last ferry, the first ferry");
    EXPECT_EQ(panel.List().GetItemText(0, kKvSubTitleText), L"A boat leaves");
    panel.Steps().undo();
    EXPECT_EQ(panel.List().GetItemText(0, kKvSubTitleText), L"A ferry leaves");
}

TEST_F(TextTools, ReplacingOneByOneReplacesWhatIsShown)
{
    Ask("ferry", "ferry-boat", kKvReplaceButton); // shows the first
    EXPECT_EQ(Title(0), "Ferry to the harbour");
    QTest::mouseClick(Open<CKvFindReplaceTxtDlg>(kTextFindReplace).GetDlgItem(kKvReplaceButton),
                      Qt::LeftButton);
    EXPECT_EQ(Title(0), "ferry-boat to the harbour");
    EXPECT_EQ(Place(), "page 1 9-14");
    EXPECT_TRUE(window.statusBar()->currentMessage().startsWith(QStringLiteral("Page 2")))
        << "says where it went on";
    SetTitle("nothing of it"); // what was found is gone meanwhile
    QTest::mouseClick(Open<CKvFindReplaceTxtDlg>(kTextFindReplace).GetDlgItem(kKvReplaceButton),
                      Qt::LeftButton);
    EXPECT_EQ(Title(1), "nothing of it");
    EXPECT_EQ(Place(), "row 0");
    EXPECT_EQ(panel.List().GetItemText(0, kKvSubTitleText), L"A ferry leaves");
    QTest::mouseClick(Open<CKvFindReplaceTxtDlg>(kTextFindReplace).GetDlgItem(kKvReplaceButton),
                      Qt::LeftButton);
    EXPECT_EQ(panel.List().GetItemText(0, kKvSubTitleText), L"A ferry-boat leaves");
    EXPECT_EQ(Place(), "page 0 0-5") << "the replacements are found in turn, from the beginning";
}

TEST_F(TextTools, TheLastReplacementSaysSo)
{
    Ask("nobody", "all", kKvReplaceButton);
    QTest::mouseClick(Open<CKvFindReplaceTxtDlg>(kTextFindReplace).GetDlgItem(kKvReplaceButton),
                      Qt::LeftButton);
    EXPECT_EQ(panel.List().GetItemText(1, kKvSubTitleText), L"all");
    EXPECT_EQ(window.statusBar()->currentMessage(), Text(kTextReplacedLast));
    EXPECT_TRUE(asked.isEmpty()) << "that is no failure";
}

TEST_F(TextTools, ACharacterGoesWhereOneWasWriting)
{
    auto& map = Open<CKvCharMapDlg>(kTextCharacterMap);
    const auto pick = [&map](char code) {
        map.GetGrid()->SetSelected(map.GetGrid()->FindCode(static_cast<DWORD>(code)));
        QTest::keyClick(map.GetGrid(), Qt::Key_Return);
    };
    pick('!'); // nobody has written anywhere
    EXPECT_EQ(Title(0), "Ferry to the harbour!");
    Field().setFocus();
    QTextCursor cursor = Field().textCursor();
    cursor.setPosition(5);
    Field().setTextCursor(cursor);
    pick('+');
    pick('*');
    EXPECT_EQ(Title(0), "Ferry+* to the harbour!");
    window.Project().Undo();
    EXPECT_EQ(Title(0), "Ferry+ to the harbour!");
    // Into an open cell, and else to the end of the row.
    window.Show(Workspace::Subtitles);
    panel.List().setFocus();
    Press(Qt::Key_Home, Qt::ControlModifier);
    Press(Qt::Key_Down);
    QTest::keyClick(&panel.List(), Qt::Key_F2);
    pick('?');
    EXPECT_EQ(panel.List().Typed(), std::pair(1, QStringLiteral("?")));
    window.activateWindow();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    pick('#');
    EXPECT_EQ(panel.List().GetItemText(1, kKvSubTitleText), L"nobody#");
    panel.Steps().undo();
    EXPECT_EQ(panel.List().GetItemText(1, kKvSubTitleText), L"nobody");
}

TEST_F(TextTools, CharactersAndTheirFaceAreKept)
{
    const QString file = folder.filePath(QStringLiteral("settings.json"));
    {
        Settings settings(file);
        window.Remember(settings);
        auto& map = Open<CKvCharMapDlg>(kTextCharacterMap);
        map.SetRecent(L"xyz");
        map.GetGrid()->SetSelected(map.GetGrid()->FindCode('A'));
        QTest::keyClick(map.GetGrid(), Qt::Key_D, Qt::ControlModifier); // saves
        window.Project().Edit(EditKind::Single, "font", [](Project& project) {
            project.title.fontFamily = QStringLiteral("no such face");
        });
        EXPECT_EQ(map.GetFont(), L"no such face");
    }
    { // a run that never opens the map loses nothing
        Settings settings(file);
        ASSERT_EQ(settings.Load(), QString());
        MainWindow other;
        other.Remember(settings);
        other.close();
    }
    Settings settings(file);
    EXPECT_EQ(settings.Load(), QString());
    EXPECT_EQ(settings.recentCharacters, QStringLiteral("xyz"));
    EXPECT_EQ(settings.favouriteCharacters, QStringLiteral("A"));
}

} // namespace
} // namespace titler
