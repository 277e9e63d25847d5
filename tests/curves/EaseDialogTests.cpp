// The ease dialog and its adapter to a host's data: what the host is told, in order.
#include "KvParamBezierCtrlDlg.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string_view>

namespace {

constexpr SKvParamEaseData kEase{4, 0.25, -0.2, 0.5, 0, 10, 0, 20, 1, 0, 1, 0};

/// A host with one segment. It writes down what it is told, a run of equal calls once, and leaves queries
/// out.
class Host : public IKvDataOperator
{
public:
    using Name = const wchar_t*;
    QStringList log;
    SKvParamEaseData ease = kEase;
    SKvParamEaseData written{};
    int canGo = 1;
    int goes = 1;
    int reads = 1;
    std::map<QString, std::function<void()>> on;

    int RegisterParam(Name object, Name name) override { return Hear("Register", object, name); }
    int UnregisterParam(Name object, Name name) override { return Hear("Unregister", object, name); }
    int BeginEdit(Name object, Name name) override { return Hear("Begin", object, name); }
    int CommitEdit(Name object, Name name) override { return Hear("Commit", object, name); }
    int CancelEdit(Name object, Name name) override
    {
        ease = kEase;
        return Hear("Cancel", object, name);
    }
    int GetEaseData(Name object, Name name, SKvParamEaseData& data) override
    {
        data = ease;
        return Hear("Get", object, name) & reads;
    }
    int SetEaseData(Name object, Name name, const SKvParamEaseData& data) override
    {
        written = data;
        if (data.endX != data.startX)
            ease = data;
        else
            ease.outTangentX = ease.inTangentX = 0.125 * data.kind; // a preset of its own
        return Hear(qPrintable(QStringLiteral("Set%1").arg(data.kind)), object, name);
    }
    int CanGoPrevKey(Name, Name) override { return canGo; }
    int CanGoNextKey(Name, Name) override { return canGo; }
    int GoPrevKey(Name object, Name name) override { return Hear("Prev", object, name) & goes; }
    int GoNextKey(Name object, Name name) override { return Hear("Next", object, name) & goes; }

private:
    int Hear(const char* call, Name object, Name name)
    {
        EXPECT_TRUE(std::wstring_view(object) == L"title 1" && std::wstring_view(name) == L"opacity");
        const QString text = QLatin1String(call);
        if (log.isEmpty() || log.back() != text)
            log << text;
        if (const auto hook = on.find(text); hook != on.end())
            std::function<void()>(hook->second)(); // a copy: it may delete the dialog and itself
        return 1;
    }
};

class Dialog : public CKvParamBezierCtrlDlg
{
public:
    explicit Dialog(IKvDataOperator* host) : CKvParamBezierCtrlDlg(host, L"title 1", L"opacity", nullptr) {}

    bool IsEnabled(UINT id) { return GetDlgItem(id)->isEnabled(); }
    void Mouse(QEvent::Type type, QPoint by)
    {
        // From the start key's handle, which kEase puts on the middle of the plot's lower edge.
        const QRect plot = GetCurveWnd()->rect().adjusted(50, 20, -20, -20);
        const QPointF point(plot.x() + plot.width() / 2 + by.x(), plot.y() + plot.height() + by.y());
        const bool isUp = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, point, GetCurveWnd()->mapToGlobal(point),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                          isUp ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(GetCurveWnd(), &event);
    }
};

// What a person does, step by step.
using Act = std::function<void(Dialog&)>;

Act Click(UINT id)
{
    return [id](Dialog& dialog) { QTest::mouseClick(dialog.GetDlgItem(id), Qt::LeftButton); };
}

Act Key(Qt::Key key)
{
    return [key](Dialog& dialog) { QTest::keyClick(dialog.GetCurveWnd(), key); };
}

void Press(Dialog& dialog)
{
    dialog.Mouse(QEvent::MouseButtonPress, {});
}

void Move(Dialog& dialog)
{
    dialog.Mouse(QEvent::MouseMove, {40, -50});
}

void Drag(Dialog& dialog)
{
    Press(dialog);
    Move(dialog);
}

void Drop(Dialog& dialog)
{
    dialog.Mouse(QEvent::MouseButtonRelease, {40, -50});
}

void Close(Dialog& dialog)
{
    dialog.close();
}

/// Opens the dialog, acts and lets what is queued come through.
int OpenWith(Dialog& dialog, const std::vector<Act>& acts)
{
    QTimer::singleShot(0, &dialog, [&] {
        const QPointer<Dialog> open(&dialog);
        for (const Act& act : acts) {
            if (open)
                act(dialog);
        }
    });
    const int result = dialog.DoModal();
    QCoreApplication::processEvents();
    return result;
}

struct Curve
{
    double points[8];
    double minimum, maximum;
    std::uint32_t lock, kind;

    int Read(CKvParamBezierInfo& info) { return info.GetCurve(points, minimum, maximum, lock, kind); }
};

double Ulp(double value)
{
    return std::nextafter(std::abs(value), INFINITY) - std::abs(value);
}

TEST(EaseInfo, ConversionsAreInverses)
{
    Host host;
    CKvParamBezierInfo info(&host, L"title 1", L"opacity");
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> exponent(-6, 9);
    std::uniform_real_distribution<double> mantissa(-1, 1);
    std::uniform_real_distribution<double> fraction(-0.5, 1.5);
    const auto number = [&] { return mantissa(random) * std::pow(10, exponent(random)); };
    for (int round = 0; round < 5000; ++round) {
        const double start = number();
        const SKvParamEaseData read{4,        fraction(random),
                                    number(), fraction(random),
                                    number(), start,
                                    number(), start + std::abs(number()),
                                    number(), -7,
                                    9,        1};
        host.ease = read;
        Curve curve;
        ASSERT_TRUE(curve.Read(info) && info.SetCurve(curve.points, curve.lock, curve.kind));
        const double largest = std::abs(*std::max_element(
            curve.points, curve.points + 8, [](double a, double b) { return std::abs(a) < std::abs(b); }));
        const double most = 4 * Ulp(largest);
        const SKvParamEaseData& back = host.written;
        const double width = read.endX - read.startX;
        ASSERT_LE(std::abs(width * (back.outTangentX - read.outTangentX)), most) << round;
        ASSERT_LE(std::abs(width * (back.inTangentX - read.inTangentX)), most) << round;
        ASSERT_LE(std::abs(back.outTangentY - read.outTangentY), most) << round;
        ASSERT_LE(std::abs(back.inTangentY - read.inTangentY), most) << round;
        ASSERT_TRUE(back.startX == read.startX && back.startY == read.startY && back.endX == read.endX &&
                    back.endY == read.endY && back.minimum == -7 && back.maximum == 9 && back.lock == 1 &&
                    back.kind == 4);
    }
}

TEST(EaseInfo, WritesWholeRecordsAndAsksForPresets)
{
    Host host;
    {
        CKvParamBezierInfo info(&host, L"title 1", L"opacity");
        Curve curve;
        curve.Read(info);
        EXPECT_EQ((std::vector<double>(curve.points, curve.points + 8)),
                  (std::vector<double>{10, 0, 15, 0, 17.5, 0.8, 20, 1}));
        EXPECT_EQ(info.IsModified(), 0);
        const double flat[8] = {5, 1, 6, 2, 3, 3, 5, 4}; // no width
        info.SetCurve(flat, 0, 4);
        EXPECT_TRUE(host.written.outTangentX == 0 && host.written.inTangentX == 0) << "not NaN";
        EXPECT_TRUE(host.written.outTangentY == 1 && host.written.inTangentY == -1);
        EXPECT_TRUE(host.written.minimum == 0 && host.written.maximum == 1) << "as read last";
        EXPECT_EQ(info.IsModified(), 1);

        using Preset = int (CKvParamBezierInfo::*)(double*, double*, double*, double*);
        const std::pair<std::uint32_t, Preset> presets[] = {{2, &CKvParamBezierInfo::GetSpeedUpCurve},
                                                            {3, &CKvParamBezierInfo::GetSpeedDownCurve},
                                                            {5, &CKvParamBezierInfo::GetSmoothCurve}};
        for (const auto& [number, ask] : presets) {
            info.SetModified(0);
            double out[4] = {};
            EXPECT_EQ((info.*ask)(&out[0], &out[1], &out[2], nullptr), 1);
            EXPECT_EQ(out[0], 0.125 * number);
            SKvParamEaseData expected{};
            expected.kind = number;
            EXPECT_EQ(std::memcmp(&host.written.inTangentX, &expected.inTangentX, 80), 0);
            EXPECT_TRUE(host.written.kind == number && host.written.lock == 0);
            EXPECT_EQ(info.IsModified(), 1);
        }
        EXPECT_EQ(info.ApplyLinear(), 1);
        host.reads = 0;
        EXPECT_EQ(curve.Read(info), 0);
    }
    EXPECT_EQ(host.log.join(u' '),
              QStringLiteral("Register Get Set4 Set2 Get Set3 Get Set5 Get Set1 Get Unregister"));

    CKvParamBezierInfo nobody(nullptr, nullptr, nullptr);
    double points[8] = {};
    EXPECT_EQ(nobody.SetCurve(points, 0, 4) + nobody.ApplyLinear() + nobody.BeginEdit() +
                  nobody.CommitEdit() + nobody.CancelEdit() + nobody.CanGoNextKey() + nobody.GoPrevKey() +
                  nobody.GetSmoothCurve(points, points, points, points) + nobody.IsModified(),
              0);
}

TEST(EaseDialog, EachOpeningIsOneTransaction)
{
    struct Row
    {
        const char* name;
        std::vector<Act> acts;
        int result;
        const char* log;
    };
    const Act type = [](Dialog& dialog) { QTest::keyClicks(dialog.GetCurveWnd(), QStringLiteral("0.5")); };
    const Act isOpen = [](Dialog& dialog) { EXPECT_TRUE(dialog.isVisible()); };
    const Row rows[] = {
        {"OK, nothing done", {Click(IDOK)}, IDOK, "Begin Get Cancel"},
        {"OK after a preset", {Click(12091), Click(IDOK)}, IDOK, "Begin Get Set2 Get Commit"},
        {"OK after undoing all",
         {Click(12090), &Dialog::OnBnClickedButtonUndo, Click(IDOK)},
         IDOK,
         "Begin Get Set1 Set4 Commit"},
        {"Cancel after presets, undo, redo and reset",
         {&Dialog::OnBnClickedButtonSpeeddown, &Dialog::OnBnClickedButtonSmooth,
          &Dialog::OnBnClickedButtonUndo, &Dialog::OnBnClickedButtonRedo, &Dialog::OnBnClickedButtonRevert,
          Click(IDCANCEL)},
         IDCANCEL,
         "Begin Get Set3 Get Set5 Get Set3 Set5 Set4 Cancel"},
        {"a click on a handle writes nothing", {Press, Drop, Click(IDOK)}, IDOK, "Begin Get Cancel"},
        {"Enter after a drag", {Drag, Drop, Key(Qt::Key_Return)}, IDOK, "Begin Get Set4 Commit"},
        {"OK in a drag", {Drag, &Dialog::OnOK, Move, Drop}, IDOK, "Begin Get Set4 Commit"},
        {"closed in a drag", {Drag, Close, Move, Drop}, IDCANCEL, "Begin Get Set4 Cancel"},
        {"Escape ends the drag first",
         {Drag, Key(Qt::Key_Escape), isOpen, Drop, Key(Qt::Key_Escape)},
         IDCANCEL,
         "Begin Get Set4 Cancel"},
        {"closed while digits wait", {Key(Qt::Key_PageDown), type, Close}, IDCANCEL, "Begin Get Cancel"},
        {"steps to other segments",
         {Click(12093), Click(12094), Close},
         IDCANCEL,
         "Begin Get Prev Get Next Get Cancel"},
        {"destroyed", {&Dialog::DestroyWindow}, IDCANCEL, "Begin Get Cancel"},
        {"ended by the host", {[](Dialog& dialog) { dialog.EndDialog(IDOK); }}, IDOK, "Begin Get Cancel"},
        {"used after the end",
         {&Dialog::OnOK, &Dialog::OnBnClickedButtonSmooth, &Dialog::OnBnClickedButtonKeynext,
          &Dialog::OnCancel},
         IDOK,
         "Begin Get Cancel"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Host host;
        {
            Dialog dialog(&host);
            EXPECT_EQ(host.log, QStringList{"Register"});
            for (int opening = 0; opening < 2; ++opening) {
                host.log.clear();
                host.ease = kEase;
                EXPECT_EQ(OpenWith(dialog, row.acts), row.result);
                EXPECT_EQ(host.log.join(u' ').toStdString(), row.log) << "opening " << opening;
                EXPECT_FALSE(dialog.GetCurveWnd() || dialog.IsCreated());
            }
        }
        EXPECT_EQ(host.log.back(), QStringLiteral("Unregister"));
    }
}

TEST(EaseDialog, ButtonsFollowHistoryAndSegments)
{
    Host host;
    Dialog dialog(&host);
    const auto expect = [&](const char* when, const char* enabled) {
        QCoreApplication::processEvents();
        QString found;
        for (const auto& [id, letter] : {std::pair(12077u, 'U'), {12079u, 'R'}, {12093u, '<'}, {12094u, '>'}})
            found += dialog.IsEnabled(id) ? QLatin1Char(letter) : QLatin1Char('-');
        EXPECT_EQ(found, QLatin1String(enabled)) << when;
    };
    const auto act = [&](Dialog&) {
        EXPECT_EQ(dialog.focusWidget(), dialog.GetCurveWnd());
        expect("opened", "--<>");
        Click(12095)(dialog);
        expect("preset", "U-<>");
        QTest::keyClick(dialog.GetDlgItem(12095), Qt::Key_Z, Qt::ControlModifier);
        expect("undone from a button", "-R<>");
        QTest::keyClick(dialog.GetDlgItem(12095), Qt::Key_Y, Qt::ControlModifier);
        host.goes = 0;
        host.log.clear();
        Click(12094)(dialog);
        EXPECT_EQ(host.log, QStringList{"Next"}) << "refused, so nothing is loaded";
        expect("redone", "U-<>");
        host.goes = 1;
        Click(12094)(dialog);
        expect("another segment's history", "--<>");
        host.canGo = 0;
        QTest::keyClick(&dialog, Qt::Key_F5);
        expect("the only segment", "----");
        host.log.clear();
        dialog.OnBnClickedButtonKeyprev();
        EXPECT_TRUE(dialog.OnKickIdle(0, 2) == 1 && dialog.OnKickIdle(0, 3) == 0);

        host.canGo = 1;
        delete dialog.GetCurveWnd();
        QTest::keyClick(&dialog, Qt::Key_F5);
        expect("no window", "----");
        for (UINT id = 12077; id <= 12095; ++id)
            KvSendMessage(&dialog, WM_COMMAND, MAKEWPARAM(id, 0), 0);
        EXPECT_TRUE(host.log.isEmpty());
    };
    EXPECT_EQ(OpenWith(dialog, {act, &Dialog::OnOK}), IDOK);
}

TEST(EaseDialog, WithoutAHostShowsTheDefaultCurve)
{
    Dialog dialog(nullptr);
    const auto look = [](Dialog& open) {
        ASSERT_NE(open.GetCurveWnd(), nullptr);
        EXPECT_EQ(open.GetDlgItem(12088), open.GetCurveWnd());
        EXPECT_TRUE(open.GetCurveWnd()->isVisible());
        EXPECT_FALSE(open.IsEnabled(12077) || open.IsEnabled(12079) || open.IsEnabled(12093) ||
                     open.IsEnabled(12094) || open.GetCurveWnd()->CanUndo());
    };
    EXPECT_EQ(OpenWith(dialog, {look, Click(12090), Click(12093), Drag, Drop, look, Click(IDOK)}), IDOK);
}

TEST(EaseDialog, HostMayDeleteItInAnyCall)
{
    for (const char* call : {"Begin", "Get", "Next", "Set4", "Set1", "Set2", "Commit", "Cancel"}) {
        SCOPED_TRACE(call);
        Host host;
        QPointer<Dialog> dialog = new Dialog(&host);
        host.on[QLatin1String(call)] = [&] {
            host.on.clear();
            delete dialog;
        };
        const bool cancels = QLatin1String(call) == QLatin1String("Cancel");
        OpenWith(*dialog,
                 {Click(12094), Drag, Drop, Click(12090), Click(12091), Click(cancels ? IDCANCEL : IDOK)});
        EXPECT_FALSE(dialog);
        EXPECT_EQ(host.log.back(), QStringLiteral("Unregister"));
        EXPECT_EQ(host.log.count("Commit") + host.log.count("Cancel"), 1) << qPrintable(host.log.join(u' '));
    }
}

} // namespace
