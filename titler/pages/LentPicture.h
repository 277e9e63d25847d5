// A picture as the library's layout strip borrows it.
#pragma once

#include "KvLayoutSelector.h"

#include <QImage>

#include <utility>

namespace titler {

/// Lives as long as the strip needs it. Made with new.
class LentPicture final : public IKvThumbImage
{
public:
    /// @param picture with straight alpha, 32 bits a pixel; a null one lends nothing.
    explicit LentPicture(QImage picture) : m_picture(std::move(picture)) {}
    int Lock(UINT& width, UINT& height, int& stride, const DWORD*& pixels) override
    {
        if (m_picture.isNull())
            return 0;
        width = static_cast<UINT>(m_picture.width());
        height = static_cast<UINT>(m_picture.height());
        stride = static_cast<int>(m_picture.bytesPerLine());
        pixels = reinterpret_cast<const DWORD*>(m_picture.constBits());
        return 1;
    }
    void Unlock() override {}
    int Release() override
    {
        delete this;
        return 0;
    }

private:
    const QImage m_picture;
};

} // namespace titler
