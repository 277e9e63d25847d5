// A colour map on its own: what the user's hand makes of its colour, what its parent hears, what it draws.
#include "KvColorMapWnd.h"

#include <QAccessible>
#include <QApplication>
#include <QPainter>
#include <QPointer>
#include <QTest>
#include <QWheelEvent>

#include <functional>
#include <gtest/gtest.h>

namespace {

constexpr WPARAM kId = 14023;

class TestMap : public CKvColorMapWnd
{
public:
    using CKvColorMapWnd::ToolTipAt;
    using CKvColorMapWnd::WantsShortcut;
};

// A map 101 x 101: one pixel is a hundredth. Messages are written "phase:colour".
class ColourMap : public testing::Test
{
protected:
    ColourMap() { Renew(kKvColorMapField, kKvLockFieldR); }
    void Renew(int type, int lock)
    {
        onMessage = {};
        delete map;
        map = new TestMap;
        map->setGeometry(0, 0, 101, 101);
        map->Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, &parent, kId);
        map->SetType(type);
        map->SetLockType(lock);
        map->SetValue(0xFF336699u);
        parent.resize(101, 101);
        parent.show();
        QApplication::setActiveWindow(&parent);
        map->setFocus();
        heard.clear();
    }
    std::optional<LRESULT> Hear(UINT message, WPARAM wParam, LPARAM lParam)
    {
        const auto& record = *reinterpret_cast<const KvColorNotifyRecord*>(lParam);
        EXPECT_TRUE(message == WM_NOTIFY && wParam == kId && record.hdr.hwndFrom == map &&
                    record.hdr.idFrom == kId && record.hdr.code == 0xFFFFFFD7u && record.dataSize == 4);
        heard += QString::asprintf("%s%d:%08x", heard.isEmpty() ? "" : " ", record.phase,
                                   *static_cast<const DWORD*>(record.data));
        if (onMessage)
            onMessage();
        return std::nullopt;
    }
    QString Heard() { return std::exchange(heard, {}); }
    void Mouse(QEvent::Type type, QPointF at)
    {
        const bool isMove = type == QEvent::MouseMove;
        QMouseEvent event(type, at, map->mapToGlobal(at), isMove ? Qt::NoButton : Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(map, &event);
    }
    void Press(QPointF at) { Mouse(QEvent::MouseButtonPress, at); }
    void Move(QPointF at) { Mouse(QEvent::MouseMove, at); }
    void Release(QPointF at) { Mouse(QEvent::MouseButtonRelease, at); }
    QImage Picture(double ratio = 1)
    {
        QImage picture(map->size() * ratio, QImage::Format_RGB32);
        picture.setDevicePixelRatio(ratio);
        map->render(&picture);
        return picture;
    }

    QWidget parent;
    KvMessageSink sink{&parent, [this](auto... message) { return Hear(message...); }};
    QPointer<TestMap> map;
    QString heard;
    std::function<void()> onMessage;
};

TEST_F(ColourMap, PicksTheColourUnderThePointerInEveryLockType)
{
    const struct
    {
        int type, lock;
        DWORD bottomLeft, topRight;
    } cases[] = {
        {kKvColorMapField, 1, 0xFF330000u, 0xFF33FFFFu},   {kKvColorMapField, 2, 0xFF006600u, 0xFFFF66FFu},
        {kKvColorMapField, 3, 0xFF000099u, 0xFFFFFF99u},   {kKvColorMapField, 4, 0xFF000000u, 0xFF0080FFu},
        {kKvColorMapField, 5, 0xFF000000u, 0xFFFF5555u},   {kKvColorMapField, 6, 0xFF999999u, 0xFF990000u},
        {kKvColorMapSlider, 10, 0xFF006699u, 0xFFFF6699u}, {kKvColorMapSlider, 11, 0xFF330099u, 0xFF33FF99u},
        {kKvColorMapSlider, 12, 0xFF336600u, 0xFF3366FFu}, {kKvColorMapSlider, 13, 0xFF993333u, 0xFF993333u},
        {kKvColorMapSlider, 14, 0xFF999999u, 0xFF004D99u}, {kKvColorMapSlider, 15, 0xFF000000u, 0xFF55AAFFu},
        {kKvColorMapAlpha, 0, 0x00336699u, 0xFF336699u},
    };
    for (const auto& one : cases) {
        Renew(one.type, one.lock);
        Press({-5, 300});
        EXPECT_EQ(map->GetValue(), one.bottomLeft) << std::hex << map->GetValue() << " lock " << one.lock;
        Release({-5, 300});
        Renew(one.type, one.lock);
        Press({100, 0});
        EXPECT_EQ(map->GetValue(), one.topRight) << std::hex << map->GetValue() << " lock " << one.lock;
        Release({100, 0});
    }
}

TEST_F(ColourMap, TellsOfPressMovesAndRelease)
{
    Press({0, 100});
    Move({100, 100});
    Release({50, 50});
    EXPECT_EQ(Heard(), "0:ff330000 1:ff33ff00 2:ff33ff00");
    Move({50, 50});
    EXPECT_EQ(Heard(), "");
}

TEST_F(ColourMap, TakesADragBackOnEscapeAndEndsItWhenTheMouseIsLost)
{
    Press({0, 100});
    EXPECT_TRUE(map->WantsShortcut(VK_ESCAPE, Qt::NoModifier, 0));
    QTest::keyClick(map, Qt::Key_Escape);
    Move({10, 10});
    Release({10, 10});
    EXPECT_EQ(Heard(), "0:ff330000 1:ff336699 2:ff336699");
    EXPECT_FALSE(map->WantsShortcut(VK_ESCAPE, Qt::NoModifier, 0));
    Press({0, 100});
    map->setEnabled(false);
    EXPECT_EQ(Heard(), "0:ff330000") << "the toolkit is still at work on it";
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(Heard(), "2:ff330000");
}

TEST_F(ColourMap, StepsByKeysAndWheel)
{
    QTest::keyClick(map, Qt::Key_Right);
    EXPECT_EQ(Heard(), "0:ff336799 1:ff336799 2:ff336799");
    QTest::keyClick(map, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(map->GetValue(), 0xFF33678Fu);
    QTest::keyClick(map, Qt::Key_PageUp);
    QTest::keyClick(map, Qt::Key_Home);
    EXPECT_EQ(map->GetValue(), 0xFF330099u);
    Heard();
    QTest::keyClick(map, Qt::Key_Left);
    EXPECT_EQ(Heard(), "") << "at the end of the range";
    const QPointF at(5, 5);
    QWheelEvent wheel(at, map->mapToGlobal(at), {}, {0, 240}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(map, &wheel);
    EXPECT_EQ(Heard(), "0:ff33009b 1:ff33009b 2:ff33009b");
}

TEST_F(ColourMap, KeepsHueAndSaturationWhereTheColourHasNone)
{
    Renew(kKvColorMapField, kKvLockFieldHue);
    Press({0, 100}); // black
    EXPECT_EQ(map->GetValue(), 0xFF000000u);
    EXPECT_DOUBLE_EQ(map->GetHue(), 210);
    Release({0, 100});
    map->SetValue(0xFF808080u);
    EXPECT_EQ(map->GetHue(), 0);
    map->SetHSBValue(360, 1, 1);
    EXPECT_EQ(map->GetValue(), 0xFFFF0000u);
    EXPECT_EQ(map->GetHue(), 360);
}

TEST_F(ColourMap, SettersClampAndStaySilent)
{
    map->SetR(300);
    map->SetG(-1);
    map->SetA(128);
    EXPECT_EQ(map->GetValue(), 0x80FF0099u);
    map->SetHSBValue(-5, NAN, 2);
    EXPECT_EQ(map->GetValue(), 0x80FFFFFFu);
    map->SetHPValue(0.5, 0.25, 2);
    EXPECT_EQ(map->GetValue(), 0x808040FFu);
    double red = 0;
    double green = 0;
    double blue = 0;
    map->GetHPValue(red, green, blue);
    EXPECT_EQ(red, 0.5);
    EXPECT_EQ(green, 0.25);
    EXPECT_EQ(blue, 1);
    map->SetType(1);
    map->SetLockType(7);
    map->SetLockType(10);
    EXPECT_EQ(map->GetType(), 0);
    EXPECT_EQ(map->GetLockType(), 1);
    EXPECT_EQ(Heard(), "");
}

TEST_F(ColourMap, DrawsItsFieldAtEveryRatioWithItsMarkOnTop)
{
    for (const double ratio : {1.0, 1.5}) {
        map->clearFocus();
        map->SetValue(0xFFFFFFFFu); // the mark stands in a corner
        map->SetLockType(kKvLockFieldR);
        const QImage picture = Picture(ratio);
        const int last = picture.height() - 1;
        EXPECT_EQ(picture.pixel(0, last), 0xFFFF0000u);
        EXPECT_EQ(picture.pixel(0, 0), 0xFFFF00FFu);
        EXPECT_EQ(picture.pixel(last, last), 0xFFFFFF00u);
        map->SetValue(0xFFFF8080u);
        int dark = 0;
        const QImage marked = Picture(ratio);
        for (int x = marked.width() / 3; x < marked.width() * 2 / 3; ++x)
            dark += qRed(marked.pixel(x, marked.height() / 2)) < 128 ? 1 : 0;
        EXPECT_GE(dark, 2) << "the mark's dark rings";
    }
}

TEST_F(ColourMap, ADisabledMapStillShowsWhereItStands)
{
    // The pictures under the marks are those of the first colour.
    const struct
    {
        int type;
        int lock;
        DWORD other;
    } cases[] = {{kKvColorMapField, kKvLockFieldR, 0xFF80F0F0u},
                 {kKvColorMapSlider, kKvLockSliderHue, 0xFF20F040u},
                 {kKvColorMapAlpha, 0, 0x40804020u}};
    for (const auto& one : cases) {
        Renew(one.type, one.lock);
        map->setEnabled(false);
        map->SetValue(0xFF804020u);
        const QImage picture = Picture();
        map->SetValue(one.other);
        EXPECT_NE(Picture(), picture) << one.type;
    }
}

TEST_F(ColourMap, TellsTheColourUnderThePointer)
{
    CRect area;
    EXPECT_EQ(map->ToolTipAt({100, 100}, area), "Green 255, Blue 0\n#ff33ff00");
    Renew(kKvColorMapSlider, kKvLockSliderHue);
    EXPECT_EQ(map->ToolTipAt({3, 50}, area).section('\n', 0, 0), QString::fromUtf8("Hue 180°"));
}

TEST_F(ColourMap, OffersItsChannelsAsSliders)
{
    QAccessibleInterface* field = QAccessible::queryAccessibleInterface(map);
    ASSERT_EQ(field->childCount(), 2);
    EXPECT_EQ(field->child(0)->text(QAccessible::Name), "Green");
    EXPECT_EQ(field->child(1)->valueInterface()->currentValue().toInt(), 0x99);
    field->child(1)->valueInterface()->setCurrentValue(16);
    EXPECT_EQ(Heard(), "0:ff336610 1:ff336610 2:ff336610");

    map->setFocus();
    QTest::keyClick(map, Qt::Key_Up);
    EXPECT_TRUE(field->child(1)->state().focused) << "the channel that was stepped";
    QTest::keyClick(map, Qt::Key_Right);
    EXPECT_TRUE(field->child(0)->state().focused);
    field->child(1)->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_TRUE(field->child(1)->state().focused);
    EXPECT_FALSE(field->child(0)->state().focused);
}

TEST_F(ColourMap, MayBeDeletedByEachOfItsMessages)
{
    const struct
    {
        bool isDragged;
        std::function<void()> use;
    } cases[] = {
        {false,
         [this] {
             Press({5, 5});
         }},
        {false, [this] { QTest::keyClick(map, Qt::Key_Up); }},
        {true, [this] { QTest::keyClick(map, Qt::Key_Escape); }},
        {true, [this] { map->hide(); }},
    };
    for (const auto& one : cases) {
        Renew(kKvColorMapField, kKvLockFieldR);
        if (one.isDragged)
            Press({5, 5});
        onMessage = [this] { delete map; };
        one.use();
        QCoreApplication::sendPostedEvents();
        EXPECT_TRUE(map.isNull());
    }
}

} // namespace
