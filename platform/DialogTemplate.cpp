#include "platform/DialogTemplate.h"

#include <QFontMetrics>

#include <algorithm>

namespace kv {
namespace {

int Scale(int value, int numerator, int denominator)
{
    const int product = 2 * value * numerator;
    return (product < 0 ? product - denominator : product + denominator) / (2 * denominator);
}

} // namespace

DialogUnits DialogUnitsOf(const QFont& font)
{
    const QFontMetrics metrics(font);
    const int letters =
        metrics.horizontalAdvance(QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"));
    return {std::max(1, (letters / 26 + 1) / 2), std::max(1, metrics.height())};
}

QRect ToPixels(const DialogUnits& units, const QRect& rect)
{
    return {Scale(rect.x(), units.x, 4), Scale(rect.y(), units.y, 8), Scale(rect.width(), units.x, 4),
            Scale(rect.height(), units.y, 8)};
}

std::optional<DialogTemplate> FindDialog(std::uint32_t number)
{
    for (const DialogTemplate& dialog : BuiltInDialogs()) {
        if (dialog.number == number)
            return dialog;
    }
    return std::nullopt;
}

std::span<const DialogItem> ItemsOf(std::uint32_t dialog)
{
    const std::span<const DialogItem> items = BuiltInDialogItems();
    const auto isOther = [dialog](const DialogItem& item) { return item.dialog != dialog; };
    const auto first = std::find_if_not(items.begin(), items.end(), isOther);
    return {first, std::find_if(first, items.end(), isOther)};
}

QRect ItemRect(const DialogItem& item, const DialogUnits& units, QSize growth)
{
    const QRect rect = ToPixels(units, {item.x, item.y, item.width, item.height});
    switch (item.growth) {
    case DialogGrowth::Keep:
        return rect;
    case DialogGrowth::Widen:
        return rect.adjusted(0, 0, growth.width(), 0);
    case DialogGrowth::KeepRight:
        return rect.translated(growth.width(), 0);
    case DialogGrowth::WidenAtBottom:
        return rect.adjusted(0, growth.height(), growth.width(), growth.height());
    case DialogGrowth::TakeRoom:
        return rect.adjusted(0, 0, growth.width(), growth.height());
    case DialogGrowth::TakeHeight:
        return rect.adjusted(0, 0, 0, growth.height());
    case DialogGrowth::TallAtRight:
        return rect.adjusted(growth.width(), 0, growth.width(), growth.height());
    }
    return rect;
}

} // namespace kv
