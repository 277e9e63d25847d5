#include "project/JsonReader.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QStringDecoder>

namespace titler {
namespace {

QString ElementName(const char* list, std::size_t index)
{
    return QStringLiteral("%1[%2]").arg(QLatin1String(list)).arg(index);
}

} // namespace

QString Shortened(const QJsonValue& value)
{
    constexpr qsizetype longest = 40;
    if (value.isUndefined())
        return {};
    const QByteArray json = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    const QString text = QString::fromUtf8(json.mid(1, json.size() - 2));
    return text.size() <= longest ? text : text.left(longest) + QChar(0x2026);
}

JsonReader JsonReader::Object(const char* key)
{
    const QJsonValue value = Take(key);
    if (!value.isUndefined() && !value.isObject())
        Fail(key, value, Expected::Object);
    return {PathOf(QLatin1String(key)), value.toObject(), m_error};
}

std::vector<JsonReader> JsonReader::Objects(const char* key, int least, int most)
{
    std::vector<JsonReader> elements;
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
        const QString name = ElementName(key, elements.size());
        if (!element.isObject())
            Fail(name, element, Expected::Object);
        elements.push_back({PathOf(name), element.toObject(), m_error});
    }
    return elements;
}

void JsonReader::Read(const char* key, QString& text, int longest)
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

void JsonReader::Read(const char* key, bool& flag)
{
    const QJsonValue value = Take(key);
    if (!value.isUndefined() && !value.isBool())
        Fail(key, value, Expected::Flag);
    flag = value.toBool(flag);
}

void JsonReader::ReadNumber(const QString& key, const QJsonValue& value, double& number, double least,
                            double most)
{
    const double read = value.toDouble();
    if (!value.isDouble() || !(read >= least && read <= most))
        Fail(key, value, Expected::Number, least, most);
    else
        number = read;
}

void JsonReader::Read(const char* key, double& number, double least, double most)
{
    const QJsonValue value = Take(key);
    if (!value.isUndefined())
        ReadNumber(QLatin1String(key), value, number, least, most);
}

void JsonReader::Read(const char* key, float& number, double least, double most)
{
    double read = static_cast<double>(number);
    Read(key, read, least, most);
    number = static_cast<float>(read);
}

QJsonArray JsonReader::List(const char* key, int length)
{
    const QJsonValue value = Take(key);
    const QJsonArray list = value.toArray();
    if (value.isUndefined() || list.size() == length)
        return list;
    if (Fail(key, value, Expected::List, length, length) && value.isArray())
        m_error.length = list.size();
    return {};
}

void JsonReader::ReadTangent(const char* key, double& fraction, double& offset)
{
    const QJsonArray pair = List(key, 2);
    if (pair.isEmpty())
        return;
    ReadNumber(ElementName(key, 0), pair[0], fraction, 0, kLongestTangent);
    ReadNumber(ElementName(key, 1), pair[1], offset, -kLargestEaseOffset, kLargestEaseOffset);
}

void JsonReader::ReadColour(const QString& key, const QJsonValue& value, DWORD& colour)
{
    if (const std::optional<DWORD> read = ParseColour(value.toString()))
        colour = *read;
    else
        Fail(key, value, Expected::Colour);
}

void JsonReader::ReadColour(const char* key, DWORD& colour)
{
    const QJsonValue value = Take(key);
    if (!value.isUndefined())
        ReadColour(QLatin1String(key), value, colour);
}

void JsonReader::ReadColours(const char* key, CornerColours& colours)
{
    const QJsonArray list = List(key, static_cast<int>(colours.size()));
    for (std::size_t i = 0; i < static_cast<std::size_t>(list.size()); ++i)
        ReadColour(ElementName(key, i), list[static_cast<qsizetype>(i)], colours[i]);
}

bool JsonReader::Fail(const QString& key, const QJsonValue& found, Expected expected, double least,
                      double most)
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

bool JsonReader::Fail(const char* key, const QJsonValue& found, Expected expected, double least, double most)
{
    return Fail(QString(QLatin1String(key)), found, expected, least, most);
}

} // namespace titler
