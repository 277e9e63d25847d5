// Draws a subtitle with its markup.
#pragma once

#include "project/Project.h"
#include "subtitles/SubtitleStyle.h"

#include <QImage>

namespace titler {

/// The subtitle over nothing, in its template's look. Long lines wrap within the title-safe area; italic,
/// bold, underlined and coloured tags show (not in the look of the project's title), and "{\anN}" places the
/// text as the keys of a number pad lie. A thin dark rim and a soft shadow keep it apart from a bright
/// picture, but in the look of the title, which has its own.
/// @param size the whole frame's, in pixels. @return Format_ARGB32_Premultiplied; null when memory is short.
QImage SubtitlePicture(const Project& project, const Subtitle& subtitle, QSize size);

} // namespace titler
