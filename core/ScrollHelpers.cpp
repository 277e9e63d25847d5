#include "KvScrollHelpers.h"
#include "core/RefCounted.h"

#include <algorithm>
#include <limits>

namespace {

constexpr std::int64_t kFarthest = std::numeric_limits<int>::max() / 2;
constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();

/// The sum, or the end of the numbers that it lies beyond.
std::int64_t Sum(std::int64_t a, std::int64_t b)
{
    if (b > 0 && a > kLargest - b)
        return kLargest;
    if (b < 0 && a < -kLargest - b)
        return -kLargest;
    return a + b;
}

class ScrollLine final : public kv::RefCounted<IKvScrollLineHelper>
{
public:
    void SetViewLength(std::int64_t length) override
    {
        m_view = std::max<std::int64_t>(length, 0);
        SetPosition(m_position);
    }
    std::int64_t GetViewLength() override { return m_view; }
    void SetVirtualLength(std::int64_t length) override
    {
        m_content = length;
        SetPosition(m_position);
    }
    std::int64_t GetVirtualLength() override { return std::max(m_content, m_view); }
    std::int64_t GetRange() override { return GetVirtualLength() - m_view; }
    int SetPosition(std::int64_t position) override
    {
        const std::int64_t before = m_position;
        m_position = std::clamp<std::int64_t>(position, 0, GetRange());
        return m_position != before ? 1 : 0;
    }
    std::int64_t GetPosition() override { return m_position; }
    int MoveBy(std::int64_t distance) override { return SetPosition(Sum(m_position, distance)); }
    std::int64_t PositionToShow(std::int64_t begin, std::int64_t end) override
    {
        const std::int64_t least = Sum(end, -m_view);
        return std::clamp<std::int64_t>(std::min(std::max(m_position, least), begin), 0, GetRange());
    }

private:
    std::int64_t m_view = 0;
    std::int64_t m_content = 0;
    std::int64_t m_position = 0;
};

class ScrollRect final : public kv::RefCounted<IKvScrollRectHelper>
{
public:
    ScrollRect(IKvScrollLineHelper* horizontal, IKvScrollLineHelper* vertical)
        : m_horizontal(horizontal)
        , m_vertical(vertical)
    {
        m_horizontal->AddRef();
        m_vertical->AddRef();
    }

    void SetView(const CRect& view) override
    {
        m_view = view;
        m_horizontal->SetViewLength(view.Width());
        m_vertical->SetViewLength(view.Height());
    }
    CRect GetView() override { return m_view; }
    void SetVirtualSize(std::int64_t width, std::int64_t height) override
    {
        m_horizontal->SetVirtualLength(width);
        m_vertical->SetVirtualLength(height);
    }
    int GetHorizontal(IKvScrollLineHelper** out) override { return HandOut(*m_horizontal, out); }
    int GetVertical(IKvScrollLineHelper** out) override { return HandOut(*m_vertical, out); }
    CRect ToClient(const SKvScrollRect& rect) override
    {
        const auto place = [](std::int64_t at, int origin, IKvScrollLineHelper& line) {
            const std::int64_t client = Sum(Sum(at, -line.GetPosition()), origin);
            return static_cast<int>(std::clamp(client, -kFarthest, kFarthest));
        };
        return {place(rect.left, m_view.left, *m_horizontal), place(rect.top, m_view.top, *m_vertical),
                place(rect.right, m_view.left, *m_horizontal), place(rect.bottom, m_view.top, *m_vertical)};
    }
    void ToContent(CPoint point, std::int64_t& x, std::int64_t& y) override
    {
        x = Sum(std::int64_t{point.x} - m_view.left, m_horizontal->GetPosition());
        y = Sum(std::int64_t{point.y} - m_view.top, m_vertical->GetPosition());
    }

private:
    static int HandOut(IKvScrollLineHelper& line, IKvScrollLineHelper** out)
    {
        if (!out)
            return 0;
        line.AddRef();
        *out = &line;
        return 1;
    }

    kv::Reference<IKvScrollLineHelper> m_horizontal;
    kv::Reference<IKvScrollLineHelper> m_vertical;
    CRect m_view;
};

} // namespace

int KvCreateScrollLineHelper(IKvScrollLineHelper** out)
{
    return kv::CreateObject<ScrollLine>(out) ? 1 : 0;
}

int KvCreateScrollRectHelper(IKvScrollLineHelper* horizontal, IKvScrollLineHelper* vertical,
                             IKvScrollRectHelper** out)
{
    if (!out)
        return 0;
    *out = nullptr;
    return horizontal && vertical && kv::CreateObject<ScrollRect>(out, horizontal, vertical) ? 1 : 0;
}
