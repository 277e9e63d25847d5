// Where kvgroup gets names and rules from.
#pragma once

#include "KvFileNaming.h"
#include "core/RefCounted.h"
#include "naming/MediaNames.h"

#include <cstdio>
#include <string>

namespace kv {

/// Adds the names of the files in a folder: regular files and links to such. Not sorted yet.
/// @return false with `error` naming the folder, or the file of which the system does not tell what it is.
bool ReadFolder(const std::string& folder, MediaNames& names, std::string& error);

/// Adds the names of a list in UTF-8, one a line; the folder part of a path is cut off. Not sorted yet.
/// @return false with `error` when the list cannot be read or holds what is no name.
bool ReadNames(std::FILE* list, MediaNames& names, std::string& error);

/// The rules of a file, or the built-in ones.
/// @param file null for the built-in ones.
/// @return null with `error` naming the file when it is no regular file, cannot be read or holds no rule.
Reference<IKvFileNamingRuleCollection> LoadRules(const std::string* file, std::string& error);

/// Writes the built-in rules to a new file; one that is there already stays as it is. @return false with
/// `error` naming the file.
bool WriteBuiltInRules(const std::string& file, std::string& error);

} // namespace kv
