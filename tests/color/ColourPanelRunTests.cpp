// The runs of the colour panel: one begins and ends once, none lies within another, and Escape, a loss or the
// host ends it in order.
#include "tests/color/ColourPanelFixture.h"
#include "tests/color/ControlEvents.h"

#include <QClipboard>
#include <QDialog>

namespace {

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

TEST_F(ColourPanel, AScrubFollowsThePointerWhateverTheHostSets)
{
    Drag(Channel(1), {5, 5}, {{20, 0}});
    panel->SetColor(0xFF102030u);
    Mouse(Channel(1), QEvent::MouseMove, {35, 5});
    EXPECT_EQ(Shown(), "16 132 48 255");
    QTest::keyClick(Channel(1), Qt::Key_Escape);
    EXPECT_EQ(Shown(), "16 32 48 255");
    EXPECT_EQ(Heard(), "0:ff337a99 1:ff108430 2:ff102030");
}

TEST_F(ColourPanel, AWindowThatTheHostOpensTakesTheMouseBeforeADragBegins)
{
    const std::function<QWidget*()> drags[] = {
        [this] {
            Drag(Map(kMap), {20, 20}, {});
            return Map(kMap);
        },
        [this] {
            Drag(Channel(0), {5, 5}, {{30, 0}});
            return Channel(0);
        },
        [this] {
            Drag(Edit(kFirstEdit), {1, 5}, {{30, 0}});
            return Edit(kFirstEdit);
        },
    };
    for (const auto& drag : drags) {
        Renew();
        QTest::keyClicks(Line(kFirstEdit), "12");
        Heard();
        onMessage = [this] { // the end of the typing
            onMessage = {};
            QDialog dialog(&parent);
            QTimer::singleShot(0, &dialog, &QDialog::accept);
            dialog.exec();
        };
        QWidget* const child = drag();
        QMouseEvent move(QEvent::MouseMove, QPointF(60, 60), child->mapToGlobal(QPointF(60, 60)),
                         Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(child, &move);
        EXPECT_EQ(Heard(), "2:ff0c6699");
        QTest::keyClicks(Line(kFirstEdit), "7");
        EXPECT_EQ(Heard(), "0:ff076699") << "the number is not dead";
    }
}

TEST_F(ColourPanel, AScrubOfANumberThatWasDisabledDoesNotGoOn)
{
    Drag(Channel(0), {5, 5}, {{20, 0}});
    panel->SetEnableState(kKvColorPanelAlpha);
    QApplication::processEvents();
    panel->SetEnableState(kKvColorPanelAll);
    Mouse(Channel(0), QEvent::MouseMove, {26, 5});
    EXPECT_EQ(Heard(), "0:ff476699 2:ff476699");
}

TEST_F(ColourPanel, AContinueWithoutABeginBindsTheNextToNobody)
{
    const auto scroll = [this] {
        KvSendMessage(panel, WM_HSCROLL, 0, reinterpret_cast<LPARAM>(panel->GetDlgItem(kMap)));
    };
    scroll();
    EXPECT_EQ(Heard(), "1:ff336699");
    QWidget other;
    panel->setParent(&other);
    scroll();
    EXPECT_EQ(Heard(), "");
    panel->setParent(&parent);
}

TEST_F(ColourPanel, EscapeKeepsTheColourThatTheHostSetMeanwhile)
{
    const struct
    {
        const char* name;
        std::function<QWidget*()> begin; ///< @return where the keys go
        const char* heard;
    } runs[] = {
        {"channel's button",
         [this] {
             Drag(Channel(1), {5, 5}, {{20, 0}});
             return Channel(1);
         },
         "2:%1"},
        {"edit's border",
         [this] {
             QWidget* const line = Line(kFirstEdit + 1);
             Drag(Edit(kFirstEdit + 1), {1, 5}, {{20, 0}});
             return line;
         },
         "2:%1"},
        {"typing",
         [this] {
             QWidget* const line = Line(kFirstEdit + 1);
             QTest::keyClicks(line, "122");
             return line;
         },
         "2:%1"},
        {"slider",
         [this] {
             Drag(Map(kSlider), {3, -1}, {});
             return Map(kSlider);
         },
         "1:%1 2:%1"},
    };
    for (const auto& run : runs) {
        for (const char* host : {"ff102030", "40337a99"}) { // the latter has the number of the edit's runs
            SCOPED_TRACE(testing::Message() << run.name << ' ' << host);
            Renew();
            QWidget* const keys = run.begin();
            ASSERT_EQ(Heard().left(2), "0:");
            const DWORD colour = QString(host).toUInt(nullptr, 16);
            panel->SetColor(colour);
            EXPECT_EQ(Heard(), "");
            QTest::keyClick(keys, Qt::Key_Escape);
            EXPECT_EQ(panel->GetColor(), colour);
            EXPECT_EQ(Heard(), QString(run.heard).arg(host));
            Shown();
        }
    }
}

TEST_F(ColourPanel, AWheelOverAnotherChildEndsADragAndBeginsNone)
{
    const struct
    {
        const char* name;
        std::function<void()> use;
        const char* heard; ///< then comes a further move
    } cases[] = {
        {"edit", [this] { Wheel(Line(kFirstEdit + 1), 120); },
         "0:ff330000 2:ff330000 0:ff330100 1:ff330100 2:ff330100"},
        {"slider",
         [this] {
             Map(kSlider)->setFocus();
             Wheel(Map(kSlider), -120);
         },
         "0:ff330000 2:ff330000 0:ff320000 1:ff320000 2:ff320000"},
        {"at its end",
         [this] {
             Map(kAlpha)->setFocus();
             Wheel(Map(kAlpha), 120);
         },
         "0:ff330000 1:ff33ff00"},
        {"edit without the focus", [this] { Wheel(Edit(kFirstEdit + 1)->findChild<QLineEdit*>(), 120); },
         "0:ff330000 1:ff33ff00"},
        {"slider without the focus", [this] { Wheel(Map(kSlider), -120); }, "0:ff330000 1:ff33ff00"},
        {"the field itself", [this] { Wheel(Map(kMap), 120); }, "0:ff330000 1:ff33ff00"},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        Renew();
        Map(kMap)->setFocus();
        Mouse(Map(kMap), QEvent::MouseButtonPress, {-1, 9999});
        one.use();
        Mouse(Map(kMap), QEvent::MouseMove, {9999, 9999});
        EXPECT_EQ(Heard(), one.heard);
        Shown();
    }
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
        [this] {
            panel->diesOfAnUpdate = true;
            panel->SetEnableState(kKvColorPanelAlpha);
        },
        [this] {
            panel->diesOfAnUpdate = true;
            panel->OnEnable(1);
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

} // namespace
