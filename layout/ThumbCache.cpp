#include "layout/ThumbCache.h"

#include <QPainter>

#include <cwchar>
#include <limits>
#include <memory>

namespace kv {

namespace {

constexpr int kNameLength = 64;
constexpr qsizetype kBudget = qsizetype{64} << 20;
/// In a thumbnail that is longer than this the picture is stretched.
constexpr QSize kLargestPicture(4096, 1024);

struct ThumbReleaser
{
    void operator()(IKvThumbImage* image) const { image->Release(); }
};
using ThumbReference = std::unique_ptr<IKvThumbImage, ThumbReleaser>;

/// The host's picture in a size of our own; null when it lends no pixels.
QImage Scaled(IKvThumbImage& image, QSize size)
{
    UINT width = 0;
    UINT height = 0;
    int stride = 0;
    const DWORD* pixels = nullptr;
    if (image.Lock(width, height, stride, pixels) == 0)
        return {};
    QImage scaled;
    constexpr auto kMost = static_cast<UINT>(std::numeric_limits<int>::max() / 4);
    const bool isSound = pixels && width > 0 && height > 0 && width <= kMost && height <= kMost &&
                         static_cast<UINT>(stride) >= width * 4;
    if (isSound) {
        const QImage lent(reinterpret_cast<const uchar*>(pixels), static_cast<int>(width),
                          static_cast<int>(height), stride, QImage::Format_ARGB32);
        // A copy also where nothing is to be scaled: the pixels are the host's.
        scaled = lent.size() == size ? lent.copy()
                                     : lent.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    image.Unlock();
    return scaled;
}

QImage OnBlack(const QImage& image)
{
    if (image.isNull())
        return {};
    QImage opaque(image.size(), QImage::Format_RGB32);
    opaque.fill(Qt::black);
    QPainter(&opaque).drawImage(0, 0, image);
    return opaque;
}

} // namespace

ThumbCache::ThumbCache() : m_thumbs(kBudget) {}

void ThumbCache::SetSizes(QSize thumb, QSize mark)
{
    if (thumb == m_thumbSize && mark == m_markSize)
        return;
    m_thumbSize = thumb;
    m_markSize = mark;
    Clear();
}

StripThumb ThumbCache::Get(IKvLayoutSelectorData& data, int index)
{
    if (const StripThumb* kept = m_thumbs.object(index))
        return *kept;
    auto asked = std::make_unique<StripThumb>(Ask(data, index));
    const StripThumb thumb = *asked;
    const qsizetype bytes = qsizetype{sizeof(StripThumb)} + thumb.picture.sizeInBytes() +
                            thumb.mark.sizeInBytes() + thumb.name.size() * qsizetype{sizeof(QChar)};
    m_thumbs.insert(index, asked.release(), bytes);
    return thumb;
}

StripThumb ThumbCache::Ask(IKvLayoutSelectorData& data, int index) const
{
    wchar_t name[kNameLength] = {};
    IKvThumbImage* lentThumb = nullptr;
    IKvThumbImage* lentMark = nullptr;
    data.GetUnit(index, name, &lentThumb, &lentMark);
    const ThumbReference thumb(lentThumb);
    const ThumbReference mark(lentMark);
    StripThumb made;
    made.isThere = thumb != nullptr;
    if (!made.isThere)
        return made;
    const wchar_t* end = std::wmemchr(name, L'\0', kNameLength);
    made.name = KvToQString({name, end ? static_cast<std::size_t>(end - name) : kNameLength}).trimmed();
    made.picture = OnBlack(Scaled(*thumb, m_thumbSize.boundedTo(kLargestPicture)));
    if (mark)
        made.mark = Scaled(*mark, m_markSize).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    return made;
}

} // namespace kv
