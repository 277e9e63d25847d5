// What the sanitizers do in every test of ours.

extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __ubsan_default_options();

// Allocated once for the process by libraries below us and never freed.
const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig\nleak:libglib\nleak:libdbus\nleak:libX11\n";
}

const char* __ubsan_default_options()
{
    return "print_stacktrace=1";
}
