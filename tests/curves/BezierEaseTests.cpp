// The curve of keys, and the fast ease beside a slow one.
#include "KvBezierCurve2D.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(BezierCurve, KeysAndPath)
{
    IKvBezierCurve2D* curve = nullptr;
    ASSERT_EQ(KvCreateBezierCurve2D(&curve), 1);
    EXPECT_EQ(curve->AddKey({7, -1, 1, 0, 0, 0, 2, 3, {0, 9, 1}}), 1);
    KvBezierPath path;
    EXPECT_EQ(curve->AddToPath(path), 1);
    EXPECT_TRUE(path.empty()) << "of one key";
    EXPECT_EQ(curve->AddKey({0, -1, 5, 0, 0, -2, 0, 0}), 1);
    const SKvBezierKey bad{0, -1, 5, std::nanf("")};
    EXPECT_EQ(curve->AddKey(bad) + curve->SetKey(0, bad), 0);
    SKvBezierKey key;
    EXPECT_EQ(curve->GetKey(2, key) + curve->GetKey(-1, key), 0);
    ASSERT_EQ(curve->GetKey(0, key), 1);
    EXPECT_TRUE(key.index == 0 && key.flags == 7 && key.reserved[1] == 9);
    EXPECT_EQ(curve->SetKey(1, {0, 17, 5, 1, 0, -2, 0, 0}), 1);
    ASSERT_EQ(curve->GetKey(1, key), 1);
    EXPECT_EQ(key.index, 1);
    EXPECT_EQ(curve->AddToPath(path), 1);
    ASSERT_EQ(path.size(), 1u);
    const double expected[4][2] = {{1, 0}, {3, 3}, {5, -1}, {5, 1}};
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_TRUE(path[0].points[i].x == expected[i][0] && path[0].points[i].y == expected[i][1]) << i;
    EXPECT_EQ(curve->Release(), 1);
}

long double Cubic(long double t, long double p0, long double c0, long double c1, long double p1)
{
    const long double s = 1 - t;
    return s * s * s * p0 + 3 * s * s * t * c0 + 3 * s * t * t * c1 + t * t * t * p1;
}

// Largest error of x as a fraction of the width: with control values of thirds, y is the parameter.
double WorstError(double start, double out, double in, double end, const std::vector<double>& parts)
{
    const double points[] = {start, 0, out, 1.0 / 3, in, 2.0 / 3, end, 1};
    const KvBezierEase ease(points);
    long double worst = 0;
    for (const double part : parts) {
        const double x = std::lerp(start, end, part);
        const long double found = Cubic(ease.Value(x), start, out, in, end);
        const long double error = std::abs(found - x) / (static_cast<long double>(end) - start);
        if (std::isnan(error))
            return kNaN; // which std::max would pass over
        worst = std::max(worst, error);
    }
    return static_cast<double>(worst);
}

// Evenly, and closer and closer to both ends and the middle.
std::vector<double> Parts()
{
    std::vector<double> parts;
    for (int i = 0; i <= 2000; ++i)
        parts.push_back(i / 2000.0);
    for (double distance = 0.3; distance > 1e-16; distance *= 0.7) {
        for (const double part : {distance, 0.5 - distance, 0.5 + distance, 1 - distance})
            parts.push_back(part);
    }
    return parts;
}

TEST(BezierEase, ErrorOfXOfEveryRisingSegment)
{
    const std::vector<double> parts = Parts();
    const double hard[][2] = {{0.42, 0.58}, {0.25, 0.25},       {1, 0},     {0, 0},       {1, 1},
                              {0, 1},       {0, 0.5},           {0.5, 1},   {0.999, 0},   {1, 1e-9},
                              {1e-9, 1e-9}, {1 - 1e-12, 1e-12}, {1.2, 0.8}, {-1e-17, 0.5}};
    for (const auto& [out, in] : hard)
        EXPECT_LE(WorstError(0, out, in, 1, parts), 1e-12) << out << ", " << in;
    std::mt19937 random(17);
    std::uniform_real_distribution<double> fraction(0, 1);
    for (int i = 0; i < 300; ++i) {
        const double start = 100 * (fraction(random) - 0.5);
        const double width = std::pow(10, 6 * fraction(random) - 2);
        const double out = start + width * fraction(random);
        const double in = start + width * fraction(random);
        EXPECT_LE(WorstError(start, out, in, start + width, parts), 1e-12) << out << ", " << in;
    }
}

// The first parameter at which a segment from (0, 0) to (1, 1) has an x, by walking and then halving.
double PlainValue(const double p[8], double x)
{
    constexpr int steps = 20000;
    const auto at = [p](long double t) { return Cubic(t, p[0], p[2], p[4], p[6]); };
    int i = 1;
    while (i < steps && !(at(static_cast<long double>(i - 1) / steps) <= x &&
                          at(static_cast<long double>(i) / steps) >= x))
        ++i;
    long double low = static_cast<long double>(i - 1) / steps;
    long double high = static_cast<long double>(i) / steps;
    for (int halving = 0; halving < 60; ++halving) {
        const long double middle = (low + high) / 2;
        (at(middle) < x ? low : high) = middle;
    }
    return static_cast<double>(Cubic(low, p[1], p[3], p[5], p[7]));
}

TEST(BezierEase, ValuesBesideAPlainReckoningAlsoOfLoops)
{
    const double shapes[][4] = {{0.42, 0, 0.58, 1}, {0.3, -0.5, 0.7, 1.6}, {1, 0, 0, 1},
                                {0, 0.6, 0, 1},     {2, 0, -1, 1},         {-0.5, 2, 0.4, -1},
                                {0.6, 2, 1.7, 0},   {-1, 0, 2, 1},         {3, 1, 0.2, 0.1}};
    for (const auto& [a, b, c, d] : shapes) {
        const double points[] = {0, 0, a, b, c, d, 1, 1};
        const KvBezierEase ease(points);
        for (double x = 0.0137; x < 1; x += 0.0571)
            EXPECT_NEAR(ease.Value(x), PlainValue(points, x), 1e-9) << a << ", " << c << " at " << x;
    }
}

TEST(BezierEase, OutsideStraightAndDegenerate)
{
    const struct
    {
        const char* name;
        double points[8];
        double x;
        double value;
    } cases[] = {
        {"before", {1, 5, 2, 5, 2, 9, 3, 9}, 0, 5},
        {"at the start", {1, 5, 2, 5, 2, 9, 3, 9}, 1, 5},
        {"not a number", {1, 5, 2, 5, 2, 9, 3, 9}, kNaN, 5},
        {"at the end", {1, 5, 2, 5, 2, 9, 3, 9}, 3, 9},
        {"behind", {1, 5, 2, 5, 2, 9, 3, 9}, kInfinity, 9},
        {"middle", {1, 5, 2, 5, 2, 9, 3, 9}, 2, 7},
        {"no tangents, a straight line", {1, 5, 1, 5, 3, 9, 3, 9}, 1.5, 6},
        {"empty, there", {1, 5, 1, 5, 1, 9, 1, 9}, 1, 9},
        {"reversed, before its end", {3, 5, 2, 5, 2, 9, 1, 9}, 0.5, 5},
        {"a handle that is not a number", {1, 5, kNaN, 5, 2, 9, 3, 9}, 2, 5},
        {"a value that is not a number", {1, kNaN, 2, 5, 2, 9, 3, 9}, 2, 0},
        {"an end that is not a number", {1, 5, 2, 5, 2, 9, kNaN, 9}, 2, 9},
        {"a width beyond every number", {-1e308, 5, 0, 5, 0, 9, 1.7e308, 9}, 0, 5},
        {"a width next to nothing", {0, 5, 0, 5, 0, 9, 5e-324, 9}, 0, 5},
        {"handles too far away", {0, 5, 1e300, 5, -1e300, 9, 1, 9}, 0.5, 5},
    };
    for (const auto& row : cases)
        EXPECT_DOUBLE_EQ(KvBezierEase(row.points).Value(row.x), row.value) << row.name;
    EXPECT_EQ(KvBezierEase().Value(0.3), 0.3);
}

TEST(BezierEase, Speed)
{
    const struct
    {
        const char* name;
        double points[8];
        double x;
        double speed;
    } cases[] = {
        {"straight", {1, 5, 1, 5, 3, 9, 3, 9}, 1.5, 2},
        {"its middle", {0, 0, 2, 0, 2, 8, 4, 8}, 2, 4},
        {"vertical middle", {0, 0, 1, 0, 0, 1, 1, 1}, 0.5, kInfinity},
        {"falling vertically", {0, 1, 0, 0.5, 1, 0, 1, 0}, 0, -kInfinity},
        {"no tangent at the start", {0, 0, 0, 0, 0.5, 1, 1, 1}, 0, 2},
        {"no tangent at the end", {0, 0, 0.5, 0, 1, 1, 1, 1}, 1, 2},
        {"a step", {1, 5, 1, 5, 1, 9, 1, 9}, 1, 0},
    };
    for (const auto& row : cases) {
        const double speed = KvBezierEase(row.points).Speed(row.x);
        if (std::isinf(row.speed))
            EXPECT_EQ(speed, row.speed) << row.name;
        else
            EXPECT_NEAR(speed, row.speed, 1e-9) << row.name;
    }
}

} // namespace
