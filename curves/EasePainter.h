// Draws the ease curve window.
#pragma once

#include "KvPlatform.h"
#include "curves/EaseLayout.h"

#include <optional>

namespace kv {

/// The theme's colours, 0xAARRGGBB.
struct EaseColours
{
    /// Looks them up; a theme that lacks a key leaves the window's own colour.
    void Load();

    DWORD ground = 0xFF505050u;
    DWORD plot = 0xFF646464u;
    DWORD grid = 0xFF808080u;
    DWORD label = 0xFF141414u; ///< also of the text in a box
    DWORD axis = 0xFFA0A0A0u;
    DWORD curve = 0xFFFF0000u;
    DWORD key = 0xFFFFFFFFu; ///< and its tangent's line
    DWORD handle = 0xFF00FF00u;
    DWORD box = 0xFFC8C8C8u;
    DWORD place = 0xFFE6E6E6u;
    DWORD initial = 0xFFC8A0A0u;
    DWORD speed = 0xFF8CC8FFu;
    DWORD mark = 0xFFFFFFFFu;
    DWORD focus = 0;
};

/// What is shown beside the curve.
struct EaseLook
{
    EaseColours colours;
    bool enabled = true;
    bool focused = false;
    bool editable = true;
    std::optional<EaseHandle> selected;
    /// The time and value that are told below the plot.
    std::optional<SKvCurvePoint> place;
    QString entry; ///< what is being typed on the selected handle
    double frameLength = 0;
    bool speed = false;
    bool initialCurve = false;
};

/// Fills the client area; lines of one pixel stand on whole device pixels. Reads only: the keys' own reading
/// operations are not const.
void DrawEase(Graphics& graphics, EaseModel& model, const EaseLayout& layout, const EaseLook& look);

/// Where the time and value are told.
CRect EasePlaceRect(const EaseLayout& layout);

} // namespace kv
