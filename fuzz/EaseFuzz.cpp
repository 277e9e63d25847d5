// A host's ease record, byte for byte, then what a user does with it, one step a few bytes. Whatever the
// record, what is drawn stays finite; what the host gave stays as it was until it is edited.
#include "curves/EaseLayout.h"
#include "curves/EaseText.h"

#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace {

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

bool IsFinite(const SKvCurvePoint& point)
{
    return std::isfinite(point.x) && std::isfinite(point.y);
}

class Bytes
{
public:
    Bytes(const std::uint8_t* data, std::size_t size) : m_at(data), m_left(size) {}

    bool IsEmpty() const { return m_left == 0; }

    /// What is missing counts as 0.
    template <typename T>
    T Take()
    {
        T value{};
        const std::size_t size = std::min(sizeof value, m_left);
        std::memcpy(&value, m_at, size);
        m_at += size;
        m_left -= size;
        return value;
    }

private:
    const std::uint8_t* m_at;
    std::size_t m_left;
};

kv::EaseCurve CurveOf(const SKvParamEaseData& data)
{
    const double width = data.endX - data.startX;
    kv::EaseCurve curve;
    curve.points = {{{data.startX, data.startY},
                     {data.startX + width * data.outTangentX, data.startY + data.outTangentY},
                     {data.endX - width * data.inTangentX, data.endY + data.inTangentY},
                     {data.endX, data.endY}}};
    curve.minimum = data.minimum;
    curve.maximum = data.maximum;
    curve.lock = data.lock;
    curve.kind = data.kind;
    return curve;
}

void CheckEase(const kv::EaseCurve& curve)
{
    double points[8];
    std::memcpy(points, curve.points.data(), sizeof points);
    const KvBezierEase ease(points);
    for (const double part : {-0.5, 0.0, 1e-9, 0.1, 0.5, 0.77, 1 - 1e-9, 1.0, 2.0}) {
        const double x = std::lerp(points[0], points[6], part);
        Require(std::isfinite(ease.Value(x)) && !std::isnan(ease.Speed(x)));
    }
}

class Session
{
public:
    explicit Session(const kv::EaseCurve& curve) : m_whole{curve.minimum, curve.maximum}, m_view(m_whole)
    {
        m_model.Load(curve);
        Require(m_model.IsEditable() == kv::IsSensible(curve));
    }

    void Step(Bytes& bytes)
    {
        const auto choice = bytes.Take<std::uint8_t>();
        const CPoint pixel{bytes.Take<std::int16_t>(), bytes.Take<std::int16_t>()};
        const double amount = choice >= 128 ? bytes.Take<double>() : pixel.y / 500.0;
        switch (choice % 10) {
        case 0:
            if (const auto hit = Layout().HitTest(m_model.Keys(), pixel))
                m_model.BeginDrag(*hit);
            break;
        case 1:
            m_model.BeginDrag({pixel.x % 3, static_cast<kv::EasePart>(std::abs(pixel.y % 5)), amount});
            break;
        case 2:
            m_model.DragTo(Layout().ToCurve(SKvCurvePoint{Layout().ClampedToPlot(pixel).x + 0.0, amount}),
                           pixel.y % 2 == 0);
            break;
        case 3:
            pixel.x % 4 == 0 ? m_model.CancelDrag() : m_model.EndDrag();
            break;
        case 4:
            UndoAndRedo();
            break;
        case 5:
            m_model.ApplyPreset(choice, {amount, 0, 0.5, pixel.y + 0.0});
            break;
        case 6:
            m_view = kv::Zoomed(m_view, m_whole, amount);
            break;
        case 7:
            m_view = kv::Moved(m_view, amount);
            break;
        case 8:
            m_model.Move(static_cast<kv::EaseHandle>(std::abs(pixel.x % 4)), {amount, pixel.y + 0.0});
            break;
        default:
            CopyAndPaste();
            break;
        }
        Check();
    }

    void Check()
    {
        Require(!m_model.IsEditable() || kv::IsSensible(m_model.Curve()));
        Require(m_model.IsEditable() || m_model.RecordCount() == 1);
        KvBezierPath path;
        Require(m_model.Keys().AddToPath(path) == 1 && path.size() == 1);
        for (const SKvCurvePoint& point : path[0].points)
            Require(IsFinite(point) && IsFinite(Layout().ToPixel(point)));
        double last = m_view.minimum;
        for (const double tick : kv::Ticks(m_view)) {
            Require(tick > last && tick < m_view.maximum);
            last = tick;
        }
        CheckEase(m_model.Curve());
    }

private:
    kv::EaseLayout Layout()
    {
        return {{0, 0, 870, 440}, m_model.Curve().points[0].x, m_model.Curve().points[3].x, m_view};
    }

    using Bits = std::array<std::uint64_t, 8>;

    bool IsAt(const kv::EasePoints& points)
    {
        return std::bit_cast<Bits>(points) == std::bit_cast<Bits>(m_model.Curve().points);
    }

    void UndoAndRedo()
    {
        const bool wasDragged = m_model.Drag().has_value();
        const kv::EasePoints points = m_model.Curve().points;
        if (m_model.Undo())
            Require(m_model.Redo() && (wasDragged || IsAt(points)));
        const std::size_t records = m_model.RecordCount();
        m_model.Revert();
        Require(!m_model.CanUndo() && m_model.RecordCount() == records);
        Require(IsAt(m_model.Loaded().points));
    }

    void CopyAndPaste()
    {
        const auto handles = kv::ParseCubicBezier(kv::CubicBezierText(m_model.Curve()), m_model.Curve());
        Require(handles.has_value() == kv::IsSensible(m_model.Curve()));
        if (handles)
            m_model.MoveHandles(handles->out, handles->in);
    }

    kv::EaseModel m_model;
    kv::EaseRange m_whole;
    kv::EaseRange m_view;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Bytes bytes(data, size);
    Session session(CurveOf(bytes.Take<SKvParamEaseData>()));
    session.Check();
    for (int steps = 0; steps < 200 && !bytes.IsEmpty(); ++steps)
        session.Step(bytes);
    return 0;
}
