#include "edit/Document.h"
#include "project/TimeCode.h"
#include "time/TimeLayout.h"
#include "time/Transport.h"

#include <gtest/gtest.h>
#include <limits>

namespace titler {
namespace {

constexpr qint64 kMillisecond = 1000000;
constexpr qint64 kSecond = 1000 * kMillisecond;

struct CodeCase
{
    const char* name;
    EKvFrameRate rate;
    int frame;
    const char* code;
};

class Codes : public testing::TestWithParam<CodeCase>
{
};

TEST_P(Codes, AreWrittenAndRead)
{
    const auto& [name, rate, frame, code] = GetParam();
    EXPECT_EQ(TimeCode(frame, FrameRateOf(rate)).toStdString(), code);
    EXPECT_EQ(ParseTimeCode(code, FrameRateOf(rate)), frame);
}

INSTANTIATE_TEST_SUITE_P(
    TimeCode, Codes,
    testing::Values(CodeCase{"Zero", kKvFrameRate25, 0, "00:00:00:00"},
                    CodeCase{"Second", kKvFrameRate25, 37, "00:00:01:12"},
                    CodeCase{"FilmCountsTwentyFour", kKvFrameRate23_976, 24, "00:00:01:00"},
                    CodeCase{"BeforeTheFirstDrop", kKvFrameRate29_97, 1799, "00:00:59;29"},
                    CodeCase{"DropsTwo", kKvFrameRate29_97, 1800, "00:01:00;02"},
                    CodeCase{"BeforeTheSecondDrop", kKvFrameRate29_97, 3597, "00:01:59;29"},
                    CodeCase{"SecondDrop", kKvFrameRate29_97, 3598, "00:02:00;02"},
                    CodeCase{"BeforeTheTenthMinute", kKvFrameRate29_97, 17981, "00:09:59;29"},
                    CodeCase{"TenthMinuteKeepsAll", kKvFrameRate29_97, 17982, "00:10:00;00"},
                    CodeCase{"HourIsAnHour", kKvFrameRate29_97, 107892, "01:00:00;00"},
                    CodeCase{"DropsFour", kKvFrameRate59_94, 3600, "00:01:00;04"},
                    CodeCase{"TenthMinuteAtSixty", kKvFrameRate59_94, 35964, "00:10:00;00"},
                    CodeCase{"WholeThirtyDropsNone", kKvFrameRate30, 1800, "00:01:00:00"},
                    CodeCase{"ManyHours", kKvFrameRate25, 100 * 3600 * 25, "100:00:00:00"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(TimeCode, ReadsWhatPeopleType)
{
    const struct
    {
        const char* text;
        EKvFrameRate rate;
        std::optional<int> frame;
    } rows[] = {
        {"12", kKvFrameRate25, 12},
        {"112", kKvFrameRate25, 37},
        {"10000", kKvFrameRate25, 1500},
        {"1:12", kKvFrameRate25, 37},
        {" 1.12 ", kKvFrameRate25, 37},
        {"0:1,0", kKvFrameRate25, 25},
        {"00:01:00;00", kKvFrameRate29_97, 1800}, // left out: the next one
        {"00:01:00:01", kKvFrameRate29_97, 1800},
        {"00:00:00:25", kKvFrameRate25, {}},
        {"00:60:00:00", kKvFrameRate25, {}},
        {"1::2", kKvFrameRate25, {}},
        {"1:2:3:4:5", kKvFrameRate25, {}},
        {"", kKvFrameRate25, {}},
        {"-1", kKvFrameRate25, {}},
        {"99999999999999999999", kKvFrameRate25, {}},
        {"99999:00:00:00", kKvFrameRate60, {}}, // beyond an int
    };
    for (const auto& row : rows)
        EXPECT_EQ(ParseTimeCode(row.text, FrameRateOf(row.rate)), row.frame) << row.text;
}

TEST(TimeCode, FramesAndTimesAreInverses)
{
    for (int i = 0; i <= kKvFrameRate60; ++i) {
        const FrameRate rate = FrameRateOf(static_cast<EKvFrameRate>(i));
        for (qint64 frame = 0; frame < 1000000; frame = frame * 3 / 2 + 1) {
            const qint64 time = TimeOfFrame(frame, rate);
            EXPECT_EQ(FrameAtTime(time, rate), frame);
            EXPECT_EQ(FrameAtTime(time - 1, rate), std::max<qint64>(0, frame - 1));
            EXPECT_EQ(ParseTimeCode(TimeCode(int(frame), rate), rate), frame);
        }
    }
}

TEST(TimeCode, FramesGoThroughMilliseconds)
{
    for (int i = 0; i <= kKvFrameRate60; ++i) {
        const FrameRate rate = FrameRateOf(static_cast<EKvFrameRate>(i));
        for (qint64 frame = 0; frame < 0xFFFFFFFF; frame = frame * 9 / 8 + 1) {
            const qint64 time = MillisecondsOfFrame(static_cast<quint32>(frame), rate);
            EXPECT_EQ(FrameAtMilliseconds(time, rate), frame) << i;
            EXPECT_LE(time * kMillisecond, TimeOfFrame(frame, rate)) << i; // not one frame late
        }
    }
    const struct
    {
        EKvFrameRate rate;
        qint64 milliseconds;
        quint32 frame;
    } rows[] = {
        {kKvFrameRate25, 19, 0},
        {kKvFrameRate25, 20, 1},
        {kKvFrameRate25, -5, 0},
        {kKvFrameRate23_976, 3600000, 86314}, // by the clock, not by labels
        {kKvFrameRate29_97, 60000, 1798},
        {kKvFrameRate60, std::numeric_limits<qint64>::max(), 0xFFFFFFFE},
        {kKvFrameRate25, 999999999ll * 3600000, 0xFFFFFFFE},
    };
    for (const auto& row : rows)
        EXPECT_EQ(FrameAtMilliseconds(row.milliseconds, FrameRateOf(row.rate)), row.frame)
            << row.milliseconds;
}

struct Playing : testing::Test
{
    Playing()
    {
        document.Edit(EditKind::Single, "", [](Project& project) {
            project.video.frameRate = kKvFrameRate25;
            project.duration = 100;
        });
        QObject::connect(&transport, &Transport::FrameChanged, [this](int frame) { shown.push_back(frame); });
    }
    int At(qint64 time)
    {
        now = time;
        transport.Tick();
        return transport.Frame();
    }
    void SetDuration(int frames)
    {
        document.Edit(EditKind::Single, "", [&](Project& project) { project.duration = frames; });
    }
    void SetRate(EKvFrameRate rate)
    {
        document.Edit(EditKind::Single, "", [&](Project& project) {
            SKvVideoResolution video = project.video;
            video.frameRate = rate;
            SetVideoFormat(project, video);
        });
    }

    qint64 now = 0;
    Document document;
    Transport transport{document, [this] { return now; }};
    std::vector<int> shown;
};

TEST_F(Playing, FollowsTheClockAndLeavesOutWhatIsLate)
{
    transport.Seek(10);
    transport.Play();
    EXPECT_EQ(At(40 * kMillisecond - 1), 10);
    EXPECT_EQ(At(40 * kMillisecond), 11);
    EXPECT_EQ(At(kSecond), 35);
    transport.Seek(50); // goes on from there, a whole frame long
    EXPECT_EQ(At(kSecond + 39 * kMillisecond), 50);
    EXPECT_EQ(At(kSecond + 40 * kMillisecond), 51);
    transport.Seek(51); // an echo does not set the clock back
    EXPECT_EQ(At(kSecond + 80 * kMillisecond), 52);
    transport.Pause();
    EXPECT_EQ(At(2 * kSecond), 52);
    EXPECT_EQ(shown, (std::vector<int>{10, 11, 35, 50, 51, 52}));
}

TEST_F(Playing, DoesNotDrift)
{
    SetRate(kKvFrameRate29_97);
    SetDuration(kLongestDuration);
    transport.Play();
    const FrameRate rate = FrameRateOf(kKvFrameRate29_97);
    for (qint64 time = 0, step = 1; time < 3600 * kSecond; time += 7 * kSecond + step++ % 97 * kMillisecond)
        ASSERT_EQ(At(time), FrameAtTime(time, rate));
    EXPECT_EQ(At(3600 * kSecond), 107892);
}

TEST_F(Playing, EndsOrLoops)
{
    transport.Play();
    EXPECT_EQ(At(100 * kSecond), 99);
    EXPECT_FALSE(transport.IsPlaying());
    EXPECT_EQ(shown, std::vector<int>{99});
    transport.Play(); // at the end: from the begin
    EXPECT_EQ(transport.Frame(), 0);
    transport.SetLoop(true);
    EXPECT_EQ(At(now + 4 * kSecond + 40 * kMillisecond), 1);
    EXPECT_EQ(At(now + 40 * kSecond), 1); // ten rounds on
    transport.SetLoop(false);             // what was played before does not count
    EXPECT_TRUE(transport.IsPlaying());
    EXPECT_EQ(At(now + 40 * kMillisecond), 2);
    SetDuration(1);
    EXPECT_EQ(At(now + kSecond), 0);
    transport.SetLoop(true);
    transport.Play();
    EXPECT_EQ(At(now + kSecond), 0);
}

TEST_F(Playing, ADurationThatChangesDoesNotMakeItJump)
{
    transport.SetLoop(true);
    transport.Play();
    EXPECT_EQ(At(6 * kSecond), 50); // in the second round
    SetDuration(120);
    EXPECT_EQ(transport.Frame(), 50);
    EXPECT_EQ(At(6 * kSecond + 40 * kMillisecond), 51);
}

TEST_F(Playing, UndoNeverMovesTheTime)
{
    transport.Seek(37);
    document.Edit(EditKind::Single, "", [](Project& project) { project.title.bold = false; });
    transport.Seek(81);
    document.Undo();
    EXPECT_EQ(transport.Frame(), 81);
    SetRate(kKvFrameRate23_976);
    EXPECT_EQ(transport.Frame(), 78); // 3.24 s
    EXPECT_EQ(document.Current().duration, 96);
    document.Undo();
    EXPECT_EQ(transport.Frame(), 81);
    SetDuration(10);
    EXPECT_EQ(transport.Frame(), 9);
    document.Undo();
    EXPECT_EQ(transport.Frame(), 81);
    transport.Play();
    document.New();
    EXPECT_EQ(transport.Frame(), 0);
    EXPECT_FALSE(transport.IsPlaying());
}

TEST(TimeLayout, TicksStandOnTheTimeCode)
{
    const struct
    {
        const char* name;
        EKvFrameRate rate;
        TimeView view;
        std::vector<int> majors;
    } rows[] = {
        {"seconds", kKvFrameRate25, {0, 150}, {0, 25, 50, 75, 100, 125, 150}},
        {"frames", kKvFrameRate25, {10, 8}, {10, 11, 12, 13, 14, 15, 16, 17, 18}},
        {"minutes of drop frame", kKvFrameRate29_97, {1700, 9000}, {1800, 3598, 5396, 7194, 8992}},
        {"no label on a number that is left out",
         kKvFrameRate29_97,
         {1796, 8},
         {1796, 1797, 1798, 1799, 1800, 1801, 1802, 1803, 1804}},
        {"one frame", kKvFrameRate25, {0, 1}, {0, 1}},
    };
    for (const auto& row : rows) {
        const TimeLayout layout({924, 100}, row.view, 1);
        std::vector<int> majors;
        for (const TimeTick& tick : layout.Ticks(FrameRateOf(row.rate), 70))
            if (tick.major)
                majors.push_back(tick.frame);
        EXPECT_EQ(majors, row.majors) << row.name;
        EXPECT_EQ(layout.NearestFrame(layout.ToX(row.view.first)), int(row.view.first)) << row.name;
        EXPECT_EQ(layout.NearestFrame(1e6), int(row.view.first + row.view.span)) << row.name;
    }
}

TEST(TimeLayout, ViewsStayWithinTheProject)
{
    const TimeView whole{0, 1000};
    const TimeView near = whole.Zoomed(0.1, 300, 1000);
    EXPECT_DOUBLE_EQ(near.span, 100);
    EXPECT_DOUBLE_EQ(near.first, 270); // 300 stays at 30 %
    EXPECT_EQ(near.Zoomed(1e-9, 300, 1000).span, 8);
    EXPECT_EQ(near.Zoomed(1e9, 300, 1000).span, 1000);
    EXPECT_EQ(near.Moved(5000, 1000).first, 900);
    EXPECT_EQ(near.Moved(-5000, 1000).first, 0);
    EXPECT_EQ(near.Showing(400, 1000).first, 300);
    EXPECT_EQ(near.Showing(10, 1000).first, 10);
    EXPECT_EQ(near.Moved(0, 50).span, 50); // the project has become shorter
    EXPECT_EQ(TimeView().Zoomed(2, 0, 0).span, 1);
}

} // namespace
} // namespace titler
