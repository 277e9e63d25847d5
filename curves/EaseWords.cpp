#include "curves/EaseWords.h"

#include "core/Text.h"
#include "core/TextTables.h"

#include <algorithm>
#include <cmath>

namespace kv {

namespace {

constexpr std::uint32_t kTextStartKey = 20041; // the others follow in walking order
constexpr std::uint32_t kTextPlace = 20045;
constexpr std::uint32_t kTextHandle = 20046;
constexpr int kMostDigits = 6;

std::wstring Rounded(double value, double pixel)
{
    const double wanted = pixel > 0 ? std::ceil(-std::log10(pixel)) : 0;
    const int digits = static_cast<int>(std::clamp(wanted, 0.0, double{kMostDigits}));
    const double scale = std::pow(10, digits);
    const bool isNothing = std::abs(value) * scale < 0.5; // else it would be a zero with a minus
    return NumberText(isNothing ? 0 : value, digits);
}

struct PlaceNumbers
{
    std::wstring time;
    std::wstring value;
};

PlaceNumbers NumbersOf(const EaseLayout& layout, SKvCurvePoint place)
{
    const double width = std::max(1, layout.plot.Width());
    const double height = std::max(1, layout.plot.Height());
    return {Rounded(place.x, (layout.end - layout.start) / width),
            Rounded(place.y, layout.view.Span() / height)};
}

} // namespace

std::wstring HandleName(EaseHandle handle)
{
    return LoadText(kTextStartKey + static_cast<std::uint32_t>(handle));
}

std::wstring PlaceText(const EaseLayout& layout, SKvCurvePoint place)
{
    const PlaceNumbers numbers = NumbersOf(layout, place);
    return FillText(LoadText(kTextPlace), {numbers.time, numbers.value});
}

std::wstring HandleText(const EaseLayout& layout, EaseHandle handle, SKvCurvePoint place)
{
    const PlaceNumbers numbers = NumbersOf(layout, place);
    return FillText(LoadText(kTextHandle), {HandleName(handle), numbers.time, numbers.value});
}

} // namespace kv
