// A position typed in percent, key by key.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kv {

/// A fraction in percent, to a tenth: "30", "33.3".
std::wstring PercentText(double fraction);

/// At most three digits and one decimal point.
class PercentEntry
{
public:
    bool IsPending() const { return !m_text.empty(); }
    /// What is typed so far, as it stands.
    const std::wstring& Text() const { return m_text; }

    /// True for the characters that an entry is made of.
    static bool IsPart(std::uint32_t character);
    /// Adds a digit or a point (a comma is one too); what does not fit any more is left out.
    void Type(std::uint32_t character);
    /// Takes the last character back.
    void Erase();
    void Drop() { m_text.clear(); }
    /// Ends the entry. @return the position, 0..1; none when no digit was typed.
    std::optional<double> Take();

private:
    std::wstring m_text;
};

} // namespace kv
