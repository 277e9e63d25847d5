// A frame that shows one colour: opaque on the left, over the checkerboard on the right.
#pragma once

#include "KvWnd.h"
#include "platform/NamedAccess.h"

namespace kv {

class ColourPreview : public CKvStatic
{
public:
    ColourPreview();
    void SetColour(DWORD colour);

protected:
    void OnPaint(Graphics& graphics) override;
    void OnSkinChanged() override;
    QString ToolTipAt(CPoint point, CRect& area) const override;

private:
    void Describe();

    DWORD m_colour = 0xFF000000u;
    NamedAccess m_access;
};

} // namespace kv
