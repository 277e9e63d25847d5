// The ease as text, and places typed on a handle.
#include "curves/EaseText.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

using kv::EaseCurve;
using kv::EaseHandle;

constexpr char kNothing[] = "";

std::string Text(const std::optional<SKvCurvePoint>& point)
{
    std::ostringstream text;
    if (point)
        text << point->x << ',' << point->y;
    return text.str();
}

std::string Text(const std::optional<kv::EaseHandles>& handles)
{
    return handles ? Text(handles->out) + " " + Text(handles->in) : kNothing;
}

TEST(EaseText, CopiedText)
{
    EaseCurve curve{{{{0, 0}, {0.42, 0}, {0.58, 1}, {1, 1}}}, 0, 1, 0, 4};
    EXPECT_EQ(kv::CubicBezierText(curve), L"cubic-bezier(0.42, 0, 0.58, 1)");
    curve.points = {{{0, 1}, {-2, 1.5}, {7, -1}, {1, 0}}};
    EXPECT_EQ(kv::CubicBezierText(curve), L"cubic-bezier(0, -0.5, 1, 2)") << "falling, x clamped";
    curve.points = {{{0, 1}, {0.25, 3}, {0.75, 1}, {1, 1}}};
    EXPECT_EQ(kv::CubicBezierText(curve), L"cubic-bezier(0.25, 0, 0.75, 1)") << "flat";
    curve.points[3].x = 0;
    EXPECT_EQ(kv::CubicBezierText(curve), L"") << "empty segment";
}

TEST(EaseText, PastedText)
{
    const EaseCurve curve{{{{10, 100}, {14.2, 100}, {15.8, 300}, {20, 300}}}, 0, 400, 0, 4};
    const std::pair<std::wstring, const char*> cases[] = {
        {L"cubic-bezier(0.5, 0, 0.25, 1)", "15,100 12.5,300"},
        {L"  Cubic-Bezier( .5,-.5 ,+1 , 1.5e0 )\n", "15,0 20,400"},
        {L"0.5, 0, 0.25, 1", "15,100 12.5,300"},
        {L"0.5 0\t0.25 1", "15,100 12.5,300"},
        {L"-3 0 9 1", "10,100 20,300"},
        {L"", kNothing},
        {L"cubic-bezier(0.5, 0, 0.25)", kNothing},
        {L"cubic-bezier(0.5, 0, 0.25, 1", kNothing},
        {L"0.5,, 0, 0.25", kNothing},
        {L"0.5 0 0.25 1x", kNothing},
        {L"0.5 0-0.25 1 1", kNothing},
        {L"0 inf 1 nan", kNothing},
        {L"0 +-1 1 1", kNothing},
        {L"0 0 1 \u0661", kNothing},
        {L"0 0 1 1" + std::wstring(1000000, L' ') + L"1", kNothing},
    };
    for (const auto& [text, handles] : cases)
        EXPECT_EQ(Text(kv::ParseCubicBezier(text, curve)), handles)
            << testing::PrintToString(text.substr(0, 40));
}

TEST(EaseText, ItsOwnTextChangesNothing)
{
    EaseCurve curve{{{{0.1, 0.7}, {0.1 + 0.2, 1.0 / 3}, {0.777, -5.1}, {1.3, 0.9}}}, 0, 1, 0, 4};
    const auto same = kv::ParseCubicBezier(kv::CubicBezierText(curve), curve);
    ASSERT_TRUE(same);
    EXPECT_TRUE(same->out.x == curve.points[1].x && same->out.y == curve.points[1].y);
    EXPECT_TRUE(same->in.x == curve.points[2].x && same->in.y == curve.points[2].y);
    curve[EaseHandle::End].y = 0.7;
    EXPECT_EQ(Text(kv::ParseCubicBezier(L"0.5 9 0.5 9", curve)), "0.7,0.333333 0.7,-5.1") << "flat: y stays";
}

TEST(EaseEntry, TypedPlaces)
{
    const std::pair<const char*, const char*> cases[] = {
        {"0.5", "7,0.5"},      {"3, -.25", "3,-0.25"}, {" ,+2", "7,2"}, {"x1y2", "7,12"},    {"1e5", "7,15"},
        {"1, 2, 3", kNothing}, {"1,", kNothing},       {"-", kNothing}, {"1.2.3", kNothing},
    };
    for (const auto& [typed, place] : cases) {
        kv::EaseEntry entry;
        for (const char* c = typed; *c != 0; ++c)
            entry.Type(static_cast<unsigned char>(*c));
        EXPECT_EQ(Text(entry.Value({7, 8})), place) << typed;
    }
    kv::EaseEntry entry;
    for (int i = 0; i < 100000; ++i)
        entry.Type('1');
    EXPECT_LT(entry.Text().size(), 100u);
    entry.Clear();
    entry.Erase();
    EXPECT_FALSE(entry.IsPending());
}

} // namespace
