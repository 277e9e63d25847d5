#include "core/CodePoints.h"
#include "tools/KvGroupOutput.h"

namespace kv {
namespace {

void AppendEscape(std::string& out, char32_t unit)
{
    constexpr std::string_view kDigits = "0123456789abcdef";
    out += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4)
        out += kDigits[(unit >> shift) & 0xF];
}

// Writes the elements of an array, one a line.
class JsonArray
{
public:
    JsonArray(std::string_view name, bool isFirst, OutputStream& out) : m_out(out)
    {
        m_out.Write(isFirst ? "" : ",\n");
        m_out.Write("  \"");
        m_out.Write(name);
        m_out.Write("\": [");
    }
    ~JsonArray() { m_out.Write(m_isEmpty ? "]" : "\n  ]"); }
    JsonArray(const JsonArray&) = delete;
    JsonArray& operator=(const JsonArray&) = delete;

    OutputStream& Next()
    {
        m_out.Write(m_isEmpty ? "\n    " : ",\n    ");
        m_isEmpty = false;
        return m_out;
    }

private:
    OutputStream& m_out;
    bool m_isEmpty = true;
};

class JsonWriter
{
public:
    JsonWriter(const KvGroupResult& result, OutputStream& out)
        : m_result(result)
        , m_files(result.grouping)
        , m_out(out)
    {
    }
    void WriteClips();
    void WriteReasons();
    void WriteOrphans();
    void WriteGaps();

private:
    template <typename Visit>
    void ForEachClip(Visit visit)
    {
        for (const std::vector<MediaClip>* clips : {&m_result.grouping.clips, &m_result.alone}) {
            for (const MediaClip& clip : *clips)
                visit(clip);
        }
    }
    std::string Name(MediaName name) const { return ToJsonString(m_result.names[name]); }

    const KvGroupResult& m_result;
    MediaClipFiles m_files;
    OutputStream& m_out;
};

void JsonWriter::WriteClips()
{
    JsonArray array("clips", true, m_out);
    ForEachClip([&](const MediaClip& clip) {
        array.Next().Write("{\"name\": " + Name(clip.base) +
                           ", \"class\": " + std::to_string(clip.ruleClass) + ", \"files\": [");
        m_files.ForEach(clip, [&](MediaName name, const MediaGroup* group, const FiledMedia*) {
            m_out.Write(group ? ", " : "");
            m_out.Write(Name(name));
        });
        m_out.Write("]}");
    });
}

void JsonWriter::WriteReasons()
{
    JsonArray array("why", false, m_out);
    ForEachClip([&](const MediaClip& clip) {
        m_files.ForEach(clip, [&](MediaName name, const MediaGroup* group, const FiledMedia* filed) {
            const MediaReason reason = ReasonOf(m_result.rules, clip, m_result.names[name], group, filed);
            array.Next().Write("{\"file\": " + Name(name) + ", \"clip\": " + Name(clip.base) +
                               ", \"rule\": " + (reason.rule ? std::to_string(reason.rule->index) : "null") +
                               ", \"addition\": " + (reason.rule ? ToJsonString(reason.pattern) : "null") +
                               ", \"values\": {\"File\": " + ToJsonString(reason.file) +
                               ", \"Number\": " + ToJsonString(reason.number) +
                               ", \"Ext\": " + ToJsonString(reason.extension) + "}}");
        });
    });
}

void JsonWriter::WriteOrphans()
{
    JsonArray array("orphan", false, m_out);
    for (const MediaOrphan& orphan : m_result.orphans) {
        array.Next().Write("{\"file\": " + Name(orphan.file) + ", \"rule\": " + std::to_string(orphan.rule) +
                           ", \"specification\": " + ToJsonString(orphan.specification) + "}");
    }
}

void JsonWriter::WriteGaps()
{
    JsonArray array("gap", false, m_out);
    for (const MediaGap& gap : m_result.gaps) {
        array.Next().Write("{\"base\": " + Name(gap.base) + ", \"addition\": " + ToJsonString(gap.pattern) +
                           ", \"first\": " + std::to_string(gap.first) +
                           ", \"last\": " + std::to_string(gap.last) + "}");
    }
}

} // namespace

std::string ToJsonString(std::wstring_view name)
{
    std::string out = "\"";
    for (std::size_t at = 0; at < name.size();) {
        const CodePoint next = NextCodePoint(name, at);
        at += next.length;
        if (next.value == U'"' || next.value == U'\\')
            (out += '\\') += static_cast<char>(next.value);
        else if (next.value < 0x20 || next.value == 0x7F || IsSurrogate(next.value))
            AppendEscape(out, next.value);
        else
            AppendUtf8(out, next.valid ? next.value : kReplacementCharacter);
    }
    return out += '"';
}

void WriteJson(const KvGroupResult& result, const KvGroupOptions& options, OutputStream& out)
{
    JsonWriter writer(result, out);
    out.Write("{\n");
    writer.WriteClips();
    if (options.why)
        writer.WriteReasons();
    if (options.orphans) {
        writer.WriteOrphans();
        writer.WriteGaps();
    }
    out.Write("\n}\n");
}

} // namespace kv
