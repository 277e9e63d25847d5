// Which of the two Ctrl keys is down.
#pragma once

namespace kv {

/// Begins to watch the application's key events; further calls do nothing.
void WatchControlKeys();

/// True while a left Ctrl key is down. A Ctrl press that is not known as the right one counts as left, also
/// one that only the modifiers of the latest input event tell of: it was pressed in another program.
bool IsLeftControlDown();

} // namespace kv
