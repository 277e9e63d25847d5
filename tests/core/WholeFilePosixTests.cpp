#include "core/KvFileUtils.h"
#include "core/WholeFile.h"
#include "tests/core/TemporaryFolder.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kv {
namespace {

namespace fs = std::filesystem;

mode_t ModeOf(const fs::path& path)
{
    struct stat status = {};
    ::stat(path.c_str(), &status);
    return status.st_mode & 07777;
}

TEST(WholeFile, ReplacesTheBytesAndKeepsTheMode)
{
    const TemporaryFolder folder;
    const mode_t mask = ::umask(027);
    EXPECT_TRUE(WriteWholeFile(folder.Wide("rules.ini"), "one"));
    ::umask(mask);
    EXPECT_EQ(ModeOf(folder / "rules.ini"), mode_t{0640}) << "a new file follows the process";

    ::chmod((folder / "rules.ini").c_str(), 0604);
    EXPECT_TRUE(WriteWholeFile(folder.Wide("rules.ini"), std::string("t\0o", 3)));
    EXPECT_EQ(ReadWholeFile(folder.Wide("rules.ini")), std::string("t\0o", 3));
    EXPECT_EQ(ModeOf(folder / "rules.ini"), mode_t{0604});
    EXPECT_EQ(folder.Count(), 1);
}

TEST(WholeFile, WritesThroughSymbolicLinks)
{
    const TemporaryFolder folder;
    fs::create_directory(folder / "real");
    folder.Put("real/rules.ini", "old");
    fs::create_symlink("real/rules.ini", folder / "inner");
    fs::create_symlink("inner", folder / "outer");
    fs::create_symlink("real/new.ini", folder / "dangling");

    EXPECT_TRUE(WriteWholeFile(folder.Wide("outer"), "new"));
    EXPECT_TRUE(WriteWholeFile(folder.Wide("dangling"), "first"));
    EXPECT_EQ(folder.Get("real/rules.ini"), "new");
    EXPECT_EQ(folder.Get("real/new.ini"), "first");
    EXPECT_EQ(fs::read_symlink(folder / "outer"), "inner");
    EXPECT_EQ(fs::read_symlink(folder / "inner"), "real/rules.ini");
}

TEST(WholeFile, FailuresNameTheFileAndLeaveNothing)
{
    const TemporaryFolder folder;
    folder.Put("file", "old");
    fs::create_directory(folder / "folder");
    fs::create_symlink("loop", folder / "loop");
    ::mkfifo((folder / "pipe").c_str(), 0600);
    const struct
    {
        const char* name;
        std::wstring path;
        const char* error;
    } rows[] = {
        {"no such folder", folder.Wide("none/x"), "none/x': No such file or directory"},
        {"a file as folder", folder.Wide("file/x"), "file/x': Not a directory"},
        {"a folder", folder.Wide("folder"), "folder': Is a directory"},
        {"links in a circle", folder.Wide("loop"), "loop': Too many levels of symbolic links"},
        {"a pipe", folder.Wide("pipe"), "pipe': not a regular file"},
        {"no name", L"", "'': No such file or directory"},
        {"a name cut by a zero", folder.Wide("file") + std::wstring(1, L'\0') + L"x", "': Invalid argument"},
    };
    for (const auto& row : rows) {
        std::string error;
        EXPECT_FALSE(WriteWholeFile(row.path, "new", &error)) << row.name;
        EXPECT_NE(error.find(row.error), std::string::npos) << row.name << ": " << error;
    }
    EXPECT_EQ(folder.Get("file"), "old");
    EXPECT_EQ(folder.Count(), 4);
}

TEST(WholeFile, AFullDiskLeavesTheOldFile)
{
    const TemporaryFolder folder;
    folder.Put("rules.ini", "old");
    // The limit on a file's size ends a write half way, as a full disk does.
    rlimit before = {};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small = {1000, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &small);
    std::string error;
    const bool written = WriteWholeFile(folder.Wide("rules.ini"), std::string(5000, 'x'), &error);
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, oldHandler);

    EXPECT_FALSE(written);
    EXPECT_NE(error.find("rules.ini': File too large"), std::string::npos) << error;
    EXPECT_EQ(folder.Get("rules.ini"), "old");
    EXPECT_EQ(folder.Count(), 1);
}

TEST(WholeFile, HeedsWriteProtection)
{
    const TemporaryFolder folder;
    folder.Put("rules.ini", "old");
    ::chmod(folder.Path().c_str(), 0777);
    ::chmod((folder / "rules.ini").c_str(), 0444);
    // The administrator may write everything: become somebody else meanwhile.
    const bool administrator = ::geteuid() == 0;
    if (administrator) {
        ASSERT_EQ(::seteuid(65534), 0);
    }
    const bool written = WriteWholeFile(folder.Wide("rules.ini"), "new");
    if (administrator) {
        ASSERT_EQ(::seteuid(0), 0);
    }
    EXPECT_FALSE(written);
    EXPECT_EQ(folder.Get("rules.ini"), "old");
}

TEST(WholeFile, ReadsUpToTheLimit)
{
    const TemporaryFolder folder;
    folder.Put("five", "12345");
    const std::wstring pipe = folder.Wide("pipe");
    ::mkfifo((folder / "pipe").c_str(), 0600);
    std::string error;
    EXPECT_EQ(ReadWholeFile(folder.Wide("five"), &error, 5), "12345");
    EXPECT_FALSE(ReadWholeFile(folder.Wide("five"), &error, 4));
    EXPECT_NE(error.find("five': the file is longer than 4 bytes"), std::string::npos) << error;
    EXPECT_FALSE(ReadWholeFile(L"/proc/self/maps", &error, 100)) << "no size in advance";
    for (const wchar_t* path : {L"/dev/zero", pipe.c_str()}) {
        EXPECT_FALSE(ReadWholeFile(path, &error));
        EXPECT_NE(error.find("': not a regular file"), std::string::npos) << error;
    }
    EXPECT_FALSE(ReadWholeFile(folder.Wide("none"), &error));
    EXPECT_NE(error.find("none': No such file or directory"), std::string::npos) << error;
    EXPECT_FALSE(ReadWholeFile(folder.Wide(""), &error));
    EXPECT_NE(error.find("Is a directory"), std::string::npos) << error;
}

TEST(WholeFile, OutOfReachIsNotMissing)
{
    const TemporaryFolder folder;
    folder.Put("file", "");
    fs::create_symlink("loop", folder / "loop");
    for (const auto& [name, exists] : {std::pair("loop", 1), {"none", 0}, {"none/x", 0}, {"file/x", 0}})
        EXPECT_EQ(KvFileUtils::DoesFileExist(folder.Wide(name).c_str()), exists) << name;
}

TEST(WholeFile, TakesNamesThatAreNoUtf8)
{
    const TemporaryFolder folder;
    const std::wstring path = folder.Wide("caf\xE9.ini");
    EXPECT_FALSE(KvFileUtils::DoesFileExist(path.c_str()));
    EXPECT_TRUE(WriteWholeFile(path, "x"));
    EXPECT_EQ(folder.Get("caf\xE9.ini"), "x");
    EXPECT_TRUE(KvFileUtils::DoesFileExist(path.c_str()));
    EXPECT_FALSE(KvFileUtils::DoesFileExist(nullptr));
}

} // namespace
} // namespace kv
