// How an area is coloured, and what stands around a text. Plain values.
#pragma once

#include "KvTypes.h"

#include <QJsonObject>

#include <array>
#include <vector>

namespace titler {

inline constexpr int kFewestStops = 2;
inline constexpr int kMostStops = 255;
inline constexpr double kWidestOutline = 10.0; ///< percent of the frame's height, as the next two
inline constexpr double kFarthestShadow = 20.0;
inline constexpr double kWidestBlur = 10.0;

using GradientStops = std::vector<SKvCGGradientKey>;
/// Top left, top right, bottom left, bottom right, as `CKvQuadGradCtrl::SetData` has them.
using CornerColours = std::array<DWORD, 4>;

enum class PaintKind
{
    None, ///< of a background only
    Solid,
    Gradient,
    FourCorner
};

/// The colours of every kind stay while another kind is in use. All are 0xAARRGGBB.
struct Paint
{
    PaintKind kind = PaintKind::Gradient;
    DWORD colour = 0xFFFFFFFF; ///< Solid
    /// Gradient: kFewestStops to kMostStops, sorted, positions and mid points from 0 to 1.
    GradientStops stops = {};
    double angle = 0; ///< Gradient: degrees clockwise, 0 from left to right, 90 downwards; -360 to 360
    CornerColours corners{0xFFFFF3D6, 0xFFFFB347, 0xFFE8505B, 0xFF7A3B8F}; ///< FourCorner
    /// Beside `stops`: each as it was loaded, for the fields that we do not know. `SetStops` keeps them in
    /// step.
    std::vector<QJsonObject> stopSources = {};
};

/// Around the letters, on their outer side.
struct TextOutline
{
    bool on = false;
    DWORD colour = 0xFF000000;
    double width = 0.5; ///< percent of the frame's height, 0 to kWidestOutline

    bool operator==(const TextOutline&) const = default;
};

/// Under the letters and their outline. Lengths are percent of the frame's height.
struct TextShadow
{
    bool on = false;
    DWORD colour = 0xA0000000;
    double x = 0.5;    ///< to the right, -kFarthestShadow to kFarthestShadow
    double y = 0.5;    ///< down, likewise
    double blur = 0.5; ///< how far its edge spreads to both sides, 0 to kWidestBlur

    bool operator==(const TextShadow&) const = default;
};

/// True when both colour alike: the fields that we do not know do not count.
bool LooksSame(const Paint& a, const Paint& b);

/// Sorts stops and brings positions and mid points into 0 to 1; more than kMostStops are cut.
GradientStops NormalisedStops(GradientStops stops);

/// Gives the paint other stops. The fields that we do not know go with a stop that was moved or recoloured,
/// and go away with one that was deleted.
void SetStops(Paint& paint, GradientStops stops);

} // namespace titler
