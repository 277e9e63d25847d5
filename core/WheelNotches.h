// The wheel in whole notches.
#pragma once

#include <cstdint>

namespace kv {

/// Finer devices send parts of a notch: they add up until the direction turns.
class WheelNotches
{
public:
    /// @param delta 120 a notch. @return the whole notches that it completes.
    int Turn(int delta)
    {
        if (delta == 0)
            return 0;
        if ((delta < 0) != (m_rest < 0))
            m_rest = 0;
        const std::int64_t turned = std::int64_t{m_rest} + delta;
        m_rest = static_cast<int>(turned % kNotch);
        return static_cast<int>(turned / kNotch);
    }

private:
    static constexpr int kNotch = 120;

    int m_rest = 0; ///< less than a notch
};

} // namespace kv
