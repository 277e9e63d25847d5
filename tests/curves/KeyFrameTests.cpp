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
    KeyFrame()
    {
        parent.resize(200, 200);
        parent.show();
        QApplication::setActiveWindow(&parent); // the offscreen platform activates no window by itself
        Renew();
    }
    void Renew(CRect place = {10, 5, 110, 25}, bool vertical = false, bool create = true)
    {
        delete strip;
        strip = new TestStrip;
        strip->SetVerticle(vertical);
        strip->setGeometry(place);
        if (create)
            Create();
        heard.clear();
    }
    int Create() { return strip->Create(kId, &parent, WS_CHILD | WS_VISIBLE | WS_TABSTOP); }
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
    // The pictures of the buttons that are shown; disabled ones in brackets.
    std::string Look()
    {
        QStringList look;
        for (const UINT id : kInOrder) {
            const CKvBitmapButton* button = Button(id);
            const QString name = KvToQString(button->GetBitmapName());
            EXPECT_FALSE(KvGuiRes::LoadImageW(button->GetBitmapName().c_str()).IsNull());
            if (button->isVisible())
                look << (button->isEnabled() ? name : '(' + name + ')');
        }
        EXPECT_EQ(Button(15000)->isChecked(), strip->GetToggleCheck() == 1);
        EXPECT_EQ(Button(15001)->isChecked(), strip->GetKeyOperatorCheck() == 1);
        return look.join(' ').toStdString();
    }
    // c creates; t and T uncheck and check the animation toggle, o and O the other; p, n, s, w and a disable
    // previous, next, the strip, the strip as a widget and its parent, capitals enable them; u updates.
    // "<", ">", "^" and "_" are arrows, "/" and "\" are Tab and Shift+Tab, "." is Space.
    void Do(char step)
    {
        const auto key = [](Qt::Key code) { QTest::keyClick(QApplication::focusWidget(), code); };
        const std::map<char, std::function<void()>> steps = {
            {'c', [&] { Create(); }},
            {'t', [&] { strip->SetToggleCheck(0); }},
            {'T', [&] { strip->SetToggleCheck(5); }},
            {'o', [&] { strip->SetKeyOperatorCheck(0); }},
            {'p', [&] { strip->EnablePreviousKeyCtrl(0); }},
            {'P', [&] { strip->EnablePreviousKeyCtrl(1); }},
            {'n', [&] { strip->EnableNextKeyCtrl(0); }},
            {'s', [&] { strip->setEnabled(false); }},
            {'S', [&] { strip->setEnabled(true); }},
            {'w', [&] { static_cast<QWidget&>(*strip).setEnabled(false); }},
            {'W', [&] { static_cast<QWidget&>(*strip).setEnabled(true); }},
            {'a', [&] { parent.setEnabled(false); }},
            {'A', [&] { parent.setEnabled(true); }},
            {'u', [&] { strip->_UpdateControl(); }},
            {'<', [&] { key(Qt::Key_Left); }},
            {'>', [&] { key(Qt::Key_Right); }},
            {'^', [&] { key(Qt::Key_Up); }},
            {'_', [&] { key(Qt::Key_Down); }},
            {'/', [&] { key(Qt::Key_Tab); }},
            {'\\', [&] { key(Qt::Key_Backtab); }},
            {'.', [&] { key(Qt::Key_Space); }},
        };
        steps.at(step)();
    }
    void Press(UINT id, char how)
    {
        CKvBitmapButton* const button = Button(id);
        if (how == 'm') {
            QTest::mouseClick(button, Qt::LeftButton);
        } else if (how == 'k') {
            QTest::keyClick(button, Qt::Key_Space);
        } else if (how == 'a') {
            QAccessibleActionInterface* actions =
                QAccessible::queryAccessibleInterface(button)->actionInterface();
            actions->doAction(actions->actionNames().front());
        } else {
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
    for (const bool vertical : {false, true}) {
        Renew({10, 5, 110, 25}, vertical);
        EXPECT_EQ(CRect(strip->geometry()), vertical ? CRect(10, 5, 24, 25) : CRect(10, 5, 110, 19));
        EXPECT_EQ(strip->SetVerticle(!vertical), 0);
        strip->resize(80, 50);
        EXPECT_EQ(CRect(strip->geometry()), vertical ? CRect(10, 5, 24, 55) : CRect(10, 5, 90, 19));
        for (int place = 0; place < 4; ++place) {
            const CKvBitmapButton* const button = Button(kInOrder[place]);
            EXPECT_EQ(strip->children()[place], button);
            EXPECT_EQ(button->geometry(),
                      QRect(vertical ? 0 : 14 * place, vertical ? 14 * place : 0, 14, 14));
            EXPECT_EQ(button->toolTip(), KvToQString(KvGuiRes::LoadTip(kInOrder[place])));
            EXPECT_FALSE(button->toolTip().isEmpty());
        }
    }
    Do('T');
    EXPECT_EQ(Look(), "animation_chk prekey_verticle opkey_chk nextkey_verticle");
}

TEST_F(KeyFrame, StatesAndEnabling)
{
    struct
    {
        const char* name;
        const char* steps;
        const char* look;
    } const rows[] = {
        {"fresh", "c", "animation_uck"},
        {"what was set before does not count", "Topcu", "animation_uck"},
        {"nor is it kept for later", "oncT", "animation_chk prekey opkey_chk nextkey"},
        {"created once", "cToc", "animation_chk prekey opkey_uck nextkey"},
        {"an update resets the animation only", "cTouT", "animation_chk prekey opkey_uck nextkey"},
        {"off and on keeps the others", "cTontT", "animation_chk prekey opkey_uck (nextkey)"},
        {"disabled", "cTs", "(animation_chk) (prekey) (opkey_chk) (nextkey)"},
        {"enabling enables all", "cTpnsS", "animation_chk prekey opkey_chk nextkey"},
        {"also when called as a widget", "cTpnwW", "animation_chk prekey opkey_chk nextkey"},
        {"also within a disabled parent", "cTpnasSA", "animation_chk prekey opkey_chk nextkey"},
        {"but not when it was enabled", "cTpS", "animation_chk (prekey) opkey_chk nextkey"},
        {"nor what the parent does", "cTpnaA", "animation_chk (prekey) opkey_chk (nextkey)"},
        {"one by one", "cTpnP", "animation_chk prekey opkey_chk (nextkey)"},
    };
    for (const auto& row : rows) {
        Renew({0, 0, 60, 14}, false, false);
        for (const char* step = row.steps; *step; ++step)
            Do(*step);
        EXPECT_EQ(Look(), row.look) << row.name;
        EXPECT_EQ(Heard(), "") << "setters are silent";
    }
    EXPECT_EQ(strip->Create(kId + 1, nullptr, 0), 0);
    EXPECT_EQ(strip->GetDlgCtrlID(), kId);
    EXPECT_EQ(strip->parentWidget(), &parent);
}

TEST_F(KeyFrame, ClickFlipsThenTellsTheParentOnce)
{
    const std::tuple<UINT, const char*, const char*> rows[] = {
        {15000, "0/01", "0/11"}, {15002, "1/11", "1/11"}, {15001, "2/10", "2/11"}, {15003, "3/11", "3/11"}};
    int signalled = 0;
    for (const char how : {'m', 'k', 'a', 'c'}) {
        Renew();
        Do('T');
        QObject::connect(strip, &CKvKeyFrameCtrl::KeyFrameClicked, [&](int) { ++signalled; });
        for (const auto& [id, first, second] : rows) {
            Press(id, how);
            EXPECT_EQ(Heard(), first) << how;
            const std::string look = strip->GetToggleCheck() ? "animation_chk prekey opkey_" : "animation_u";
            EXPECT_EQ(Look().substr(0, look.size()), look);
            Press(id, how);
            EXPECT_EQ(Heard(), second) << how;
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

TEST_F(KeyFrame, HandlersMayDeleteTheStrip)
{
    for (const UINT id : kInOrder) {
        for (const char how : {'m', 'k', 'a', 'c'}) {
            for (const bool bySignal : {false, true}) {
                Renew();
                Do('T');
                if (bySignal)
                    QObject::connect(strip, &CKvKeyFrameCtrl::KeyFrameClicked, [&](int) { delete strip; });
                else
                    onMessage = [&] { delete strip; };
                Press(id, how);
                EXPECT_FALSE(strip) << id << how;
                onMessage = {};
            }
        }
    }
}

TEST_F(KeyFrame, BackgroundGoesAroundTheButtonsAndSettingsToEveryChild)
{
    struct Child : QWidget, IKvGuiWnd
    {
        using QWidget::QWidget;
        void SetGuiBasicSettings(SKvGuiBasicSettings* given) override { settings = given; }
        SKvGuiBasicSettings* settings = nullptr;
    };
    SKvGuiBasicSettings settings{0x80112233, 0, 0, {}};
    Child child(strip);
    strip->SetGuiBasicSettings(&settings);
    EXPECT_EQ(child.settings, &settings);
    const auto pixel = [&](int x) { return parent.grab({10, 5, 100, 14}).toImage().pixelColor(x, 1); };
    const QColor window = parent.palette().window().color();
    EXPECT_EQ(pixel(1), pixel(80)) << "painted once where the button stands";
    EXPECT_NE(pixel(80), window);
    strip->SetGuiBasicSettings(nullptr);
    EXPECT_EQ(pixel(80), window);
}

TEST_F(KeyFrame, ArrowsWalkWhatIsShownAndEnabled)
{
    struct
    {
        const char* name;
        const char* steps;
        const char* focus; ///< after each step: the number's last digit; [ and ] are the neighbours
        const char* heard = "";
    } const rows[] = {
        {"one stop for Tab", "//\\\\", "0]0["},
        {"there and back, stopping at the ends", "T/>>>><<<<", "[021331200"},
        {"up and down too", "T/__^^", "[02120"},
        {"only the toggle while off", "/><", "000"},
        {"past what is disabled", "Tpn/>><", "[[[0110"},
        {"Tab comes back to the same button", "T/>>/\\", "[021]1"},
        {"off a button that vanishes", "T/>>t>", "[02100"},
        {"off a button that is disabled", "T/>>>n<>", "[0213121"},
        {"Space presses", "/.>.", "0022", "0/11 1/11"},
    };
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
            Do(*step);
            QWidget* const at = QApplication::focusWidget();
            const char number = static_cast<char>('0' + KvGetDlgItemId(at) - 15000);
            focus += at == &neighbours[0] ? '[' : at == &neighbours[1] ? ']' : number;
        }
        EXPECT_EQ(focus, row.focus) << row.name;
        EXPECT_EQ(Heard(), row.heard) << row.name;
    }
}

} // namespace
