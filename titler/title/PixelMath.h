// Premultiplied pixels.
#pragma once

#include <QRgb>

namespace titler {

/// The colour times coverage, each channel rounded. @param coverage 0 to 255.
inline QRgb Covered(QRgb colour, uint coverage)
{
    const auto scaled = [&](uint channels) { // two of them, with room between
        const uint product = (channels & 0x00FF00FFu) * coverage + 0x00800080u;
        return (product + ((product >> 8) & 0x00FF00FFu)) >> 8 & 0x00FF00FFu;
    };
    return scaled(colour >> 8) << 8 | scaled(colour);
}

/// One pixel over another.
inline QRgb Over(QRgb upper, QRgb lower)
{
    return upper + Covered(lower, 255u - static_cast<uint>(qAlpha(upper)));
}

} // namespace titler
