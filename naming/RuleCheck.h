// What a rule editor checks before it accepts a pattern.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace kv {

/// The characters that a pattern may not hold, in the order in which the message lists them. The question
/// mark stands in the list twice.
inline constexpr std::array<wchar_t, 7> kRefusedRuleCharacters = {L'/', L'\\', L'*', L'?', L'"', L'|', L'?'};

/// The message about the first label fault of a pattern: a label that stands there twice (string 7022) or one
/// that does not exist (7021). Nothing for a sound or an empty pattern.
std::optional<std::wstring> LabelFault(std::wstring_view pattern);

/// The message about the first fault of a pattern as an editor accepts it: empty (string 7016), a refused
/// character (7018 with the list of them), a label fault. Nothing for a sound pattern.
std::optional<std::wstring> RuleFault(std::wstring_view pattern);

} // namespace kv
