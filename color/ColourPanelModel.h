// What the colour panel shows and what each of its parts does to the colour; no pixels, no events.
#pragma once

#include "color/ColourState.h"

#include <cstdint>
#include <string_view>

namespace kv {

enum class ColourMode
{
    Rgb,
    Hsb,
};

/// One colour is the truth and every part views it, so nothing has to be kept in step. What a user does
/// changes only what the panel's state allows, and answers whether the colour changed.
class ColourPanelModel
{
public:
    static constexpr int kChannels = 3;
    /// The edits: the three channels, then alpha.
    static constexpr int kAlphaEdit = 3;
    static constexpr int kEdits = 4;

    explicit ColourPanelModel(ColourMode mode = ColourMode::Rgb) : m_mode(mode) {}

    const ColourState& Colour() const { return m_colour; }
    /// 0xAARRGGBB.
    std::uint32_t Value() const { return m_colour.Value(); }

    ColourMode Mode() const { return m_mode; }
    /// The other mode begins with its first channel. @return false for the mode in force.
    bool SetMode(ColourMode mode);
    /// The channel whose button is checked, 0 … 2: the one that the slider shows.
    int Channel() const { return m_channel; }
    /// @return false for the channel in force and for an index out of range.
    bool SetChannel(int channel);
    int MapLock() const { return FieldLock(EditChannel(m_channel)); }
    int MapSliderLock() const { return SliderLock(EditChannel(m_channel)); }

    /// 0 enables all, 1 the colour alone, 2 alpha alone, any other number neither.
    int State() const { return m_state; }
    void SetState(int state) { m_state = state; }
    bool IsColourEnabled() const { return m_state == 0 || m_state == 1; }
    bool IsAlphaEnabled() const { return m_state == 0 || m_state == 2; }
    bool IsEditEnabled(int edit) const { return edit == kAlphaEdit ? IsAlphaEnabled() : IsColourEnabled(); }

    /// What an edit stands for in the mode in force. @param edit 0 … 3.
    ColourChannel EditChannel(int edit) const;
    /// The range of an edit is 0 up to this.
    int EditMost(int edit) const { return MostOf(EditChannel(edit)); }
    int EditValue(int edit) const { return m_colour.Shown(EditChannel(edit)); }
    /// True where an edit that holds `held` has to be written anew. The one that is typed in never is: its
    /// number, perhaps still half typed, made the colour.
    bool IsEditStale(int edit, int held, int typedEdit) const
    {
        return edit != typedEdit && held != EditValue(edit);
    }

    /// What the owner does, in every state.
    bool SetColour(std::uint32_t colour) { return m_colour.SetValue(colour); }
    /// Puts a colour back exactly, hue and all: the end of a drag or of a typing that was called off.
    void Restore(const ColourState& colour) { m_colour = colour; }

    /// The field at x to the right and y upwards, 0 … 1 each, clamped.
    bool MoveMap(double x, double y);
    bool MoveSlider(double place);
    bool MoveAlpha(double place);
    /// A number typed in, clamped to the edit's range; one that shows already changes nothing.
    bool EnterEdit(int edit, int value);
    /// Steps from the number that shows; at the end of the range nothing happens.
    bool StepEdit(int edit, int steps);
    /// An arrow key on the field: steps of the two edits' numbers, which keep hue and saturation.
    bool StepMap(int stepsX, int stepsY);
    bool StepSlider(int steps);
    bool StepAlpha(int steps) { return StepEdit(kAlphaEdit, steps); }

    /// A swatch gives colour and alpha, as far as the state allows.
    bool PickSwatch(std::uint32_t colour);
    /// @param index of kFixedAlphas.
    bool PickAlphaPreset(int index);
    /// True for a text that names a colour of which the state allows a part.
    bool CanPaste(std::wstring_view text) const;
    bool Paste(std::wstring_view text);

private:
    template <typename Edit>
    bool Change(bool enabled, Edit edit);
    double SteppedPlace(ColourChannel channel, int steps) const;

    ColourState m_colour{0xFF000000u};
    ColourMode m_mode;
    int m_channel = 0;
    int m_state = 0;
};

} // namespace kv
