// Colours, gradients, eases, formats and naming groups as the toolkit has them.
#include "KvQt.h"
#include "color/GradientColour.h"
#include "color/GradientModel.h"

#include <QJsonObject>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>
#include <span>

namespace {

constexpr float kHalfWay = 0.5f;

void Lose(UINT* loss, UINT what)
{
    if (loss)
        *loss |= what;
}

void Begin(UINT* loss)
{
    if (loss)
        *loss = 0;
}

DWORD Word(const QColor& colour, UINT* loss)
{
    if (!colour.isValid()) {
        Lose(loss, kKvLossInvalid);
        return 0;
    }
    const DWORD word = colour.rgba(); // extended colours are cut to 0 … 1
    if (colour.spec() == QColor::ExtendedRgb)
        for (const float channel : {colour.redF(), colour.greenF(), colour.blueF()})
            if (channel < 0 || channel > 1)
                Lose(loss, kKvLossRange);
    if (QColor::fromRgba(word).convertTo(colour.spec()) != colour)
        Lose(loss, kKvLossPrecision);
    return word;
}

struct Stop
{
    double place;
    DWORD colour;
};

/// The least part of a segment that a mid point takes off; less is an edge that KvToLinearGradient pulled
/// apart.
constexpr double kLeastPart = 1e-6;

/// What KvToLinearGradient moves a stop by at most is no place of its own.
constexpr double kOnePlace = 1e-12;

double PlaceOf(double before, double behind, double midPoint)
{
    return before + (behind - before) * midPoint;
}

/// The mid point of the segment behind a stop, if the next stop is one. A stop half way is one only where the
/// stop after it would be taken for a mid point otherwise: that is what such a stop is written for. As
/// writing asks here, too, what it writes is read as it was meant.
std::optional<float> MidPointBehind(const Stop& before, std::span<const Stop> behind)
{
    if (behind.size() < 2 || behind[0].colour != kv::MixColour(before.colour, behind[1].colour))
        return std::nullopt;
    const double from = static_cast<float>(before.place); // as a stop of the control is placed
    const double width = static_cast<float>(behind[1].place) - from;
    if (!(width > 0))
        return std::nullopt;
    const double part = (behind[0].place - from) / width;
    if (!(part >= kLeastPart && part <= 1 - kLeastPart))
        return std::nullopt;
    const auto midPoint = static_cast<float>(part);
    if (midPoint == kHalfWay && !MidPointBehind(before, behind.subspan(1)))
        return std::nullopt;
    return midPoint;
}

/// A QGradient keeps one colour a place only: the sides of a hard edge get the closest numbers, which are one
/// place for the control.
void PullApart(QGradientStops& stops)
{
    for (qsizetype i = 1; i < stops.size(); ++i)
        stops[i].first = std::max(stops[i].first, std::nextafter(stops[i - 1].first, 2.0));
    double most = 1;
    for (auto stop = stops.rbegin(); stop != stops.rend(); ++stop) {
        stop->first = std::min(stop->first, most);
        most = std::nextafter(stop->first, -1.0);
    }
}

struct CubicShape
{
    double x1, y1, x2, y2; ///< the two control points of a cubic from (0, 0) to (1, 1)

    bool operator==(const CubicShape&) const = default;
};

/// A parabola and a cubic have straight time, and handles at thirds of it.
const CubicShape* ShapeOf(QEasingCurve::Type type)
{
    static constexpr double kThird = 1.0 / 3;
    static constexpr CubicShape kInQuad{kThird, 0, 2 * kThird, kThird};
    static constexpr CubicShape kOutQuad{kThird, 2 * kThird, 2 * kThird, 1};
    static constexpr CubicShape kInCubic{kThird, 0, 2 * kThird, 0};
    static constexpr CubicShape kOutCubic{kThird, 1, 2 * kThird, 1};
    switch (type) {
    case QEasingCurve::InQuad:
        return &kInQuad;
    case QEasingCurve::OutQuad:
        return &kOutQuad;
    case QEasingCurve::InCubic:
        return &kInCubic;
    case QEasingCurve::OutCubic:
        return &kOutCubic;
    default:
        return nullptr;
    }
}

/// A spline's one segment; none where it has more.
std::optional<CubicShape> OneCubicOf(const QEasingCurve& curve)
{
    if (curve.type() != QEasingCurve::BezierSpline)
        return std::nullopt;
    const QVector<QPointF> points = curve.toCubicSpline();
    if (points.size() != 3 || points[2] != QPointF(1, 1))
        return std::nullopt;
    return CubicShape{points[0].x(), points[0].y(), points[1].x(), points[1].y()};
}

/// Its handles stay in the segment's time: else it could have several values at one time.
bool IsFunctionOfTime(const CubicShape& shape)
{
    const auto isTime = [](double x) { return x >= 0 && x <= 1; };
    return isTime(shape.x1) && isTime(shape.x2) && std::isfinite(shape.y1) && std::isfinite(shape.y2);
}

constexpr std::array<SKvRational, 8> kRates{
    {{24000, 1001}, {24, 1}, {25, 1}, {30000, 1001}, {30, 1}, {50, 1}, {60000, 1001}, {60, 1}}};

} // namespace

QColor KvToQColor(DWORD colour)
{
    return QColor::fromRgba(colour);
}

DWORD KvFromQColor(const QColor& colour, UINT* loss)
{
    Begin(loss);
    return Word(colour, loss);
}

QGradientStops KvToGradientStops(const std::vector<SKvCGGradientKey>& keys)
{
    std::vector<SKvCGGradientKey> sorted = keys;
    for (SKvCGGradientKey& key : sorted)
        key.position = kv::ClampPosition(key.position);
    kv::SortKeysByExchange(std::span(sorted), [](std::size_t, std::size_t) {});

    // From the last one on: what a stop would be taken for depends on those behind it.
    std::vector<Stop> room(2 * sorted.size());
    std::span<Stop> written = std::span(room).last(0);
    const auto write = [&](const Stop& stop) {
        written = std::span(room).last(written.size() + 1);
        written.front() = stop;
    };
    for (std::size_t i = sorted.size(); i-- > 0;) {
        const Stop stop{sorted[i].position, sorted[i].colour};
        write(stop);
        if (i == 0)
            break;
        const Stop before{sorted[i - 1].position, sorted[i - 1].colour};
        const double midPoint = kv::ClampPosition(sorted[i].midPoint);
        if (before.place < stop.place && (midPoint != kHalfWay || MidPointBehind(before, written)))
            write({PlaceOf(before.place, stop.place, midPoint), kv::MixColour(before.colour, stop.colour)});
    }
    QGradientStops stops;
    for (const Stop& stop : written)
        stops << QGradientStop(stop.place, KvToQColor(stop.colour));
    return stops;
}

QLinearGradient KvToLinearGradient(const std::vector<SKvCGGradientKey>& keys, const QRectF& rect)
{
    QLinearGradient gradient(rect.left(), 0, rect.right(), 0);
    gradient.setInterpolationMode(QGradient::ComponentInterpolation);
    QGradientStops stops = KvToGradientStops(keys);
    PullApart(stops);
    gradient.setStops(stops);
    return gradient;
}

std::vector<SKvCGGradientKey> KvFromGradientStops(const QGradientStops& stops, UINT* loss)
{
    Begin(loss);
    std::vector<Stop> read;
    for (const QGradientStop& stop : stops) {
        const double place = stop.first > 0 ? std::min(stop.first, 1.0) : 0; // 0, too, where it is no number
        if (place != stop.first)
            Lose(loss, kKvLossPlace);
        read.push_back({place, Word(stop.second, loss)});
    }
    std::vector<SKvCGGradientKey> keys;
    const auto check = [loss](double place, double kept) {
        if (!(std::abs(place - kept) < kOnePlace))
            Lose(loss, kKvLossPlace);
    };
    for (std::size_t i = 0; i < read.size(); ++i) {
        const auto midPoint =
            i > 0 ? MidPointBehind(read[i - 1], std::span(read).subspan(i)) : std::optional<float>();
        if (midPoint)
            ++i;
        const auto place = static_cast<float>(read[i].place);
        check(read[i].place, place);
        if (midPoint)
            check(read[i - 1].place, PlaceOf(keys.back().position, place, *midPoint));
        keys.push_back({read[i].colour, place, midPoint.value_or(kHalfWay)});
    }
    if (keys.size() > kv::GradientModel::kMaxKeys) {
        keys.resize(kv::GradientModel::kMaxKeys);
        Lose(loss, kKvLossStops);
    }
    return keys;
}

std::vector<SKvCGGradientKey> KvFromGradient(const QGradient& gradient, UINT* loss)
{
    const std::vector<SKvCGGradientKey> keys = KvFromGradientStops(gradient.stops(), loss);
    if (gradient.type() != QGradient::LinearGradient) {
        Lose(loss, kKvLossShape);
    } else {
        const auto& linear = static_cast<const QLinearGradient&>(gradient);
        if (linear.start().y() != linear.finalStop().y() || linear.start().x() >= linear.finalStop().x())
            Lose(loss, kKvLossDirection);
    }
    if (gradient.spread() != QGradient::PadSpread)
        Lose(loss, kKvLossSpread);
    const auto alphaOf = [](const SKvCGGradientKey& key) { return key.colour >> 24; };
    const bool isEven = std::adjacent_find(keys.begin(), keys.end(), [&](const auto& a, const auto& b) {
                            return alphaOf(a) != alphaOf(b);
                        }) == keys.end();
    if (gradient.interpolationMode() == QGradient::ColorInterpolation && !isEven)
        Lose(loss, kKvLossPremultiplied);
    return keys;
}

QEasingCurve KvToEasingCurve(const SKvParamEaseData& ease, UINT* loss)
{
    Begin(loss);
    const bool hasTangents =
        ease.outTangentX != 0 || ease.outTangentY != 0 || ease.inTangentX != 0 || ease.inTangentY != 0;
    if (ease.kind == kKvEaseLinear && !hasTangents)
        return QEasingCurve(QEasingCurve::Linear);
    if (ease.kind != kKvEaseDrawn)
        Lose(loss, kKvLossKind);
    const double height = ease.endY - ease.startY;
    if (height == 0 && (ease.outTangentY != 0 || ease.inTangentY != 0))
        Lose(loss, kKvLossHeight);
    const auto part = [height](double offset) { return height == 0 ? 0 : offset / height; };
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment({ease.outTangentX, part(ease.outTangentY)},
                                {1 - ease.inTangentX, 1 + part(ease.inTangentY)}, {1, 1});
    return curve;
}

int KvFromEasingCurve(const QEasingCurve& curve, SKvParamEaseData& ease, UINT* loss)
{
    Begin(loss);
    const auto shape = [&](std::uint32_t kind, const CubicShape& cubic) {
        const double height = ease.endY - ease.startY;
        if (height == 0 && (cubic.y1 != 0 || cubic.y2 != 1))
            Lose(loss, kKvLossHeight);
        ease.kind = kind;
        ease.outTangentX = cubic.x1;
        ease.outTangentY = cubic.y1 * height;
        ease.inTangentX = 1 - cubic.x2;
        ease.inTangentY = (cubic.y2 - 1) * height;
        return 1;
    };
    if (curve.type() == QEasingCurve::Linear)
        return shape(kKvEaseLinear, {0, 0, 1, 1});
    if (const CubicShape* known = ShapeOf(curve.type()))
        return shape(kKvEaseDrawn, *known);
    const std::optional<CubicShape> drawn = OneCubicOf(curve);
    if (drawn && OneCubicOf(KvToEasingCurve(ease)) == drawn)
        return 1; // the segment's own, whose kind and last bits the curve does not hold
    if (!drawn || !IsFunctionOfTime(*drawn)) {
        Lose(loss, kKvLossCurve);
        return 0;
    }
    return shape(kKvEaseDrawn, *drawn);
}

QSize KvToQSize(const SKvVideoResolution& resolution)
{
    return QSize(std::max(resolution.width, 0), std::max(resolution.height, 0));
}

int KvFromQSize(QSize size, SKvVideoResolution& resolution)
{
    if (!size.isValid())
        return 0;
    resolution.width = size.width();
    resolution.height = size.height();
    return 1;
}

SKvRational KvToRational(EKvFrameRate rate)
{
    const auto index = static_cast<std::size_t>(rate);
    return index < kRates.size() ? kRates[index] : SKvRational{0, 1};
}

int KvFromRational(SKvRational framesPerSecond, EKvFrameRate& rate, UINT* loss)
{
    Begin(loss);
    const auto found = std::find_if(kRates.begin(), kRates.end(), [&](const SKvRational& one) {
        return std::int64_t{one.numerator} * framesPerSecond.denominator ==
               std::int64_t{framesPerSecond.numerator} * one.denominator;
    });
    if (framesPerSecond.denominator == 0 || found == kRates.end()) {
        Lose(loss, kKvLossRate);
        return 0;
    }
    rate = static_cast<EKvFrameRate>(found - kRates.begin());
    return 1;
}

QJsonArray KvGroupsToJson(IKvFileNamingMatcher& matcher, unsigned int count)
{
    QJsonArray groups;
    for (unsigned int i = 0; i < count; ++i) {
        wchar_t name[kKvNamingGroupNameSize] = {};
        CStringArray files;
        if (!matcher.GetGroup(i, name, &files))
            continue;
        QJsonArray names;
        for (const CString& file : files)
            names.append(KvToQString(file));
        groups.append(
            QJsonObject{{QStringLiteral("name"), KvToQString(name)}, {QStringLiteral("files"), names}});
    }
    return groups;
}
