#include "project/PaintJson.h"

#include "project/ProjectJson.h"

#include <charconv>

namespace titler {
namespace {

constexpr Names<PaintKind, 3> kFills{
    {{PaintKind::Gradient, "gradient"}, {PaintKind::Solid, "solid"}, {PaintKind::FourCorner, "fourCorner"}}};
constexpr Names<PaintKind, 4> kBackgrounds{{{PaintKind::None, "none"},
                                            {PaintKind::Solid, "solid"},
                                            {PaintKind::Gradient, "gradient"},
                                            {PaintKind::FourCorner, "fourCorner"}}};

// The shortest decimal that reads back as the same float: 0.3, not 0.30000001192092896.
double ShortDouble(float value)
{
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    double result = 0;
    std::from_chars(text.data(), end, result);
    return result;
}

void ReadGradient(JsonReader reader, Paint& paint)
{
    reader.Read("angle", paint.angle, -360, 360);
    Paint read;
    for (JsonReader& element : reader.Objects("stops", kFewestStops, kMostStops)) {
        SKvCGGradientKey& stop = read.stops.emplace_back(SKvCGGradientKey{0xFFFFFFFF, 0.0f, 0.5f});
        read.stopSources.push_back(element.All());
        element.ReadColour("colour", stop.colour);
        element.Read("position", stop.position, 0, 1);
        element.Read("midPoint", stop.midPoint, 0, 1);
    }
    if (read.stops.empty())
        return;
    SetStops(read, NormalisedStops(read.stops));
    paint.stops = std::move(read.stops);
    paint.stopSources = std::move(read.stopSources);
}

QJsonObject GradientToJson(const Paint& paint)
{
    QJsonArray stops;
    for (std::size_t i = 0; i < paint.stops.size(); ++i) {
        const SKvCGGradientKey& stop = paint.stops[i];
        const QJsonObject known{{QStringLiteral("colour"), ColourText(stop.colour)},
                                {QStringLiteral("position"), ShortDouble(stop.position)},
                                {QStringLiteral("midPoint"), ShortDouble(stop.midPoint)}};
        stops.append(i < paint.stopSources.size() ? Overlay(paint.stopSources[i], known) : known);
    }
    return {{QStringLiteral("angle"), paint.angle}, {QStringLiteral("stops"), stops}};
}

// What a paint has beside its gradient.
template <std::size_t N>
void ReadPaint(JsonReader& reader, const Names<PaintKind, N>& kinds, Paint& paint)
{
    reader.Read("kind", kinds, paint.kind);
    reader.ReadColour("colour", paint.colour);
    reader.ReadColours("corners", paint.corners);
}

template <std::size_t N>
QJsonObject PaintToJson(const Paint& paint, const Names<PaintKind, N>& kinds)
{
    QJsonArray corners;
    for (const DWORD corner : paint.corners)
        corners.append(ColourText(corner));
    return {{QStringLiteral("kind"), NameOf(kinds, paint.kind)},
            {QStringLiteral("colour"), ColourText(paint.colour)},
            {QStringLiteral("corners"), corners}};
}

void ReadOutline(JsonReader reader, TextOutline& outline)
{
    reader.Read("on", outline.on);
    reader.ReadColour("colour", outline.colour);
    reader.Read("width", outline.width, 0, kWidestOutline);
}

void ReadShadow(JsonReader reader, TextShadow& shadow)
{
    reader.Read("on", shadow.on);
    reader.ReadColour("colour", shadow.colour);
    reader.Read("x", shadow.x, -kFarthestShadow, kFarthestShadow);
    reader.Read("y", shadow.y, -kFarthestShadow, kFarthestShadow);
    reader.Read("blur", shadow.blur, 0, kWidestBlur);
}

} // namespace

void ReadTitlePaint(JsonReader& title, Title& result)
{
    ReadGradient(title.Object("gradient"), result.fill);
    JsonReader fill = title.Object("fill");
    ReadPaint(fill, kFills, result.fill);
    ReadOutline(title.Object("outline"), result.outline);
    ReadShadow(title.Object("shadow"), result.shadow);
}

QJsonObject TitlePaintToJson(const Title& title)
{
    const TextOutline& outline = title.outline;
    const TextShadow& shadow = title.shadow;
    return {{QStringLiteral("gradient"), GradientToJson(title.fill)},
            {QStringLiteral("fill"), PaintToJson(title.fill, kFills)},
            {QStringLiteral("outline"), QJsonObject{{QStringLiteral("on"), outline.on},
                                                    {QStringLiteral("colour"), ColourText(outline.colour)},
                                                    {QStringLiteral("width"), outline.width}}},
            {QStringLiteral("shadow"), QJsonObject{{QStringLiteral("on"), shadow.on},
                                                   {QStringLiteral("colour"), ColourText(shadow.colour)},
                                                   {QStringLiteral("x"), shadow.x},
                                                   {QStringLiteral("y"), shadow.y},
                                                   {QStringLiteral("blur"), shadow.blur}}}};
}

void ReadBackground(JsonReader reader, Paint& background)
{
    ReadPaint(reader, kBackgrounds, background);
    ReadGradient(reader.Object("gradient"), background);
}

QJsonObject BackgroundToJson(const Paint& background)
{
    QJsonObject json = PaintToJson(background, kBackgrounds);
    json[QStringLiteral("gradient")] = GradientToJson(background);
    return json;
}

} // namespace titler
