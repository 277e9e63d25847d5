// Video and audio formats as one line of text, for example "(1920 * 1080 59.94i, 16:9, Upper First)".
//
// The functions read the text tables: call them from any thread, but not while another one replaces the texts
// (`KvGuiRes::SetStringFile`).
#pragma once

#include "KvTypes.h"

/// Shape of the picture. Any other value stands for square pixels.
enum EKvAspectRatio : std::int32_t
{
    kKvAspect4x3 = 0,
    kKvAspect16x9 = 1,
    kKvAspectSquarePixel = 2,
    kKvAspect4x3Alt = 4,
    kKvAspect16x9Alt = 5,
};

/// Index into the frame-rate table, in frames per second.
enum EKvFrameRate : std::int32_t
{
    kKvFrameRate23_976 = 0,
    kKvFrameRate24 = 1,
    kKvFrameRate25 = 2,
    kKvFrameRate29_97 = 3,
    kKvFrameRate30 = 4,
    kKvFrameRate50 = 5,
    kKvFrameRate59_94 = 6,
    kKvFrameRate60 = 7,
};

/// Scan mode; the first two are interlaced.
enum EKvScanMode : std::int32_t
{
    kKvScanUpperFirst = 0,
    kKvScanLowerFirst = 1,
    kKvScanProgressive = 2,
    kKvScanProgressiveSegmented = 3,
};

/// A video format. The fields stand in this order, without padding.
struct SKvVideoResolution
{
    EKvAspectRatio aspectRatio;
    EKvFrameRate frameRate;
    EKvScanMode scanMode;
    std::int32_t width;  ///< frame width in pixels
    std::int32_t height; ///< frame height in pixels
};
static_assert(sizeof(SKvVideoResolution) == 20);

/// An audio format.
struct SKvWaveFormatInfo
{
    std::uint32_t channels;
    std::uint32_t sampleRate; ///< in hertz
    std::uint16_t bitsPerSample;
};

/// The single texts that KvGetResolutionString joins.
namespace KvVideoResStringUtils {

/// "1920 * 1080".
KV_API std::wstring GetFrameSize(const SKvVideoResolution& resolution);
/// "25p", "50i", "59.94i": frames per second, or fields per second when interlaced.
/// Empty for a frame rate outside the table.
KV_API std::wstring GetFrameRate(const SKvVideoResolution& resolution);
/// "4:3" (0, 4), "16:9" (1, 5), else string 10023 "1.0(Pixel Ratio)".
KV_API std::wstring GetAspectRatio(EKvAspectRatio aspectRatio);
/// Strings 12024 to 12027; empty for any other value.
KV_API std::wstring GetFieldOrder(EKvScanMode scanMode);

} // namespace KvVideoResStringUtils

/// "(1920 * 1080 59.94i, 16:9, Upper First)", or with ", 3D" before the last parenthesis when `with3D` is
/// not 0. @return 1.
KV_API int KvGetResolutionString(const SKvVideoResolution& resolution, int with3D, std::wstring& out);

/// "(48 KHz, 16 bit, Stereo)", "(44.1 KHz, 16 bit, 6 ch)". @return 1.
KV_API int KvGetAudioFormatString(const SKvWaveFormatInfo& format, std::wstring& out);
