// Groups the media files of a folder into clips.
//
// The plain way is to take each file as a base, `Prepare` a matcher with it and offer it every other file.
// Here the candidates of a base are found by the text that its siblings' names must begin with, so that a
// folder takes time in its size, not in its square; the result is the same.
#pragma once

#include "naming/MediaNames.h"
#include "naming/MediaRules.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace kv {

/// A file under an addition of its clip.
struct FiledMedia
{
    MediaName name;
    std::int32_t number; ///< of the pattern's <Number>; 0 when it has none
    bool byMainRule;     ///< the audio rule's main pattern fitted, not the addition
};

/// The files that one addition of one rule brought to a clip.
struct MediaGroup
{
    std::uint32_t rule;     ///< index into the rules that were given
    std::uint32_t addition; ///< index into the rule's additions
    std::uint32_t count;
    std::size_t first; ///< index into MediaGrouping::filed
};

inline constexpr std::uint32_t kNoMediaRule = 0xFFFFFFFFu;

/// A base file and the groups of its siblings. The base may stand in them, too.
struct MediaClip
{
    MediaName base;
    unsigned int ruleClass;
    std::uint32_t rule; ///< the first rule that fits the base and brought a sibling; kNoMediaRule for none
    std::uint32_t groupCount;
    std::size_t firstGroup; ///< index into MediaGrouping::groups
};

struct MediaGrouping
{
    std::vector<MediaClip> clips;
    std::vector<MediaGroup> groups;
    std::vector<FiledMedia> filed;
    std::vector<char> isInClip; ///< for each name

    std::span<const MediaGroup> GroupsOf(const MediaClip& clip) const
    {
        return std::span(groups).subspan(clip.firstGroup, clip.groupCount);
    }
    /// Sorted by number, then by name.
    std::span<const FiledMedia> FilesOf(const MediaGroup& group) const
    {
        return std::span(filed).subspan(group.first, group.count);
    }
};

/// Finds the clips. For each class in turn, names with a video extension are tried before the others, each in
/// code-point order: a name that no clip holds yet and that has a sibling is the base of a clip. A file may
/// stand in several clips; one whose number cannot be read is nobody's sibling.
MediaGrouping GroupMedia(const MediaNames& names, const std::vector<MediaRule>& rules,
                         std::span<const unsigned int> classes);

/// The names that no clip holds, as clips without groups, in the order in which bases are tried. Their class
/// is that of the first rule that fits them as a base, 0 when none does; no rule put them anywhere.
std::vector<MediaClip> MediaAlone(const MediaNames& names, const std::vector<MediaRule>& rules,
                                  std::span<const unsigned int> classes, const MediaGrouping& grouping);

/// Visits the files of clips, each file of a clip once: the base, then each group in turn.
class MediaClipFiles
{
public:
    explicit MediaClipFiles(const MediaGrouping& grouping)
        : m_grouping(grouping)
        , m_lastClip(grouping.isInClip.size(), 0)
    {
    }

    /// Calls `visit(name, group, filed)`; the two pointers are null for the base.
    template <typename Visit>
    void ForEach(const MediaClip& clip, Visit visit)
    {
        ++m_clip;
        m_lastClip[clip.base] = m_clip;
        visit(clip.base, static_cast<const MediaGroup*>(nullptr), static_cast<const FiledMedia*>(nullptr));
        for (const MediaGroup& group : m_grouping.GroupsOf(clip)) {
            for (const FiledMedia& file : m_grouping.FilesOf(group)) {
                if (std::exchange(m_lastClip[file.name], m_clip) != m_clip)
                    visit(file.name, &group, &file);
            }
        }
    }

private:
    const MediaGrouping& m_grouping;
    std::vector<std::uint32_t> m_lastClip; // for each name the last visited clip that held it
    std::uint32_t m_clip = 0;
};

} // namespace kv
