/// @file
/// Video and audio formats as one line of text, for example "(1920 * 1080 59.94i, 16:9, Upper First)".
///
/// The functions read the text tables: call them from any thread, but not while another one replaces the
/// texts (`KvGuiRes::SetStringFile`).
#pragma once

#include "KvTypes.h"

/// Shape of the picture. Any other value stands for square pixels.
enum EKvAspectRatio : std::int32_t
{
    kKvAspect4x3 = 0,         ///< 4:3
    kKvAspect16x9 = 1,        ///< 16:9
    kKvAspectSquarePixel = 2, ///< as width and height say
    kKvAspect4x3Alt = 4,      ///< 4:3, by its other number
    kKvAspect16x9Alt = 5,     ///< 16:9, by its other number
};

/// Index into the frame-rate table, in frames per second.
enum EKvFrameRate : std::int32_t
{
    kKvFrameRate23_976 = 0, ///< 24000/1001
    kKvFrameRate24 = 1,     ///< 24
    kKvFrameRate25 = 2,     ///< 25
    kKvFrameRate29_97 = 3,  ///< 30000/1001
    kKvFrameRate30 = 4,     ///< 30
    kKvFrameRate50 = 5,     ///< 50
    kKvFrameRate59_94 = 6,  ///< 60000/1001
    kKvFrameRate60 = 7,     ///< 60
};

/// Scan mode; the first two are interlaced.
enum EKvScanMode : std::int32_t
{
    kKvScanUpperFirst = 0,           ///< interlaced, the upper field first
    kKvScanLowerFirst = 1,           ///< interlaced, the lower field first
    kKvScanProgressive = 2,          ///< whole frames
    kKvScanProgressiveSegmented = 3, ///< whole frames, carried as two fields
};

/// A video format. The fields stand in this order, without padding.
struct SKvVideoResolution
{
    EKvAspectRatio aspectRatio; ///< shape of the picture
    EKvFrameRate frameRate;     ///< index into the table of rates
    EKvScanMode scanMode;       ///< interlaced or progressive
    std::int32_t width;         ///< frame width in pixels
    std::int32_t height;        ///< frame height in pixels
};
static_assert(sizeof(SKvVideoResolution) == 20);

/// An audio format.
struct SKvWaveFormatInfo
{
    std::uint32_t channels;      ///< 1 is "Mono", 2 is "Stereo", others are "n ch"
    std::uint32_t sampleRate;    ///< in hertz
    std::uint16_t bitsPerSample; ///< of one channel
};

/// The single texts that KvGetResolutionString joins.
namespace KvVideoResStringUtils {

/// @param resolution whose width and height are read. @return "1920 * 1080".
KV_API std::wstring GetFrameSize(const SKvVideoResolution& resolution);
/// @param resolution whose rate and scan mode are read.
/// @return "25p", "50i", "59.94i": frames per second, or fields per second when interlaced; empty for a frame
/// rate outside the table.
KV_API std::wstring GetFrameRate(const SKvVideoResolution& resolution);
/// @param aspectRatio any number. @return "4:3" (0, 4), "16:9" (1, 5), else string 10023 "1.0(Pixel Ratio)".
KV_API std::wstring GetAspectRatio(EKvAspectRatio aspectRatio);
/// @param scanMode any number. @return strings 12024 to 12027; empty for any other value.
KV_API std::wstring GetFieldOrder(EKvScanMode scanMode);

} // namespace KvVideoResStringUtils

/// All of it: "(1920 * 1080 59.94i, 16:9, Upper First)".
/// @param resolution the format. @param with3D not 0 adds ", 3D" before the last parenthesis.
/// @param out receives the text. @return 1.
KV_API int KvGetResolutionString(const SKvVideoResolution& resolution, int with3D, std::wstring& out);

/// "(48 KHz, 16 bit, Stereo)", "(44.1 KHz, 16 bit, 6 ch)". @param format the format.
/// @param out receives the text. @return 1.
KV_API int KvGetAudioFormatString(const SKvWaveFormatInfo& format, std::wstring& out);
