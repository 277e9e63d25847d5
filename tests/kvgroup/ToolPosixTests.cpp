// kvgroup where names are bytes and files may be links and pipes.
#include "tests/kvgroup/ToolFixture.h"

#include <cstdlib>
#include <sys/stat.h>
#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

std::string Quoted(const std::string& text)
{
    std::string quoted = "'";
    for (const char character : text)
        quoted += character == '\'' ? std::string("'\\''") : std::string(1, character);
    return quoted + "'";
}

int RunInShell(const fs::path& folder, const std::string& command)
{
    const int status = std::system(("cd " + Quoted(folder.string()) + " && " + command).c_str());
    return WEXITSTATUS(status);
}

} // namespace

int RunKvGroup(const fs::path& folder, const std::vector<std::string>& arguments)
{
    std::string command = Quoted(KVGROUP_PROGRAM);
    for (const std::string& argument : arguments)
        command += " " + Quoted(argument);
    return RunInShell(folder, command + " <in >out 2>err");
}

namespace {

TEST_F(KvGroup, TakesLinksToFilesForFiles)
{
    Media({"clip.mxf"});
    fs::create_symlink("clip.mxf", m_folder / "media/clip_A1.wav");
    fs::create_symlink("nowhere", m_folder / "media/clip_A2.wav");
    fs::create_symlink("clip_A3.wav", m_folder / "media/clip_A3.wav"); // no file, and no fault
    const Outcome outcome = Run({"media"});
    EXPECT_EQ(outcome.out, "clip.mxf\n\tclip_A1.wav\n");
    EXPECT_EQ(outcome.error, "");
}

TEST_F(KvGroup, NamesKeepTheirBytes)
{
    const std::vector<std::string> names = {"\xFF\"\\\x01\n.mov", "\xFF\"\\\x01\n_A1.wav",
                                            "\xC3\xA9\xF0\x9F\x8E\xAC.mov", "\xC3\x89\xF0\x9F\x8E\xAC.wav"};
    Media(names);
    EXPECT_EQ(Run({"media"}).out, names[2] + "\n\t" + names[3] + "\n" + names[0] + "\n\t" + names[1] + "\n");
    EXPECT_EQ(Run({"--json", "--orphans", "media"}).out,
              "{\n  \"clips\": [\n"
              "    {\"name\": \"" +
                  names[2] + "\", \"class\": 1, \"files\": [\"" + names[2] + "\", \"" + names[3] +
                  "\"]},\n"
                  "    {\"name\": \"\\udcff\\\"\\\\\\u0001\\u000a.mov\", \"class\": 1, \"files\": "
                  "[\"\\udcff\\\"\\\\\\u0001\\u000a.mov\", \"\\udcff\\\"\\\\\\u0001\\u000a_A1.wav\"]}\n  ],\n"
                  "  \"orphan\": [],\n  \"gap\": []\n}\n");
}

TEST_F(KvGroup, ErrorsOfPipesLinksAndBytes)
{
    ASSERT_EQ(mkfifo((m_folder / "pipe").c_str(), 0600), 0);
    fs::create_directory(m_folder / "strange");
    fs::create_symlink(std::string(300, 'x'), m_folder / "strange/link");
    const struct
    {
        const char* name;
        std::vector<std::string> arguments;
        int status;
        const char* error; // part of what stands on standard error
    } rows[] = {
        {"rules from a pipe", {"--rules", "pipe", "media"}, 2, "'pipe' is no regular file"},
        {"a file that cannot be told", {"strange"}, 2, "strange/link"},
        {"a label that is no UTF-8", {"--check", "-<Fil\xFF>"}, 1, "contains invalid label <Fil\xFF>"},
        {"a folder that is no UTF-8", {"me\xFFia"}, 2, "me\xFFia"},
        {"rules into no folder", {"--init-rules", "none/rules.ini"}, 2, "none/rules.ini': No such"},
    };
    for (const auto& row : rows) {
        const Outcome outcome = Run(row.arguments);
        EXPECT_EQ(outcome.status, row.status) << row.name;
        EXPECT_EQ(outcome.out, "") << row.name;
        EXPECT_NE(outcome.error.find(row.error), std::string::npos) << row.name << ": " << outcome.error;
    }
}

TEST_F(KvGroup, AFullDiskIsAnError)
{
    if (!fs::exists("/dev/full"))
        GTEST_SKIP();
    Media({"c.mov", "c.wav"});
    for (const char* arguments : {"media", "--json media", "--help"}) {
        const std::string command = Quoted(KVGROUP_PROGRAM) + " " + arguments + " >/dev/full 2>err";
        EXPECT_EQ(RunInShell(m_folder.Path(), command), 2) << arguments;
        EXPECT_NE(m_folder.Get("err").find("standard output"), std::string::npos) << arguments;
    }
}

} // namespace
