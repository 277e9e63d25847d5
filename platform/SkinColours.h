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

/// What marks the focus in every control that follows the theme.
inline QColor FocusColour()
{
    return SkinColour(L"keFocusColor", kDefaultFocusColour);
}

} // namespace kv
