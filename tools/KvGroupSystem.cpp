#include "tools/KvGroupSystem.h"

#include <cerrno>

namespace kv {

std::vector<std::string> ProgramArguments(int argc, char** argv)
{
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

void PrepareStreams() {}

int WriteText(std::FILE* file, std::string_view text)
{
    errno = 0;
    if (std::fwrite(text.data(), 1, text.size(), file) == text.size())
        return 0;
    return errno != 0 ? errno : EIO;
}

bool ReadText(std::FILE* file, std::string& bytes)
{
    bytes.resize(std::size_t{1} << 16);
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
    return !bytes.empty();
}

} // namespace kv
