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
/// out; `on` has what happens in the n-th call of a name, such as "Get#2".
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
    std::map<QString, int> calls;
    std::map<QString, std::function<void()>> on;

    int RegisterParam(Name object, Name name) override { return Hear("Register", object, name); }
    int UnregisterParam(Name object, Name name) override { return Hear("Unregister", object, name); }
    int BeginEdit(Name object, Name name) override { return Hear("Begin", object, name); }
    int CommitEdit(Name object, Name name) override { return Hear("Commit", object, name); }
    int CancelEdit(Name object, Name name) override { return Hear("Cancel", object, name); }
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
    int CanGoPrevKey(Name object, Name name) override { return Hear("Can", object, name) & canGo; }
    int CanGoNextKey(Name object, Name name) override { return Hear("Can", object, name) & canGo; }
    int GoPrevKey(Name object, Name name) override { return Hear("Prev", object, name) & goes; }
    int GoNextKey(Name object, Name name) override { return Hear("Next", object, name) & goes; }

private:
    int Hear(const char* call, Name object, Name name)
    {
        EXPECT_TRUE(std::wstring_view(object) == L"title 1" && std::wstring_view(name) == L"opacity");
        const QString text = QLatin1String(call);
        if (text != QLatin1String("Can") && (log.isEmpty() || log.back() != text))
            log << text;
        if (const auto hook = on.find(QStringLiteral("%1#%2").arg(text).arg(++calls[text])); hook != on.end())
            std::function<void()>(hook->second)(); // a copy: it may delete the dialog and itself
        return 1;
    }
};

class Dialog : public CKvParamBezierCtrlDlg
{
public:
    Host* host;
    QPointer<QWidget> parent;

    explicit Dialog(Host* operates, QWidget* over = nullptr)
        : CKvParamBezierCtrlDlg(operates, L"title 1", L"opacity", over)
        , host(operates)
        , parent(over)
    {
    }

    // From the start key's handle, which kEase puts on the middle of the plot's lower edge.
    void Mouse(QEvent::Type type, QPoint by)
    {
        if (!GetCurveWnd())
            return;
        const QRect plot = GetCurveWnd()->rect().adjusted(50, 20, -20, -20);
        const QPointF point(plot.x() + plot.width() / 2 + by.x(), plot.y() + plot.height() + by.y());
        QMouseEvent event(type, point, GetCurveWnd()->mapToGlobal(point),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(GetCurveWnd(), &event);
    }

    /// What a person or the host does, step by step: numbers are commands, K is a key, = ends the dialog.
    void Run(const char* steps)
    {
        const std::map<QString, std::function<void()>> words = {
            {"press", [&] { Mouse(QEvent::MouseButtonPress, {}); }},
            {"move",
             [&] {
                 Mouse(QEvent::MouseMove, {40, -50});
             }},
            {"drop",
             [&] {
                 Mouse(QEvent::MouseButtonRelease, {40, -50});
             }},
            {"button", [&] { GetDlgItem(12095)->setFocus(); }},
            {"close", [&] { close(); }},
            {"init", [&] { OnInitDialog(); }},
            {"destroy", [&] { DestroyWindow(); }},
            {"orphan", [&] { delete parent; }},
            {"quit", [] { QCoreApplication::exit(); }},
            {"blind", [&] { host->reads = 0; }},
            {"seeing", [&] { host->reads = 1; }},
            {"stuck", [&] { host->goes = 0; }},
            {"free", [&] { host->goes = 1; }},
            {"alone", [&] { host->canGo = 0; }},
            {"lost", [&] { delete GetCurveWnd(); }},
        };
        const QPointer<Dialog> open(this);
        for (const QString& step : QString::fromLatin1(steps).split(u' ', Qt::SkipEmptyParts)) {
            if (!open)
                return;
            if (const auto word = words.find(step); word != words.end()) {
                word->second();
            } else if (step[0] == u'K') {
                const QKeyCombination key = QKeySequence(step.mid(1))[0];
                QTest::keyClick(focusWidget(), key.key(), key.keyboardModifiers());
            } else if (step[0] == u'=') {
                EndDialog(step.mid(1).toInt());
            } else {
                KvSendMessage(this, WM_COMMAND, MAKEWPARAM(step.toUInt(), 0), 0);
            }
        }
    }
};

/// Opens the dialog in an application that runs, acts and lets what is queued come through.
int OpenWith(Dialog& dialog, const std::function<void()>& act)
{
    int result = 0;
    QTimer::singleShot(0, [&] {
        QTimer::singleShot(0, &dialog, act);
        result = dialog.DoModal();
        QCoreApplication::exit();
    });
    QCoreApplication::exec();
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

/// 4 units in the last place of the largest coordinate.
double Tolerance(const double points[8])
{
    double largest = 0;
    for (int i = 0; i < 8; ++i)
        largest = std::max(largest, std::abs(points[i]));
    return 4 * (std::nextafter(largest, INFINITY) - largest);
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
        const double end = start + std::abs(number());
        const SKvParamEaseData read{
            4, fraction(random), number(), fraction(random), number(), start, number(), end, number(), -7, 9,
            1};
        host.ease = read;
        Curve curve;
        ASSERT_TRUE(curve.Read(info) && info.SetCurve(curve.points, curve.lock, curve.kind));
        const double* before = &read.inTangentX; // ten numbers
        const double* after = &host.written.inTangentX;
        for (int i = 0; i < 10; ++i) {
            const double scale = i == 0 || i == 2 ? end - start : 1;
            ASSERT_LE(std::abs(after[i] - before[i]) * scale, i < 4 ? Tolerance(curve.points) : 0)
                << round << ' ' << i;
        }
        ASSERT_TRUE(host.written.lock == 1 && host.written.kind == 4);

        const double points[8] = {start, number(), number(), number(), number(), number(), end, number()};
        ASSERT_TRUE(info.SetCurve(points, 0, 2) && curve.Read(info));
        for (int i = 0; i < 8; ++i)
            ASSERT_LE(std::abs(curve.points[i] - points[i]), Tolerance(points)) << round << ' ' << i;
    }
}

TEST(EaseInfo, WritesWholeRecordsAndAsksForPresets)
{
    Host host;
    CKvParamBezierInfo info(&host, L"title 1", L"opacity");
    Curve curve;
    host.ease.maximum = 9;
    curve.Read(info);
    EXPECT_EQ((std::vector<double>(curve.points, curve.points + 8)),
              (std::vector<double>{10, 0, 15, 0, 17.5, 0.8, 20, 1}));
    EXPECT_EQ(info.IsModified(), 0);
    const double flat[8] = {5, 1, 6, 2, 3, 3, 5, 4}; // no width
    info.SetCurve(flat, 0, 4);
    EXPECT_TRUE(host.written.outTangentX == 0 && host.written.inTangentX == 0) << "not NaN";
    EXPECT_TRUE(host.written.outTangentY == 1 && host.written.inTangentY == -1);
    EXPECT_EQ(host.written.maximum, 9) << "as read last";

    using Preset = int (CKvParamBezierInfo::*)(double*, double*, double*, double*);
    const std::pair<std::uint32_t, Preset> presets[] = {{2, &CKvParamBezierInfo::GetSpeedUpCurve},
                                                        {3, &CKvParamBezierInfo::GetSpeedDownCurve},
                                                        {5, &CKvParamBezierInfo::GetSmoothCurve}};
    for (const auto& [number, ask] : presets) {
        info.SetModified(0);
        double out[3] = {};
        EXPECT_EQ((info.*ask)(&out[0], &out[1], &out[2], nullptr), 1);
        EXPECT_TRUE(out[0] == 0.125 * number && info.IsModified() == 1);
        SKvParamEaseData expected{};
        expected.kind = number;
        EXPECT_EQ(std::memcmp(&host.written.inTangentX, &expected.inTangentX, 80), 0);
        EXPECT_TRUE(host.written.kind == number && host.written.lock == 0);
    }
    EXPECT_EQ(info.ApplyLinear(), 1);
    host.reads = 0;
    EXPECT_EQ(curve.Read(info), 0);
    info.SetCurve(flat, 0, 4);
    EXPECT_EQ(host.written.maximum, 1) << "not that of the segment before";
    EXPECT_EQ(host.log.join(u' '), "Register Get Set4 Set2 Get Set3 Get Set5 Get Set1 Get Set4");

    CKvParamBezierInfo nobody(nullptr, nullptr, nullptr);
    EXPECT_EQ(nobody.SetCurve(flat, 0, 4) + nobody.ApplyLinear() + nobody.BeginEdit() + nobody.CommitEdit() +
                  nobody.CancelEdit() + nobody.CanGoNextKey() + nobody.GoPrevKey() + nobody.IsModified(),
              0);
}

TEST(EaseDialog, EachOpeningIsOneTransaction)
{
    const struct
    {
        const char* name;
        const char* steps;
        int result;
        const char* log; // after "Begin Get "
        int reads = 1;
    } rows[] = {
        {"OK, nothing done", "1", 1, "Cancel"},
        {"OK after undoing all", "12090 12077 1", 1, "Set1 Set4 Commit"},
        {"Cancel", "12092 12095 12077 12079 12078 2", 2, "Set3 Get Set5 Get Set3 Set5 Set4 Cancel"},
        {"a click on a handle writes nothing", "press drop 1", 1, "Cancel"},
        {"Enter after a drag", "press move drop KReturn", 1, "Set4 Commit"},
        {"OK in a drag", "press move 1 move drop", 1, "Set4 Commit"},
        {"closed in a drag", "press move close move drop", 2, "Set4 Cancel"},
        {"the application ends in a drag", "press move quit", 2, "Set4 Cancel"},
        {"the parent dies in a drag", "press move orphan close", 2, "Set4 Cancel"},
        {"Escape ends the drag first", "press move KEsc drop 12091 KEsc", 2, "Set4 Set2 Get Cancel"},
        {"closed while digits wait", "KPgDown K5 close", 2, "Cancel"},
        {"steps to other segments", "12093 12094 close", 2, "Prev Get Next Get Cancel"},
        {"initialised again, destroyed", "init destroy", 2, "Cancel"},
        {"the host's OK", "12091 =1", 1, "Set2 Get Commit"},
        {"a result of the host's own", "12091 =77", 77, "Set2 Get Cancel"},
        {"Cancel, then everything else", "12091 2 1 =1 12095 12094", 2, "Set2 Get Cancel"},
        {"OK, then Cancel", "12091 1 2 =2", 1, "Set2 Get Commit"},
        {"nothing to read, then a segment", "press move drop 12091 KPgDown KUp 12078 seeing 12094 12091 1", 1,
         "Next Get Set2 Get Commit", 0},
        {"a segment, then nothing to read", "12095 blind 12093 press move drop 12090 12077 12078 1", 1,
         "Set5 Get Prev Get Commit"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Host host;
        {
            Dialog dialog(&host, new QWidget);
            host.on["Commit#1"] = [&] { dialog.OnCancel(); }; // too late
            for (const bool isModal : {true, true, false}) {
                host.log.clear();
                host.calls.clear();
                host.ease = kEase;
                host.reads = row.reads;
                if (isModal) {
                    EXPECT_EQ(OpenWith(dialog, [&] { dialog.Run(row.steps); }), row.result);
                } else {
                    dialog.Create(kKvParamBezierDialog, dialog.parent);
                    dialog.show();
                    dialog.Run(row.steps);
                    dialog.DestroyWindow(); // after what ends `DoModal` alone
                }
                EXPECT_EQ(host.log.join(u' ').toStdString(), std::string("Begin Get ") + row.log) << isModal;
                EXPECT_FALSE(dialog.GetCurveWnd() || dialog.IsCreated());
            }
            delete dialog.parent;
        }
        EXPECT_EQ(host.log.back(), QStringLiteral("Unregister"));
    }
}

TEST(EaseDialog, ButtonsFollowHistoryAndSegments)
{
    const std::pair<const char*, const char*> rows[] = {
        {"KF5", "--<>"},
        {"12095", "U-<>"},
        {"button KCtrl+Z", "-R<>"},
        {"KCtrl+Y stuck 12094", "U-<>"}, // refused: nothing is loaded
        {"free 12094", "--<>"},
        {"alone", "----"},
        {"12094 12093 lost 12077 12078 12079 12090 12091 12092 12093 12094 12095", "----"},
    };
    const auto walk = [&](Dialog& dialog, bool isUsable) {
        EXPECT_EQ(dialog.focusWidget(), dialog.GetCurveWnd());
        for (const auto& [steps, enabled] : rows) {
            dialog.Run(steps);
            QTest::keyClick(&dialog, Qt::Key_F5);
            QCoreApplication::processEvents();
            QString found;
            for (const auto& [id, letter] :
                 {std::pair(12077u, 'U'), {12079u, 'R'}, {12093u, '<'}, {12094u, '>'}})
                found += QLatin1Char(dialog.GetDlgItem(id)->isEnabled() ? letter : '-');
            EXPECT_EQ(found, QLatin1String(isUsable ? enabled : "----")) << steps;
        }
        EXPECT_TRUE(dialog.OnKickIdle(0, 2) == 1 && dialog.OnKickIdle(0, 3) == 0);
        dialog.EndDialog(7);
    };
    Host host;
    Dialog dialog(&host);
    EXPECT_EQ(OpenWith(dialog, [&] { walk(dialog, true); }), 7);
    EXPECT_EQ(host.log.join(u' '), "Register Begin Get Set5 Get Set4 Set5 Next Get Cancel");
    Dialog nobody(nullptr);
    nobody.host = &host;
    EXPECT_EQ(OpenWith(nobody, [&] { walk(nobody, false); }), 7);
}

TEST(EaseDialog, SignsOnButtonsPointWhereTimeRuns)
{
    Host host;
    Dialog dialog(&host);
    const auto pictures = [&] {
        QList<QImage> shown;
        for (const UINT id : {12093u, 12094u})
            shown << dialog.GetDlgItem(id)->grab().toImage();
        return shown;
    };
    OpenWith(dialog, [&] {
        const QList<QImage> before = pictures();
        EXPECT_NE(before[0], before[1]);
        QGuiApplication::setLayoutDirection(Qt::RightToLeft);
        EXPECT_EQ(pictures(), before);
        QGuiApplication::setLayoutDirection(Qt::LeftToRight);
        dialog.EndDialog(IDCANCEL);
    });
}

TEST(EaseDialog, HostMayDeleteItInAnyCall)
{
    for (const char* call :
         {"Begin#1", "Get#1", "Can#1", "Can#2", "Next#1", "Get#2", "Set4#1", "Set4#2", "Set1#1", "Set2#1",
          "Get#3", "Set3#1", "Set5#1", "Prev#1", "Commit#1", "Cancel#1"}) {
        SCOPED_TRACE(call);
        Host host;
        QPointer<Dialog> dialog = new Dialog(&host);
        host.on[QLatin1String(call)] = [&] { delete dialog; };
        const int result = OpenWith(*dialog, [&] {
            dialog->Run("12094 press move drop 12077 12090 12091 12092 12095 12093");
            if (dialog)
                dialog->Run(QLatin1String(call) == QLatin1String("Cancel#1") ? "2" : "1");
        });
        EXPECT_FALSE(dialog);
        EXPECT_EQ(host.log.back(), QStringLiteral("Unregister"));
        EXPECT_EQ(host.log.count("Commit") + host.log.count("Cancel"), 1) << qPrintable(host.log.join(u' '));
        EXPECT_EQ(result == IDOK, host.log.contains("Commit"));
    }
}

} // namespace
