#include "core/Text.h"
#include "tools/KvGroupOutput.h"

#include <initializer_list>

namespace kv {
namespace {

void WriteFields(OutputStream& out, std::initializer_list<std::string_view> fields)
{
    std::string_view separator;
    for (const std::string_view field : fields) {
        out.Write(separator);
        out.Write(field);
        separator = "\t";
    }
    out.Write("\n");
}

void WriteReason(const MediaReason& reason, const std::string& file, OutputStream& out)
{
    WriteFields(out, {"why", file, reason.rule ? std::to_string(reason.rule->index) : "-",
                      reason.rule ? ToFileName(reason.pattern) : "-", "File=" + ToFileName(reason.file),
                      "Number=" + ToFileName(reason.number), "Ext=" + ToFileName(reason.extension)});
}

} // namespace

void WriteLines(const KvGroupResult& result, const KvGroupOptions& options, OutputStream& out)
{
    MediaClipFiles files(result.grouping);
    ForEachClip(result, options.all, [&](const MediaClip& clip) {
        files.ForEach(clip, [&](MediaName name, const MediaGroup* group, const FiledMedia*) {
            out.Write(group ? "\t" : "");
            out.Write(ToFileName(result.names[name]));
            out.Write("\n");
        });
    });
    if (options.why) {
        ForEachReason(result, [&](const MediaClip&, MediaName name, const MediaReason& reason) {
            WriteReason(reason, ToFileName(result.names[name]), out);
        });
    }
    if (!options.orphans)
        return;
    for (const MediaOrphan& orphan : result.orphans) {
        WriteFields(out, {"orphan", ToFileName(result.names[orphan.file]), std::to_string(orphan.rule),
                          ToFileName(orphan.specification)});
    }
    for (const MediaGap& gap : result.gaps) {
        WriteFields(out, {"gap", ToFileName(result.names[gap.base]), ToFileName(gap.pattern),
                          std::to_string(gap.first), std::to_string(gap.last)});
    }
}

} // namespace kv
