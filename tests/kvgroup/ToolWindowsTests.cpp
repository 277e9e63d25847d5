// kvgroup where names are wide and a console takes characters.
#include "tests/kvgroup/ToolFixture.h"

#include <thread>

#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace {

namespace fs = std::filesystem;

/// A command line that is taken apart into the same arguments again.
std::wstring CommandLine(const std::vector<std::string>& arguments)
{
    std::wstring line = L'"' + fs::absolute(KVGROUP_PROGRAM).native() + L'"';
    for (const std::string& argument : arguments) {
        const std::wstring wide = kv::FromFileName(argument);
        const std::size_t last = wide.find_last_not_of(L'\\');
        line += L" \"" + wide + std::wstring(wide.size() - (last + 1), L'\\') + L"\"";
    }
    return line;
}

/// Runs a program to its end in a folder. @return its exit status; -1 when it has not started.
int RunProcess(const char* program, std::wstring line, const fs::path& folder, STARTUPINFOW& startup,
               DWORD flags)
{
    PROCESS_INFORMATION process = {};
    const BOOL inherits = startup.hStdOutput != nullptr;
    if (!CreateProcessW(fs::absolute(program).c_str(), line.data(), nullptr, nullptr, inherits, flags,
                        nullptr, folder.c_str(), &startup, &process))
        return -1;
    DWORD status = 0;
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(status);
}

HANDLE OpenForChild(const fs::path& path, DWORD access, DWORD creation)
{
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    return CreateFileW(path.c_str(), access, FILE_SHARE_READ, &inherited, creation, 0, nullptr);
}

} // namespace

int RunKvGroup(const fs::path& folder, const std::vector<std::string>& arguments)
{
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = OpenForChild(folder / "in", GENERIC_READ, OPEN_EXISTING);
    startup.hStdOutput = OpenForChild(folder / "out", GENERIC_WRITE, CREATE_ALWAYS);
    startup.hStdError = OpenForChild(folder / "err", GENERIC_WRITE, CREATE_ALWAYS);
    const int status = RunProcess(KVGROUP_PROGRAM, CommandLine(arguments), folder, startup, 0);
    for (const HANDLE stream : {startup.hStdInput, startup.hStdOutput, startup.hStdError})
        CloseHandle(stream);
    return status;
}

namespace {

TEST_F(KvGroup, TakesBothSeparators)
{
    fs::create_directory(m_folder / "media/day");
    Media({"day/clip.mxf", "day/clip_A1.wav"});
    EXPECT_EQ(Run({"--init-rules", "media\\day\\rules.ini"}).error, "");
    for (const char* folder : {"media\\day", "media/day", "media/day\\", ".\\media//day/"}) {
        const Outcome outcome = Run({"--rules", "media/day\\rules.ini", folder});
        EXPECT_EQ(outcome.out, "clip.mxf\n\tclip_A1.wav\n") << folder << ": " << outcome.error;
    }
}

TEST_F(KvGroup, WritesNoRulesIntoAStreamOfAFile)
{
    EXPECT_EQ(Run({"--init-rules", "take:rules.ini"}).status, 2);
    EXPECT_EQ(m_folder.Count(), 4) << "the media folder and the three streams";
}

/// A console that exists in memory: what is written to it comes out as UTF-8 between control sequences.
class Console
{
public:
    Console()
    {
        HANDLE inputEnd = nullptr;
        HANDLE outputEnd = nullptr;
        CreatePipe(&inputEnd, &m_input, nullptr, 0);
        CreatePipe(&m_output, &outputEnd, nullptr, 0);
        using CreateFunction = HRESULT(WINAPI*)(COORD, HANDLE, HANDLE, DWORD, void**);
        if (const auto create = Function<CreateFunction>("CreatePseudoConsole"))
            m_isThere = create({200, 40}, inputEnd, outputEnd, 0, &m_console) == S_OK;
        CloseHandle(inputEnd);
        CloseHandle(outputEnd);
    }
    ~Console()
    {
        CloseHandle(m_input);
        CloseHandle(m_output);
    }
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    bool IsThere() const { return m_isThere; }

    /// Runs kvgroup with this console as its streams. @return all that was shown.
    std::string Run(const fs::path& folder, const std::vector<std::string>& arguments, std::string_view typed)
    {
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        std::vector<unsigned char> storage(size);
        STARTUPINFOEXW startup = {};
        startup.StartupInfo.cb = sizeof startup;
        startup.StartupInfo.dwFlags = STARTF_USESTDHANDLES; // none of ours
        startup.lpAttributeList = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(storage.data());
        constexpr DWORD_PTR kPseudoConsole = 0x20016; // not in every set of headers
        InitializeProcThreadAttributeList(startup.lpAttributeList, 1, 0, &size);
        UpdateProcThreadAttribute(startup.lpAttributeList, 0, kPseudoConsole, m_console, sizeof m_console,
                                  nullptr, nullptr);
        std::string shown;
        std::thread reader([&] {
            char bytes[4096];
            DWORD got = 0;
            while (ReadFile(m_output, bytes, sizeof bytes, &got, nullptr) && got > 0)
                shown.append(bytes, got);
        });
        DWORD written = 0;
        WriteFile(m_input, typed.data(), static_cast<DWORD>(typed.size()), &written, nullptr);
        EXPECT_EQ(RunProcess(RUN_IN_CONSOLE, CommandLine(arguments), folder, startup.StartupInfo,
                             EXTENDED_STARTUPINFO_PRESENT),
                  0);
        DeleteProcThreadAttributeList(startup.lpAttributeList);
        Function<void(WINAPI*)(void*)>("ClosePseudoConsole")(m_console);
        reader.join();
        return shown;
    }

private:
    template <typename Pointer>
    static Pointer Function(const char* name)
    {
        const FARPROC address = GetProcAddress(GetModuleHandleW(L"kernel32.dll"), name);
        return reinterpret_cast<Pointer>(reinterpret_cast<void*>(address));
    }

    void* m_console = nullptr;
    HANDLE m_input = nullptr;
    HANDLE m_output = nullptr;
    bool m_isThere = false;
};

TEST_F(KvGroup, AConsoleTakesAndGivesCharacters)
{
    // In the first plane: some consoles show the halves of other characters one by one.
    const std::string mov = "\xC3\xA9\xD0\xB6\xE2\x99\xAA.mov";
    const std::string wav = "\xC3\x89\xD0\x96\xE2\x99\xAA.wav";
    Media({mov, wav});
    Console output;
    Console input;
    if (!output.IsThere() || !input.IsThere())
        GTEST_SKIP() << "this system has no consoles in memory";
    std::string shown = output.Run(m_folder.Path(), {"media"}, "");
    EXPECT_NE(shown.find(mov), std::string::npos) << shown;
    EXPECT_NE(shown.find(wav), std::string::npos) << shown;
    shown = input.Run(m_folder.Path(), {"--json", "-"}, mov + "\r" + wav + "\r\x1A\r");
    EXPECT_NE(shown.find("[\"" + mov + "\", \"" + wav + "\"]"), std::string::npos) << shown;
}

} // namespace
