// What a program of the command line does differently on each system.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

/// The arguments behind the program's name, as ToFileName gives them.
std::vector<std::string> ProgramArguments(int argc, char** argv);

/// Makes the standard streams pass bytes as they are.
void PrepareStreams();

/// Writes UTF-8, to a console as characters. @return 0 or the system's error number.
int WriteText(std::FILE* file, std::string_view text);

/// Reads some more bytes; what was typed at a console comes as UTF-8.
/// @return false, with no bytes, at the end or when the stream has failed (std::ferror).
bool ReadText(std::FILE* file, std::string& bytes);

} // namespace kv
