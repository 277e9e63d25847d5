#include "project/ProjectJson.h"

#include "project/AnimationJson.h"
#include "project/JsonReader.h"
#include "project/Pages.h"
#include "project/PaintJson.h"

#include <QJsonDocument>
#include <QJsonParseError>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

namespace titler {
namespace {

constexpr Names<EKvAspectRatio, 3> kAspects{
    {{kKvAspect4x3, "4:3"}, {kKvAspect16x9, "16:9"}, {kKvAspectSquarePixel, "square"}}};
constexpr Names<EKvFrameRate, 8> kRates{{{kKvFrameRate23_976, "23.976"},
                                         {kKvFrameRate24, "24"},
                                         {kKvFrameRate25, "25"},
                                         {kKvFrameRate29_97, "29.97"},
                                         {kKvFrameRate30, "30"},
                                         {kKvFrameRate50, "50"},
                                         {kKvFrameRate59_94, "59.94"},
                                         {kKvFrameRate60, "60"}}};
constexpr Names<EKvScanMode, 4> kScans{{{kKvScanUpperFirst, "upper first"},
                                        {kKvScanLowerFirst, "lower first"},
                                        {kKvScanProgressive, "progressive"},
                                        {kKvScanProgressiveSegmented, "progressive segmented"}}};
constexpr Names<TextAlign, 3> kAligns{
    {{TextAlign::Left, "left"}, {TextAlign::Centre, "centre"}, {TextAlign::Right, "right"}}};

constexpr QLatin1String kTitle("title");
constexpr QLatin1String kBackground("background");
constexpr QLatin1String kFirstPage("firstPage"); // what it has beside title and background
constexpr QLatin1String kPages("pages");         // from the second on

void ReadVideo(JsonReader reader, SKvVideoResolution& video)
{
    reader.ReadWhole("width", video.width, kSmallestFrame, kLargestFrame);
    reader.ReadWhole("height", video.height, kSmallestFrame, kLargestFrame);
    reader.Read("frameRate", kRates, video.frameRate);
    reader.Read("scan", kScans, video.scanMode);
    reader.Read("aspect", kAspects, video.aspectRatio);
}

void ReadAudio(JsonReader reader, SKvWaveFormatInfo& audio)
{
    reader.ReadWhole("channels", audio.channels, 0, 256);
    reader.ReadWhole("sampleRate", audio.sampleRate, 1000, 1000000);
    reader.ReadWhole("bitsPerSample", audio.bitsPerSample, 1, 64);
}

void ReadTitle(JsonReader reader, Title& title)
{
    reader.Read("text", title.text, kLongestText);
    reader.Read("align", kAligns, title.align);
    JsonReader font = reader.Object("font");
    font.Read("family", title.fontFamily, 200);
    font.Read("size", title.fontSize, kSmallestFont, kLargestFont);
    font.Read("bold", title.bold);
    font.Read("italic", title.italic);
    reader.Object("gradient").Read("offset", title[Property::GradientOffset].value, -1, 1);
    ReadTitlePaint(reader, title);
    ReadProperties(reader, title.properties);
}

// A page as it was loaded without the keys: these carry their unknown fields themselves.
QJsonObject SourceOf(QJsonObject page)
{
    if (!page.value(kTitle).isObject())
        return page;
    QJsonObject title = page.value(kTitle).toObject();
    DropKeys(title);
    page[kTitle] = title;
    return page;
}

void ReadPage(JsonReader& reader, Page& page)
{
    page = NewPage();
    page.pageSource = SourceOf(reader.All());
    ReadTitle(reader.Object("title"), page.title);
    ReadBackground(reader.Object("background"), page.background);
}

// Title and background of the first page stand in the file itself, where they were when there was no other.
void ReadFirstPage(JsonReader& root, Project& project)
{
    QJsonObject source = root.Object("firstPage").All();
    ReadPage(root, project);
    for (const QLatin1String field : {kTitle, kBackground})
        if (const QJsonValue value = root.All().value(field); !value.isUndefined())
            source[field] = value;
    project.pageSource = SourceOf(source);
    project.source = root.All();
    for (const QLatin1String field : {kTitle, kBackground, kFirstPage, kPages})
        project.source.remove(field);
}

void ReadPages(JsonReader& root, Project& project)
{
    ReadFirstPage(root, project);
    for (JsonReader& reader : root.Objects("pages", 0, kMostPages - 1)) {
        Page page;
        ReadPage(reader, page);
        project.otherPages.append(std::make_shared<const Page>(std::move(page)));
    }
}

bool ReadVersion(JsonReader& root, ProjectError& error)
{
    const QJsonValue value = root.All().value(QLatin1String("version"));
    const double version = value.toDouble();
    if (!value.isDouble() || version < 1 || version != std::floor(version)) {
        root.Fail(QStringLiteral("version"), value, Expected::WholeNumber, 1, kProjectVersion);
    } else if (version > kProjectVersion) {
        error.fault = ProjectFault::NewerVersion;
        error.detail = QString::number(version, 'g', 15);
        return false;
    }
    return error.path.isEmpty();
}

void SetPlace(ProjectError& error, const QByteArray& json, qsizetype offset)
{
    const QByteArray before = json.left(std::clamp<qsizetype>(offset, 0, json.size()));
    const qsizetype lineStart = before.lastIndexOf('\n') + 1;
    error.line = static_cast<int>(before.count('\n')) + 1;
    error.column = static_cast<int>(QString::fromUtf8(before.mid(lineStart)).toUcs4().size()) + 1;
}

QJsonObject TitleToJson(const Title& title)
{
    const QJsonObject json{{QStringLiteral("text"), title.text},
                           {QStringLiteral("align"), NameOf(kAligns, title.align)},
                           {QStringLiteral("font"), QJsonObject{{QStringLiteral("family"), title.fontFamily},
                                                                {QStringLiteral("size"), title.fontSize},
                                                                {QStringLiteral("bold"), title.bold},
                                                                {QStringLiteral("italic"), title.italic}}},
                           {QStringLiteral("gradient"),
                            QJsonObject{{QStringLiteral("offset"), title[Property::GradientOffset].value}}}};
    return Overlay(Overlay(json, TitlePaintToJson(title)), StillValuesToJson(title.properties));
}

QJsonObject PageToJson(const Page& page)
{
    const QJsonObject json = StillToJson(page);
    const QJsonObject keys = KeysToJson(page.title.properties);
    if (keys.isEmpty())
        return json;
    return Overlay(json, {{kTitle, QJsonObject{{QStringLiteral("animation"), keys}}}});
}

} // namespace

QJsonObject Overlay(const QJsonObject& old, const QJsonObject& known)
{
    QJsonObject result = old;
    for (auto field = known.begin(); field != known.end(); ++field) {
        const QJsonValue before = old.value(field.key());
        if (field->isObject())
            result[field.key()] = Overlay(before.toObject(), field->toObject());
        else
            result[field.key()] = *field;
    }
    return result;
}

QJsonObject HeadToJson(const Project& project)
{
    const SKvVideoResolution& video = project.video;
    const SKvWaveFormatInfo& audio = project.audio;
    const QJsonObject known{
        {QStringLiteral("version"), kProjectVersion},
        {QStringLiteral("video"),
         QJsonObject{{QStringLiteral("width"), video.width},
                     {QStringLiteral("height"), video.height},
                     {QStringLiteral("frameRate"), NameOf(kRates, video.frameRate)},
                     {QStringLiteral("scan"), NameOf(kScans, video.scanMode)},
                     {QStringLiteral("aspect"), NameOf(kAspects, video.aspectRatio)}}},
        {QStringLiteral("audio"), QJsonObject{{QStringLiteral("channels"), qint64(audio.channels)},
                                              {QStringLiteral("sampleRate"), qint64(audio.sampleRate)},
                                              {QStringLiteral("bitsPerSample"), audio.bitsPerSample}}},
        {QStringLiteral("duration"), project.duration}};
    return Overlay(project.source, known);
}

QJsonObject StillToJson(const Page& page)
{
    return Overlay(page.pageSource,
                   {{kTitle, TitleToJson(page.title)}, {kBackground, BackgroundToJson(page.background)}});
}

QJsonObject ProjectToJson(const Project& project)
{
    QJsonObject json = HeadToJson(project);
    QJsonObject first = PageToJson(PageAt(project, 0));
    json[kTitle] = first.take(kTitle);
    json[kBackground] = first.take(kBackground);
    if (!first.isEmpty())
        json[kFirstPage] = first;
    QJsonArray others;
    for (int i = 1; i < PageCount(project); ++i)
        others.append(PageToJson(PageAt(project, i)));
    if (!others.isEmpty())
        json[kPages] = others;
    return json;
}

QByteArray SerialiseProject(const Project& project)
{
    return QJsonDocument(ProjectToJson(project)).toJson(QJsonDocument::Indented);
}

std::optional<Project> ParseProject(const QByteArray& bytes, ProjectError& error)
{
    error = {};
    const QByteArray json = bytes.startsWith("\xEF\xBB\xBF") ? bytes.mid(3) : bytes;
    if (json.trimmed().isEmpty()) {
        error.fault = ProjectFault::Empty;
        return std::nullopt;
    }
    QJsonParseError fault;
    QJsonDocument document = QJsonDocument::fromJson(json, &fault);
    if (fault.error != QJsonParseError::NoError) {
        error.fault = ProjectFault::BadJson;
        error.detail = fault.errorString();
        SetPlace(error, json, fault.offset);
        return std::nullopt;
    }
    // Unescaped, a byte order mark at the begin of a name or text would get lost.
    if (json.contains("\xEF\xBB\xBF"))
        document = QJsonDocument::fromJson(QByteArray(json).replace("\xEF\xBB\xBF", "\\ufeff"));
    if (!document.isObject()) {
        error.fault = ProjectFault::BadField;
        error.expected = Expected::Object;
        error.detail = Shortened(document.array());
        return std::nullopt;
    }
    JsonReader root({}, document.object(), error);
    if (!ReadVersion(root, error))
        return std::nullopt;
    Project project = NewProject();
    root.ReadWhole("duration", project.duration, 1, kLongestDuration);
    ReadVideo(root.Object("video"), project.video);
    ReadAudio(root.Object("audio"), project.audio);
    ReadPages(root, project);
    return error.path.isEmpty() ? std::optional(std::move(project)) : std::nullopt;
}

} // namespace titler
