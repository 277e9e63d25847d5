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
            do { // the header ends with an empty line, too
                m_body.push_back(line);
                more = reader.Next(line);
            } while (more && !line.text.empty() && !HasArrow(line.text));
            m_file.head.title = BodyAsItIs();
            m_body.clear();
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
        if (StartsWithWord(first, "NOTE"))
            ++m_file.notes;
        else if (StartsWithWord(first, "STYLE") || StartsWithWord(first, "REGION"))
            m_file.head.blocks.push_back(BodyAsItIs());
        else if (!IsBlank(first) || m_body.size() > 1)
            m_file.faults.push_back({m_body.front().number, CueFaultKind::NoTimes});
    }

    std::string BodyAsItIs() const
    {
        std::string text;
        for (const CueLine& line : m_body)
            text.append(text.empty() ? "" : "\n").append(line.text);
        return text;
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

SubtitleFormat SubtitleFormatOfText(std::string_view utf8)
{
    const SubtitleFormat format = SubtitleFormatOf(utf8);
    CueLineReader reader(utf8);
    for (CueLine line; format == SubtitleFormat::SubRip && reader.Next(line);)
        if (ParseCueTimes(line.text))
            return format;
    return format == SubtitleFormat::WebVtt ? format : SubtitleFormat::PlainText;
}

bool SubtitleHead::SaysMore() const
{
    return !title.empty() && title != kHeader;
}

SubtitleFile ReadWebVtt(std::string_view utf8)
{
    return WebVttReader().Read(utf8);
}

SubtitleFile ReadPlainText(std::string_view utf8)
{
    SubtitleFile file;
    CueLineReader reader(utf8, ByteOrderMark::IsText);
    for (CueLine line; reader.Next(line);) {
        Cue& cue = file.cues.emplace_back();
        cue.in = cue.out = SubtitleRow::kNoTime;
        cue.text = line.text;
        cue.line = line.number;
    }
    return file;
}

SubtitleFile ReadSubtitles(std::string_view utf8, SubtitleFormat format)
{
    switch (format) {
    case SubtitleFormat::WebVtt:
        return ReadWebVtt(utf8);
    case SubtitleFormat::PlainText:
        return ReadPlainText(utf8);
    case SubtitleFormat::SubRip:
        break;
    }
    return ReadSubRip(utf8);
}

} // namespace titler
