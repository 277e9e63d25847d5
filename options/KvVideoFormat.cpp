#include "KvVideoFormat.h"

#include "core/Text.h"
#include "core/TextTables.h"

#include <iterator>

namespace {

struct FrameRate
{
    int numerator;
    int denominator;
};

constexpr FrameRate kFrameRates[] = {{24000, 1001}, {24, 1}, {25, 1},       {30000, 1001},
                                     {30, 1},       {50, 1}, {60000, 1001}, {60, 1}};

constexpr std::uint32_t k3DText = 20001;
constexpr std::uint32_t kSquarePixelText = 10023;
constexpr std::uint32_t kFirstScanModeText = 12024;
constexpr std::uint32_t kMonoText = 12072;
constexpr std::uint32_t kStereoText = 12073;
constexpr std::uint32_t kChannelsText = 12074;
constexpr std::uint32_t kWholeKilohertzText = 12075;
constexpr std::uint32_t kKilohertzText = 7020;

/// Hosts' records may hold any number: one below 0 is above every table's end, too.
template <typename Enum>
std::uint32_t Index(Enum value)
{
    return static_cast<std::uint32_t>(value);
}

bool IsInterlaced(EKvScanMode scanMode)
{
    return scanMode == kKvScanUpperFirst || scanMode == kKvScanLowerFirst;
}

std::wstring ChannelText(std::uint32_t channels)
{
    switch (channels) {
    case 1:
        return kv::LoadText(kMonoText);
    case 2:
        return kv::LoadText(kStereoText);
    default:
        return kv::FillText(kv::LoadText(kChannelsText), {kv::NumberText(std::int64_t{channels})});
    }
}

} // namespace

std::wstring KvVideoResStringUtils::GetFrameSize(const SKvVideoResolution& resolution)
{
    return kv::NumberText(std::int64_t{resolution.width}) + L" * " +
           kv::NumberText(std::int64_t{resolution.height});
}

std::wstring KvVideoResStringUtils::GetFrameRate(const SKvVideoResolution& resolution)
{
    const std::uint32_t index = Index(resolution.frameRate);
    if (index >= std::size(kFrameRates))
        return {};
    const auto [numerator, denominator] = kFrameRates[index];
    const bool interlaced = IsInterlaced(resolution.scanMode);
    float rate = static_cast<float>(numerator) / static_cast<float>(denominator);
    if (interlaced)
        rate *= 2;
    const std::wstring number =
        denominator == 1 ? kv::NumberText(static_cast<std::int64_t>(rate)) : kv::NumberText(double{rate}, 2);
    return number + (interlaced ? L'i' : L'p');
}

std::wstring KvVideoResStringUtils::GetAspectRatio(EKvAspectRatio aspectRatio)
{
    switch (aspectRatio) {
    case kKvAspect4x3:
    case kKvAspect4x3Alt:
        return L"4:3";
    case kKvAspect16x9:
    case kKvAspect16x9Alt:
        return L"16:9";
    default:
        return kv::LoadText(kSquarePixelText);
    }
}

std::wstring KvVideoResStringUtils::GetFieldOrder(EKvScanMode scanMode)
{
    const std::uint32_t index = Index(scanMode);
    return index <= Index(kKvScanProgressiveSegmented) ? kv::LoadText(kFirstScanModeText + index)
                                                       : std::wstring();
}

int KvGetResolutionString(const SKvVideoResolution& resolution, int with3D, std::wstring& out)
{
    out = L"(" + KvVideoResStringUtils::GetFrameSize(resolution) + L" " +
          KvVideoResStringUtils::GetFrameRate(resolution) + L", " +
          KvVideoResStringUtils::GetAspectRatio(resolution.aspectRatio) + L", " +
          KvVideoResStringUtils::GetFieldOrder(resolution.scanMode) +
          (with3D ? L", " + kv::LoadText(k3DText) : std::wstring()) + L")";
    return 1;
}

int KvGetAudioFormatString(const SKvWaveFormatInfo& format, std::wstring& out)
{
    const bool whole = format.sampleRate % 1000 == 0;
    // Divided in single precision: 22050 Hz reads 22.0 KHz.
    const std::wstring kilohertz =
        whole ? kv::NumberText(std::int64_t{format.sampleRate / 1000})
              : kv::NumberText(double{static_cast<float>(format.sampleRate) / 1000.0f}, 1);
    out = L"(" +
          kv::FillText(
              kv::LoadText(whole ? kWholeKilohertzText : kKilohertzText),
              {kilohertz, kv::NumberText(std::int64_t{format.bitsPerSample}), ChannelText(format.channels)}) +
          L")";
    return 1;
}
