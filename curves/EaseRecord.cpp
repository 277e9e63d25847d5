#include "curves/EaseRecord.h"

namespace kv {

namespace {

double Fraction(double part, double width)
{
    return width == 0 ? 0 : part / width;
}

double PartOf(double fraction, double width)
{
    return width == 0 ? 0 : fraction * width;
}

} // namespace

EaseCurve CurveOf(const SKvParamEaseData& record)
{
    const double width = record.endX - record.startX;
    EaseCurve curve;
    curve[EaseHandle::Start] = {record.startX, record.startY};
    curve[EaseHandle::Out] = {record.startX + PartOf(record.outTangentX, width),
                              record.startY + record.outTangentY};
    curve[EaseHandle::In] = {record.endX - PartOf(record.inTangentX, width), record.endY + record.inTangentY};
    curve[EaseHandle::End] = {record.endX, record.endY};
    curve.minimum = record.minimum;
    curve.maximum = record.maximum;
    curve.lock = record.lock;
    curve.kind = record.kind;
    return curve;
}

SKvParamEaseData RecordOf(const EaseCurve& curve)
{
    const SKvCurvePoint& start = curve[EaseHandle::Start];
    const SKvCurvePoint& end = curve[EaseHandle::End];
    SKvParamEaseData record{};
    record.kind = curve.kind;
    record.inTangentX = Fraction(end.x - curve[EaseHandle::In].x, curve.Width());
    record.inTangentY = curve.InTangent().y;
    record.outTangentX = Fraction(curve.OutTangent().x, curve.Width());
    record.outTangentY = curve.OutTangent().y;
    record.startX = start.x;
    record.startY = start.y;
    record.endX = end.x;
    record.endY = end.y;
    record.minimum = curve.minimum;
    record.maximum = curve.maximum;
    record.lock = curve.lock;
    return record;
}

} // namespace kv
