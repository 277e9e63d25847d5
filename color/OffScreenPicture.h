// A part of a control as a picture that is kept until it is out of date.
#pragma once

#include "KvPlatform.h"

#include <QImage>

#include <functional>

namespace kv {

class DeviceGrid;
struct PixelView;

class OffScreenPicture
{
public:
    using Draw = std::function<void(PixelView pixels, const DeviceGrid& grid)>;

    void Invalidate() { m_valid = false; }
    /// Draws the picture of a rectangle of client coordinates, on whole device pixels.
    /// @param draw makes the picture anew where it is out of date or of another size or pixel ratio.
    void Paint(Graphics& graphics, const CRect& rect, const Draw& draw);

private:
    QImage m_picture;
    bool m_valid = false;
};

} // namespace kv
