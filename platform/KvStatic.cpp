#include "KvWnd.h"

CKvStatic::CKvStatic() = default;
CKvStatic::~CKvStatic() = default;

int CKvStatic::Create(UINT style, CWnd* parent, DWORD id)
{
    return CreateWnd(style, {}, parent, id);
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
