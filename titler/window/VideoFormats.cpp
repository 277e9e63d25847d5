#include "window/VideoFormats.h"

#include <QGuiApplication>

#include <tuple>

namespace titler {

std::span<const SKvVideoResolution> VideoFormats()
{
    static constexpr SKvVideoResolution formats[] = {
        {kKvAspect16x9, kKvFrameRate29_97, kKvScanUpperFirst, 1920, 1080},
        {kKvAspect16x9, kKvFrameRate25, kKvScanUpperFirst, 1920, 1080},
        {kKvAspect16x9, kKvFrameRate25, kKvScanProgressive, 1920, 1080},
        {kKvAspect16x9, kKvFrameRate23_976, kKvScanProgressive, 1920, 1080},
        {kKvAspect16x9, kKvFrameRate50, kKvScanProgressive, 1280, 720},
        {kKvAspect16x9, kKvFrameRate59_94, kKvScanProgressive, 1280, 720},
        {kKvAspect16x9, kKvFrameRate50, kKvScanProgressive, 3840, 2160},
        {kKvAspect16x9, kKvFrameRate59_94, kKvScanProgressive, 3840, 2160},
        {kKvAspect4x3, kKvFrameRate25, kKvScanUpperFirst, 720, 576},
        {kKvAspect4x3, kKvFrameRate29_97, kKvScanLowerFirst, 720, 480},
        {kKvAspectSquarePixel, kKvFrameRate30, kKvScanProgressive, 1080, 1920},
    };
    return formats;
}

QString FormatText(const SKvVideoResolution& format)
{
    std::wstring text;
    KvGetResolutionString(format, 0, text);
    // Its numbers keep their order in a line from right to left.
    constexpr char16_t kLeftToRightIsolate = 0x2066;
    constexpr char16_t kPopIsolate = 0x2069;
    const QString shown = QString::fromStdWString(text);
    return QGuiApplication::isLeftToRight() ? shown : kLeftToRightIsolate + shown + kPopIsolate;
}

bool IsSameFormat(const SKvVideoResolution& a, const SKvVideoResolution& b)
{
    const auto fields = [](const SKvVideoResolution& v) {
        return std::tie(v.aspectRatio, v.frameRate, v.scanMode, v.width, v.height);
    };
    return fields(a) == fields(b);
}

} // namespace titler
