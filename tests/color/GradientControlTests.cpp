// What the user does to the gradient control, and what its parent hears of it.
#include "KvGradientCtrl.h"
#include "KvMenu.h"
#include "tests/color/ControlEvents.h"
#include "tests/color/GradientText.h"

#include <QClipboard>
#include <QMimeData>

#include <gtest/gtest.h>

namespace {

constexpr WPARAM kId = 1001;
constexpr SKvCGGradientKey kOther[] = {{7, 0.2f, 0}, {8, 0.8f, 0.5f}};
constexpr char kFormat[] = "application/x-kv-dwcolor";

class TestCtrl : public CKvGradientCtrl
{
public:
    using CKvGradientCtrl::AddKey;
    using CKvGradientCtrl::CheckSelectKey;
    using CKvGradientCtrl::HasCapture;
    using CKvGradientCtrl::ToolTipAt;
};

// A control 209 x 60, so that 200 pixels are a whole gradient: markers at 4, 64, 124 and 204, mid points at
// 34, 94 and 164. Messages are written "kind/phase"; behind "@" the index of the stop that the record points
// to.
class Gradient : public ControlTest<TestCtrl>
{
protected:
    Gradient() { Renew(); }
    void Renew()
    {
        ControlTest::Renew({209, 60}, kId);
        control->SetSelectedKey(1);
        onMessage = {};
        runIsOpen = false;
        heard.clear();
    }
    void Hear(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        const auto& record = *reinterpret_cast<const GradientNotifyRecord*>(lParam);
        EXPECT_TRUE(message == WM_NOTIFY && wParam == kId && record.hdr.hwndFrom == control &&
                    record.hdr.code == 0xFFFFFFD7u);
        EXPECT_EQ(record.dataSize, record.data ? 4 : 0);
        if (record.hdr.idFrom == kKvGradientStopsEdited) {
            EXPECT_TRUE(record.phase == kKvPhaseBegin || runIsOpen) << "after " << heard;
            runIsOpen = record.phase != kKvPhaseEnd;
        }
        Say(std::to_string(record.hdr.idFrom) + '/' + std::to_string(record.phase));
        if (record.data) {
            SKvCGGradientKey* keys = nullptr;
            int count = 0;
            control->GetData(count, &keys);
            heard += '@' + std::to_string(static_cast<SKvCGGradientKey*>(record.data) - keys);
        }
        if (onMessage)
            onMessage(messages++);
    }
    std::string Stops() const
    {
        int count = 0;
        SKvCGGradientKey* keys = nullptr;
        control->GetData(count, &keys);
        return GradientText({keys, static_cast<std::size_t>(count)}, control->GetSelectedKey());
    }
    void Control(QEvent::Type type, quint32 nativeKey)
    {
        QKeyEvent event(type, Qt::Key_Control, Qt::NoModifier, 37, nativeKey, 0);
        QApplication::sendEvent(control, &event);
    }
    static void Copy(const QByteArray& bytes)
    {
        auto* data = new QMimeData;
        data->setData(kFormat, bytes);
        QApplication::clipboard()->setMimeData(data);
    }
    QStringList Menu(QPoint at, const QString& choice = {},
                     QContextMenuEvent::Reason reason = QContextMenuEvent::Mouse)
    {
        return UseContextMenu(*control, at, choice, reason);
    }
    static void ShowModalWindow()
    {
        QWidget window;
        window.setWindowModality(Qt::ApplicationModal);
        window.show();
    }
    // Further steps: C with bytes on the clipboard; A adds and L selects at a point, as a subclass does; O
    // opens a modal window; F takes the focus away; S sets other stops, T makes them the defaults, R resets,
    // G selects the third stop, W makes the selected one blue; "!" forgets the messages so far.
    Actions OwnActions(const Step& step) override
    {
        return {
            {'C', [=] { Copy(QByteArray::fromHex(step.text.toLatin1())); }},
            {'A', [=, this] { control->AddKey(step.at); }},
            {'L', [=, this] { control->CheckSelectKey(step.at); }},
            {'O', [this] { Lose(ShowModalWindow); }},
            {'F', [this] { control->clearFocus(); }},
            {'S', [this] { control->SetData(2, kOther); }},
            {'T', [this] { control->SetDefaultData(2, kOther); }},
            {'R', [this] { control->ResetDefault(); }},
            {'G', [this] { control->SetSelectedKey(2); }},
            {'W', [this] { control->SetColor(0xFF0000FFu); }},
            {'!', [this] { Heard(); }},
        };
    }

    std::function<void(int index)> onMessage;
    int messages = 0;
    bool runIsOpen = false;
};

constexpr char kFirst[] = "B0/0 *Y30 R60 M100";
constexpr char kTriple[] = "1/0 1/1 1/2";

struct UserCase
{
    const char* name;
    const char* steps; ///< for `Run`
    const char* messages;
    const char* stops = kFirst;
};

class GradientUser : public Gradient
{
protected:
    void Check(const std::vector<UserCase>& cases)
    {
        for (const UserCase& test : cases) {
            Renew();
            Run(test.steps);
            EXPECT_EQ(Heard(), test.messages) << test.name;
            EXPECT_EQ(Stops(), test.stops) << test.name;
            EXPECT_FALSE(control->HasCapture() || runIsOpen) << test.name;
        }
    }
};

TEST_F(GradientUser, Mouse)
{
    Check({
        {"select", "P124,50 U124,50", "2/0@2", "B0/0 Y30 *R60 M100"},
        {"select again", "P64,50 U64,50", "2/0@1"},
        {"drag past one", "P64,50 M74,50 M164,-200 U164,50", "2/0@1 1/0 1/1 1/2", "B0/0 R60 *Y80 M100"},
        {"drag too far", "P64,50 M-900,50 M900,50 U900,50", "2/0@1 1/0 1/1 1/2", "B0/0 R60 *Y100 M100"},
        {"add", "P94,50 U94,50", "1/0 1/2", "B0/0 Y30 *ffff7f00:45 R60 M100"},
        {"the bar never selects", "P64,30 U64,30", "1/0 1/2", "B0/0 Y30 *ffff7f00:30 R60 M100"},
        {"add and drag", "P94,20 M104,20 U104,20", "1/0 1/1 1/2", "B0/0 Y30 *ffff7f00:50 R60 M100"},
        {"left mid point", "P34,5 M22,5 M22,5 U22,5", "1/0 1/1 1/2", "B0/0 *Y30/30 R60 M100"},
        {"right mid point, limited", "P94,5 M190,5 U190,5", "1/0 1/2", "B0/0 *Y30 R60/95 M100"},
        {"a mid point not shown", "P164,5 M150,5 U150,5", ""},
        {"double click", "P64,50 U64,50 D124,50 U124,50", "2/0@1 2/0@2", "B0/0 Y30 *R60 M100"},
        {"capture lost", "P64,50 M74,50 H M94,50", "2/0@1 1/0 1/2", "B0/0 *Y35 R60 M100"},
        {"move without the button", "P64,50 M74,50 N80,50", "2/0@1 1/0 1/2", "B0/0 *Y35 R60 M100"},
        {"escape", "P124,50 M30,50 KEsc M90,50", "2/0@2 1/0 1/1 1/2"},
        {"escape before a move", "P124,50 KEsc", "2/0@2"},
        {"coloured by the host before the escape", "P124,50 W KEsc", "2/0@2", "B0/0 *Y30 B60 M100"},
        {"escape from an added stop", "P94,50 KEsc", "1/0 1/1 1/2"},
        {"a modal window", "P64,50 M74,50 O M94,50", "2/0@1 1/0 1/2", "B0/0 *Y35 R60 M100"},
        {"a subclass selects", "P64,50 M74,50 L124,50 U124,50", "2/0@1 1/0 1/2 2/0@2", "B0/0 Y35 *R60 M100"},
        {"a subclass adds", "P64,50 M74,50 A100,50 A94,50 U94,50", "2/0@1 1/0 1/2 1/0 1/2 1/0 1/2",
         "B0/0 Y35 *ffffbf00:45 ffff7f00:48 R60 M100"},
        {"keys in a drag", "P64,50 KDel KLeft KIns K5 KTab KCtrl+X KReturn U64,50", "2/0@1"},
        {"coincident stops", "K6 K0 KReturn ! P124,5 M130,5 U130,5 !", "", "B0/0 *Y60 R60 M100"},
    });
}

TEST_F(GradientUser, Keyboard)
{
    Check({
        {"delete", "KDel", kTriple, "B0/0 *R60 M100"},
        {"two stay", "KDel KDel ! KDel", "", "B0/0 *M100"},
        {"next", "KDown", "2/0@2", "B0/0 Y30 *R60 M100"},
        {"previous, then none", "KUp KUp", "2/0@0", "*B0/0 Y30 R60 M100"},
        {"last twice", "KEnd KEnd", "2/0@3", "B0/0 Y30 R60 *M100"},
        {"first", "KHome", "2/0@0", "*B0/0 Y30 R60 M100"},
        {"a pixel", "KRight", kTriple, "B0/0 *Y30.5 R60 M100"},
        {"ten pixels", "KShift+Left", kTriple, "B0/0 *Y25 R60 M100"},
        {"at the end", "KHome ! KLeft", "", "*B0/0 Y30 R60 M100"},
        {"mid point before", "KAlt+Left", kTriple, "B0/0 *Y30/49 R60 M100"},
        {"mid point after", "KAlt+Shift+Right", kTriple, "B0/0 *Y30 R60/51 M100"},
        {"none before the first", "KHome ! KAlt+Left", "", "*B0/0 Y30 R60 M100"},
        {"insert", "KIns", kTriple, "B0/0 Y30 *ffff7f00:45 R60 M100"},
        {"percent", "K7 K. K5 KEnter", kTriple, "B0/0 *Y7.5 R60 M100"},
        {"percent of the same", "K3 K0 KReturn", ""},
        {"percent dropped", "K5 KEsc KReturn", ""},
        {"percent dropped by another key", "K5 KAlt+Right ! KReturn", "", "B0/0 *Y30/51 R60 M100"},
        {"percent lost with the focus", "K5 F KReturn", ""},
        {"percent lost to other stops", "K5 S ! KReturn", "", "7:20/0 *8:80"},
        {"percent lost to a reset", "K5 T R ! KReturn", "", "*7:20/0 8:80"},
        {"percent lost to the host's selection", "K5 G KReturn", "", "B0/0 Y30 *R60 M100"},
        {"percent corrected", "K5 K8 KBackspace KReturn", kTriple, "B0/0 *Y5 R60 M100"},
    });
}

TEST_F(GradientUser, Clipboard)
{
    Check({
        {"cut and paste", "KCtrl+X ! KCtrl+V", kTriple, "B0/0 *Y60 M100"},
        {"paste of the same colour", "KCtrl+C KCtrl+V", kTriple},
        {"little-endian", "C78563412 KCtrl+V", kTriple, "B0/0 *12345678:30 R60 M100"},
        {"cut of two stops", "KDel KDel Caabbccdd ! KCtrl+X KCtrl+V", kTriple, "B0/0 *ddccbbaa:100"},
        {"five bytes", "C1122334455 KCtrl+V", ""},
    });
    Run("KCtrl+C");
    const QMimeData* data = QApplication::clipboard()->mimeData();
    EXPECT_EQ(data->data(kFormat), QByteArray::fromHex("00ffffff"));
    EXPECT_EQ(data->formats().size(), 1);

    Control(QEvent::KeyPress, 0xFFE4); // the right Ctrl key
    QKeyEvent cut(QEvent::KeyPress, Qt::Key_X, Qt::ControlModifier, "\x18");
    QApplication::sendEvent(control, &cut);
    Control(QEvent::KeyRelease, 0xFFE4);
    EXPECT_EQ(Heard(), "");
}

TEST_F(GradientUser, MenuShowsWhatCanBeDone)
{
    QApplication::clipboard()->clear();
    EXPECT_EQ(Menu({64, 50}), QStringList{"Paste"});
    control->SetSelectedKey(0);
    EXPECT_EQ(Menu({64, 50}), (QStringList{"Paste", "Exchange Before"}));
    control->SetSelectedKey(3);
    Run("C112233");
    EXPECT_EQ(Menu({64, 50}), QStringList{"Exchange After"});
    Run("KDel KDel");
    EXPECT_EQ(Menu({64, 50}), (QStringList{"Cut", "Delete", "Exchange Before", "Same Space"}));
}

TEST_F(GradientUser, MenuCommands)
{
    Check({
        {"copy", "XCopy,64,50", ""},
        {"paste into a stop", "Cff0000ff XPaste,124,50", "2/0@2 1/0 1/1 1/2", "B0/0 Y30 *B60 M100"},
        {"paste into a new stop", "Cff0000ff XPaste,94,50", "1/0 1/0 1/1 1/2", "B0/0 Y30 *B45 R60 M100"},
        {"paste into a pile", "K6 K0 KReturn KDown Cff0000ff ! XPaste,124,50", "2/0@1 1/0 1/1 1/2",
         "B0/0 *B60 R60 M100"},
        {"paste by the menu key", "K6 K0 KReturn KDown Cff0000ff ! YPaste", "2/0@2 1/0 1/1 1/2",
         "B0/0 Y60 *B60 M100"},
        {"paste of no colour", "C112233 XPaste,94,50", ""},
        {"cut", "XCut,64,50", kTriple, "B0/0 *R60 M100"},
        {"delete", "XDelete,64,50", kTriple, "B0/0 *R60 M100"},
        {"reverse", "XReverse,64,50", kTriple, "M0/100 R40 *Y70 B100"},
        {"reflect", "XReflect,64,50", kTriple, "B0/0 *Y15 R30 M50 R70 Y85 B100"},
        {"exchange before", "XExchange_Before,64,50", kTriple, "Y0/0 *B30 R60 M100"},
        {"exchange after", "XExchange_After,64,50", kTriple, "B0/0 *R30 Y60 M100"},
        {"same space", "XSame_Space,64,50", kTriple, "B0/0 *Y33.3 R66.7 M100"},
        {"reset without defaults", "XReset,64,50", ""},
        {"reset", "T XReset,64,50", kTriple, "*7:20/0 8:80"},
        {"opened in a drag", "P64,50 M74,50 XNothing,64,50", "2/0@1 1/0 1/2", "B0/0 *Y35 R60 M100"},
    });
}

TEST_F(GradientUser, SnapsWhileTheLeftControlKeyIsDown)
{
    Run("P34,5");
    Control(QEvent::KeyPress, 0xFFE3);
    Run("M20,5"); // 0.27
    EXPECT_EQ(Stops(), "B0/0 *Y30/25 R60 M100");
    Run("M23,5"); // 0.32
    EXPECT_EQ(Stops(), "B0/0 *Y30/32 R60 M100");
    Control(QEvent::KeyRelease, 0xFFE3);
    Run("M20,5");
    EXPECT_EQ(Stops(), "B0/0 *Y30/27 R60 M100");
}

TEST_F(Gradient, SettersAreSilentButTwo)
{
    const SKvCGGradientKey keys[] = {{1, 0.9f, 0}, {2, 0.1f, 0.5f}};
    EXPECT_EQ(control->SetColor(0xFF0000FFu), 1);
    EXPECT_EQ(control->SetColor(0xFF0000FFu), 0);
    control->SetEditing(1), control->SetActive(0), control->SetSelectedKey(3),
        control->SetDefaultData(2, keys);
    EXPECT_EQ(Heard(), "");
    EXPECT_EQ(control->SetData(2, keys), 1);
    EXPECT_EQ(Heard(), "0/0@0");
    EXPECT_EQ(Stops(), "*1:90/0 2:10") << "not sorted";
    EXPECT_EQ(control->SetData(2, nullptr), 0);
    EXPECT_EQ(Heard(), "");
    EXPECT_EQ(control->SetData(0, nullptr), 1);
    EXPECT_EQ(Heard(), "0/0") << "no stop, no data";
    EXPECT_EQ(control->GetSelectedColor(), 0u);
    EXPECT_EQ(control->ResetDefault(), 1);
    EXPECT_EQ(Heard(), "1/0 1/1 1/2");

    TestCtrl neverCreated;
    EXPECT_EQ(neverCreated.SetData(2, keys), 1);
}

TEST_F(Gradient, SignalComesWithEachMessage)
{
    std::string signalled;
    QObject::connect(control, &CKvGradientCtrl::GradientChanged, [&](int event, int phase) {
        signalled += std::to_string(event) + '/' + std::to_string(phase) + ' ';
    });
    Run("P64,50 M70,50 U70,50");
    EXPECT_EQ(signalled, "2/0 1/0 1/2 ");
}

// Each way to make the control speak, for the tests in which the parent strikes back.
class GradientReentry : public GradientUser
{
protected:
    static constexpr const char* kTalks[] = {
        "P64,50 M70,50 M80,50 U80,50",
        "P94,30 M99,30 U99,30",
        "P34,5 M30,5 M20,5 U20,5",
        "P94,30 M99,30 KEsc U99,30",
        "P94,30 N99,30",
        "KDown",
        "KRight",
        "C11223344 XPaste,94,50",
        "C11223344 XPaste,64,50",
        "S",
        "P64,50 M70,50 S M80,50 U80,50",
        "R",
        "P64,50 M70,50 H",
        "P64,50 M70,50 V",
    };
    // Runs each talk again and again, with `strike` in its first, second … message.
    void StrikeEverywhere(const std::function<void()>& strike, const std::function<void(const char*)>& check)
    {
        for (const char* talk : kTalks) {
            for (int at = 0, last = 0; at <= last; ++at) {
                Renew();
                control->SetDefaultData(2, kOther);
                messages = 0;
                onMessage = [&](int index) {
                    last = std::max(last, index);
                    if (index == at)
                        strike();
                };
                Run(talk);
                check(talk);
            }
        }
    }
};

TEST_F(GradientReentry, ParentMayDeleteTheControlInAnyMessage)
{
    StrikeEverywhere([&] { delete control; }, [&](const char* talk) { EXPECT_FALSE(control) << talk; });
}

TEST_F(GradientReentry, ParentMaySetTheStopsInAnyMessage)
{
    StrikeEverywhere([&] { control->SetData(2, kOther); },
                     [&](const char* talk) { EXPECT_FALSE(control->HasCapture() || runIsOpen) << talk; });

    Renew();
    messages = 0;
    onMessage = [&](int index) { index == 2 ? control->SetData(2, kOther) : 0; };
    Run("P64,50 M70,50 M80,50 M90,50 U90,50");
    EXPECT_EQ(Heard(), "2/0@1 1/0 1/1 1/2 0/0@1") << "an undo in the handler ends the drag";
    EXPECT_EQ(Stops(), "7:20/0 *8:80");

    for (const auto& [paste, expected] : {std::pair("C11223344 XPaste,94,50", "1/0 1/2 0/0@0"),
                                          std::pair("C11223344 XPaste,64,50", "2/0@1 0/0@1")}) {
        Renew();
        messages = 0;
        onMessage = [&](int index) { index == 0 ? control->SetData(2, kOther) : 0; };
        Run(paste);
        EXPECT_EQ(Heard(), expected) << "no paste into stops that were not meant";
        EXPECT_NE(Stops().find("7:20/0 "), std::string::npos) << Stops();
    }
}

TEST_F(GradientReentry, ClipboardsListenerMayDeleteTheControl)
{
    for (const char* cut : {"KCtrl+X", "XCut,64,50"}) {
        Renew();
        const auto listener =
            QObject::connect(QApplication::clipboard(), &QClipboard::dataChanged, [&] { delete control; });
        Run(cut);
        QObject::disconnect(listener);
        EXPECT_FALSE(control) << cut;
        EXPECT_EQ(Heard(), "") << cut;
    }
}

TEST_F(Gradient, FullControlTakesNoPress)
{
    const std::vector<SKvCGGradientKey> full(255, kOther[0]);
    control->SetData(255, full.data());
    Run("! P94,20 M99,20");
    EXPECT_EQ(Heard(), "");
    EXPECT_FALSE(control->HasCapture());
    int count = 0;
    control->GetData(count, nullptr);
    EXPECT_EQ(count, 255);
}

TEST_F(Gradient, DyingWindowIsNotToldOfTheDragsEnd)
{
    auto window = std::make_unique<QWidget>();
    messages = 0;
    new KvMessageSink(window.get(), [&](UINT, WPARAM, LPARAM) { return ++messages; }); // the window owns it
    auto* doomed = new CKvGradientCtrl;
    doomed->Create(WS_CHILD | WS_VISIBLE, window.get(), kId);
    window->show();
    QTest::mousePress(doomed, Qt::LeftButton, {}, {50, 20});
    EXPECT_EQ(messages, 1);
    window.reset();
    QApplication::processEvents();
    EXPECT_EQ(messages, 1);
}

TEST_F(Gradient, TabLeavesAndArrowsStay)
{
    QWidget other(&parent);
    other.setFocusPolicy(Qt::StrongFocus);
    other.show();
    EXPECT_EQ(control->OnGetDlgCode(), 0x81u);
    QTest::keyClick(control.data(), Qt::Key_Tab);
    EXPECT_FALSE(control->hasFocus());
}

TEST_F(Gradient, ToolTipsShowPlaceAndColour)
{
    CRect area;
    EXPECT_EQ(control->ToolTipAt({64, 50}, area), "30 %  #FFFFFF00");
    EXPECT_EQ(area, CRect(60, 47, 68, 60));
    EXPECT_EQ(control->ToolTipAt({164, 30}, area), "80 %  #FFFF007F");
    EXPECT_EQ(control->ToolTipAt({34, 5}, area), "Mid point 50 %");
    EXPECT_EQ(control->ToolTipAt({150, 50}, area), "");
}

} // namespace
