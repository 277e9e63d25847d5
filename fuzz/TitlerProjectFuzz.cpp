// Bytes as a project file: whatever is accepted is sound, and survives being saved and loaded again.
#include "Project.h"

#include <QByteArray>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace titler;

namespace {

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

void RequireSound(const Project& project)
{
    const Title& title = project.title;
    Require(project.video.width >= kSmallestFrame && project.video.width <= kLargestFrame);
    Require(project.video.height >= kSmallestFrame && project.video.height <= kLargestFrame);
    Require(title.text.size() <= kLongestText);
    Require(title.fontSize >= kSmallestFont && title.fontSize <= kLargestFont);
    Require(title.stops.size() >= kFewestStops && title.stops.size() <= kMostStops);
    Require(std::all_of(title.stops.begin(), title.stops.end(), [](const SKvCGGradientKey& stop) {
        return stop.position >= 0 && stop.position <= 1 && stop.midPoint >= 0 && stop.midPoint <= 1;
    }));
    Require(std::is_sorted(title.stops.begin(), title.stops.end(),
                           [](const auto& a, const auto& b) { return a.position < b.position; }));
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
    const QByteArray saved = SerialiseProject(*project);
    const std::optional<Project> again = ParseProject(saved, error);
    Require(again.has_value());
    Require(SerialiseProject(*again) == saved);
    return 0;
}
