#include "Project.h"

#include "ProjectJson.h"

#include <QFile>
#include <QJsonDocument>
#include <QSaveFile>

#include <algorithm>
#include <cmath>

namespace titler {
namespace {

float Fraction(float value)
{
    return std::isnan(value) ? 0.0f : std::clamp(value, 0.0f, 1.0f);
}

} // namespace

Project NewProject()
{
    Project project;
    project.title.stops = {{0xFFFFF3D6, 0.0f, 0.5f}, {0xFFFFB347, 0.45f, 0.5f}, {0xFFE8505B, 1.0f, 0.5f}};
    return project;
}

QSizeF DisplaySize(const SKvVideoResolution& video)
{
    const double height = video.height;
    switch (video.aspectRatio) {
    case kKvAspect4x3:
    case kKvAspect4x3Alt:
        return {height * 4 / 3, height};
    case kKvAspect16x9:
    case kKvAspect16x9Alt:
        return {height * 16 / 9, height};
    case kKvAspectSquarePixel:
        break;
    }
    return {static_cast<double>(video.width), height};
}

GradientStops NormalisedStops(GradientStops stops)
{
    if (stops.size() > kMostStops)
        stops.resize(kMostStops);
    for (SKvCGGradientKey& stop : stops) {
        stop.position = Fraction(stop.position);
        stop.midPoint = Fraction(stop.midPoint);
    }
    std::stable_sort(stops.begin(), stops.end(),
                     [](const auto& a, const auto& b) { return a.position < b.position; });
    return stops;
}

std::optional<Project> LoadProject(const QString& name, ProjectError& error)
{
    QFile file(name);
    error = {};
    if (!file.open(QIODevice::ReadOnly)) {
        error.detail = file.errorString();
        return std::nullopt;
    }
    // One byte more than allowed tells a file that is too large, also where the system reports no size.
    const QByteArray json = file.read(kLargestFile + 1);
    if (file.error() != QFileDevice::NoError) {
        error.detail = file.errorString();
        return std::nullopt;
    }
    if (json.size() > kLargestFile) {
        error.fault = ProjectFault::TooLarge;
        return std::nullopt;
    }
    return ParseProject(json, error);
}

QString SaveProject(const QString& name, const Project& project)
{
    QSaveFile file(name);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    file.write(SerialiseProject(project));
    return file.commit() ? QString() : file.errorString();
}

bool operator==(const Project& a, const Project& b)
{
    return ProjectToJson(a) == ProjectToJson(b);
}

QString ColourText(DWORD colour)
{
    return QStringLiteral("#%1").arg(colour, 8, 16, QLatin1Char('0')).toUpper();
}

std::optional<DWORD> ParseColour(const QString& text)
{
    const auto isHex = [](QChar c) {
        return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
    };
    if ((text.size() != 7 && text.size() != 9) || text.front() != u'#' ||
        !std::all_of(text.begin() + 1, text.end(), isHex))
        return std::nullopt;
    const DWORD value = text.mid(1).toUInt(nullptr, 16);
    return text.size() == 7 ? 0xFF000000u | value : value;
}

} // namespace titler
