#include "core/KvFileUtils.h"

#include "core/Text.h"
#include "core/Wildcard.h"

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#else
#include <cerrno>
#include <sys/stat.h>
#endif

namespace KvFileUtils {

int DoesFileExist(const wchar_t* file)
{
    if (!file)
        return 0;
#ifdef _WIN32
    if (GetFileAttributesW(file) != INVALID_FILE_ATTRIBUTES)
        return 1;
    const DWORD reason = GetLastError();
    return reason != ERROR_FILE_NOT_FOUND && reason != ERROR_PATH_NOT_FOUND && reason != ERROR_INVALID_NAME;
#else
    struct stat status;
    return ::stat(kv::ToFileName(file).c_str(), &status) == 0 || (errno != ENOENT && errno != ENOTDIR);
#endif
}

int DoesFileMatchSpecEx(const wchar_t* name, const wchar_t* specification)
{
    return name && specification && kv::FitsWildcard(name, specification);
}

} // namespace KvFileUtils
