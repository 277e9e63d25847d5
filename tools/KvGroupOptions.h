// The command line of kvgroup.
#pragma once

#include "KvFileNaming.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

enum class KvGroupAction
{
    Group,
    Check,
    InitRules,
    Help,
    Version
};

struct KvGroupOptions
{
    KvGroupAction action = KvGroupAction::Group;
    std::string argument; ///< the folder ("-" for standard input), the pattern or the file of the action
    std::optional<std::string> rulesFile;
    /// Rule classes in the order in which they are taken.
    std::vector<unsigned int> classes = {kKvNamingClassVideoAudio};
    bool json = false;
    bool all = false;
    bool why = false;
    bool orphans = false;
};

/// Reads the arguments behind the program's name.
/// @param error receives what is wrong with them, in one line.
std::optional<KvGroupOptions> ReadKvGroupOptions(const std::vector<std::string>& arguments,
                                                 std::string& error);

/// What --help prints.
std::string_view KvGroupHelp();

} // namespace kv
