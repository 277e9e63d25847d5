// How kvgroup shows a grouping.
#pragma once

#include "naming/MediaGrouper.h"
#include "naming/MediaReport.h"
#include "tools/KvGroupOptions.h"

#include <cstdio>
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
    std::vector<MediaClip> alone; ///< shown behind the clips
    std::vector<MediaOrphan> orphans;
    std::vector<MediaGap> gaps;
};

/// Writes lines: names byte for byte.
void WriteLines(const KvGroupResult& result, const KvGroupOptions& options, OutputStream& out);

/// Writes one JSON object.
void WriteJson(const KvGroupResult& result, const KvGroupOptions& options, OutputStream& out);

/// A wide file name as a JSON string: UTF-8; a lone surrogate (a byte that is no UTF-8) is escaped.
std::string ToJsonString(std::wstring_view name);

} // namespace kv
