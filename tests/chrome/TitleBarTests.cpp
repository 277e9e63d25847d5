// The ribbon title bar: which tool windows are seen and where, what the smart menu and the signals tell and
// in what order, and the window that switches applications.
#include "CaptionFixture.h"
#include "KvGuiRes.h"

#include <QCursor>
#include <QHelpEvent>
#include <QListWidget>
#include <QToolTip>

#include <memory>

namespace {

class TitleBar : public testing::Test
{
protected:
    TitleBar()
    {
        top.resize(700, 400);
        bar = new CKvRibbonTitlebar;
        bar->Create(WS_CHILD | WS_VISIBLE, {0, 0, 700, 30}, &top, 77);
        QObject::connect(bar, &CKvRibbonTitlebar::TitleBarActivated, &top,
                         [this](quint32 id) { host.Note("bar" + std::to_string(id)); });
        QObject::connect(bar, &CKvRibbonTitlebar::RibbonItemSelected, &top,
                         [this](quint32 id, const QString& name) {
                             host.Note("item" + std::to_string(id) + ':' + name.toStdString());
                         });
        top.show();
        QApplication::setActiveWindow(&top); // the offscreen platform activates no window by itself
    }
    ~TitleBar() override { delete bar.data(); }
    Tool* NewTool(const char* name, QSize size = {50, 20}) { return new Tool(bar, host, name, size); }
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
        host.Heard();
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
    // Clicks the tab behind others of these names.
    void ClickTab(const QStringList& before)
    {
        const QPoint place = ItemPlace(bar->fontMetrics(), "Titles", before + QStringList("x")).center();
        QTest::mouseClick(bar, Qt::LeftButton, {}, place);
    }
    static void Click(QWidget& button) { QTest::mouseClick(&button, Qt::LeftButton); }
    static QListWidget* SwitchList()
    {
        QWidget* popup = QApplication::activePopupWidget();
        return popup ? popup->findChild<QListWidget*>() : nullptr;
    }

    QWidget top;
    QPointer<CKvRibbonTitlebar> bar;
    Host host;
    TitleSmart smart{host};
};

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
        {"x2",
         [&] {
             return 1 - bar->SetRibbonItemName(2, nullptr, L"d") - bar->EnableRibbonItem(2, L"A", 0) -
                    bar->SetRibbonItemToolWnd(2, L"", nullptr, nullptr);
         }},
        {"b1 x1", [&] { return bar->RemoveTitleBar(2); }},
        {"", [&] { return bar->RemoveTitleBar(1); }},
    };
    for (const auto& [seen, step] : steps) {
        EXPECT_EQ(step(), 1) << seen;
        EXPECT_EQ(Seen(), seen);
    }
    EXPECT_EQ(host.Heard(), "") << "signals are for what the user does";
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
    EXPECT_EQ(host.Heard(), "told:t told:x told:y");
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
    EXPECT_EQ(host.Heard(), "told:o");
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
    EXPECT_EQ(Button(bar, kKvCaptionApplication).geometry(), QRect(4, 2, width + 20, 21));
    bar->RemoveTitleBar(1);
    EXPECT_EQ(Button(bar, kKvCaptionApplication).geometry(), QRect(0, 4, 120, 21));
}

TEST_F(TitleBar, WindowButtonsAreShownByState)
{
    const std::pair<int, std::string> rows[] = {{1, ""}, {2, "10001"}, {7, "10001 10002 10003 10004"}};
    for (const auto& [state, expected] : rows) {
        EXPECT_EQ(bar->ShowAppBtn(static_cast<EKvRibTitleBarAppBtnShowState>(state)), 1);
        std::string shown;
        for (UINT number = kKvCaptionClose; number <= kKvCaptionMenu; ++number) {
            if (Button(bar, number).isVisible())
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
    EXPECT_EQ(host.Heard(), "item1:a");
    EXPECT_EQ(Seen(), "a1 x1");
    ClickTab({});
    ClickTab({"a", "b"});
    EXPECT_EQ(host.Heard(), "") << "selected, or disabled";
    bar->SetRibbonItemName(1, L"a", L"a longer name");
    ClickTab({"a longer name"});
    EXPECT_EQ(host.Heard(), "item1:b");
    bar->EnableRibbonItem(1, L"c", 1);
    QTest::mouseMove(bar, {350, 60});
    const QImage picture = bar->grab().toImage();
    QTest::keyClick(&top, Qt::Key_3, Qt::AltModifier);
    QTest::keyClick(&top, Qt::Key_2, Qt::AltModifier);
    EXPECT_EQ(host.Heard(), "item1:c item1:b");
    EXPECT_EQ(bar->grab().toImage(), picture) << "the other tab looks selected still";
}

TEST_F(TitleBar, TheMenuButtonOpensTheSmartMenusMenu)
{
    KvGuiRes::RegisterMenu(L"test", [] {
        auto menu = std::make_unique<QMenu>();
        menu->addAction("Do")->setData(5);
        return menu;
    });
    Add(1, L"Titles", &smart);
    QWidget& button = Button(bar, kKvCaptionMenu);
    Click(button);
    EXPECT_EQ(host.Heard(), "") << "no bar is active";
    bar->ActiveTitleBar(1, 1);
    Click(button);
    smart.menu = L"unknown";
    Click(button);
    smart.menu = L"test";
    smart.named = 0;
    Click(button);
    EXPECT_EQ(host.Heard(), "name name name");
    smart.named = 1;
    Then([&](QMenu& menu) {
        EXPECT_EQ(menu.pos(), button.mapToGlobal(QPoint(0, button.height() + 1)));
        Choose(menu, 5);
    });
    Click(button);
    EXPECT_EQ(host.Heard(), "name command5");
    Then([](QMenu&) {});
    Click(button);
    EXPECT_EQ(host.Heard(), "name command0");
    Then([&](QMenu&) { bar->RemoveTitleBar(1); });
    Click(button);
    EXPECT_EQ(host.Heard(), "name detach release");
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
    Then([&](QMenu& menu) { EXPECT_EQ(texts(menu), "Restore*|Minimize|Maximize"); });
    Click(Button(bar, kKvCaptionApplication));
    Add(2, L"Cut & Paste");
    Then([&](QMenu& menu) {
        EXPECT_EQ(texts(menu), "Titles*|Cut && Paste|-");
        EXPECT_FALSE(menu.actions()[1]->icon().isNull());
        Choose(menu, 32814);
    });
    Click(Button(bar, kKvCaptionApplication));
    EXPECT_EQ(host.Heard(), "bar2");
    EXPECT_EQ(Seen(), "b2 x2");
    Add(3, L"Third");
    Then([&](QMenu& menu) {
        bar->RemoveTitleBar(1);
        Choose(menu, 32815);
    });
    Click(Button(bar, kKvCaptionApplication));
    EXPECT_EQ(host.Heard(), "bar3") << "the one that the entry shows";
}

TEST_F(TitleBar, TheSwitchWindowChoosesAnApplication)
{
    Add(1);
    bar->ActiveTitleBar(1, 1);
    QTest::mouseClick(bar, Qt::LeftButton, {}, {350, 10});
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
    QTest::keyClick(SwitchList(), Qt::Key_Down);
    QTest::keyClick(SwitchList(), Qt::Key_Return);
    EXPECT_FALSE(SwitchList());
    EXPECT_EQ(host.Heard(), "bar2");
    EXPECT_EQ(Seen(), "b2 x2");

    QTest::mouseClick(bar, Qt::LeftButton, {}, {350, 10}); // the flag
    ASSERT_TRUE(SwitchList());
    EXPECT_EQ(SwitchList()->currentRow(), 1);
    QTest::keyClick(SwitchList(), Qt::Key_Escape);
    EXPECT_FALSE(SwitchList());
    EXPECT_EQ(bar->ShowAppSwitchWindow(), 1);
    QTest::keyClick(SwitchList(), Qt::Key_Enter);
    EXPECT_EQ(host.Heard(), "") << "dismissed, and the active one chosen";

    bar->RemoveTitleBar(2);
    EXPECT_EQ(bar->ShowAppSwitchWindow(), 1);
    EXPECT_EQ(SwitchList()->count(), 2);
    host.onCallOf = "bar3";
    host.onCall = [&] { bar->RemoveTitleBar(1); }; // the window goes while it speaks
    QTest::mouseClick(SwitchList()->viewport(), Qt::LeftButton, {},
                      SwitchList()->visualItemRect(SwitchList()->item(1)).center());
    EXPECT_EQ(host.Heard(), "bar3");
    EXPECT_EQ(bar->ShowAppSwitchWindow(), 0);
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

} // namespace
