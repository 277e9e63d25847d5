#include "KvDialog.h"
#include "TimelineFixture.h"
#include "title/CanvasView.h"
#include "title/TitleRenderer.h"
#include "window/DialogPlace.h"

#include <QColorSpace>
#include <QComboBox>
#include <QPushButton>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTimer>
#include <QWheelEvent>

namespace titler {
namespace {

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
