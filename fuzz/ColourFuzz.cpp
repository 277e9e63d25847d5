// A colour as text, a swatch profile and a user at the colour panel, from any bytes: what is read stays in
// its range and comes back when it is written.
//
// The input is the text, the profile and the steps, each behind a byte 1.
#include "Require.h"
#include "color/ColourPanelModel.h"
#include "color/ColourText.h"
#include "color/SwatchProfile.h"
#include "core/Text.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>

namespace {

using kv::ColourPanelModel;
using kv::SwatchSet;

void CheckText(const std::wstring& text)
{
    if (const auto typed = kv::ParseColourText(text)) {
        const auto again = kv::ParseColourText(kv::ColourText(typed->colour));
        Require(again && again->hasAlpha && again->colour == typed->colour, "a colour's text comes back");
        Require(typed->hasAlpha || kv::AlphaOf(typed->colour) == 255, "no alpha is the full one");
    }
    const std::uint32_t swatch = kv::ParseSwatch(text);
    Require(kv::ParseSwatch(kv::SwatchValue(swatch)) == swatch, "a swatch comes back");
}

void CheckProfile(std::string_view bytes)
{
    kv::ProfileDocument profile(bytes, kv::ProfileNames::AnyCase);
    auto colours = kv::ReadSwatches(profile, SwatchSet::Altered);
    const auto factory = kv::ReadSwatches(profile, SwatchSet::Factory);
    Require(colours.has_value() == factory.has_value(), "the head counts for both sets");
    const std::string before = profile.Bytes();
    if (!colours) {
        Require(!kv::WriteSwatches(profile, {}) && profile.Bytes() == before, "no head, no writing");
        return;
    }
    Require(!colours->empty() && colours->size() <= kv::kMostSwatches, "the number is bounded");
    Require(!kv::WriteSwatches(profile, std::span(*colours).subspan(1)) && profile.Bytes() == before,
            "another number of swatches is not written");
    // Writing many takes a second: every 16th of such inputs does, from the first on.
    static unsigned large = 0;
    if (colours->size() > 1000 && large++ % 16 != 0)
        return;
    for (std::size_t i = 0; i < colours->size(); ++i) // each another one
        (*colours)[i] += 0x9E3779B9u * static_cast<std::uint32_t>(i + 1);
    Require(kv::WriteSwatches(profile, *colours), "a profile that was read is written");
    const kv::ProfileDocument again(profile.Bytes(), kv::ProfileNames::AnyCase);
    Require(kv::ReadSwatches(again, SwatchSet::Altered) == colours, "swatches come back");
    Require(kv::ReadSwatches(again, SwatchSet::Factory) == factory, "the factory's stay");
}

bool IsNear(const kv::Rgb& a, const kv::Rgb& b)
{
    constexpr double close = 1e-12;
    return std::fabs(a.red - b.red) < close && std::fabs(a.green - b.green) < close &&
           std::fabs(a.blue - b.blue) < close;
}

class Session
{
public:
    explicit Session(const std::wstring& text) : m_text(text) {}

    /// One step of 17 bytes: what to do, and two numbers.
    void Step(const char* bytes)
    {
        const int choice = static_cast<unsigned char>(bytes[0]);
        double a = 0;
        double b = 0;
        int number = 0;
        std::memcpy(&a, bytes + 1, sizeof a);
        std::memcpy(&b, bytes + 9, sizeof b);
        std::memcpy(&number, bytes + 1, sizeof number);
        const kv::ColourState before = m_panel.Colour();
        const bool changed = Do(choice, a, b, number);
        Require(changed == (m_panel.Colour() != before), "a change is told, and nothing else");
        Check();
    }

private:
    bool Do(int choice, double a, double b, int number)
    {
        switch (choice % 12) {
        case 0:
            return m_panel.MoveMap(a, b);
        case 1:
            return m_panel.MoveSlider(a);
        case 2:
            return m_panel.MoveAlpha(a);
        case 3:
            return m_panel.EnterEdit(choice / 12 % 4, number);
        case 4:
            return m_panel.StepEdit(choice / 12 % 4, number);
        case 5:
            return m_panel.StepMap(number, -(number / 2));
        case 6:
            return m_panel.StepSlider(number);
        case 7:
            return m_panel.PickSwatch(static_cast<std::uint32_t>(number));
        case 8:
            return m_panel.PickAlphaPreset(number);
        case 9:
            return m_panel.Paste(m_text);
        case 10:
            m_panel.SetState(number % 4);
            return false;
        default:
            if (!m_panel.SetChannel(number))
                m_panel.SetMode(m_panel.Mode() == kv::ColourMode::Rgb ? kv::ColourMode::Hsb
                                                                      : kv::ColourMode::Rgb);
            return false;
        }
    }

    void Check() const
    {
        const kv::ColourState& colour = m_panel.Colour();
        Require(colour.GetRgb() == kv::InRange(colour.GetRgb()), "red, green and blue in range");
        Require(colour.GetHsb() == kv::InRange(colour.GetHsb()), "hue, saturation and brightness in range");
        Require(IsNear(kv::HsbToRgb(colour.GetHsb()), colour.GetRgb()), "both models say the same");
        for (int edit = 0; edit < ColourPanelModel::kEdits; ++edit) {
            const int value = m_panel.EditValue(edit);
            Require(value >= 0 && value <= m_panel.EditMost(edit), "what shows is in range");
        }
    }

    std::wstring m_text;
    ColourPanelModel m_panel;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto next = [&bytes] {
        const std::size_t end = std::min(bytes.find('\1'), bytes.size());
        const std::string_view part = bytes.substr(0, end);
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
        return part;
    };
    const std::wstring text = kv::FromFileName(next());
    CheckText(text);
    CheckProfile(next());
    Session session(text);
    constexpr std::size_t step = 17;
    for (; bytes.size() >= step; bytes.remove_prefix(step))
        session.Step(bytes.data());
    return 0;
}
