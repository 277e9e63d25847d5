#include "edit/Document.h"
#include "edit/PageSteps.h"
#include "export/FrameExport.h"
#include "project/Pages.h"
#include "title/TitleRenderer.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace titler {
namespace {

Page Named(const QString& text)
{
    Page page = NewPage();
    page.title.text = text;
    return page;
}

// Pages with one letter each; the current one is given in brackets: "a[b]c".
Project Made(const QString& pages)
{
    Project project = NewProject();
    for (const QChar letter : pages) {
        if (letter == u'[' || letter == u']')
            continue;
        if (project.title.text.isEmpty())
            project.title.text = letter;
        else
            AddPage(project, Named(letter));
    }
    ChoosePage(project, static_cast<int>(pages.indexOf(u'[')));
    return project;
}

std::string Shown(const Project& project)
{
    QString shown;
    for (int i = 0; i < PageCount(project); ++i) {
        const QString& text = PageAt(project, i).title.text;
        shown += i == project.pageIndex ? u'[' + text + u']' : text;
    }
    return shown.toStdString();
}

struct PageEdit
{
    const char* before;
    void (*edit)(Project& project);
    const char* after;
};

TEST(Pages, OneIsAlwaysTheCurrentOne)
{
    for (const PageEdit& c : {PageEdit{"[a]bc", [](Project& p) { ChoosePage(p, 2); }, "ab[c]"},
                              PageEdit{"ab[c]", [](Project& p) { ChoosePage(p, 0); }, "[a]bc"},
                              PageEdit{"a[b]c", [](Project& p) { ChoosePage(p, 3); }, "a[b]c"},
                              PageEdit{"a[b]c", [](Project& p) { ChoosePage(p, -1); }, "a[b]c"},
                              PageEdit{"a[b]c", [](Project& p) { AddPage(p, Named("x")); }, "ab[x]c"},
                              PageEdit{"ab[c]", [](Project& p) { AddPage(p, p); }, "abc[c]"},
                              PageEdit{"[a]bc", [](Project& p) { DeletePage(p); }, "[b]c"},
                              PageEdit{"a[b]c", [](Project& p) { DeletePage(p); }, "a[c]"},
                              PageEdit{"ab[c]", [](Project& p) { DeletePage(p); }, "a[b]"},
                              PageEdit{"[a]", [](Project& p) { DeletePage(p); }, "[a]"},
                              PageEdit{"[a]bcd", [](Project& p) { MovePage(p, 2); }, "bc[a]d"},
                              PageEdit{"abc[d]", [](Project& p) { MovePage(p, 0); }, "[d]abc"},
                              PageEdit{"a[b]cd", [](Project& p) { MovePage(p, 4); }, "a[b]cd"}}) {
        Project project = Made(c.before);
        ASSERT_EQ(Shown(project), c.before);
        c.edit(project);
        EXPECT_EQ(Shown(project), c.after) << c.before;
    }
}

TEST(Pages, ThereAreNoMoreThanAFileMayHave)
{
    Project project = NewProject();
    for (int i = 0; i < kMostPages + 5; ++i)
        AddPage(project, NewPage());
    EXPECT_EQ(PageCount(project), kMostPages);
    ProjectError error;
    EXPECT_TRUE(ParseProject(SerialiseProject(project), error));
}

TEST(Pages, AFileKeepsThemInTheirOrder)
{
    Project project = Made("ab[c]");
    project.background.colour = 0xFF123456;
    project.title[Property::X] = {1, {{0, 5}, {20, 7}}};
    ProjectError error;
    std::optional<Project> loaded = ParseProject(SerialiseProject(project), error);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(Shown(*loaded), "[a]bc");
    EXPECT_TRUE(*loaded == project) << "which page is the current one is not saved";
    ChoosePage(*loaded, 2);
    EXPECT_EQ(loaded->background.colour, 0xFF123456);
    EXPECT_EQ(loaded->title[Property::X], project.title[Property::X]);
    loaded->title.bold = false;
    EXPECT_FALSE(*loaded == project);
    EXPECT_FALSE(Made("a[b]c") == Made("a[c]b"));
    // A titler that knows one page alone reads the first one.
    const QJsonObject file = QJsonDocument::fromJson(SerialiseProject(project)).object();
    EXPECT_EQ(file["version"], 1);
    EXPECT_EQ(file["title"]["text"], "a");
    EXPECT_EQ(file["pages"].toArray().size(), 2);
    EXPECT_FALSE(QJsonDocument::fromJson(SerialiseProject(Made("[a]"))).object().contains("pages"));
}

TEST(Pages, FieldsThatWeDoNotKnowGoWithTheirPage)
{
    ProjectError error;
    std::optional<Project> project =
        ParseProject(R"({"version":1,"tool":9,"firstPage":{"name":"A"},"title":{"text":"a","x1":1},
                         "background":{"x2":2},"pages":[{"name":"B","title":{"text":"b","font":{"x3":3},
                         "animation":{"x":[{"frame":4,"x4":4}]}},"duration":5},{"title":{"text":"c"}}]})",
                     error);
    ASSERT_TRUE(project);
    ASSERT_EQ(Shown(*project), "[a]bc");
    MovePage(*project, 2);
    project->title.bold = false;
    const QJsonObject saved = QJsonDocument::fromJson(SerialiseProject(*project)).object();
    EXPECT_EQ(saved["tool"], 9);
    EXPECT_EQ(saved["duration"], 150);
    EXPECT_EQ(saved["title"]["text"], "b");
    EXPECT_EQ(saved["title"]["font"]["x3"], 3);
    EXPECT_EQ(saved["title"]["animation"]["x"][0]["x4"], 4);
    EXPECT_EQ(saved["firstPage"], (QJsonObject{{"name", "B"}, {"duration", 5}}));
    EXPECT_EQ(saved["pages"][0].toObject().keys(), (QStringList{"background", "title"}));
    EXPECT_EQ(saved["pages"][1]["name"], "A");
    EXPECT_EQ(saved["pages"][1]["title"]["x1"], 1);
    EXPECT_EQ(saved["pages"][1]["background"]["x2"], 2);
    project = ParseProject(SerialiseProject(*project), error);
    ASSERT_TRUE(project);
    EXPECT_EQ(QJsonDocument::fromJson(SerialiseProject(*project)).object(), saved);
}

TEST(Pages, KeysOfEveryPageKeepTheirTimesAtAnotherFrameRate)
{
    Project project = Made("[a]b");
    project.video.frameRate = kKvFrameRate25;
    ChoosePage(project, 1);
    project.title[Property::X].keys = {{0, 0}, {100, 9}};
    ChoosePage(project, 0);
    project.title[Property::Y].keys = {{0, 0}, {50, 9}};
    SKvVideoResolution format = project.video;
    format.frameRate = kKvFrameRate50;
    SetVideoFormat(project, format);
    EXPECT_EQ(project.title[Property::Y].keys[1].frame, 100);
    EXPECT_EQ(PageAt(project, 1).title[Property::X].keys[1].frame, 200);
}

TEST(Document, UndoShowsThePageThatItChanged)
{
    Document document;
    const auto type = [&](const char* text) {
        document.Edit(EditKind::Typing, "type", [&](Project& project) { project.title.text = text; });
    };
    type("a");
    AddPage(document);
    type("b");
    DuplicatePage(document);
    type("c");
    EXPECT_EQ(Shown(document.Current()), "ab[c]");
    document.ChoosePage(0);
    const int steps = document.Steps().count();
    type("A");
    EXPECT_EQ(document.Steps().count(), steps + 1) << "another page, another step";
    document.ChoosePage(1);
    document.Edit(EditKind::Duration, "", [](Project& project) { project.duration = 9; });
    document.ChoosePage(2);
    EXPECT_EQ(document.Steps().count(), steps + 2) << "to choose a page is no step";

    const char* const undone[] = {"Ab[c]", "[a]bc", "ab[b]", "a[b]", "a[Title]", "[a]", "[Title]"};
    for (const char* const shown : undone) {
        document.Undo();
        EXPECT_EQ(Shown(document.Current()), shown);
    }
    EXPECT_FALSE(document.Steps().canUndo());
    for (const char* const shown : {"[a]", "a[Title]", "a[b]", "ab[b]", "ab[c]", "[A]bc", "[A]bc"}) {
        document.Redo();
        EXPECT_EQ(Shown(document.Current()), shown);
    }
}

TEST(Document, PagesAreAddedDeletedAndMovedInSteps)
{
    Document document;
    document.Edit(EditKind::Single, "", [](Project& project) { project = Made("ab[c]d"); });
    document.Select(document.Selection().WithTarget(ColourTarget::Background).WithStop(1));
    const int steps = document.Steps().count();
    MovePage(document, -7);
    EXPECT_EQ(Shown(document.Current()), "[c]abd");
    EXPECT_EQ(document.Selection().Stop(), 1);
    MovePage(document, 0);
    DeletePage(document);
    EXPECT_EQ(Shown(document.Current()), "[a]bd");
    EXPECT_EQ(document.Selection().Stop(), 0) << "another page may not have as many";
    EXPECT_EQ(document.Selection().target, ColourTarget::Background);
    EXPECT_EQ(document.Steps().count(), steps + 2);
    document.Undo();
    document.Undo();
    EXPECT_EQ(Shown(document.Current()), "ab[c]d");
}

// A drag ends where another page is shown: it was about the page before.
TEST(Document, ChoosingAPageEndsARun)
{
    Document document;
    AddPage(document);
    const int run = document.BeginRun("drag");
    document.UpdateRun([](Project& project) { project.title.text = "b"; });
    document.ChoosePage(0);
    EXPECT_FALSE(document.IsInRun(run));
    document.UpdateRun([](Project& project) { project.title.text = "x"; });
    EXPECT_EQ(Shown(document.Current()), "[Title]b");
    document.Undo();
    EXPECT_EQ(Shown(document.Current()), "Title[Title]");
}

TEST(Titler, ExportsThePageThatIsAskedFor)
{
    QTemporaryDir folder;
    Project project = Made("a[b]");
    project.video = {kKvAspectSquarePixel, kKvFrameRate25, kKvScanProgressive, 160, 90};
    ASSERT_EQ(SaveProject(folder.filePath("p.ktitle"), project), "");
    const auto run = [&](const QStringList& arguments) {
        QProcess program;
        program.start(TITLER_PROGRAM, QStringList{folder.filePath("p.ktitle")} + arguments);
        EXPECT_TRUE(program.waitForFinished(60000));
        return program.exitCode();
    };
    ASSERT_EQ(run({"--page", "2", "--export-frame", folder.filePath("b.png"), "--frame", "0"}), 0);
    ASSERT_EQ(run({"--page", "2", "--export-frames", folder.path(), "--range", "0-0"}), 0);
    ASSERT_EQ(run({"--export-frame", folder.filePath("a.png"), "--frame", "0"}), 0);
    ASSERT_EQ(ExportFrame(project, folder.filePath("expected.png"), 0), "");
    const QImage expected(folder.filePath("expected.png"));
    EXPECT_EQ(QImage(folder.filePath("b.png")), expected);
    EXPECT_EQ(QImage(folder.filePath("p_page2_0000.png")), expected);
    EXPECT_NE(QImage(folder.filePath("a.png")), expected);
}

} // namespace
} // namespace titler
