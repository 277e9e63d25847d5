#include "layout/StripLayout.h"

#include <algorithm>

namespace kv {

namespace {

constexpr int kBar = 17;
constexpr int kBarGap = 2;
constexpr int kBand = 40;
constexpr int kMarginLeft = 4;
constexpr int kMarginRight = 6;
constexpr int kMarginTop = 2;
constexpr int kMarginBottom = 0;
/// As many of these as there are indices can still be added up.
constexpr std::int64_t kLongestThumb = std::int64_t{1} << 30;

constexpr std::int64_t kMotionStep = 30;
constexpr std::int64_t kMotionStepTime = 4; // milliseconds
constexpr std::int64_t kLongestMotion = 300;

CRect FarBand(const CRect& client, bool vertical, int thickness)
{
    CRect band = client;
    if (vertical)
        band.left = std::max(client.left, client.right - thickness);
    else
        band.top = std::max(client.top, client.bottom - thickness);
    return band;
}

/// along : across as `shapeAlong` : `shapeAcross`.
std::int64_t ScaledLength(int across, int shapeAlong, int shapeAcross)
{
    if (across <= 0 || shapeAlong <= 0 || shapeAcross <= 0)
        return 0;
    return std::min(std::int64_t{shapeAlong} * across / shapeAcross, kLongestThumb);
}

} // namespace

CRect StripLayout::ScrollBarRect(const CRect& client, bool vertical)
{
    return FarBand(client, vertical, kBar);
}

StripLayout::StripLayout(const CRect& client, bool vertical, bool hasBar, CSize layoutSize)
    : m_vertical(vertical)
    , m_content(client)
    , m_band(FarBand(client, vertical, kBand))
{
    if (hasBar) {
        const CRect bar = ScrollBarRect(client, vertical);
        (vertical ? m_content.right : m_content.bottom) = (vertical ? bar.left : bar.top) - kBarGap;
    }
    m_content.left += kMarginLeft;
    m_content.right = std::max(m_content.right - kMarginRight, m_content.left);
    m_content.top += kMarginTop;
    m_content.bottom = std::max(m_content.bottom - kMarginBottom, m_content.top);
    m_across = vertical ? m_content.Width() : m_content.Height();
    m_length = vertical ? ScaledLength(m_across, layoutSize.cy, layoutSize.cx)
                        : ScaledLength(m_across, layoutSize.cx, layoutSize.cy);
}

std::int64_t StripLayout::TotalLength(int count) const
{
    return count > 0 ? count * Step() - kSpacing : 0;
}

SKvScrollRect StripLayout::ThumbAt(int index) const
{
    const std::int64_t begin = index * Step();
    if (m_vertical)
        return {0, begin, m_across, begin + m_length};
    return {begin, 0, begin + m_length, m_across};
}

StripLayout::Range StripLayout::Reaching(std::int64_t begin, std::int64_t end, int count) const
{
    if (m_length == 0 || m_across == 0 || end <= 0 || end <= begin)
        return {0, 0};
    const std::int64_t first = begin < m_length ? 0 : (begin - m_length) / Step() + 1;
    const std::int64_t behind = (end - 1) / Step() + 1;
    const auto within = [count](std::int64_t index) {
        return static_cast<int>(std::min<std::int64_t>(index, std::max(count, 0)));
    };
    return {within(first), within(behind)};
}

int StripLayout::HitTest(std::int64_t x, std::int64_t y, int count) const
{
    const std::int64_t along = m_vertical ? y : x;
    const std::int64_t across = m_vertical ? x : y;
    if (along < 0 || across < 0 || across >= m_across || along % Step() >= m_length)
        return -1;
    const std::int64_t index = along / Step();
    return index < count ? static_cast<int>(index) : -1;
}

std::int64_t StripLayout::PositionFrom(const StripLayout& before, std::int64_t position) const
{
    const std::int64_t index = position / before.Step();
    const std::int64_t part = position % before.Step();
    return index * Step() + part * Step() / before.Step();
}

int StripKeyTarget(int current, StripKey key, int page, int count)
{
    const auto moved = [&](std::int64_t by) {
        return static_cast<int>(std::clamp<std::int64_t>(current + by, 0, count - 1));
    };
    switch (key) {
    case StripKey::Previous:
        return moved(-1);
    case StripKey::Next:
        return moved(1);
    case StripKey::PageBack:
        return moved(-std::max(page, 1));
    case StripKey::PageOn:
        return moved(std::max(page, 1));
    case StripKey::First:
        return 0;
    default:
        return count - 1;
    }
}

std::int64_t StripMotionAt(std::int64_t from, std::int64_t target, std::int64_t elapsed)
{
    const std::int64_t gone = std::max<std::int64_t>(elapsed, 0) / kMotionStepTime * kMotionStep;
    if (elapsed >= kLongestMotion)
        return target;
    return target > from ? std::min(from + gone, target) : std::max(from - gone, target);
}

} // namespace kv
