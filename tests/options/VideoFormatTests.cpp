#include "KvVideoFormat.h"
#include "core/TextTables.h"
#include "core/WholeFile.h"

#include <climits>
#include <cstdio>
#include <gtest/gtest.h>

namespace {

SKvVideoResolution Video(int aspectRatio, int frameRate, int scanMode)
{
    return {static_cast<EKvAspectRatio>(aspectRatio), static_cast<EKvFrameRate>(frameRate),
            static_cast<EKvScanMode>(scanMode), 1920, 1080};
}

TEST(VideoFormat, FramesOrFieldsPerSecond)
{
    const wchar_t* const progressive[] = {L"23.98p", L"24p", L"25p",    L"29.97p",
                                          L"30p",    L"50p", L"59.94p", L"60p"};
    const wchar_t* const interlaced[] = {L"47.95i", L"48i",  L"50i",     L"59.94i",
                                         L"60i",    L"100i", L"119.88i", L"120i"};
    for (int rate = 0; rate < 8; ++rate) {
        EXPECT_EQ(KvVideoResStringUtils::GetFrameRate(Video(0, rate, 0)), interlaced[rate]);
        EXPECT_EQ(KvVideoResStringUtils::GetFrameRate(Video(0, rate, 1)), interlaced[rate]);
        EXPECT_EQ(KvVideoResStringUtils::GetFrameRate(Video(0, rate, 2)), progressive[rate]);
        EXPECT_EQ(KvVideoResStringUtils::GetFrameRate(Video(0, rate, 3)), progressive[rate]);
    }
}

TEST(VideoFormat, JoinsTheTexts)
{
    const struct
    {
        const char* name;
        SKvVideoResolution video;
        int with3D;
        const wchar_t* text;
    } rows[] = {
        {"interlaced", Video(1, 3, 0), 0, L"(1920 * 1080 59.94i, 16:9, Upper First)"},
        {"3D", Video(5, 2, 1), 7, L"(1920 * 1080 50i, 16:9, Lower First, 3D)"},
        {"progressive", Video(4, 0, 2), 0, L"(1920 * 1080 23.98p, 4:3, Progressive)"},
        {"segmented", Video(0, 2, 3), 0, L"(1920 * 1080 25p, 4:3, ProgressiveSegmented)"},
        {"square pixels", Video(2, 7, 2), 0, L"(1920 * 1080 60p, 1.0(Pixel Ratio), Progressive)"},
        {"above the tables", Video(6, 8, 4), 0, L"(1920 * 1080 , 1.0(Pixel Ratio), )"},
        {"below the tables", Video(-1, -1, -1), 0, L"(1920 * 1080 , 1.0(Pixel Ratio), )"},
        {"far outside", Video(INT_MIN, INT_MIN, INT_MAX), 1, L"(1920 * 1080 , 1.0(Pixel Ratio), , 3D)"},
    };
    for (const auto& row : rows) {
        std::wstring text = L"old";
        EXPECT_EQ(KvGetResolutionString(row.video, row.with3D, text), 1) << row.name;
        EXPECT_EQ(text, row.text) << row.name;
    }
}

TEST(VideoFormat, AudioFormats)
{
    const struct
    {
        SKvWaveFormatInfo audio;
        const wchar_t* text;
    } rows[] = {
        {{2, 48000, 16}, L"(48 KHz, 16 bit, Stereo)"},
        {{1, 32000, 24}, L"(32 KHz, 24 bit, Mono)"},
        {{6, 44100, 16}, L"(44.1 KHz, 16 bit, 6 ch)"},
        {{0, 22050, 8}, L"(22.0 KHz, 8 bit, 0 ch)"},
        {{UINT32_MAX, 11025, 65535}, L"(11.0 KHz, 65535 bit, 4294967295 ch)"},
        {{2, 0, 0}, L"(0 KHz, 0 bit, Stereo)"},
        {{2, UINT32_MAX, 16}, L"(4294967.5 KHz, 16 bit, Stereo)"},
    };
    for (const auto& row : rows) {
        std::wstring text;
        EXPECT_EQ(KvGetAudioFormatString(row.audio, text), 1);
        EXPECT_EQ(text, row.text);
    }
}

// A text that is not looked up by its number would stay as it was built in.
TEST(VideoFormat, TextsCanBeTranslated)
{
    const std::wstring overlay = L"video_format_overlay.ini";
    ASSERT_TRUE(kv::WriteWholeFile(overlay,
                                   "[Strings]\n7020 = %3$s, %2$d Bit, %1$.1f kHz\n10023 = quadratisch\n"
                                   "12024 = oben\n12074 = %d Kan.\n20001 = dreidimensional\n"));
    ASSERT_TRUE(kv::SetTextOverlay(overlay));
    std::wstring text;
    KvGetAudioFormatString({6, 44100, 16}, text);
    EXPECT_EQ(text, L"(6 Kan., 16 Bit, 44.1 kHz)");
    KvGetResolutionString({kKvAspectSquarePixel, kKvFrameRate25, kKvScanUpperFirst, 720, 576}, 1, text);
    EXPECT_EQ(text, L"(720 * 576 50i, quadratisch, oben, dreidimensional)");
    kv::SetTextOverlay(L"");
    std::remove("video_format_overlay.ini");
}

} // namespace
