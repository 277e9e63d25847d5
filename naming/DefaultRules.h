// The rules that a user starts with.
#pragma once

#include "KvFileNaming.h"

namespace kv {

/// Appends the five built-in rules. @return false when memory is short.
bool AddDefaultRules(IKvFileNamingRuleCollection& collection);

} // namespace kv
