// Dialog templates and dialog units.
#pragma once

#include "resources/Tables.h"

#include <QRect>
#include <QSize>

#include <optional>
#include <span>

class QFont;

namespace kv {

/// Four horizontal and eight vertical dialog units in pixels.
struct DialogUnits
{
    int x;
    int y;
};

/// The average width of the Latin letters, rounded, and the height of the font.
DialogUnits DialogUnitsOf(const QFont& font);

/// Each number is rounded by itself, half away from 0.
QRect ToPixels(const DialogUnits& units, const QRect& rect);

std::optional<DialogTemplate> FindDialog(std::uint32_t number);
/// The items in the order of the Tab key.
std::span<const DialogItem> ItemsOf(std::uint32_t dialog);

/// Where an item stands in a dialog that is larger than its template by `growth` pixels.
QRect ItemRect(const DialogItem& item, const DialogUnits& units, QSize growth);

} // namespace kv
