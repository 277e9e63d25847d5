// The bitmap button: what it looks like in its states, and who hears of a click.
#include "KvButtons.h"
#include "KvGuiRes.h"
#include "KvWnd.h"

#include <QAccessible>
#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace {

// A host's skin: "a" has pictures of its own for two states, "b" has one picture for all.
class Button : public testing::Test
{
protected:
    Button()
    {
        Write("skin.ini", "[Colors]\nkeButtonHoverColor=0,0,200,255\nkeButtonPressedColor=200,0,0,255\n"
                          "keFocusColor=0,200,0,255\nkeBack=9,9,9,255\n");
        const QByteArray picture = "<svg xmlns='http://www.w3.org/2000/svg' width='6' height='6'>"
                                   "<rect width='6' height='6' fill='#";
        for (const auto& [name, colour] : {std::pair("a.svg", "101010"), std::pair("a_hover.svg", "202020"),
                                           std::pair("a_disabled.svg", "303030"), std::pair("b.svg", "fff")})
            Write(name, picture + colour + "'/></svg>");
        KvGuiRes::SetSkinFolder(KvFromQString(folder.path()).c_str());
        parent.resize(100, 50);
        QPalette palette;
        palette.setColor(QPalette::Window, Qt::black);
        parent.setPalette(palette);
        button.CreateButton(70, &parent, {10, 10, 24, 24}, WS_CHILD | WS_VISIBLE | WS_TABSTOP, L"b", L"Tip");
        parent.show();
        QApplication::setActiveWindow(&parent);
    }
    ~Button() override { KvGuiRes::SetSkinFolder(nullptr); }
    void Write(const char* name, const QByteArray& bytes)
    {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) > 0);
    }
    QColor Pixel(int x) { return parent.grab(button.geometry()).toImage().pixelColor(x, 6); }

    QTemporaryDir folder;
    QWidget parent;
    CKvBitmapButton button;
};

TEST_F(Button, LooksByStateWithTheSkinsOwnPictureFirst)
{
    // Hover, down, enabled; the red in the middle; the colour beside the picture of 6 x 6.
    const std::tuple<const char*, const wchar_t*, bool, bool, bool, int, const char*> rows[] = {
        {"normal", L"b", false, false, true, 0xFF, "#000000"},
        {"hover", L"b", true, false, true, 0xFF, "#0000c8"},
        {"pressed", L"b", true, true, true, 0xFF, "#c80000"},
        {"disabled", L"b", true, false, false, 0x66, "#000000"},
        {"own hover", L"a", true, false, true, 0x20, "#000000"},
        {"own disabled", L"a", false, false, false, 0x30, "#000000"},
        {"pressed without an own one", L"a", true, true, true, 0x10, "#c80000"},
        {"no picture", L"none", true, false, true, 0, "#0000c8"},
    };
    for (const auto& [name, image, hover, down, enabled, middle, side] : rows) {
        EXPECT_EQ(button.UpdateBitmap(image), image != std::wstring(L"none"));
        button.setAttribute(Qt::WA_UnderMouse, hover);
        button.setEnabled(enabled);
        button.setDown(down);
        EXPECT_NEAR(Pixel(6).red(), middle, 1) << name;
        EXPECT_EQ(Pixel(1).name(), side) << name;
    }
}

TEST_F(Button, FocusShowsAndTakesSpaceOnceItComesOrWorksByKey)
{
    constexpr auto kTab = Qt::TabFocusReason, kMouse = Qt::MouseFocusReason, kPlain = Qt::OtherFocusReason;
    const std::tuple<Qt::FocusReason, Qt::Key, Qt::KeyboardModifiers, bool> rows[] = {
        {kMouse, Qt::Key_A, Qt::NoModifier, false},     {kTab, Qt::Key_A, Qt::NoModifier, true},
        {kPlain, Qt::Key_A, Qt::NoModifier, true},      {kMouse, Qt::Key_Space, Qt::NoModifier, true},
        {kMouse, Qt::Key_Up, Qt::KeypadModifier, true}, {kMouse, Qt::Key_Up, Qt::ControlModifier, false},
    };
    for (const auto& [reason, key, modifiers, shown] : rows) {
        button.clearFocus();
        button.setFocus(reason);
        QTest::keyClick(&button, key, modifiers);
        EXPECT_EQ(Pixel(0).name(), shown ? "#00c800" : "#000000") << reason << ' ' << key;
        for (const Qt::Key other : {Qt::Key_Space, Qt::Key_A}) {
            QKeyEvent event(QEvent::ShortcutOverride, other, Qt::NoModifier);
            event.ignore();
            QApplication::sendEvent(&button, &event);
            EXPECT_EQ(event.isAccepted(), shown && other == Qt::Key_Space) << reason << ' ' << key;
        }
    }
}

TEST_F(Button, BackgroundIsTheSettingsOrTheThemesOrTheParents)
{
    SKvGuiBasicSettings settings{0xFF070707, 0, 0, {}};
    button.SetBackgroundKey(L"keMissing");
    EXPECT_EQ(Pixel(1).name(), "#000000");
    button.SetBackgroundKey(L"keBack");
    EXPECT_EQ(Pixel(1).name(), "#090909");
    button.SetGuiBasicSettings(&settings);
    EXPECT_EQ(Pixel(1).name(), "#070707");
}

TEST_F(Button, TellsTheParentOfAClickAndLeavesTheCheckToTheOwner)
{
    int clicks = 0;
    KvMessageSink sink(&parent, [&](UINT message, WPARAM w, LPARAM l) -> std::optional<LRESULT> {
        EXPECT_TRUE(message == WM_COMMAND && w == MAKEWPARAM(70, BN_CLICKED) &&
                    reinterpret_cast<QWidget*>(l) == &button);
        ++clicks;
        return 0;
    });
    QAccessibleInterface& access = *QAccessible::queryAccessibleInterface(&button);
    EXPECT_EQ(access.text(QAccessible::Description), "") << "the tool tip is the name";
    button.setCheckable(true);
    button.setChecked(true);
    EXPECT_TRUE(access.state().checked);
    QTest::mouseClick(&button, Qt::LeftButton);
    QTest::mouseDClick(&button, Qt::LeftButton); // the second press of a double click
    QTest::mouseRelease(&button, Qt::LeftButton);
    access.actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    QTest::keyPress(&button, Qt::Key_Space);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, {}, true);
    QApplication::sendEvent(&button, &held);
    EXPECT_TRUE(held.isAccepted()) << "a held press goes nowhere else";
    QTest::keyRelease(&button, Qt::Key_Space);
    EXPECT_EQ(clicks, 4);
    EXPECT_TRUE(button.isChecked());
    EXPECT_EQ(button.CreateButton(71, nullptr, {}, 0, L"a", nullptr), 0);

    button.setEnabled(false);
    QTest::mouseClick(&button, Qt::LeftButton);
    access.actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(access.actionInterface()->actionNames(), QStringList());
    EXPECT_EQ(clicks, 4);
}

} // namespace
