#include "core/Text.h"
#include "core/WholeFile.h"

#include <algorithm>
#include <atomic>
#include <vector>

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

/// The system's reason, in English where it speaks it.
std::string Reason(DWORD number)
{
    constexpr DWORD kMostCharacters = 512;
    wchar_t text[kMostCharacters];
    DWORD length = 0;
    for (const DWORD language : {DWORD{MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US)}, DWORD{0}}) {
        if (length == 0)
            length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                    number, language, text, kMostCharacters, nullptr);
    }
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

/// A colon behind the folder or the drive would write into a stream that hides within a file.
bool IsNameOfFile(std::wstring_view path)
{
    const std::size_t slash = path.find_last_of(L"\\/");
    const bool hasDrive = path.size() > 1 && path[1] == L':';
    const std::size_t name = slash != std::wstring_view::npos ? slash + 1 : hasDrive ? 2 : 0;
    const bool file = IsName(path) && path.find(L':', name) == std::wstring_view::npos;
    if (!file)
        SetLastError(ERROR_INVALID_NAME);
    return file;
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

/// Gives a new file the attributes and the access rights of the one that it replaces, as far as the disk
/// keeps such.
void TakeOver(const std::wstring& path, const std::wstring& old, DWORD attributes)
{
    DWORD size = 0;
    GetFileSecurityW(old.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<unsigned char> rights(size);
    if (size > 0 && GetFileSecurityW(old.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size))
        SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, rights.data());
    constexpr DWORD kKept =
        FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
    SetFileAttributesW(path.c_str(), attributes & kKept);
}

/// In one step, unlike ReplaceFile, which moves the old file away first and can fail between the two.
/// @return 0 or the system's error number.
DWORD MoveOver(const std::wstring& path, const std::wstring& target)
{
    DWORD failure = 0;
    // A scanner or an indexer may hold a file for a moment.
    for (const DWORD milliseconds : {0u, 1u, 10u, 40u, 150u}) {
        Sleep(milliseconds);
        if (MoveFileExW(path.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
            return 0;
        failure = GetLastError();
        if (failure != ERROR_ACCESS_DENIED && failure != ERROR_SHARING_VIOLATION)
            return failure;
    }
    // A file that is held is refused without saying so.
    const Handle alone(CreateFileW(target.c_str(), DELETE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    return !alone.IsOpen() && GetLastError() == ERROR_SHARING_VIOLATION ? ERROR_SHARING_VIOLATION : failure;
}

/// @param attributes of the file that is there, or INVALID_FILE_ATTRIBUTES.
/// @return 0 or the system's error number.
DWORD Replace(const std::wstring& target, DWORD attributes, std::string_view bytes)
{
    std::wstring path;
    Handle file(CreateTemporary(target, path));
    if (!file.IsOpen())
        return GetLastError();
    // As long as it is empty: nobody reads in between what the old file kept from them.
    if (attributes != INVALID_FILE_ATTRIBUTES)
        TakeOver(path, target, attributes);
    DWORD failure = 0;
    if (!WriteAll(file.Get(), bytes) || !FlushFileBuffers(file.Get()) || !file.Close())
        failure = GetLastError();
    file.Close();
    if (failure == 0)
        failure = MoveOver(path, target);
    if (failure != 0)
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
    if (!IsNameOfFile(path))
        return fail(ERROR_INVALID_NAME);
    const std::wstring target = FollowLinks(std::wstring(path));
    const DWORD attributes = GetFileAttributesW(target.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES &&
        (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE | FILE_ATTRIBUTE_READONLY)))
        return fail(ERROR_ACCESS_DENIED);
    const DWORD failure = Replace(target, attributes, bytes);
    return failure == 0 || fail(failure);
}

NewFile CreateEmptyFile(std::wstring_view path, std::string* error)
{
    const Handle file(IsNameOfFile(path) ? CreateFileW(std::wstring(path).c_str(), GENERIC_WRITE, 0, nullptr,
                                                       CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr)
                                         : INVALID_HANDLE_VALUE);
    if (file.IsOpen())
        return NewFile::Made;
    const DWORD reason = GetLastError();
    Report(error, "write", path, Reason(reason));
    return reason == ERROR_FILE_EXISTS ? NewFile::IsThere : NewFile::Failed;
}

} // namespace kv
