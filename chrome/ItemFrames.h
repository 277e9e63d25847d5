// The frames of a caption strip's items: that of the selected tab and that of the item whose popup is open.
#pragma once

#include "KvPlatform.h"

namespace kv {

/// Left, top and right edge; the centre separator is the bottom.
void DrawTabFrame(Graphics& graphics, const CRect& tab);

inline constexpr int kOpenFrameReach = 3; ///< beyond the item, the pen included
void DrawOpenItemFrame(Graphics& graphics, const CRect& item);

} // namespace kv
