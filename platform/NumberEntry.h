// A number in a range as it is typed, stepped and scrubbed; no pixels, no events.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kv {

/// What a change has to tell: the phases of a run, each on its own or several in this order.
struct NumberRun
{
    bool begins = false;
    bool continues = false;
    bool ends = false;

    friend bool operator==(const NumberRun&, const NumberRun&) = default;
};

/// A whole number and the run of changes that is open, if any.
class NumberEntry
{
public:
    int Value() const { return m_value; }
    int Minimum() const { return m_minimum; }
    int Maximum() const { return m_maximum; }
    int Step() const { return m_step; }

    /// The number is clamped to the new range. A range whose end is below its start is turned round.
    void SetRange(int minimum, int maximum);
    /// At least 1.
    void SetStep(int step);
    /// Clamped. What was typed before is forgotten and is not taken back to, but an open run stays open.
    void SetValue(int value);
    /// The owner's answer to a change, as a part of it: taking back leads to the number before both.
    void Answer(int value);

    bool IsTyping() const { return m_typed.has_value(); }
    /// The text is another one by the user's hand.
    NumberRun Type(std::wstring_view text);
    /// Ends a typing; what is out of the range is clamped, what is no number is forgotten.
    NumberRun Commit();
    /// Ends a typing with the number as it was before.
    NumberRun TakeBack();
    /// Ends a typing with the number in force; what is out of the range is forgotten.
    NumberRun StopTyping();

    // One-shot edits, clamped.
    NumberRun StepBy(int steps) { return Enter(Stepped(m_value, steps)); }
    NumberRun Enter(int value);

    bool IsScrubbing() const { return m_scrubFrom.has_value(); }
    void BeginScrub() { m_scrubFrom = m_before = m_value; }
    /// @param steps since the beginning.
    NumberRun Scrub(int steps);
    NumberRun EndScrub(bool takeBack);

private:
    int Stepped(int from, int steps) const;
    NumberRun Change(int value);
    NumberRun End();

    int m_value = 0;
    int m_minimum = 0;
    int m_maximum = 255;
    int m_step = 1;
    std::optional<std::wstring> m_typed; ///< the text of a typing
    int m_before = 0;                    ///< the number when the typing or the scrub began
    bool m_isRunning = false;
    std::optional<int> m_scrubFrom;
};

/// The whole number that a text is, blanks around it aside; digits beyond any range give the largest one.
/// @return nothing for any other text.
std::optional<int> ParseWholeNumber(std::wstring_view text);

} // namespace kv
