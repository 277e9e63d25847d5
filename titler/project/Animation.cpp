#include "project/Animation.h"

#include "KvBezierCurve2D.h"

#include <QPointF>

#include <algorithm>
#include <cmath>

namespace titler {
namespace {

double Limited(Property property, double value)
{
    const PropertyTraits& traits = TraitsOf(property);
    return std::clamp(value, traits.least, traits.most);
}

bool IsStraight(const Ease& ease)
{
    return ease.outX == 0 && ease.outY == 0 && ease.inX == 0 && ease.inY == 0;
}

// The preset whose tangents these are, else the user's own.
Ease Named(Ease ease)
{
    for (const std::uint32_t kind : {kKvEaseLinear, kKvEaseSpeedUp, kKvEaseSpeedDown, kKvEaseSmooth}) {
        ease.kind = kind;
        if (ease == PresetEase(kind))
            return ease;
    }
    ease.kind = kKvEaseDrawn;
    return ease;
}

// The path between two keys: x in frames, y in the property's unit.
struct Cubic
{
    QPointF start;
    QPointF out;
    QPointF in;
    QPointF end;
};

Cubic CubicOf(const Key& from, const Key& to)
{
    const double width = to.frame - from.frame;
    const Ease& ease = from.ease;
    return {QPointF(from.frame, from.value), QPointF(from.frame + width * ease.outX, from.value + ease.outY),
            QPointF(to.frame - width * ease.inX, to.value + ease.inY), QPointF(to.frame, to.value)};
}

QPointF Between(QPointF a, QPointF b, double t)
{
    return a + (b - a) * t;
}

// The points that halving the path at `t` goes through.
struct Halves
{
    QPointF leftOut;
    QPointF leftIn;
    QPointF middle;
    QPointF rightOut;
    QPointF rightIn;
};

Halves Split(const Cubic& c, double t)
{
    const QPointF out = Between(c.start, c.out, t);
    const QPointF across = Between(c.out, c.in, t);
    const QPointF in = Between(c.in, c.end, t);
    const QPointF leftIn = Between(out, across, t);
    const QPointF rightOut = Between(across, in, t);
    return {out, leftIn, Between(leftIn, rightOut, t), rightOut, in};
}

// Where the path is at `x`, which rises all the way.
double ParameterAt(const Cubic& cubic, double x)
{
    double low = 0;
    double high = 1;
    for (int i = 0; i < 60; ++i) {
        const double middle = (low + high) / 2;
        (Split(cubic, middle).middle.x() < x ? low : high) = middle;
    }
    return (low + high) / 2;
}

double YOnLine(QPointF a, QPointF b, double x)
{
    return a.y() + (b.y() - a.y()) * ((x - a.x()) / (b.x() - a.x()));
}

double YOnPath(const Cubic& c, double x)
{
    const double points[8] = {c.start.x(), c.start.y(), c.out.x(), c.out.y(),
                              c.in.x(),    c.in.y(),    c.end.x(), c.end.y()};
    return KvBezierEase(points).Value(x);
}

Ease EaseThrough(const Cubic& c)
{
    const double width = c.end.x() - c.start.x();
    return SoundEase({kKvEaseDrawn, (c.out.x() - c.start.x()) / width, c.out.y() - c.start.y(),
                      (c.end.x() - c.in.x()) / width, c.in.y() - c.end.y()});
}

void SplitAt(Key& from, Key& added, const Key& to)
{
    if (IsStraight(from.ease)) {
        from.ease = added.ease = PresetEase(kKvEaseLinear);
        return;
    }
    const Cubic path = CubicOf(from, to);
    const Halves halves = Split(path, ParameterAt(path, added.frame));
    const QPointF middle(added.frame, added.value);
    from.ease = EaseThrough({path.start, halves.leftOut, halves.leftIn, middle});
    added.ease = EaseThrough({middle, halves.rightOut, halves.rightIn, path.end});
}

bool IsNear(QPointF a, QPointF b, const Cubic& scale)
{
    const double height = std::abs(scale.start.y()) + std::abs(scale.end.y()) + 1;
    const double width = scale.end.x() - scale.start.x();
    return std::abs(a.x() - b.x()) <= 1e-6 * width && std::abs(a.y() - b.y()) <= 1e-6 * height;
}

// The ease of one path that was halved at `middle`, found backwards from its halves: their tangents at the
// ends were shortened to t and to 1 - t of the whole one's.
std::optional<Ease> Whole(const Cubic& left, const Cubic& right)
{
    const double before = left.end.x() - left.in.x();
    const double after = right.out.x() - right.start.x();
    if (!(before > 0 && after > 0))
        return std::nullopt;
    const double t = before / (before + after);
    const Cubic whole{left.start, left.start + (left.out - left.start) / t,
                      right.end + (right.in - right.end) / (1 - t), right.end};
    const Halves halves = Split(whole, t);
    if (!IsNear(halves.leftIn, left.in, whole) || !IsNear(halves.middle, left.end, whole) ||
        !IsNear(halves.rightOut, right.out, whole))
        return std::nullopt;
    return EaseThrough(whole);
}

Ease Joined(const Key& from, const Key& middle, const Key& to)
{
    if (const std::optional<Ease> whole = Whole(CubicOf(from, middle), CubicOf(middle, to)))
        return *whole;
    return Named({kKvEaseDrawn, from.ease.outX, from.ease.outY, middle.ease.inX, middle.ease.inY});
}

auto KeyFrom(const Animated& animated, int frame)
{
    return std::lower_bound(animated.keys.begin(), animated.keys.end(), frame,
                            [](const Key& key, int f) { return key.frame < f; });
}

int IndexOf(const Animated& animated, KeyList::const_iterator key)
{
    return static_cast<int>(key - animated.keys.begin());
}

} // namespace

const PropertyTraits& TraitsOf(Property property)
{
    static constexpr PropertyTraits traits[kProperties] = {
        {"x", -200, 200, 0},          {"y", -200, 200, 0},      {"scale", 0, 1000, 100},
        {"rotation", -3600, 3600, 0}, {"opacity", 0, 100, 100}, {"gradientOffset", -1, 1, 0},
    };
    return traits[static_cast<std::size_t>(property)];
}

Ease PresetEase(std::uint32_t kind)
{
    switch (kind) {
    case kKvEaseSpeedUp:
        return {kKvEaseSpeedUp, 0.5, 0, 0, 0};
    case kKvEaseSpeedDown:
        return {kKvEaseSpeedDown, 0, 0, 0.5, 0};
    case kKvEaseSmooth:
        return {kKvEaseSmooth, 0.42, 0, 0.42, 0};
    default:
        return {};
    }
}

Ease SoundEase(Ease ease)
{
    const auto within = [](double value, double least, double most) {
        return std::isnan(value) ? 0.0 : std::clamp(value, least, most);
    };
    return {ease.kind >= kKvEaseLinear && ease.kind <= kKvEaseSmooth ? ease.kind : kKvEaseDrawn,
            within(ease.outX, 0, kLongestTangent), within(ease.outY, -kLargestEaseOffset, kLargestEaseOffset),
            within(ease.inX, 0, kLongestTangent), within(ease.inY, -kLargestEaseOffset, kLargestEaseOffset)};
}

Properties StillProperties()
{
    Properties properties;
    for (int i = 0; i < kProperties; ++i)
        properties[static_cast<std::size_t>(i)].value = TraitsOf(static_cast<Property>(i)).still;
    return properties;
}

double ValueAt(const Animated& animated, Property property, double frame)
{
    const KeyList& keys = animated.keys;
    if (keys.empty())
        return Limited(property, animated.value);
    if (!(frame > keys.front().frame))
        return Limited(property, keys.front().value);
    if (frame >= keys.back().frame)
        return Limited(property, keys.back().value);
    const auto next = std::upper_bound(keys.begin(), keys.end(), frame,
                                       [](double f, const Key& key) { return f < key.frame; });
    const Cubic path = CubicOf(*(next - 1), *next);
    if (IsStraight((next - 1)->ease))
        return Limited(property, YOnLine(path.start, path.end, frame));
    return Limited(property, YOnPath(path, frame));
}

std::array<double, kProperties> ValuesAt(const Properties& properties, double frame)
{
    std::array<double, kProperties> values{};
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = ValueAt(properties[i], static_cast<Property>(i), frame);
    return values;
}

int KeyAt(const Animated& animated, int frame)
{
    const auto key = KeyFrom(animated, frame);
    return key != animated.keys.end() && key->frame == frame ? IndexOf(animated, key) : -1;
}

int SegmentAt(const Animated& animated, int frame)
{
    const int segments = static_cast<int>(animated.keys.size()) - 1;
    if (segments < 1)
        return -1;
    const auto key = KeyFrom(animated, frame);
    const bool isHere = key != animated.keys.end() && key->frame == frame;
    return std::clamp(IndexOf(animated, key) - (isHere ? 0 : 1), 0, segments - 1);
}

std::optional<int> PreviousKeyFrame(const Animated& animated, int frame)
{
    if (animated.keys.empty())
        return std::nullopt;
    const auto key = KeyFrom(animated, frame);
    return key == animated.keys.begin() ? key->frame : (key - 1)->frame;
}

std::optional<int> NextKeyFrame(const Animated& animated, int frame)
{
    if (animated.keys.empty())
        return std::nullopt;
    const auto next = std::upper_bound(animated.keys.begin(), animated.keys.end(), frame,
                                       [](int f, const Key& key) { return f < key.frame; });
    return next == animated.keys.end() ? animated.keys.back().frame : next->frame;
}

void SetValueAt(Animated& animated, Property property, int frame, double value)
{
    if (std::isnan(value))
        return;
    if (!animated.IsAnimated()) {
        animated.value = Limited(property, value);
        return;
    }
    AddKey(animated, property, frame);
    const int key = KeyAt(animated, frame);
    if (key >= 0)
        animated.keys[key].value = Limited(property, value);
}

void AddKey(Animated& animated, Property property, int frame)
{
    KeyList& keys = animated.keys;
    if (frame < 0 || frame > kLongestDuration || keys.size() >= kMostKeys || KeyAt(animated, frame) >= 0)
        return;
    const int index = IndexOf(animated, KeyFrom(animated, frame));
    const auto added = keys.insert(keys.begin() + index, Key{frame, ValueAt(animated, property, frame)});
    if (added == keys.begin())
        return;
    Key& from = *(added - 1);
    if (added + 1 != keys.end())
        SplitAt(from, *added, *(added + 1));
    else if (from.ease.outY != 0 || from.ease.inY != 0)
        from.ease = PresetEase(kKvEaseLinear); // left over from a key that is gone; the value holds here
}

void RemoveKey(Animated& animated, int index)
{
    KeyList& keys = animated.keys;
    const auto count = static_cast<int>(keys.size());
    if (index < 0 || index >= count)
        return;
    const auto key = keys.begin() + index;
    if (count == 1)
        animated.value = key->value;
    else if (index > 0 && index + 1 < count)
        (key - 1)->ease = Joined(*(key - 1), *key, *(key + 1));
    keys.erase(key);
}

void SetAnimated(Animated& animated, Property property, int frame, bool on)
{
    if (on && !animated.IsAnimated())
        AddKey(animated, property, frame);
    if (!on && animated.IsAnimated())
        animated = {ValueAt(animated, property, frame), {}};
}

int Retiming::FrameOf(int frame) const
{
    if (frame >= duration)
        return newDuration + static_cast<int>(std::lround((frame - duration) * behind));
    const int last = newDuration - 1;
    if (frame > 0 && frame == duration - 1)
        return last;
    return static_cast<int>(std::min<double>(std::round(frame * factor), last));
}

void Retime(Animated& animated, const Retiming& retiming)
{
    KeyList keys;
    for (Key& key : animated.keys) {
        key.frame = retiming.FrameOf(key.frame);
        if (!keys.empty() && keys.back().frame == key.frame)
            keys.pop_back();
        keys.push_back(std::move(key));
    }
    animated.keys = std::move(keys);
}

} // namespace titler
