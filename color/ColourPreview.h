// A frame that shows one colour: opaque on the left, over the checkerboard on the right.
#pragma once

#include "KvWnd.h"

namespace kv {

class ColourPreview : public CKvStatic
{
public:
    void SetColour(DWORD colour);

protected:
    void OnPaint(Graphics& graphics) override;
    QString ToolTipAt(CPoint point, CRect& area) const override;

private:
    DWORD m_colour = 0xFF000000u;
};

} // namespace kv
