// The properties that forms set: they hold before and after a control creates itself, and their NOTIFY
// signals tell of the user alone.
#include "tests/designer/Controls.h"
#include "tests/designer/Properties.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <vector>

namespace {

class ControlProperties : public testing::TestWithParam<ControlKind>
{
protected:
    std::vector<PropertyValue> Values() const
    {
        std::vector<PropertyValue> values;
        for (const PropertyValue& value : kPropertyValues) {
            if (value.control == std::string(GetParam().name))
                values.push_back(value);
        }
        return values;
    }
    void Set(const char* PropertyValue::*text)
    {
        for (const PropertyValue& value : Values())
            EXPECT_TRUE(control->setProperty(value.property, QString(value.*text))) << value.property;
    }
    void Expect(const char* PropertyValue::*text, const char* when)
    {
        for (const PropertyValue& value : Values())
            EXPECT_EQ(control->property(value.property).toString(), value.*text) << value.property << when;
    }

    QWidget window;
    QWidget* control = GetParam().make(&window);
};

TEST_P(ControlProperties, HoldBeforeAndAfterItIsShown)
{
    window.resize(500, 400);
    EXPECT_TRUE(control->setProperty("itemId", 4321));
    Set(&PropertyValue::value);
    Expect(&PropertyValue::value, " before it is shown");
    window.show();
    QApplication::processEvents();
    Expect(&PropertyValue::value, " once it is shown");
    EXPECT_EQ(KvGetDlgItem(&window, 4321), control);
    Set(&PropertyValue::other); // as Qt Designer does, where the control is shown
    Expect(&PropertyValue::other, " set later");
    Set(&PropertyValue::value);
    Expect(&PropertyValue::value, " set again");
    EXPECT_EQ(control->rect().united(control->childrenRect()), control->rect());
}

TEST_P(ControlProperties, SettersAreSilent)
{
    std::vector<std::unique_ptr<QSignalSpy>> spies;
    const QMetaObject& type = *control->metaObject();
    for (int i = QWidget::staticMetaObject.propertyCount(); i < type.propertyCount(); ++i) {
        const QMetaProperty property = type.property(i);
        // Those of the toolkit's own classes tell of every change.
        if (!property.hasNotifySignal() ||
            property.notifySignal().enclosingMetaObject()->className()[0] == 'Q')
            continue;
        const QMetaMethod signal = property.notifySignal();
        EXPECT_LE(signal.parameterCount(), 1) << property.name();
        if (signal.parameterCount() == 1) {
            EXPECT_EQ(signal.parameterMetaType(0), property.metaType()) << property.name();
        }
        spies.push_back(std::make_unique<QSignalSpy>(control, signal));
    }
    Set(&PropertyValue::value);
    window.show();
    QApplication::processEvents();
    Set(&PropertyValue::other);
    Set(&PropertyValue::value);
    for (const auto& spy : spies)
        EXPECT_TRUE(spy->isEmpty()) << spy->signal().constData();
}

TEST_P(ControlProperties, AllThatAreOursAreTried)
{
    std::set<std::string> tried = {"itemId"};
    for (const PropertyValue& value : Values())
        tried.insert(value.property);
    const QMetaObject& type = *control->metaObject();
    for (int i = 0; i < type.propertyCount(); ++i) {
        const QMetaProperty property = type.property(i);
        const bool isOurs = property.enclosingMetaObject()->className()[0] != 'Q' &&
                            i == type.indexOfProperty(property.name()); // not one that is overridden
        if (isOurs && property.isDesignable()) {
            EXPECT_EQ(tried.count(property.name()), 1u) << property.name();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Controls, ControlProperties, testing::ValuesIn(kControlKinds),
                         [](const auto& kind) { return std::string(kind.param.name); });

// What the user does in a control, as the NOTIFY signal of a property says it.
class PropertyNotify : public testing::Test
{
protected:
    template <typename Control>
    Control& Show()
    {
        auto* control = new Control(&window);
        control->setGeometry(0, 0, 300, 240);
        window.resize(300, 240);
        window.show();
        QApplication::setActiveWindow(&window);
        control->setFocus();
        return *control;
    }
    /// What a signal said after a key: its argument each time, or "-" without one.
    template <typename Act>
    std::string Heard(QObject& control, const char* property, Act act)
    {
        QSignalSpy spy(
            &control,
            control.metaObject()->property(control.metaObject()->indexOfProperty(property)).notifySignal());
        act();
        std::string heard;
        for (const QList<QVariant>& said : spy)
            heard += (heard.empty() ? "" : " ") + (said.isEmpty() ? "-" : said[0].toString().toStdString());
        return heard;
    }

    QWidget window;
};

TEST_F(PropertyNotify, Gradient)
{
    auto& gradient = Show<CKvGradientCtrl>();
    gradient.setProperty("stops", "0 #000; 0.5 #f00; 1 #fff");
    const auto key = [&](Qt::Key code) { return [&gradient, code] { QTest::keyClick(&gradient, code); }; };
    EXPECT_EQ(Heard(gradient, "selectedStop", key(Qt::Key_End)), "2");
    EXPECT_EQ(Heard(gradient, "selectedStop", key(Qt::Key_Delete)), "0");
    EXPECT_EQ(Heard(gradient, "selectedStop", key(Qt::Key_Insert)), "1") << "the new stop";
    EXPECT_EQ(Heard(gradient, "selectedStop",
                    [&] {
                        QTest::mousePress(&gradient, Qt::LeftButton, {}, {75, gradient.height() - 3});
                        QTest::mouseMove(&gradient, {100, gradient.height() - 3});
                        QTest::mouseMove(&gradient, {200, gradient.height() - 3});
                        QTest::keyClick(&gradient, Qt::Key_Escape);
                        QTest::mouseRelease(&gradient, Qt::LeftButton, {}, {200, gradient.height() - 3});
                    }),
              "2 1")
        << "past a neighbour, and back";
    gradient.SetSelectedKey(0);
    gradient.setProperty("stops", "0 #000; 0.5 #f00; 1 #fff");
    gradient.SetSelectedKey(2);
    EXPECT_EQ(Heard(gradient, "stops", key(Qt::Key_Left)), "-") << "an edit at once is told once";
    EXPECT_EQ(Heard(gradient, "stops",
                    [&] {
                        QTest::mousePress(&gradient, Qt::LeftButton, {}, {150, gradient.height() - 3});
                        QTest::mouseMove(&gradient, {160, gradient.height() - 3});
                        QTest::mouseMove(&gradient, {170, gradient.height() - 3});
                        QTest::mouseRelease(&gradient, Qt::LeftButton, {}, {170, gradient.height() - 3});
                    }),
              "- -")
        << "each step of a drag";
}

TEST_F(PropertyNotify, NumberEdit)
{
    auto& edit = Show<CKvParamEdit>();
    auto* line = edit.findChild<QLineEdit*>();
    const auto up = [line] { QTest::keyClick(line, Qt::Key_Up); };
    EXPECT_EQ(Heard(edit, "value", up), "1");
    edit.SetValue(254);
    EXPECT_EQ(Heard(edit, "value", [&] { up(), up(); }), "255") << "nothing changes at the end";
    edit.SetValue(254);
    EXPECT_EQ(Heard(edit, "value", up), "255") << "also after the host had another one";
    const KvMessageSink answer(&window, [&edit](UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        edit.SetValue(40);
        return 0;
    });
    EXPECT_EQ(Heard(edit, "value", [line] { QTest::keyClick(line, Qt::Key_Down); }), "40")
        << "as the parent answered";
}

TEST_F(PropertyNotify, ColourMap)
{
    auto& map = Show<CKvColorMapWnd>();
    map.setProperty("map", "SliderRed");
    map.SetValue(0xFF100000u);
    EXPECT_EQ(Heard(map, "color", [&] { QTest::keyClick(&map, Qt::Key_Up); }), "#110000");
    EXPECT_EQ(Heard(map, "color",
                    [&] {
                        QTest::mousePress(&map, Qt::LeftButton, {}, {5, 0});
                        QTest::keyClick(&map, Qt::Key_Escape);
                    }),
              "#ff0000 #110000");
}

TEST_F(PropertyNotify, ColourPanel)
{
    auto& panel = Show<CKvColorPanel>();
    const QList<QLineEdit*> lines = panel.findChildren<QLineEdit*>();
    ASSERT_FALSE(lines.isEmpty());
    lines[0]->setFocus();
    EXPECT_EQ(Heard(panel, "color", [&] { QTest::keyClick(lines[0], Qt::Key_Up); }), "#010000");
    auto* hsb = qobject_cast<QAbstractButton*>(panel.GetDlgItem(14036));
    ASSERT_NE(hsb, nullptr);
    EXPECT_EQ(Heard(panel, "hsbMode", [&] { hsb->click(), hsb->click(); }), "true");
}

TEST_F(PropertyNotify, FourCorners)
{
    auto& quad = Show<CKvQuadGradCtrl>();
    EXPECT_EQ(Heard(quad, "selectedCorner", [&] { QTest::keyClick(&quad, Qt::Key_Right); }), "1");
    quad.setProperty("topRight", "#80c2487a");
    QTest::keyClick(&quad, Qt::Key_C, Qt::ControlModifier);
    QTest::keyClick(&quad, Qt::Key_Down);
    for (const char* property : {"topLeft", "topRight", "bottomLeft", "bottomRight"}) {
        quad.setProperty("bottomRight", "#3f7f9f");
        EXPECT_EQ(Heard(quad, property, [&] { QTest::keyClick(&quad, Qt::Key_V, Qt::ControlModifier); }),
                  "-");
        EXPECT_EQ(quad.property("bottomRight").toString(), "#80c2487a") << "pasted";
    }
}

TEST_F(PropertyNotify, LogList)
{
    auto& log = Show<CKvAppLogListCtrl>();
    log.Initialize(1);
    const auto choose = [&log](int item) {
        return [&log, item] {
            QTimer::singleShot(0, [item] {
                auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
                ASSERT_NE(menu, nullptr);
                menu->setActiveAction(menu->actions().at(item));
                QTest::keyClick(menu, Qt::Key_Return);
            });
            QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 200}, log.mapToGlobal(QPoint(5, 200)));
            QApplication::sendEvent(&log, &event);
        };
    };
    EXPECT_EQ(Heard(log, "maximumLines", choose(1)), "2000");
    EXPECT_EQ(Heard(log, "maximumLines", choose(1)), "") << "as many as before";
}

TEST_F(PropertyNotify, KeyframeStrip)
{
    auto& strip = Show<CKvKeyFrameCtrl>();
    const auto click = [&strip](UINT button) {
        return [&strip, button] { qobject_cast<QAbstractButton*>(KvGetDlgItem(&strip, button))->click(); };
    };
    EXPECT_EQ(Heard(strip, "animated", click(kKvKeyFrameToggleButton)), "true");
    EXPECT_EQ(Heard(strip, "hasKey", click(kKvKeyFrameOperatorButton)), "false");
    EXPECT_EQ(Heard(strip, "hasKey", click(kKvKeyFrameNextButton)), "");
    const KvMessageSink refuses(&window, [&strip](UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        strip.SetToggleCheck(1);
        return 0;
    });
    EXPECT_EQ(Heard(strip, "animated", click(kKvKeyFrameToggleButton)), "") << "the parent took it back";
}

TEST_F(PropertyNotify, ScrollBar)
{
    auto& bar = Show<CKvScrollBar>();
    bar.SetScrollRange(1000);
    const auto page = [&bar] { bar.triggerAction(QAbstractSlider::SliderPageStepAdd); };
    QSignalSpy requests(&bar, &CKvScrollBar::ScrollRequested);
    EXPECT_EQ(Heard(bar, "scrollPos", page), "") << "how far a page goes is the parent's to say";
    ASSERT_EQ(requests.size(), 1);
    EXPECT_EQ(requests[0][0].toInt(), SB_PAGEDOWN);
    const KvMessageSink answer(&window, [&bar](UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        bar.SetScrollPos(50);
        return 0;
    });
    EXPECT_EQ(Heard(bar, "scrollPos", page), "50");
}

TEST_F(PropertyNotify, TextList)
{
    auto& list = Show<CKvTextEditListCtrl>();
    list.setProperty("texts", QStringList{"Harbour", "Lighthouse"});
    list.SetSelItem(0);
    EXPECT_EQ(Heard(list, "texts", [&] { QTest::keyClick(&list, Qt::Key_Delete); }), "-");
    EXPECT_EQ(list.property("texts").toStringList(), QStringList{"Lighthouse"});
}

// A form's line of stops that cannot be read leaves the stops as they were, with a warning.
TEST(GradientStops, AsText)
{
    static int warnings = 0;
    warnings = 0;
    CKvGradientCtrl gradient;
    gradient.setProperty("stops", " .1  #2a1b5e ;0.30000001 #80ffffff 0.05; 1 #ffb347;");
    EXPECT_EQ(gradient.property("stops").toString(), "0.1 #ff2a1b5e; 0.3 #80ffffff 0.05; 1 #ffffb347");
    QString many;
    for (int i = 0; i < 256; ++i)
        many += "0 #fff;";
    const QtMessageHandler before = qInstallMessageHandler(
        [](QtMsgType type, const QMessageLogContext&, const QString&) { warnings += type == QtWarningMsg; });
    for (const QString& bad :
         {QString("0"), QString("0 red"), QString("2 #fff"), QString("nan #fff"), QString("0 #fff -1"),
          QString("0 #fff 0.5 0.5"), QString("0 #fff;;1 #fff"), QString::fromUtf8("0 #fff; ½ #fff"), many}) {
        gradient.setProperty("stops", bad);
        EXPECT_EQ(gradient.property("stops").toString(), "0.1 #ff2a1b5e; 0.3 #80ffffff 0.05; 1 #ffffb347")
            << bad.toStdString();
    }
    qInstallMessageHandler(before);
    EXPECT_EQ(warnings, 9);
    gradient.setProperty("stops", "");
    EXPECT_EQ(gradient.property("stops").toString(), "");
}

} // namespace
