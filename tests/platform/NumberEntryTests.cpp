// What typing, stepping and scrubbing make of a number, and which phases of a run they tell of.
#include "platform/NumberEntry.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

using kv::NumberEntry;
using kv::NumberRun;

constexpr NumberRun kNothing;
constexpr NumberRun kBegin{true, false, false};
constexpr NumberRun kContinue{false, true, false};
constexpr NumberRun kEnd{false, false, true};
constexpr NumberRun kOnce{true, true, true};

NumberEntry At(int value)
{
    NumberEntry entry;
    entry.SetRange(0, 100);
    entry.SetValue(value);
    return entry;
}

TEST(NumberText, IsReadAsAWholeNumber)
{
    const struct
    {
        const wchar_t* text;
        std::optional<int> number;
    } cases[] = {{L"17", 17},
                 {L" 0017 ", 17},
                 {L"-5", -5},
                 {L"+5", 5},
                 {L"", {}},
                 {L" ", {}},
                 {L"-", {}},
                 {L"1.5", {}},
                 {L"#112233", {}},
                 {L"12 3", {}},
                 {L"9999999999", 2147483647},
                 {L"-2147483648", std::numeric_limits<int>::min()},
                 {L"-9999999999", std::numeric_limits<int>::min()}};
    for (const auto& one : cases)
        EXPECT_EQ(kv::ParseWholeNumber(one.text), one.number) << testing::PrintToString(one.text);
}

TEST(NumberTyping, ActsAtOnceWithinTheRange)
{
    NumberEntry entry = At(50);
    EXPECT_EQ(entry.Type(L"5"), kBegin);
    EXPECT_EQ(entry.Type(L"57"), kContinue);
    EXPECT_EQ(entry.Type(L"578"), kNothing) << "beyond the range it waits";
    EXPECT_EQ(entry.Value(), 57);
    EXPECT_EQ(entry.Commit(), (NumberRun{false, true, true}));
    EXPECT_EQ(entry.Value(), 100);
    EXPECT_EQ(entry.Commit(), kNothing);
}

TEST(NumberTyping, ThatNeverChangedTheNumberTellsNothing)
{
    NumberEntry entry = At(50);
    EXPECT_EQ(entry.Type(L""), kNothing);
    EXPECT_TRUE(entry.IsTyping());
    EXPECT_EQ(entry.Type(L"050"), kNothing);
    EXPECT_EQ(entry.Commit(), kNothing);
    EXPECT_EQ(entry.Type(L"999"), kNothing);
    EXPECT_EQ(entry.TakeBack(), kNothing);
    EXPECT_EQ(entry.Value(), 50);
    EXPECT_EQ(entry.Type(L"999"), kNothing);
    EXPECT_EQ(entry.Commit(), (NumberRun{true, false, true})) << "the first change is the clamped one";
}

TEST(NumberTyping, IsTakenBackToWhereItBegan)
{
    NumberEntry entry = At(50);
    entry.Type(L"5");
    entry.Type(L"51");
    EXPECT_EQ(entry.TakeBack(), kEnd);
    EXPECT_EQ(entry.Value(), 50);
    EXPECT_FALSE(entry.IsTyping());
}

TEST(NumberTyping, ReplacedByTheOwnerStillEndsItsRun)
{
    NumberEntry entry = At(50);
    entry.Type(L"5");
    entry.SetValue(80);
    EXPECT_EQ(entry.Value(), 80);
    EXPECT_EQ(entry.Commit(), kEnd);
    EXPECT_EQ(entry.Value(), 80);
}

TEST(NumberSteps, StopAtTheEndsOfTheRange)
{
    const struct
    {
        int from, steps, to;
    } cases[] = {{50, 1, 51}, {50, -10, 40}, {95, 10, 100}, {100, 1, 100}, {0, -1, 0}, {50, 2147483647, 100}};
    for (const auto& one : cases) {
        NumberEntry entry = At(one.from);
        EXPECT_EQ(entry.StepBy(one.steps), one.from == one.to ? kNothing : kOnce);
        EXPECT_EQ(entry.Value(), one.to) << one.from << " by " << one.steps;
    }
}

TEST(NumberScrub, CountsFromItsBeginning)
{
    NumberEntry entry = At(50);
    EXPECT_EQ(entry.Scrub(3), kNothing) << "none has begun";
    entry.BeginScrub();
    EXPECT_EQ(entry.Scrub(0), kNothing);
    EXPECT_EQ(entry.Scrub(3), kBegin);
    EXPECT_EQ(entry.Scrub(3), kNothing);
    EXPECT_EQ(entry.Scrub(-60), kContinue);
    EXPECT_EQ(entry.Value(), 0);
    EXPECT_EQ(entry.EndScrub(true), kEnd);
    EXPECT_EQ(entry.Value(), 50);
}

TEST(NumberRange, IsTurnedRoundAndClampsTheNumber)
{
    NumberEntry entry = At(50);
    entry.SetRange(20, -20);
    EXPECT_EQ(entry.Minimum(), -20);
    EXPECT_EQ(entry.Maximum(), 20);
    EXPECT_EQ(entry.Value(), 20);
}

} // namespace
