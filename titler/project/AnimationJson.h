// Between a title's moving values and the project file.
#pragma once

#include "project/JsonReader.h"

#include <QJsonObject>

namespace titler {

/// Reads the values at rest and the keys from the fields of the title, but not the gradient's offset at rest,
/// which stands with the gradient. Keys are sorted; of keys at one frame the last stays.
void ReadProperties(JsonReader title, Properties& properties);

/// The title's fields for the values at rest, but for the gradient's offset.
QJsonObject StillValuesToJson(const Properties& properties);
/// Lists of keys by the property's name, for those that are animated.
QJsonObject KeysToJson(const Properties& properties);

/// Removes from the title's field "animation" what KeysToJson writes, and the field when nothing is left.
void DropKeys(QJsonObject& title);

} // namespace titler
