#include "project/Project.h"

#include "project/Pages.h"
#include "project/ProjectJson.h"
#include "project/TimeCode.h"
#include "project/WholeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <utility>

namespace titler {
namespace {

int LastKeyFrame(const Title& title)
{
    int last = 0;
    for (const Animated& animated : title.properties)
        if (animated.IsAnimated())
            last = std::max(last, animated.keys.back().frame);
    return last;
}

// Where there are not frames enough, everything moves closer together: keys that pile up at the last possible
// frame would be lost.
Retiming RetimingOf(const Project& project, double factor)
{
    const int duration = project.duration;
    int last = duration;
    for (int i = 0; i < PageCount(project); ++i)
        last = std::max(last, LastKeyFrame(PageAt(project, i).title));
    if (duration * factor > kLongestDuration)
        factor = static_cast<double>(kLongestDuration) / last;
    const int newDuration = std::max(1, static_cast<int>(std::lround(duration * factor)));
    double behind = factor;
    if (last > duration)
        behind = std::min(factor, static_cast<double>(kLongestDuration - newDuration) / (last - duration));
    return {duration, newDuration, factor, behind};
}

bool HasKeys(const Title& title)
{
    return std::any_of(title.properties.begin(), title.properties.end(),
                       [](const Animated& animated) { return animated.IsAnimated(); });
}

void RetimeKeys(Title& title, const Retiming& retiming)
{
    for (Animated& animated : title.properties)
        Retime(animated, retiming);
}

} // namespace

bool LooksSame(const Title& a, const Title& b)
{
    return a.text == b.text && a.fontFamily == b.fontFamily && a.fontSize == b.fontSize && a.bold == b.bold &&
           a.italic == b.italic && a.align == b.align && LooksSame(a.fill, b.fill) &&
           a.outline == b.outline && a.shadow == b.shadow && a.properties == b.properties;
}

Page NewPage()
{
    Page page;
    page.title.fill.stops = {{0xFFFFF3D6, 0.0f, 0.5f}, {0xFFFFB347, 0.45f, 0.5f}, {0xFFE8505B, 1.0f, 0.5f}};
    Paint& background = page.background;
    background.colour = 0xFF000000;
    background.stops = {{0xFF2B3A55, 0.0f, 0.5f}, {0xFF0B1018, 1.0f, 0.5f}};
    background.angle = 90;
    background.corners = {0xFF24405E, 0xFF3A2E5C, 0xFF0F1E2E, 0xFF1B1230};
    return page;
}

Project NewProject()
{
    Project project;
    static_cast<Page&>(project) = NewPage();
    return project;
}

int MiddleFrame(const Title& title, int duration)
{
    const int middle = (duration - 1) / 2;
    const auto opacity = static_cast<std::size_t>(Property::Opacity);
    if (ValuesAt(title.properties, middle)[opacity] > 0)
        return middle;
    const KeyList& keys = title.properties[opacity].keys;
    return keys.empty() ? middle : (keys.front().frame + std::min(keys.back().frame, duration - 1)) / 2;
}

int MiddleFrame(const Project& project)
{
    return MiddleFrame(project.title, project.duration);
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

void SetVideoFormat(Project& project, const SKvVideoResolution& format)
{
    const EKvFrameRate before = std::exchange(project.video, format).frameRate;
    if (format.frameRate == before)
        return;
    const Retiming retiming =
        RetimingOf(project, FrameRateOf(format.frameRate).PerSecond() / FrameRateOf(before).PerSecond());
    project.duration = retiming.newDuration;
    RetimeKeys(project.title, retiming);
    for (std::shared_ptr<const Page>& page : project.otherPages) {
        if (!HasKeys(page->title))
            continue;
        Page retimed = *page;
        RetimeKeys(retimed.title, retiming);
        page = std::make_shared<const Page>(std::move(retimed));
    }
}

std::optional<Project> LoadProject(const QString& name, ProjectError& error)
{
    error = {};
    const QFileInfo info(name);
    if (info.exists() && !info.isFile()) {
        error.fault = ProjectFault::NoFile; // to open a pipe would wait for somebody who writes
        return std::nullopt;
    }
    QFile file(name);
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

QString SaveProject(const QString& file, const Project& project)
{
    const QByteArray json = SerialiseProject(project);
    return json.size() <= kLargestFile ? WriteWhole(file, json) : qt_error_string(EFBIG);
}

bool operator==(const Page& a, const Page& b)
{
    // Pages are compared at every step of undo, and keys may be many.
    return a.title.properties == b.title.properties && StillToJson(a) == StillToJson(b);
}

bool operator==(const Project& a, const Project& b)
{
    return HaveSamePages(a, b) && HeadToJson(a) == HeadToJson(b);
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
