// The toolkit's key events in the field's numbers.
#pragma once

#include "KvTypes.h"

class QKeyEvent;

namespace kv {

/// The virtual key (VK_…, or the character code of a letter or digit key); 0 for a key that has none here.
UINT VirtualKey(const QKeyEvent& event);

/// The UTF-16 unit that the key types; Ctrl+A to Ctrl+Z are 1 to 26; 0 when it types nothing (or more than
/// one unit at once).
UINT KeyCharacter(const QKeyEvent& event);

} // namespace kv
