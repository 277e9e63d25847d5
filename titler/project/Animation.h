// Values that move: keys at frames, with an ease from each key to the next. Plain values and free functions.
#pragma once

#include "KvTypes.h"

#include <QJsonObject>
#include <QList>

#include <array>
#include <optional>

namespace titler {

/// What of a title can move.
enum class Property
{
    X,              ///< percent of the frame's width, to the right from where the layout puts the text
    Y,              ///< percent of the frame's height, downwards
    Scale,          ///< percent, around the text's middle
    Rotation,       ///< degrees clockwise, around the text's middle
    Opacity,        ///< percent
    GradientOffset, ///< as a fraction of the gradient's length, along its direction
};
inline constexpr int kProperties = 6;
inline constexpr int kLongestDuration = 1000000; ///< frames
inline constexpr int kMostKeys = 10000;          ///< of one property
/// Of a tangent, in widths of its segment. From 0 to 1 by hand; where a key is added to a path the halves can
/// need as much as this, and no path that runs on in time can have more.
inline constexpr double kLongestTangent = 4.0 / 3;
inline constexpr double kLargestEaseOffset = 1.0e6; ///< of a tangent's end from its key, in value

struct PropertyTraits
{
    const char* name; ///< in the project file, and as the parameter's name for the ease dialog
    double least;
    double most;
    double still; ///< the value of a title that was never animated
};
const PropertyTraits& TraitsOf(Property property);

/// The way from one key to the next, as `SKvParamEaseData` has it.
struct Ease
{
    std::uint32_t kind = kKvEaseLinear; ///< EKvEaseKind
    double outX = 0;                    ///< fraction of the way to the next key, 0 to kLongestTangent
    double outY = 0;                    ///< value offset from this key
    double inX = 0;                     ///< fraction leftwards from the next key, likewise
    double inY = 0;                     ///< value offset from the next key

    bool operator==(const Ease&) const = default;
};
/// titler's own presets; linear for a kind that is none.
Ease PresetEase(std::uint32_t kind);
/// An ease from outside: fractions in 0 to kLongestTangent, offsets within kLargestEaseOffset, what is no
/// number is 0, and a kind that we do not know is the user's own.
Ease SoundEase(Ease ease);

struct Key
{
    int frame = 0; ///< from 0
    double value = 0;
    Ease ease = {};          ///< to the next key
    QJsonObject source = {}; ///< the fields of its place in the file that we do not know

    bool operator==(const Key&) const = default;
};

/// By frame, each frame at most once. Copies share them until one changes: the steps of undo hold many.
using KeyList = QList<Key>;

/// A value with its keys; it is animated as long as it has any.
struct Animated
{
    double value = 0; ///< while there are no keys
    KeyList keys;

    bool IsAnimated() const { return !keys.empty(); }
    bool operator==(const Animated&) const = default;
};
using Properties = std::array<Animated, kProperties>; ///< by Property

/// Every property at rest.
Properties StillProperties();

/// The value at a frame, also between frames; within the property's limits. Before the first key and behind
/// the last one their values hold.
double ValueAt(const Animated& animated, Property property, double frame);
/// All of them, by Property.
std::array<double, kProperties> ValuesAt(const Properties& properties, double frame);

/// The index of the key at that frame; -1 for none.
int KeyAt(const Animated& animated, int frame);
/// The index of the key that begins the segment in which the frame lies; at the last key and behind it the
/// last segment, before the first key the first. -1 with fewer than two keys.
int SegmentAt(const Animated& animated, int frame);
/// The frame of the next key before or after `frame`; of the first or the last when there is none there.
std::optional<int> PreviousKeyFrame(const Animated& animated, int frame);
std::optional<int> NextKeyFrame(const Animated& animated, int frame);

/// Sets the value: that of the key at `frame` (added where there is none) while animated, else the value
/// itself. Clamped to the property's limits; what is no number changes nothing.
void SetValueAt(Animated& animated, Property property, int frame, double value);
/// Adds a key with the value at that frame. Splitting a segment keeps the path as it runs.
/// A frame before 0 or beyond kLongestDuration and one key more than kMostKeys change nothing.
void AddKey(Animated& animated, Property property, int frame);
/// Removes a key; the last one leaves its value behind. The segments at both sides become one; a path that
/// AddKey has split is whole again.
void RemoveKey(Animated& animated, int index);
/// Begins to animate with one key at `frame`, or ends it with the value at that frame.
void SetAnimated(Animated& animated, Property property, int frame, bool on);

/// Where frames go when a project of `duration` frames becomes one of `newDuration` frames.
struct Retiming
{
    int duration = 1;
    int newDuration = 1;
    double factor = 1; ///< of times within the project, above 0
    double behind = 1; ///< of what is behind its end, likewise

    /// The first and the last frame stay what they are; what is within the project or behind it stays there.
    int FrameOf(int frame) const;
};
/// Moves the keys. Of keys that fall on one frame the last stays.
void Retime(Animated& animated, const Retiming& retiming);

} // namespace titler
