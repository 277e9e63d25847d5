// Which parts of a caption strip keys reach, and in what order. Pure.
#pragma once

#include "chrome/CaptionLayout.h"

#include <vector>

namespace kv {

/// A part that can have the focus.
struct CaptionStop
{
    CaptionHit hit; ///< a button, an item or the flag
    CRect rect;
    bool enabled = true;
};

/// The parts from left to right as they are walked: application button, items, flag, window buttons as they
/// stand. All are enabled.
std::vector<CaptionStop> CaptionStops(const CaptionParts& parts);

/// @return the index of the stop; -1 when there is none.
int FindStop(const std::vector<CaptionStop>& stops, const CaptionHit& hit);

enum class CaptionStep
{
    Previous,
    Next,
    First,
    Last
};

/// The enabled stop that a step leads to; beyond an end it begins at the other one.
/// @param from where the focus is; -1 for nowhere. @return -1 when no stop is enabled.
int WalkStops(const std::vector<CaptionStop>& stops, int from, CaptionStep step);

/// Where the focus comes to first: the selected item, else the first enabled one, else the first enabled
/// part. @param selected index of the item; -1 for none. @return -1 when no stop is enabled.
int EntryStop(const std::vector<CaptionStop>& stops, int selected);

} // namespace kv
