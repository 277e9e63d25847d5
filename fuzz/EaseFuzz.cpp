// A host's ease record, byte for byte, then what a user does with it, one step a few bytes. Whatever the
// record, what is drawn stays finite; what the host gave stays as it was until it is edited.
#include "Require.h"
#include "curves/EasePath.h"
#include "curves/EaseRecord.h"
#include "curves/EaseText.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>

namespace {

using kv::operator+;

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
        if (m_left < sizeof value) {
            // Padded first: with a copy of 0 or 1 bytes straight into a byte, g++ 12 at -O3 keeps the last
            // one.
            std::array<std::uint8_t, sizeof(T)> padded{};
            for (std::size_t i = 0; i < m_left; ++i)
                padded[i] = m_at[i];
            m_at += m_left;
            m_left = 0;
            return std::bit_cast<T>(padded);
        }
        std::memcpy(&value, m_at, sizeof value);
        m_at += sizeof value;
        m_left -= sizeof value;
        return value;
    }

private:
    const std::uint8_t* m_at;
    std::size_t m_left;
};

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
        switch (choice % 14) {
        case 0:
            if (const auto hit = Layout().HitTest(m_model.Keys(), m_model.Origin(), pixel))
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
        case 9:
            CopyAndPaste();
            break;
        case 10:
            Paste(Text(bytes));
            break;
        case 11:
            Type(Text(bytes));
            break;
        case 12:
            Draw(amount);
            break;
        default:
            Clip(bytes);
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
            Require(IsFinite(point) && IsFinite(Layout().ToPixel(m_model.Origin() + point)));
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

    // Up to the next 0, a byte a character, some of them no ASCII.
    static std::wstring Text(Bytes& bytes)
    {
        std::wstring text;
        while (const auto character = bytes.Take<std::uint8_t>())
            text.push_back(character < 0xF0 ? wchar_t{character} : static_cast<wchar_t>(0x600 + character));
        return text;
    }

    void Paste(const std::wstring& text)
    {
        const auto handles = kv::ParseCubicBezier(text, m_model.Curve());
        if (!handles)
            return;
        Require(m_model.IsEditable() && !std::isnan(handles->out.y) && !std::isnan(handles->in.y));
        for (const double x : {handles->out.x, handles->in.x})
            Require(std::isfinite(x));
        m_model.MoveHandles(handles->out, handles->in);
    }

    void Type(const std::wstring& text)
    {
        kv::EaseEntry entry;
        for (const wchar_t character : text)
            character == 8 ? entry.Erase() : entry.Type(static_cast<unsigned>(character));
        const SKvCurvePoint from = m_model.Curve()[kv::EaseHandle::In];
        const auto place = entry.Value(from);
        Require(!place || (entry.IsPending() && std::isfinite(place->y)));
        if (place)
            m_model.Move(kv::EaseHandle::In, *place);
    }

    static void RequireWithin(const kv::EasePolyline& points, const kv::EaseBox& box)
    {
        for (const SKvCurvePoint& point : points)
            Require(point.x >= box.left && point.x <= box.right && point.y >= box.top &&
                    point.y <= box.bottom);
    }

    void Draw(double frameLength)
    {
        const kv::EaseLayout layout = Layout();
        const kv::EaseBox box{50, 20, 850, 420};
        RequireWithin(kv::FrameMarks(m_model.Curve(), layout, frameLength), box);
        for (const auto& line : kv::SpeedLines(m_model.Curve(), layout))
            RequireWithin(line, box);
        if (!m_model.IsEditable())
            return;
        kv::EasePoints pixels;
        for (std::size_t i = 0; i < pixels.size(); ++i)
            pixels[i] = layout.ToPixel(m_model.Curve().points[i]);
        for (const auto& line : kv::Flattened(pixels, box)) {
            Require(line.size() > 1);
            RequireWithin(line, box);
        }
    }

    // What is left of a line, cut again, is the same.
    static void Clip(Bytes& bytes)
    {
        constexpr double most = 1e100;
        double places[4];
        for (double& place : places) {
            const auto any = bytes.Take<double>();
            place = std::isnan(any) ? 0 : std::clamp(any, -most, most);
        }
        const kv::EaseBox box{50, 20, 850, 420};
        const auto part = kv::Clipped({{places[0], places[1]}, {places[2], places[3]}}, box);
        if (!part)
            return;
        RequireWithin({part->from, part->to}, box);
        const auto again = kv::Clipped(*part, box);
        Require(again && std::memcmp(&*again, &*part, sizeof *part) == 0);
    }

    kv::EaseModel m_model;
    kv::EaseRange m_whole;
    kv::EaseRange m_view;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Bytes bytes(data, size);
    Session session(kv::CurveOf(bytes.Take<SKvParamEaseData>()));
    session.Check();
    for (int steps = 0; steps < 200 && !bytes.IsEmpty(); ++steps)
        session.Step(bytes);
    return 0;
}
