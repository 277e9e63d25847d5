// Between paints and their JSON.
#pragma once

#include "project/JsonReader.h"

namespace titler {

/// The fill, outline and shadow of a title. The gradient stands where it stood before there were other fills.
/// @param title the object of the whole title.
void ReadTitlePaint(JsonReader& title, Title& result);
/// The fields that `ReadTitlePaint` reads.
QJsonObject TitlePaintToJson(const Title& title);

void ReadBackground(JsonReader reader, Paint& background);
QJsonObject BackgroundToJson(const Paint& background);

} // namespace titler
