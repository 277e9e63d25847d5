#include "KvParamBezierWnd.h"

#include "curves/KvParamBezierWndImpl.h"

CKvParamBezierWnd::CKvParamBezierWnd(IKvParamBezierInfo* info, IKvParamBezierCtrlCallback* callback)
    : m_impl(std::make_unique<Impl>(*this, info, callback))
{
    setFocusPolicy(Qt::ClickFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_impl->Load();
}

CKvParamBezierWnd::CKvParamBezierWnd(QWidget* parent) : CKvParamBezierWnd(nullptr, nullptr)
{
    CreateWhenShown(parent);
}

CKvParamBezierWnd::~CKvParamBezierWnd() = default;

int CKvParamBezierWnd::Create(unsigned int style, const CRect& rect, CWnd* parent, DWORD id)
{
    return CreateWnd(style, rect, parent, id);
}

int CKvParamBezierWnd::CreateSelf()
{
    return Create(0, {}, parentWidget(), GetDlgCtrlID());
}

int CKvParamBezierWnd::Load()
{
    m_impl->Load();
    return 1;
}

int CKvParamBezierWnd::SetInfo(IKvParamBezierInfo* info, IKvParamBezierCtrlCallback* callback)
{
    m_impl->info = info;
    m_impl->callback = callback;
    return Load();
}

int CKvParamBezierWnd::Undo()
{
    return m_impl->GoTo(&kv::EaseModel::Undo);
}

int CKvParamBezierWnd::Redo()
{
    return m_impl->GoTo(&kv::EaseModel::Redo);
}

int CKvParamBezierWnd::Revert()
{
    return m_impl->GoTo(&kv::EaseModel::Revert);
}

int CKvParamBezierWnd::ApplyLinear()
{
    return m_impl->ApplyPreset(kKvEaseLinear, nullptr);
}

int CKvParamBezierWnd::ApplySpeedUp()
{
    return m_impl->ApplyPreset(kKvEaseSpeedUp, &IKvParamBezierInfo::GetSpeedUpCurve);
}

int CKvParamBezierWnd::ApplySpeedDown()
{
    return m_impl->ApplyPreset(kKvEaseSpeedDown, &IKvParamBezierInfo::GetSpeedDownCurve);
}

int CKvParamBezierWnd::ApplySmooth()
{
    return m_impl->ApplyPreset(kKvEaseSmooth, &IKvParamBezierInfo::GetSmoothCurve);
}

BOOL CKvParamBezierWnd::CanUndo() const
{
    return m_impl->model.CanUndo() ? 1 : 0;
}

BOOL CKvParamBezierWnd::CanRedo() const
{
    return m_impl->model.CanRedo() ? 1 : 0;
}

int CKvParamBezierWnd::GetCurveInfo(SCurveInfo& info) const
{
    const kv::EaseCurve record = m_impl->model.Recorded();
    const SKvCurvePoint& start = record[kv::EaseHandle::Start];
    const SKvCurvePoint& end = record[kv::EaseHandle::End];
    const SKvCurvePoint out = record.OutTangent();
    const SKvCurvePoint in = record.InTangent();
    info = {start.x, start.y, out.x, out.y, in.x, in.y, end.x, end.y, record.kind};
    return 1;
}

void CKvParamBezierWnd::SetFrameLength(double length)
{
    m_impl->frameLength = length;
    update();
}

double CKvParamBezierWnd::GetFrameLength() const
{
    return m_impl->frameLength;
}

BOOL CKvParamBezierWnd::IsSpeedShown() const
{
    return m_impl->showSpeed ? 1 : 0;
}

BOOL CKvParamBezierWnd::IsInitialCurveShown() const
{
    return m_impl->showInitialCurve ? 1 : 0;
}

void CKvParamBezierWnd::ShowSpeed(BOOL show)
{
    m_impl->showSpeed = show != 0;
    update();
}

void CKvParamBezierWnd::ShowInitialCurve(BOOL show)
{
    m_impl->showInitialCurve = show != 0;
    update();
}

UINT CKvParamBezierWnd::OnGetDlgCode()
{
    UINT wanted = DLGC_WANTARROWS | DLGC_WANTCHARS;
    if (m_impl->gesture != kv::EaseGesture::None)
        wanted |= DLGC_WANTALLKEYS | DLGC_WANTTAB; // while a button is down no key leads away
    if (m_impl->entry.IsPending())
        wanted |= DLGC_WANTALLKEYS; // Enter and Escape
    return wanted;
}

QSize CKvParamBezierWnd::sizeHint() const
{
    return {480, 280};
}

QSize CKvParamBezierWnd::minimumSizeHint() const
{
    return {160, 100};
}
