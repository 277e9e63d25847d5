#include "subtitles/CueLines.h"
#include "subtitles/Subtitles.h"
#include "subtitles/VttText.h"

#include <utility>

namespace titler {
namespace {

bool StartsWithWord(std::string_view line, std::string_view word)
{
    return line.substr(0, word.size()) == word &&
           (line.size() == word.size() || line[word.size()] == ' ' || line[word.size()] == '\t');
}

constexpr std::string_view kHeader = "WEBVTT";

/// Blocks parted by empty lines; a block with a line of times is a cue.
class WebVttReader
{
public:
    SubtitleFile Read(std::string_view utf8)
    {
        CueLineReader reader(utf8);
        CueLine line;
        bool more = reader.Next(line);
        if (more && StartsWithWord(line.text, kHeader)) {
            do // the header ends with an empty line, too
                more = reader.Next(line);
            while (more && !line.text.empty() && !HasArrow(line.text));
        } else if (more) {
            m_file.faults.push_back({1, CueFaultKind::NoHeader});
        }
        for (; more; more = reader.Next(line))
            Take(line);
        EndBlock();
        return std::move(m_file);
    }

private:
    enum class State
    {
        Block, ///< no times so far
        Cue,
        Broken ///< behind times that cannot be read
    };

    static bool HasArrow(std::string_view line) { return line.find(kArrow) != line.npos; }

    void Take(const CueLine& line)
    {
        if (line.text.empty())
            EndBlock();
        else if (HasArrow(line.text))
            BeginCue(line);
        else
            m_body.push_back(line);
    }

    void BeginCue(const CueLine& line)
    {
        // One line above the times is the cue's name. Where the empty line is missing, a number is one, too.
        std::string_view identifier;
        const bool begins = m_state == State::Block && m_body.size() == 1;
        if (begins || (!m_body.empty() && IsNumber(m_body.back().text))) {
            identifier = m_body.back().text;
            m_body.pop_back();
        }
        EndBlock();
        m_state = AddCue(m_file, line) ? State::Cue : State::Broken;
        if (m_state == State::Cue)
            m_file.cues.back().identifier = identifier;
    }

    void EndBlock()
    {
        if (m_state == State::Cue)
            m_file.cues.back().text = FromVttText(JoinedText(InnerLines(m_body)));
        else if (m_state == State::Block && !m_body.empty())
            TakeOtherBlock();
        m_state = State::Block;
        m_body.clear();
    }

    void TakeOtherBlock()
    {
        const std::string_view first = m_body.front().text;
        for (const std::string_view word : {"NOTE", "STYLE", "REGION"}) {
            if (StartsWithWord(first, word)) {
                ++m_file.skippedBlocks;
                return;
            }
        }
        if (!IsBlank(first) || m_body.size() > 1)
            m_file.faults.push_back({m_body.front().number, CueFaultKind::NoTimes});
    }

    SubtitleFile m_file;
    State m_state = State::Block;
    std::vector<CueLine> m_body;
};

} // namespace

SubtitleFormat SubtitleFormatOf(std::string_view utf8)
{
    CueLine line;
    const bool hasLine = CueLineReader(utf8).Next(line);
    return hasLine && StartsWithWord(line.text, kHeader) ? SubtitleFormat::WebVtt : SubtitleFormat::SubRip;
}

SubtitleFile ReadWebVtt(std::string_view utf8)
{
    return WebVttReader().Read(utf8);
}

} // namespace titler
