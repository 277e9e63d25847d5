// Draws the time ruler.
#pragma once

#include "project/Animation.h"
#include "time/TimeLayout.h"

#include <QFont>

#include <optional>
#include <vector>

class QPainter;

namespace titler {

struct Skin;

/// What the ruler shows.
struct TimeRulerLook
{
    const Properties& properties;
    std::vector<Property> lanes;
    FrameRate rate;
    int frame; ///< of the playhead
    int lastFrame;
    std::optional<std::pair<Property, int>> hovered; ///< the key with that index
    bool hasFocus;
};

/// The font of the ruler's labels.
QFont TimeRulerFont(const QFont& font);

/// What the names of the properties need beside the lanes, in that font.
int TimeRulerNamesWidth(const QFont& font);

void DrawTimeRuler(QPainter& painter, const QRect& client, const TimeLayout& layout,
                   const TimeRulerLook& look, const Skin& skin);

} // namespace titler
