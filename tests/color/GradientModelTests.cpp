// The rules of the gradient's stops.
#include "color/GradientBlend.h"
#include "color/GradientColour.h"
#include "color/GradientModel.h"
#include "color/PercentEntry.h"
#include "tests/color/GradientText.h"

#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>

namespace {

using kv::GradientModel;

constexpr std::uint32_t kBlue = 0xFF0000FFu;
constexpr std::uint32_t kYellow = 0xFFFFFF00u;
constexpr std::uint32_t kRed = 0xFFFF0000u;
constexpr std::uint32_t kMagenta = 0xFFFF00FFu;
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr SKvCGGradientKey kLone{kBlue, 0.6f, 0.5f};
constexpr float kInfinity = std::numeric_limits<float>::infinity();

GradientModel Model(const std::vector<SKvCGGradientKey>& keys, int selected = 0)
{
    GradientModel model;
    model.SetData(static_cast<int>(keys.size()), keys.data());
    model.Select(selected);
    return model;
}

std::string Text(const GradientModel& model)
{
    return GradientText(model.Keys(), model.Selected());
}

TEST(GradientModel, EditsOfTheFirstStops)
{
    const struct
    {
        const char* name;
        int selected;
        std::function<void(GradientModel&)> edit;
        const char* after;
    } cases[] = {
        {"as they are", 0, [](auto&) {}, "*B0/0 Y30 R60 M100"},
        {"past the next", 1, [](auto& m) { m.PlaceKey(1, 0.7); }, "B0/0 R60 *Y70 M100"},
        {"the first gets a mid point", 0, [](auto& m) { m.PlaceKey(0, 0.4); }, "Y30 *B40 R60 M100"},
        {"to the left, behind its equal", 2, [](auto& m) { m.PlaceKey(2, -5); }, "B0/0 *R0 Y30 M100"},
        {"another past the selected", 2, [](auto& m) { m.PlaceKey(1, 0.8); }, "B0/0 *R60 Y80 M100"},
        {"delete keeps the index", 1, [](auto& m) { m.DeleteCurrentKey(); }, "B0/0 *R60 M100"},
        {"delete of the last", 3, [](auto& m) { m.DeleteCurrentKey(); }, "*B0/0 Y30 R60"},
        {"add mixes", 0, [](auto& m) { m.AddKey(0.45f); }, "B0/0 Y30 *ffff7f00:45 R60 M100"},
        {"add before the first", 3, [](auto& m) { m.AddKey(-0.1f); }, "*B-10 B0 Y30 R60 M100"},
        {"add behind the last", 0, [](auto& m) { m.AddKey(1.1f); }, "B0/0 Y30 R60 M100 *M110"},
        {"insert to the next", 1, [](auto& m) { m.InsertKey(); }, "B0/0 Y30 *ffff7f00:45 R60 M100"},
        {"insert at the last", 3, [](auto& m) { m.InsertKey(); }, "B0/0 Y30 R60 *ffff007f:80 M100"},
        {"insert into nothing", 0, [](auto& m) { m.SetData(0, nullptr), m.InsertKey(); }, "*R50"},
        {"insert at a lone stop", 0, [](auto& m) { m.SetData(1, &kLone), m.InsertKey(); }, "*B30 B60"},
        {"reverse", 1, [](auto& m) { m.SetMidPoint(1, 0.2f), m.Reverse(); }, "M0/100 R40 *Y70 B100/80"},
        {"reflect at the end", 2, [](auto& m) { m.SetMidPoint(1, 0.2f), m.Reflect(); },
         "B0/0 Y15/20 *R30 M50 R70 Y85 B100/80"},
        {"reflect short of the end", 3, [](auto& m) { m.PlaceKey(3, 0.8), m.Reflect(); },
         "B0/0 Y15 R30 *M40 M60/100 R70 Y85 B100"},
        {"exchange before", 1, [](auto& m) { m.ExchangeBefore(); }, "Y0/0 *B30 R60 M100"},
        {"exchange after", 1, [](auto& m) { m.ExchangeAfter(); }, "B0/0 *R30 Y60 M100"},
        {"same space", 1, [](auto& m) { m.SameSpace(); }, "B0/0 *Y33.3 R66.7 M100"},
    };
    for (const auto& test : cases) {
        GradientModel model;
        model.Select(test.selected);
        test.edit(model);
        EXPECT_EQ(Text(model), test.after) << test.name;
    }
}

TEST(GradientModel, RefusalsChangeNothing)
{
    const auto refused = [](GradientModel model, int selected, bool (GradientModel::*edit)()) {
        model.Select(selected);
        const std::string before = Text(model);
        return !(model.*edit)() && Text(model) == before;
    };
    const GradientModel two = Model({{kBlue, 0, 0}, {kRed, 1, 0.5f}});
    const GradientModel none = Model({});
    std::vector<SKvCGGradientKey> many(255, {kBlue, 0.5f, 0.5f});
    EXPECT_TRUE(refused(two, 0, &GradientModel::DeleteCurrentKey));
    EXPECT_TRUE(refused(two, 0, &GradientModel::SameSpace));
    EXPECT_TRUE(refused(two, 0, &GradientModel::ExchangeBefore));
    EXPECT_TRUE(refused(two, 1, &GradientModel::ExchangeAfter));
    EXPECT_TRUE(refused(none, 0, &GradientModel::ExchangeAfter));
    EXPECT_TRUE(refused(two, 0, &GradientModel::ResetDefault));
    EXPECT_TRUE(refused(Model(many), 0, &GradientModel::InsertKey));
    EXPECT_FALSE(Model(many).AddKey(0.2f));
}

TEST(GradientModel, SortIsAnExchangeSort)
{
    // 2 and 3, at one place, are exchanged past one another: no library sort does that.
    GradientModel model = Model({{2, 0.5f, 0.1f}, {3, 0.5f, 0.2f}, {1, 0.2f, 0.3f}, {4, 0.9f, 0.4f}}, 1);
    const std::uint32_t id = model.IdOf(1);
    model.SortKeys();
    EXPECT_EQ(Text(model), "1:20/30 *3:50/20 2:50 4:90/40");
    EXPECT_EQ(model.IndexOf(id), 1);
}

TEST(GradientModel, SetDataLimits)
{
    std::vector<SKvCGGradientKey> keys(300);
    for (std::size_t i = 0; i < keys.size(); ++i)
        keys[i] = {static_cast<std::uint32_t>(i + 1), kNaN, 7.0f};
    GradientModel model;
    model.Select(3);
    // Whether it was done, the count and the selection afterwards.
    const auto set = [&model](int count, const SKvCGGradientKey* from) {
        const bool done = model.SetData(count, from);
        return std::array{done ? 1 : 0, model.Count(), model.Selected()};
    };
    EXPECT_EQ(set(3, nullptr), (std::array{0, 4, 3}));
    EXPECT_EQ(set(254, keys.data()), (std::array{1, 254, 3}));
    EXPECT_EQ(set(300, keys.data()), (std::array{1, 255, 3}));
    EXPECT_EQ(model.Keys()[254].colour, 255u);
    EXPECT_TRUE(std::isnan(model.Keys()[254].position));
    EXPECT_EQ(set(2, keys.data()), (std::array{1, 2, 0}));
    keys[0].colour = 99;
    EXPECT_EQ(set(-1, keys.data()), (std::array{1, 255, 0}));
    EXPECT_EQ(model.Keys()[0].colour, 1u) << "nothing is copied";
    EXPECT_EQ(set(0, nullptr), (std::array{1, 0, 0}));
    EXPECT_EQ(model.SelectedColour(), 0u);
    EXPECT_EQ(model.SelectedKey(), nullptr);

    model.SetDefaultData(-1, keys.data());
    EXPECT_FALSE(model.ResetDefault());
    model.SetDefaultData(300, keys.data());
    EXPECT_TRUE(model.ResetDefault());
    EXPECT_EQ(model.Count(), 255);
    model.SetDefaultData(4, nullptr);
    EXPECT_FALSE(model.ResetDefault());
}

TEST(GradientModel, ReflectCountsOnBeyondItsReach)
{
    std::vector<SKvCGGradientKey> keys(128, {kBlue, 0.5f, 0.5f});
    GradientModel model = Model(keys);
    model.Reflect();
    EXPECT_EQ(model.Count(), 256) << "nothing is written, the count grows";
    EXPECT_EQ(model.Keys()[0].position, 0.5f);
    EXPECT_EQ(model.Keys()[200].colour, 0u);
    model.Reflect();
    EXPECT_EQ(model.Count(), 511);
    model.Reverse();
    EXPECT_EQ(model.Count(), 511);
    keys.resize(127);
    model = Model(keys);
    model.Reflect();
    EXPECT_EQ(model.Count(), 254);
    EXPECT_EQ(model.Keys()[253].position, 0.75f);
}

TEST(GradientModel, MidPointRules)
{
    GradientModel model;
    model.Select(1);
    EXPECT_TRUE(model.IsMidPointShown(1) && model.IsMidPointShown(2));
    EXPECT_FALSE(model.IsMidPointShown(0) || model.IsMidPointShown(3));
    EXPECT_TRUE(model.SetMidPoint(1, -3));
    EXPECT_EQ(model.MidPoint(1), 0.05f);
    EXPECT_FALSE(model.SetMidPoint(1, 0.01f)) << "clamped to what it was";
    EXPECT_FALSE(model.SetMidPoint(0, 0.3f));
    EXPECT_FALSE(model.SetMidPoint(4, 0.3f));

    const float places[] = {0.25f, 0.5f, 0.75f};
    EXPECT_EQ(kv::SnapMidPoint(0.27f, places), 0.25f);
    EXPECT_EQ(kv::SnapMidPoint(0.31f, places), 0.31f);
}

TEST(GradientModel, IdentityFollowsTheStop)
{
    GradientModel model;
    const std::uint32_t yellow = model.IdOf(1);
    model.PlaceKey(1, 0.9);
    EXPECT_EQ(model.IndexOf(yellow), 2);
    model.Reverse();
    EXPECT_EQ(model.IndexOf(yellow), 1);
    const kv::GradientStops before = model.Stops();
    model.Select(1);
    model.DeleteCurrentKey();
    EXPECT_EQ(model.IndexOf(yellow), -1);
    model.AddKey(0.5f);
    EXPECT_NE(model.IdOf(model.Selected()), yellow);
    model.Restore(before);
    EXPECT_EQ(model.IndexOf(yellow), 1);
}

TEST(GradientColour, MixAndGrey)
{
    EXPECT_EQ(kv::MixColour(0xFF00FF01u, 0x00FF0002u), 0x7F7F7F01u);
    EXPECT_EQ(kv::DisabledGrey(0x80FF8000u), 0x803F3F3Fu) << "a sixth of the sum, alpha kept";
    EXPECT_EQ(kv::DrawOver(0x80000000u, 0xFFFFFFFFu), 0xFF7F7F7Fu);
}

TEST(GradientBlend, PresetOfTheFirstStops)
{
    const GradientModel model;
    const auto blend = kv::MakeBlend(model.Keys(), true);
    ASSERT_EQ(blend.size(), 7u);
    EXPECT_EQ(blend[1].colour, 0xFF7F7F7Fu);
    EXPECT_NEAR(blend[1].position, 0.15, 1e-6);
    EXPECT_EQ(kv::MakeBlend(model.Keys(), false)[2].colour, 0xFF555555u);
    EXPECT_EQ(kv::BlendColourAt(blend, 0.8), kv::MixColour(kRed, kMagenta));
}

TEST(GradientBlend, EndsAreAddedAndBadPlacesClamped)
{
    const auto places = [](std::vector<SKvCGGradientKey> keys) {
        std::vector<double> result;
        for (const kv::BlendEntry& entry : kv::MakeBlend(keys, true))
            result.push_back(entry.position);
        return result;
    };
    EXPECT_EQ(places({}), std::vector<double>{});
    EXPECT_EQ(places({{1, 0.5f, 0}}), (std::vector<double>{0, 0.5, 1}));
    EXPECT_EQ(places({{1, 0, 0}}), (std::vector<double>{0, 1}));
    EXPECT_EQ(places({{1, 0.25f, 0}, {2, 0.75f, 0.25f}}), (std::vector<double>{0, 0.25, 0.375, 0.75, 1}));
    EXPECT_EQ(places({{1, kInfinity, 0}, {2, -3, kNaN}, {3, kNaN, 5}}),
              (std::vector<double>{0, 0, 0, 0.5, 1}))
        << "in the order, and with the mid points, that the first edit will give them";
}

TEST(PercentEntry, ThreeDigitsAndOnePoint)
{
    const auto typed = [](const char* text) {
        kv::PercentEntry entry;
        for (const char* c = text; *c != 0; ++c)
            entry.Type(static_cast<std::uint32_t>(*c));
        return entry.Take();
    };
    EXPECT_EQ(typed("33.3"), 33.3 / 100);
    EXPECT_EQ(typed("1,5"), 0.015);
    EXPECT_EQ(typed("12.3.4"), typed("12.3")) << "a fourth digit and a second point are left out";
    EXPECT_EQ(typed("250"), 1.0);
    EXPECT_EQ(typed("."), std::nullopt);
}

} // namespace
