// Keys in a vector, and the cubics between them.
#include "KvBezierCurve2D.h"

#include <cmath>
#include <new>

namespace {

bool IsFinite(const SKvBezierKey& key)
{
    for (const float value : {key.x, key.y, key.inX, key.inY, key.outX, key.outY}) {
        if (!std::isfinite(value))
            return false;
    }
    return true;
}

class BezierCurve2D final : public IKvBezierCurve2D
{
public:
    int Release() override
    {
        delete this;
        return 1;
    }

    int Reset() override
    {
        m_keys.clear();
        return 1;
    }

    int GetKeyCount() override { return static_cast<int>(m_keys.size()); }

    int GetKey(int index, SKvBezierKey& key) override
    {
        if (!IsIndex(index))
            return 0;
        key = m_keys[static_cast<std::size_t>(index)];
        return 1;
    }

    int SetKey(int index, const SKvBezierKey& key) override
    {
        if (!IsIndex(index) || !IsFinite(key))
            return 0;
        m_keys[static_cast<std::size_t>(index)] = key;
        m_keys[static_cast<std::size_t>(index)].index = index;
        return 1;
    }

    int AddToPath(KvBezierPath& path) override
    {
        const std::size_t before = path.size();
        try {
            for (std::size_t i = 1; i < m_keys.size(); ++i)
                path.push_back(Segment(m_keys[i - 1], m_keys[i]));
        } catch (const std::bad_alloc&) {
            path.resize(before);
            return 0;
        }
        return 1;
    }

    int AddKey(const SKvBezierKey& key) override
    {
        if (!IsFinite(key))
            return 0;
        try {
            m_keys.push_back(key);
        } catch (const std::bad_alloc&) {
            return 0;
        }
        m_keys.back().index = GetKeyCount() - 1;
        return 1;
    }

private:
    ~BezierCurve2D() = default;

    bool IsIndex(int index) { return index >= 0 && index < GetKeyCount(); }

    // Summed in double precision, where no finite key overflows.
    static SKvBezierSegment Segment(const SKvBezierKey& from, const SKvBezierKey& to)
    {
        const SKvCurvePoint start{from.x, from.y};
        const SKvCurvePoint end{to.x, to.y};
        return {{start, {start.x + from.outX, start.y + from.outY}, {end.x + to.inX, end.y + to.inY}, end}};
    }

    std::vector<SKvBezierKey> m_keys;
};

} // namespace

int KvCreateBezierCurve2D(IKvBezierCurve2D** curve)
{
    if (curve == nullptr)
        return 0;
    *curve = new (std::nothrow) BezierCurve2D;
    return *curve != nullptr ? 1 : 0;
}
