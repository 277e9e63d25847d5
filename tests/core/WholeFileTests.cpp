#include "core/KvFileUtils.h"
#include "core/WholeFile.h"
#include "tests/core/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace kv {
namespace {

constexpr char kName[] = "\xC3\xA9\xF0\x9F\x8E\xAC.ini";

TEST(WholeFile, MakesReplacesAndReadsAFileOfAnyName)
{
    const TemporaryFolder folder;
    const std::wstring path = folder.Wide(kName);
    EXPECT_FALSE(KvFileUtils::DoesFileExist(path.c_str()));
    for (const std::string& bytes : {std::string("one\r\n"), std::string("t\0o\x1A", 4), std::string()}) {
        EXPECT_TRUE(WriteWholeFile(path, bytes));
        EXPECT_EQ(ReadWholeFile(path), bytes);
        EXPECT_EQ(folder.Get(kName), bytes);
    }
    EXPECT_TRUE(KvFileUtils::DoesFileExist(path.c_str()));
    EXPECT_FALSE(KvFileUtils::DoesFileExist(folder.Wide("\xC3\xA9.ini").c_str()));
    EXPECT_EQ(folder.Count(), 1);
}

TEST(WholeFile, AnEmptyFileIsMadeOnce)
{
    const TemporaryFolder folder;
    std::string error;
    EXPECT_EQ(CreateEmptyFile(folder.Wide(kName)), NewFile::Made);
    EXPECT_EQ(folder.Get(kName), "");
    folder.Put(kName, "mine");
    EXPECT_EQ(CreateEmptyFile(folder.Wide(kName), &error), NewFile::IsThere);
    EXPECT_EQ(folder.Get(kName), "mine");
    EXPECT_NE(error.find(std::string(kName) + "': "), std::string::npos) << error;
    EXPECT_EQ(CreateEmptyFile(folder.Wide("none/x")), NewFile::Failed);
    EXPECT_EQ(CreateEmptyFile(L""), NewFile::Failed);
    EXPECT_EQ(folder.Count(), 1);
}

} // namespace
} // namespace kv
