// The ease as text, and places typed on a handle.
#include "curves/EaseText.h"

#include <clocale>
#include <gtest/gtest.h>

namespace {

using kv::EaseCurve;
using kv::EaseHandle;

EaseCurve Curve()
{
    return {{{{10, 100}, {14.2, 100}, {15.8, 300}, {20, 300}}}, 0, 400, 0, 4};
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
    const struct
    {
        const wchar_t* text;
        bool isRead;
        SKvCurvePoint out = {};
        SKvCurvePoint in = {};
    } cases[] = {
        {L"cubic-bezier(0.5, 0, 0.25, 1)", true, {15, 100}, {12.5, 300}},
        {L"  Cubic-Bezier( .5,-.5 ,+1 , 1.5e0 )\n", true, {15, 0}, {20, 400}},
        {L"0.5, 0, 0.25, 1", true, {15, 100}, {12.5, 300}},
        {L"0.5 0\t0.25 1", true, {15, 100}, {12.5, 300}},
        {L"-3 0 9 1", true, {10, 100}, {20, 300}},
        {L"", false},
        {L"cubic-bezier(0.5, 0, 0.25)", false},
        {L"cubic-bezier(0.5, 0, 0.25, 1", false},
        {L"0.5, 0, 0.25, 1, 1", false},
        {L"0.5,, 0, 0.25", false},
        {L"0.5, 0, 0.25, 1,", false},
        {L"0.5 0 0.25 1;", false},
        {L"0.5 0 0.25 1x", false},
        {L"0.5 0-0.25 1 1", false},
        {L"nan 0 1 1", false},
        {L"0 inf 1 1", false},
        {L"0 1e999 1 1", false},
        {L"0 + 1 1", false},
        {L"0 +-1 1 1", false},
        {L"0 0 1 \u0661", false},
        {L"steps(4)", false},
    };
    for (const auto& row : cases) {
        const auto handles = kv::ParseCubicBezier(row.text, Curve());
        ASSERT_EQ(handles.has_value(), row.isRead) << testing::PrintToString(row.text);
        if (!handles)
            continue;
        EXPECT_DOUBLE_EQ(handles->out.x, row.out.x) << testing::PrintToString(row.text);
        EXPECT_DOUBLE_EQ(handles->out.y, row.out.y) << testing::PrintToString(row.text);
        EXPECT_DOUBLE_EQ(handles->in.x, row.in.x) << testing::PrintToString(row.text);
        EXPECT_DOUBLE_EQ(handles->in.y, row.in.y) << testing::PrintToString(row.text);
    }
    EXPECT_FALSE(kv::ParseCubicBezier(L"0 0 1 1" + std::wstring(1000000, L' ') + L"1", Curve()));
}

TEST(EaseText, ItsOwnTextChangesNothingInAnyLocale)
{
    const char* const before = std::setlocale(LC_ALL, "de_DE.UTF-8");
    EaseCurve curve = Curve();
    curve.points = {{{0.1, 0.7}, {0.1 + 0.2, 1.0 / 3}, {0.777, -5.1}, {1.3, 0.9}}};
    const auto same = kv::ParseCubicBezier(kv::CubicBezierText(curve), curve);
    if (before != nullptr)
        std::setlocale(LC_ALL, "C");
    ASSERT_TRUE(same);
    EXPECT_EQ(same->out.x, curve[EaseHandle::Out].x);
    EXPECT_EQ(same->out.y, curve[EaseHandle::Out].y);
    EXPECT_EQ(same->in.x, curve[EaseHandle::In].x);
    EXPECT_EQ(same->in.y, curve[EaseHandle::In].y);
    curve[EaseHandle::End].y = 0.7;
    const auto flat = kv::ParseCubicBezier(L"0.5 9 0.5 9", curve);
    ASSERT_TRUE(flat);
    EXPECT_EQ(flat->out.y, curve[EaseHandle::Out].y) << "a flat segment keeps y";
    EXPECT_DOUBLE_EQ(flat->out.x, 0.7);
}

TEST(EaseEntry, TypedPlaces)
{
    const struct
    {
        const char* typed;
        bool makesSense;
        SKvCurvePoint place = {};
    } cases[] = {
        {"0.5", true, {7, 0.5}}, {"3, -.25", true, {3, -0.25}},
        {"3,4", true, {3, 4}},   {" ,+2", true, {7, 2}},
        {"x1y2", true, {7, 12}}, {"1, 2, 3", false},
        {"1,", false},           {"-", false},
        {"1.2.3", false},        {"1e5", true, {7, 15}},
    };
    for (const auto& row : cases) {
        kv::EaseEntry entry;
        for (const char* c = row.typed; *c != 0; ++c)
            entry.Type(static_cast<unsigned char>(*c));
        const auto place = entry.Value({7, 8});
        ASSERT_EQ(place.has_value(), row.makesSense) << row.typed;
        EXPECT_EQ(place.value_or(SKvCurvePoint{}).x, row.place.x) << row.typed;
        EXPECT_EQ(place.value_or(SKvCurvePoint{}).y, row.place.y) << row.typed;
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
