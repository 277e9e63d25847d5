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
        for (const auto& [name, colour] : {std::pair("a", "#101010"), std::pair("a_hover", "#202020"),
                                           std::pair("a_disabled", "#303030"), std::pair("b", "#ffffff")})
            Write(QByteArray(name) + ".svg", QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='6' "
                                                        "height='6'><rect width='6' height='6' fill='") +
                                                 colour + "'/></svg>");
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
    void Write(const QByteArray& name, const QByteArray& bytes)
    {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    void Focus(Qt::FocusReason reason)
    {
        button.clearFocus();
        button.setFocus(reason);
    }
    bool TakesFromShortcuts(Qt::Key key)
    {
        QKeyEvent event(QEvent::ShortcutOverride, key, Qt::NoModifier);
        event.ignore();
        QApplication::sendEvent(&button, &event);
        return event.isAccepted();
    }

    QTemporaryDir folder;
    QWidget parent;
    CKvBitmapButton button;
};

TEST_F(Button, LooksByStateWithTheSkinsOwnPictureFirst)
{
    struct
    {
        const char* name;
        const wchar_t* image;
        bool hover, down, enabled;
        int middle;       ///< red
        const char* side; ///< beside the picture of 6 x 6
    } const rows[] = {
        {"normal", L"b", false, false, true, 0xFF, "#000000"},
        {"hover", L"b", true, false, true, 0xFF, "#0000c8"},
        {"pressed", L"b", true, true, true, 0xFF, "#c80000"},
        {"disabled", L"b", true, false, false, 0x66, "#000000"},
        {"own hover", L"a", true, false, true, 0x20, "#000000"},
        {"own disabled", L"a", false, false, false, 0x30, "#000000"},
        {"pressed without an own one", L"a", true, true, true, 0x10, "#c80000"},
        {"no picture", L"none", true, false, true, 0, "#0000c8"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(button.UpdateBitmap(row.image), row.image != std::wstring(L"none"));
        button.setAttribute(Qt::WA_UnderMouse, row.hover);
        button.setEnabled(row.enabled);
        button.setDown(row.down);
        const QImage seen = parent.grab(button.geometry()).toImage();
        EXPECT_NEAR(seen.pixelColor(6, 6).red(), row.middle, 1) << row.name;
        EXPECT_EQ(seen.pixelColor(1, 6).name(), row.side) << row.name;
    }
}

TEST_F(Button, FocusShowsOnceItComesByKey)
{
    const auto edge = [&] { return parent.grab(button.geometry()).toImage().pixelColor(0, 6).name(); };
    Focus(Qt::MouseFocusReason);
    EXPECT_EQ(edge(), "#000000");
    EXPECT_FALSE(TakesFromShortcuts(Qt::Key_Space)) << "after a click Space is still the host's";
    Focus(Qt::TabFocusReason);
    EXPECT_EQ(edge(), "#00c800");
    EXPECT_TRUE(TakesFromShortcuts(Qt::Key_Space));
    EXPECT_FALSE(TakesFromShortcuts(Qt::Key_A));
    Focus(Qt::MouseFocusReason);
    QTest::keyClick(&button, Qt::Key_Space);
    EXPECT_EQ(edge(), "#00c800");
}

TEST_F(Button, BackgroundIsTheSettingsOrTheThemesOrTheParents)
{
    const auto side = [&] { return parent.grab(button.geometry()).toImage().pixelColor(1, 6).name(); };
    SKvGuiBasicSettings settings{0xFF070707, 0, 0, {}};
    button.SetBackgroundKey(L"keMissing");
    EXPECT_EQ(side(), "#000000");
    button.SetBackgroundKey(L"keBack");
    EXPECT_EQ(side(), "#090909");
    button.SetGuiBasicSettings(&settings);
    EXPECT_EQ(side(), "#070707");
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
    EXPECT_EQ(access.role(), QAccessible::Button);
    EXPECT_EQ(access.text(QAccessible::Name), "Tip");
    EXPECT_EQ(access.text(QAccessible::Description), "");
    button.setCheckable(true);
    button.setChecked(true);
    EXPECT_EQ(access.role(), QAccessible::CheckBox);
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
