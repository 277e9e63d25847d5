#include "tools/KvGroupOptions.h"

namespace kv {
namespace {

class OptionReader
{
public:
    OptionReader(const std::vector<std::string>& arguments, std::string& error)
        : m_arguments(arguments)
        , m_error(error)
    {
    }

    std::optional<KvGroupOptions> Read();

private:
    bool ReadOption(const std::string& argument);
    bool SetAction(KvGroupAction action, const std::string& argument);
    bool SetClasses(std::string_view name);
    bool CheckUse();
    bool Refuse(std::string message)
    {
        m_error = std::move(message);
        return false;
    }

    const std::vector<std::string>& m_arguments;
    std::string& m_error;
    std::size_t m_next = 0;
    bool m_hasAction = false;
    std::string m_groupingOption; // one that only the grouping uses
    KvGroupOptions m_options;
};

bool OptionReader::SetAction(KvGroupAction action, const std::string& argument)
{
    if (m_hasAction)
        return Refuse("give one folder, or '-', or one of --check and --init-rules");
    m_hasAction = true;
    m_options.action = action;
    m_options.argument = argument;
    return true;
}

bool OptionReader::SetClasses(std::string_view name)
{
    if (name == "video")
        m_options.classes = {kKvNamingClassVideoAudio};
    else if (name == "audio")
        m_options.classes = {kKvNamingClassAudio};
    else if (name == "all")
        m_options.classes = {kKvNamingClassVideoAudio, kKvNamingClassAudio};
    else
        return Refuse("--class takes video, audio or all, not '" + std::string(name) + "'");
    return true;
}

bool OptionReader::CheckUse()
{
    if (!m_hasAction)
        return Refuse("which folder? ('-' reads names from standard input)");
    if (m_options.action != KvGroupAction::Group && !m_groupingOption.empty())
        return Refuse(m_groupingOption + " needs a folder, or '-'; --check and --init-rules do not use it");
    return true;
}

bool OptionReader::ReadOption(const std::string& argument)
{
    const auto flag = [&](std::string_view name, bool& value) {
        if (argument != name)
            return false;
        value = true;
        return true;
    };
    if (flag("--json", m_options.json) || flag("--all", m_options.all) || flag("--why", m_options.why) ||
        flag("--orphans", m_options.orphans)) {
        m_groupingOption = argument;
        return true;
    }

    // The value of an option is what stands behind its "=", or the next argument whatever that looks like.
    const std::size_t equals = argument.find('=');
    const std::string name = argument.substr(0, equals);
    if (name != "--rules" && name != "--class" && name != "--check" && name != "--init-rules")
        return Refuse("unknown option '" + argument + "'");
    if (equals == std::string::npos && m_next == m_arguments.size())
        return Refuse(name + " needs a value");
    const std::string value =
        equals != std::string::npos ? argument.substr(equals + 1) : m_arguments[m_next++];
    if (name == "--check")
        return SetAction(KvGroupAction::Check, value);
    if (value.empty() && name != "--class")
        return Refuse(name + " needs a file's name");
    if (name == "--init-rules")
        return SetAction(KvGroupAction::InitRules, value);
    m_groupingOption = name;
    if (name == "--class")
        return SetClasses(value);
    if (m_options.rulesFile)
        return Refuse("--rules is given twice");
    m_options.rulesFile = value;
    return true;
}

std::optional<KvGroupOptions> OptionReader::Read()
{
    bool optionsEnded = false;
    while (m_next < m_arguments.size()) {
        const std::string& argument = m_arguments[m_next++];
        if (!optionsEnded && (argument == "--help" || argument == "-h")) {
            m_options.action = KvGroupAction::Help;
            return m_options;
        }
        if (!optionsEnded && argument == "--version") {
            m_options.action = KvGroupAction::Version;
            return m_options;
        }
        if (!optionsEnded && argument == "--") {
            optionsEnded = true;
            continue;
        }
        const bool isOption = !optionsEnded && argument.size() > 1 && argument[0] == '-';
        if (!(isOption ? ReadOption(argument) : SetAction(KvGroupAction::Group, argument)))
            return std::nullopt;
    }
    return CheckUse() ? std::optional(m_options) : std::nullopt;
}

} // namespace

std::optional<KvGroupOptions> ReadKvGroupOptions(const std::vector<std::string>& arguments,
                                                 std::string& error)
{
    return OptionReader(arguments, error).Read();
}

std::string_view KvGroupHelp()
{
    return R"(Usage: kvgroup [options] DIR      group the media files of a folder into clips
       kvgroup [options] -        the same for names on standard input, one a line
       kvgroup --check PATTERN    check the labels of a naming pattern
       kvgroup --init-rules FILE  write the built-in naming rules to a file, for editing

A clip is a base file and its siblings, such as clip.mxf with clip_A1.wav and
clip_A2.wav. The naming rules say which names belong together. Folders within
DIR are not entered. Names on standard input are UTF-8, their lines may end in
CR LF; of a path only what follows the last '/' or '\' counts, while a '\' in
the name of a file in DIR belongs to it. Nothing asks whether such a file is
there; "." and ".." are names like any other.

Options:
  --rules FILE   use the rules of FILE instead of the built-in ones
  --class CLASS  the rules to use: video (a video file and its sound; the
                 default), audio (audio channels of each other) or all (video
                 first, then audio for what is left)
  --all          show also the files that belong to no clip, each by itself
  --json         print one JSON object instead of lines
  --why          tell for each file which rule put it there, also for the files
                 that belong to no clip
  --orphans      tell which files have lost their base file, and which numbers
                 are missing between siblings
  --version      print name and version
  --help         print this text
  --             end of the options: what follows is DIR

Output:
  A base stands at the start of a line; its siblings follow, each on a line
  that begins with a tab: rule by rule, in the order of their numbers. Then
  come lines of fields with tabs between them:

  why     file, rule (from 0; - for none), pattern that fits the file,
          File=..., Number=..., Ext=... as the pattern reads them in the name
          (of a base: the rule's main pattern). In the order of the files above;
          a file in two clips has one line for each, in the order of the clips.
          The files in no clip come last, with the rule and the pattern -.
  orphan  file, rule, wildcard name of the base that is not there. A file in no
          clip whose name looks like a sibling's by some pattern, while the base
          is there by none (the case of letters aside). Where several patterns
          fit, the one with the most literal text is told. "<File><Ext>", which
          fits nearly every file, makes no orphans, and a file with a usual
          video extension is none.
  gap     base, pattern, first and last missing number. Only numbers between
          two siblings of one pattern are missed, unless a file of the clip has
          the number behind the same text by another pattern.

  Names come out byte for byte. In JSON ("clips", "why", "orphan", "gap") a byte
  that is not UTF-8 is written as a character from \udc80 to \udcff.

Which file is a base: the names with a usual video extension are tried before
the others, each in the order of their characters' codes. A file that belongs
to a clip never becomes a base, but it may be a sibling in several clips. A
file whose number cannot be read is nobody's sibling.

Exit status: 0 done; 1 nothing was grouped (also when --all lists files), or the
pattern has a fault; 2 wrong usage, or something could not be read or written.
)";
}

} // namespace kv
