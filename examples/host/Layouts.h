// The places as the strip shows them: the title as it is now, at each of them.
#pragma once

#include "Title.h"

#include <KvLayoutSelector.h>

struct Thumb final : IKvThumbImage // until the strip releases it
{
    QImage image{160, 90, QImage::Format_ARGB32};
    int Lock(UINT& width, UINT& height, int& stride, const DWORD*& pixels) override
    {
        width = 160;
        height = 90;
        stride = 4 * 160;
        pixels = reinterpret_cast<const DWORD*>(image.constBits());
        return 1;
    }
    void Unlock() override {}
    int Release() override { return delete this, 0; }
};

struct Layouts : IKvLayoutSelectorData // outlives the strip
{
    const Title& title;
    int current = 0;
    explicit Layouts(const Title& shown) : title(shown) {}
    int AddRef() override { return 1; }
    int Release() override { return 1; }
    int GetCount() override { return int(std::size(kPlaces)); }
    BOOL GetUnit(int index, wchar_t[64], IKvThumbImage** thumbnail, IKvThumbImage**) override
    {
        auto* thumb = new Thumb;
        QPainter painter(&thumb->image);
        title.Paint(painter, thumb->image.rect(), kPlaces[index]);
        *thumbnail = thumb;
        return 1;
    }
    BOOL IsSelected(int index) override { return index == current; }
    int Select(int index, BOOL) override { return (current = index) >= 0; }
};
