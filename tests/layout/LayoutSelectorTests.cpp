// What the user does to a layout strip, what its data and its parent hear of it, and where it scrolls to.
#include "tests/layout/LayoutFixture.h"

#include <QAccessible>
#include <QLineEdit>

#include <numeric>

namespace kv::test {
namespace {

TEST_F(LayoutStrip, Picks)
{
    const struct
    {
        const char* name;
        const char* steps;
        const char* heard;
    } rows[] = {
        {"a thumbnail", "P5,3 U5,3", "s0+ m"},
        {"another with Ctrl", "C90,30 U90,30", "s1- m"},
        {"between two", "P80,20 U80,20", ""},
        {"above", "P20,1 U20,1", ""},
        {"the second press of a double click", "P5,3 U5,3 D5,3 U5,3", "s0+ m s0+ m"},
        {"arrows", "KRight KDown KLeft KUp", "s1+ m s2+ m s1+ m s0+ m"},
        {"an arrow at the end", "KLeft KEnd KRight", "s99+ m"},
        {"pages and ends", "KEnd KPgUp KHome KPgDown", "s99+ m s95+ m s0+ m s4+ m"},
        {"the focus alone", "KCtrl+Right KCtrl+Right KSpace", "s2+ m"},
        {"with Ctrl at the focus", "KCtrl+End KCtrl+Space", "s99- m"},
        {"enter", "P170,20 U170,20 KReturn", "s2+ m s2+ m"},
    };
    for (const auto& row : rows) {
        Renew();
        Run(row.steps);
        EXPECT_EQ(Heard(), row.heard) << row.name;
    }
}

TEST_F(LayoutStrip, SignalsAfterTheMessage)
{
    QObject::connect(control, &CKvLayoutSelector::LayoutPicked,
                     [this](int index) { Say('p' + std::to_string(index)); });
    Run("P90,20 U90,20");
    EXPECT_EQ(Heard(), "s1+ m p1");
    EXPECT_EQ(control->GetFocusIndex(), 1);
}

TEST_F(LayoutStrip, TheParentMayDeleteIt)
{
    onMessage = [this] { delete control; };
    Run("P20,50 U20,50"); // in the drag band, too
    EXPECT_EQ(Heard(), "s0+ m");
    EXPECT_TRUE(control.isNull());
    Renew();
    layouts->onSelect = [this](int, BOOL) { delete control; };
    Run("KSpace");
    EXPECT_EQ(Heard(), "");
    EXPECT_TRUE(control.isNull());
}

TEST_F(LayoutStrip, Scrolls)
{
    constexpr int kRange = 100 * 80 - 5 - 390;
    const struct
    {
        const char* name;
        const char* steps;
        int position;
    } rows[] = {
        {"a drag by twice the way", "P80,50 M90,50 M100,20 U100,20", 40},
        {"a drag to before the beginning", "P80,50 M200,50 M100,50 U100,50", 40},
        {"no drag above the band", "P80,40 M100,40 U100,40", 0},
        {"escape takes it back", "P80,50 M180,50 KEsc M190,50 U190,50", 0},
        {"a drag that is lost stays", "P80,50 M180,50 H", 200},
        {"after the release", "P80,50 M90,50 U90,50 N200,50", 20},
        {"the wheel", "W-120", 80},
        {"parts of a notch", "W-50 W-50 W-50", 80},
        {"until the direction turns", "W-110 W60 W-70", 0},
        {"two notches and a part", "W-300 W-60", 240},
        {"beyond the ends", "W120 W-120000", kRange},
        {"keys", "KEnd", kRange},
        {"by the least distance", "KEnd KHome KCtrl+PgDown KCtrl+Right", 5 * 80 + 75 - 390},
    };
    for (const auto& row : rows) {
        Renew();
        Run(row.steps);
        EXPECT_EQ(Position(), row.position) << row.name;
        EXPECT_EQ(Bar().GetScrollPos(), row.position) << row.name;
        EXPECT_FALSE(control->HasCapture()) << row.name;
    }
    Renew();
    Wheel({-240, 0}); // a row follows the sideways wheel
    EXPECT_EQ(Position(), 160);
}

TEST_F(LayoutStrip, FollowsTheScrollBar)
{
    EXPECT_EQ(Bar().GetScrollRange(), 7605);
    EXPECT_EQ(Bar().pageStep(), 390);
    EXPECT_EQ(KvGetDlgItem(control, 1000), &Bar());
    const auto act = [&](QAbstractSlider::SliderAction action) {
        Bar().triggerAction(action);
        EXPECT_EQ(Bar().GetScrollPos(), Position());
        return Position();
    };
    EXPECT_EQ(act(QAbstractSlider::SliderSingleStepAdd), 80);
    EXPECT_EQ(act(QAbstractSlider::SliderPageStepAdd), 160);
    EXPECT_EQ(act(QAbstractSlider::SliderSingleStepSub), 80);
    EXPECT_EQ(act(QAbstractSlider::SliderToMaximum), 7605);
    EXPECT_EQ(act(QAbstractSlider::SliderToMinimum), 0);
    Bar().setValue(1234);
    EXPECT_EQ(Position(), 1234);
    KvSendMessage(control, WM_HSCROLL, MAKEWPARAM(SB_THUMBTRACK, 77), 0);
    EXPECT_EQ(Position(), 77);
    EXPECT_EQ(Heard(), "");
}

TEST_F(LayoutStrip, ScrollsAViewByATimer)
{
    const auto settle = [this] {
        std::vector<int> places;
        const std::int64_t target = Position();
        while (Bar().GetScrollPos() != target) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            places.push_back(static_cast<int>(Bar().GetScrollPos()));
        }
        EXPECT_EQ(Position(), target);
        return places;
    };
    control->ScrollView(1);
    EXPECT_EQ(Bar().GetScrollPos(), 0);
    EXPECT_EQ(Position(), 390);
    control->ScrollView(1); // adds to the one that is under way
    EXPECT_EQ(Position(), 780);
    const std::vector<int> places = settle();
    EXPECT_TRUE(std::is_sorted(places.begin(), places.end()));
    control->ScrollView(0);
    control->ScrollView(0);
    control->ScrollView(0);
    EXPECT_EQ(Position(), 0);
    settle();
    control->ScrollView(1);
    Run("W-120"); // other scrolling drops the target
    EXPECT_EQ(Position(), 80);
    control->ScrollView(1);
    control->SetData({720, 576}, layouts);
    EXPECT_EQ(Position(), 80);
    control->hide();
    control->ScrollView(1);
    EXPECT_EQ(Bar().GetScrollPos(), 470);
}

TEST_F(LayoutStrip, HoversWithoutTheButton)
{
    control->EnableSelect(1);
    const auto frame = [this](int index) {
        RECT rect;
        EXPECT_EQ(control->_GetThumbRect(index, &rect), 1);
        return control->grab().toImage().pixelColor(rect.left + 40, rect.top);
    };
    const QColor normal = frame(1);
    Run("N90,20");
    const QColor hovered = frame(1);
    EXPECT_GT(hovered.lightness(), normal.lightness());
    Run("P90,20");
    const QColor selected = frame(1); // the press cleared the hover
    EXPECT_NE(selected, hovered);
    EXPECT_NE(selected, normal);
    Run("M10,20 U10,20"); // with the button down nothing is hovered
    EXPECT_EQ(frame(0), normal);
    Run("N90,20");
    EXPECT_EQ(frame(1), hovered); // goes before selected
    control->EnableSelect(0);
    EXPECT_EQ(frame(1), normal);
    EXPECT_EQ(frame(0), normal);
}

TEST_F(LayoutStrip, ComesBackToItsPlaceFromNoRoomAtAll)
{
    control->EnsureVisible(99);
    const std::int64_t end = Position();
    ASSERT_GT(end, 7000);
    control->resize(400, 21);
    control->resize(400, 20);
    control->resize(400, 81);
    EXPECT_EQ(Position(), end);
    // A move that is under way goes on where it leads.
    control->ScrollView(0);
    const std::int64_t target = Position();
    control->resize(401, 81);
    EXPECT_NEAR(static_cast<double>(Position()), static_cast<double>(target), 1);
}

TEST_F(LayoutStrip, WhateverAHandlerDoesTheKeyboardStaysAlive)
{
    for (const auto& meanwhile : std::vector<std::function<void()>>{[this] { control->setEnabled(false); },
                                                                    [this] { control->hide(); },
                                                                    [this] {
                                                                        control->SetData({720, 576}, layouts);
                                                                    }}) {
        onMessage = meanwhile;
        Run("P90,50"); // on a thumbnail in the band that is dragged by
        EXPECT_FALSE(control->HasCapture());
        onMessage = {};
        control->setEnabled(true);
        control->show();
        control->setFocus();
        heard.clear();
        QTest::keyClick(control.data(), Qt::Key_Home);
        EXPECT_FALSE(heard.empty());
    }
}

TEST_F(LayoutStrip, HearsOfAThumbnailWhileItAsksForIt)
{
    layouts->without = {2};
    bool isAnnounced = false;
    layouts->onAsk = [&](int index) {
        if (index != 2 || std::exchange(isAnnounced, true))
            return;
        control->NotifyUnitChanged(2); // its job has ended already
    };
    control->Paint();
    control->grab();
    layouts->without.clear();
    layouts->Asked();
    control->grab();
    EXPECT_EQ(layouts->Asked(), std::vector<int>{2});
}

TEST_F(LayoutStrip, AMoveTakesTheFocusButFromATextEditor)
{
    QLineEdit editor(&parent);
    QWidget other(&parent);
    other.setFocusPolicy(Qt::StrongFocus);
    editor.show();
    other.show();
    other.setFocus();
    Run("N10,20");
    EXPECT_TRUE(control->hasFocus());
    editor.setFocus();
    Run("N20,20");
    EXPECT_TRUE(editor.hasFocus());
    Run("P10,20 U10,20");
    EXPECT_TRUE(control->hasFocus());
}

TEST_F(LayoutStrip, AsksOnlyForWhatIsInViewAndOnce)
{
    const std::vector<int> inView{0, 1, 2, 3, 4};
    const auto paint = [this] {
        control->grab();
        return layouts->Asked();
    };
    EXPECT_EQ(paint(), std::vector<int>());
    Run("N90,20 P90,20 U90,20");
    EXPECT_EQ(paint(), std::vector<int>()) << "hover and click";
    Run("W-120");
    EXPECT_EQ(paint(), std::vector<int>({5})) << "scrolled into view";
    Run("W120");
    control->NotifyUnitChanged(2);
    control->NotifyUnitChanged(50);
    control->NotifyUnitChanged(-1);
    EXPECT_EQ(paint(), std::vector<int>({2}));
    control->Paint();
    EXPECT_EQ(paint(), inView);
    control->UpdateScroll();
    EXPECT_EQ(paint(), inView);
    control->SetData({720, 576}, layouts);
    EXPECT_EQ(paint(), inView);
    EXPECT_EQ(layouts->alive, 0) << "the cache holds pixels only";
}

TEST_F(LayoutStrip, ThumbnailsInViewAreFound)
{
    RECT rect;
    EXPECT_EQ(control->_GetThumbRect(0, &rect), 1);
    EXPECT_EQ(rect, CRect(4, 2, 79, 62));
    EXPECT_EQ(control->_GetThumbRect(5, &rect), 0);
    EXPECT_EQ(control->_GetThumbRect(-1, &rect), 0);
    EXPECT_EQ(control->_GetThumbRect(0, nullptr), 0);
    EXPECT_EQ(control->_GetScrollbarRect(), CRect(0, 64, 400, 81));
    control->EnsureVisible(99);
    EXPECT_EQ(control->_GetThumbRect(99, &rect), 1);
    EXPECT_EQ(rect.right, 394);
    EXPECT_EQ(control->_FindThumbRect({393, 30}), 99);
    EXPECT_EQ(control->_FindThumbRect({394, 30}), -1);
    control->EnsureVisible(100);
    EXPECT_EQ(Position(), 7605);
    control->EnsureVisible(0);
    EXPECT_EQ(Position(), 0);
}

TEST_F(LayoutStrip, AResizeKeepsTheFirstLayout)
{
    control->EnsureVisible(99);
    Run("W120 W120");
    const std::int64_t before = Position();
    const int first = static_cast<int>(before / 80);
    control->resize(400, 141);
    EXPECT_EQ(Position() / 155, first);
    control->resize(400, 81);
    EXPECT_LE(std::abs(Position() - before), 1);
    control->resize(9000, 81);
    EXPECT_EQ(Position(), 0);
    control->grab();
}

TEST_F(LayoutStrip, ShrinkingCountsNeverYieldAStaleIndex)
{
    control->EnableSelect(1);
    Run("KEnd N390,20");
    layouts->count = 3;
    control->grab(); // before anybody says so
    Run("N390,20 P390,20 U390,20 KRight KSpace");
    EXPECT_EQ(Heard(), "s99+ m s2+ m");
    control->UpdateScroll();
    EXPECT_EQ(Position(), 0);
    EXPECT_EQ(control->GetFocusIndex(), 2);
    // While it paints.
    layouts->count = 5;
    control->UpdateScroll();
    layouts->onAsk = [this](int index) { layouts->count = std::min(layouts->count, index == 1 ? 2 : 5); };
    control->grab();
    layouts->onAsk = {};
    layouts->count = -4;
    control->UpdateScroll();
    Run("KHome KSpace N10,10 P10,10 U10,10");
    EXPECT_EQ(control->GetFocusIndex(), -1);
}

TEST_F(LayoutStrip, OddShapesAreHarmless)
{
    for (const SIZE size : {SIZE{0, 0}, SIZE{1, 100000}, SIZE{100000, 1}, SIZE{-5, 3}, SIZE{2147483647, 1}}) {
        control->SetData(size, layouts);
        control->grab();
        Run("KEnd KHome KRight P10,20 U10,20 W-120 N20,20");
        control->resize(60, 300);
        control->grab();
        control->resize(0, 0);
        control->grab();
        control->resize(400, 81);
    }
    EXPECT_EQ(layouts->alive, 0);
}

TEST_F(LayoutStrip, DataAreHeldAndEnableIt)
{
    IKvLayoutSelectorData* out = nullptr;
    EXPECT_EQ(control->GetData(&out), 1);
    EXPECT_EQ(out, layouts);
    EXPECT_EQ(out->Release(), 2);
    control->SetData({16, 9}, layouts);
    EXPECT_EQ(layouts->AddRef(), 3);
    layouts->Release();
    control->SetData({16, 9}, nullptr);
    EXPECT_FALSE(control->isEnabled());
    EXPECT_EQ(control->GetData(&out), 0);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(layouts->AddRef(), 2);
    layouts->Release();
    control->grab();
    EXPECT_EQ(control->_FindThumbRect({10, 10}), -1);
    control->SetData({16, 9}, layouts);
    EXPECT_TRUE(control->isEnabled());
}

TEST_F(LayoutStrip, DataMayBeTakenAwayByAnyQuestion)
{
    control->setFocus();
    layouts->onIsSelected = [this] { control->SetData({16, 9}, nullptr); };
    QTest::keyClick(control, Qt::Key_Space); // asks which layout is the current one
    EXPECT_FALSE(control->isEnabled());
    control->SetData({16, 9}, layouts);
    control->setFocus();
    control->grab();
    EXPECT_FALSE(control->isEnabled());
    layouts->onIsSelected = {};
    control->SetData({16, 9}, layouts);
    EXPECT_TRUE(control->isEnabled());
}

TEST(LayoutSelector, RunsAsItsRectangleLies)
{
    QWidget parent;
    parent.resize(120, 300);
    TestStrip column, row, filling;
    EXPECT_EQ(column.Create(CRect(0, 0, 100, 400), 1, &parent, WS_VISIBLE), 1);
    EXPECT_EQ(column.Create(CRect(0, 0, 400, 100), 1, &parent, WS_VISIBLE), 0);
    row.setGeometry(0, 0, 400, 100);
    EXPECT_EQ(row.Create(UINT{WS_VISIBLE}, &parent, 2), 1);
    filling.Create(UINT{WS_VISIBLE}, &parent, 3);
    EXPECT_EQ(column._GetScrollbarRect(), CRect(83, 0, 100, 400));
    EXPECT_EQ(row._GetScrollbarRect(), CRect(0, 83, 400, 100));
    EXPECT_EQ(filling.geometry(), QRect(0, 0, 120, 300));
    EXPECT_EQ(filling.findChild<CKvScrollBar*>()->orientation(), Qt::Vertical);
    EXPECT_FALSE(row.isEnabled());
}

TEST_F(LayoutStrip, IsAListForScreenReaders)
{
    layouts->isLongName = true;
    control->UpdateScroll();
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(control);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->role(), QAccessible::List);
    EXPECT_EQ(list->text(QAccessible::Name), "Layouts");
    const int bars = list->childCount() - 100; // the scroll bar comes first
    EXPECT_EQ(bars, 1);
    QAccessibleInterface* second = list->child(bars + 1);
    EXPECT_EQ(second->text(QAccessible::Name), QString(64, 'n') + ", layout 2 of 100");
    EXPECT_EQ(second->rect(), QRect(control->mapToGlobal(QPoint(84, 2)), QSize(75, 60)));
    layouts->Asked();
    EXPECT_EQ(list->child(bars + 98)->text(QAccessible::Name), "Layout 99 of 100");
    EXPECT_EQ(layouts->Asked(), std::vector<int>()) << "not for what is out of view";
    EXPECT_FALSE(second->state().selected);
    second->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(Heard(), "s1+ m");
    EXPECT_TRUE(second->state().selected);
    EXPECT_EQ(list->focusChild(), second);
    list->child(bars + 98)->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(control->GetFocusIndex(), 98);
    EXPECT_EQ(Position(), 99 * 80 - 5 - 390);
    EXPECT_EQ(Heard(), "");
}

class Project final : public RefCounted<IKvLayoutProject>
{
public:
    int GetLayoutCount() override { return ++counted, count; }
    int GetLayoutThumb(int index, IKvThumbImage** thumbnail) override
    {
        EXPECT_TRUE(index >= 0 && index < count);
        return *thumbnail = new Picture(0xFFFFFFFFu, alive), 1;
    }
    int SetCurrentLayout(int index, int& newCount) override
    {
        current = index;
        newCount = count = count - 1;
        return 1;
    }
    int count = 3;
    int counted = 0;
    int current = -1;
    int alive = 0;
};

TEST(ProjectFileLayoutData, WrapsAProject)
{
    auto* project = new Project;
    auto* layouts = new CKvProjectFileLayoutData(project);
    EXPECT_EQ(project->AddRef(), 3);
    project->Release();
    EXPECT_EQ(layouts->GetCount(), 3);
    EXPECT_EQ(layouts->GetCount() + project->counted, 4); // counted once
    EXPECT_EQ(layouts->IsSelected(-1) + layouts->IsSelected(0), 0);
    wchar_t name[64] = {};
    IKvThumbImage* thumb = nullptr;
    IKvThumbImage* mark = nullptr;
    EXPECT_EQ(layouts->GetUnit(2, name, &thumb, &mark), 1);
    EXPECT_STREQ(name, L" ");
    EXPECT_EQ(mark, nullptr);
    thumb->Release();
    EXPECT_EQ(layouts->GetUnit(3, name, &thumb, &mark), 0);
    EXPECT_EQ(layouts->Select(3, 1) + layouts->Select(-1, 1), 0);
    EXPECT_EQ(project->current, -1);
    EXPECT_EQ(layouts->Select(1, 0), 1);
    EXPECT_EQ(project->current, 1);
    EXPECT_EQ(layouts->IsSelected(1), 1);
    EXPECT_EQ(layouts->GetCount(), 2);
    EXPECT_EQ(layouts->AddRef(), 2);
    EXPECT_EQ(layouts->Release(), 1);
    EXPECT_EQ(layouts->Release(), 0);
    EXPECT_EQ(project->Release(), 0);
    auto* none = new CKvProjectFileLayoutData(nullptr);
    EXPECT_EQ(none->GetCount() + none->Select(0, 1), 0);
    none->Release();
}

} // namespace
} // namespace kv::test
