// How the log list's own widgets look in the skin.
#pragma once

#include <QString>

namespace kv {

/// For the find bar and the badge.
QString AppLogStyleSheet();

} // namespace kv
