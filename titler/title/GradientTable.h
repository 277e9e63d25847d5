// The colours along a gradient, ready for looking up.
#pragma once

#include "project/Project.h"

#include <QRgb>

#include <vector>

namespace titler {

/// The gradient's colours at evenly spaced places, premultiplied; the last one stands at the right end.
/// Between two stops the colours run straight (not premultiplied) through their mid point, where they mix
/// half and half: what the gradient control shows is what the title gets.
/// @param opacity 0 to 1; the colours' alpha is multiplied by it.
std::vector<QRgb> GradientTable(const GradientStops& stops, int size, double opacity = 1);

} // namespace titler
