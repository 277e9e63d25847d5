#include "core/Text.h"
#include "tools/KvGroupOutput.h"

#include <cerrno>
#include <initializer_list>

namespace kv {
namespace {

constexpr std::size_t kPiece = std::size_t{1} << 16;

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

void OutputStream::Write(std::string_view text)
{
    m_text += text;
    if (m_text.size() >= kPiece)
        WriteOut();
}

void OutputStream::WriteOut()
{
    errno = 0;
    if (m_error == 0 && std::fwrite(m_text.data(), 1, m_text.size(), m_file) != m_text.size())
        m_error = errno != 0 ? errno : EIO;
    m_text.clear();
}

int OutputStream::Finish()
{
    WriteOut();
    errno = 0;
    if (m_error == 0 && std::fflush(m_file) != 0)
        m_error = errno != 0 ? errno : EIO;
    return m_error;
}

void WriteLines(const KvGroupResult& result, const KvGroupOptions& options, OutputStream& out)
{
    MediaClipFiles files(result.grouping);
    const auto forEachFile = [&](auto visit) {
        for (const std::vector<MediaClip>* clips : {&result.grouping.clips, &result.alone}) {
            for (const MediaClip& clip : *clips) {
                files.ForEach(clip, [&](MediaName name, const MediaGroup* group, const FiledMedia* filed) {
                    visit(clip, name, group, filed);
                });
            }
        }
    };
    forEachFile([&](const MediaClip&, MediaName name, const MediaGroup* group, const FiledMedia*) {
        out.Write(group ? "\t" : "");
        out.Write(ToFileName(result.names[name]));
        out.Write("\n");
    });
    if (options.why) {
        forEachFile(
            [&](const MediaClip& clip, MediaName name, const MediaGroup* group, const FiledMedia* filed) {
                const std::wstring_view text = result.names[name];
                WriteReason(ReasonOf(result.rules, clip, text, group, filed), ToFileName(text), out);
            });
    }
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
