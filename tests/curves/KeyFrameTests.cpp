// The keyframe strip: where its buttons stand, what the parent hears of a click, and the keyboard.
#include "KvButtons.h"
#include "KvGuiRes.h"
#include "KvKeyFrameCtrl.h"

#include <QAccessible>
#include <QApplication>
#include <QPushButton>
#include <QShortcut>
#include <QTemporaryFile>
#include <QTest>

#include <gtest/gtest.h>
#include <map>

namespace {

constexpr UINT kId = 7;
constexpr UINT kInOrder[] = {15000, 15002, 15001, 15003};

// Messages are written as their code, the animation toggle and the add/remove toggle as they are by then.
class KeyFrame : public testing::Test
{
protected:
    KeyFrame()
    {
        top.resize(200, 200);
        parent.resize(200, 200);
        for (QPushButton& neighbour : neighbours)
            neighbour.move(0, 100);
        top.show();
        QApplication::setActiveWindow(&top); // the offscreen platform activates no window by itself
        Renew();
    }
    void Renew(bool vertical = false, bool create = true)
    {
        delete strip;
        strip = new CKvKeyFrameCtrl;
        strip->SetVerticle(vertical);
        strip->setGeometry(10, 5, 100, 20);
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
        heard += std::to_string(static_cast<std::int32_t>(header.code)) + '/' +
                 std::to_string(strip->GetToggleCheck()) + std::to_string(strip->GetKeyOperatorCheck()) + ' ';
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
    // t and o uncheck the animation and the add/remove toggle; p, n, s, w, a and g disable previous, next,
    // the strip, the strip as a widget, its parent and the parent's; capitals check or enable. c creates, r
    // gives another parent, = focuses the first neighbour, a digit clicks that button. "<>^_" are arrows, "/"
    // and "\" are Tab and Shift+Tab, "." is Space.
    void Do(char step)
    {
        constexpr std::string_view names = "<>^_/\\.";
        constexpr Qt::Key keys[] = {Qt::Key_Left, Qt::Key_Right,   Qt::Key_Up,   Qt::Key_Down,
                                    Qt::Key_Tab,  Qt::Key_Backtab, Qt::Key_Space};
        const bool on = step >= 'A' && step <= 'Z';
        const std::map<char, std::function<void()>> steps = {
            {'t', [&] { strip->SetToggleCheck(on ? 5 : 0); }},
            {'o', [&] { strip->SetKeyOperatorCheck(on ? 5 : 0); }},
            {'p', [&] { strip->EnablePreviousKeyCtrl(on); }},
            {'n', [&] { strip->EnableNextKeyCtrl(on); }},
            // By name, as a connection finds it.
            {'s', [&] { QMetaObject::invokeMethod(strip, "setEnabled", Q_ARG(bool, on)); }},
            {'w', [&] { static_cast<QWidget&>(*strip).setEnabled(on); }},
            {'a', [&] { parent.setEnabled(on); }},
            {'g', [&] { top.setEnabled(on); }},
            {'c', [&] { Create(); }},
            {'r', [&] { strip->setParent(&top), strip->show(); }},
            {'=', [&] { neighbours[0].setFocus(); }},
        };
        if (const std::size_t key = names.find(step); key != names.npos)
            QTest::keyClick(QApplication::focusWidget(), keys[key]);
        else if (step >= '0' && step <= '3')
            Press(15000u + static_cast<UINT>(step - '0'), true);
        else
            steps.at(on ? static_cast<char>(step - 'A' + 'a') : step)();
    }
    void Press(UINT id, bool byMouse)
    {
        if (byMouse)
            QTest::mouseClick(Button(id), Qt::LeftButton);
        else
            KvSendMessage(strip, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), 0);
    }

    QWidget top;
    QWidget parent{&top};
    QPushButton neighbours[2] = {QPushButton(&parent), QPushButton(&parent)};
    QPointer<CKvKeyFrameCtrl> strip;
    std::string heard;
    std::function<void()> onMessage;
    KvMessageSink sink{&parent, [this](UINT m, WPARAM w, LPARAM l) { return Hear(m, w, l); }};
};

TEST_F(KeyFrame, IsFourteenThickAndItsButtonsStandWithoutGaps)
{
    for (const bool vertical : {false, true}) {
        const auto laid = [&](QSize size) { return vertical ? size.transposed() : size; };
        Renew(vertical);
        EXPECT_EQ(strip->geometry(), QRect(QPoint(10, 5), vertical ? QSize(14, 20) : QSize(100, 14)));
        EXPECT_EQ(strip->SetVerticle(!vertical), 0);
        for (int place = 0; place < 4; ++place)
            EXPECT_EQ(Button(kInOrder[place])->geometry(),
                      QRect(vertical ? 0 : 14 * place, vertical ? 14 * place : 0, 14, 14));
        strip->resize(70, 70);
        EXPECT_EQ(strip->size(), laid({70, 14}));
        const auto setLengths = [&](int least, int most) {
            vertical ? strip->setMinimumHeight(least) : strip->setMinimumWidth(least);
            vertical ? strip->setMaximumHeight(most) : strip->setMaximumWidth(most);
        };
        setLengths(60, 60);
        EXPECT_EQ(strip->size(), laid({60, 14}));
        setLengths(80, 80);
        EXPECT_EQ(strip->size(), laid({80, 14})) << "the host's length stands";
        strip->setFixedSize(laid({60, 20}));
        EXPECT_EQ(strip->size(), laid({60, 20})) << "and its limits";
        strip->resize(5, 5);
        EXPECT_EQ(strip->minimumSize(), laid({60, 20}));
        EXPECT_EQ(Button(kInOrder[3])->geometry(),
                  QRect(vertical ? 0 : 42, vertical ? 42 : 0, vertical ? 20 : 14, vertical ? 14 : 20));
        const auto setThickness = [&](int least, int most) {
            vertical ? strip->setMinimumWidth(least) : strip->setMinimumHeight(least);
            vertical ? strip->setMaximumWidth(most) : strip->setMaximumHeight(most);
        };
        Renew(vertical);
        setThickness(0, 10);
        EXPECT_EQ(strip->size(), laid({vertical ? 20 : 100, 10})) << "one limit alone";
        setThickness(20, QWIDGETSIZE_MAX);
        EXPECT_EQ(strip->size(), laid({vertical ? 20 : 100, 20}));
        Renew(vertical);
        setLengths(80, QWIDGETSIZE_MAX);
        strip->setProperty("vertical", !vertical);
        EXPECT_EQ(strip->size(), laid({vertical ? 80 : 100, 14}).transposed()) << "a length all the same";
        strip->setProperty("vertical", vertical);
        EXPECT_EQ(strip->minimumSize(), laid({80, 0}));
        EXPECT_EQ(strip->sizeHint(), laid({56, 14}));
        EXPECT_EQ(strip->sizePolicy(), QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed));
    }
    Do('T');
    EXPECT_EQ(Look(), "animation_chk prekey_verticle opkey_chk nextkey_verticle");
}

TEST_F(KeyFrame, TextsFollowTheTableAtRunTimeForScreenReadersToo)
{
    const auto seen = [&] {
        std::string all;
        for (QObject* child : strip->children()) {
            QAccessibleInterface& access = *QAccessible::queryAccessibleInterface(child);
            EXPECT_EQ(access.text(QAccessible::Name), static_cast<QWidget*>(child)->toolTip());
            EXPECT_EQ(access.role() == QAccessible::CheckBox, access.state().checkable);
            all += access.text(QAccessible::Name).toStdString() + (access.state().checkable ? "*, " : ", ");
        }
        return all;
    };
    EXPECT_EQ(QAccessible::queryAccessibleInterface(strip)->role(), QAccessible::Grouping);
    EXPECT_EQ(seen(), "Toggle Animation*, Go To Prev/Head KeyFrame, Add/Remove KeyFrame*, "
                      "Go To Next/Tail KeyFrame, ");
    CKvKeyFrameCtrl uncreated; // hears of the new texts too
    QTemporaryFile texts;
    ASSERT_TRUE(texts.open() && texts.write("[Tips]\n15001 = Key\n") > 0 && texts.flush());
    KvGuiRes::SetStringFile(KvFromQString(texts.fileName()).c_str());
    EXPECT_EQ(seen(), "Toggle Animation*, Go To Prev/Head KeyFrame, Key*, Go To Next/Tail KeyFrame, ");
    KvGuiRes::SetStringFile(nullptr);
}

TEST_F(KeyFrame, StatesAndEnabling)
{
    constexpr const char* kAll = "animation_chk prekey opkey_chk nextkey";
    const std::array<const char*, 3> rows[] = {
        {"fresh", "c", "animation_uck"},
        {"what was set before does not count", "TopcT", kAll},
        {"created once", "cToc", "animation_chk prekey opkey_uck nextkey"},
        {"off and on keeps the others", "cTontTO", "animation_chk prekey opkey_chk (nextkey)"},
        {"disabled", "cTs", "(animation_chk) (prekey) (opkey_chk) (nextkey)"},
        {"enabling enables all", "cTpnsS", kAll},
        {"also when called as a widget", "cTpnwW", kAll},
        {"also within a disabled parent", "cTpnasSA", kAll},
        {"also when the disabling was not heard", "cTpnawAW", kAll},
        {"nor in a parent within another", "cTpngwGW", kAll},
        {"nor before a move", "cTpnawrWA", kAll},
        {"nor was the enabling", "cTpnwaWA", kAll},
        {"but not when it was enabled", "cTpS", "animation_chk (prekey) opkey_chk nextkey"},
        {"nor what ancestors do", "cTpnaAgGP", "animation_chk prekey opkey_chk (nextkey)"},
    };
    for (const auto& [name, steps, look] : rows) {
        Renew(false, false);
        for (const char step : std::string_view(steps))
            Do(step);
        EXPECT_EQ(Look(), look) << name;
        EXPECT_EQ(Heard(), "") << "setters are silent";
    }
    EXPECT_EQ(strip->Create(kId + 1, nullptr, 0), 0);
    EXPECT_TRUE(strip->GetDlgCtrlID() == kId && strip->parentWidget() == &parent);
}

TEST_F(KeyFrame, ClickFlipsThenTellsThePresentParentOnce)
{
    const std::pair<UINT, const char*> rows[] = {
        {15000, "0/01 0/11 "}, {15002, "1/11 1/11 "}, {15001, "2/10 2/11 "}, {15003, "3/11 3/11 "}};
    int signalled = 0;
    QObject::connect(strip, &CKvKeyFrameCtrl::KeyFrameClicked, [&](int) { ++signalled; });
    Do('T');
    for (const bool byMouse : {true, false}) {
        for (const auto& [id, messages] : rows) {
            Press(id, byMouse);
            EXPECT_EQ(Look().size() > 20, strip->GetToggleCheck() == 1) << "the key buttons come and go";
            Press(id, byMouse);
            EXPECT_EQ(Heard(), messages);
        }
    }
    EXPECT_EQ(signalled, 16);
    Press(999, false);
    EXPECT_EQ(Heard(), "-1/11 ");
    KvSendMessage(strip, WM_COMMAND, MAKEWPARAM(15000, BN_CLICKED + 1), 0); // no click
    Do('r');
    Press(15000, true);
    EXPECT_EQ(strip->GetToggleCheck(), 0);
    strip->setParent(nullptr);
    Press(15000, false);
    EXPECT_EQ(strip->GetToggleCheck(), 0) << "nothing happens without a parent";
    Renew(false, false);
    strip->setParent(&parent);
    Press(15000, false); // never created
    EXPECT_EQ(Heard(), "");

    CKvKeyFrameCtrl alone;
    EXPECT_EQ(alone.Create(1, nullptr, WS_VISIBLE), 1);
    EXPECT_TRUE(alone.isWindow() && alone.isVisible() && alone.height() == 14);
}

TEST_F(KeyFrame, HandlersMayDeleteTheStrip)
{
    for (const int way : {0, 1, 2, 3}) {
        Renew();
        if (way & 1)
            QObject::connect(strip, &CKvKeyFrameCtrl::KeyFrameClicked, [&] { delete strip; });
        else
            onMessage = [&] { delete strip; };
        Press(15000, way & 2);
        EXPECT_FALSE(strip) << way;
        onMessage = {};
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
    const auto pixel = [&](int x) { return parent.grab({10, 5, 100, 14}).toImage().pixelColor(x, 1); };
    SKvGuiBasicSettings settings{0x80112233, 0, 0, {}};
    Renew(false, false);
    const Child& child = *new Child(strip);
    strip->SetGuiBasicSettings(&settings);
    EXPECT_EQ(child.settings, &settings);
    Create();
    const QColor window = parent.palette().window().color();
    EXPECT_EQ(pixel(1), pixel(80)) << "painted once where the button stands";
    EXPECT_NE(pixel(80), window);
    strip->SetGuiBasicSettings(nullptr);
    EXPECT_TRUE(pixel(1) == window && pixel(80) == window);
}

// The focus after each step is the last digit of the button's number; [ and ] are the neighbours.
TEST_F(KeyFrame, ArrowsWalkWhatIsShownAndEnabled)
{
    const std::array<const char*, 4> rows[] = {
        {"one stop for Tab", "//\\\\", "0]0["},
        {"there and back, stopping at the ends", "T/>>>><<<<", "[021331200"},
        {"up and down too", "T/__^^", "[02120"},
        {"only the toggle while off", "/><", "000"},
        {"past what is disabled", "Tpn/>><", "[[[0110"},
        {"Tab comes back to the same button", "T/>>/\\", "[021]1"},
        {"off a button that vanishes", "T/>>t>", "[02100"},
        {"to where Space does least harm", "T/>>>n<>pP", "[021320211"},
        {"without the focus: disabled", "T/>>>=n/", "[0213[[2"},
        {"without the focus: hidden", "T/>>>=t/", "[0213[[0"},
        {"hidden while all are disabled", "T/>>>=stS/", "[0213[[[[0"},
        {"back where it was", "T/>>>=sS/", "[0213[[[3"},
        {"Space presses", "/.>.", "0022", "0/11 1/11 "},
        {"a click, then the arrows", "T1><", "[131", "2/10 "},
        {"an arrow is the host's after a click", "T1_>^_", "[11313", "2/10 host "},
    };
    const QShortcut host(Qt::Key_Down, &parent, [&] { heard += "host "; });
    for (const auto& [name, steps, expected, messages] : rows) {
        Renew();
        QWidget::setTabOrder(&neighbours[0], strip);
        QWidget::setTabOrder(strip, &neighbours[1]);
        Do('=');
        std::string focus;
        for (const char step : std::string_view(steps)) {
            Do(step);
            QWidget* const at = QApplication::focusWidget();
            const char number = static_cast<char>('0' + KvGetDlgItemId(at) - 15000);
            focus += at == &neighbours[0] ? '[' : at == &neighbours[1] ? ']' : number;
        }
        EXPECT_EQ(focus, expected) << name;
        EXPECT_EQ(Heard(), messages ? messages : "") << name;
    }
}

} // namespace
