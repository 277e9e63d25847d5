// Runs a command line with the console of this process as its streams: not every system gives a process that
// is started within a console in memory its handles.
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

int main()
{
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    const auto open = [&inherited](const wchar_t* name) {
        return CreateFileW(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                           OPEN_EXISTING, 0, nullptr);
    };
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = open(L"CONIN$");
    startup.hStdOutput = startup.hStdError = open(L"CONOUT$");
    // The command line begins with the name of the program that is run: this one has none in it.
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, GetCommandLineW(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &process))
        return 98;
    DWORD status = 99;
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &status);
    return static_cast<int>(status);
}
