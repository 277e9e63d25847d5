// Which lines of a report list are on the screen, and what has to be painted when others are to be. Pure.
#pragma once

#include <cstdint>
#include <vector>

namespace kv {

/// A line as it is painted.
struct ReportScreenLine
{
    std::uint64_t id = 0;
    int line = 0; ///< its index, which an own drawing may show
    int top = 0;  ///< client coordinates; the first and the last line may reach beyond the view
    int height = 0;
    int look = 0; ///< whatever else makes it look different: a change of it is painted
    bool isStale = false;
};

/// What a step from one picture to the next takes.
struct ReportScreenStep
{
    struct Band
    {
        int top;
        int bottom; ///< exclusive
        friend bool operator==(const Band&, const Band&) = default;
    };
    int shift = 0;           ///< first move the picture down so many pixels, negative up
    std::vector<Band> bands; ///< then paint these; what the shift bares is not among them
};

class ReportScreen
{
public:
    /// All has to be painted in the next step.
    void Forget() { m_isKnown = false; }
    bool IsKnown() const { return m_isKnown; }
    /// What the row with that number holds has changed.
    void Touch(std::uint64_t id);
    /// The picture is to show these lines in a view from `top` to `bottom` (exclusive).
    /// @param lines from above, without gaps. @param unit a shift is a multiple of it; 0 for never.
    ReportScreenStep Show(std::vector<ReportScreenLine> lines, int top, int bottom, int unit);

private:
    const ReportScreenLine* Find(std::uint64_t id) const;
    int ShiftTo(const std::vector<ReportScreenLine>& lines, int height, int unit) const;

    bool m_isKnown = false;
    std::vector<ReportScreenLine> m_lines;
    int m_bottom = 0; ///< of the last line, at most the view's
};

} // namespace kv
