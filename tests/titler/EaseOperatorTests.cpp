#include "edit/Document.h"
#include "edit/EaseOperator.h"
#include "time/Transport.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace titler {
namespace {

constexpr const wchar_t* kTitle = L"title";
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct Operator : testing::Test
{
    Operator()
    {
        document.Edit(EditKind::Single, "", [](Project& project) {
            project.duration = 200;
            project.title[Property::Opacity].keys = {{0, 0}, {20, 100}, {50, 100}, {80, 10}};
            project.title[Property::X].keys = {{5, -10}};
            project.title[Property::Y].keys = {{0, 40}, {10, -20}, {20, -190}};
            project.title[Property::GradientOffset].keys = {{0, 0.07, {4, 0.3, 0.29, 0.3, -0.57}},
                                                            {9, -0.35}};
        });
        steps = document.Steps().count();
    }
    const KeyList& Keys() const { return document.Current().title[Property::Opacity].keys; }
    SKvParamEaseData Read()
    {
        SKvParamEaseData data;
        EXPECT_EQ(ease.GetEaseData(kTitle, L"opacity", data), 1);
        return data;
    }
    int NewSteps() { return document.Steps().count() - steps; }

    Document document;
    Transport transport{document, [] { return qint64(0); }};
    EaseOperator ease{document, transport};
    int steps = 0;
};

TEST_F(Operator, GivesTheSegmentAtTheCurrentTime)
{
    const struct
    {
        const char* name;
        int frame;
        double startX, endX, minimum, maximum;
        std::uint32_t lock;
    } rows[] = {
        {"rising: locked", 0, 0, 20, 0, 100, 1},
        {"within", 19, 0, 20, 0, 100, 1},
        {"flat: a span around the value, within the limits", 20, 20, 50, 0, 100, 0},
        {"falling: not locked, with room", 50, 50, 80, 0, 100, 0},
        {"behind the last key", 199, 50, 80, 0, 100, 0},
    };
    for (const auto& row : rows) {
        transport.Seek(row.frame);
        const SKvParamEaseData data = Read();
        EXPECT_EQ(data.startX, row.startX) << row.name;
        EXPECT_EQ(data.endX, row.endX) << row.name;
        EXPECT_EQ(data.minimum, row.minimum) << row.name;
        EXPECT_EQ(data.maximum, row.maximum) << row.name;
        EXPECT_EQ(data.lock, row.lock) << row.name;
    }
    SKvParamEaseData data;
    for (const auto& [object, name] : {std::pair(L"title", L"x"), std::pair(L"title", L"scale"),
                                       std::pair(L"title", L"size"), std::pair(L"clip", L"opacity")})
        EXPECT_EQ(ease.GetEaseData(object, name, data), 0) << name;
    EXPECT_EQ(ease.GetEaseData(nullptr, nullptr, data), 0);
}

TEST_F(Operator, KeysHaveRoomWithinTheLimits)
{
    const struct
    {
        int frame;
        double minimum, maximum;
    } rows[] = {{0, -50, 70}, {10, -200, 65}};
    for (const auto& row : rows) {
        transport.Seek(row.frame);
        SKvParamEaseData data;
        ASSERT_EQ(ease.GetEaseData(kTitle, L"y", data), 1);
        EXPECT_EQ(data.minimum, row.minimum) << row.frame;
        EXPECT_EQ(data.maximum, row.maximum) << row.frame;
    }
}

TEST_F(Operator, ShowsTheGradientOffsetInPercent)
{
    const KeyList& keys = document.Current().title[Property::GradientOffset].keys;
    const double before = keys[0].value;
    SKvParamEaseData data;
    ASSERT_EQ(ease.GetEaseData(kTitle, L"gradientOffset", data), 1);
    EXPECT_NEAR(data.startY, 7, 1e-9);
    EXPECT_NEAR(data.outTangentY, 29, 1e-9);
    EXPECT_NEAR(data.minimum, -56, 1e-9);
    EXPECT_NEAR(data.maximum, 28, 1e-9);
    ease.BeginEdit(kTitle, L"gradientOffset");
    data.endY = -250; // beyond the limits
    data.inTangentY = 50;
    ASSERT_EQ(ease.SetEaseData(kTitle, L"gradientOffset", data), 1);
    EXPECT_EQ(keys[0].value, before) << "to the bit";
    EXPECT_EQ(keys[1].value, -1);
    EXPECT_EQ(keys[0].ease.inY, 0.5);
}

TEST_F(Operator, StoresOrAppliesAPreset)
{
    const auto only = [](std::uint32_t kind) {
        SKvParamEaseData data{};
        data.kind = kind;
        return data;
    };
    ease.BeginEdit(kTitle, L"opacity");
    for (const std::uint32_t kind : {2u, 3u, 5u, 1u}) {
        EXPECT_EQ(ease.SetEaseData(kTitle, L"opacity", only(kind)), 1);
        EXPECT_EQ(Keys()[0].ease, PresetEase(kind));
        EXPECT_EQ(Keys()[0].value, 0);
        EXPECT_EQ(Keys()[1].value, 100);
    }
    transport.Seek(50);
    SKvParamEaseData data = Read();
    data.kind = 4;
    data.outTangentX = 0.25;
    data.outTangentY = -30;
    data.inTangentX = 0.5;
    data.startY = 90;
    data.endY = 1e6; // beyond the limits
    data.startX = 7; // keys keep their frames
    EXPECT_EQ(ease.SetEaseData(kTitle, L"opacity", data), 1);
    EXPECT_EQ(Keys()[2].ease, (Ease{4, 0.25, -30, 0.5, 0}));
    EXPECT_EQ(Keys()[2].value, 90);
    EXPECT_EQ(Keys()[2].frame, 50);
    EXPECT_EQ(Keys()[3].value, 100);
    EXPECT_EQ(ease.SetEaseData(kTitle, L"opacity", only(4)), 1); // all zero, but drawn: stored
    EXPECT_EQ(Keys()[2].value, 0);
    ease.CommitEdit(kTitle, L"opacity");
    EXPECT_EQ(NewSteps(), 1);
    EXPECT_EQ(document.Steps().undoText(), "ease opacity");
}

TEST_F(Operator, RefusesWhatItCannotStore)
{
    const Project before = document.Current();
    SKvParamEaseData data = Read();
    data.kind = 4;
    EXPECT_EQ(ease.SetEaseData(kTitle, L"opacity", data), 0) << "not within an edit";
    ease.BeginEdit(kTitle, L"opacity");
    EXPECT_EQ(ease.BeginEdit(kTitle, L"opacity"), 0) << "a second one";
    EXPECT_EQ(ease.SetEaseData(kTitle, L"x", data), 0) << "another parameter";
    for (double SKvParamEaseData::*field :
         {&SKvParamEaseData::startY, &SKvParamEaseData::inTangentX, &SKvParamEaseData::outTangentY}) {
        SKvParamEaseData bad = data;
        bad.*field = kNaN;
        EXPECT_EQ(ease.SetEaseData(kTitle, L"opacity", bad), 0);
    }
    for (const std::uint32_t kind : {0u, 6u}) {
        SKvParamEaseData bad = data;
        bad.kind = kind;
        EXPECT_EQ(ease.SetEaseData(kTitle, L"opacity", bad), 0);
    }
    EXPECT_TRUE(document.Current() == before);
    ease.CommitEdit(kTitle, L"opacity");
    EXPECT_EQ(NewSteps(), 0) << "nothing changed";
}

TEST_F(Operator, CancelRestoresExactly)
{
    const Project before = document.Current();
    document.Select(document.Selection().WithStop(2));
    ease.BeginEdit(kTitle, L"opacity");
    SKvParamEaseData data = Read();
    data.kind = 4;
    data.outTangentY = 12.5;
    ease.SetEaseData(kTitle, L"opacity", data);
    EXPECT_EQ(ease.GoNextKey(kTitle, L"opacity"), 1);
    data = Read();
    data.kind = 4;
    data.endY = 3;
    ease.SetEaseData(kTitle, L"opacity", data);
    EXPECT_FALSE(document.Current() == before); // live
    EXPECT_EQ(ease.CancelEdit(kTitle, L"opacity"), 1);
    EXPECT_TRUE(document.Current() == before);
    EXPECT_EQ(document.Selection().Stop(), 2);
    EXPECT_EQ(NewSteps(), 0);
    EXPECT_EQ(ease.CancelEdit(kTitle, L"opacity"), 0);
}

TEST_F(Operator, StepsThroughTheSegmentsAndTakesTheTimeAlong)
{
    const auto step = [&](bool next) {
        const int can = next ? ease.CanGoNextKey(kTitle, L"opacity") : ease.CanGoPrevKey(kTitle, L"opacity");
        const int went = next ? ease.GoNextKey(kTitle, L"opacity") : ease.GoPrevKey(kTitle, L"opacity");
        EXPECT_EQ(can, went);
        return went != 0;
    };
    transport.Seek(10);
    std::vector<int> frames;
    while (step(true))
        frames.push_back(transport.Frame());
    EXPECT_EQ(frames, (std::vector<int>{35, 65}));
    transport.Seek(190);
    frames.clear();
    while (step(false))
        frames.push_back(transport.Frame());
    EXPECT_EQ(frames, (std::vector<int>{35, 10}));
    document.Edit(EditKind::Single, "", [](Project& project) { project.duration = 40; });
    transport.Seek(39);
    EXPECT_FALSE(step(true)) << "a segment behind the project's end";
}

TEST_F(Operator, OutlivesWhateverHappensToTheProject)
{
    SKvParamEaseData data = Read();
    data.kind = 4;
    data.outTangentY = 5;

    ease.BeginEdit(kTitle, L"opacity");
    ease.SetEaseData(kTitle, L"opacity", data);
    document.Undo(); // ends the run as a step, and takes it back
    EXPECT_EQ(Keys()[0].ease.outY, 0);
    EXPECT_EQ(ease.SetEaseData(kTitle, L"opacity", data), 1); // another run
    EXPECT_EQ(ease.CancelEdit(kTitle, L"opacity"), 1);
    EXPECT_EQ(Keys()[0].ease.outY, 0);

    ease.BeginEdit(kTitle, L"opacity");
    document.Edit(EditKind::Single, "",
                  [](Project& project) { project.title[Property::Opacity].keys.resize(1); });
    EXPECT_EQ(ease.SetEaseData(kTitle, L"opacity", data), 0);
    EXPECT_EQ(ease.CanGoNextKey(kTitle, L"opacity"), 0);
    document.BeginRun("somebody else's");
    EXPECT_EQ(ease.CommitEdit(kTitle, L"opacity"), 1);
    EXPECT_TRUE(document.IsInRun());

    ease.BeginEdit(kTitle, L"opacity");
    document.New();
    EXPECT_EQ(ease.GetEaseData(kTitle, L"opacity", data), 0);
    EXPECT_EQ(ease.CancelEdit(kTitle, L"opacity"), 1);
    EXPECT_EQ(document.Current().title.text, "Title");
}

} // namespace
} // namespace titler
