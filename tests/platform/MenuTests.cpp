// Menus from the tables and from a host.
#include "KvGuiRes.h"
#include "KvMenu.h"

#include <QMenu>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

// What a person sees, a line an item.
QStringList Lines(const QMenu* menu)
{
    QStringList lines;
    for (const QAction* action : menu->actions())
        lines << (action->isSeparator() ? QStringLiteral("-")
                                        : action->text() + u'=' + QString::number(KvGetMenuCommand(action)));
    return lines;
}

TEST(Menu, GradientMenuHasItsItemsInOrder)
{
    CKvMenu menu;
    ASSERT_EQ(menu.LoadMenu(12002), 1);
    const QStringList expected{"&Copy=32772",
                               "&Paste=32774",
                               "C&ut=32775",
                               "&Delete=32776",
                               "-",
                               "&Reset=32789",
                               "-",
                               "Re&verse=32778",
                               "Reflec&t=32780",
                               "Exchange &Before=32785",
                               "Exchange A&fter=32787",
                               "Sa&me Space=32784"};
    EXPECT_EQ(Lines(menu.GetHandle()), expected);
    EXPECT_EQ(menu.EnableMenuItem(32774, 0), 1);
    EXPECT_FALSE(menu.GetHandle()->actions().at(1)->isEnabled());
    EXPECT_EQ(menu.EnableMenuItem(1, 0), 0);
    EXPECT_EQ(menu.LoadMenu(1), 0);
    EXPECT_EQ(menu.GetHandle(), nullptr);
    EXPECT_EQ(menu.TrackPopupMenu(0, {}, nullptr), 0u);
}

TEST(Menu, TrackingReturnsTheCommandOrZero)
{
    QWidget owner;
    CKvMenu menu;
    menu.LoadMenu(12002);
    const auto pressWhenOpen = [&](Qt::Key key) {
        QTimer::singleShot(0, [&menu, key] {
            menu.GetHandle()->setActiveAction(menu.GetHandle()->actions().at(3));
            QTest::keyClick(menu.GetHandle(), key);
        });
    };
    pressWhenOpen(Qt::Key_Return);
    EXPECT_EQ(menu.TrackPopupMenu(TPM_RIGHTBUTTON | TPM_RETURNCMD, {10, 10}, &owner), 32776u);
    pressWhenOpen(Qt::Key_Escape);
    EXPECT_EQ(menu.TrackPopupMenu(TPM_RIGHTBUTTON | TPM_RETURNCMD, {10, 10}, &owner), 0u);
    EXPECT_NE(menu.GetHandle(), nullptr);
}

TEST(Menu, OwnerAndMenuMayDieWhileThePopupIsOpen)
{
    auto menuToDie = std::make_unique<CKvMenu>();
    menuToDie->LoadMenu(12002);
    QTimer::singleShot(0, [&] { menuToDie.reset(); });
    EXPECT_EQ(menuToDie->TrackPopupMenu(0, {10, 10}, nullptr), 0u);

    auto* owner = new QWidget;
    CKvMenu menu;
    menu.LoadMenu(12002);
    QTimer::singleShot(0, [owner] { delete owner; });
    EXPECT_EQ(menu.TrackPopupMenu(0, {10, 10}, owner), 0u);
    EXPECT_EQ(menu.GetHandle(), nullptr);
}

TEST(Menu, HostMenuIsMadeAtEachLoad)
{
    int made = 0;
    KvGuiRes::RegisterMenu(L"Recent", [&] {
        auto menu = std::make_unique<QMenu>();
        ++made;
        menu->addAction(QString::number(made))->setData(40000 + made);
        return menu;
    });
    CKvMenu menu;
    EXPECT_EQ(menu.LoadMenu(L"Recent"), 1);
    EXPECT_EQ(menu.LoadMenu(L"Recent"), 1);
    EXPECT_EQ(Lines(menu.GetHandle()), QStringList{"2=40002"});
    KvGuiRes::RegisterMenu(L"Recent", {});
    EXPECT_EQ(menu.LoadMenu(L"Recent"), 0);
}

} // namespace
