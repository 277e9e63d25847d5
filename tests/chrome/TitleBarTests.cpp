// The ribbon title bar: which tool windows are seen and where, what the smart menu and the signals tell and
// in what order, and the window that switches applications.
#include "KvButtons.h"
#include "KvGuiRes.h"
#include "KvMenu.h"
#include "KvRibbonTitlebar.h"

#include <QAction>
#include <QApplication>
#include <QCursor>
#include <QFontMetrics>
#include <QHelpEvent>
#include <QListWidget>
#include <QMenu>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QToolTip>

#include <functional>
#include <gtest/gtest.h>
#include <memory>

namespace {

class TitleBar : public testing::Test
{
protected:
    // Everything that the host hears, in order: "attach7", "told:a", "item7:b".
    void Note(const std::string& what)
    {
        heard += heard.empty() ? what : ' ' + what;
        if (onCall && what == onCallOf)
            std::exchange(onCall, nullptr)();
    }
    std::string Heard() { return std::exchange(heard, {}); }

    struct Smart : IKvRibbonTitleBarSmartMenu
    {
        explicit Smart(TitleBar& testing) : test(testing) {}
        int Release() override { return Note("release"); }
        int OnAttach(IKvRibbonTitleBarMgr* manager, unsigned id) override
        {
            EXPECT_EQ(manager, static_cast<IKvRibbonTitleBarMgr*>(test.bar));
            return Note("attach" + std::to_string(id));
        }
        int OnDetach() override { return Note("detach"); }
        int GetMenuName(wchar_t name[260]) override
        {
            std::wcscpy(name, menu.c_str());
            Note("name");
            return named;
        }
        int OnCommand(unsigned command) override { return Note("command" + std::to_string(command)); }
        int Note(const std::string& what)
        {
            test.Note(what);
            return 0;
        }
        TitleBar& test;
        std::wstring menu;
        int named = 1;
    };

    struct Tool : QWidget, IKvGuiWnd
    {
        Tool(TitleBar& testing, const char* name, QSize size) : QWidget(testing.bar), test(testing)
        {
            setObjectName(name);
            resize(size);
        }
        void SetToolWndManager(void* manager) override
        {
            EXPECT_EQ(manager, static_cast<IKvRibbonTitleBarMgr*>(test.bar));
            test.Note("told:" + objectName().toStdString());
        }
        TitleBar& test;
    };

    TitleBar()
    {
        top.resize(700, 400);
        NewBar();
        top.show();
        QApplication::setActiveWindow(&top); // the offscreen platform activates no window by itself
    }
    ~TitleBar() override
    {
        onCall = nullptr;
        delete bar.data();
    }

    void NewBar()
    {
        bar = new CKvRibbonTitlebar;
        bar->Create(WS_CHILD | WS_VISIBLE, {0, 0, 700, 30}, &top, 77);
        QObject::connect(bar, &CKvRibbonTitlebar::TitleBarActivated, &top,
                         [this](quint32 id) { Note("bar" + std::to_string(id)); });
        QObject::connect(bar, &CKvRibbonTitlebar::RibbonItemSelected, &top,
                         [this](quint32 id, const QString& name) {
                             Note("item" + std::to_string(id) + ':' + name.toStdString());
                         });
    }
    Tool* NewTool(const char* name, QSize size = {50, 20}) { return new Tool(*this, name, size); }
    // Tabs "a", "b" and "c"; "b" is flagged, each has a tool window that is named like it and the bar.
    void Add(unsigned id, const wchar_t* text = L"Titles", IKvRibbonTitleBarSmartMenu* menu = nullptr)
    {
        bar->BeginAddTitleBar(L"titler_titles", text, nullptr, id, menu);
        for (const char* name : {"a", "b", "c"}) {
            Tool* tool = NewTool((name + std::to_string(id)).c_str());
            bar->AddRibbonItem(KvFromQString(QString(name)).c_str(), tool, tool, *name == 'b');
        }
        Tool* adv = NewTool(("x" + std::to_string(id)).c_str(), {30, 40});
        bar->RegisterAdvToolWnd(adv, adv, nullptr, nullptr);
        EXPECT_EQ(bar->EndAddTitleBar(), 1);
        heard.clear();
    }
    std::string Seen() const
    {
        QStringList names;
        for (const QObject* child : bar->children()) {
            const auto* tool = dynamic_cast<const Tool*>(child);
            if (tool && tool->isVisible())
                names += tool->objectName();
        }
        names.sort();
        return names.join(' ').toStdString();
    }
    CKvBitmapButton& Button(UINT number) const
    {
        return *static_cast<CKvBitmapButton*>(KvGetDlgItem(bar, number));
    }
    // Clicks the tab behind others of these names.
    void ClickTab(const QStringList& before)
    {
        int x = Button(kKvCaptionApplication).geometry().right() + 1 - 20 + 30;
        for (const QString& name : before)
            x += QFontMetrics(bar->font()).horizontalAdvance(name) + 10;
        QTest::mousePress(bar, Qt::LeftButton, {}, {x + 2, 18});
        if (bar)
            QTest::mouseRelease(bar, Qt::LeftButton, {}, {x + 2, 18});
    }
    static void Click(QWidget& button) { QTest::mouseClick(&button, Qt::LeftButton); }
    // Calls when the next popup is open.
    void WithPopup(std::function<void(QMenu&)> act)
    {
        QTimer::singleShot(0, &top, [act] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_TRUE(menu);
            act(*menu);
            if (QApplication::activePopupWidget())
                QApplication::activePopupWidget()->close();
        });
    }
    static QListWidget* SwitchList()
    {
        QWidget* popup = QApplication::activePopupWidget();
        return popup ? popup->findChild<QListWidget*>() : nullptr;
    }

    QWidget top;
    QPointer<CKvRibbonTitlebar> bar;
    Smart smart{*this};
    std::string heard;
    std::string onCallOf;
    std::function<void()> onCall;
};

TEST_F(TitleBar, UnknownAndUnfinishedBarsChangeNothing)
{
    EXPECT_EQ(bar->AddRibbonItem(L"a", nullptr, nullptr, 0), 0);
    EXPECT_EQ(bar->RegisterAdvToolWnd(nullptr, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(bar->EndAddTitleBar(), 0);
    EXPECT_EQ(bar->ShowAppSwitchWindow(), 0);
    bar->BeginAddTitleBar(nullptr, nullptr, nullptr, 1, &smart);
    bar->BeginAddTitleBar(nullptr, nullptr, nullptr, 2, &smart);
    EXPECT_EQ(Heard(), "attach1 detach release attach2");
    EXPECT_EQ(bar->EndAddTitleBar(), 0) << "without tabs";
    EXPECT_EQ(Heard(), "detach release");
    Add(3);
    EXPECT_EQ(bar->ActiveTitleBar(4, 1) + bar->RemoveTitleBar(4) + bar->SetDocTitle(4, nullptr) +
                  bar->SetSysTitle(4, nullptr),
              0);
    EXPECT_EQ(bar->SetRibbonItemName(3, nullptr, L"d") + bar->SetRibbonItemToolWnd(3, L"", nullptr, nullptr) +
                  bar->EnableRibbonItem(3, L"A", 0) + bar->ActiveRibbonItem(3, L"d"),
              0);
    EXPECT_EQ(bar->SetDocTitle(3, nullptr) + bar->SetSysTitle(3, nullptr), 2);
}

TEST_F(TitleBar, ToolWindowsFollowTheSelection)
{
    Add(1);
    Add(2);
    const std::pair<const char*, std::function<int()>> steps[] = {
        {"", [&] { return 1; }},
        {"b1 x1", [&] { return bar->ActiveTitleBar(1, 0); }},
        {"a1 x1", [&] { return bar->ActiveRibbonItem(1, L"a"); }},
        {"a1 x1", [&] { return bar->ActiveRibbonItem(2, L"c"); }}, // stored
        {"b2 x2", [&] { return bar->ActiveTitleBar(2, 1); }},      // the flag wins
        {"b2 x2", [&] { return bar->EnableRibbonItem(2, L"b", 0); }},
        {"b2 x2", [&] { return 1 - bar->ActiveRibbonItem(2, L"b"); }}, // disabled
        {"c2 x2", [&] { return bar->ActiveRibbonItem(2, L"c"); }},
        {"c2 x2", [&] { return bar->ActiveTitleBar(2, 1); }}, // the only flag is disabled
        {"c2 x2", [&] { return bar->SetRibbonItemName(2, L"c", L"d"); }},
        {"a2 x2", [&] { return bar->ActiveRibbonItem(2, L"a"); }},
        {"a2 x2", [&] { return 1 - bar->ActiveRibbonItem(2, L"c"); }},
        {"x2", [&] { return bar->SetRibbonItemToolWnd(2, L"a", nullptr, nullptr); }},
        {"b1 x1", [&] { return bar->RemoveTitleBar(2); }},
        {"", [&] { return bar->RemoveTitleBar(1); }},
    };
    for (const auto& [seen, step] : steps) {
        EXPECT_EQ(step(), 1) << seen;
        EXPECT_EQ(Seen(), seen);
    }
    EXPECT_EQ(Heard(), "") << "signals are for what the user does";
}

TEST_F(TitleBar, ToolWindowsArePlacedAndTold)
{
    QWidget alone(bar); // a handle without its interface
    alone.setGeometry(1, 2, 3, 4);
    Tool* tool = NewTool("t", {300, 10});
    Tool* first = NewTool("x", {30, 40});
    Tool* second = NewTool("y", {20, 10});
    bar->BeginAddTitleBar(L"", L"Titles", nullptr, 1, nullptr);
    bar->AddRibbonItem(L"t", tool, tool, 0);
    bar->AddRibbonItem(L"alone", nullptr, &alone, 0);
    bar->RegisterAdvToolWnd(first, first, second, second);
    bar->EndAddTitleBar();
    EXPECT_EQ(Heard(), "told:t told:x told:y");
    bar->ActiveTitleBar(1, 1);
    EXPECT_EQ(tool->geometry(), QRect(0, 27, 300, 69));
    EXPECT_EQ(second->geometry(), QRect(680, 27, 20, 10));
    EXPECT_EQ(first->geometry(), QRect(680 - 6 - 2 - 30, 27, 30, 40));
    bar->ActiveRibbonItem(1, L"alone");
    EXPECT_TRUE(alone.isVisible());
    EXPECT_EQ(alone.geometry(), QRect(1, 2, 3, 4));
    bar->resize(500, 96);
    EXPECT_EQ(second->geometry().topLeft(), QPoint(480, 27));
    Tool* other = NewTool("o", {70, 10});
    bar->SetRibbonItemToolWnd(1, L"alone", other, other);
    EXPECT_EQ(Heard(), "told:o");
    EXPECT_TRUE(other->isVisible() && !alone.isVisible());
    EXPECT_EQ(other->geometry(), QRect(0, 27, 70, 69));
    delete first;
    delete other;
    bar->resize(400, 96);
    bar->ActiveRibbonItem(1, L"t");
    EXPECT_EQ(Seen(), "t y");
    EXPECT_EQ(second->x(), 380);
}

TEST_F(TitleBar, TheApplicationButtonHasTheTextOfItsBar)
{
    CKvRibbonTitlebar::SetShortLabels(1);
    Add(1, L"NovCG Titles");
    CKvRibbonTitlebar::SetShortLabels(0);
    bar->ActiveTitleBar(1, 1);
    const int width = QFontMetrics(bar->font()).horizontalAdvance("CG  Titles");
    EXPECT_EQ(Button(kKvCaptionApplication).geometry(), QRect(4, 2, width + 20, 21));
    bar->RemoveTitleBar(1);
    EXPECT_EQ(Button(kKvCaptionApplication).geometry(), QRect(0, 4, 120, 21));
}

TEST_F(TitleBar, WindowButtonsAreShownByState)
{
    const std::pair<int, std::string> rows[] = {{1, ""}, {2, "10001"}, {7, "10001 10002 10003 10004"}};
    for (const auto& [state, expected] : rows) {
        EXPECT_EQ(bar->ShowAppBtn(static_cast<EKvRibTitleBarAppBtnShowState>(state)), 1);
        std::string shown;
        for (UINT number = kKvCaptionClose; number <= kKvCaptionMenu; ++number) {
            if (Button(number).isVisible())
                shown += (shown.empty() ? "" : " ") + std::to_string(number);
        }
        EXPECT_EQ(shown, expected);
    }
}

TEST_F(TitleBar, AClickSelectsATabThatIsFree)
{
    Add(1);
    bar->EnableRibbonItem(1, L"c", 0);
    bar->ActiveTitleBar(1, 1);
    ClickTab({});
    EXPECT_EQ(Heard(), "item1:a");
    EXPECT_EQ(Seen(), "a1 x1");
    ClickTab({});
    ClickTab({"a", "b"});
    EXPECT_EQ(Heard(), "") << "selected, or disabled";
    bar->SetRibbonItemName(1, L"a", L"a longer name");
    ClickTab({"a longer name"});
    EXPECT_EQ(Heard(), "item1:b");
}

TEST_F(TitleBar, TheMenuButtonOpensTheSmartMenusMenu)
{
    KvGuiRes::RegisterMenu(L"test", [] {
        auto menu = std::make_unique<QMenu>();
        menu->addAction("Do")->setData(5);
        return menu;
    });
    Add(1, L"Titles", &smart);
    QWidget& button = Button(kKvCaptionMenu);
    Click(button);
    EXPECT_EQ(Heard(), "") << "no bar is active";
    bar->ActiveTitleBar(1, 1);
    Click(button);
    smart.menu = L"unknown";
    Click(button);
    smart.menu = L"test";
    smart.named = 0;
    Click(button);
    EXPECT_EQ(Heard(), "name name name");
    smart.named = 1;
    WithPopup([&](QMenu& menu) {
        EXPECT_EQ(menu.pos(), button.mapToGlobal(QPoint(0, button.height() + 1)));
        QTest::keyClick(&menu, Qt::Key_Down);
        QTest::keyClick(&menu, Qt::Key_Return);
    });
    Click(button);
    EXPECT_EQ(Heard(), "name command5");
    WithPopup([](QMenu&) {});
    Click(button);
    EXPECT_EQ(Heard(), "name command0");
    WithPopup([&](QMenu&) { bar->RemoveTitleBar(1); });
    Click(button);
    EXPECT_EQ(Heard(), "name detach release");
    KvGuiRes::RegisterMenu(L"test", nullptr);
}

TEST_F(TitleBar, TheApplicationMenuNamesTheApplications)
{
    const auto texts = [](const QMenu& menu) {
        QStringList list;
        for (const QAction* action : menu.actions())
            list += action->isSeparator() ? "-" : action->text() + (action->isEnabled() ? "" : "*");
        return list.mid(0, 3).join('|').toStdString();
    };
    Add(1);
    bar->ActiveTitleBar(1, 1);
    WithPopup([&](QMenu& menu) { EXPECT_EQ(texts(menu), "Restore*|Minimize|Maximize"); });
    Click(Button(kKvCaptionApplication));
    Add(2, L"Cut & Paste");
    WithPopup([&](QMenu& menu) {
        EXPECT_EQ(texts(menu), "Titles*|Cut && Paste|-");
        EXPECT_FALSE(menu.actions()[1]->icon().isNull());
        menu.setActiveAction(menu.actions()[1]);
        QTest::keyClick(&menu, Qt::Key_Return);
    });
    Click(Button(kKvCaptionApplication));
    EXPECT_EQ(Heard(), "bar2");
    EXPECT_EQ(Seen(), "b2 x2");
}

TEST_F(TitleBar, TheSwitchWindowChoosesAnApplication)
{
    Add(1);
    bar->ActiveTitleBar(1, 1);
    QTest::mouseClick(bar, Qt::LeftButton, {}, {350, 10});
    QTest::keyClick(&top, Qt::Key_F1, Qt::AltModifier);
    EXPECT_FALSE(SwitchList()) << "one application";
    Add(2, L"Media");
    Add(3, L"An application that needs more than the least width");
    QTest::keyClick(&top, Qt::Key_F1, Qt::AltModifier);
    ASSERT_TRUE(SwitchList());
    QWidget& popup = *SwitchList()->window();
    EXPECT_STREQ(popup.metaObject()->className(), "CKvAppSwitchWnd");
    EXPECT_EQ(popup.windowTitle(), "Switch Application (Alt+F1)");
    EXPECT_EQ(popup.accessibleName(), popup.windowTitle());
    EXPECT_EQ(popup.pos() + QPoint(popup.width() / 2, popup.height() / 2), top.mapToGlobal(QPoint(350, 200)));
    EXPECT_EQ(SwitchList()->currentRow(), 0);
    EXPECT_EQ(SwitchList()->item(1)->text(), "Media");
    EXPECT_GE(SwitchList()->visualItemRect(SwitchList()->item(2)).width(), SwitchList()->sizeHintForColumn(0))
        << "cut";
    QTest::keyClick(SwitchList(), Qt::Key_End);
    QTest::keyClick(SwitchList(), Qt::Key_Up);
    QTest::keyClick(SwitchList(), Qt::Key_Return);
    EXPECT_FALSE(SwitchList());
    EXPECT_EQ(Heard(), "bar2");
    EXPECT_EQ(Seen(), "b2 x2");

    QTest::mouseClick(bar, Qt::LeftButton, {}, {350, 10}); // the flag
    ASSERT_TRUE(SwitchList());
    EXPECT_EQ(SwitchList()->currentRow(), 1);
    QTest::keyClick(SwitchList(), Qt::Key_Escape);
    EXPECT_FALSE(SwitchList());
    EXPECT_EQ(bar->ShowAppSwitchWindow(), 1);
    QTest::keyClick(SwitchList(), Qt::Key_Enter);
    EXPECT_EQ(Heard(), "") << "dismissed, and the active one chosen";

    bar->RemoveTitleBar(2);
    EXPECT_EQ(bar->ShowAppSwitchWindow(), 1);
    EXPECT_EQ(SwitchList()->count(), 2);
    onCallOf = "bar3";
    onCall = [&] { bar->RemoveTitleBar(1); }; // the window goes while it speaks
    QTest::mouseClick(SwitchList()->viewport(), Qt::LeftButton, {},
                      SwitchList()->visualItemRect(SwitchList()->item(1)).center());
    EXPECT_EQ(Heard(), "bar3");
    EXPECT_EQ(bar->ShowAppSwitchWindow(), 0);
    QTest::keyClick(&top, Qt::Key_F1, Qt::AltModifier);
    EXPECT_FALSE(SwitchList());
}

TEST_F(TitleBar, TheFlagShowsWhatAPressWouldDo)
{
    Add(1);
    Add(2, L"Media");
    bar->ActiveTitleBar(1, 1);
    const QPoint flag(350, 10);
    const auto look = [this] { return bar->grab(QRect(342, 2, 16, 16)).toImage(); };
    const auto hover = [&] {
        QMouseEvent move(QEvent::MouseMove, flag, bar->mapToGlobal(flag), Qt::NoButton, {}, {});
        QApplication::sendEvent(bar, &move);
        return look();
    };
    QCursor::setPos(top.mapToGlobal(QPoint(20, 390)));
    const QImage normal = look();
    const QImage hovered = hover();
    EXPECT_NE(hovered, normal);
    QTest::mousePress(bar, Qt::LeftButton, {}, flag);
    ASSERT_TRUE(SwitchList());
    EXPECT_NE(look(), normal);
    EXPECT_NE(look(), hovered);
    QTest::keyClick(SwitchList(), Qt::Key_Escape);
    EXPECT_EQ(look(), normal) << "the pointer is elsewhere";

    const auto tip = [&] {
        QToolTip::hideText();
        EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
        QHelpEvent help(QEvent::ToolTip, flag, bar->mapToGlobal(flag));
        QApplication::sendEvent(bar, &help);
        return QToolTip::text().toStdString();
    };
    EXPECT_EQ(tip(), "Switch Application (Alt+F1)");
    bar->SetRibbonItemName(1, L"a", std::wstring(63, L'm').c_str());
    const QImage covered = look();
    EXPECT_EQ(tip(), "") << "a tab covers the flag";
    EXPECT_NE(hover(), covered) << "and is what the pointer is on";
}

TEST_F(TitleBar, TheHostMayDoAnythingMeanwhile)
{
    for (int i = 0; i < 10; ++i) {
        const char* const during[] = {"attach1", "told:t", "item1:u", "name", "detach"};
        const bool byDeletion = i % 2 != 0;
        onCallOf = during[i / 2];
        SCOPED_TRACE(onCallOf + (byDeletion ? ": delete" : ": remove"));
        if (!bar)
            NewBar();
        onCall = [&] {
            if (byDeletion)
                delete bar.data();
            else if (bar->RemoveTitleBar(1) == 0)
                bar->BeginAddTitleBar(nullptr, nullptr, nullptr, 2, nullptr);
        };
        smart.menu = L"unknown";
        bar->BeginAddTitleBar(L"", L"Titles", nullptr, 1, &smart);
        if (bar) {
            Tool* tool = NewTool("t");
            bar->AddRibbonItem(L"t", tool, tool, 0);
        }
        if (bar) {
            bar->AddRibbonItem(L"u", nullptr, nullptr, 0);
            bar->EndAddTitleBar();
            bar->ActiveTitleBar(1, 1);
            ClickTab({"t"});
        }
        if (bar)
            Click(Button(kKvCaptionMenu));
        if (bar)
            bar->RemoveTitleBar(1);
        EXPECT_FALSE(onCall) << "was not called";
        const std::string all = Heard();
        EXPECT_EQ(all.find("attach1"), 0u);
        EXPECT_EQ(all.find("detach release"), all.rfind("detach release"));
        EXPECT_NE(all.find("detach release"), std::string::npos);
        EXPECT_EQ(all.find("command"), std::string::npos);
    }
}

TEST_F(TitleBar, AThousandTabsWithOneToolWindow)
{
    Tool* tool = NewTool("t");
    bar->BeginAddTitleBar(L"", L"Titles", nullptr, 1, nullptr);
    for (int i = 0; i < 1000; ++i)
        bar->AddRibbonItem(std::to_wstring(i).c_str(), nullptr, tool, 0);
    bar->EndAddTitleBar();
    bar->ActiveTitleBar(1, 1);
    EXPECT_EQ(bar->ActiveRibbonItem(1, L"999"), 1);
    EXPECT_TRUE(tool->isVisible());
    bar->RemoveTitleBar(1);
    EXPECT_FALSE(tool->isVisible());
}

} // namespace
