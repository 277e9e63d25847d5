// What each part of the panel does to the colour and what the others then show.
#include "color/ColourPanelModel.h"

#include <functional>
#include <gtest/gtest.h>
#include <sstream>

namespace {

using kv::ColourMode;
using kv::ColourPanelModel;

constexpr int kNobody = -1;

/// "R,G,B,A" or "H,S,B,A" as the edits show them.
std::string Edits(const ColourPanelModel& panel)
{
    std::ostringstream text;
    for (int edit = 0; edit < ColourPanelModel::kEdits; ++edit)
        text << (edit == 0 ? "" : ",") << panel.EditValue(edit);
    return text.str();
}

ColourPanelModel Panel(ColourMode mode, std::uint32_t colour)
{
    ColourPanelModel panel(mode);
    panel.SetColour(colour);
    return panel;
}

struct Case
{
    const char* name;
    ColourMode mode;
    std::uint32_t colour;
    std::function<bool(ColourPanelModel&)> edit;
    std::string edits;
    std::uint32_t value;
    bool changed = true;
};

void Expect(const Case& test)
{
    ColourPanelModel panel = Panel(test.mode, test.colour);
    EXPECT_EQ(test.edit(panel), test.changed) << test.name;
    EXPECT_EQ(Edits(panel), test.edits) << test.name;
    EXPECT_EQ(panel.Value(), test.value) << test.name << std::hex << ' ' << panel.Value();
}

constexpr auto kRgb = ColourMode::Rgb;
constexpr auto kHsb = ColourMode::Hsb;
constexpr std::uint32_t kBlack = 0xFF000000u;

TEST(ColourPanelModel, EveryPartMovesTheOneColour)
{
    const Case cases[] = {
        {"map, red locked", kRgb, 0xFF0A0000u, [](auto& p) { return p.MoveMap(0.2, 1.5); }, "10,51,255,255",
         0xFF0A33FFu},
        {"map, blue locked", kRgb, 0xFF000007u, [](auto& p) { return p.SetChannel(2) && p.MoveMap(1, 0.2); },
         "255,51,7,255", 0xFFFF3307u},
        {"map, hue locked", kHsb, 0xFF00FF00u, [](auto& p) { return p.MoveMap(0.5, 0.4); }, "120,50,40,255",
         0xFF336633u},
        {"map, saturation locked", kHsb, 0xFFFF0000u,
         [](auto& p) { return p.SetChannel(1) && p.MoveMap(0.5, 0.2); }, "180,100,20,255", 0xFF003333u},
        {"map, brightness locked", kHsb, 0xFFFF0000u,
         [](auto& p) { return p.SetChannel(2) && p.MoveMap(2.0 / 3, 0.2); }, "240,20,100,255", 0xFFCCCCFFu},
        {"slider", kRgb, 0xFF010203u, [](auto& p) { return p.SetChannel(1) && p.MoveSlider(0.2); },
         "1,51,3,255", 0xFF013303u},
        {"hue slider", kHsb, 0xFFFF0000u, [](auto& p) { return p.MoveSlider(1); }, "360,100,100,255",
         0xFFFF0000u},
        {"alpha slider", kRgb, kBlack, [](auto& p) { return p.MoveAlpha(0.5); }, "0,0,0,128", 0x80000000u},
        {"edit", kRgb, 0xFF010203u, [](auto& p) { return p.EnterEdit(2, 99); }, "1,2,99,255", 0xFF010263u},
        {"edit beyond its range", kHsb, 0xFF112233u, [](auto& p) { return p.EnterEdit(2, 999); },
         "210,66,100,255", 0xFF55AAFFu},
        {"hue 360 stays", kHsb, 0xFF00FF00u, [](auto& p) { return p.EnterEdit(0, 360); }, "360,100,100,255",
         0xFFFF0000u},
        {"the number that shows", kHsb, 0xFF112233u, [](auto& p) { return p.EnterEdit(1, 66); },
         "210,66,20,255", 0xFF112233u, false},
        {"step", kRgb, kBlack, [](auto& p) { return p.StepEdit(0, 10); }, "10,0,0,255", 0xFF0A0000u},
        {"step at the end", kRgb, kBlack, [](auto& p) { return p.StepEdit(3, 1); }, "0,0,0,255", kBlack,
         false},
        {"step far beyond", kRgb, 0x80000000u, [](auto& p) { return p.StepAlpha(-2147483647); }, "0,0,0,0",
         0u},
        {"arrows on the map", kRgb, 0xFF0A0A0Au, [](auto& p) { return p.StepMap(1, -1); }, "10,11,9,255",
         0xFF0A0B09u},
        {"arrows at the map's edge", kHsb, 0xFFFF0000u, [](auto& p) { return p.StepMap(1, 1); },
         "0,100,100,255", 0xFFFF0000u, false},
        {"swatch", kHsb, kBlack, [](auto& p) { return p.PickSwatch(0x40663366u); }, "300,50,40,64",
         0x40663366u},
        {"the same swatch", kRgb, 0x40663366u, [](auto& p) { return p.PickSwatch(0x40663366u); },
         "102,51,102,64", 0x40663366u, false},
        {"preset", kRgb, kBlack, [](auto& p) { return p.PickAlphaPreset(1); }, "0,0,0,64", 0x40000000u},
        {"no preset", kRgb, kBlack, [](auto& p) { return p.PickAlphaPreset(4); }, "0,0,0,255", kBlack, false},
        {"paste keeps alpha", kRgb, 0x40000000u, [](auto& p) { return p.Paste(L"#fff"); }, "255,255,255,64",
         0x40FFFFFFu},
        {"paste with alpha", kRgb, kBlack, [](auto& p) { return p.Paste(L"#10203040"); }, "32,48,64,16",
         0x10203040u},
        {"paste of no colour", kRgb, kBlack, [](auto& p) { return p.Paste(L"red"); }, "0,0,0,255", kBlack,
         false},
    };
    for (const Case& test : cases)
        Expect(test);
}

TEST(ColourPanelModel, TypedNumbersStayWhenOtherChannelsMove)
{
    for (int number = 0; number <= 100; ++number) {
        ColourPanelModel panel = Panel(kHsb, 0xFF336699u);
        panel.EnterEdit(1, number);
        panel.EnterEdit(2, 57);
        panel.MoveSlider(0.3);
        EXPECT_EQ(panel.EditValue(1), number);
        EXPECT_EQ(panel.EditValue(2), 57);
    }
}

TEST(ColourPanelModel, HueAndSaturationOutliveGreyAndBlack)
{
    const struct
    {
        const char* name;
        ColourMode mode;
        std::function<void(ColourPanelModel&)> edit;
        std::string inHsb;
    } cases[] = {
        {"map to black and back", kHsb, [](auto& p) { p.MoveMap(1, 0), p.MoveMap(1, 1); }, "30,100,100,255"},
        {"map to grey", kHsb, [](auto& p) { p.MoveMap(0, 0.5); }, "30,0,50,255"},
        {"map to black", kHsb, [](auto& p) { p.MoveMap(0.7, 0); }, "30,70,0,255"},
        {"edit to black", kHsb, [](auto& p) { p.EnterEdit(2, 0); }, "30,100,0,255"},
        {"hue of a black", kHsb, [](auto& p) { p.EnterEdit(2, 0), p.EnterEdit(0, 77); }, "77,100,0,255"},
        {"map of red, green to black", kRgb, [](auto& p) { p.SetChannel(2), p.MoveMap(0, 0); },
         "30,100,0,255"},
        {"sliders to grey", kRgb,
         [](auto& p) { p.MoveSlider(0.5), p.MoveMap(128 / 255.0, 0.5), p.MoveMap(0.5, 0.5); },
         "120,0,50,255"},
        {"edits to grey", kRgb, [](auto& p) { p.EnterEdit(1, 255), p.EnterEdit(2, 255); }, "0,0,100,255"},
        {"edit to black", kRgb, [](auto& p) { p.EnterEdit(1, 0), p.EnterEdit(0, 0); }, "0,0,0,255"},
        {"owner's grey", kHsb, [](auto& p) { p.SetColour(0xFF808080u); }, "0,0,50,255"},
        {"swatch black", kHsb, [](auto& p) { p.PickSwatch(kBlack); }, "0,0,0,255"},
    };
    for (const auto& test : cases) {
        ColourPanelModel panel = Panel(test.mode, 0xFFFF8000u); // hue 30.1
        test.edit(panel);
        panel.SetMode(kHsb);
        EXPECT_EQ(Edits(panel), test.inHsb) << test.name;
    }
}

TEST(ColourPanelModel, AnOwnersColourThatShowsKeepsWhatIsFiner)
{
    ColourPanelModel panel = Panel(kHsb, 0xFF336699u);
    panel.EnterEdit(1, 29);
    const kv::ColourState before = panel.Colour();
    EXPECT_FALSE(panel.SetColour(panel.Value()));
    EXPECT_TRUE(panel.SetColour(panel.Value() & 0x7FFFFFFFu));
    EXPECT_EQ(panel.Colour().GetHsb(), before.GetHsb()) << "alpha alone";
    EXPECT_EQ(panel.EditValue(3), 127);
    panel.Restore(before);
    EXPECT_EQ(panel.Colour(), before);
}

TEST(ColourPanelModel, ModesAndChannelsChooseTheLocks)
{
    ColourPanelModel panel;
    EXPECT_EQ(panel.Value(), kBlack);
    EXPECT_FALSE(panel.SetMode(kRgb));
    for (const ColourMode mode : {kRgb, kHsb}) {
        panel.SetMode(mode);
        EXPECT_EQ(panel.Channel(), 0) << "a mode begins with its first channel";
        for (int channel = 0; channel < 3; ++channel) {
            EXPECT_EQ(panel.SetChannel(channel), channel != 0);
            const int lock = channel + (mode == kHsb ? 3 : 0);
            EXPECT_EQ(panel.MapLock(), 1 + lock);
            EXPECT_EQ(panel.MapSliderLock(), 10 + lock);
        }
    }
    EXPECT_FALSE(panel.SetChannel(3));
    EXPECT_FALSE(panel.SetChannel(-1));
    EXPECT_EQ(panel.EditMost(0), 360);
    EXPECT_EQ(panel.EditMost(1), 100);
    EXPECT_EQ(panel.EditMost(3), 255);
}

TEST(ColourPanelModel, AStateAllowsColourAlphaBothOrNothing)
{
    constexpr std::uint32_t start = 0xC8336699u;
    const struct
    {
        int state;
        std::uint32_t pasted; ///< #11223344
        std::uint32_t swatch; ///< the same
        std::uint32_t preset; ///< 64
        std::uint32_t alphaMoved;
        std::uint32_t mapMoved;
    } cases[] = {
        {0, 0x11223344u, 0x11223344u, 0x40336699u, 0x00336699u, 0xC833FFFFu},
        {1, 0xC8223344u, 0xC8223344u, start, start, 0xC833FFFFu},
        {2, 0x11336699u, start, 0x40336699u, 0x00336699u, start},
        {3, start, start, start, start, start},
        {-1, start, start, start, start, start},
    };
    for (const auto& test : cases) {
        const auto after = [&](auto edit) {
            ColourPanelModel panel = Panel(kRgb, start);
            panel.SetState(test.state);
            const bool changed = edit(panel);
            EXPECT_EQ(changed, panel.Value() != start) << test.state;
            return panel.Value();
        };
        EXPECT_EQ(after([](auto& p) { return p.Paste(L"#11223344"); }), test.pasted) << test.state;
        EXPECT_EQ(after([](auto& p) { return p.PickSwatch(0x11223344u); }), test.swatch) << test.state;
        EXPECT_EQ(after([](auto& p) { return p.PickAlphaPreset(1); }), test.preset) << test.state;
        EXPECT_EQ(after([](auto& p) { return p.MoveAlpha(0); }), test.alphaMoved) << test.state;
        EXPECT_EQ(after([](auto& p) { return p.MoveMap(1, 1); }), test.mapMoved) << test.state;
        EXPECT_EQ(after([](auto& p) { return p.EnterEdit(1, 255) | p.EnterEdit(2, 255); }), test.mapMoved);

        ColourPanelModel panel;
        panel.SetState(test.state);
        EXPECT_EQ(panel.CanPaste(L"#123"), test.state == 0 || test.state == 1);
        EXPECT_EQ(panel.CanPaste(L"#12345678"), test.state >= 0 && test.state <= 2);
        EXPECT_FALSE(panel.CanPaste(L"123"));
    }
}

TEST(ColourPanelModel, TheEditThatIsTypedInIsNotRewritten)
{
    ColourPanelModel panel = Panel(kHsb, 0xFF00FF00u);
    // "0" on the way to "05", while the edit's own number is still read as it stands.
    panel.EnterEdit(2, 0);
    EXPECT_FALSE(panel.IsEditStale(2, 7, 2));
    EXPECT_TRUE(panel.IsEditStale(2, 7, kNobody));
    EXPECT_FALSE(panel.IsEditStale(0, 120, 2));
    EXPECT_TRUE(panel.IsEditStale(1, 99, 2));
}

} // namespace
