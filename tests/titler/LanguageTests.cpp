// The language chosen at run time: every text of every window follows, at once.
#include "KvFindReplaceTxtDlg.h"
#include "KvGuiRes.h"
#include "edit/Document.h"
#include "edit/PropertyText.h"
#include "export/ExportDialog.h"
#include "media/MediaPanel.h"
#include "subtitles/SubtitleFindBar.h"
#include "subtitles/SubtitleList.h"
#include "subtitles/SubtitlePanel.h"
#include "subtitles/SubtitleStyle.h"
#include "time/TransportBar.h"
#include "window/Language.h"
#include "window/MainWindow.h"
#include "window/Settings.h"
#include "window/Texts.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QUndoStack>

#include <algorithm>
#include <gtest/gtest.h>

using namespace titler;

namespace {

void AddText(QStringList& texts, const QObject& owner, const char* kind, const QString& text)
{
    if (!text.isEmpty())
        texts << QStringLiteral("%1 %2: %3")
                     .arg(QLatin1String(owner.metaObject()->className()), QLatin1String(kind), text);
}

void AddTextsOf(QStringList& texts, const QWidget& widget)
{
    AddText(texts, widget, "title", widget.windowTitle());
    AddText(texts, widget, "tip", widget.toolTip());
    AddText(texts, widget, "name", widget.accessibleName());
    AddText(texts, widget, "description", widget.accessibleDescription());
    for (const char* property : {"text", "placeholderText", "suffix", "title"})
        AddText(texts, widget, property, widget.property(property).toString());
    if (const auto* box = qobject_cast<const QComboBox*>(&widget))
        for (int i = 0; i < box->count() && !box->inherits("QFontComboBox"); ++i)
            AddText(texts, widget, "item", box->itemText(i));
}

void AddTextsOf(QStringList& texts, const QAction& action)
{
    AddText(texts, action, "text", action.text());
    AddText(texts, action, "tip", action.toolTip());
    AddText(texts, action, "status", action.statusTip());
}

// All that a window says, whatever page it shows.
QStringList TextsOf(MainWindow& window)
{
    QStringList texts;
    AddTextsOf(texts, window);
    for (const QWidget* widget : window.findChildren<QWidget*>())
        AddTextsOf(texts, *widget);
    for (const QAction* action : window.findChildren<QAction*>())
        AddTextsOf(texts, *action);
    const std::unique_ptr<QMenu> menu = window.AllCommands().MakeApplicationMenu();
    for (const QMenu* part : menu->findChildren<QMenu*>()) {
        texts << QStringLiteral("menu ") + part->title();
        for (const QAction* action : part->actions())
            AddTextsOf(texts, *action);
    }
    texts.sort();
    return texts;
}

// What only one of them has.
std::string Difference(QStringList texts, QStringList others)
{
    for (const QString& other : QStringList(others))
        if (texts.removeOne(other))
            others.removeOne(other);
    return (texts.join(u'\n') + QStringLiteral("\n---\n") + others.join(u'\n')).toStdString();
}

constexpr const char* kNone = "\n---\n";

struct InLanguages : testing::Test
{
    static void Choose(const char* code) { ChooseLanguage(*FindLanguage(QLatin1String(code))); }
    void TearDown() override { Choose("en"); }
};

TEST_F(InLanguages, AnOpenWindowSaysWhatAWindowSaysThatIsOpenedAfterwards)
{
    for (const auto caption : {MainWindow::Caption::Tabs, MainWindow::Caption::Menus}) {
        MainWindow switched(caption);
        const QStringList english = TextsOf(switched);
        for (const Language& language : Languages()) {
            ChooseLanguage(language);
            const QStringList texts = TextsOf(switched);
            MainWindow fresh(caption);
            EXPECT_EQ(Difference(texts, TextsOf(fresh)), kNone) << language.code;
        }
        EXPECT_NE(Difference(TextsOf(switched), english), kNone);
        Choose("en");
        EXPECT_EQ(Difference(TextsOf(switched), english), kNone);
    }
}

TEST_F(InLanguages, DialogsThatAreOpenFollow)
{
    CKvFindReplaceTxtDlg find;
    ASSERT_TRUE(find.Create(nullptr));
    find.show();
    ExportDialog frames(NewProject(), {});
    frames.show();
    Choose("de");
    EXPECT_EQ(find.windowTitle(), "Suchen und Ersetzen");
    EXPECT_EQ(qobject_cast<QAbstractButton*>(find.GetDlgItem(kKvReplaceAllButton))->text(), "Alle ersetzen");
    EXPECT_EQ(frames.windowTitle(), "Bilder exportieren");
    EXPECT_EQ(frames.findChild<QAbstractButton*>("cancel")->text(), "Abbrechen");
}

TEST_F(InLanguages, TheBarGoesOnWithTheTabsInTheirNewNames)
{
    MainWindow window;
    window.Show(Workspace::Rules);
    window.Show(Workspace::Animate);
    Choose("de");
    EXPECT_EQ(window.Current(), Workspace::Animate);
    emit window.Bar()->RibbonItemSelected(kTitles, QStringLiteral("Gestalten"));
    EXPECT_EQ(window.Current(), Workspace::Design);
    emit window.Bar()->TitleBarActivated(kMedia);
    EXPECT_EQ(window.Current(), Workspace::Rules) << "each application still knows its tab";
}

// The letters for Alt of a menu's entries, in capitals.
QStringList LettersOf(const QMenu& menu)
{
    QStringList letters;
    for (const QAction* action : menu.actions()) {
        const QString text = QString(action->text()).remove(QStringLiteral("&&"));
        const qsizetype mark = text.indexOf(u'&');
        if (mark >= 0 && !text[mark + 1].isDigit())
            letters << text.mid(mark + 1, 1).toUpper();
    }
    return letters;
}

TEST_F(InLanguages, EachMenusLettersForAltAreUnique)
{
    MainWindow window;
    for (const Language& language : Languages()) {
        ChooseLanguage(language);
        const std::unique_ptr<QMenu> whole = window.AllCommands().MakeApplicationMenu();
        QList<QMenu*> menus = whole->findChildren<QMenu*>();
        menus << whole.get();
        for (const QMenu* menu : menus) {
            QStringList letters = LettersOf(*menu);
            QStringList unique = letters;
            unique.removeDuplicates();
            EXPECT_EQ(letters, unique) << language.code << ' ' << qPrintable(menu->title());
        }
        EXPECT_EQ(LettersOf(*whole).size(), whole->actions().size()) << language.code;
    }
}

// The letter for Alt that is seen on a widget, in capitals; empty for none.
QString LetterOf(const QWidget& widget)
{
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    const auto* label = qobject_cast<const QLabel*>(&widget);
    const bool answers = button != nullptr || (label != nullptr && label->buddy() != nullptr);
    if (!answers || !widget.isVisible())
        return {};
    return QKeySequence::mnemonic(widget.property("text").toString()).toString().section(u'+', -1);
}

TEST_F(InLanguages, EachWorkspacesLettersForAltAreUnique)
{
    MainWindow window;
    window.resize(1280, 800);
    window.show();
    for (const Language& language : Languages()) {
        ChooseLanguage(language);
        for (const Workspace workspace : kWorkspaces) {
            window.Show(workspace);
            if (workspace == Workspace::Subtitles)
                window.findChild<SubtitleFindBar*>()->OpenReplacement();
            QApplication::processEvents();
            QStringList letters;
            QStringList taken;
            for (const QWidget* widget : window.findChildren<QWidget*>()) {
                const QString letter = LetterOf(*widget);
                if (letter.isEmpty())
                    continue;
                if (letters.contains(letter))
                    taken << widget->property("text").toString();
                letters << letter;
            }
            EXPECT_EQ(taken.join(u' '), "") << language.code << ' ' << TraitsOf(workspace).name;
            EXPECT_FALSE(letters.isEmpty() && workspace == Workspace::Rules);
        }
    }
}

TEST_F(InLanguages, NoLetterForAltIsReadAloudOrShownInBrackets)
{
    MainWindow window;
    ExportDialog frames(NewProject(), {});
    const QRegularExpression mark(QStringLiteral("&|\\([A-Z]\\)"));
    for (const char* code : {"en", "ja", "ar"}) {
        Choose(code);
        for (QWidget* part : window.findChildren<QWidget*>() + frames.findChildren<QWidget*>()) {
            const auto* tool = qobject_cast<QToolButton*>(part);
            const bool showsText = tool != nullptr && tool->toolButtonStyle() != Qt::ToolButtonIconOnly;
            EXPECT_FALSE(showsText && tool->text().contains(mark)) << qPrintable(tool->text());
            if (qobject_cast<QAbstractButton*>(part) == nullptr && qobject_cast<QLabel*>(part) == nullptr)
                continue;
            const QString name = QAccessible::queryAccessibleInterface(part)->text(QAccessible::Name);
            EXPECT_FALSE(name.contains(mark)) << qPrintable(name);
        }
    }
}

TEST_F(InLanguages, StepsAreNamedInTheLanguageThatIsChosen)
{
    MainWindow window;
    Document& document = window.Project();
    SubtitlePanel& panel = window.Subtitles();
    EXPECT_TRUE(panel.Import(QStringLiteral(TITLER_SAMPLES "/subtitles.srt")));
    document.Edit(EditKind::Single, PropertyStep(kStepAddKey, Property::Opacity),
                  [](Project& project) { project.title.text = "a"; });
    document.Edit(EditKind::Single, kStepStyle, [](Project& project) { project.title.text = "b"; });
    document.Undo();
    panel.SetTexts([] { return Text(kStepReplaceText, {"a", "b"}); }, {{1, "b"}, {2, "b"}});
    panel.List().SetSelItem(0);
    QTest::keyClick(&panel.List(), Qt::Key_Delete);
    const auto named = [&] {
        return QStringList{document.Steps().undoText(), document.Steps().redoText(), panel.Steps().text(0),
                           panel.Steps().text(1)};
    };
    const QStringList english = named();
    EXPECT_EQ(english.join(u'\n'), "add key of opacity\nchange style\nReplace “a” with “b” (subtitles 2–3)\n"
                                   "delete (subtitle 1)");
    Choose("de");
    QStringList words = named();
    for (qsizetype i = 0; i < words.size(); ++i)
        EXPECT_NE(words[i], english[i]);
    EXPECT_TRUE(words[2].contains("Untertitel 2–3")) << qPrintable(words[2]);
    window.Show(Workspace::Design);
    EXPECT_TRUE(TextsOf(window).join(u'\n').contains(words[0]));
    Choose("en");
    EXPECT_EQ(named(), english);
    panel.Steps().undo();
    panel.Steps().redo();
    EXPECT_EQ(named(), english) << "a step that comes back is not named twice";
}

TEST_F(InLanguages, AMarkForAltIsNotRead)
{
    EXPECT_EQ(WithoutMnemonic("&Open…"), "Open…");
    EXPECT_EQ(WithoutMnemonic("開く(&O)…"), "開く…");
    EXPECT_EQ(WithoutMnemonic("言語(&L) (Language)"), "言語 (Language)");
    EXPECT_EQ(WithoutMnemonic("Cut && p&aste (1)"), "Cut & paste (1)");
}

TEST_F(InLanguages, EveryLanguageHasItsFileAndEveryFileItsLanguage)
{
    QStringList files = QDir(QStringLiteral(":/kv/lang")).entryList();
    QStringList codes;
    for (const Language& language : Languages().subspan(1))
        codes << QLatin1String(language.code) + QStringLiteral(".ini");
    files.sort();
    codes.sort();
    EXPECT_EQ(files, codes);
    EXPECT_EQ(FindLanguage("xx"), nullptr);
}

TEST_F(InLanguages, ArabicRunsFromRightToLeftButTimeDoesNot)
{
    MainWindow window;
    window.resize(900, 700);
    window.Show(Workspace::Animate);
    window.show();
    Choose("ar");
    QApplication::processEvents();
    const auto leftOf = [&](const QWidget& part) { return part.mapTo(&window, QPoint()).x(); };
    const TransportBar* bar = nullptr;
    for (const auto* one : window.findChildren<TransportBar*>())
        bar = one->isVisible() ? one : bar;
    EXPECT_EQ(window.layoutDirection(), Qt::RightToLeft);
    EXPECT_LT(leftOf(*window.findChild<QWidget*>("scale")), leftOf(*bar)) << "the inspector is at the left";
    const auto button = [&](UINT nameId) {
        const QList<QToolButton*> deck = bar->findChildren<QToolButton*>();
        return *std::find_if(deck.begin(), deck.end(), [&](const QToolButton* one) {
            return one->defaultAction()->text() == Text(nameId);
        });
    };
    EXPECT_LT(leftOf(*button(kTextToStart)), leftOf(*button(kTextToEnd)));
    // A time is read as it is written, whatever stands before it.
    const QString said = Text(kTextSubtitleLengthened, {QStringLiteral("01:44:11;12")});
    EXPECT_TRUE(said.contains(QString(QChar(0x2068)) + "01:44:11;12" + QChar(0x2069)));
    EXPECT_FALSE(Text(kTextPagedFrames, {"a", "2"}).contains(QChar(0x2068))) << "the name of a file";
}

TEST_F(InLanguages, TheMenuChoosesAndTheSettingsRemember)
{
    const QTemporaryDir folder;
    Settings settings(folder.filePath("s.json"));
    MainWindow window;
    window.Remember(settings);
    EXPECT_EQ(settings.language, "") << "the system's, until one is chosen";
    const std::unique_ptr<QMenu> menu = window.AllCommands().MakeApplicationMenu();
    for (const QMenu* part : menu->findChildren<QMenu*>())
        for (const QAction* entry : part->actions())
            if (entry->text() == "Deutsch")
                window.AllCommands().Trigger(entry->data().toUInt());
    EXPECT_TRUE(QTest::qWaitFor([] { return &CurrentLanguage() == FindLanguage("de"); }));
    EXPECT_EQ(window.AllCommands().Menus().front()->title(), "&Datei");
    Settings again(folder.filePath("s.json"));
    EXPECT_EQ(again.Load(), "");
    EXPECT_EQ(again.language, "de");
}

TEST_F(InLanguages, RowsKeepTheTemplateThatTheyWereGiven)
{
    EXPECT_EQ(LookOf({"", "Top"}).side, -1);
    MainWindow window;
    Choose("de");
    EXPECT_EQ(LookOf({"", "Top"}).side, -1);
    EXPECT_EQ(LookOf({"", "Oben"}).side, -1);
    EXPECT_EQ(TemplateNamed("Top"), "Oben");
    Choose("en");
    EXPECT_EQ(TemplateNamed("Oben"), "Top");
    EXPECT_EQ(TemplateNamed("Nobody's"), "Nobody's");
    EXPECT_EQ(LookOf({"", "Nobody's"}).side, 1);
}

TEST_F(InLanguages, TheLengthOfSubtitlesIsStillNoWorkToLose)
{
    MainWindow window;
    int questions = 0;
    KvSetMessageBoxHandler([&](HWND, const std::wstring&, UINT) { return ++questions, IDCANCEL; });
    EXPECT_TRUE(window.Subtitles().Import(QStringLiteral(TITLER_SAMPLES "/subtitles.srt")));
    EXPECT_TRUE(window.Project().IsModified());
    Choose("de");
    EXPECT_TRUE(window.close());
    KvSetMessageBoxHandler({});
    EXPECT_EQ(questions, 0);
}

TEST_F(InLanguages, PartsOfAReportAreJoinedAsTheLanguageDoes)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("a.srt"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("WEBVTT\n\nNOTE x\n\n00:01.000 --> 00:02.000\na\n");
    file.close();
    Choose("ja");
    MainWindow window;
    QStringList said;
    QObject::connect(&window.Subtitles(), &SubtitlePanel::Reported,
                     [&](LogType, const QString& text) { said << text; });
    EXPECT_TRUE(window.Subtitles().Import(file.fileName()));
    const QString report = said.join(u'\n');
    EXPECT_TRUE(report.contains(QString::fromUtf8("；"))) << qPrintable(report);
    EXPECT_FALSE(report.contains(u';')) << qPrintable(report);
}

// The program in a system of that language. @return what it writes.
QString Output(const char* systemLanguage, const QStringList& arguments)
{
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LANGUAGE"), QLatin1String(systemLanguage));
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(QStringLiteral(TITLER_PROGRAM), arguments);
    EXPECT_TRUE(program.waitForFinished());
    return QString::fromUtf8(program.readAll());
}

TEST_F(InLanguages, TheTerminalIsToldInTheSystemsLanguageOrTheOneThatIsNamed)
{
    const QString german = QStringLiteral("Die Größe des Fensters");
    EXPECT_TRUE(Output("xx:de_AT:fr", {"--help"}).contains(german));
    EXPECT_TRUE(Output("en", {"--help", "--language", "de"}).contains(german));
    EXPECT_TRUE(Output("de", {"--help", "--language", "en"}).contains("The window's size"));
    EXPECT_TRUE(Output("zh_TW", {"--help"}).contains("The window's size"));
    EXPECT_TRUE(Output("de", {"--size", "7"}).contains("ist keine Größe"));
    EXPECT_TRUE(Output("en", {"--language", "xx"}).contains("“xx”"));
    EXPECT_TRUE(Output("en", {"--language", "de", "--size", "7"}).contains("ist keine Größe"));
    EXPECT_TRUE(Output("en", {"--bogus", "--language", "de"}).contains("Unbekannte Option"));
}

} // namespace
