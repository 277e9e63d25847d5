#include "ProjectJson.h"

#include <QJsonDocument>
#include <QJsonParseError>
#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <utility>

namespace titler {
namespace {

template <typename T, std::size_t N>
using Names = std::array<std::pair<T, const char*>, N>;

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

template <typename T, std::size_t N>
QString NameOf(const Names<T, N>& names, T value)
{
    const auto found =
        std::find_if(names.begin(), names.end(), [&](const auto& n) { return n.first == value; });
    return QLatin1String(found == names.end() ? names.front().second : found->second);
}

// The shortest decimal that reads back as the same float: 0.3, not 0.30000001192092896.
double ShortDouble(float value)
{
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    double result = 0;
    std::from_chars(text.data(), end, result);
    return result;
}

// A value as it stands in the file; a long one is cut. Empty for one that is not there.
QString Shortened(const QJsonValue& value)
{
    constexpr qsizetype longest = 40;
    if (value.isUndefined())
        return {};
    const QByteArray json = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    const QString text = QString::fromUtf8(json.mid(1, json.size() - 2));
    return text.size() <= longest ? text : text.left(longest) + QChar(0x2026);
}

// Reads fields and remembers the first fault with the path that leads to it.
class Reader
{
public:
    Reader(QString path, QJsonObject object, ProjectError& error)
        : m_path(std::move(path))
        , m_object(std::move(object))
        , m_error(error)
    {
    }

    Reader Object(const char* key)
    {
        const QJsonValue value = Take(key);
        if (!value.isUndefined() && !value.isObject())
            Fail(key, value, Expected::Object);
        return {PathOf(key), value.toObject(), m_error};
    }

    std::vector<Reader> Objects(const char* key, int least, int most)
    {
        std::vector<Reader> elements;
        const QJsonValue value = Take(key);
        if (value.isUndefined())
            return elements;
        const QJsonArray list = value.toArray();
        if (!value.isArray() || list.size() < least || list.size() > most) {
            if (Fail(key, value, Expected::List, least, most) && value.isArray())
                m_error.length = list.size();
            return elements;
        }
        for (const QJsonValue element : list) {
            const QString name = QStringLiteral("%1[%2]").arg(QLatin1String(key)).arg(elements.size());
            if (!element.isObject())
                Fail(name, element, Expected::Object);
            elements.push_back({PathOf(name), element.toObject(), m_error});
        }
        return elements;
    }

    void Read(const char* key, QString& text, int longest)
    {
        const QJsonValue value = Take(key);
        if (value.isUndefined())
            return;
        if (!value.isString() || value.toString().size() > longest)
            if (Fail(key, value, Expected::Text, 0, longest) && value.isString())
                m_error.length = value.toString().size();
        // Half a surrogate pair is no text: it cannot be written again.
        text = QStringDecoder(QStringDecoder::Utf8,
                              QStringDecoder::Flag::ConvertInitialBom)(value.toString().toUtf8());
    }

    void Read(const char* key, bool& flag)
    {
        const QJsonValue value = Take(key);
        if (!value.isUndefined() && !value.isBool())
            Fail(key, value, Expected::Flag);
        flag = value.toBool(flag);
    }

    void Read(const char* key, double& number, double least, double most)
    {
        const QJsonValue value = Take(key);
        if (value.isUndefined())
            return;
        const double read = value.toDouble();
        if (!value.isDouble() || !(read >= least && read <= most))
            Fail(key, value, Expected::Number, least, most);
        else
            number = read;
    }

    void Read(const char* key, float& number, double least, double most)
    {
        double read = static_cast<double>(number);
        Read(key, read, least, most);
        number = static_cast<float>(read);
    }

    template <typename Integer>
    void ReadWhole(const char* key, Integer& number, double least, double most)
    {
        const QJsonValue value = Take(key);
        if (value.isUndefined())
            return;
        const double read = value.toDouble();
        if (!value.isDouble() || !(read >= least && read <= most) || read != std::floor(read))
            Fail(key, value, Expected::WholeNumber, least, most);
        else
            number = static_cast<Integer>(read);
    }

    template <typename T, std::size_t N>
    void Read(const char* key, const Names<T, N>& names, T& result)
    {
        const QJsonValue value = Take(key);
        if (value.isUndefined())
            return;
        const auto found = std::find_if(names.begin(), names.end(), [&](const auto& name) {
            return value.toString() == QLatin1String(name.second);
        });
        if (found != names.end()) {
            result = found->first;
            return;
        }
        if (Fail(key, value, Expected::Name))
            for (const auto& name : names)
                m_error.names << QLatin1String(name.second);
    }

    void ReadColour(const char* key, DWORD& colour)
    {
        const QJsonValue value = Take(key);
        if (value.isUndefined())
            return;
        if (const std::optional<DWORD> read = ParseColour(value.toString()))
            colour = *read;
        else
            Fail(key, value, Expected::Colour);
    }

    const QJsonObject& All() const { return m_object; }

    bool Fail(const QString& key, const QJsonValue& found, Expected expected, double least = 0,
              double most = 0)
    {
        if (!m_error.path.isEmpty())
            return false;
        m_error.fault = ProjectFault::BadField;
        m_error.path = PathOf(key);
        m_error.expected = expected;
        m_error.least = least;
        m_error.most = most;
        m_error.detail = Shortened(found);
        return true;
    }

private:
    bool Fail(const char* key, const QJsonValue& found, Expected expected, double least = 0, double most = 0)
    {
        return Fail(QString(QLatin1String(key)), found, expected, least, most);
    }

    QJsonValue Take(const char* key) const { return m_object.value(QLatin1String(key)); }
    QString PathOf(const QString& key) const { return m_path.isEmpty() ? key : m_path + u'.' + key; }
    QString PathOf(const char* key) const { return PathOf(QString(QLatin1String(key))); }

    QString m_path;
    QJsonObject m_object;
    ProjectError& m_error;
};

void ReadVideo(Reader reader, SKvVideoResolution& video)
{
    reader.ReadWhole("width", video.width, kSmallestFrame, kLargestFrame);
    reader.ReadWhole("height", video.height, kSmallestFrame, kLargestFrame);
    reader.Read("frameRate", kRates, video.frameRate);
    reader.Read("scan", kScans, video.scanMode);
    reader.Read("aspect", kAspects, video.aspectRatio);
}

void ReadAudio(Reader reader, SKvWaveFormatInfo& audio)
{
    reader.ReadWhole("channels", audio.channels, 0, 256);
    reader.ReadWhole("sampleRate", audio.sampleRate, 1000, 1000000);
    reader.ReadWhole("bitsPerSample", audio.bitsPerSample, 1, 64);
}

void ReadGradient(Reader reader, Title& title)
{
    reader.Read("angle", title.gradientAngle, -360, 360);
    reader.Read("offset", title[Property::GradientOffset].value, -1, 1);
    Title read;
    for (Reader& element : reader.Objects("stops", kFewestStops, kMostStops)) {
        SKvCGGradientKey& stop = read.stops.emplace_back(SKvCGGradientKey{0xFFFFFFFF, 0.0f, 0.5f});
        read.stopSources.push_back(element.All());
        element.ReadColour("colour", stop.colour);
        element.Read("position", stop.position, 0, 1);
        element.Read("midPoint", stop.midPoint, 0, 1);
    }
    if (read.stops.empty())
        return;
    SetStops(read, NormalisedStops(read.stops));
    title.stops = std::move(read.stops);
    title.stopSources = std::move(read.stopSources);
}

void ReadTitle(Reader reader, Title& title)
{
    reader.Read("text", title.text, kLongestText);
    reader.Read("align", kAligns, title.align);
    Reader font = reader.Object("font");
    font.Read("family", title.fontFamily, 200);
    font.Read("size", title.fontSize, kSmallestFont, kLargestFont);
    font.Read("bold", title.bold);
    font.Read("italic", title.italic);
    ReadGradient(reader.Object("gradient"), title);
}

bool ReadVersion(Reader& root, ProjectError& error)
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
    QJsonArray stops;
    for (std::size_t i = 0; i < title.stops.size(); ++i) {
        const SKvCGGradientKey& stop = title.stops[i];
        const QJsonObject known{{QStringLiteral("colour"), ColourText(stop.colour)},
                                {QStringLiteral("position"), ShortDouble(stop.position)},
                                {QStringLiteral("midPoint"), ShortDouble(stop.midPoint)}};
        stops.append(i < title.stopSources.size() ? Overlay(title.stopSources[i], known) : known);
    }
    return {{QStringLiteral("text"), title.text},
            {QStringLiteral("align"), NameOf(kAligns, title.align)},
            {QStringLiteral("font"), QJsonObject{{QStringLiteral("family"), title.fontFamily},
                                                 {QStringLiteral("size"), title.fontSize},
                                                 {QStringLiteral("bold"), title.bold},
                                                 {QStringLiteral("italic"), title.italic}}},
            {QStringLiteral("gradient"), QJsonObject{{QStringLiteral("angle"), title.gradientAngle},
                                                     {QStringLiteral("offset"), title[Property::GradientOffset].value},
                                                     {QStringLiteral("stops"), stops}}}};
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

QJsonObject ProjectToJson(const Project& project)
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
        {QStringLiteral("title"), TitleToJson(project.title)}};
    return Overlay(project.source, known);
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
    Reader root({}, document.object(), error);
    if (!ReadVersion(root, error))
        return std::nullopt;
    Project project = NewProject();
    project.source = document.object();
    ReadVideo(root.Object("video"), project.video);
    ReadAudio(root.Object("audio"), project.audio);
    ReadTitle(root.Object("title"), project.title);
    return error.path.isEmpty() ? std::optional(std::move(project)) : std::nullopt;
}

} // namespace titler
