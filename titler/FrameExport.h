// Pictures into files.
#pragma once

#include "Project.h"

class QImage;

namespace titler {

/// Writes a picture as PNG, whole or not at all. @return an empty text, or the system's reason.
QString SavePng(const QImage& image, const QString& file);

/// Renders the title at the project's frame size, over nothing, and writes it as PNG.
QString ExportFrame(const Project& project, const QString& file);

} // namespace titler
