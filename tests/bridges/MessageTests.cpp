#include "KvQt.h"

#include <QLoggingCategory>

#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <thread>
#include <utility>
#include <vector>

namespace {

/// A handler as programs have them: it counts, and goes on to the one that it was put in front of.
template <int Index>
struct Foreign
{
    static void Hear(QtMsgType type, const QMessageLogContext& context, const QString& text)
    {
        ++heard;
        if (before && goesOn)
            before(type, context, text);
    }
    static void Install() { before = qInstallMessageHandler(&Hear); }
    static void Remove() { qInstallMessageHandler(std::exchange(before, nullptr)); }

    static inline QtMessageHandler before = nullptr;
    static inline int heard = 0;
    static inline bool goesOn = true;
};

struct Program
{
    void (*install)();
    void (*remove)();
    int* heard;
};
template <int Index>
Program Of()
{
    return {&Foreign<Index>::Install, &Foreign<Index>::Remove, &Foreign<Index>::heard};
}

/// Stands at the bottom, so that a test is silent and knows what arrives there.
class KvQtMessages : public testing::Test
{
protected:
    KvQtMessages() { m_before = qInstallMessageHandler(&Hear); }
    ~KvQtMessages() override { qInstallMessageHandler(m_before); }

    static void Hear(QtMsgType, const QMessageLogContext&, const QString&) { ++arrived; }
    static int Arrives()
    {
        arrived = 0;
        qWarning("message");
        return arrived;
    }
    static inline std::atomic<int> arrived = 0;

private:
    QtMessageHandler m_before;
};

struct Log
{
    Log()
    {
        list.Create(CRect(0, 0, 300, 200), WS_CHILD, &parent, 1);
        list.Initialize(1);
    }
    void Begin() { messages = std::make_unique<KvQtMessageLog>(list); }
    /// How many warnings came since the last time.
    int Came()
    {
        const int came = list.GetTypeCount(2);
        list.ClearLog();
        return came;
    }

    QWidget parent;
    CKvAppLogListCtrl list;
    std::unique_ptr<KvQtMessageLog> messages;
};

TEST_F(KvQtMessages, ComeInFromAllThreadsWithTypeLevelAndCategory)
{
    Log log;
    arrived = 0;
    {
        KvQtMessageLog first(log.list);
        KvQtMessageLog second(log.list);
        second.SetLeast(QtCriticalMsg);
        qDebug("one");
        static const QLoggingCategory media("media");
        qCCritical(media) << "two";
        std::thread([] { qWarning("three"); }).join();
    }
    qWarning("nobody hears this");
    EXPECT_EQ(arrived, 4) << "the handler before hears everything";
    EXPECT_EQ(log.list.GetTypeCount(0), 1);
    EXPECT_EQ(log.list.GetTypeCount(2), 1);
    EXPECT_EQ(log.list.GetTypeCount(3), 2);
    const int line = log.list.FindItem(L"media: two", 3);
    ASSERT_GE(line, 0);
    EXPECT_EQ(log.list.GetItemText(line, 1), L"03");
}

// Handlers come and go as they should, the last one first; logs do in between and as they like.
TEST_F(KvQtMessages, ReachEverybodyOnceHoweverLogsAndHandlersMix)
{
    const Program programs[] = {Of<0>(), Of<1>(), Of<2>(), Of<3>()};
    std::vector<const Program*> installed;
    Log logs[3];
    bool isSure = true; // whoever removes a handler removes what was put in front of it, too
    std::mt19937 random(11);
    for (int step = 0; step < 3000 && !HasFailure(); ++step) {
        Log& log = logs[random() % 3];
        switch (random() % 4) {
        case 0:
            if (installed.size() < std::size(programs)) {
                const auto isFree = [&](const Program* one) {
                    return std::find(installed.begin(), installed.end(), one) == installed.end();
                };
                const Program* one = nullptr;
                do
                    one = &programs[random() % std::size(programs)];
                while (!isFree(one));
                installed.push_back(one);
                one->install();
            }
            break;
        case 1:
            if (!installed.empty()) {
                installed.back()->remove();
                installed.pop_back();
                isSure = false;
            }
            break;
        case 2:
            if (!log.messages) {
                log.Begin();
                isSure = true;
            }
            break;
        default:
            log.messages.reset();
        }
        SCOPED_TRACE(step);
        EXPECT_EQ(Arrives(), 1);
        for (const Program& program : programs)
            EXPECT_EQ(std::exchange(*program.heard, 0),
                      std::count(installed.begin(), installed.end(), &program));
        for (Log& each : logs) {
            const int came = each.Came();
            EXPECT_LE(came, each.messages ? 1 : 0);
            EXPECT_TRUE(came == 1 || !each.messages || !isSure);
        }
    }
    for (Log& log : logs)
        log.messages.reset();
    for (; !installed.empty(); installed.pop_back())
        installed.back()->remove();
}

// There is no moment at which a message of another thread finds nobody behind the handler.
TEST_F(KvQtMessages, OfAThreadArriveWhileLogsComeAndGo)
{
    constexpr int kCount = 3000;
    Log log;
    arrived = 0;
    std::atomic<bool> isDone = false;
    std::thread thread([&] {
        for (int i = 0; i < kCount; ++i)
            qDebug("message");
        isDone = true;
    });
    while (!isDone) {
        log.Begin();
        log.messages.reset();
    }
    thread.join();
    EXPECT_EQ(arrived, kCount);
    EXPECT_EQ(Arrives(), 1);
    EXPECT_EQ(log.Came(), 0);
}

TEST_F(KvQtMessages, AnotherLogHearsPastAHandlerThatKeepsThemForItself)
{
    Log first;
    Log second;
    first.Begin();
    Foreign<0>::Install();
    Foreign<0>::goesOn = false;
    EXPECT_EQ(Arrives(), 0);
    EXPECT_EQ(first.Came(), 0);
    second.Begin();
    EXPECT_EQ(Arrives(), 0);
    EXPECT_EQ(first.Came(), 1);
    EXPECT_EQ(second.Came(), 1);
    EXPECT_EQ(std::exchange(Foreign<0>::heard, 0), 2);
    Foreign<0>::goesOn = true;
    Foreign<0>::Remove();
}

// A handler that is installed twice goes on to itself.
TEST_F(KvQtMessages, EndInARing)
{
    Log log;
    log.Begin();
    Foreign<0>::Install();
    log.messages.reset();
    log.Begin();
    Foreign<0>::Install();
    EXPECT_EQ(Arrives(), 1);
    EXPECT_EQ(log.Came(), 1);
    log.messages.reset();
    EXPECT_EQ(Arrives(), 1);
    EXPECT_EQ(log.Came(), 0);
    Foreign<0>::before = nullptr;
    Foreign<0>::heard = 0;
}

// More handlers than one thinks of.
TEST_F(KvQtMessages, ArriveThroughAnyNumberOfHandlers)
{
    std::vector<std::unique_ptr<Log>> logs;
    const auto add = [&](const Program& program) {
        program.install();
        logs.push_back(std::make_unique<Log>());
        logs.back()->Begin();
        EXPECT_EQ(Arrives(), 1) << logs.size();
        for (const auto& log : logs)
            EXPECT_EQ(log->Came(), 1) << logs.size();
        EXPECT_GE(std::exchange(*program.heard, 0), 1);
    };
    [&]<int... Index>(std::integer_sequence<int, Index...>)
    {
        (add(Of<100 + Index>()), ...);
    }
    (std::make_integer_sequence<int, 24>());
}

} // namespace
