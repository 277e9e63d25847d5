#include "platform/ReportScreen.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace kv {

const ReportScreenLine* ReportScreen::Find(std::uint64_t id) const
{
    const auto line =
        std::find_if(m_lines.begin(), m_lines.end(), [&](const auto& one) { return one.id == id; });
    return line == m_lines.end() ? nullptr : &*line;
}

void ReportScreen::Touch(std::uint64_t id)
{
    for (ReportScreenLine& line : m_lines)
        line.isStale = line.isStale || line.id == id;
}

// How far the first line that stays has moved; 0 where a shift is not possible.
int ReportScreen::ShiftTo(const std::vector<ReportScreenLine>& lines, int height, int unit) const
{
    for (const ReportScreenLine& line : lines) {
        const ReportScreenLine* before = Find(line.id);
        if (!before)
            continue;
        const int shift = line.top - before->top;
        return unit > 0 && shift % unit == 0 && std::abs(shift) < height ? shift : 0;
    }
    return 0;
}

ReportScreenStep ReportScreen::Show(std::vector<ReportScreenLine> lines, int top, int bottom, int unit)
{
    const int end = lines.empty() ? top : std::min(bottom, lines.back().top + lines.back().height);
    ReportScreenStep step;
    if (!m_isKnown) {
        step.bands.push_back({top, bottom});
    } else {
        step.shift = ShiftTo(lines, bottom - top, unit);
        for (const ReportScreenLine& line : lines) {
            const ReportScreenLine* before = Find(line.id);
            const bool isSame = before && !before->isStale && before->top + step.shift == line.top &&
                                before->line == line.line && before->height == line.height &&
                                before->look == line.look;
            if (!isSame)
                step.bands.push_back({std::max(top, line.top), std::min(bottom, line.top + line.height)});
        }
        if (end < bottom && m_bottom + step.shift != end)
            step.bands.push_back({end, bottom});
    }
    m_isKnown = true;
    m_lines = std::move(lines);
    m_bottom = end;
    return step;
}

} // namespace kv
