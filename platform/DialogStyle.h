// The look of dialogs and their items.
#pragma once

#include "KvPlatform.h"

namespace kv {

/// A style sheet of the skin's colours, or a host's own. Set on a dialog it goes before the application's.
/// @param settings may be null.
QString DialogStyleSheet(const SKvGuiBasicSettings* settings);
/// What a host has put around it, of whatever skin it is: a host may bring back a sheet that it kept.
QString WithoutDialogStyle(QString sheet);

} // namespace kv
