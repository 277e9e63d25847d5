// The gradient control on the screen, and what a screen reader finds there.
#include "KvGradientCtrl.h"
#include "KvGuiRes.h"

#include <QAccessible>
#include <QApplication>
#include <QPointer>
#include <QTest>

#include <gtest/gtest.h>

namespace {

constexpr QRgb kBackground = 0xFF203040u;
constexpr QRgb kStrip = 0xFF5A5A5Au;

class TestCtrl : public CKvGradientCtrl
{
public:
    using CKvGradientCtrl::DrawKeyPointer;
    using CKvGradientCtrl::DrawMidPointPointer;
    using CKvGradientCtrl::OnTimer;

    int paints = 0;
    QRegion painted;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        ++paints;
        painted += event->region();
        CKvGradientCtrl::paintEvent(event);
    }
};

class GradientPicture : public testing::Test
{
protected:
    GradientPicture()
    {
        parent.setPalette(QPalette(QColor::fromRgb(kBackground)));
        parent.resize(250, 100);
        control = new TestCtrl;
        control->setGeometry(11, 7, 209, 60);
        control->Create(WS_CHILD | WS_VISIBLE, &parent, 1001);
        parent.show();
        QApplication::setActiveWindow(&parent);
        control->SetSelectedKey(1);
    }
    // The window at a pixel ratio, from the control's corner on.
    QImage Shot(qreal ratio = 1)
    {
        QImage image((parent.size().toSizeF() * ratio).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        parent.render(&image);
        image.setDevicePixelRatio(1);
        const QPoint corner = (QPointF(control->pos()) * ratio).toPoint();
        return image.copy(QRect(corner, (control->size().toSizeF() * ratio).toSize()));
    }

    QWidget parent;
    QPointer<TestCtrl> control;
};

TEST_F(GradientPicture, AreasMarkersAndFrame)
{
    const QImage image = Shot();
    const struct
    {
        const char* what;
        QPoint at;
        QRgb colour;
    } pixels[] = {
        {"tick", {19, 3}, 0xFF804040u},
        {"mid point", {34, 2}, 0xFF808080u},
        {"none beside another stop", {164, 2}, kBackground},
        {"frame", {3, 11}, 0xFFFFA500u},
        {"below the frame", {100, 46}, kBackground},
        {"strip", {0, 59}, kStrip},
        {"tip of the selected one, light, hence black", {64, 47}, 0xFF000000u},
        {"foot of the first", {0, 56}, 0xFF0000FFu},
        {"last", {208, 55}, 0xFFFF00FFu},
    };
    for (const auto& pixel : pixels)
        EXPECT_EQ(image.pixel(pixel.at), pixel.colour) << pixel.what << ' ' << pixel.at.x();
}

TEST_F(GradientPicture, SelectionBlinksAndOnlyTheStripIsPainted)
{
    QApplication::processEvents();
    control->paints = 0;
    control->painted = {};
    control->OnTimer(1);
    QApplication::processEvents();
    EXPECT_EQ(control->painted, QRegion(0, 47, 209, 13));
    EXPECT_EQ(Shot().pixel(64, 47), 0xFFFFFF00u);
    control->OnTimer(1);
    control->SetColor(0xFF0000FEu);
    EXPECT_EQ(Shot().pixel(64, 47), 0xFFC0C0C0u);
    control->setEnabled(false);
    EXPECT_EQ(Shot().pixel(64, 47), 0xFF2A2A2Au) << "grey at half brightness, no blinking";
    EXPECT_EQ(Shot().pixel(4, 57), kStrip);
    EXPECT_EQ(Shot().pixel(4, 55), 0xFF2A2A2Au);
    QApplication::processEvents();
    control->paints = 0;
    control->OnTimer(1);
    QApplication::processEvents();
    EXPECT_EQ(control->paints, 0);
}

TEST_F(GradientPicture, FrameIsOrangeWhileActiveOrEditing)
{
    const auto frame = [&] { return Shot().pixel(3, 20); };
    control->SetActive(0);
    EXPECT_EQ(frame(), 0xFF000000u);
    control->SetEditing(1);
    EXPECT_EQ(frame(), 0xFFFFA500u);
    control->SetEditing(0);
    control->setFocus();
    EXPECT_EQ(frame(), 0xFFFFA500u);
    QFocusEvent popup(QEvent::FocusOut, Qt::PopupFocusReason);
    QApplication::sendEvent(control, &popup);
    EXPECT_EQ(frame(), 0xFFFFA500u) << "a menu leaves the focus where it is";
    control->clearFocus();
    EXPECT_EQ(frame(), 0xFF000000u);
}

TEST_F(GradientPicture, FollowsTheSkinAtOnce)
{
    DWORD focus = 0;
    DWORD strip = 0;
    ASSERT_EQ(KvGuiRes::SetSkinFolder(kKvLightSkin), 1);
    KvGuiRes::LoadColor(L"keFocusColor", focus);
    KvGuiRes::LoadColor(L"keGradientStripColor", strip);
    const QImage light = Shot();
    KvGuiRes::SetSkinFolder(nullptr);
    EXPECT_EQ(light.pixel(3, 20), focus);
    EXPECT_EQ(light.pixel(0, 59), strip);
    EXPECT_EQ(Shot().pixel(3, 20), 0xFFFFA500u);
    EXPECT_EQ(Shot().pixel(0, 59), kStrip);
}

TEST_F(GradientPicture, IsSharpAtAnyPixelRatio)
{
    const QList<QRgb> plain{kStrip, 0xFF0000FFu, 0xFF000000u, 0xFFFF0000u, 0xFFFF00FFu};
    for (const qreal ratio : {1.25, 1.5, 1.75, 2.0, 3.0}) {
        const QImage image = Shot(ratio);
        const int middle = qRound(51 * ratio);
        for (int x = 0; x < image.width() - 1; ++x) // the last one may be the window's in part
            ASSERT_TRUE(plain.contains(image.pixel(x, middle))) << "blurred at " << ratio << ' ' << x;
        const int frame = qRound(3 * ratio);
        EXPECT_EQ(image.pixel(frame - 1, middle / 2), kBackground) << ratio;
        EXPECT_EQ(image.pixel(frame, middle / 2), 0xFFFFA500u) << ratio;
    }
}

TEST_F(GradientPicture, DegenerateDataAndSizesAreDrawn)
{
    const float bad[] = {std::nanf(""), INFINITY, -INFINITY, 1e30f, -1e30f};
    std::vector<SKvCGGradientKey> keys;
    for (const float value : bad)
        keys.push_back({0xFF00FF00u, value, value});
    control->SetData(5, keys.data());
    EXPECT_EQ(Shot().pixel(100, 30), 0xFF00FF00u);
    EXPECT_EQ(Shot().pixel(4, 47), 0xFF00FF00u) << "not a number stands at 0";
    for (const QSize size :
         {QSize(0, 0), QSize(1, 1), QSize(9, 22), QSize(9, 60), QSize(300, 5), QSize(8, 30)}) {
        control->resize(size);
        Shot();
        QTest::mouseClick(control.data(), Qt::LeftButton, {}, QPoint(size.width() / 2, size.height() / 2));
    }
    control->resize(209, 60);
    control->SetData(0, nullptr);
    EXPECT_EQ(Shot().pixel(9, 13), 0xFFCCCCCCu) << "the board alone";
}

TEST_F(GradientPicture, MarkersForADerivedControl)
{
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(kBackground);
    QPainter painter(&image);
    TestCtrl::DrawKeyPointer(painter, 10, 15, 0xFF00FF00u);
    TestCtrl::DrawMidPointPointer(painter, 30, 0xFF808080u);
    painter.end();
    for (const QPoint at : {QPoint(10, 6), QPoint(6, 15), QPoint(14, 15)})
        EXPECT_EQ(image.pixel(at), 0xFF00FF00u);
    for (const QPoint at : {QPoint(10, 5), QPoint(5, 15), QPoint(10, 16), QPoint(30, 5)})
        EXPECT_EQ(image.pixel(at), kBackground);
    EXPECT_EQ(image.pixel(30, 2), 0xFF808080u);
}

class GradientReader : public GradientPicture
{
protected:
    QAccessibleInterface* Container() { return QAccessible::queryAccessibleInterface(control.data()); }
    static QAccessibleValueInterface* Value(QAccessibleInterface* part) { return part->valueInterface(); }
    QString Names()
    {
        QStringList names;
        for (int i = 0; i < Container()->childCount(); ++i)
            names << Container()->child(i)->text(QAccessible::Name);
        return names.join('|');
    }
};

TEST_F(GradientReader, FindsStopsAndShownMidPoints)
{
    EXPECT_EQ(Container()->text(QAccessible::Name), "Gradient");
    EXPECT_EQ(Names(), "Stop 1 of 4, blue|Mid point between stops 1 and 2|Stop 2 of 4, yellow|"
                       "Mid point between stops 2 and 3|Stop 3 of 4, red|Stop 4 of 4, magenta");
    const QRect whole = Container()->rect();
    for (int i = 0; i < Container()->childCount(); ++i) {
        QAccessibleInterface* part = Container()->child(i);
        EXPECT_EQ(Container()->indexOfChild(part), i);
        EXPECT_TRUE(whole.contains(part->rect())) << i;
        EXPECT_EQ(part->parent(), Container());
        EXPECT_EQ(part->role(), QAccessible::Slider);
        const QPoint middle = part->rect().center();
        EXPECT_EQ(Container()->childAt(middle.x(), middle.y()), part) << i;
    }
    EXPECT_EQ(Value(Container()->child(2))->currentValue().toDouble(), 30.0);
    EXPECT_EQ(Value(Container()->child(1))->currentValue().toDouble(), 50.0);
    EXPECT_EQ(Container()->child(2)->text(QAccessible::Description), "Position 30 percent");
    control->SetColor(0x80804000u);
    EXPECT_EQ(Container()->child(2)->text(QAccessible::Name), "Stop 2 of 4, brown, 50.2 percent opaque");
}

TEST_F(GradientReader, EditsAsAUserDoes)
{
    std::string heard;
    KvMessageSink sink(&parent, [&](UINT, WPARAM, LPARAM lParam) -> LRESULT {
        const auto& record = *reinterpret_cast<const GradientNotifyRecord*>(lParam);
        heard += std::to_string(record.hdr.idFrom) + '/' + std::to_string(record.phase) + ' ';
        return 0;
    });
    QAccessibleInterface* yellow = Container()->child(2);
    const QAccessible::Id id = QAccessible::uniqueId(yellow);
    Value(yellow)->setCurrentValue(80);
    EXPECT_EQ(std::exchange(heard, {}), "1/0 1/1 1/2 ");
    EXPECT_EQ(Container()->indexOfChild(yellow), 3) << "the same part, now behind red and a mid point";
    EXPECT_EQ(QAccessible::uniqueId(Container()->child(3)), id);
    Value(yellow)->setCurrentValue(80);
    Value(yellow)->setCurrentValue("none");
    EXPECT_EQ(heard, "");

    const auto setFocus = QAccessibleActionInterface::setFocusAction();
    QTest::keyClick(control.data(), Qt::Key_5);
    Container()->child(0)->actionInterface()->doAction(setFocus);
    QTest::keyClick(control.data(), Qt::Key_Return);
    EXPECT_EQ(std::exchange(heard, {}), "2/0 ") << "the digit went with the old selection";
    EXPECT_EQ(Container()->focusChild(), Container()->child(0));
    EXPECT_TRUE(Container()->child(0)->state().focused);
    EXPECT_FALSE(Container()->state().focused) << "not both";
    Value(Container()->child(1))->setCurrentValue(1);
    EXPECT_EQ(Value(Container()->child(1))->currentValue().toDouble(), 5.0);

    control->setEnabled(false);
    Value(yellow)->setCurrentValue(10);
    EXPECT_TRUE(yellow->state().disabled);
    control->setEnabled(true);
    const SKvCGGradientKey one{0xFFFFFFFFu, 0, 0};
    control->SetData(1, &one);
    EXPECT_EQ(Names(), "Stop 1 of 1, white");
    EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr) << "gone with its stop";
}

TEST_F(GradientReader, ControlMayDieInAnEdit)
{
    KvMessageSink sink(&parent, [&](UINT, WPARAM, LPARAM) -> LRESULT {
        delete control;
        return 0;
    });
    const QAccessible::Id id = QAccessible::uniqueId(Container()->child(2));
    Value(Container()->child(2))->setCurrentValue(10);
    EXPECT_FALSE(control);
    EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr);
}

} // namespace
