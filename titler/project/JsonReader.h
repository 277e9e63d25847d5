// Fields of a JSON object into values.
#pragma once

#include "project/Project.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace titler {

/// Values with their names in the file.
template <typename T, std::size_t N>
using Names = std::array<std::pair<T, const char*>, N>;

/// The name of a value; that of the first one for a value without.
template <typename T, std::size_t N>
QString NameOf(const Names<T, N>& names, T value)
{
    const auto found =
        std::find_if(names.begin(), names.end(), [&](const auto& n) { return n.first == value; });
    return QLatin1String(found == names.end() ? names.front().second : found->second);
}

/// A value as it stands in the file; a long one is cut. Empty for one that is not there.
QString Shortened(const QJsonValue& value);

/// Reads fields; those that are missing leave the value as it is. The first fault is remembered with the path
/// that leads to it, and later ones are not.
class JsonReader
{
public:
    JsonReader(QString path, QJsonObject object, ProjectError& error)
        : m_path(std::move(path))
        , m_object(std::move(object))
        , m_error(error)
    {
    }

    JsonReader Object(const char* key);
    /// @param least, most how many elements the list may have.
    std::vector<JsonReader> Objects(const char* key, int least, int most);
    void Read(const char* key, QString& text, int longest);
    void Read(const char* key, bool& flag);
    void Read(const char* key, double& number, double least, double most);
    void Read(const char* key, float& number, double least, double most);
    template <typename Integer>
    void ReadWhole(const char* key, Integer& number, double least, double most);
    /// A list of two numbers: 0 to kLongestTangent, and at most kLargestEaseOffset to both sides of 0.
    void ReadTangent(const char* key, double& fraction, double& offset);
    template <typename T, std::size_t N>
    void Read(const char* key, const Names<T, N>& names, T& result);
    void ReadColour(const char* key, DWORD& colour);
    /// A list of four colours.
    void ReadColours(const char* key, CornerColours& colours);

    const QJsonObject& All() const { return m_object; }

    /// @return false when there was a fault already.
    bool Fail(const QString& key, const QJsonValue& found, Expected expected, double least = 0,
              double most = 0);

private:
    bool Fail(const char* key, const QJsonValue& found, Expected expected, double least = 0, double most = 0);
    /// The list of that length; an empty one for one that is missing or another.
    QJsonArray List(const char* key, int length);
    void ReadColour(const QString& key, const QJsonValue& value, DWORD& colour);
    void ReadNumber(const QString& key, const QJsonValue& value, double& number, double least, double most);
    QJsonValue Take(const char* key) const { return m_object.value(QLatin1String(key)); }
    QString PathOf(const QString& key) const { return m_path.isEmpty() ? key : m_path + u'.' + key; }

    QString m_path;
    QJsonObject m_object;
    ProjectError& m_error;
};

template <typename Integer>
void JsonReader::ReadWhole(const char* key, Integer& number, double least, double most)
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
void JsonReader::Read(const char* key, const Names<T, N>& names, T& result)
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

} // namespace titler
