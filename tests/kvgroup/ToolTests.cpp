#include "tests/kvgroup/ToolFixture.h"

namespace {

TEST_F(KvGroup, ShowsClipsAndTheirSiblingsInNumberOrder)
{
    Media({"clip.mxf", "clip_A10.wav", "clip_A9.wav", "clip_Ax.wav", "clip.wav", "notes.txt", "-x.mov",
           "-xA1.wav"});
    std::filesystem::create_directory(m_folder / "media/clip_A1.wav");
    Media({"clip_A1.wav/clip_A2.wav"});
    const std::string clips = "-x.mov\n\t-xA1.wav\nclip.mxf\n\tclip.wav\n\tclip_A9.wav\n\tclip_A10.wav\n";
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

TEST_F(KvGroup, NamesAreOfAnyCharacters)
{
    const std::string mov = "\xC3\xA9\xF0\x9F\x8E\xAC.mov";
    const std::string wav = "\xC3\x89\xF0\x9F\x8E\xAC.wav";
    const std::string folder = "\xF0\x9D\x84\x9E\xC3\xB6";
    std::filesystem::create_directory(m_folder / folder);
    Write(folder + "/" + mov, "");
    Write(folder + "/" + wav, "");
    EXPECT_EQ(Run({folder}).out, mov + "\n\t" + wav + "\n");
    EXPECT_EQ(Run({"--json", folder}).out, "{\n  \"clips\": [\n    {\"name\": \"" + mov +
                                               "\", \"class\": 1, \"files\": [\"" + mov + "\", \"" + wav +
                                               "\"]}\n  ]\n}\n");
    EXPECT_EQ(Run({"-"}, folder + "\\" + mov + "\n" + folder + "/" + wav).out, mov + "\n\t" + wav + "\n");
    EXPECT_EQ(Run({"--init-rules=" + folder + ".ini"}).error, "");
    EXPECT_EQ(Run({"--rules", folder + ".ini", folder}).out, mov + "\n\t" + wav + "\n");
    EXPECT_NE(Run({"--check", "<" + folder + ">"}).error.find("label <" + folder + ">\n"), std::string::npos);
    EXPECT_NE(Run({folder + "x"}).error.find("'" + folder + "x': "), std::string::npos);
}

TEST_F(KvGroup, TellsWhyInJson)
{
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
    std::string rules = m_folder.Get("rules.ini");
    const std::size_t at = rules.find("<File>_A<Number><Ext>");
    ASSERT_NE(at, std::string::npos);
    Write("rules.ini", rules.replace(at, 8, "<File>_CH"));
    EXPECT_EQ(Run({"--rules", "rules.ini", "-"}, "c.mov\nc_CH1.wav\nc_A1.wav\n").out, "c.mov\n\tc_CH1.wav\n");
    Write("empty.ini", "");
    for (const char* name : {"rules.ini", "empty.ini"}) {
        const std::string before = m_folder.Get(name);
        const Outcome again = Run({"--init-rules", name});
        EXPECT_EQ(again.status, 2) << name;
        EXPECT_NE(again.error.find(std::string("'") + name + "' is there already"), std::string::npos)
            << name;
        EXPECT_EQ(m_folder.Get(name), before) << name;
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
        {"unknown label", {"--check", "-<Fil>"}, 1, "The rule contains invalid label <Fil>"},
        {"no wildcards for files", {"--check", "*"}, 0, ""},
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
        {"missing folder", {"medium"}, 2, "'medium': "},
        {"a file for a folder", {"in"}, 2, "'in'"},
        {"missing rules", {"--rules", "none.ini", "media"}, 2, "none.ini"},
        {"unreadable rules", {"--rules", "media", "media"}, 2, "'media'"},
        {"no rules in the file", {"--rules", "in", "media"}, 2, "'in'"},
        {"rules into no folder", {"--init-rules", "none/rules.ini"}, 2, "'none/rules.ini': "},
    };
    for (const Row& row : rows) {
        const Outcome outcome = Run(row.arguments);
        EXPECT_EQ(outcome.status, row.status) << row.name;
        EXPECT_EQ(outcome.out, "") << row.name;
        EXPECT_NE(outcome.error.find(row.error), std::string::npos) << row.name << ": " << outcome.error;
    }
    EXPECT_EQ(Run({"-h"}).out.rfind("Usage: kvgroup", 0), 0u);
    EXPECT_EQ(Run({"--version"}).out, "kvgroup " KV_VERSION "\n");
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

} // namespace
