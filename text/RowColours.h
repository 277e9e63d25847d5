// The colours that a row has of its own. Pure.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace kv {

/// Which colour of a row.
enum class RowColour : std::uint8_t
{
    Back,
    SelectedBack,
    Text,
    SelectedText,
    DisabledText,
};
inline constexpr std::size_t kRowColourCount = 5;

/// 0xAARRGGBB; what is not set follows the theme.
class RowColours
{
public:
    void Set(RowColour which, std::uint32_t colour)
    {
        m_colours[Index(which)] = colour;
        m_own = static_cast<std::uint8_t>(m_own | 1u << Index(which));
    }
    std::optional<std::uint32_t> Get(RowColour which) const
    {
        return (m_own >> Index(which) & 1u) != 0 ? std::optional(m_colours[Index(which)]) : std::nullopt;
    }
    bool IsEmpty() const { return m_own == 0; }

private:
    static std::size_t Index(RowColour which) { return static_cast<std::size_t>(which); }

    std::array<std::uint32_t, kRowColourCount> m_colours{};
    std::uint8_t m_own = 0; ///< a bit for each colour that is set
};

} // namespace kv
