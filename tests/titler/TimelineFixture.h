// What the tests of the timeline share.
#pragma once

#include "KvKeyFrameCtrl.h"
#include "edit/Document.h"
#include "edit/PropertyText.h"
#include "time/TimeRuler.h"
#include "time/Transport.h"
#include "title/AnimationInspector.h"
#include "window/MainWindow.h"

#include <QAction>
#include <QApplication>
#include <QDoubleSpinBox>
#include <QTest>
#include <QToolButton>

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace titler {

/// The program's window at its timeline: opacity has keys at the frames 10, 40 and 70.
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

} // namespace titler
