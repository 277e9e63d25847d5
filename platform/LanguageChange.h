// The toolkit's event that follows a change of the texts.
#pragma once

namespace kv {

/// Sends it to the application object, which posts it to every window. All of them have looked their texts up
/// by then.
void SendLanguageChange();

/// True for what `SendLanguageChange` posted: nothing is to be looked up again.
bool IsLanguageChangeOwn();

} // namespace kv
