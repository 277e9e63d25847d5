#include "TimelineFixture.h"
#include "time/TimeCodeBox.h"
#include "title/CanvasView.h"
#include "window/Skin.h"
#include "window/Switch.h"
#include "window/Texts.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QToolTip>

namespace titler {
namespace {

TEST_F(Timeline, ThePlayheadIsDraggedAndComesBack)
{
    transport.Seek(5);
    transport.Play();
    QTest::mousePress(&ruler, Qt::LeftButton, {}, RulerPlace(30));
    EXPECT_FALSE(transport.IsPlaying());
    EXPECT_EQ(transport.Frame(), 30);
    Drag(RulerPlace(55));
    EXPECT_EQ(transport.Frame(), 55);
    Drag({-500, 10});
    EXPECT_EQ(transport.Frame(), 0);
    QTest::keyClick(&ruler, Qt::Key_Escape);
    EXPECT_EQ(transport.Frame(), 5);
    Drag(RulerPlace(80));
    QTest::mouseRelease(&ruler, Qt::LeftButton, {}, RulerPlace(80));
    EXPECT_EQ(transport.Frame(), 5) << "the gesture was over";
    EXPECT_EQ(NewSteps(), 0);
}

TEST_F(Timeline, ADragBeyondTheEdgeScrolls)
{
    transport.Seek(40);
    while (ruler.View().span > 20)
        QTest::keyClick(&ruler, Qt::Key_Plus);
    const QPoint beyond(ruler.width() + 40, 10);
    QTest::mousePress(&ruler, Qt::LeftButton, {}, RulerPlace(40));
    Drag(beyond);
    EXPECT_TRUE(QTest::qWaitFor([&] { return transport.Frame() == 100; }));
    QTest::keyClick(&ruler, Qt::Key_Escape);
    EXPECT_EQ(transport.Frame(), 40);
    QTest::mouseRelease(&ruler, Qt::LeftButton, {}, beyond);

    QTest::mousePress(&ruler, Qt::LeftButton, {}, MarkerPlace(40));
    Drag({0, MarkerPlace(40).y()});
    EXPECT_TRUE(QTest::qWaitFor([&] { return Frames(Property::Opacity)[1] == 11; }));
    QTest::qWait(200);
    EXPECT_EQ(ruler.View().first, 11) << "it stays with a key that can go no farther";
    document.Undo(); // in the drag: ends it
    const double first = ruler.View().first;
    QTest::qWait(200);
    EXPECT_EQ(ruler.View().first, first);
    EXPECT_EQ(Frames(Property::Opacity), (std::vector<int>{10, 40, 70}));
    QTest::mouseRelease(&ruler, Qt::LeftButton, {}, MarkerPlace(40));
}

TEST_F(Timeline, CrowdedKeysLeaveNoHoles)
{
    document.Edit(EditKind::Single, "", [](Project& project) {
        project.duration = 9000;
        project.title.properties = StillProperties();
        for (int frame = 0; frame < 9000; ++frame)
            project.title[Property::X].keys.append({frame, 0});
    });
    const QImage image = ruler.grab().toImage();
    const QPointF from = ruler.Layout().Marker(0, 100) * image.devicePixelRatio();
    const int to = qRound(ruler.Layout().ToX(8900) * image.devicePixelRatio());
    const QColor key = LoadSkin().key;
    int holes = 0;
    for (int x = qRound(from.x()); x < to; ++x)
        holes += image.pixelColor(x, int(from.y())) != key;
    EXPECT_EQ(holes, 0);
}

TEST_F(Timeline, ALanesNameIsWrittenOrTold)
{
    document.Edit(EditKind::Single, "", [](Project& p) { p.title[Property::X].keys = {{100, 0}}; });
    const auto tip = [&](int lane) {
        const QPoint place = ruler.Layout().Lane(lane).center().toPoint();
        QHelpEvent event(QEvent::ToolTip, place, ruler.mapToGlobal(place));
        QApplication::sendEvent(&ruler, &event);
        return QToolTip::text();
    };
    const QString x = PropertyName(Property::X);
    const QString opacity = PropertyName(Property::Opacity);
    EXPECT_EQ(tip(1), Text(kTextTimeRulerTip)) << "the name is written";
    ruler.resize(200, ruler.height());
    EXPECT_EQ(tip(0), x);
    EXPECT_EQ(tip(1), opacity);
    ruler.resize(200, TimeLayout::kRuler + 12); // one lane for all
    EXPECT_EQ(tip(0), x + ", " + opacity);
}

TEST_F(Timeline, AnOpenedProjectStandsAtItsMiddle)
{
    QTemporaryDir folder;
    const QString file = folder.filePath("p.ktitle");
    ASSERT_EQ(document.SaveAs(file), "");
    transport.Seek(7);
    ASSERT_TRUE(window.OpenProject(file));
    EXPECT_EQ(transport.Frame(), 50);
    document.New();
    EXPECT_EQ(transport.Frame(), 0);
}

TEST_F(Timeline, AKeyIsDraggedBetweenItsNeighbours)
{
    const auto press = [&](int frame) { QTest::mousePress(&ruler, Qt::LeftButton, {}, MarkerPlace(frame)); };
    const auto release = [&](QPoint at) { QTest::mouseRelease(&ruler, Qt::LeftButton, {}, at); };
    press(40);
    release(MarkerPlace(40));
    EXPECT_EQ(transport.Frame(), 40) << "a click goes there";
    press(40);
    Drag(MarkerPlace(52));
    EXPECT_EQ(Frames(Property::Opacity), (std::vector<int>{10, 52, 70}));
    Drag(MarkerPlace(95));
    EXPECT_EQ(Frames(Property::Opacity), (std::vector<int>{10, 69, 70}));
    release(MarkerPlace(95));
    EXPECT_EQ(NewSteps(), 1);
    EXPECT_EQ(transport.Frame(), 40);
    document.Undo();
    press(70);
    Drag(MarkerPlace(98));
    QTest::keyClick(&ruler, Qt::Key_Escape);
    EXPECT_EQ(Frames(Property::Opacity), (std::vector<int>{10, 40, 70}));
    release(MarkerPlace(98));
    press(70);
    Drag(MarkerPlace(98));
    document.Undo(); // in the drag: ends it
    Drag(MarkerPlace(80));
    release(MarkerPlace(80));
    EXPECT_EQ(Frames(Property::Opacity), (std::vector<int>{10, 40, 70}));
}

TEST_F(Timeline, TheRulersKeys)
{
    transport.Seek(40);
    const struct
    {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        int frame;
    } rows[] = {
        {Qt::Key_Right, {}, 41},    {Qt::Key_Left, {}, 40},
        {Qt::Key_PageDown, {}, 15}, {Qt::Key_PageUp, {}, 40},
        {Qt::Key_End, {}, 100},     {Qt::Key_Home, {}, 0},
        {Qt::Key_Left, {}, 0},      {Qt::Key_Right, Qt::AltModifier, 0}, // no key here
    };
    for (const auto& [key, modifiers, frame] : rows) {
        QTest::keyClick(&ruler, key, modifiers);
        EXPECT_EQ(transport.Frame(), frame) << key;
    }
    transport.Seek(40);
    QTest::keyClick(&ruler, Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(transport.Frame(), 41);
    EXPECT_EQ(Frames(Property::Opacity), (std::vector<int>{10, 41, 70}));
    QTest::keyClick(&ruler, Qt::Key_Plus);
    EXPECT_LT(ruler.View().span, 100);
    const double first = ruler.View().first;
    transport.Seek(100); // the view follows
    EXPECT_GT(ruler.View().first, first);
    QTest::keyClick(&ruler, Qt::Key_Minus);
    EXPECT_EQ(ruler.View().span, 100);
}

TEST_F(Timeline, AScreenReaderFindsASlider)
{
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&ruler);
    ASSERT_NE(reader, nullptr);
    EXPECT_EQ(reader->role(), QAccessible::Slider);
    reader->valueInterface()->setCurrentValue(37);
    EXPECT_EQ(transport.Frame(), 37);
    EXPECT_EQ(reader->text(QAccessible::Description), "00:00:01:12");
}

TEST_F(Timeline, SpacePlaysUnlessSomebodyWantsIt)
{
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const auto space = [&](QWidget& focus) {
        transport.Pause();
        focus.setFocus();
        QTest::keyClick(&focus, Qt::Key_Space);
        return transport.IsPlaying();
    };
    EXPECT_TRUE(space(ruler));
    EXPECT_TRUE(space(*window.findChild<CanvasView*>()));
    EXPECT_FALSE(space(*window.findChild<QPlainTextEdit*>("text")));
    EXPECT_TRUE(space(*window.findChild<TimeCodeBox*>("time")));
    Field(Property::X).selectAll();
    EXPECT_TRUE(space(Field(Property::X))) << "a number has no use for it";
    EXPECT_EQ(Field(Property::X).value(), 0);
    EXPECT_FALSE(space(window.findChild<Switch*>()->Button(1)));
    EXPECT_FALSE(space(*Strip(Property::X).findChild<QAbstractButton*>()));
    EXPECT_TRUE(Value(Property::X).IsAnimated()) << "and the button was pressed";
}

TEST_F(Timeline, TimeAndDurationAreTimeCodes)
{
    auto& time = *window.findChild<TimeCodeBox*>("time");
    auto& duration = *window.findChild<TimeCodeBox*>("duration");
    const auto type = [](TimeCodeBox& box, const char* text) {
        auto& edit = *box.findChild<QLineEdit*>();
        edit.selectAll();
        QTest::keyClicks(&edit, text);
        QTest::keyClick(&edit, Qt::Key_Return);
    };
    type(time, "112");
    EXPECT_EQ(transport.Frame(), 37);
    EXPECT_EQ(time.text(), "00:00:01:12");
    type(time, "9:59:59:24"); // beyond the end
    EXPECT_EQ(transport.Frame(), 100);
    type(duration, "2:00");
    EXPECT_EQ(document.Current().duration, 50);
    EXPECT_EQ(transport.Frame(), 49);
    document.Undo();
    EXPECT_EQ(duration.text(), "00:00:04:01");
    EXPECT_EQ(transport.Frame(), 100);
}

TEST_F(Timeline, AnotherFrameRateKeepsTheTimesInOneStep)
{
    transport.Seek(40);
    QAction* format = nullptr;
    for (QAction* action : window.actions())
        if (action->isCheckable() && action->text().contains("1280 * 720 50p"))
            format = action;
    ASSERT_NE(format, nullptr);
    format->trigger();
    EXPECT_EQ(NewSteps(), 1);
    EXPECT_EQ(document.Current().duration, 202);
    EXPECT_EQ(Frames(Property::Opacity), (std::vector<int>{20, 80, 140}));
    EXPECT_EQ(transport.Frame(), 80);
    document.Undo();
    EXPECT_EQ(Frames(Property::Opacity), (std::vector<int>{10, 40, 70}));
    EXPECT_EQ(transport.Frame(), 40);
}

} // namespace
} // namespace titler
