// A host's record of an ease as a curve, and back.
#pragma once

#include "KvTypes.h"
#include "curves/EaseCurve.h"

namespace kv {

/// On a segment without a width the handles stand at their keys' times.
EaseCurve CurveOf(const SKvParamEaseData& record);
/// On a segment without a width the tangents have no length in time.
SKvParamEaseData RecordOf(const EaseCurve& curve);

} // namespace kv
