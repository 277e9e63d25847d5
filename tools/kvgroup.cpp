// kvgroup: tells which media files of a folder belong together.
#include "core/Text.h"
#include "naming/MediaGrouper.h"
#include "naming/MediaReport.h"
#include "tools/KvGroupInput.h"
#include "tools/KvGroupOptions.h"
#include "tools/KvGroupOutput.h"
#include "tools/KvGroupSystem.h"

#include <cstdio>
#include <exception>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace {

enum ExitStatus : int
{
    kDone = 0,
    kNothing = 1,
    kError = 2
};

ExitStatus Fail(const std::string& message, ExitStatus status = kError)
{
    kv::WriteText(stderr, "kvgroup: " + message + "\n");
    return status;
}

// What is written but never reaches its place must not look like success.
ExitStatus Finish(kv::OutputStream& out, ExitStatus status)
{
    const int error = out.Finish();
    return error == 0 ? status
                      : Fail("cannot write to standard output: " + std::generic_category().message(error));
}

ExitStatus Print(std::string_view text)
{
    kv::OutputStream out(stdout);
    out.Write(text);
    return Finish(out, kDone);
}

ExitStatus Check(const std::string& pattern)
{
    KvSetMessageBoxHandler([](HWND, const std::wstring& text, UINT) {
        Fail(kv::ToFileName(text));
        return +IDOK;
    });
    return CheckRuleLabels(kv::FromFileName(pattern).c_str()) ? kDone : kNothing;
}

ExitStatus InitRules(const std::string& file)
{
    std::string error;
    return kv::WriteBuiltInRules(file, error) ? kDone : Fail(error);
}

ExitStatus Group(const kv::KvGroupOptions& options)
{
    std::string error;
    const auto collection = kv::LoadRules(options.rulesFile ? &*options.rulesFile : nullptr, error);
    if (!collection)
        return Fail(error);
    const bool isList = options.argument == "-";
    kv::MediaNames names;
    if (!(isList ? kv::ReadNames(stdin, names, error) : kv::ReadFolder(options.argument, names, error)))
        return Fail(error);
    names.Sort();

    const std::vector<kv::MediaRule> rules = kv::ReadMediaRules(*collection);
    const kv::MediaGrouping grouping = kv::GroupMedia(names, rules, options.classes);
    kv::KvGroupResult result = {names, rules, grouping, {}, {}, {}};
    if (options.all || options.why)
        result.alone = kv::MediaAlone(names, rules, options.classes, grouping);
    if (options.orphans) {
        result.orphans = kv::FindOrphans(names, rules, options.classes, grouping);
        result.gaps = kv::FindGaps(names, rules, grouping);
    }

    kv::OutputStream out(stdout);
    (options.json ? kv::WriteJson : kv::WriteLines)(result, options, out);
    const ExitStatus status = Finish(out, grouping.clips.empty() ? kNothing : kDone);
    if (status == kNothing)
        Fail("no files belong together in " + (isList ? "standard input" : "'" + options.argument + "'"));
    return status;
}

ExitStatus Run(const std::vector<std::string>& arguments)
{
    std::string error;
    const std::optional<kv::KvGroupOptions> options = kv::ReadKvGroupOptions(arguments, error);
    if (!options)
        return Fail(error + "\nTry 'kvgroup --help'.");
    switch (options->action) {
    case kv::KvGroupAction::Help:
        return Print(kv::KvGroupHelp());
    case kv::KvGroupAction::Version:
        return Print("kvgroup " KV_VERSION "\n");
    case kv::KvGroupAction::Check:
        return Check(options->argument);
    case kv::KvGroupAction::InitRules:
        return InitRules(options->argument);
    case kv::KvGroupAction::Group:
        break;
    }
    return Group(*options);
}

} // namespace

int main(int argc, char** argv)
{
    try {
        kv::PrepareStreams();
        return Run(kv::ProgramArguments(argc, argv));
    } catch (const std::bad_alloc&) {
        return Fail("out of memory");
    } catch (const std::exception& error) {
        return Fail(error.what());
    }
}
