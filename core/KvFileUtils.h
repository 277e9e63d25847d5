// Tests on files and file names.
#pragma once

namespace KvFileUtils {

/// 1 when the file (or folder) exists; also when it is out of reach, so that nobody takes it for missing.
int DoesFileExist(const wchar_t* file);

/// 1 when the whole name fits the wildcard specification; see kv::FitsWildcard.
int DoesFileMatchSpecEx(const wchar_t* name, const wchar_t* specification);

} // namespace KvFileUtils
