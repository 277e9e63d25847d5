#include "KvWnd.h"

CKvStatic::CKvStatic() = default;
CKvStatic::~CKvStatic() = default;

int CKvStatic::Create(UINT style, CWnd* parent, DWORD id)
{
    return CreateWnd(style, {}, parent, id);
}

int CKvStatic::CreateSelf()
{
    return Create(0, parentWidget(), GetDlgCtrlID());
}

void CKvStatic::SetGuiBasicSettings(SKvGuiBasicSettings* settings)
{
    m_settings = settings;
    update();
}

const SKvGuiBasicSettings* CKvStatic::GuiBasicSettings() const
{
    return m_settings;
}
