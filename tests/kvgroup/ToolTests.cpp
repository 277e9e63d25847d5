// kvgroup as its users meet it: as a process.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct Outcome
{
    int status;
    std::string out;
    std::string error;
};

std::string Contents(const fs::path& file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::string Quoted(const std::string& text)
{
    std::string quoted = "'";
    for (const char character : text)
        quoted += character == '\'' ? std::string("'\\''") : std::string(1, character);
    return quoted + "'";
}

class KvGroup : public testing::Test
{
protected:
    KvGroup()
    {
        std::string pattern = (fs::temp_directory_path() / "kvgroup-XXXXXX").string();
        m_root = mkdtemp(pattern.data());
        fs::create_directory(m_root / "media");
    }
    ~KvGroup() override { fs::remove_all(m_root); }

    void Write(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(m_root / name, std::ios::binary) << bytes;
    }
    void Media(const std::vector<std::string>& names) const
    {
        for (const std::string& name : names)
            Write("media/" + name, "");
    }
    /// Runs kvgroup in the test's folder, with `input` on standard input.
    Outcome Run(const std::vector<std::string>& arguments, const std::string& input = "") const
    {
        Write("in", input);
        std::string command = "cd " + Quoted(m_root.string()) + " && " + Quoted(KVGROUP_PROGRAM);
        for (const std::string& argument : arguments)
            command += " " + Quoted(argument);
        const int status = std::system((command + " <in >out 2>err").c_str());
        return {WEXITSTATUS(status), Contents(m_root / "out"), Contents(m_root / "err")};
    }

    fs::path m_root;
};

TEST_F(KvGroup, ShowsClipsAndTheirSiblingsInNumberOrder)
{
    Media({"clip.mxf", "clip_A10.wav", "clip_A9.wav", "clip_Ax.wav", "clip.wav", "notes.txt", "-x.mov",
           "-xA1.wav"});
    fs::create_directory(m_root / "media/clip_A1.wav");
    Media({"clip_A1.wav/clip_A2.wav"});
    fs::create_symlink("clip.mxf", m_root / "media/clip_A11.wav");
    fs::create_symlink("nowhere", m_root / "media/clip_A12.wav");
    const std::string clips =
        "-x.mov\n\t-xA1.wav\nclip.mxf\n\tclip.wav\n\tclip_A9.wav\n\tclip_A10.wav\n\tclip_A11.wav\n";
    const Outcome plain = Run({"media"});
    EXPECT_EQ(plain.out, clips);
    EXPECT_EQ(plain.error, "");
    EXPECT_EQ(plain.status, 0);
    EXPECT_EQ(Run({"--all", "--", "media"}).out, clips + "clip_Ax.wav\nnotes.txt\n");
    EXPECT_EQ(Run({"-"}, "b/q_A1.wav\r\n\nC:\\b\\q.MOV\r\nq_A1.wav").out, "q.MOV\n\tq_A1.wav\n");
}

TEST_F(KvGroup, TellsWhyAndWhatIsMissing)
{
    const std::string names = "c.mov\nc_A1.wav\nc_A03.wav\nlost_A2.wav\nREADME\n";
    const Outcome lines = Run({"--why", "--orphans", "--all", "-"}, names);
    EXPECT_EQ(lines.out, "c.mov\n\tc_A1.wav\n\tc_A03.wav\nREADME\nlost_A2.wav\n"
                         "why\tc.mov\t0\t<File><Ext>\tFile=c\tNumber=\tExt=.mov\n"
                         "why\tc_A1.wav\t0\t<File>_A<Number><Ext>\tFile=c\tNumber=1\tExt=.wav\n"
                         "why\tc_A03.wav\t0\t<File>_A<Number><Ext>\tFile=c\tNumber=03\tExt=.wav\n"
                         "why\tREADME\t-\t-\tFile=\tNumber=\tExt=\n"
                         "why\tlost_A2.wav\t-\t-\tFile=\tNumber=\tExt=\n"
                         "orphan\tlost_A2.wav\t0\tlost.*\n"
                         "gap\tc.mov\t<File>_A<Number><Ext>\t2\t2\n");
    const Outcome unlisted = Run({"--why", "--orphans", "-"}, names);
    EXPECT_EQ(unlisted.out, std::string(lines.out).erase(lines.out.find("README\n"), 19));
    EXPECT_EQ(Run({"--class", "all", "-"}, "c.mov\nc_A1.wav\ns_A1.wav\ns_A2.wav\n").out,
              "c.mov\n\tc_A1.wav\ns_A1.wav\n\ts_A2.wav\n");
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
    const Outcome why = Run({"--json", "--why", "-"}, "c.mov\nc_A1.wav\n");
    EXPECT_NE(why.out.find("{\"file\": \"c_A1.wav\", \"clip\": \"c.mov\", \"rule\": 0, \"addition\": "
                           "\"<File>_A<Number><Ext>\", \"values\": {\"File\": \"c\", \"Number\": \"1\", "
                           "\"Ext\": \".wav\"}}"),
              std::string::npos)
        << why.out;
}

TEST_F(KvGroup, WritesRulesForEditingAndUsesThem)
{
    EXPECT_EQ(Run({"--init-rules", "rules.ini"}).status, 0);
    std::string rules = Contents(m_root / "rules.ini");
    const std::size_t at = rules.find("<File>_A<Number><Ext>");
    ASSERT_NE(at, std::string::npos);
    Write("rules.ini", rules.replace(at, 8, "<File>_CH"));
    EXPECT_EQ(Run({"--rules", "rules.ini", "-"}, "c.mov\nc_CH1.wav\nc_A1.wav\n").out, "c.mov\n\tc_CH1.wav\n");
    Write("empty.ini", "");
    for (const char* name : {"rules.ini", "empty.ini"}) {
        const std::string before = Contents(m_root / name);
        const Outcome again = Run({"--init-rules", name});
        EXPECT_EQ(again.status, 2) << name;
        EXPECT_NE(again.error.find(name), std::string::npos) << name;
        EXPECT_EQ(Contents(m_root / name), before) << name;
    }
}

TEST_F(KvGroup, ExitStatusAndErrors)
{
    struct Row
    {
        const char* name;
        std::vector<std::string> arguments;
        int status;
        const char* error; // part of what stands on standard error
    };
    const Row rows[] = {
        {"sound pattern", {"--check", "<File>_A<Number><AnyChar3>"}, 0, ""},
        {"duplicate label", {"--check=<File><File>"}, 1, "The rule contains duplicate labels <File>"},
        {"unknown label", {"--check", "-<Fil\xFF>"}, 1, "The rule contains invalid label <Fil\xFF>"},
        {"nothing to group", {"media"}, 1, "media"},
        {"the first fault counts", {"--bad-things-come-later", "--help"}, 2, "'--bad-things-come-later'"},
        {"no folder", {"--json"}, 2, "--help"},
        {"two folders", {"media", "media"}, 2, "one folder"},
        {"check and folder", {"--check", "<File>", "media"}, 2, "one folder"},
        {"no value", {"media", "--rules"}, 2, "--rules needs a value"},
        {"no such class", {"--class", "film", "media"}, 2, "film"},
        {"an option that the check does not use", {"--json", "--check", "<File>"}, 2, "--json needs"},
        {"an option that the rules do not use", {"--init-rules", "r", "--rules=r"}, 2, "--rules needs"},
        {"two rule files", {"--rules=in", "--rules", "in", "media"}, 2, "twice"},
        {"rules from a pipe", {"--rules", "pipe", "media"}, 2, "'pipe' is no regular file"},
        {"a file that cannot be told", {"strange"}, 2, "strange/link"},
        {"missing folder", {"me\xFFia"}, 2, "me\xFFia"},
        {"a file for a folder", {"in"}, 2, "'in'"},
        {"missing rules", {"--rules", "none.ini", "media"}, 2, "none.ini"},
        {"unreadable rules", {"--rules", "media", "media"}, 2, "'media'"},
        {"no rules in the file", {"--rules", "in", "media"}, 2, "'in'"},
        {"rules into no folder", {"--init-rules", "none/rules.ini"}, 2, "none/rules.ini': No such"},
    };
    ASSERT_EQ(mkfifo((m_root / "pipe").c_str(), 0600), 0);
    fs::create_directory(m_root / "strange");
    fs::create_symlink("loop", m_root / "strange/loop"); // no file, and no fault
    fs::create_symlink(std::string(300, 'x'), m_root / "strange/link");
    for (const Row& row : rows) {
        const Outcome outcome = Run(row.arguments);
        EXPECT_EQ(outcome.status, row.status) << row.name;
        EXPECT_EQ(outcome.out, "") << row.name;
        EXPECT_NE(outcome.error.find(row.error), std::string::npos) << row.name << ": " << outcome.error;
    }
    EXPECT_EQ(Run({"-h"}).out.rfind("Usage: kvgroup", 0), 0u);
    EXPECT_EQ(Run({"--json", "-"}).out, "{\n  \"clips\": []\n}\n");
    const Outcome alone = Run({"--all", "-"}, "a.mov\nb.mov\n");
    EXPECT_EQ(alone.out, "a.mov\nb.mov\n");
    EXPECT_EQ(alone.status, 1);
    EXPECT_EQ(Run({"-"}, std::string("a\0b\n", 4)).status, 2);
    EXPECT_NE(Run({"-"}, std::string("\xFF\xFE"
                                     "a\0\n\0",
                                     6))
                  .error.find("UTF-16"),
              std::string::npos);
    EXPECT_EQ(Run({"-"}, "\xEF\xBB\xBF"
                         "c.mov\nc.wav\n")
                  .out,
              "c.mov\n\tc.wav\n");
}

TEST_F(KvGroup, AFullDiskIsAnError)
{
    if (!fs::exists("/dev/full"))
        GTEST_SKIP();
    Media({"c.mov", "c.wav"});
    for (const char* arguments : {"media", "--json media", "--help"}) {
        const std::string command = "cd " + Quoted(m_root.string()) + " && " + Quoted(KVGROUP_PROGRAM) + " " +
                                    arguments + " >/dev/full 2>err";
        EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 2) << arguments;
        EXPECT_NE(Contents(m_root / "err").find("standard output"), std::string::npos) << arguments;
    }
}

} // namespace
