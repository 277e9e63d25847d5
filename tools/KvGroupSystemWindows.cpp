#include "core/CodePoints.h"
#include "core/Text.h"
#include "tools/KvGroupSystem.h"

#include <cerrno>
#include <fcntl.h>
#include <io.h>
#include <memory>

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace kv {
namespace {

/// The console behind a stream; null when it leads elsewhere.
HANDLE ConsoleOf(std::FILE* file)
{
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file)));
    DWORD mode = 0;
    return GetConsoleMode(handle, &mode) ? handle : nullptr;
}

// Consoles take only so much at once.
bool WriteToConsole(HANDLE console, std::wstring_view text)
{
    constexpr std::size_t kMostAtOnce = 8192;
    while (!text.empty()) {
        const std::wstring_view piece = text.substr(0, CutLength(text, kMostAtOnce));
        DWORD written = 0;
        if (!WriteConsoleW(console, piece.data(), static_cast<DWORD>(piece.size()), &written, nullptr))
            return false;
        text.remove_prefix(piece.size());
    }
    return true;
}

} // namespace

// The system's own, not those of main: these are characters, and nobody has taken a "*" in them for files.
std::vector<std::string> ProgramArguments(int, char**)
{
    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&LocalFree)> all(CommandLineToArgvW(GetCommandLineW(), &count),
                                                            LocalFree);
    std::vector<std::string> arguments;
    for (int i = 1; all && i < count; ++i)
        arguments.push_back(ToFileName(all.get()[i]));
    return arguments;
}

// Otherwise a byte 26 would end the input.
void PrepareStreams()
{
    for (std::FILE* stream : {stdin, stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
}

int WriteText(std::FILE* file, std::string_view text)
{
    if (const HANDLE console = ConsoleOf(file))
        return WriteToConsole(console, FromFileName(text)) ? 0 : EIO;
    errno = 0;
    if (std::fwrite(text.data(), 1, text.size(), file) == text.size())
        return 0;
    return errno != 0 ? errno : EIO;
}

bool ReadText(std::FILE* file, std::string& bytes)
{
    if (const HANDLE console = ConsoleOf(file)) {
        constexpr wchar_t kEnd = 26; // Ctrl+Z at the start of a line
        wchar_t line[1 << 12];
        DWORD length = 0;
        if (!ReadConsoleW(console, line, 1 << 12, &length, nullptr) || length == 0 || line[0] == kEnd)
            length = 0;
        bytes = ToFileName({line, length});
    } else {
        bytes.resize(std::size_t{1} << 16);
        bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
    }
    return !bytes.empty();
}

} // namespace kv
