#include "KvParamBezierCtrlDlg.h"
#include "curves/EaseRecord.h"

#include <algorithm>

namespace {

void Store(double* out, double value)
{
    if (out)
        *out = value;
}

} // namespace

CKvParamBezierInfo::CKvParamBezierInfo(IKvDataOperator* host, const wchar_t* objectId,
                                       const wchar_t* paramName)
    : m_operator(host)
    , m_objectId(objectId)
    , m_paramName(paramName)
    , m_alive(std::make_shared<const bool>(true))
{
    if (m_operator)
        m_operator->RegisterParam(m_objectId, m_paramName);
}

CKvParamBezierInfo::~CKvParamBezierInfo()
{
    if (m_operator)
        m_operator->UnregisterParam(m_objectId, m_paramName);
}

int CKvParamBezierInfo::IsModified()
{
    return static_cast<int>(m_modified);
}

int CKvParamBezierInfo::SetModified(std::uint32_t modified)
{
    m_modified = modified;
    return 1;
}

int CKvParamBezierInfo::BeginEdit()
{
    return m_operator ? m_operator->BeginEdit(m_objectId, m_paramName) : 0;
}

int CKvParamBezierInfo::CommitEdit()
{
    return m_operator ? m_operator->CommitEdit(m_objectId, m_paramName) : 0;
}

int CKvParamBezierInfo::CancelEdit()
{
    return m_operator ? m_operator->CancelEdit(m_objectId, m_paramName) : 0;
}

int CKvParamBezierInfo::GetCurve(double points[8], double& minimum, double& maximum, std::uint32_t& lock,
                                 std::uint32_t& kind)
{
    SKvParamEaseData ease{};
    const std::weak_ptr<const bool> alive = m_alive;
    const bool isRead = m_operator && m_operator->GetEaseData(m_objectId, m_paramName, ease);
    if (alive.expired())
        return 0;
    m_minimum = isRead ? ease.minimum : 0;
    m_maximum = isRead ? ease.maximum : 1;
    if (!isRead)
        return 0;
    const auto coordinates = kv::Coordinates(kv::CurveOf(ease).points);
    std::copy(coordinates.begin(), coordinates.end(), points);
    minimum = ease.minimum;
    maximum = ease.maximum;
    lock = ease.lock;
    kind = ease.kind;
    return 1;
}

bool CKvParamBezierInfo::CanWrite() const
{
    return m_operator && !m_isClosed;
}

int CKvParamBezierInfo::SetCurve(const double points[8], std::uint32_t lock, std::uint32_t kind)
{
    if (!CanWrite())
        return 0;
    const kv::EaseCurve curve{kv::PointsOf(points), m_minimum, m_maximum, lock, kind};
    m_modified = 1; // first: the host may delete this object
    return m_operator->SetEaseData(m_objectId, m_paramName, kv::RecordOf(curve));
}

int CKvParamBezierInfo::WritePreset(std::uint32_t kind)
{
    if (!CanWrite())
        return 0;
    SKvParamEaseData request{};
    request.kind = kind;
    m_modified = 1;
    return m_operator->SetEaseData(m_objectId, m_paramName, request);
}

int CKvParamBezierInfo::ReadPreset(std::uint32_t kind, double* outX, double* outY, double* inX, double* inY)
{
    const std::weak_ptr<const bool> alive = m_alive;
    SKvParamEaseData ease{};
    if (!WritePreset(kind) || alive.expired() || !m_operator->GetEaseData(m_objectId, m_paramName, ease) ||
        alive.expired())
        return 0;
    Store(outX, ease.outTangentX);
    Store(outY, ease.outTangentY);
    Store(inX, ease.inTangentX);
    Store(inY, ease.inTangentY);
    return 1;
}

int CKvParamBezierInfo::ApplyLinear()
{
    return WritePreset(kKvEaseLinear);
}

int CKvParamBezierInfo::GetSpeedUpCurve(double* outX, double* outY, double* inX, double* inY)
{
    return ReadPreset(kKvEaseSpeedUp, outX, outY, inX, inY);
}

int CKvParamBezierInfo::GetSpeedDownCurve(double* outX, double* outY, double* inX, double* inY)
{
    return ReadPreset(kKvEaseSpeedDown, outX, outY, inX, inY);
}

int CKvParamBezierInfo::GetSmoothCurve(double* outX, double* outY, double* inX, double* inY)
{
    return ReadPreset(kKvEaseSmooth, outX, outY, inX, inY);
}

int CKvParamBezierInfo::CanGoPrevKey()
{
    return m_operator ? m_operator->CanGoPrevKey(m_objectId, m_paramName) : 0;
}

int CKvParamBezierInfo::CanGoNextKey()
{
    return m_operator ? m_operator->CanGoNextKey(m_objectId, m_paramName) : 0;
}

int CKvParamBezierInfo::GoPrevKey()
{
    return CanWrite() ? m_operator->GoPrevKey(m_objectId, m_paramName) : 0;
}

int CKvParamBezierInfo::GoNextKey()
{
    return CanWrite() ? m_operator->GoNextKey(m_objectId, m_paramName) : 0;
}
