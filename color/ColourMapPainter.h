// The picture of a colour map and the marks on it.
#pragma once

#include "KvPlatform.h"
#include "color/ColourState.h"
#include "color/OffScreenPicture.h"

#include <optional>

namespace kv {

/// Of what shows a colour and is disabled.
inline constexpr qreal kDisabledOpacity = 0.3;

/// What a map shows and where.
struct ColourMapShape
{
    int type; ///< an EKvColorMapType
    int lock; ///< an EKvColorLock of the type; 0 for alpha
    CRect client;

    friend bool operator==(const ColourMapShape&, const ColourMapShape&) = default;
};

/// The channels that a map changes; of a slider the upward one alone.
std::optional<ColourChannel> ChannelToTheRight(const ColourMapShape& shape);
ColourChannel ChannelUpwards(const ColourMapShape& shape);

/// Draws the picture again only when it would be another one.
class ColourMapPainter
{
public:
    void Invalidate() { m_picture.Invalidate(); }
    /// @param focused draws the focus ring; a disabled map is faint, its mark too.
    void Paint(Graphics& graphics, const ColourMapShape& shape, const ColourState& colour, bool enabled,
               bool focused);

private:
    bool IsPictureOf(const ColourMapShape& shape, const ColourState& colour) const;

    OffScreenPicture m_picture;
    ColourMapShape m_shape{};
    ColourState m_colour;
};

} // namespace kv
