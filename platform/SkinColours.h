// The theme's colours as painters want them.
#pragma once

#include "KvGuiRes.h"

#include <QColor>

namespace kv {

/// Marks the focus where the theme does not say how: orange.
inline constexpr DWORD kDefaultFocusColour = 0xFFFFA500u;

/// The theme's colour. @param fallback 0xAARRGGBB, for a theme that lacks the key.
inline QColor SkinColour(const wchar_t* key, DWORD fallback)
{
    DWORD colour = fallback;
    KvGuiRes::LoadColor(key, colour);
    return QColor::fromRgba(colour);
}

/// The text colours of the theme: normal, under the pointer, disabled.
inline QColor TextColour()
{
    return SkinColour(L"keWindowTextColor", 0xFFE2E2E4u);
}
inline QColor HoverTextColour()
{
    return SkinColour(L"keWindowTextHoverColor", 0xFFFFFFFFu);
}
inline QColor DisabledTextColour()
{
    return SkinColour(L"keDisabledTextColor", 0xFF96969Au);
}

/// The light frame of a caption bar's selected or open item.
inline QColor CaptionFrameColour()
{
    return SkinColour(L"keRibbonTitleBarTabFrameLightColor", 0xFF686870u);
}

/// What marks the focus in every control that follows the theme.
inline QColor FocusColour()
{
    return SkinColour(L"keFocusColor", kDefaultFocusColour);
}

} // namespace kv
