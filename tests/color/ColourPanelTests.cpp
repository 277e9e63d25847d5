// The colour panel: every child keeps all others in step, and the parent hears of what the user did.
#include "KvButtons.h"
#include "KvColorMapWnd.h"
#include "KvColorPanel.h"
#include "KvGuiRes.h"
#include "KvParamEdit.h"
#include "KvSolidColorTemplate.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <gtest/gtest.h>

namespace {

constexpr UINT kId = 4711;
enum Item : UINT
{
    kMap = 14023,
    kSlider = 14024,
    kAlpha = 14025,
    kFirstEdit = 14026,
    kAlphaEdit = 14029,
    kSwatches = 14030,
    kFirstChannel = 14032,
    kRgb = 14035,
    kHsb = 14036,
};

class TestPanel : public CKvColorPanel
{
public:
    using CKvColorPanel::_NotifyChangeColor;
};

// A panel in a parent; messages are written "phase:colour".
class ColourPanel : public testing::Test
{
protected:
    ColourPanel() { Renew(); }
    void Renew(int hsb = 0)
    {
        onMessage = {};
        delete panel;
        panel = new TestPanel;
        panel->SetInitialMode(hsb);
        ASSERT_EQ(panel->Create(&parent), 1);
        panel->SetDlgCtrlID(kId);
        panel->SetColor(0xFF336699u);
        parent.resize(400, 300);
        panel->resize(panel->sizeHint());
        panel->show();
        parent.show();
        QApplication::setActiveWindow(&parent);
        heard.clear();
    }
    std::optional<LRESULT> Hear(UINT message, WPARAM wParam, LPARAM lParam)
    {
        const auto& record = *reinterpret_cast<const KvColorNotifyRecord*>(lParam);
        EXPECT_TRUE(message == WM_NOTIFY && wParam == kId && record.hdr.hwndFrom == panel &&
                    record.hdr.idFrom == kId && record.hdr.code == 0xFFFFFFD7u && record.dataSize == 4);
        const DWORD colour = *static_cast<const DWORD*>(record.data);
        EXPECT_EQ(colour, panel->GetColor());
        heard += QString::asprintf("%s%d:%08x", heard.isEmpty() ? "" : " ", record.phase, colour);
        if (onMessage)
            onMessage();
        return std::nullopt;
    }
    QString Heard() { return std::exchange(heard, {}); }
    template <typename Child>
    Child* Get(UINT id)
    {
        return dynamic_cast<Child*>(panel->GetDlgItem(id));
    }
    CKvColorMapWnd* Map(UINT id) { return Get<CKvColorMapWnd>(id); }
    CKvParamEdit* Edit(UINT id) { return Get<CKvParamEdit>(id); }
    QLineEdit* Line(UINT id)
    {
        auto* line = Edit(id)->findChild<QLineEdit*>();
        line->setFocus();
        line->selectAll();
        return line;
    }
    void Click(UINT id) { Get<CKvRadioBitmapButton>(id)->click(); }

    void Mouse(QWidget* child, QEvent::Type type, QPointF at)
    {
        const bool isMove = type == QEvent::MouseMove;
        QMouseEvent event(type, at, child->mapToGlobal(at), isMove ? Qt::NoButton : Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(child, &event);
    }
    void Swatch(std::int32_t index, DWORD colour, std::int32_t store = 1)
    {
        QWidget* const grid = panel->GetDlgItem(kSwatches);
        KvSwatchNotifyRecord record{{grid, kSwatches, kKvColorNotifyCode}, index, &colour, store};
        KvSendMessage(panel, WM_NOTIFY, kSwatches, reinterpret_cast<LPARAM>(&record));
    }
    // The four edits; each must show what all maps hold.
    QString Shown()
    {
        QString shown;
        for (UINT id = kFirstEdit; id <= kAlphaEdit; ++id)
            shown += (shown.isEmpty() ? "" : " ") + QString::number(Edit(id)->GetValue());
        for (const UINT id : {kMap, kSlider, kAlpha})
            EXPECT_EQ(Map(id)->GetValue(), panel->GetColor()) << id;
        double hue[2], sat[2];
        for (const int i : {0, 1}) {
            hue[i] = Map(i ? kSlider : kMap)->GetHue();
            sat[i] = Map(i ? kSlider : kMap)->GetSat();
        }
        EXPECT_EQ(hue[0], hue[1]);
        EXPECT_EQ(sat[0], sat[1]);
        return shown;
    }
    QString Enabled()
    {
        QString enabled;
        for (UINT id = kMap; id <= kHsb; ++id) {
            if (QWidget* child = panel->GetDlgItem(id))
                enabled += child->isEnabled() ? '1' : '0';
        }
        return enabled;
    }

    QWidget parent;
    KvMessageSink sink{&parent, [this](auto... message) { return Hear(message...); }};
    QPointer<TestPanel> panel;
    QString heard;
    std::function<void()> onMessage;
};

TEST_F(ColourPanel, ShowsTheColourInEveryChild)
{
    EXPECT_EQ(Shown(), "51 102 153 255");
    panel->SetColor(0x40336699u);
    EXPECT_EQ(Shown(), "51 102 153 64");
    Renew(1);
    EXPECT_EQ(panel->IsHSBMode(), 1);
    EXPECT_EQ(Shown(), "210 66 60 255") << "toward zero";
    panel->SetColor(0xFF808080u);
    EXPECT_EQ(Shown(), "0 0 50 255");
    EXPECT_EQ(Heard(), "");
}

TEST_F(ColourPanel, EveryChildKeepsTheOthersInStep)
{
    const struct
    {
        const char* name;
        int hsb;
        std::function<void()> use;
        const char* shown;
        const char* heard;
    } cases[] = {
        {"map", 0,
         [this] {
             const QPointF corner(Map(kMap)->width(), -1);
             Mouse(Map(kMap), QEvent::MouseButtonPress, corner);
             Mouse(Map(kMap), QEvent::MouseMove, {-1, -1});
             Mouse(Map(kMap), QEvent::MouseButtonRelease, {-1, -1});
         },
         "51 0 255 255", "0:ff33ffff 1:ff3300ff 2:ff3300ff"},
        {"slider", 0,
         [this] {
             Mouse(Map(kSlider), QEvent::MouseButtonPress, {3, -1});
             Mouse(Map(kSlider), QEvent::MouseButtonRelease, {3, -1});
         },
         "255 102 153 255", "0:ffff6699 2:ffff6699"},
        {"alpha slider", 0,
         [this] {
             Mouse(Map(kAlpha), QEvent::MouseButtonPress, {3, 9999});
             Mouse(Map(kAlpha), QEvent::MouseButtonRelease, {3, 0});
         },
         "51 102 153 0", "0:00336699 2:00336699"},
        {"map in HSB", 1,
         [this] {
             const QPointF right(Map(kMap)->width(), -1);
             Mouse(Map(kMap), QEvent::MouseButtonPress, right);
             Mouse(Map(kMap), QEvent::MouseButtonRelease, right);
         },
         "210 100 100 255", "0:ff0080ff 2:ff0080ff"},
        {"key on the slider in HSB", 1, [this] { QTest::keyClick(Map(kSlider), Qt::Key_Up); },
         "211 66 60 255", "0:ff336499 1:ff336499 2:ff336499"},
        {"edit", 0, [this] { QTest::keyClicks(Line(kFirstEdit + 1), "7"); }, "51 7 153 255", "0:ff330799"},
        {"alpha edit", 0, [this] { QTest::keyClick(Line(kAlphaEdit), Qt::Key_Down); }, "51 102 153 254",
         "0:fe336699 1:fe336699 2:fe336699"},
        {"edit in HSB", 1, [this] { QTest::keyClick(Line(kFirstEdit), Qt::Key_PageUp); }, "220 66 60 255",
         "0:ff335599 1:ff335599 2:ff335599"},
        {"swatch", 0, [this] { Swatch(-1, 0x80FF0010u); }, "255 0 16 128",
         "0:80ff0010 1:80ff0010 2:80ff0010"},
        {"swatch in HSB", 1, [this] { Swatch(-1, 0x8000FF00u); }, "120 100 100 128",
         "0:8000ff00 1:8000ff00 2:8000ff00"},
        {"alpha preset", 0, [this] { Swatch(1, 0xFF555555u); }, "51 102 153 64",
         "0:40336699 1:40336699 2:40336699"},
        {"the same swatch", 0, [this] { Swatch(-1, 0xFF336699u); }, "51 102 153 255",
         "0:ff336699 1:ff336699 2:ff336699"},
        {"preset in HSB", 1, [this] { Swatch(2, 0xFFAAAAAAu); }, "210 66 60 128",
         "0:80336699 1:80336699 2:80336699"},
        {"hue slider", 1,
         [this] {
             Mouse(Map(kSlider), QEvent::MouseButtonPress, {3, -1});
             Mouse(Map(kSlider), QEvent::MouseMove, {3, 9999});
             Mouse(Map(kSlider), QEvent::MouseButtonRelease, {3, 9999});
         },
         "0 66 60 255", "0:ff993333 1:ff993333 2:ff993333"},
        {"brightness slider", 1,
         [this] {
             Click(kFirstChannel + 2);
             Mouse(Map(kSlider), QEvent::MouseButtonPress, {3, 9999});
             Mouse(Map(kSlider), QEvent::MouseButtonRelease, {3, 9999});
         },
         "210 66 0 255", "0:ff000000 2:ff000000"},
        {"alpha slider in HSB", 1,
         [this] {
             Mouse(Map(kAlpha), QEvent::MouseButtonPress, {3, 9999});
             Mouse(Map(kAlpha), QEvent::MouseButtonRelease, {3, 9999});
         },
         "210 66 60 0", "0:00336699 2:00336699"},
        {"alpha edit in HSB", 1, [this] { QTest::keyClick(Line(kAlphaEdit), Qt::Key_PageDown); },
         "210 66 60 245", "0:f5336699 1:f5336699 2:f5336699"},
        {"channel's button in HSB", 1,
         [this] {
             auto* const saturation = Get<CKvRadioBitmapButton>(kFirstChannel + 1);
             Mouse(saturation, QEvent::MouseButtonPress, {5, 5});
             Mouse(saturation, QEvent::MouseMove, {999, 5});
             Mouse(saturation, QEvent::MouseButtonRelease, {999, 5});
         },
         "210 100 60 255", "0:ff004d99 2:ff004d99"},
        {"alpha edit's border", 0,
         [this] {
             Mouse(Edit(kAlphaEdit), QEvent::MouseButtonPress, {1, 5});
             Mouse(Edit(kAlphaEdit), QEvent::MouseMove, {-999, 5});
             Mouse(Edit(kAlphaEdit), QEvent::MouseButtonRelease, {-999, 5});
         },
         "51 102 153 0", "0:00336699 2:00336699"},
        {"wheel over an edit", 0,
         [this] {
             QLineEdit* const line = Line(kFirstEdit);
             QWheelEvent turn(QPointF(3, 3), line->mapToGlobal(QPointF(3, 3)), {}, {0, 120}, Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
             QApplication::sendEvent(line, &turn);
         },
         "52 102 153 255", "0:ff346699 1:ff346699 2:ff346699"},
        {"scroll message", 0,
         [this] {
             Map(kMap)->SetG(9);
             KvSendMessage(panel, WM_HSCROLL, 0, reinterpret_cast<LPARAM>(panel->GetDlgItem(kMap)));
         },
         "51 9 153 255", "1:ff330999"},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        Renew(one.hsb);
        one.use();
        EXPECT_EQ(Shown(), one.shown);
        EXPECT_EQ(Heard(), one.heard);
    }
}

TEST_F(ColourPanel, PicksFromTheSwatchesAndStoresItsWholeColourThere)
{
    const QTemporaryDir folder;
    CKvSolidColorTemplate::SetSystemFolder(KvFromQString(folder.path()));
    ASSERT_EQ(CKvSolidColorTemplate::InstallFactoryTemplate(), 1);
    auto* grid = Get<CKvSolidColorTemplate>(kSwatches);
    ASSERT_EQ(grid->InitialData(1), 1);
    QTest::mouseClick(grid, Qt::LeftButton, Qt::NoModifier, {4, 4});
    EXPECT_EQ(panel->GetColor(), grid->GetCellColor(0));
    EXPECT_EQ(Heard().count(':'), 3);
    QTest::mouseClick(grid, Qt::LeftButton, Qt::NoModifier, {4, grid->height() - 4});
    EXPECT_EQ(Edit(kAlphaEdit)->GetValue(), 0);
    EXPECT_EQ(Heard().count(':'), 3);
    panel->SetColor(0x12345678u);
    Swatch(2, 0xFFFFFFFFu, 0);
    EXPECT_EQ(grid->GetCellColor(2), 0x12345678u);
    EXPECT_EQ(Heard(), "");
    EXPECT_EQ(panel->GetColor(), 0x12345678u);
}

TEST_F(ColourPanel, SwitchesModeAndChannelWithoutAMessage)
{
    const auto pictures = [this] {
        QString names;
        for (UINT id = kFirstChannel; id <= kHsb; ++id)
            names += KvToQString(Get<CKvRadioBitmapButton>(id)->GetBitmapName()) + ' ';
        return names;
    };
    EXPECT_EQ(pictures(), "RGB_R_Check RGB_G_UnCheck RGB_B_UnCheck RGB_Check HSB_UnCheck ");
    Click(kFirstChannel + 2);
    EXPECT_EQ(Map(kMap)->GetLockType(), 3);
    EXPECT_EQ(Map(kSlider)->GetLockType(), 12);
    Click(kRgb);
    EXPECT_EQ(Map(kMap)->GetLockType(), 3) << "the mode in force";
    Click(kHsb);
    EXPECT_EQ(pictures(), "HSB_H_Check HSB_S_UnCheck HSB_B_UnCheck RGB_UnCheck HSB_Check ");
    EXPECT_EQ(Map(kMap)->GetLockType(), 4);
    EXPECT_EQ(Map(kSlider)->GetLockType(), 13);
    EXPECT_EQ(Edit(kFirstEdit)->GetMaximum(), 360);
    EXPECT_EQ(Edit(kFirstEdit + 2)->GetMaximum(), 100);
    EXPECT_EQ(Shown(), "210 66 60 255");
    Click(kRgb);
    EXPECT_EQ(Shown(), "51 102 153 255");
    EXPECT_EQ(Heard(), "");
    for (const QString& name : pictures().split(' ', Qt::SkipEmptyParts))
        EXPECT_FALSE(KvGuiRes::LoadImageW(KvFromQString(name).c_str()).IsNull()) << name.toStdString();
}

TEST_F(ColourPanel, StatesEnableColourAndAlpha)
{
    const struct
    {
        int state;
        const char* enabled; // maps, edits, swatches, channels, modes
    } cases[] = {{0, "1111111111111"}, {1, "1101110111111"},  {2, "0010001011100"},
                 {3, "0000000011100"}, {-1, "0000000011100"}, {0, "1111111111111"}};
    for (const auto& one : cases) {
        panel->SetEnableState(static_cast<EKvColorPanelState>(one.state));
        EXPECT_EQ(Enabled(), one.enabled) << one.state;
        panel->OnEnable(0);
        panel->SetEnableState(panel->GetEnableState());
        EXPECT_EQ(Enabled(), "0000000000000");
        panel->OnEnable(1);
        EXPECT_EQ(Enabled(), one.enabled) << one.state;
    }
}

TEST_F(ColourPanel, LeavesTheFocusToTheHostWhenItIsDisabled)
{
    QLineEdit disabled(&parent), behind(&parent);
    disabled.show(), behind.show();
    disabled.setEnabled(false);
    QLineEdit* const line = Line(kFirstEdit + 1);
    line->setText("1025"); // open, and out of the range
    QTest::keyClicks(line, "5");
    panel->OnEnable(0);
    EXPECT_TRUE(behind.hasFocus());
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(Heard(), "");
    panel->OnEnable(1);
    Line(kFirstEdit);
    behind.hide();
    panel->OnEnable(0); // nobody else takes it
    EXPECT_EQ(parent.focusWidget(), nullptr);
}

TEST_F(ColourPanel, IsNamedForScreenReaders)
{
    const struct
    {
        UINT id; ///< 0 is the panel
        QAccessible::Role role;
        const char* name;
        const char* description;
    } cases[] = {
        {0, QAccessible::Grouping, "Color", ""},
        {14128, QAccessible::Graphic, "Current color", "blue, R 51  G 102  B 153  A 255  #FF336699"},
        {kFirstEdit, QAccessible::SpinBox, "Red, 0 to 255", ""},
        {kFirstChannel, QAccessible::RadioButton, "Red on the slider", ""},
        {kHsb, QAccessible::RadioButton, "Hue, saturation, brightness", ""},
    };
    for (const auto& one : cases) {
        QWidget* const child = one.id ? panel->GetDlgItem(one.id) : panel.data();
        const QAccessibleInterface* found = QAccessible::queryAccessibleInterface(child);
        ASSERT_TRUE(found) << one.id;
        EXPECT_EQ(found->role(), one.role) << one.id;
        EXPECT_EQ(found->text(QAccessible::Name), one.name);
        EXPECT_EQ(found->text(QAccessible::Description), one.description) << one.id;
    }
    QAccessibleInterface* line = QAccessible::queryAccessibleInterface(Line(kFirstEdit));
    EXPECT_EQ(line->text(QAccessible::Value), "51") << "where the focus is";
    EXPECT_EQ(line->parent(), QAccessible::queryAccessibleInterface(Edit(kFirstEdit)));
}

TEST_F(ColourPanel, StatesLimitWhatIsPickedAndPasted)
{
    const auto paste = [this](const char* text) {
        QApplication::clipboard()->setText(text);
        QTest::keyClick(panel, Qt::Key_V, Qt::ControlModifier);
    };
    panel->SetEnableState(kKvColorPanelColour);
    Swatch(-1, 0x40112233u);
    EXPECT_EQ(Heard(), "0:ff112233 1:ff112233 2:ff112233");
    Swatch(0, 0xFF000000u);
    EXPECT_EQ(Heard(), "");
    paste("#55445566");
    EXPECT_EQ(panel->GetColor(), 0xFF445566u);
    panel->SetEnableState(kKvColorPanelAlpha);
    Heard();
    paste("#55112233");
    EXPECT_EQ(Heard(), "0:55445566 1:55445566 2:55445566");
    paste("#123");
    paste("no colour");
    Swatch(-1, 0xFF112233u);
    EXPECT_EQ(Heard(), "");
    panel->SetEnableState(kKvColorPanelAll);
    paste("rgb(1, 2, 3)");
    EXPECT_EQ(Heard(), "0:55010203 1:55010203 2:55010203");
}

TEST_F(ColourPanel, TypingHasOneRunAndEscapeGivesTheExactColourBack)
{
    Renew(1);
    const double hue = Map(kMap)->GetHue();
    QLineEdit* line = Line(kFirstEdit + 1);
    QTest::keyClicks(line, "29");
    EXPECT_EQ(Shown(), "210 29 60 255");
    QTest::keyClick(line, Qt::Key_Escape);
    EXPECT_EQ(Heard(), "0:ff969799 1:ff6d8399 2:ff336699");
    EXPECT_EQ(Shown(), "210 66 60 255");
    EXPECT_EQ(Map(kMap)->GetHue(), hue);
    EXPECT_EQ(panel->GetColor(), 0xFF336699u);
    EXPECT_TRUE(panel->isVisible());
}

TEST_F(ColourPanel, AnotherChildEndsATypingBeforeItBegins)
{
    QTest::keyClicks(Line(kFirstEdit), "999");
    Heard();
    Mouse(Map(kAlpha), QEvent::MouseButtonPress, {3, 9999});
    Mouse(Map(kAlpha), QEvent::MouseButtonRelease, {3, 9999});
    EXPECT_EQ(Heard(), "1:ffff6699 2:ffff6699 0:00ff6699 2:00ff6699");
}

TEST_F(ColourPanel, TypedNumbersStayWhenAnotherChannelMoves)
{
    Renew(1);
    QTest::keyClicks(Line(kFirstEdit + 1), "29");
    QTest::keyClick(Line(kFirstEdit), Qt::Key_Up);
    EXPECT_EQ(Shown(), "211 29 60 255");
    QTest::keyClicks(Line(kFirstEdit), "360");
    EXPECT_EQ(Shown(), "360 29 60 255") << "red, and still 360";
    QTest::keyClicks(Line(kFirstEdit + 2), "0");
    EXPECT_EQ(Shown(), "360 29 0 255") << "black keeps hue and saturation";
}

TEST_F(ColourPanel, ADragOnAChannelsButtonScrubsItsNumber)
{
    auto* green = Get<CKvRadioBitmapButton>(kFirstChannel + 1);
    Mouse(green, QEvent::MouseButtonPress, {5, 5});
    Mouse(green, QEvent::MouseMove, {25, 5});
    Mouse(green, QEvent::MouseButtonRelease, {25, 5});
    EXPECT_EQ(Heard(), "0:ff337a99 2:ff337a99");
    EXPECT_EQ(green->GetCheck(), 0);
    Mouse(green, QEvent::MouseButtonPress, {5, 5});
    Mouse(green, QEvent::MouseMove, {5, 25});
    QTest::keyClick(green, Qt::Key_Escape);
    EXPECT_EQ(Heard(), "0:ff336699 2:ff337a99");
    panel->SetEnableState(kKvColorPanelAlpha);
    Mouse(green, QEvent::MouseButtonPress, {5, 5});
    Mouse(green, QEvent::MouseMove, {25, 5});
    Mouse(green, QEvent::MouseButtonRelease, {25, 5});
    EXPECT_EQ(Heard(), "");
    EXPECT_EQ(panel->GetColor(), 0xFF337A99u);
}

TEST_F(ColourPanel, ArrowsWalkTheButtonsAndEnterAndEscapeAreTheHosts)
{
    auto* red = Get<CKvRadioBitmapButton>(kFirstChannel);
    red->setFocus(Qt::TabFocusReason);
    QTest::keyClick(red, Qt::Key_Down);
    EXPECT_EQ(Map(kMap)->GetLockType(), 2);
    EXPECT_EQ(panel->focusWidget(), panel->GetDlgItem(kFirstChannel + 1));
    Get<CKvRadioBitmapButton>(kRgb)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(panel->focusWidget(), Qt::Key_Right);
    EXPECT_EQ(panel->IsHSBMode(), 1);
    for (const auto key : {Qt::Key_Escape, Qt::Key_Return}) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(panel, &event);
        EXPECT_FALSE(event.isAccepted());
        EXPECT_TRUE(panel->isVisible());
    }
}

TEST_F(ColourPanel, AHostMaySetColourInItsHandler)
{
    onMessage = [this] { panel->SetColor(panel->GetColor() & 0xFFF0F0F0u); };
    Mouse(Map(kSlider), QEvent::MouseButtonPress, {3, -1});
    EXPECT_EQ(Shown(), "240 96 144 255");
    Mouse(Map(kSlider), QEvent::MouseButtonRelease, {3, -1});
    EXPECT_EQ(Heard(), "0:ffff6699 2:fff06090");
    QLineEdit* line = Line(kFirstEdit);
    QTest::keyClicks(line, "9");
    QTest::keyClick(line, Qt::Key_Escape);
    EXPECT_EQ(panel->GetColor(), 0xFFF06090u);
    EXPECT_EQ(Heard(), "0:ff096090 2:fff06090");
}

// Escape takes back what the user did, not what the host set meanwhile.
TEST_F(ColourPanel, AHostMaySetColourInTheMiddleOfAScrub)
{
    auto* const green = Get<CKvRadioBitmapButton>(kFirstChannel + 1);
    Mouse(green, QEvent::MouseButtonPress, {5, 5});
    Mouse(green, QEvent::MouseMove, {25, 5});
    panel->SetColor(0xFF102030u);
    Mouse(green, QEvent::MouseMove, {35, 5});
    QTest::keyClick(green, Qt::Key_Escape);
    EXPECT_EQ(Shown(), "16 32 48 255");
    EXPECT_EQ(Heard(), "0:ff337a99 1:ff108430 2:ff102030") << "a scrub follows the pointer";
}

TEST_F(ColourPanel, IsMirroredWhereTextRunsFromTheRight)
{
    panel->setLayoutDirection(Qt::RightToLeft);
    auto* const rgb = Get<CKvRadioBitmapButton>(kRgb);
    EXPECT_GT(rgb->x(), panel->GetDlgItem(kHsb)->x());
    rgb->setFocus(Qt::TabFocusReason);
    QTest::keyClick(rgb, Qt::Key_Left);
    EXPECT_EQ(panel->IsHSBMode(), 1) << "the one to the left";
    Click(kRgb);
    auto* const red = Get<CKvRadioBitmapButton>(kFirstChannel);
    Mouse(red, QEvent::MouseButtonPress, {5, 5});
    Mouse(red, QEvent::MouseMove, {25, 5});
    Mouse(red, QEvent::MouseButtonRelease, {25, 5});
    EXPECT_EQ(Heard(), "0:ff476699 2:ff476699") << "to the right raises all the same";
}

TEST_F(ColourPanel, MayBeDeletedByEachOfItsMessages)
{
    const std::function<void()> uses[] = {
        [this] {
            Mouse(Map(kMap), QEvent::MouseButtonPress, {3, 3});
        },
        [this] { QTest::keyClick(Map(kAlpha), Qt::Key_Down); },
        [this] { QTest::keyClicks(Line(kFirstEdit), "7"); },
        [this] { QTest::keyClick(Line(kFirstEdit), Qt::Key_Up); },
        [this] {
            onMessage = {};
            QLineEdit* line = Line(kFirstEdit);
            QTest::keyClicks(line, "7");
            onMessage = [this] { delete panel; };
            QTest::keyClick(line, Qt::Key_Tab);
        },
        [this] {
            onMessage = {};
            QTest::keyClicks(Line(kFirstEdit), "7");
            onMessage = [this] { delete panel; };
            panel->SetEnableState(kKvColorPanelAlpha);
        },
        [this] { Swatch(-1, 1); },
        [this] { Swatch(0, 1); },
        [this] {
            QApplication::clipboard()->setText("#123456");
            QTest::keyClick(Line(kFirstEdit), Qt::Key_V, Qt::ControlModifier);
        },
        [this] {
            auto* red = Get<CKvRadioBitmapButton>(kFirstChannel);
            Mouse(red, QEvent::MouseButtonPress, {5, 5});
            Mouse(red, QEvent::MouseMove, {25, 5});
        },
    };
    for (const auto& use : uses) {
        Renew();
        onMessage = [this] { delete panel; };
        use();
        QCoreApplication::sendPostedEvents();
        EXPECT_TRUE(panel.isNull());
    }
}

TEST_F(ColourPanel, EndsWhatIsOpenWhenItIsLostAndMayBeDeletedThen)
{
    const std::pair<const char*, std::function<void()>> drags[] = {
        {"field",
         [this] {
             Mouse(Map(kMap), QEvent::MouseButtonPress, {5, 5});
         }},
        {"channel's button",
         [this] {
             auto* green = Get<CKvRadioBitmapButton>(kFirstChannel + 1);
             Mouse(green, QEvent::MouseButtonPress, {5, 5});
             Mouse(green, QEvent::MouseMove, {25, 5});
         }},
        {"edit's border",
         [this] {
             Mouse(Edit(kFirstEdit), QEvent::MouseButtonPress, {1, 5});
             Mouse(Edit(kFirstEdit), QEvent::MouseMove, {25, 5});
         }},
        {"typing", [this] { QTest::keyClicks(Line(kFirstEdit), "9"); }},
    };
    QWidget other;
    other.show();
    const std::pair<const char*, std::function<void()>> losses[] = {
        {"deactivated", [&] { QApplication::setActiveWindow(&other); }},
        {"parent hidden", [&] { parent.hide(); }},
        {"parent disabled", [&] { parent.setEnabled(false); }},
        {"hidden", [&] { panel->hide(); }},
        {"disabled", [&] { panel->setEnabled(false); }},
        {"OnEnable", [&] { panel->OnEnable(0); }},
        {"moved to another parent", [&] { panel->setParent(&other); }},
        {"destroyed", [&] { panel->DestroyWindow(); }},
    };
    for (const auto& [drag, begin] : drags) {
        for (const auto& [loss, lose] : losses) {
            for (const bool isDeleted : {false, true}) {
                SCOPED_TRACE(testing::Message() << drag << ", " << loss << ", " << isDeleted);
                parent.setEnabled(true);
                Renew();
                begin();
                ASSERT_EQ(Heard().left(2), "0:");
                if (isDeleted)
                    onMessage = [this] { delete panel; };
                lose();
                QApplication::processEvents();
                EXPECT_EQ(panel.isNull(), isDeleted);
                EXPECT_TRUE(heard.startsWith("2:") && heard.count(':') == 1) << heard.toStdString();
            }
        }
    }
}

TEST_F(ColourPanel, SaysNothingWhenItsParentDiesInADrag)
{
    auto* owner = new QWidget;
    int messages = 0;
    auto* owned = new CKvColorPanel;
    QObject::connect(owned, &CKvColorPanel::ColorChanged, [&] { ++messages; });
    owned->Create(owner);
    owned->show();
    owner->show();
    QWidget* const green = owned->GetDlgItem(kFirstChannel + 1);
    Mouse(green, QEvent::MouseButtonPress, {5, 5});
    Mouse(green, QEvent::MouseMove, {25, 5});
    EXPECT_EQ(std::exchange(messages, 0), 1);
    delete owner;
    QApplication::processEvents();
    EXPECT_EQ(messages, 0);
}

TEST_F(ColourPanel, APopupEndsAScrub)
{
    auto* green = Get<CKvRadioBitmapButton>(kFirstChannel + 1);
    Mouse(green, QEvent::MouseButtonPress, {5, 5});
    Mouse(green, QEvent::MouseMove, {25, 5});
    QWidget popup(nullptr, Qt::Popup);
    popup.show();
    Mouse(green, QEvent::MouseMove, {5, 5});
    Mouse(green, QEvent::MouseMove, {45, 5});
    Mouse(green, QEvent::MouseButtonRelease, {5, 5});
    EXPECT_EQ(Heard(), "0:ff337a99 2:ff337a99") << "no second scrub";
    EXPECT_EQ(Map(kMap)->GetLockType(), 1) << "and no click";
}

TEST_F(ColourPanel, RunsDoNotNestAndCountFromWhatTheLastOneLeft)
{
    const std::pair<std::function<void()>, const char*> cases[] = {
        {[this] {
             Mouse(Map(kMap), QEvent::MouseButtonPress, {-1, 9999});
         },
         "1:ffff6699 2:ffff6699 0:ffff0000"},
        {[this] {
             Mouse(Map(kAlpha), QEvent::MouseButtonPress, {3, 9999});
         },
         "1:ffff6699 2:ffff6699 0:00ff6699"},
        {[this] { Swatch(0, 0); }, "1:ffff6699 2:ffff6699 0:00ff6699 1:00ff6699 2:00ff6699"},
        {[this] { Edit(kFirstEdit + 1)->EnterValue(103); },
         "1:ffff6699 2:ffff6699 0:ffff6799 1:ffff6799 2:ffff6799"},
    };
    for (const auto& [use, expected] : cases) {
        Renew();
        QTest::keyClicks(Line(kFirstEdit), "999");
        Heard();
        use();
        EXPECT_EQ(Heard(), expected);
    }
    Renew();
    Mouse(Map(kSlider), QEvent::MouseButtonPress, {3, -1});
    QTest::keyClick(Line(kFirstEdit + 1), Qt::Key_Up);
    Mouse(Map(kSlider), QEvent::MouseMove, {3, 9});
    EXPECT_EQ(Heard(), "0:ffff6699 2:ffff6699 0:ffff6799 1:ffff6799 2:ffff6799");
}

TEST_F(ColourPanel, DoesNothingBeforeItIsCreated)
{
    CKvColorPanel early;
    QTest::keyClick(&early, Qt::Key_Down);
    KvSendMessage(&early, WM_COMMAND, kFirstChannel + 1, 0);
    KvSendMessage(panel, WM_NOTIFY, kMap, 0);
    EXPECT_EQ(early.GetColor(), 0xFF000000u);
    EXPECT_EQ(Heard(), "");
}

TEST_F(ColourPanel, GivesTheMapWhatIsFreeAndStaysWhereItIsPut)
{
    panel->move(20, 30);
    const QRect map = Map(kMap)->geometry();
    const QRect edit = Edit(kFirstEdit)->geometry();
    panel->resize(panel->size() + QSize(80, 50));
    panel->hide();
    panel->show();
    EXPECT_EQ(panel->pos(), QPoint(20, 30));
    EXPECT_EQ(Map(kMap)->geometry(), map.adjusted(0, 0, 80, 50));
    EXPECT_EQ(Edit(kFirstEdit)->geometry(), edit.translated(80, 0));
    EXPECT_EQ(panel->Create(&parent), 0);
}

TEST_F(ColourPanel, GoesWithItsParent)
{
    auto* owner = new QWidget;
    QPointer<CKvColorPanel> child = new CKvColorPanel;
    child->Create(owner);
    owner->show();
    delete owner;
    EXPECT_TRUE(child.isNull());
    const CKvColorPanel never; // never created
    EXPECT_EQ(never.GetColor(), 0xFF000000u);
}

} // namespace
