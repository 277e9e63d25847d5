// The colours along a gradient, ready for looking up.
#pragma once

#include "Project.h"

#include <QRgb>

#include <vector>

namespace titler {

/// The gradient's colours at evenly spaced places, premultiplied; the last one stands at the right end.
/// Between two stops the colours run straight (not premultiplied) through their mid point, where they mix
/// half and half: what the gradient control shows is what the title gets.
std::vector<QRgb> GradientTable(const GradientStops& stops, int size);

} // namespace titler
