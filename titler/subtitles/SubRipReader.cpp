#include "subtitles/CueLines.h"
#include "subtitles/Subtitles.h"

#include <algorithm>
#include <utility>

namespace titler {
namespace {

/// What has been read since the last line of times, and what that line began.
class SubRipReader
{
public:
    SubtitleFile Read(std::string_view utf8)
    {
        CueLineReader reader(utf8);
        for (CueLine line; reader.Next(line);) {
            if (IsMeantForTimes(line.text) || IsArrowBelowNumber(line.text))
                BeginCue(line);
            else
                m_body.push_back(line);
        }
        EndCue();
        return std::move(m_file);
    }

private:
    enum class State
    {
        Begin, ///< before the first times
        Cue,
        Broken ///< behind times that cannot be read
    };

    /// "x --> y" is a text, but not where a number above it, behind an empty line, says that a cue begins.
    bool IsArrowBelowNumber(std::string_view line) const
    {
        const std::size_t lines = m_body.size();
        if (lines == 0 || !IsNumber(m_body.back().text) || line.find(kArrow) == line.npos)
            return false;
        return lines == 1 ? m_state == State::Begin : m_body[lines - 2].text.empty();
    }

    void BeginCue(const CueLine& line)
    {
        DropNumber();
        EndCue();
        m_state = AddCue(m_file, line) ? State::Cue : State::Broken;
    }

    /// The number of the cue that begins stands right above its times; where every line is followed by a
    /// blank one, it stands between two of them.
    void DropNumber()
    {
        std::size_t end = m_body.size();
        while (end > 0 && IsBlank(m_body[end - 1].text))
            --end;
        if (end == 0 || !IsNumber(m_body[end - 1].text))
            return;
        const bool isAlone = end == 1 ? m_state == State::Begin : IsBlank(m_body[end - 2].text);
        if (end == m_body.size() || isAlone)
            m_body.resize(end - 1);
    }

    void EndCue()
    {
        if (m_state == State::Begin)
            ReportBlocks();
        else if (const std::size_t lines = ReportBrokenCues(); m_state == State::Cue)
            m_file.cues.back().text = JoinedText(InnerLines(std::span(m_body).first(lines)));
        m_body.clear();
    }

    /// Text before the first times belongs to nothing.
    void ReportBlocks()
    {
        for (std::size_t i = 0; i < m_body.size(); ++i) {
            if (!IsBlank(m_body[i].text) && (i == 0 || IsBlank(m_body[i - 1].text)))
                m_file.faults.push_back({m_body[i].number, CueFaultKind::NoTimes});
        }
    }

    /// Behind an empty line a number, or what resembles times, begins a cue. It has no times that can be
    /// read, since they would have ended the body.
    /// @return the number of lines before the first such cue.
    std::size_t ReportBrokenCues()
    {
        std::size_t lines = m_body.size();
        for (std::size_t i = 1; i < m_body.size(); ++i) {
            const std::string_view line = m_body[i].text;
            if (!m_body[i - 1].text.empty() || !(IsNumber(line) || ResemblesTimes(line)))
                continue;
            lines = std::min(lines, i);
            m_file.faults.push_back({m_body[i].number, CueFaultKind::NoTimes});
        }
        return lines;
    }

    SubtitleFile m_file;
    State m_state = State::Begin;
    std::vector<CueLine> m_body;
};

} // namespace

SubtitleFile ReadSubRip(std::string_view utf8)
{
    return SubRipReader().Read(utf8);
}

} // namespace titler
