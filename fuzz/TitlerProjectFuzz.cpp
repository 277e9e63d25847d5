// Bytes as a project file: whatever is accepted is sound, moves within its limits, and survives being saved
// and loaded again.
#include "Require.h"
#include "project/Project.h"

#include <QByteArray>

#include <algorithm>
#include <cstddef>

using namespace titler;

namespace {

bool IsWithin(double value, double least, double most)
{
    return value >= least && value <= most;
}

void RequireSoundStops(const GradientStops& stops)
{
    Require(stops.size() >= kFewestStops && stops.size() <= kMostStops);
    Require(std::all_of(stops.begin(), stops.end(), [](const SKvCGGradientKey& stop) {
        return stop.position >= 0 && stop.position <= 1 && stop.midPoint >= 0 && stop.midPoint <= 1;
    }));
    Require(std::is_sorted(stops.begin(), stops.end(),
                           [](const auto& a, const auto& b) { return a.position < b.position; }));
}

void RequireSound(const Project& project)
{
    const Title& title = project.title;
    Require(project.video.width >= kSmallestFrame && project.video.width <= kLargestFrame);
    Require(project.video.height >= kSmallestFrame && project.video.height <= kLargestFrame);
    Require(title.text.size() <= kLongestText);
    Require(title.fontSize >= kSmallestFont && title.fontSize <= kLargestFont);
    RequireSoundStops(title.fill.stops);
    RequireSoundStops(project.background.stops);
    Require(title.fill.kind != PaintKind::None);
    Require(IsWithin(title.outline.width, 0, kWidestOutline) && IsWithin(title.shadow.blur, 0, kWidestBlur));
    Require(IsWithin(title.shadow.x, -kFarthestShadow, kFarthestShadow));
}

void RequireSoundKeys(const Animated& animated, const PropertyTraits& traits)
{
    Require(animated.keys.size() <= kMostKeys && IsWithin(animated.value, traits.least, traits.most));
    int before = -1;
    for (const Key& key : animated.keys) {
        Require(key.frame > before && key.frame <= kLongestDuration);
        Require(IsWithin(key.value, traits.least, traits.most) && SoundEase(key.ease) == key.ease);
        before = key.frame;
    }
}

void RequireMotion(const Animated& animated, Property property)
{
    const PropertyTraits& traits = TraitsOf(property);
    RequireSoundKeys(animated, traits);
    const auto evaluate = [&](double frame) {
        Require(IsWithin(ValueAt(animated, property, frame), traits.least, traits.most));
    };
    for (const double frame : {-1e300, -1.0, 0.0, 0.5, 1e6, 1e300})
        evaluate(frame);
    const qsizetype step = animated.keys.size() / 50 + 1;
    for (qsizetype i = 0; i < animated.keys.size(); i += step) {
        const double frame = animated.keys[i].frame;
        Require(ValueAt(animated, property, frame) == animated.keys[i].value);
        for (const double offset : {1e-9, 0.3, 1.0, 17.0, 1000.0})
            evaluate(frame + offset);
    }
}

// Keys come and go one by one, and all of them stay sound.
void RequireEdits(Animated animated, Property property)
{
    if (animated.keys.size() < 2)
        return;
    const int middle = (animated.keys[0].frame + animated.keys[1].frame) / 2;
    AddKey(animated, property, middle);
    RequireSoundKeys(animated, TraitsOf(property));
    RemoveKey(animated, KeyAt(animated, middle));
}

// At another rate a key on the last frame stays there, and no key crosses the end.
void RequireRates(const Project& project)
{
    for (const EKvFrameRate rate : {kKvFrameRate23_976, kKvFrameRate25, kKvFrameRate60}) {
        Project other = project;
        SKvVideoResolution format = project.video;
        format.frameRate = rate;
        SetVideoFormat(other, format);
        Require(other.duration >= 1 && other.duration <= kLongestDuration);
        for (int i = 0; i < kProperties; ++i) {
            const auto property = static_cast<Property>(i);
            const Animated& before = project.title[property];
            const Animated& after = other.title[property];
            RequireSoundKeys(after, TraitsOf(property));
            Require(before.IsAnimated() == after.IsAnimated());
            Require(KeyAt(before, project.duration - 1) < 0 || KeyAt(after, other.duration - 1) >= 0 ||
                    project.duration == 1);
            Require(!before.IsAnimated() || (before.keys.back().frame < project.duration) ==
                                                (after.keys.back().frame < other.duration));
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    ProjectError error;
    const std::optional<Project> project = ParseProject(bytes, error);
    if (!project) {
        Require(error.fault != ProjectFault::BadJson || (error.line > 0 && error.column > 0));
        return 0;
    }
    RequireSound(*project);
    for (int i = 0; i < kProperties; ++i) {
        const auto property = static_cast<Property>(i);
        RequireMotion(project->title[property], property);
        RequireEdits(project->title[property], property);
    }
    RequireRates(*project);
    const QByteArray saved = SerialiseProject(*project);
    const std::optional<Project> again = ParseProject(saved, error);
    Require(again.has_value());
    Require(SerialiseProject(*again) == saved);
    Require(again->title.properties == project->title.properties);
    return 0;
}
