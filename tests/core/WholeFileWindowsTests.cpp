// What only Windows does to files.
#include "core/KvFileUtils.h"
#include "core/WholeFile.h"
#include "tests/core/TemporaryFolder.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace kv {
namespace {

/// Holds a file open. @param sharing what others may do with it meanwhile.
class Holder
{
public:
    Holder(const std::wstring& path, DWORD access, DWORD sharing)
        : m_file(CreateFileW(path.c_str(), access, sharing, nullptr, OPEN_EXISTING, 0, nullptr))
    {
        EXPECT_NE(m_file, INVALID_HANDLE_VALUE);
    }
    ~Holder() { CloseHandle(m_file); }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;

private:
    HANDLE m_file;
};

TEST(WholeFileOnWindows, AFileThatIsHeldOpenStaysWhole)
{
    const TemporaryFolder folder;
    folder.Put("rules.ini", "old");
    const std::wstring path = folder.Wide("rules.ini");
    const struct
    {
        const char* name;
        DWORD access;
        DWORD sharing;
    } rows[] = {
        {"alone", GENERIC_READ | GENERIC_WRITE, 0},
        {"by a reader", GENERIC_READ, FILE_SHARE_READ},
        {"by a writer", GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE},
    };
    for (const auto& row : rows) {
        std::string error;
        {
            const Holder holder(path, row.access, row.sharing);
            EXPECT_FALSE(WriteWholeFile(path, "new", &error)) << row.name;
        }
        EXPECT_NE(error.find("rules.ini': "), std::string::npos) << row.name << ": " << error;
        EXPECT_EQ(folder.Get("rules.ini"), "old") << row.name;
        EXPECT_EQ(folder.Count(), 1) << row.name;
    }
    std::string error;
    {
        const Holder holder(path, GENERIC_READ | GENERIC_WRITE, 0);
        EXPECT_FALSE(ReadWholeFile(path, &error));
        EXPECT_NE(error.find("rules.ini': "), std::string::npos) << error;
        EXPECT_TRUE(KvFileUtils::DoesFileExist(path.c_str()));
    }
    EXPECT_TRUE(WriteWholeFile(path, "new", &error)) << error;
    EXPECT_EQ(folder.Get("rules.ini"), "new");
}

TEST(WholeFileOnWindows, AReaderSeesOneFileOrTheOther)
{
    const TemporaryFolder folder;
    const std::wstring path = folder.Wide("rules.ini");
    const std::string one(100000, '1');
    const std::string two(70000, '2');
    ASSERT_TRUE(WriteWholeFile(path, one));
    std::atomic<bool> isDone = false;
    int whole = 0;
    int broken = 0;
    std::thread reader([&] {
        while (!isDone || whole + broken == 0) {
            // It may come while one file gives way to the other.
            if (const auto bytes = ReadWholeFile(path))
                ++(*bytes == one || *bytes == two ? whole : broken);
        }
    });
    bool isTwo = false;
    for (int i = 0; i < 40; ++i) {
        if (WriteWholeFile(path, isTwo ? one : two))
            isTwo = !isTwo;
        EXPECT_TRUE(KvFileUtils::DoesFileExist(path.c_str()));
    }
    isDone = true;
    reader.join();
    EXPECT_EQ(broken, 0);
    EXPECT_EQ(folder.Get("rules.ini"), isTwo ? two : one) << "what the last write said";
    EXPECT_EQ(folder.Count(), 1);
}

TEST(WholeFileOnWindows, TakesBothSeparators)
{
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder / "a/b");
    const std::wstring root = folder.Wide("");
    const std::wstring full = L"\\\\?\\" + folder.Path().native() + L"\\a\\b\\full.ini";
    for (const std::wstring& path : {root + L"a\\b\\one.ini", root + L"a/b/two.ini",
                                     root + L"a\\b/../b/three.ini", root + L"a//b\\\\four.ini", full}) {
        std::string error;
        EXPECT_EQ(CreateEmptyFile(path, &error), NewFile::Made) << error;
        EXPECT_TRUE(WriteWholeFile(path, "x", &error)) << error;
        EXPECT_EQ(ReadWholeFile(path), "x");
        EXPECT_TRUE(KvFileUtils::DoesFileExist(path.c_str()));
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder / "a/b"), {}), 5);
}

TEST(WholeFileOnWindows, KeepsAttributesAndHeedsWriteProtection)
{
    const TemporaryFolder folder;
    folder.Put("rules.ini", "old");
    const std::wstring path = folder.Wide("rules.ini");
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_HIDDEN);
    const DWORD hidden = GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_HIDDEN; // if the disk knows it
    EXPECT_TRUE(WriteWholeFile(path, "new"));
    EXPECT_EQ(GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_HIDDEN, hidden);

    SetFileAttributesW(path.c_str(), hidden | FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(WriteWholeFile(path, "newer"));
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(folder.Get("rules.ini"), "new");
}

TEST(WholeFileOnWindows, FailuresNameTheFileAndLeaveNothing)
{
    const TemporaryFolder folder;
    folder.Put("file", "old");
    std::filesystem::create_directory(folder / "folder");
    for (const char* name : {"none/x", "file/x", "folder", "file:x", "new:x", "a?b", "a|b"}) {
        const std::wstring path = folder.Wide("") + FromUtf8(name);
        std::string error;
        EXPECT_FALSE(WriteWholeFile(path, "new", &error)) << name;
        EXPECT_NE(error.find(std::string(name) + "': "), std::string::npos) << error;
        if (std::string_view(name) != "folder") {
            EXPECT_EQ(CreateEmptyFile(path), NewFile::Failed) << name;
            EXPECT_FALSE(KvFileUtils::DoesFileExist(path.c_str())) << name;
        }
    }
    for (const std::wstring& path : {std::wstring(), folder.Wide("file") + std::wstring(1, L'\0') + L"x"}) {
        EXPECT_FALSE(WriteWholeFile(path, "new"));
        EXPECT_FALSE(ReadWholeFile(path));
    }
    std::string error;
    EXPECT_FALSE(ReadWholeFile(L"NUL", &error));
    EXPECT_NE(error.find("not a regular file"), std::string::npos) << error;
    EXPECT_FALSE(ReadWholeFile(folder.Wide("folder")));
    EXPECT_EQ(folder.Get("file"), "old");
    EXPECT_EQ(folder.Count(), 2);
}

} // namespace
} // namespace kv
