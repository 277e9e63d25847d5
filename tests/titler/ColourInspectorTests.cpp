// The colours in the inspector: what is coloured, and the panel that edits it live.
#include "../color/ControlEvents.h"
#include "KvColorMapWnd.h"
#include "KvColorPanel.h"
#include "KvGradientCtrl.h"
#include "KvParamEdit.h"
#include "KvQuadGradCtrl.h"
#include "KvSolidColorTemplate.h"
#include "edit/Document.h"
#include "title/ColourInspector.h"
#include "window/MainWindow.h"
#include "window/Settings.h"
#include "window/Switch.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QWheelEvent>

#include <array>
#include <tuple>

using namespace titler;

namespace {

enum Item : UINT
{
    kMap = 14023,
    kGreen = 14027,
    kSwatches = 14030,
};

// No test reads or writes the user's own swatches.
struct SwatchFolder : testing::Environment
{
    void SetUp() override { ASSERT_EQ(KeepSwatches(folder.path()), ""); }
    QTemporaryDir folder;
};
[[maybe_unused]] const auto* const kSwatchFolder = testing::AddGlobalTestEnvironment(new SwatchFolder);

struct Colours : testing::Test
{
    Colours()
    {
        inspector.resize(360, 480);
        inspector.show();
    }

    template <typename Child>
    Child& Get(const char* name = "")
    {
        return *inspector.findChild<Child*>(QLatin1String(name));
    }
    CKvColorPanel& Panel() { return *inspector.findChild<CKvColorPanel*>(); }
    CKvColorMapWnd& Map() { return *dynamic_cast<CKvColorMapWnd*>(Panel().GetDlgItem(kMap)); }
    QLineEdit& Number() { return *Panel().GetDlgItem(kGreen)->findChild<QLineEdit*>(); }
    QAbstractButton& Target(int index) { return inspector.findChildren<Switch*>()[0]->Button(index); }
    QAbstractButton& Kind(int index) { return inspector.findChildren<Switch*>()[1]->Button(index); }
    std::optional<DWORD> Colour() const { return SelectedColour(document.Current(), document.Selection()); }
    int Steps() { return document.Steps().count(); }
    void DragTo(double x, double y)
    {
        SendMouse(Map(), QEvent::MouseMove, {Map().width() * x, Map().height() * y}, Qt::LeftButton);
        EXPECT_EQ(Colour(), Panel().GetColor()); // live
    }
    void Press() { SendMouse(Map(), QEvent::MouseButtonPress, {9, 9}, Qt::LeftButton); }
    void Release() { SendMouse(Map(), QEvent::MouseButtonRelease, {30, 30}, Qt::NoButton); }
    void SetUpAll(PaintKind text, PaintKind background)
    {
        document.New();
        document.Edit(EditKind::Single, "", [&](Project& project) {
            project.title.fill.kind = text;
            project.background.kind = background;
            project.title.outline.on = project.title.shadow.on = true;
        });
        document.Steps().clear();
    }

    Document document;
    ColourInspector inspector{document, false};
};

TEST_F(Colours, ADragIsLiveIsOneStepAndUndoShowsWhatItChanged)
{
    struct Row
    {
        ColourTarget target;
        PaintKind kind;
        int stop;
        int corner;
        const char* step;
    };
    const Row rows[] = {
        {ColourTarget::Text, PaintKind::Solid, 0, 0, "change text colour"},
        {ColourTarget::Text, PaintKind::Gradient, 2, 0, "change stop colour"},
        {ColourTarget::Text, PaintKind::FourCorner, 0, 3, "change corner colour"},
        {ColourTarget::Background, PaintKind::Solid, 0, 0, "change background colour"},
        {ColourTarget::Background, PaintKind::Gradient, 1, 0, "change stop colour"},
        {ColourTarget::Background, PaintKind::FourCorner, 0, 2, "change corner colour"},
        {ColourTarget::Outline, PaintKind::Solid, 0, 0, "change outline colour"},
        {ColourTarget::Shadow, PaintKind::Solid, 0, 0, "change shadow colour"},
    };
    for (const Row& row : rows) {
        SetUpAll(row.kind, row.kind);
        const auto chosen =
            document.Selection().WithTarget(row.target).WithStop(row.stop).WithCorner(row.corner);
        document.Select(chosen);
        const Project before = document.Current();
        const std::optional<DWORD> old = Colour();
        EXPECT_EQ(Panel().GetColor(), old);
        Press();
        DragTo(0.3, 0.4);
        DragTo(0.8, 0.2);
        EXPECT_EQ(Steps(), 0);
        Release();
        ASSERT_EQ(Steps(), 1) << row.step;
        EXPECT_EQ(document.Steps().text(0), row.step);
        const std::optional<DWORD> picked = Colour();
        EXPECT_NE(picked, old);

        const int other = row.target == ColourTarget::Outline ? 3 : 2;
        Target(other).click();
        EXPECT_EQ(Panel().GetColor(), Colour());
        document.Undo();
        EXPECT_TRUE(document.Current() == before) << "nothing else changed";
        EXPECT_TRUE(document.Selection() == chosen);
        EXPECT_TRUE(Target(static_cast<int>(row.target)).isChecked());
        EXPECT_EQ(Panel().GetColor(), old);
        Target(other).click();
        document.Redo();
        EXPECT_TRUE(document.Selection() == chosen);
        EXPECT_EQ(Panel().GetColor(), picked);
    }
}

TEST_F(Colours, EscapeTakesADragBackWhole)
{
    const Project before = document.Current();
    Press();
    DragTo(0.5, 0.5);
    EXPECT_FALSE(document.Current() == before);
    QTest::keyClick(&Map(), Qt::Key_Escape);
    Release();
    EXPECT_TRUE(document.Current() == before);
    EXPECT_EQ(Panel().GetColor(), Colour());
    EXPECT_EQ(Steps(), 0);
    EXPECT_FALSE(document.IsInRun());
}

TEST_F(Colours, ADragEndsWhenAnotherColourIsSelected)
{
    SetUpAll(PaintKind::FourCorner, PaintKind::None);
    const CornerColours old = document.Current().title.fill.corners;
    Press();
    DragTo(0.5, 0.5);
    document.Select(document.Selection().WithCorner(1));
    SendMouse(Map(), QEvent::MouseMove, {60, 60}, Qt::LeftButton);
    EXPECT_EQ(Panel().GetColor(), old[1]) << "the panel shows what is selected";
    Release();
    EXPECT_EQ(document.Current().title.fill.corners[1], old[1]);
    EXPECT_EQ(Steps(), 1);
    document.Undo();
    EXPECT_EQ(document.Current().title.fill.corners, old);
}

TEST_F(Colours, AHeldArrowIsOneStep)
{
    const std::optional<DWORD> old = Colour();
    for (int i = 0; i < 5; ++i)
        QTest::keyClick(&Map(), i < 3 ? Qt::Key_Down : Qt::Key_Left);
    EXPECT_EQ(Steps(), 1);
    Press();
    Release();
    QTest::keyClick(&Map(), Qt::Key_Up);
    EXPECT_EQ(Steps(), 3) << "a click is one of its own";
    document.Undo();
    document.Undo();
    document.Undo();
    EXPECT_EQ(Colour(), old);
}

TEST_F(Colours, ADragThatAnUndoInterruptsGoesOnAsAnotherStep)
{
    const std::optional<DWORD> old = Colour();
    Press();
    DragTo(0.5, 0.5);
    document.Undo();
    EXPECT_EQ(Colour(), old);
    EXPECT_EQ(Panel().GetColor(), old);
    DragTo(0.7, 0.7);
    Release();
    EXPECT_EQ(Steps(), 1);
    document.Undo();
    EXPECT_EQ(Colour(), old);
}

TEST_F(Colours, ATypedNumberIsOneStepOrNone)
{
    const std::optional<DWORD> old = Colour();
    for (const auto& [end, green, steps] :
         {std::tuple{Qt::Key_Escape, *old >> 8 & 0xFF, 0}, {Qt::Key_Return, DWORD{255}, 1}}) {
        document.Undo();
        Number().setFocus();
        Number().selectAll();
        QTest::keyClicks(&Number(), "90");
        EXPECT_EQ(*Colour() >> 8 & 0xFF, 90u);
        QTest::keyClicks(&Number(), "0"); // out of range: clamped in the end
        QTest::keyClick(&Number(), end);
        EXPECT_EQ(*Colour() >> 8 & 0xFF, green);
        EXPECT_EQ(document.Steps().index(), steps);
    }
}

TEST_F(Colours, SelectingShowsAColourAndIsNoStep)
{
    auto& gradient = Get<CKvGradientCtrl>();
    QTest::mouseClick(&gradient, Qt::LeftButton, {}, {gradient.width() - 5, gradient.height() - 6});
    EXPECT_EQ(document.Selection().Stop(), 2);
    EXPECT_EQ(Panel().GetColor(), document.Current().title.fill.stops[2].colour);

    SetUpAll(PaintKind::Gradient, PaintKind::FourCorner);
    Target(1).click();
    auto& corners = Get<CKvQuadGradCtrl>();
    QTest::mouseClick(&corners, Qt::LeftButton, {}, {corners.width() - 9, corners.height() - 9});
    EXPECT_EQ(document.Selection().Corner(), 3);
    EXPECT_EQ(Panel().GetColor(), document.Current().background.corners[3]);
    Target(0).click();
    Target(1).click();
    EXPECT_EQ(document.Selection().Corner(), 3) << "kept while another target is selected";
    EXPECT_EQ(Steps(), 0);
}

TEST_F(Colours, DroppingOnACornerIsOneStep)
{
    SetUpAll(PaintKind::FourCorner, PaintKind::None);
    const CornerColours before = document.Current().title.fill.corners;
    document.Select(document.Selection().WithCorner(1));
    auto& corners = Get<CKvQuadGradCtrl>();
    EXPECT_TRUE(DropText(corners, QPoint(corners.width() - 9, 9), "#80112233"));
    EXPECT_EQ(document.Current().title.fill.corners[1], 0x80112233u);
    EXPECT_EQ(Panel().GetColor(), 0x80112233u);
    EXPECT_EQ(Steps(), 1);
    document.Undo();
    EXPECT_EQ(document.Current().title.fill.corners, before);
    DWORD shown[4];
    Get<CKvQuadGradCtrl>().GetData(shown);
    EXPECT_EQ(shown[1], before[1]);
}

TEST_F(Colours, ThePanelIsEnabledWhereThereIsAColour)
{
    const auto kind = [](PaintKind one) { return static_cast<int>(one); };
    EXPECT_FALSE(Kind(kind(PaintKind::None)).isVisible()) << "a text is always coloured";
    Kind(kind(PaintKind::Solid)).click();
    EXPECT_EQ(Panel().GetColor(), document.Current().title.fill.colour);
    EXPECT_FALSE(Get<CKvGradientCtrl>().isVisible());

    Target(1).click();
    EXPECT_FALSE(Panel().isEnabled());
    for (const PaintKind one : {PaintKind::Solid, PaintKind::Gradient, PaintKind::FourCorner}) {
        Kind(kind(one)).click();
        EXPECT_EQ(document.Current().background.kind, one);
        EXPECT_TRUE(Panel().isEnabled() && Map().isEnabled());
        EXPECT_EQ(Get<CKvGradientCtrl>().isVisible(), one == PaintKind::Gradient);
        EXPECT_EQ(Get<CKvQuadGradCtrl>().isVisible(), one == PaintKind::FourCorner);
    }
    for (const int target : {2, 3}) {
        Target(target).click();
        EXPECT_FALSE(Map().isEnabled());
        const Title& title = document.Current().title;
        EXPECT_EQ(Panel().GetColor(), target == 2 ? title.outline.colour : title.shadow.colour);
        for (QCheckBox* on : inspector.findChildren<QCheckBox*>("on"))
            if (on->isVisible())
                on->click();
        EXPECT_TRUE(Map().isEnabled());
    }
    EXPECT_EQ(Steps(), 6);
    while (document.Steps().canUndo())
        document.Undo();
    EXPECT_EQ(document.Selection().target, ColourTarget::Text);
    EXPECT_TRUE(Get<CKvGradientCtrl>().isVisible());
}

TEST_F(Colours, TabWalksDownToThePanel)
{
    SetUpAll(PaintKind::Gradient, PaintKind::FourCorner);
    QApplication::setActiveWindow(&inspector);
    for (int target = 0; target < 4; ++target) {
        Target(target).click();
        Target(target).setFocus();
        int fields = 0;
        int y = 0;
        for (; !Panel().isAncestorOf(QApplication::focusWidget()); ++fields) {
            const int next = QApplication::focusWidget()->mapTo(&inspector, QPoint()).y();
            ASSERT_LE(y, next) << target << ' ' << fields;
            y = next;
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            ASSERT_LT(fields, 9);
        }
        EXPECT_EQ(fields, (std::array{5, 3, 3, 5})[std::size_t(target)]);
    }
}

TEST_F(Colours, TheWheelScrollsWhereTheFocusIsNot)
{
    Map().clearFocus();
    const std::optional<DWORD> old = Colour();
    for (QWidget* part : {static_cast<QWidget*>(&Map()), static_cast<QWidget*>(&Number())}) {
        QWheelEvent event({5, 5}, part->mapToGlobal(QPointF(5, 5)), {}, {0, 120}, Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(part, &event);
    }
    EXPECT_EQ(Colour(), old);
}

TEST_F(Colours, AProjectWithEveryKindShows)
{
    QTemporaryDir folder;
    QFile file(folder.filePath("all.ktitle"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(R"({"version": 1, "title": {"fill": {"kind": "fourCorner",
        "corners": ["#FF000001", "#FF000002", "#FF000003", "#FF000004"]},
        "outline": {"on": true, "colour": "#FF000005", "width": 2},
        "shadow": {"on": true, "colour": "#80000006", "x": -1, "y": 3, "blur": 4}},
        "background": {"kind": "gradient", "gradient": {"angle": 45, "stops": [
        {"colour": "#FF000007", "position": 0}, {"colour": "#FF000008", "position": 1}]}}})");
    file.close();
    ProjectError error;
    ASSERT_TRUE(document.Open(file.fileName(), error)) << error.path.toStdString();
    const auto number = [&](const char* name) { return Get<QDoubleSpinBox>(name).value(); };
    for (const auto& [target, colour] :
         {std::pair{0, 0xFF000001u}, {1, 0xFF000007u}, {2, 0xFF000005u}, {3, 0x80000006u}}) {
        Target(target).click();
        EXPECT_EQ(Panel().GetColor(), colour);
    }
    EXPECT_EQ(number("angle"), 45);
    EXPECT_EQ(number("outlineWidth"), 2);
    EXPECT_EQ(number("shadowX"), -1);
    EXPECT_EQ(number("shadowY"), 3);
    EXPECT_EQ(number("shadowBlur"), 4);
    Get<QDoubleSpinBox>("shadowY").setValue(-2);
    EXPECT_EQ(document.Current().title.shadow.y, -2);
    document.Undo();
    EXPECT_EQ(number("shadowY"), 3);
}

// The grid with a way to read a file as the next start of the program does.
struct NextRun : CKvSolidColorTemplate
{
    static DWORD FirstSwatch(const QString& folder)
    {
        EXPECT_EQ(KeepSwatches(folder), "");
        EXPECT_TRUE(ReadFile((folder + "/KvSolidColorTemplate.ini").toStdWString(), false));
        return NextRun().GetCellColor(0);
    }
};

TEST_F(Colours, SwatchesAreKeptBesideTheSettings)
{
    QTemporaryDir first, second;
    const CString before = CKvSolidColorTemplate::GetSystemFolder();
    const QString folder = Settings(first.filePath("new/settings.json")).Folder();
    const DWORD factory = NextRun::FirstSwatch(folder); // no folder yet
    Press();
    DragTo(0.5, 0.5);
    Release();
    ASSERT_NE(Panel().GetColor(), factory);
    UseContextMenu(*Panel().GetDlgItem(kSwatches), {4, 4}, "Save Current Color");
    EXPECT_EQ(NextRun::FirstSwatch(second.path()), factory);
    EXPECT_EQ(NextRun::FirstSwatch(folder), Panel().GetColor());
    EXPECT_EQ(Steps(), 1) << "a swatch is none of the project's";
    QFile blocked(first.filePath("file"));
    ASSERT_TRUE(blocked.open(QIODevice::WriteOnly));
    EXPECT_TRUE(KeepSwatches(first.filePath("file/folder")).contains("file/folder"));
    CKvSolidColorTemplate::SetSystemFolder(before);
}

TEST(ColourWindow, KeepsThePanelsMode)
{
    QTemporaryDir folder;
    const QString file = folder.filePath("settings.json");
    for (const bool isSecond : {false, true}) {
        Settings settings(file);
        settings.Load();
        EXPECT_EQ(settings.hsb, isSecond);
        MainWindow window(MainWindow::Caption::Tabs, settings.hsb);
        window.Remember(settings);
        auto& panel = *window.findChild<CKvColorPanel*>();
        EXPECT_EQ(panel.IsHSBMode(), isSecond ? 1 : 0);
        for (auto* button : panel.findChildren<QAbstractButton*>())
            if (!isSecond && button->toolTip().contains("Hue, saturation"))
                button->click();
        window.show();
        EXPECT_TRUE(window.close());
    }
}

TEST(ColourWindow, SpacePlaysFromAMapAndFromANumber)
{
    MainWindow window;
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    auto& panel = *window.findChild<CKvColorPanel*>();
    const auto plays = [&](QWidget& focus) {
        window.Time().Pause();
        focus.setFocus();
        QTest::keyClick(&focus, Qt::Key_Space);
        return window.Time().IsPlaying();
    };
    EXPECT_TRUE(plays(*panel.GetDlgItem(kMap)));
    EXPECT_TRUE(plays(*panel.GetDlgItem(kGreen)->findChild<QLineEdit*>()));
    EXPECT_FALSE(plays(*panel.GetDlgItem(kSwatches))) << "it picks a swatch";
}

TEST(ColourWindow, UndoesTheProjectWhileANumberIsTyped)
{
    MainWindow window;
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    auto& panel = *window.findChild<CKvColorPanel*>();
    const DWORD old = panel.GetColor();
    auto& line = *panel.GetDlgItem(kGreen)->findChild<QLineEdit*>();
    line.setFocus();
    line.selectAll();
    QTest::keyClicks(&line, "7");
    EXPECT_NE(panel.GetColor(), old);
    QTest::keyClick(&line, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(panel.GetColor(), old);
    QTest::keyClick(&line, Qt::Key_Return);
    EXPECT_EQ(window.Project().Current().title.fill.stops[0].colour, old);
    EXPECT_FALSE(window.Project().IsInRun());
}

} // namespace
