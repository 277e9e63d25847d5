// What the sanitizers do in every test of ours. Their libraries must see it.

extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
extern "C" __attribute__((visibility("default"))) const char* __tsan_default_suppressions();
extern "C" __attribute__((visibility("default"))) const char* __ubsan_default_options();

// Allocated once for the process by libraries below us and never freed.
const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig\nleak:libglib\nleak:libdbus\nleak:libX11\n";
}

// The toolkit is not instrumented: what its own threads hand to one another looks like a race.
const char* __tsan_default_suppressions()
{
    return "called_from_lib:libQt6Core.so\ncalled_from_lib:libQt6Gui.so\ncalled_from_lib:libQt6Widgets.so\n";
}

const char* __ubsan_default_options()
{
    return "print_stacktrace=1";
}
