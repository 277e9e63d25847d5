// How kvgroup shows a grouping.
#pragma once

#include "naming/MediaGrouper.h"
#include "naming/MediaReport.h"
#include "tools/KvGroupOptions.h"

#include <cstdio>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

/// Collects text and writes it in large pieces. The first error is kept, what comes after it is dropped.
class OutputStream
{
public:
    explicit OutputStream(std::FILE* file) : m_file(file) {}
    void Write(std::string_view text);
    /// Writes what is left. @return 0 or the system's error number.
    int Finish();

private:
    void WriteOut();

    std::FILE* m_file;
    std::string m_text;
    int m_error = 0;
};

/// Everything that is shown.
struct KvGroupResult
{
    const MediaNames& names;
    const std::vector<MediaRule>& rules;
    const MediaGrouping& grouping;
    std::vector<MediaClip> alone; ///< follow the clips: in their list with --all, in the reasons always
    std::vector<MediaOrphan> orphans;
    std::vector<MediaGap> gaps;
};

/// Visits clips, then the files that are alone.
template <typename Visit>
void ForEachClip(const KvGroupResult& result, bool withAlone, Visit visit)
{
    for (const MediaClip& clip : result.grouping.clips)
        visit(clip);
    for (const MediaClip& clip : std::span(result.alone).first(withAlone ? result.alone.size() : 0))
        visit(clip);
}

/// Visits each file with the reason why it is where it is: `visit(clip, name, reason)`.
template <typename Visit>
void ForEachReason(const KvGroupResult& result, Visit visit)
{
    MediaClipFiles files(result.grouping);
    ForEachClip(result, true, [&](const MediaClip& clip) {
        files.ForEach(clip, [&](MediaName name, const MediaGroup* group, const FiledMedia* filed) {
            visit(clip, name, ReasonOf(result.rules, clip, result.names[name], group, filed));
        });
    });
}

/// Writes lines: names byte for byte.
void WriteLines(const KvGroupResult& result, const KvGroupOptions& options, OutputStream& out);

/// Writes one JSON object.
void WriteJson(const KvGroupResult& result, const KvGroupOptions& options, OutputStream& out);

} // namespace kv
