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

// A wide file name as a JSON string: UTF-8; a lone surrogate (a byte that is no UTF-8) is escaped.
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

// Writes the elements of an array, one a line.
class JsonArray
{
public:
    JsonArray(std::string_view name, OutputStream& out) : m_out(out)
    {
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
    JsonWriter(const KvGroupResult& result, OutputStream& out) : m_result(result), m_out(out) {}
    void WriteClips(bool withAlone);
    void WriteReasons();
    void WriteOrphans();
    void WriteGaps();

private:
    std::string Name(MediaName name) const { return ToJsonString(m_result.names[name]); }

    const KvGroupResult& m_result;
    OutputStream& m_out;
};

void JsonWriter::WriteClips(bool withAlone)
{
    JsonArray array("clips", m_out);
    MediaClipFiles files(m_result.grouping);
    ForEachClip(m_result, withAlone, [&](const MediaClip& clip) {
        array.Next().Write("{\"name\": " + Name(clip.base) +
                           ", \"class\": " + std::to_string(clip.ruleClass) + ", \"files\": [");
        files.ForEach(clip, [&](MediaName name, const MediaGroup* group, const FiledMedia*) {
            m_out.Write(group ? ", " : "");
            m_out.Write(Name(name));
        });
        m_out.Write("]}");
    });
}

void JsonWriter::WriteReasons()
{
    m_out.Write(",\n");
    JsonArray array("why", m_out);
    ForEachReason(m_result, [&](const MediaClip& clip, MediaName name, const MediaReason& reason) {
        array.Next().Write("{\"file\": " + Name(name) +
                           ", \"clip\": " + (clip.groupCount > 0 ? Name(clip.base) : "null") +
                           ", \"rule\": " + (reason.rule ? std::to_string(reason.rule->index) : "null") +
                           ", \"addition\": " + (reason.rule ? ToJsonString(reason.pattern) : "null") +
                           ", \"values\": {\"File\": " + ToJsonString(reason.file) +
                           ", \"Number\": " + ToJsonString(reason.number) +
                           ", \"Ext\": " + ToJsonString(reason.extension) + "}}");
    });
}

void JsonWriter::WriteOrphans()
{
    m_out.Write(",\n");
    JsonArray array("orphan", m_out);
    for (const MediaOrphan& orphan : m_result.orphans) {
        array.Next().Write("{\"file\": " + Name(orphan.file) + ", \"rule\": " + std::to_string(orphan.rule) +
                           ", \"specification\": " + ToJsonString(orphan.specification) + "}");
    }
}

void JsonWriter::WriteGaps()
{
    m_out.Write(",\n");
    JsonArray array("gap", m_out);
    for (const MediaGap& gap : m_result.gaps) {
        array.Next().Write("{\"base\": " + Name(gap.base) + ", \"addition\": " + ToJsonString(gap.pattern) +
                           ", \"first\": " + std::to_string(gap.first) +
                           ", \"last\": " + std::to_string(gap.last) + "}");
    }
}

} // namespace

void WriteJson(const KvGroupResult& result, const KvGroupOptions& options, OutputStream& out)
{
    JsonWriter writer(result, out);
    out.Write("{\n");
    writer.WriteClips(options.all);
    if (options.why)
        writer.WriteReasons();
    if (options.orphans) {
        writer.WriteOrphans();
        writer.WriteGaps();
    }
    out.Write("\n}\n");
}

} // namespace kv
