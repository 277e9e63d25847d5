// How large a caption strip wants to be.
#include "chrome/CaptionStripImpl.h"

#include <utility>

namespace kv {

int CaptionStrip::Growth() const
{
    return m_impl->growth;
}

void CaptionStrip::TakeGrowth()
{
    m_impl->growth = CaptionGrowth(TextSize({}).cy);
}

// A bar of its own height keeps to it. @return false when the bar is gone: what is laid out is the host's,
// too.
bool CaptionStrip::Grow()
{
    const int before = Growth();
    const bool isOwnHeight = m_bar->height() == m_bar->sizeHint().height();
    TakeGrowth();
    if (Growth() == before)
        return true;
    const QPointer<CKvCaptionBar> bar(m_bar);
    bar->updateGeometry();
    if (isOwnHeight)
        bar->resize(bar->width(), bar->sizeHint().height());
    return !bar.isNull();
}

int CaptionStrip::WholeWidth() const
{
    return m_impl->wholeWidth;
}

void CaptionStrip::UpdateWholeWidth()
{
    int width = 0;
    if (ItemCount() > 0 && HasButtons()) {
        int buttons = 0;
        for (const EKvCaptionButton number : kWindowButtons)
            buttons += Button(number).width();
        width = WholeCaptionWidth(Item(ItemCount() - 1).rect.right, TextSize(Title()).cx, buttons, m_form);
    }
    if (std::exchange(m_impl->wholeWidth, width) != width)
        m_bar->updateGeometry();
}

} // namespace kv
