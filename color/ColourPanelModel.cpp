#include "color/ColourPanelModel.h"

#include "color/ColourText.h"
#include "color/FixedAlphas.h"

namespace kv {

namespace {

/// The number that is `steps` further in a channel's range.
int Stepped(const ColourState& colour, ColourChannel channel, int steps)
{
    const int most = MostOf(channel);
    return std::clamp(colour.Shown(channel) + std::clamp(steps, -most, most), 0, most);
}

} // namespace

template <typename Edit>
bool ColourPanelModel::Change(bool enabled, Edit edit)
{
    if (!enabled)
        return false;
    const ColourState before = m_colour;
    edit(m_colour);
    return m_colour != before;
}

bool ColourPanelModel::SetMode(ColourMode mode)
{
    if (mode == m_mode)
        return false;
    m_mode = mode;
    m_channel = 0;
    return true;
}

bool ColourPanelModel::SetChannel(int channel)
{
    if (channel < 0 || channel >= kChannels || channel == m_channel)
        return false;
    m_channel = channel;
    return true;
}

ColourChannel ColourPanelModel::EditChannel(int edit) const
{
    if (edit == kAlphaEdit)
        return ColourChannel::Alpha;
    const int first = static_cast<int>(m_mode == ColourMode::Rgb ? ColourChannel::Red : ColourChannel::Hue);
    return static_cast<ColourChannel>(first + std::clamp(edit, 0, kChannels - 1));
}

bool ColourPanelModel::MoveMap(double x, double y)
{
    const FieldAxes axes = AxesOf(MapLock());
    return Change(IsColourEnabled(), [&](ColourState& colour) { colour.Move(axes.x, x, axes.y, y); });
}

bool ColourPanelModel::MoveSlider(double place)
{
    return Change(IsColourEnabled(),
                  [&](ColourState& colour) { colour.Move(EditChannel(m_channel), place); });
}

bool ColourPanelModel::MoveAlpha(double place)
{
    return Change(IsAlphaEnabled(), [&](ColourState& colour) { colour.Move(ColourChannel::Alpha, place); });
}

bool ColourPanelModel::EnterEdit(int edit, int value)
{
    const ColourChannel channel = EditChannel(edit);
    if (std::clamp(value, 0, MostOf(channel)) == m_colour.Shown(channel))
        return false;
    return Change(IsEditEnabled(edit), [&](ColourState& colour) { colour.Enter(channel, value); });
}

bool ColourPanelModel::StepEdit(int edit, int steps)
{
    return EnterEdit(edit, Stepped(m_colour, EditChannel(edit), steps));
}

/// A channel that does not get another number stays exactly where it is.
double ColourPanelModel::SteppedPlace(ColourChannel channel, int steps) const
{
    const int number = Stepped(m_colour, channel, steps);
    if (number == m_colour.Shown(channel))
        return m_colour.Place(channel);
    return static_cast<double>(number) / MostOf(channel);
}

bool ColourPanelModel::StepMap(int stepsX, int stepsY)
{
    const FieldAxes axes = AxesOf(MapLock());
    return MoveMap(SteppedPlace(axes.x, stepsX), SteppedPlace(axes.y, stepsY));
}

bool ColourPanelModel::StepSlider(int steps)
{
    return MoveSlider(SteppedPlace(EditChannel(m_channel), steps));
}

bool ColourPanelModel::PickSwatch(std::uint32_t colour)
{
    return Change(IsColourEnabled(), [&](ColourState& state) {
        state.SetRgb(RgbOf(colour), LostHue::Zero);
        if (IsAlphaEnabled())
            state.SetAlpha(static_cast<int>(AlphaOf(colour)));
    });
}

bool ColourPanelModel::PickAlphaPreset(int index)
{
    if (index < 0 || index >= static_cast<int>(kFixedAlphas.size()))
        return false;
    return EnterEdit(kAlphaEdit, kFixedAlphas[static_cast<std::size_t>(index)]);
}

bool ColourPanelModel::CanPaste(std::wstring_view text) const
{
    const auto typed = ParseColourText(text);
    return typed && (IsColourEnabled() || (IsAlphaEnabled() && typed->hasAlpha));
}

bool ColourPanelModel::Paste(std::wstring_view text)
{
    const auto typed = ParseColourText(text);
    if (!typed)
        return false;
    return Change(true, [&](ColourState& state) {
        if (IsColourEnabled())
            state.SetRgb(RgbOf(typed->colour), LostHue::Zero);
        if (IsAlphaEnabled() && typed->hasAlpha)
            state.SetAlpha(static_cast<int>(AlphaOf(typed->colour)));
    });
}

} // namespace kv
