// What a user asks about a grouping: why a file is where it is, which files have lost their clip, which
// numbers are missing.
#pragma once

#include "naming/MediaGrouper.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

/// The pattern that put a file into a clip, and how it reads the file's name.
struct MediaReason
{
    const MediaRule* rule = nullptr; ///< null for a file that no rule fits
    std::wstring_view pattern;
    std::wstring_view file;   ///< the first <File> value; each value is empty when there is none
    std::wstring_view number; ///< as it stands in the name
    std::wstring_view extension;
};

/// @param group,filed as MediaClipFiles hands them out: null for the base, whose main pattern is the reason.
MediaReason ReasonOf(const std::vector<MediaRule>& rules, const MediaClip& clip, std::wstring_view name,
                     const MediaGroup* group, const FiledMedia* filed);

/// A file in no clip that an addition fits, while no file fits what its base would be called.
struct MediaOrphan
{
    MediaName file;
    std::uint32_t rule;         ///< the rule's place in the collection
    std::wstring specification; ///< of the missing base
};

/// Finds the orphans in code-point order, each once. A file is none when by any addition that fits it a base
/// is there: another file that the rule's main pattern fits, the case of letters aside. Where several
/// additions fit, the one with the most literal text tells the rule and the base. An addition with neither
/// literal text nor <Number> fits nearly every name and makes nobody an orphan; a name with a video extension
/// is none.
std::vector<MediaOrphan> FindOrphans(const MediaNames& names, const std::vector<MediaRule>& rules,
                                     std::span<const unsigned int> classes, const MediaGrouping& grouping);

/// A run of numbers that are missing between two siblings.
struct MediaGap
{
    MediaName base;
    /// The addition, or the main pattern that brought the siblings of an audio rule.
    std::wstring_view pattern;
    std::int32_t first;
    std::int32_t last;
};

/// Finds the gaps in the order of clips and of the siblings before them, each once. Missed are numbers
/// between two siblings of one pattern: nobody knows where a clip's numbering starts or ends. A number that
/// another pattern found behind the same text is not missing.
std::vector<MediaGap> FindGaps(const MediaNames& names, const std::vector<MediaRule>& rules,
                               const MediaGrouping& grouping);

} // namespace kv
