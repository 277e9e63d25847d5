#include "core/Text.h"
#include "core/WholeFile.h"

#include <algorithm>
#include <atomic>

#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace kv {
namespace {

class Handle
{
public:
    explicit Handle(HANDLE handle) : m_handle(handle) {}
    ~Handle() { Close(); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    HANDLE Get() const { return m_handle; }
    bool IsOpen() const { return m_handle != INVALID_HANDLE_VALUE; }
    bool Close()
    {
        const bool closed = !IsOpen() || CloseHandle(m_handle);
        m_handle = INVALID_HANDLE_VALUE;
        return closed;
    }

private:
    HANDLE m_handle;
};

std::string Reason(DWORD number)
{
    constexpr DWORD kMostCharacters = 512;
    wchar_t text[kMostCharacters];
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, number,
                                  0, text, kMostCharacters, nullptr);
    while (length > 0 && text[length - 1] <= L' ')
        --length;
    return length > 0 ? ToUtf8({text, length}) : "error " + std::to_string(number);
}

void Report(std::string* error, std::string_view action, std::wstring_view path, std::string_view reason)
{
    if (!error)
        return;
    *error = "cannot ";
    error->append(action).append(" '").append(ToUtf8(path)).append("': ").append(reason);
}

bool IsName(std::wstring_view path)
{
    const bool name = !path.empty() && path.find(L'\0') == std::wstring_view::npos;
    if (!name)
        SetLastError(ERROR_INVALID_NAME);
    return name;
}

/// Where symbolic links end; the path itself when nothing is there.
std::wstring FollowLinks(const std::wstring& path)
{
    const Handle file(CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                  nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!file.IsOpen())
        return path;
    const DWORD size = GetFinalPathNameByHandleW(file.Get(), nullptr, 0, FILE_NAME_NORMALIZED);
    std::wstring target(size, L'\0');
    const DWORD length = GetFinalPathNameByHandleW(file.Get(), target.data(), size, FILE_NAME_NORMALIZED);
    target.resize(length < size ? length : 0);
    return target.empty() ? path : target;
}

HANDLE CreateTemporary(const std::wstring& target, std::wstring& path)
{
    static std::atomic<unsigned> counter{0};
    constexpr int kMostTries = 1000;
    const std::wstring folder = target.substr(0, target.find_last_of(L"\\/:") + 1);
    const std::wstring prefix = folder + L".kv-" + std::to_wstring(GetCurrentProcessId()) + L"-";
    for (int i = 0; i < kMostTries; ++i) {
        path = prefix;
        path.append(std::to_wstring(++counter)).append(L".tmp");
        const HANDLE file =
            CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file != INVALID_HANDLE_VALUE || GetLastError() != ERROR_FILE_EXISTS)
            return file;
    }
    return INVALID_HANDLE_VALUE;
}

bool WriteAll(HANDLE file, std::string_view bytes)
{
    constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;
    while (!bytes.empty()) {
        DWORD written = 0;
        const auto size = static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce));
        if (!WriteFile(file, bytes.data(), size, &written, nullptr))
            return false;
        bytes.remove_prefix(written);
    }
    return true;
}

/// @return 0 or the system's error number.
DWORD Replace(const std::wstring& target, bool exists, std::string_view bytes)
{
    std::wstring path;
    Handle file(CreateTemporary(target, path));
    if (!file.IsOpen())
        return GetLastError();
    // Replacing, not moving, keeps the old file's attributes and access rights.
    const bool done = WriteAll(file.Get(), bytes) && FlushFileBuffers(file.Get()) && file.Close() &&
                      (exists ? ReplaceFileW(target.c_str(), path.c_str(), nullptr,
                                             REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr)
                              : MoveFileExW(path.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH));
    if (done)
        return 0;
    const DWORD failure = GetLastError();
    file.Close();
    DeleteFileW(path.c_str());
    return failure;
}

} // namespace

std::optional<std::string> ReadWholeFile(std::wstring_view path, std::string* error, std::size_t limit)
{
    const auto fail = [&](std::string_view reason) {
        Report(error, "read", path, reason);
        return std::nullopt;
    };
    const Handle file(IsName(path) ? CreateFileW(std::wstring(path).c_str(), GENERIC_READ,
                                                 FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                                 FILE_FLAG_SEQUENTIAL_SCAN, nullptr)
                                   : INVALID_HANDLE_VALUE);
    if (!file.IsOpen())
        return fail(Reason(GetLastError()));
    if (GetFileType(file.Get()) != FILE_TYPE_DISK)
        return fail("not a regular file");
    std::string bytes;
    for (;;) {
        constexpr DWORD kChunk = 1 << 16;
        const std::size_t size = bytes.size();
        bytes.resize(size + kChunk);
        DWORD got = 0;
        if (!ReadFile(file.Get(), bytes.data() + size, kChunk, &got, nullptr))
            return fail(Reason(GetLastError()));
        bytes.resize(size + got);
        if (bytes.size() > limit)
            return fail("the file is longer than " + std::to_string(limit) + " bytes");
        if (got == 0)
            return bytes;
    }
}

bool WriteWholeFile(std::wstring_view path, std::string_view bytes, std::string* error)
{
    const auto fail = [&](DWORD reason) {
        Report(error, "write", path, Reason(reason));
        return false;
    };
    if (!IsName(path))
        return fail(ERROR_INVALID_NAME);
    const std::wstring target = FollowLinks(std::wstring(path));
    const DWORD attributes = GetFileAttributesW(target.c_str());
    const bool exists = attributes != INVALID_FILE_ATTRIBUTES;
    if (exists && (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE | FILE_ATTRIBUTE_READONLY)))
        return fail(ERROR_ACCESS_DENIED);
    const DWORD failure = Replace(target, exists, bytes);
    return failure == 0 || fail(failure);
}

} // namespace kv
