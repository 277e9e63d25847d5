// Draws the ease curve window.
#pragma once

#include "KvPlatform.h"
#include "curves/EaseLayout.h"

#include <optional>

namespace kv {

/// What is shown beside the curve.
struct EaseLook
{
    bool enabled = true;
    bool focused = false;
    bool editable = true;
    DWORD focusColour = 0;
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
