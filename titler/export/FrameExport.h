// Pictures into files.
#pragma once

#include "project/Project.h"

class QImage;

namespace titler {

class TitleRenderer;

/// Writes a picture as PNG, whole or not at all. @return an empty text, or the system's reason.
QString SavePng(const QImage& image, const QString& file);

/// Renders the title over the project's background, at the frame's size, and writes it as PNG.
/// @return an empty text, or the reason.
QString ExportFrame(const Project& project, const QString& file, double frame);
/// The same with a renderer that has drawn other frames before.
QString ExportFrame(TitleRenderer& renderer, const Project& project, const QString& file, double frame);

} // namespace titler
