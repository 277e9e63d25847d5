#include "KvDialog.h"
#include "KvKeyFrameCtrl.h"
#include "edit/Document.h"
#include "edit/PropertyText.h"
#include "time/TimeCodeBox.h"
#include "time/TimeRuler.h"
#include "time/Transport.h"
#include "title/AnimationInspector.h"
#include "title/CanvasView.h"
#include "title/TitleRenderer.h"
#include "window/DialogPlace.h"
#include "window/MainWindow.h"
#include "window/Skin.h"
#include "window/Switch.h"
#include "window/Texts.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QColorSpace>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QToolTip>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace titler {
namespace {

struct Timeline : testing::Test
{
    Timeline()
    {
        window.resize(1440, 800);
        window.Show(Workspace::Animate);
        window.show();
        document.Edit(EditKind::Single, "", [](Project& project) {
            project.video.frameRate = kKvFrameRate25;
            project.duration = 101;
            project.title[Property::Opacity].keys = {{10, 0}, {40, 100}, {70, 50}};
        });
        steps = document.Steps().count();
    }

    CKvKeyFrameCtrl& Strip(Property property)
    {
        return *window.findChildren<CKvKeyFrameCtrl*>()[static_cast<int>(property)];
    }
    QDoubleSpinBox& Field(Property property)
    {
        auto& inspector = *window.findChild<AnimationInspector*>();
        return *inspector.findChild<QDoubleSpinBox*>(TraitsOf(property).name);
    }
    QToolButton& EaseButton(const char* name)
    {
        return *window.findChild<QToolButton*>(QStringLiteral("ease-") + name);
    }
    void Click(Property property, int code)
    {
        CKvKeyFrameCtrl& strip = Strip(property);
        if (code == kKvKeyFrameToggle)
            strip.SetToggleCheck(!strip.GetToggleCheck());
        if (code == kKvKeyFrameOperator)
            strip.SetKeyOperatorCheck(!strip.GetKeyOperatorCheck());
        KvNotifyHeader header{&strip, strip.GetDlgCtrlID(), static_cast<std::uint32_t>(code)};
        KvSendMessage(strip.parentWidget(), WM_NOTIFY, strip.GetDlgCtrlID(),
                      reinterpret_cast<LPARAM>(&header));
    }
    const Animated& Value(Property property) { return document.Current().title[property]; }
    std::vector<int> Frames(Property property)
    {
        std::vector<int> frames;
        for (const Key& key : Value(property).keys)
            frames.push_back(key.frame);
        return frames;
    }
    QAction& Command(const QKeySequence& key)
    {
        const QList<QAction*> actions = window.actions();
        return **std::find_if(actions.begin(), actions.end(), [&](auto* a) { return a->shortcut() == key; });
    }
    // Without Return, and without the focus going elsewhere.
    void Type(Property property, const char* text)
    {
        Field(property).selectAll();
        QTest::keyClicks(&Field(property), text);
    }
    void ExpectInStep(const char* when)
    {
        for (int i = 0; i < kProperties; ++i) {
            const auto property = static_cast<Property>(i);
            const Animated& animated = Value(property);
            const double shown = ValueAt(animated, property, transport.Frame()) * LookOf(property).factor;
            EXPECT_NEAR(Field(property).value(), shown, 0.051) << when << i;
            EXPECT_EQ(Strip(property).GetToggleCheck() != 0, animated.IsAnimated()) << when << i;
            EXPECT_EQ(Strip(property).GetKeyOperatorCheck() != 0, KeyAt(animated, transport.Frame()) >= 0)
                << when << i;
        }
    }
    int NewSteps() { return document.Steps().count() - steps; }
    QPoint MarkerPlace(int frame) { return ruler.Layout().Marker(0, frame).toPoint(); }
    QPoint RulerPlace(int frame) { return {MarkerPlace(frame).x(), 10}; }
    void Drag(QPoint to)
    {
        QMouseEvent event(QEvent::MouseMove, to, ruler.mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(&ruler, &event);
    }

    MainWindow window;
    Document& document = window.Project();
    Transport& transport = window.Time();
    TimeRuler& ruler = *window.findChild<TimeRuler*>();
    int steps = 0;
};

TEST_F(Timeline, RowsAndStripsFollowTimeAndDocument)
{
    ExpectInStep("at the begin ");
    for (const int frame : {10, 25, 40, 100}) {
        transport.Seek(frame);
        ExpectInStep("after a seek ");
    }
    transport.Seek(25);
    Click(Property::Scale, kKvKeyFrameToggle);
    EXPECT_EQ(Frames(Property::Scale), std::vector<int>{25});
    ExpectInStep("animated ");
    Click(Property::Opacity, kKvKeyFrameOperator);
    EXPECT_EQ(Frames(Property::Opacity), (std::vector<int>{10, 25, 40, 70}));
    Click(Property::Opacity, kKvKeyFrameNext);
    EXPECT_EQ(transport.Frame(), 40);
    Click(Property::Opacity, kKvKeyFrameOperator);
    EXPECT_EQ(Frames(Property::Opacity), (std::vector<int>{10, 25, 70}));
    ExpectInStep("key removed ");
    Click(Property::Opacity, kKvKeyFramePrevious);
    EXPECT_EQ(transport.Frame(), 25);
    EXPECT_EQ(NewSteps(), 3);
    while (NewSteps() > 0 && document.Steps().index() > steps) {
        document.Undo();
        ExpectInStep("undo ");
        EXPECT_EQ(transport.Frame(), 25);
    }
    Click(Property::Opacity, kKvKeyFrameToggle);
    EXPECT_FALSE(Value(Property::Opacity).IsAnimated());
    EXPECT_DOUBLE_EQ(Value(Property::Opacity).value, 50); // as at frame 25
    ExpectInStep("not animated ");
}

TEST_F(Timeline, TheCanvasShowsTheCurrentFrame)
{
    QWidget& canvas = *window.findChild<CanvasView*>()->viewport();
    transport.Seek(10);
    const QImage hidden = canvas.grab().toImage();
    transport.Seek(40);
    const QImage shown = canvas.grab().toImage();
    EXPECT_NE(shown, hidden);
    transport.Seek(5); // before the first key: as there
    EXPECT_EQ(canvas.grab().toImage(), hidden);
    document.BeginRun("");
    document.UpdateRun([](Project& project) { project.title[Property::Opacity].keys[0].value = 100; });
    EXPECT_EQ(canvas.grab().toImage(), shown) << "live";
    document.CancelRun();
    EXPECT_EQ(canvas.grab().toImage(), hidden);
}

TEST_F(Timeline, AFieldEditsTheKeyOrTheValue)
{
    transport.Play();
    Field(Property::Rotation).setValue(30);
    EXPECT_FALSE(transport.IsPlaying()) << "an edit pauses";
    EXPECT_EQ(Value(Property::Rotation).value, 30);
    Field(Property::GradientOffset).setValue(-25);
    EXPECT_DOUBLE_EQ(Value(Property::GradientOffset).value, -0.25);
    transport.Seek(20);
    Field(Property::Opacity).setValue(75);
    Field(Property::Opacity).setValue(80);
    EXPECT_EQ(Frames(Property::Opacity), (std::vector<int>{10, 20, 40, 70}));
    EXPECT_EQ(NewSteps(), 3) << "one for a field's session";
    transport.Seek(21);
    Field(Property::Opacity).setValue(85);
    EXPECT_EQ(NewSteps(), 4) << "another frame is another step";
    document.Undo();
    EXPECT_EQ(transport.Frame(), 21);
    EXPECT_EQ(Value(Property::Opacity).keys[1].value, 80);
}

TEST_F(Timeline, WhatIsTypedBelongsToTheFrameAtWhichItWas)
{
    transport.Seek(40);
    Type(Property::Opacity, "33");
    transport.Seek(60);
    EXPECT_EQ(Value(Property::Opacity).keys[1].value, 33);
    EXPECT_EQ(Frames(Property::Opacity), (std::vector<int>{10, 40, 70}));
    ExpectInStep("after the seek ");
}

TEST_F(Timeline, WhatIsTypedIsInTheFileOrAskedAbout)
{
    int asked = 0;
    KvSetMessageBoxHandler([&](HWND, const std::wstring&, UINT) { return ++asked, IDCANCEL; });
    QTemporaryDir folder;
    const QString file = folder.filePath("p.ktitle");
    ASSERT_EQ(document.SaveAs(file), "");
    Type(Property::X, "4");
    Command(QKeySequence::Save).trigger();
    ProjectError error;
    EXPECT_EQ(LoadProject(file, error)->title[Property::X].value, 4);
    for (const QKeySequence& key : {QKeySequence(QKeySequence::New), QKeySequence(Qt::CTRL | Qt::Key_Q)}) {
        Type(Property::X, "5");
        Command(key).trigger();
        EXPECT_EQ(Value(Property::X).value, 5) << key.toString().toStdString();
        document.Undo();
    }
    EXPECT_EQ(asked, 2);
    KvSetMessageBoxHandler({});

    transport.Seek(60);
    Type(Property::X, "6");
    document.New();
    EXPECT_EQ(Value(Property::X).value, 0) << "it was for the project before";
    EXPECT_FALSE(document.IsModified());
}

TEST_F(Timeline, WhatIsTypedIsExported)
{
    QTemporaryDir folder;
    document.Edit(EditKind::Single, "", [](Project& project) {
        project.video = {kKvAspectSquarePixel, kKvFrameRate25, kKvScanProgressive, 160, 90};
        project.duration = 1;
        project.title.properties = StillProperties();
    });
    ASSERT_EQ(document.SaveAs(folder.filePath("p.ktitle")), "");
    Type(Property::X, "20");
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        dialog->findChild<QPushButton*>("export")->click();
    });
    Command(Qt::CTRL | Qt::SHIFT | Qt::Key_E).trigger();
    QImage image(folder.filePath("p_frames/p_0000.png"));
    image.setColorSpace({}); // it takes part in a comparison
    const QImage drawn = TitleRenderer().Render(document.Current(), 0, {160, 90});
    EXPECT_EQ(Value(Property::X).value, 20);
    EXPECT_EQ(image.convertToFormat(drawn.format()), drawn);
}

TEST_F(Timeline, CtrlZTakesBackWhatIsTypedThenAStep)
{
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    Field(Property::X).setFocus();
    Field(Property::X).setValue(7);
    Type(Property::X, "8");
    QTest::keyClick(&Field(Property::X), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Field(Property::X).cleanText(), "7.00");
    EXPECT_EQ(Value(Property::X).value, 7);
    QTest::keyClick(&Field(Property::X), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Value(Property::X).value, 0);
}

TEST_F(Timeline, TheWheelChangesNothingInPassing)
{
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const auto turn = [](QWidget& widget) {
        QWheelEvent event({5, 5}, widget.mapToGlobal(QPointF(5, 5)), {}, {0, 120}, {}, {}, {}, false);
        QApplication::sendEvent(&widget, &event);
    };
    window.findChild<CanvasView*>()->setFocus();
    const Project before = document.Current();
    for (QWidget* field : window.findChildren<QWidget*>())
        if (qobject_cast<QAbstractSpinBox*>(field) || qobject_cast<QComboBox*>(field) ||
            field->inherits("QSlider"))
            turn(*field);
    EXPECT_TRUE(document.Current() == before);
    EXPECT_EQ(transport.Frame(), 0);
    Field(Property::X).setFocus();
    turn(Field(Property::X));
    EXPECT_EQ(Value(Property::X).value, 1);
}

TEST_F(Timeline, AKeyBehindTheEndCannotBeGoneTo)
{
    document.Edit(EditKind::Single, "", [](Project& project) { project.duration = 50; });
    transport.Seek(40);
    Command(Qt::CTRL | Qt::SHIFT | Qt::Key_Right).trigger();
    EXPECT_EQ(transport.Frame(), 40);
    Click(Property::Opacity, kKvKeyFrameNext);
    EXPECT_EQ(transport.Frame(), 40);
    Click(Property::Opacity, kKvKeyFramePrevious);
    EXPECT_EQ(transport.Frame(), 10);
}

TEST_F(Timeline, TheEaseNeedsTwoKeysAndSaysSo)
{
    EXPECT_TRUE(EaseButton("opacity").isEnabled());
    EXPECT_FALSE(EaseButton("x").isEnabled());
    EXPECT_NE(EaseButton("x").toolTip(), EaseButton("opacity").toolTip());
    document.Edit(EditKind::Single, "", [](Project& p) { p.title[Property::Opacity].keys.resize(1); });
    EXPECT_FALSE(EaseButton("opacity").isEnabled());
}

TEST_F(Timeline, TheEaseDialogIsOneStepOrNone)
{
    constexpr UINT smooth = 12095;
    constexpr UINT next = 12094;
    auto& inspector = *window.findChild<AnimationInspector*>();
    for (const UINT end : {UINT(IDCANCEL), UINT(IDOK)}) {
        transport.Seek(10);
        transport.Play();
        QTimer::singleShot(0, [&] {
            auto* dialog = qobject_cast<CKvDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            const auto click = [&](UINT id) { qobject_cast<QPushButton*>(dialog->GetDlgItem(id))->click(); };
            EXPECT_EQ(transport.Frame(), 25) << "where the ease shows";
            click(smooth);
            EXPECT_EQ(Value(Property::Opacity).keys[0].ease, PresetEase(5)) << "live";
            click(next);
            EXPECT_EQ(transport.Frame(), 55);
            click(smooth);
            click(end);
        });
        inspector.OpenEaseDialog(Property::Opacity);
        EXPECT_FALSE(transport.IsPlaying());
        EXPECT_EQ(transport.Frame(), end == IDOK ? 55 : 10);
        EXPECT_EQ(NewSteps(), end == IDOK ? 1 : 0);
        EXPECT_EQ(Value(Property::Opacity).keys[1].ease, end == IDOK ? PresetEase(5) : Ease());
    }
    document.Undo();
    EXPECT_EQ(Value(Property::Opacity).keys[0].ease, Ease());
    EXPECT_EQ(transport.Frame(), 55) << "undo does not move the time";
}

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

TEST_F(Timeline, AKeyTooManyIsRefusedAloud)
{
    document.Edit(EditKind::Single, "", [](Project& project) {
        project.duration = 2 * kMostKeys;
        KeyList& keys = project.title[Property::X].keys;
        for (int i = 0; i < kMostKeys; ++i)
            keys.append({2 * i, 1});
    });
    const int before = NewSteps();
    const auto said = [&] {
        const QString text = window.statusBar()->currentMessage();
        window.statusBar()->clearMessage();
        return text;
    };
    transport.Seek(1);
    Field(Property::X).setValue(5);
    EXPECT_EQ(Field(Property::X).value(), 1);
    EXPECT_TRUE(said().contains(PropertyWord(Property::X)));
    Click(Property::X, kKvKeyFrameOperator);
    EXPECT_TRUE(said().contains(PropertyWord(Property::X)));
    ExpectInStep("refused ");
    EXPECT_EQ(NewSteps(), before);
    transport.Seek(2);
    Field(Property::X).setValue(5);
    Click(Property::X, kKvKeyFrameOperator);
    EXPECT_EQ(said(), "");
    EXPECT_EQ(NewSteps(), before + 2);
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

TEST_F(Timeline, AStepSharesTheKeysThatItDidNotChange)
{
    const auto keys = [&] { return Value(Property::Opacity).keys.constData(); };
    const Key* const shared = keys();
    transport.Seek(40);
    Field(Property::X).setValue(5);
    Click(Property::X, kKvKeyFrameToggle);
    EXPECT_EQ(keys(), shared);
    Field(Property::Opacity).setValue(5);
    EXPECT_NE(keys(), shared);
    document.Undo();
    EXPECT_EQ(keys(), shared);
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

TEST_F(Timeline, TabWalksARowFromTheValueToTheEase)
{
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    Field(Property::Opacity).setFocus();
    QTest::keyClick(&window, Qt::Key_Tab);
    EXPECT_EQ(window.focusWidget()->parentWidget(), &Strip(Property::Opacity));
    QTest::keyClick(&window, Qt::Key_Tab);
    EXPECT_EQ(window.focusWidget(), &EaseButton("opacity"));
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

TEST(DialogPlace, LeavesThePictureInSight)
{
    const QSize dialog(600, 400);
    const struct
    {
        const char* name;
        QRect seen;
        QRect room;
        QPoint place;
    } rows[] = {
        {"below", {100, 100, 800, 300}, {0, 0, 1600, 1000}, {200, 408}},
        {"beside", {0, 100, 800, 700}, {0, 0, 1600, 1000}, {808, 250}},
        {"a corner covers less", {200, 200, 900, 700}, {0, 0, 1600, 1000}, {1000, 0}},
        {"another screen", {-1500, 0, 800, 700}, {-1600, 0, 1600, 1000}, {-692, 150}},
        {"no room at all", {0, 0, 300, 200}, {0, 0, 500, 300}, {0, 0}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(PlaceBeside(row.seen, dialog, row.room), row.place) << row.name;
}

} // namespace
} // namespace titler
