// An ease as text on the clipboard, and the handle's place that a user types.
#pragma once

#include "curves/EaseCurve.h"

#include <optional>
#include <string>
#include <string_view>

namespace kv {

/// "cubic-bezier(0.42, 0, 1, 1)": the handles as fractions of the segment, x clamped to 0 … 1; on a flat
/// segment y is 0 and 1. The shortest numbers that read back the same. Empty for a curve that is not
/// sensible.
std::wstring CubicBezierText(const EaseCurve& curve);

/// The handles that such a text asks for, absolute.
struct EaseHandles
{
    SKvCurvePoint out;
    SKvCurvePoint in;
};
/// Reads "cubic-bezier(a, b, c, d)" or four bare numbers, whatever the locale; x is clamped to 0 … 1, on a
/// flat segment the y of the handles stays. What a curve gives as text leaves its handles exactly where they
/// are, but for those beyond the segment.
/// @return nothing for any other text, and for a curve that is not sensible.
std::optional<EaseHandles> ParseCubicBezier(std::wstring_view text, const EaseCurve& curve);

/// What is typed on a handle: "time, value", or the value alone; the point is the decimal one.
class EaseEntry
{
public:
    /// @return true for characters that an entry consists of; only digits, a sign and a point begin one.
    static bool IsPart(unsigned character, bool pending);

    bool IsPending() const { return !m_text.empty(); }
    const std::wstring& Text() const { return m_text; }
    void Type(unsigned character);
    /// Removes the last character.
    void Erase();
    void Clear() { m_text.clear(); }
    /// @param from where the handle stands; its time stays when only a value was typed.
    /// @return nothing for an entry that makes no sense.
    std::optional<SKvCurvePoint> Value(SKvCurvePoint from) const;

private:
    std::wstring m_text;
};

} // namespace kv
