#include "KvQt.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace {

using Keys = std::vector<SKvCGGradientKey>;
using Colour = std::array<double, 4>;

constexpr float kHalf = 0.5f;

Colour Channels(DWORD colour)
{
    return {double(colour >> 24), double(colour >> 16 & 255), double(colour >> 8 & 255),
            double(colour & 255)};
}

Colour Between(const Colour& a, const Colour& b, double part)
{
    Colour colour;
    for (std::size_t i = 0; i < colour.size(); ++i)
        colour[i] = a[i] + (b[i] - a[i]) * part;
    return colour;
}

/// What the control shows between the places of its sorted stops.
Colour Shown(const Keys& keys, double place)
{
    const auto next =
        std::find_if(keys.begin(), keys.end(), [&](const auto& key) { return key.position > place; });
    if (next == keys.begin() || next == keys.end())
        return Channels((next == keys.end() ? keys.back() : keys.front()).colour);
    const SKvCGGradientKey& last = *(next - 1);
    const double part = (place - last.position) / (double{next->position} - last.position);
    const Colour from = Channels(last.colour);
    const Colour to = Channels(next->colour);
    const Colour mix = Between(from, to, 0.5);
    const double mid = next->midPoint;
    return part < mid ? Between(from, mix, part / mid) : Between(mix, to, (part - mid) / (1 - mid));
}

/// What the toolkit shows.
Colour Painted(const QGradientStops& stops, double place)
{
    const auto next =
        std::find_if(stops.begin(), stops.end(), [&](const auto& stop) { return stop.first > place; });
    if (next == stops.begin() || next == stops.end())
        return Channels((next == stops.end() ? stops.back() : stops.front()).second.rgba());
    const QGradientStop& last = *(next - 1);
    return Between(Channels(last.second.rgba()), Channels(next->second.rgba()),
                   (place - last.first) / (next->first - last.first));
}

/// Mixes are rounded to whole numbers.
void ExpectLooksTheSame(const Keys& keys, const QGradientStops& stops)
{
    for (double place = 0.003; place < 1; place += 0.0171) {
        const Colour shown = Shown(keys, place);
        const Colour painted = Painted(stops, place);
        for (std::size_t i = 0; i < shown.size(); ++i)
            ASSERT_NEAR(shown[i], painted[i], 1.001) << "channel " << i << " at " << place;
    }
}

void ExpectSame(const Keys& got, const Keys& keys)
{
    ASSERT_EQ(got.size(), keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(got[i].colour, keys[i].colour) << i;
        EXPECT_EQ(got[i].position, keys[i].position) << i;
        const bool hasMidPoint = i > 0 && keys[i].position > keys[i - 1].position;
        EXPECT_EQ(got[i].midPoint, hasMidPoint ? keys[i].midPoint : kHalf) << i;
    }
}

void ExpectRoundTrip(const Keys& keys)
{
    UINT loss = 99;
    ExpectSame(KvFromGradientStops(KvToGradientStops(keys), &loss), keys);
    EXPECT_EQ(loss, 0u);
    const QLinearGradient gradient = KvToLinearGradient(keys, QRectF(0, 0, 100, 10));
    ExpectSame(KvFromGradient(gradient, &loss), keys);
    EXPECT_EQ(loss, 0u);
    ExpectLooksTheSame(keys, gradient.stops());
}

/// Values of which many are the mix, the middle or the same as others.
struct Few
{
    template <std::size_t N, typename T>
    T One(const T (&values)[N])
    {
        return values[random() % N];
    }
    DWORD Word()
    {
        return One({0xFF000000u, 0xFF404040u, 0xFF7F7F7Fu, 0xFF808080u, 0xFFBFBFBFu, 0xFFFFFFFFu});
    }
    float Place() { return One({0.0f, 0.125f, 0.2f, 0.25f, 0.4f, 0.5f, 0.75f, 0.8f, 1.0f}); }
    float MidPoint() { return One({0.5f, 0.5f, 0.5f, 0.25f, 0.3f, 0.05f, 0.95f, 0.49999997f}); }
    std::mt19937 random{5};
};

// What a painter makes of the toolkit's gradient is what the control shows, and comes back bit by bit.
TEST(KvQtGradient, ComesBackAndLooksTheSame)
{
    std::mt19937 random(7);
    for (int round = 0; round < 50; ++round) {
        Keys keys(2 + random() % 8);
        for (std::size_t i = 0; i < keys.size(); ++i)
            keys[i] = {static_cast<DWORD>(random()),
                       static_cast<float>(i) / static_cast<float>(keys.size() - 1),
                       0.05f + 0.009f * static_cast<float>(random() % 100)};
        ExpectRoundTrip(keys);
    }
    Few few;
    for (int round = 0; round < 5000 && !testing::Test::HasFailure(); ++round) {
        SCOPED_TRACE(round);
        Keys keys(1 + few.random() % 8);
        for (SKvCGGradientKey& key : keys)
            key = {few.Word(), few.Place(), few.MidPoint()};
        std::stable_sort(keys.begin(), keys.end(),
                         [](const auto& a, const auto& b) { return a.position < b.position; });
        ExpectRoundTrip(keys);
    }
    // The narrowest segments, beside a pile at the end.
    const float almost = std::nextafter(1.0f, 0.0f);
    ExpectRoundTrip(
        {{1, 0, kHalf}, {9, 1e-45f, kHalf}, {9, almost, 0.05f}, {9, 1, 0.95f}, {9, 1, kHalf}, {9, 1, kHalf}});
}

// The toolkit's own stops, too: nothing is read into them that would be written otherwise.
TEST(KvQtGradient, OfTheToolkitLooksTheSameAndComesBack)
{
    Few few;
    for (int round = 0; round < 5000 && !testing::Test::HasFailure(); ++round) {
        SCOPED_TRACE(round);
        QGradientStops stops(1 + few.random() % 8);
        for (QGradientStop& stop : stops)
            stop = {few.Place(), KvToQColor(few.Word())};
        std::stable_sort(stops.begin(), stops.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
        UINT loss = 99;
        const Keys keys = KvFromGradientStops(stops, &loss);
        ExpectLooksTheSame(keys, stops);
        const QGradientStops back = KvToGradientStops(keys);
        ASSERT_EQ(back.size(), stops.size());
        bool isMoved = false;
        for (qsizetype i = 0; i < stops.size(); ++i) {
            EXPECT_EQ(back[i].second, stops[i].second) << i;
            EXPECT_NEAR(back[i].first, stops[i].first, 1e-7) << i;
            isMoved |= std::abs(back[i].first - stops[i].first) > 1e-12;
        }
        EXPECT_EQ(loss, isMoved ? UINT{kKvLossPlace} : 0u);
    }
}

TEST(KvQtGradient, StopsBeyondTheEndsComeToThem)
{
    UINT loss = 0;
    const Keys keys =
        KvFromGradientStops({{-0.5, Qt::red}, {std::nan(""), Qt::blue}, {1.5, Qt::green}}, &loss);
    ExpectSame(keys, {{0xFFFF0000, 0, 0.5f}, {0xFF0000FF, 0, 0.5f}, {0xFF00FF00, 1, 0.5f}});
    EXPECT_EQ(loss, UINT{kKvLossPlace});
}

TEST(KvQtGradient, ReadsMidPointsOneByOne)
{
    const QColor dark(0x40, 0x40, 0x40);
    const QColor grey(0x80, 0x80, 0x80);
    const QColor light(0xC0, 0xC0, 0xC0);
    ExpectSame(KvFromGradientStops({{0, Qt::black}, {0.2, dark}, {0.4, grey}, {1, light}}),
               {{0xFF000000, 0, kHalf}, {0xFF404040, 0.2f, kHalf}, {0xFFC0C0C0, 1, 0.25f}});
    ExpectSame(KvFromGradientStops({{0, Qt::red}, {0.5, Qt::red}, {1, Qt::red}}),
               {{0xFFFF0000, 0, kHalf}, {0xFFFF0000, 0.5f, kHalf}, {0xFFFF0000, 1, kHalf}});
    EXPECT_TRUE(KvFromGradientStops({}).empty());
    EXPECT_TRUE(KvToGradientStops({}).empty());
}

// As the control takes them: the first stop's mid point means nothing wherever it is sorted to.
TEST(KvQtGradient, SortsAndClampsAsTheControlDoes)
{
    ExpectSame(KvFromGradientStops(KvToGradientStops({{2, 1, 0}, {1, 0, 0.3f}})),
               {{1, 0, kHalf}, {2, 1, kHalf}});
    ExpectSame(
        KvFromGradientStops(KvToGradientStops({{1, -3, kHalf}, {3, std::nanf(""), kHalf}, {2, 7, 0.3f}})),
        {{1, 0, kHalf}, {3, 0, kHalf}, {2, 1, 0.3f}});
}

TEST(KvQtGradient, SaysWhatIsLost)
{
    UINT loss = 0;
    QRadialGradient radial(0, 0, 10);
    radial.setSpread(QGradient::ReflectSpread);
    radial.setStops({{0, Qt::transparent}, {1, Qt::red}});
    EXPECT_EQ(KvFromGradient(radial, &loss).size(), 2u);
    EXPECT_EQ(loss, UINT{kKvLossShape | kKvLossSpread | kKvLossPremultiplied});
    EXPECT_EQ(KvFromGradient(QLinearGradient(0, 0, 5, 5), &loss).size(), 2u);
    EXPECT_EQ(loss, UINT{kKvLossDirection});
    QGradientStops many;
    for (int i = 0; i < 300; ++i)
        many << QGradientStop(i / 512.0, i % 2 ? Qt::red : Qt::blue);
    EXPECT_EQ(KvFromGradientStops(many, &loss).size(), 255u);
    EXPECT_EQ(loss, UINT{kKvLossStops});
    // Of stops that become mid points, too.
    const QColor fine = QColor::fromRgba64(0x7f80, 0x7f80, 0x7f80);
    EXPECT_EQ(KvFromGradientStops({{0, Qt::black}, {0.25, fine}, {1, Qt::white}}, &loss).size(), 2u);
    EXPECT_EQ(loss, UINT{kKvLossPrecision});
    EXPECT_EQ(KvFromGradientStops({{0, Qt::black}, {0.25, QColor()}, {1, Qt::black}}, &loss).size(), 3u);
    EXPECT_EQ(loss, UINT{kKvLossInvalid});
    EXPECT_EQ(KvFromGradientStops({{0, Qt::red}, {0.3, Qt::blue}}, &loss)[1].position, 0.3f);
    EXPECT_EQ(loss, UINT{kKvLossPlace});
}

} // namespace
