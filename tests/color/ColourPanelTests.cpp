// The colour panel: every child keeps all others in step, and the parent hears of what the user did.
#include "KvGuiRes.h"
#include "tests/color/ColourPanelFixture.h"
#include "tests/color/ControlEvents.h"

#include <QAccessible>
#include <QClipboard>
#include <QTemporaryDir>

namespace {

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
    const auto slide = [this](UINT id) { // to the top, then to the bottom
        Drag(Map(id), {3, -1}, {{0, 9999}});
        Release(Map(id));
    };
    const auto press = [this](QPointF at) {
        Drag(Map(kMap), at, {});
        Release(Map(kMap));
    };
    const auto pasteByMenu = [this](UINT edit, const char* text) {
        QApplication::clipboard()->setText(text);
        UseContextMenu(*Line(edit), {3, 3}, "Paste");
    };
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
        {"field of hue and brightness", 1,
         [&] {
             Click(kFirstChannel + 1);
             press({9999, -1});
         },
         "360 66 100 255", "0:ffff5555 2:ffff5555"},
        {"field of hue and saturation", 1,
         [&] {
             Click(kFirstChannel + 2);
             press({-1, -1});
         },
         "0 100 60 255", "0:ff990000 2:ff990000"},
        {"hue slider", 1, [&] { slide(kSlider); }, "0 66 60 255", "0:ff993333 1:ff993333 2:ff993333"},
        {"saturation slider", 1,
         [&] {
             Click(kFirstChannel + 1);
             slide(kSlider);
         },
         "210 0 60 255", "0:ff004d99 1:ff999999 2:ff999999"},
        {"brightness slider", 1,
         [&] {
             Click(kFirstChannel + 2);
             slide(kSlider);
         },
         "210 66 0 255", "0:ff55aaff 1:ff000000 2:ff000000"},
        {"alpha slider in HSB", 1, [&] { slide(kAlpha); }, "210 66 60 0", "0:ff336699 1:00336699 2:00336699"},
        {"key on the slider in HSB", 1, [this] { QTest::keyClick(Map(kSlider), Qt::Key_Up); },
         "211 66 60 255", "0:ff336499 1:ff336499 2:ff336499"},
        {"edit", 0, [this] { QTest::keyClicks(Line(kFirstEdit + 1), "7"); }, "51 7 153 255", "0:ff330799"},
        {"alpha edit", 0, [this] { QTest::keyClick(Line(kAlphaEdit), Qt::Key_Down); }, "51 102 153 254",
         "0:fe336699 1:fe336699 2:fe336699"},
        {"edit in HSB", 1, [this] { QTest::keyClick(Line(kFirstEdit), Qt::Key_PageUp); }, "220 66 60 255",
         "0:ff335599 1:ff335599 2:ff335599"},
        {"alpha edit in HSB", 1, [this] { QTest::keyClick(Line(kAlphaEdit), Qt::Key_PageDown); },
         "210 66 60 245", "0:f5336699 1:f5336699 2:f5336699"},
        {"scrub of a channel's button in HSB", 1,
         [this] {
             Drag(Channel(1), {5, 5}, {{12, 0}, {20, 0}});
             Release(Channel(1));
         },
         "210 86 60 255", "0:ff225d99 1:ff155799 2:ff155799"},
        {"scrub of the hue upwards", 1,
         [this] {
             Drag(Channel(0), {5, 5}, {{0, -30}});
             Release(Channel(0));
         },
         "240 66 60 255", "0:ff333399 2:ff333399"},
        {"scrub of the alpha edit's border", 1,
         [this] {
             Drag(Edit(kAlphaEdit), {1, 5}, {{-20, 0}, {-30, 5}});
             Release(Edit(kAlphaEdit));
         },
         "210 66 60 220", "0:eb336699 1:dc336699 2:dc336699"},
        {"wheel over the edit with the focus", 1, [this] { Wheel(Line(kFirstEdit + 1), 120); },
         "210 67 60 255", "0:ff326699 1:ff326699 2:ff326699"},
        {"wheel over another edit", 1,
         [this] {
             Line(kFirstEdit);
             Wheel(Edit(kFirstEdit + 1)->findChild<QLineEdit*>(), 120);
         },
         "210 66 60 255", ""},
        {"colour pasted by an edit's menu", 1, [&] { pasteByMenu(kFirstEdit + 1, "#80ff0000"); },
         "0 100 100 128", "0:80ff0000 1:80ff0000 2:80ff0000"},
        {"number pasted by an edit's menu", 1, [&] { pasteByMenu(kFirstEdit + 1, "+5"); }, "210 5 60 255",
         "0:ff919599"},
        {"number pasted by the alpha edit's menu", 0, [&] { pasteByMenu(kAlphaEdit, "64"); }, "51 102 153 64",
         "0:40336699"},
        {"swatch", 0, [this] { Swatch(-1, 0x80FF0010u); }, "255 0 16 128",
         "0:80ff0010 1:80ff0010 2:80ff0010"},
        {"swatch in HSB", 1, [this] { Swatch(-1, 0x8000FF00u); }, "120 100 100 128",
         "0:8000ff00 1:8000ff00 2:8000ff00"},
        {"alpha preset", 0, [this] { Swatch(1, 0xFF555555u); }, "51 102 153 64",
         "0:40336699 1:40336699 2:40336699"},
        {"alpha preset in HSB", 1, [this] { Swatch(2, 0xFFAAAAAAu); }, "210 66 60 128",
         "0:80336699 1:80336699 2:80336699"},
        {"the same swatch", 0, [this] { Swatch(-1, 0xFF336699u); }, "51 102 153 255",
         "0:ff336699 1:ff336699 2:ff336699"},
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

// The layout is mirrored; what the user does to a number, a field or a swatch is not.
TEST_F(ColourPanel, StandsTheOtherWayRoundFromRightToLeft)
{
    const QTemporaryDir folder;
    CKvSolidColorTemplate::SetSystemFolder(KvFromQString(folder.path()));
    ASSERT_EQ(CKvSolidColorTemplate::InstallFactoryTemplate(), 1);
    ASSERT_EQ(Get<CKvSolidColorTemplate>(kSwatches)->InitialData(1), 1);
    for (const bool isMirrored : {false, true}) {
        SCOPED_TRACE(isMirrored);
        Renew();
        panel->setLayoutDirection(isMirrored ? Qt::RightToLeft : Qt::LeftToRight);
        QWidget* const rgb = panel->GetDlgItem(kRgb);
        QWidget* const hsb = panel->GetDlgItem(kHsb);
        EXPECT_EQ(rgb->x() > hsb->x(), isMirrored);
        EXPECT_EQ(Map(kMap)->x() > Edit(kFirstEdit)->x(), isMirrored);
        rgb->setFocus(Qt::TabFocusReason);
        const Qt::Key toHsb = isMirrored ? Qt::Key_Left : Qt::Key_Right;
        const Qt::Key toRgb = isMirrored ? Qt::Key_Right : Qt::Key_Left;
        QTest::keyClick(rgb, toRgb);
        EXPECT_EQ(panel->IsHSBMode(), 0);
        QTest::keyClick(rgb, toHsb);
        EXPECT_EQ(panel->IsHSBMode(), 1);
        EXPECT_EQ(panel->focusWidget(), hsb);
        QTest::keyClick(hsb, toRgb);
        EXPECT_EQ(panel->focusWidget(), rgb);

        Drag(Channel(1), {5, 5}, {{20, 0}});
        Release(Channel(1));
        Drag(Edit(kAlphaEdit), {1, 5}, {{-20, 0}});
        Release(Edit(kAlphaEdit));
        Drag(Map(kMap), {9999, 9999}, {});
        Release(Map(kMap));
        EXPECT_EQ(Heard(), "0:ff337a99 2:ff337a99 0:eb337a99 2:eb337a99 0:eb33ff00 2:eb33ff00");

        auto* grid = Get<CKvSolidColorTemplate>(kSwatches);
        QTest::mouseClick(grid, Qt::LeftButton, Qt::NoModifier, {4, 4});
        EXPECT_EQ(panel->GetColor(), grid->GetCellColor(0));
        EXPECT_EQ(grid->grab().toImage().pixel(5, 5), grid->GetCellColor(0));
        QTest::keyClick(grid, Qt::Key_Right);
        QTest::keyClick(grid, Qt::Key_Return);
        EXPECT_EQ(panel->GetColor(), grid->GetCellColor(1));
    }
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

TEST_F(ColourPanel, MayBeDisabledBeforeItIsCreated)
{
    CKvColorPanel early;
    early.OnEnable(0);
    early.Create(&parent);
    EXPECT_FALSE(early.GetDlgItem(kMap)->isEnabled());
    early.OnEnable(1);
    EXPECT_TRUE(early.GetDlgItem(kMap)->isEnabled());
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
    EXPECT_EQ(panel->focusPolicy(), Qt::NoFocus);
    panel->setFocus();
    EXPECT_TRUE(parent.focusWidget()->isEnabled());
    panel->OnEnable(1);
    EXPECT_EQ(panel->focusPolicy(), Qt::TabFocus);
    panel->setFocus();
    EXPECT_EQ(parent.focusWidget(), Map(kMap));
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

// Only what gives a ground takes the skin's away.
TEST_F(ColourPanel, PaintsItsGroundUnlessTheHostGivesItOne)
{
    constexpr QRgb kSkins = 0xFF2B2B2E;
    const auto ground = [this] { return panel->grab().toImage().pixel(3, 3); };
    panel->setObjectName("panel");
    const std::pair<const char*, QRgb> sheets[] = {{"QWidget#panel { background: #123456 }", 0xFF123456},
                                                   {"QToolTip { color: red }", kSkins},
                                                   {"CKvColorPanel { border: 2px solid red }", kSkins},
                                                   {"CKvColorPanel { background: #123456 }", 0xFF123456},
                                                   {"", kSkins}};
    for (const auto& [sheet, seen] : sheets) {
        panel->setStyleSheet(sheet);
        EXPECT_EQ(ground(), seen) << sheet;
        EXPECT_EQ(panel->grab().toImage().pixel(0, 100) == 0xFFFF0000,
                  QLatin1String(sheet).contains(QLatin1String("border")));
    }
    QPixmap pattern(8, 8);
    pattern.fill(Qt::cyan);
    const std::tuple<QPalette::ColorRole, QBrush, QRgb> brushes[] = {
        {QPalette::WindowText, Qt::red, kSkins},
        {QPalette::Window, Qt::blue, 0xFF0000FF},
        {QPalette::Window, QBrush(pattern), 0xFF00FFFF},
    };
    for (const auto& [role, brush, seen] : brushes) {
        QPalette palette;
        palette.setBrush(role, brush);
        panel->setPalette(palette);
        EXPECT_EQ(ground(), seen);
    }
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
