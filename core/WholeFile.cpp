#include "core/WholeFile.h"

#include "core/Text.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace kv {
namespace {

class Descriptor
{
public:
    explicit Descriptor(int descriptor) : m_descriptor(descriptor) {}
    ~Descriptor()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Get() const { return m_descriptor; }
    /// Some file systems report a full disk only here. An interrupted close has closed all the same.
    bool Close()
    {
        const int descriptor = m_descriptor;
        m_descriptor = -1;
        return ::close(descriptor) == 0 || errno == EINTR;
    }

private:
    int m_descriptor;
};

/// Removes a file again unless it is kept.
class Temporary
{
public:
    explicit Temporary(std::string path) : m_path(std::move(path)) {}
    ~Temporary()
    {
        if (!m_path.empty())
            ::unlink(m_path.c_str());
    }
    Temporary(const Temporary&) = delete;
    Temporary& operator=(const Temporary&) = delete;

    const std::string& Path() const { return m_path; }
    void Keep() { m_path.clear(); }

private:
    std::string m_path;
};

std::string Message(std::string_view action, std::string_view name, std::string_view reason)
{
    std::string text = "cannot ";
    text.append(action).append(" '").append(name).append("': ").append(reason);
    return text;
}

void Report(std::string* error, std::string_view action, std::string_view name, std::string_view reason)
{
    if (error)
        *error = Message(action, name, reason);
}

/// The system's reason in English, whatever the process locale is.
std::string Reason(int number)
{
#if defined(__GLIBC__)
    if (const char* text = ::strerrordesc_np(number))
        return text;
#endif
    return std::generic_category().message(number);
}

/// The path as the system takes it; none, with errno set, when it would be cut short.
std::optional<std::string> SystemPath(std::wstring_view path)
{
    if (path.empty() || path.find(L'\0') != std::wstring_view::npos) {
        errno = path.empty() ? ENOENT : EINVAL;
        return std::nullopt;
    }
    return ToFileName(path);
}

/// The folder of a path with its closing slash; empty for the current one.
std::string FolderOf(const std::string& path)
{
    return path.substr(0, path.rfind('/') + 1);
}

/// Where a chain of symbolic links ends, also when nothing is there yet.
std::optional<std::string> FollowLinks(std::string path)
{
    constexpr int kMostLinks = 40;
    for (int i = 0; i < kMostLinks; ++i) {
        struct stat status;
        if (::lstat(path.c_str(), &status) != 0 || !S_ISLNK(status.st_mode))
            return path;
        char buffer[4096];
        const ssize_t length = ::readlink(path.c_str(), buffer, sizeof buffer);
        if (length <= 0 || length == sizeof buffer) {
            errno = length < 0 ? errno : ENAMETOOLONG;
            return std::nullopt;
        }
        const std::string target(buffer, static_cast<std::size_t>(length));
        path = target.front() == '/' ? target : FolderOf(path).append(target);
    }
    errno = ELOOP;
    return std::nullopt;
}

int OpenTemporary(const std::string& folder, mode_t mode, std::string& path)
{
    static std::atomic<unsigned> counter{0};
    constexpr int kMostTries = 1000;
    const std::string prefix = folder + ".kv-" + std::to_string(::getpid()) + "-";
    for (int i = 0; i < kMostTries; ++i) {
        path = prefix;
        path.append(std::to_string(++counter)).append(".tmp");
        const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (descriptor >= 0 || (errno != EEXIST && errno != EINTR))
            return descriptor;
    }
    return -1;
}

bool WriteAll(int descriptor, std::string_view bytes)
{
    constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), std::min(bytes.size(), kMostAtOnce));
        if (written > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (written == 0 || errno != EINTR) {
            errno = written == 0 ? ENOSPC : errno;
            return false;
        }
    }
    return true;
}

bool Flush(int descriptor)
{
    while (::fsync(descriptor) != 0) {
        if (errno != EINTR)
            return false;
    }
    return true;
}

/// Gives a new file the owner and the mode of the one that it replaces.
bool TakeOver(int descriptor, const struct stat& old)
{
    mode_t mode = old.st_mode & 07777;
    // Only the administrator gives files away. Where the owner or the group cannot be kept, the bits that
    // lend their rights must not be either.
    if (::fchown(descriptor, old.st_uid, old.st_gid) != 0) {
        mode &= ~static_cast<mode_t>(S_ISUID);
        if (::fchown(descriptor, static_cast<uid_t>(-1), old.st_gid) != 0)
            mode &= ~static_cast<mode_t>(S_ISGID);
    }
    return ::fchmod(descriptor, mode) == 0;
}

/// Makes the new name last through a crash. The file itself is whole either way, so failures do not count.
void FlushFolder(const std::string& folder)
{
    const Descriptor descriptor(
        ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.Get() >= 0)
        Flush(descriptor.Get());
}

/// @param old the status of the file that is there, or null. @return 0 or the system's error number.
int Replace(const std::string& target, const struct stat* old, std::string_view bytes)
{
    const std::string folder = FolderOf(target);
    std::string path;
    // A new file gets the mode that the process gives to its files, one that replaces another stays private
    // until it takes over.
    Descriptor descriptor(OpenTemporary(folder, old ? 0600 : 0666, path));
    if (descriptor.Get() < 0)
        return errno;
    Temporary temporary(path);
    const bool written = WriteAll(descriptor.Get(), bytes) && (!old || TakeOver(descriptor.Get(), *old)) &&
                         Flush(descriptor.Get()) && descriptor.Close();
    if (!written || ::rename(path.c_str(), target.c_str()) != 0)
        return errno;
    temporary.Keep();
    FlushFolder(folder);
    return 0;
}

} // namespace

std::optional<std::string> ReadWholeFile(std::wstring_view path, std::string* error, std::size_t limit)
{
    const auto name = SystemPath(path);
    const auto fail = [&](std::string_view reason) {
        Report(error, "read", name.value_or(ToFileName(path)), reason);
        return std::nullopt;
    };
    if (!name)
        return fail(Reason(errno));
    // Opening a pipe would wait for somebody to write to it.
    const Descriptor file(::open(name->c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status;
    if (file.Get() < 0 || ::fstat(file.Get(), &status) != 0)
        return fail(Reason(errno));
    if (!S_ISREG(status.st_mode))
        return fail(S_ISDIR(status.st_mode) ? Reason(EISDIR) : "not a regular file");
    const std::string tooLong = "the file is longer than " + std::to_string(limit) + " bytes";
    const std::size_t expected = status.st_size > 0 ? static_cast<std::size_t>(status.st_size) : 0;
    if (expected > limit)
        return fail(tooLong);

    // One byte more than expected, so that the end is seen without growing.
    std::string bytes(expected + 1, '\0');
    std::size_t size = 0;
    for (;;) {
        if (size == bytes.size())
            bytes.resize(size + std::max<std::size_t>(size, 4096));
        const ssize_t got = ::read(file.Get(), bytes.data() + size, bytes.size() - size);
        if (got == 0)
            break;
        if (got < 0 && errno != EINTR)
            return fail(Reason(errno));
        size += got > 0 ? static_cast<std::size_t>(got) : 0;
        if (size > limit)
            return fail(tooLong);
    }
    bytes.resize(size);
    return bytes;
}

bool WriteWholeFile(std::wstring_view path, std::string_view bytes, std::string* error)
{
    const auto name = SystemPath(path);
    const auto fail = [&](std::string_view reason) {
        Report(error, "write", name.value_or(ToFileName(path)), reason);
        return false;
    };
    const auto target = name ? FollowLinks(*name) : std::nullopt;
    if (!target)
        return fail(Reason(errno));

    struct stat old;
    const bool replaces = ::stat(target->c_str(), &old) == 0;
    if (replaces && S_ISDIR(old.st_mode))
        return fail(Reason(EISDIR));
    if (replaces && !S_ISREG(old.st_mode))
        return fail("not a regular file");
    // Renaming would get around a write protection that somebody set on purpose.
    if (replaces && ::faccessat(AT_FDCWD, target->c_str(), W_OK, AT_EACCESS) != 0)
        return fail(Reason(errno));
    const int failure = Replace(*target, replaces ? &old : nullptr, bytes);
    return failure == 0 || fail(Reason(failure));
}

NewFile CreateEmptyFile(std::wstring_view path, std::string* error)
{
    const auto name = SystemPath(path);
    const Descriptor file(name ? ::open(name->c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666) : -1);
    if (file.Get() >= 0)
        return NewFile::Made;
    const int reason = errno;
    Report(error, "write", name.value_or(ToFileName(path)), Reason(reason));
    return reason == EEXIST ? NewFile::IsThere : NewFile::Failed;
}

} // namespace kv
