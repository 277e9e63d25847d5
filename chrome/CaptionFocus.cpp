#include "chrome/CaptionFocus.h"

#include <algorithm>

namespace kv {

namespace {

constexpr int kApplicationButton = 10000;

bool IsApplicationButton(const CaptionStop& stop)
{
    return stop.hit == CaptionHit{CaptionPart::Button, kApplicationButton};
}

} // namespace

std::vector<CaptionStop> CaptionStops(const CaptionParts& parts)
{
    std::vector<CaptionStop> buttons;
    for (const auto& [number, rect] : parts.buttons)
        buttons.push_back({{CaptionPart::Button, static_cast<int>(number)}, rect});
    std::stable_sort(buttons.begin(), buttons.end(),
                     [](const CaptionStop& a, const CaptionStop& b) { return a.rect.left < b.rect.left; });
    // In a narrow frame it may stand under the others: first all the same.
    std::stable_partition(buttons.begin(), buttons.end(), IsApplicationButton);

    std::vector<CaptionStop> stops;
    stops.reserve(buttons.size() + parts.items.size() + 1);
    auto button = buttons.begin();
    if (button != buttons.end() && IsApplicationButton(*button))
        stops.push_back(*button++);
    for (const CRect& item : parts.items)
        stops.push_back({{CaptionPart::Item, static_cast<int>(&item - parts.items.data())}, item});
    if (!parts.flag.IsRectEmpty())
        stops.push_back({{CaptionPart::Flag, -1}, parts.flag});
    stops.insert(stops.end(), button, buttons.end());
    return stops;
}

int FindStop(const std::vector<CaptionStop>& stops, const CaptionHit& hit)
{
    const auto found =
        std::find_if(stops.begin(), stops.end(), [&hit](const CaptionStop& stop) { return stop.hit == hit; });
    return found == stops.end() ? -1 : static_cast<int>(found - stops.begin());
}

int WalkStops(const std::vector<CaptionStop>& stops, int from, CaptionStep step)
{
    const int count = static_cast<int>(stops.size());
    const bool forward = step == CaptionStep::Next || step == CaptionStep::First;
    const bool isFromEnd = step == CaptionStep::First || step == CaptionStep::Last || from < 0;
    int at = isFromEnd ? (forward ? -1 : count) : from;
    for (int seen = 0; seen < count; ++seen) {
        at = (at + (forward ? 1 : count - 1)) % count;
        if (stops[static_cast<std::size_t>(at)].enabled)
            return at;
    }
    return -1;
}

int EntryStop(const std::vector<CaptionStop>& stops, int selected)
{
    const int chosen = FindStop(stops, {CaptionPart::Item, selected});
    if (chosen >= 0 && stops[static_cast<std::size_t>(chosen)].enabled)
        return chosen;
    const auto item = std::find_if(stops.begin(), stops.end(), [](const CaptionStop& stop) {
        return stop.enabled && stop.hit.part == CaptionPart::Item;
    });
    return item == stops.end() ? WalkStops(stops, -1, CaptionStep::First)
                               : static_cast<int>(item - stops.begin());
}

} // namespace kv
