#include "project/AnimationJson.h"

#include "project/ProjectJson.h"

#include <QJsonArray>

#include <algorithm>

namespace titler {
namespace {

constexpr Names<std::uint32_t, 5> kKinds{{{kKvEaseLinear, "linear"},
                                          {kKvEaseSpeedUp, "speed up"},
                                          {kKvEaseSpeedDown, "speed down"},
                                          {kKvEaseDrawn, "own"},
                                          {kKvEaseSmooth, "smooth"}}};
constexpr QLatin1String kAnimation("animation");
constexpr QLatin1String kEase("ease");

// What of a key we do not know.
QJsonObject Unknown(QJsonObject key)
{
    QJsonObject ease = key.value(kEase).toObject();
    for (const char* name : {"kind", "out", "in"})
        ease.remove(QLatin1String(name));
    for (const char* name : {"frame", "value", "ease"})
        key.remove(QLatin1String(name));
    if (!ease.isEmpty())
        key.insert(kEase, ease);
    return key;
}

// A preset's name alone is enough: missing tangents are the preset's.
Ease ReadEase(JsonReader reader)
{
    std::uint32_t kind = kKvEaseLinear;
    reader.Read("kind", kKinds, kind);
    Ease ease = PresetEase(kind);
    ease.kind = kind;
    reader.ReadTangent("out", ease.outX, ease.outY);
    reader.ReadTangent("in", ease.inX, ease.inY);
    return ease;
}

Key ReadKey(JsonReader reader, const PropertyTraits& traits)
{
    Key key{0, traits.still, {}, Unknown(reader.All())};
    reader.ReadWhole("frame", key.frame, 0, kLongestDuration);
    reader.Read("value", key.value, traits.least, traits.most);
    key.ease = ReadEase(reader.Object("ease"));
    return key;
}

void Sort(KeyList& keys)
{
    std::stable_sort(keys.begin(), keys.end(), [](const Key& a, const Key& b) { return a.frame < b.frame; });
    // From the back, so that the last one of a frame is the one that stays.
    const auto first = std::unique(keys.rbegin(), keys.rend(),
                                   [](const Key& a, const Key& b) { return a.frame == b.frame; });
    keys.erase(keys.begin(), first.base());
}

QJsonObject KeyToJson(const Key& key)
{
    const Ease& ease = key.ease;
    return Overlay(key.source,
                   {{QStringLiteral("frame"), key.frame},
                    {QStringLiteral("value"), key.value},
                    {kEase, QJsonObject{{QStringLiteral("kind"), NameOf(kKinds, ease.kind)},
                                        {QStringLiteral("out"), QJsonArray{ease.outX, ease.outY}},
                                        {QStringLiteral("in"), QJsonArray{ease.inX, ease.inY}}}}});
}

Property PropertyOf(int index)
{
    return static_cast<Property>(index);
}

} // namespace

void ReadProperties(JsonReader title, Properties& properties)
{
    JsonReader animation = title.Object("animation");
    for (int i = 0; i < kProperties; ++i) {
        const PropertyTraits& traits = TraitsOf(PropertyOf(i));
        Animated& animated = properties[static_cast<std::size_t>(i)];
        if (PropertyOf(i) != Property::GradientOffset)
            title.Read(traits.name, animated.value, traits.least, traits.most);
        for (JsonReader& key : animation.Objects(traits.name, 0, kMostKeys))
            animated.keys.push_back(ReadKey(key, traits));
        Sort(animated.keys);
    }
}

QJsonObject StillValuesToJson(const Properties& properties)
{
    QJsonObject values;
    for (int i = 0; i < kProperties; ++i)
        if (PropertyOf(i) != Property::GradientOffset)
            values[QLatin1String(TraitsOf(PropertyOf(i)).name)] =
                properties[static_cast<std::size_t>(i)].value;
    return values;
}

QJsonObject KeysToJson(const Properties& properties)
{
    QJsonObject lists;
    for (int i = 0; i < kProperties; ++i) {
        QJsonArray list;
        for (const Key& key : properties[static_cast<std::size_t>(i)].keys)
            list.append(KeyToJson(key));
        if (!list.isEmpty())
            lists[QLatin1String(TraitsOf(PropertyOf(i)).name)] = list;
    }
    return lists;
}

void DropKeys(QJsonObject& title)
{
    QJsonObject animation = title.value(kAnimation).toObject();
    for (int i = 0; i < kProperties; ++i)
        animation.remove(QLatin1String(TraitsOf(PropertyOf(i)).name));
    if (animation.isEmpty())
        title.remove(kAnimation);
    else
        title[kAnimation] = animation;
}

} // namespace titler
