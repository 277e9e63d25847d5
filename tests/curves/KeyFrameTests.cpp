// The keyframe strip: where its buttons stand, what the parent hears of a click, and the keyboard.
#include "KvButtons.h"
#include "KvGuiRes.h"
#include "KvKeyFrameCtrl.h"

#include <QAccessible>
#include <QApplication>
#include <QPointer>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>
#include <map>

namespace {

constexpr UINT kId = 7;
constexpr UINT kStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
constexpr UINT kInOrder[] = {15000, 15002, 15001, 15003};

class TestStrip : public CKvKeyFrameCtrl
{
public:
    using CKvKeyFrameCtrl::_UpdateControl;
};

// Messages are written as their code, the animation toggle and the add/remove toggle as they are by then.
class KeyFrame : public testing::Test
{
protected:
    KeyFrame() { Renew(); }
    void Renew(bool vertical = false, CRect place = {10, 5, 110, 25}, bool create = true)
    {
        delete strip;
        strip = new TestStrip;
        strip->SetVerticle(vertical);
        strip->setGeometry(place);
        if (create)
            strip->Create(kId, &parent, kStyle);
        parent.resize(200, 200);
        parent.show();
        QApplication::setActiveWindow(&parent); // the offscreen platform activates no window by itself
        heard.clear();
    }
    std::optional<LRESULT> Hear(UINT message, WPARAM wParam, LPARAM lParam)
    {
        const auto& header = *reinterpret_cast<const KvNotifyHeader*>(lParam);
        EXPECT_TRUE(message == WM_NOTIFY && wParam == kId && header.hwndFrom == strip &&
                    header.idFrom == kId);
        heard += (heard.empty() ? "" : " ") + std::to_string(static_cast<std::int32_t>(header.code)) + '/' +
                 std::to_string(strip->GetToggleCheck()) + std::to_string(strip->GetKeyOperatorCheck());
        if (onMessage)
            onMessage();
        return std::nullopt;
    }
    std::string Heard() { return std::exchange(heard, {}); }
    CKvBitmapButton* Button(UINT id) { return static_cast<CKvBitmapButton*>(KvGetDlgItem(strip, id)); }
    UINT Focused() const { return KvGetDlgItemId(QApplication::focusWidget()); }
    void Press(UINT id, char how)
    {
        CKvBitmapButton* const button = Button(id);
        switch (how) {
        case 'm':
            return QTest::mouseClick(button, Qt::LeftButton);
        case 'k':
            button->setFocus();
            return QTest::keyClick(button, Qt::Key_Space);
        case 'a': {
            QAccessibleInterface& access = *QAccessible::queryAccessibleInterface(button);
            return access.actionInterface()->doAction(access.actionInterface()->actionNames().front());
        }
        default:
            KvSendMessage(strip, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), 0);
        }
    }

    QWidget parent;
    QPointer<TestStrip> strip;
    std::string heard;
    std::function<void()> onMessage;
    KvMessageSink sink{&parent, [this](UINT m, WPARAM w, LPARAM l) { return Hear(m, w, l); }};
};

TEST_F(KeyFrame, IsFourteenThickAndItsButtonsStandWithoutGaps)
{
    struct
    {
        const char* name;
        bool vertical;
        CRect before, created, resized;
        std::vector<CRect> buttons;
        std::vector<const wchar_t*> images;
    } const rows[] = {
        {"horizontal, 20 high",
         false,
         {10, 5, 110, 25},
         {10, 5, 110, 19},
         {10, 5, 90, 19},
         {{0, 0, 14, 14}, {14, 0, 28, 14}, {28, 0, 42, 14}, {42, 0, 56, 14}},
         {L"animation_uck", L"prekey", L"opkey_chk", L"nextkey"}},
        {"vertical, 6 wide",
         true,
         {10, 5, 16, 45},
         {10, 5, 24, 45},
         {10, 5, 24, 55},
         {{0, 0, 14, 14}, {0, 14, 14, 28}, {0, 28, 14, 42}, {0, 42, 14, 56}},
         {L"animation_uck", L"prekey_verticle", L"opkey_chk", L"nextkey_verticle"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Renew(row.vertical, row.before);
        EXPECT_EQ(CRect(strip->geometry()), row.created);
        EXPECT_EQ(strip->SetVerticle(!row.vertical), 0);
        strip->resize(80, 50);
        EXPECT_EQ(CRect(strip->geometry()), row.resized);
        for (std::size_t place = 0; place < 4; ++place) {
            const CKvBitmapButton& button = *Button(kInOrder[place]);
            EXPECT_EQ(strip->children()[static_cast<int>(place)], &button);
            EXPECT_EQ(CRect(button.geometry()), row.buttons[place]);
            EXPECT_EQ(button.GetBitmapName(), row.images[place]);
            EXPECT_FALSE(KvGuiRes::LoadImageW(row.images[place]).IsNull());
            EXPECT_EQ(button.toolTip(), KvToQString(KvGuiRes::LoadTip(kInOrder[place])));
            EXPECT_EQ(button.isVisible(), place == 0);
        }
    }
}

TEST_F(KeyFrame, StatesCountFromCreateOn)
{
    Renew(false, {0, 0, 60, 14}, false);
    EXPECT_EQ(strip->SetToggleCheck(1) + strip->SetKeyOperatorCheck(0) + strip->EnableNextKeyCtrl(0), 0);
    EXPECT_EQ(strip->Create(kId, &parent, kStyle), 1);
    EXPECT_EQ(strip->Create(kId + 1, nullptr, 0), 0);
    EXPECT_EQ(strip->GetDlgCtrlID(), kId);
    EXPECT_EQ(strip->parentWidget(), &parent);
    EXPECT_FALSE(strip->GetToggleCheck());
    EXPECT_TRUE(strip->GetKeyOperatorCheck());
    EXPECT_TRUE(Button(15003)->isEnabled());

    strip->SetToggleCheck(5);
    strip->SetKeyOperatorCheck(0);
    EXPECT_EQ(strip->GetToggleCheck(), 1);
    EXPECT_TRUE(Button(15002)->isVisible() && Button(15001)->isVisible() && Button(15003)->isVisible());
    EXPECT_EQ(Button(15000)->GetBitmapName(), L"animation_chk");
    EXPECT_EQ(Button(15001)->GetBitmapName(), L"opkey_uck");
    strip->_UpdateControl();
    EXPECT_EQ(strip->GetToggleCheck(), 0) << "an update resets the animation toggle";
    EXPECT_FALSE(Button(15001)->isVisible());
    EXPECT_EQ(Button(15001)->GetBitmapName(), L"opkey_uck") << "and keeps the other";
    EXPECT_EQ(Heard(), "") << "setters are silent";
}

TEST_F(KeyFrame, ClickFlipsThenTellsTheParentOnce)
{
    struct
    {
        const char* name;
        UINT id;
        const char* heard;
        const char* again;
    } const rows[] = {
        {"animation", 15000, "0/01", "0/11"},
        {"previous", 15002, "1/11", "1/11"},
        {"add/remove", 15001, "2/10", "2/11"},
        {"next", 15003, "3/11", "3/11"},
    };
    int signalled = 0;
    for (const char how : {'m', 'k', 'a', 'c'}) {
        Renew();
        strip->SetToggleCheck(1);
        QObject::connect(strip, &CKvKeyFrameCtrl::KeyFrameClicked, [&](int) { ++signalled; });
        for (const auto& row : rows) {
            SCOPED_TRACE(std::string(row.name) + " by " + how);
            Press(row.id, how);
            EXPECT_EQ(Heard(), row.heard);
            EXPECT_EQ(Button(15000)->isChecked(), strip->GetToggleCheck() != 0);
            EXPECT_EQ(Button(15001)->isChecked(), strip->GetKeyOperatorCheck() != 0);
            EXPECT_EQ(Button(15003)->isVisible(), strip->GetToggleCheck() != 0);
            Press(row.id, how);
            EXPECT_EQ(Heard(), row.again);
        }
    }
    EXPECT_EQ(signalled, 4 * 4 * 2);
    Press(999, 'c');
    EXPECT_EQ(Heard(), "-1/11");
}

TEST_F(KeyFrame, TellsThePresentParentAndNobodyWithoutOne)
{
    QWidget other;
    strip->setParent(&other);
    strip->show();
    Press(15000, 'm');
    EXPECT_EQ(Heard(), "");
    EXPECT_TRUE(strip->GetToggleCheck());
    strip->setParent(nullptr);
    Press(15000, 'c');
    EXPECT_TRUE(strip->GetToggleCheck()) << "nothing happens";

    CKvKeyFrameCtrl alone;
    alone.setGeometry(0, 0, 60, 30);
    EXPECT_EQ(alone.Create(1, nullptr, WS_VISIBLE), 1);
    EXPECT_TRUE(alone.isWindow() && alone.isVisible());
    EXPECT_EQ(alone.height(), 14);
}

TEST_F(KeyFrame, ParentMayDeleteTheStrip)
{
    for (const UINT id : kInOrder) {
        for (const char how : {'m', 'k', 'a', 'c', 's'}) {
            Renew();
            strip->SetToggleCheck(1);
            onMessage = [&] { delete strip; };
            if (how == 's') {
                onMessage = {};
                QObject::connect(strip, &CKvKeyFrameCtrl::KeyFrameClicked, [&](int) { delete strip; });
            }
            Press(id, how);
            EXPECT_FALSE(strip) << id << how;
            onMessage = {};
        }
    }
}

TEST_F(KeyFrame, OnlyItsOwnEnablingEnablesAllButtons)
{
    struct
    {
        const char* name;
        std::function<void()> act;
        bool enabled;
    } const rows[] = {
        {"an ancestor off and on",
         [&] {
             parent.setEnabled(false);
             parent.setEnabled(true);
         },
         false},
        {"itself off and on",
         [&] {
             strip->setEnabled(false);
             strip->setEnabled(true);
         },
         true},
        {"itself, called as a widget",
         [&] {
             QWidget& widget = *strip;
             widget.setEnabled(false);
             widget.setEnabled(true);
         },
         true},
        {"itself within an ancestor that is off",
         [&] {
             parent.setEnabled(false);
             strip->setEnabled(false);
             strip->setDisabled(false);
             parent.setEnabled(true);
         },
         true},
        {"on while it is on", [&] { strip->setEnabled(true); }, false},
    };
    for (const auto& row : rows) {
        Renew();
        strip->SetToggleCheck(1);
        strip->EnablePreviousKeyCtrl(0);
        strip->EnableNextKeyCtrl(0);
        row.act();
        EXPECT_EQ(Button(15002)->isEnabled(), row.enabled) << row.name;
        EXPECT_EQ(Button(15003)->isEnabled(), row.enabled) << row.name;
        EXPECT_TRUE(Button(15000)->isEnabled() && Button(15001)->isEnabled()) << row.name;
    }
}

// Steps: L, R, U, D arrows; T and B Tab and Shift+Tab; S Space; p and n disable previous and next, P and N
// enable them; + and - switch the animation on and off. "<" and ">" are the neighbours of the strip.
TEST_F(KeyFrame, ArrowsWalkWhatIsShownAndEnabled)
{
    struct
    {
        const char* name;
        const char* steps;
        const char* focus; ///< after each step
        const char* heard = "";
    } const rows[] = {
        {"one stop for Tab", "TTBB", "0>0<"},
        {"there and back, stopping at the ends", "+TRRRRLLLL", "<021331200"},
        {"up and down too", "+TDDUU", "<02120"},
        {"only the toggle while off", "TRL", "000"},
        {"past what is disabled", "+pnTRRL", "<<<0110"},
        {"Tab comes back to the same button", "+TRRTB", "<021>1"},
        {"off a button that vanishes", "+TRR-R", "<02100"},
        {"off a button that is disabled", "+TRRRnLR", "<0213121"},
        {"Space presses", "TSRS", "0022", "0/11 1/11"},
    };
    const std::map<char, Qt::Key> keys = {{'L', Qt::Key_Left},   {'R', Qt::Key_Right}, {'U', Qt::Key_Up},
                                          {'D', Qt::Key_Down},   {'S', Qt::Key_Space}, {'T', Qt::Key_Tab},
                                          {'B', Qt::Key_Backtab}};
    QPushButton neighbours[2] = {QPushButton(&parent), QPushButton(&parent)};
    for (QPushButton& neighbour : neighbours)
        neighbour.show();
    for (const auto& row : rows) {
        Renew();
        QWidget::setTabOrder(&neighbours[0], strip);
        QWidget::setTabOrder(strip, &neighbours[1]);
        neighbours[0].setFocus();
        std::string focus;
        for (const char* step = row.steps; *step; ++step) {
            switch (*step) {
            case 'p':
            case 'P':
                strip->EnablePreviousKeyCtrl(*step == 'P');
                break;
            case 'n':
            case 'N':
                strip->EnableNextKeyCtrl(*step == 'N');
                break;
            case '+':
            case '-':
                strip->SetToggleCheck(*step == '+');
                break;
            default:
                QTest::keyClick(QApplication::focusWidget(), keys.at(*step));
            }
            const QWidget* const at = QApplication::focusWidget();
            focus += at == &neighbours[0]   ? '<'
                     : at == &neighbours[1] ? '>'
                                            : static_cast<char>('0' + Focused() - 15000);
        }
        EXPECT_EQ(focus, row.focus) << row.name;
        EXPECT_EQ(Heard(), row.heard) << row.name;
    }
}

} // namespace
