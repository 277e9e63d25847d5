#include "layout/ThumbCache.h"

#include <algorithm>
#include <cwchar>
#include <limits>
#include <memory>
#include <utility>

namespace kv {

namespace {

constexpr int kNameLength = 64;
constexpr qsizetype kBudget = qsizetype{64} << 20;
/// Some screens full; most of it is shared with the former.
constexpr qsizetype kScaledBudget = qsizetype{16} << 20;
/// In a thumbnail that is longer than this the picture is stretched.
constexpr QSize kLargestPicture(4096, 1024);

struct ThumbReleaser
{
    void operator()(IKvThumbImage* image) const { image->Release(); }
};
using ThumbReference = std::unique_ptr<IKvThumbImage, ThumbReleaser>;

/// Whatever has these pixels has this number; another picture has it once in 2^64.
std::size_t ContentOf(const QImage& image, QSize size)
{
    std::size_t content = qHashMulti(0, image.width(), image.height(), size.width(), size.height());
    for (int y = 0; y < image.height(); ++y) // what lies between the rows is no part of it
        content = qHashBits(image.constScanLine(y), static_cast<std::size_t>(image.width()) * 4, content);
    return content;
}

/// Over black, premultiplied colours are those that are seen.
QImage OnBlack(const QImage& image)
{
    if (image.isNull())
        return {};
    QImage opaque(image.size(), QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        std::transform(from, from + image.width(), reinterpret_cast<QRgb*>(opaque.scanLine(y)),
                       [](QRgb pixel) { return pixel | 0xFF000000u; });
    }
    return opaque;
}

qsizetype BytesOf(const StripThumb& thumb)
{
    return qsizetype{sizeof(StripThumb)} + thumb.picture.sizeInBytes() + thumb.mark.sizeInBytes() +
           thumb.number.sizeInBytes() + thumb.title.sizeInBytes() +
           thumb.name.size() * qsizetype{sizeof(QChar)};
}

} // namespace

ThumbCache::ThumbCache() : m_kept(kBudget), m_scaled(kScaledBudget) {}

void ThumbCache::SetStyle(const ThumbStyle& style)
{
    if (style == m_style)
        return;
    m_style = style;
    m_kept.clear();
    m_scaled.clear();
}

void ThumbCache::SetFirstNumber(int number)
{
    m_firstNumber = number;
    m_kept.clear();
}

void ThumbCache::AskAgain(int index)
{
    m_isStale = m_isStale || index == m_asked; // the host announces it while it answers
    if (Kept* kept = m_kept.object(index))
        kept->generation = 0;
}

StripThumb ThumbCache::Get(IKvLayoutSelectorData& data, int index)
{
    if (const Kept* kept = m_kept.object(index); kept && kept->generation == m_generation)
        return kept->thumb;
    const unsigned generation = m_generation; // the host may ask for more while it answers
    const int outer = std::exchange(m_asked, index);
    m_isStale = false;
    StripThumb thumb = Ask(data, index);
    m_asked = outer;
    const bool isStale = std::exchange(m_isStale, false);
    if (thumb.isThere) {
        const Kept* before = m_kept.object(index);
        const bool isNamedAlike = before && before->thumb.isThere && before->thumb.name == thumb.name;
        thumb.number = isNamedAlike ? before->thumb.number : MakeStripLabel(NumberOf(index), m_style);
        thumb.title = isNamedAlike ? before->thumb.title : MakeStripLabel(thumb.name, m_style);
    }
    m_kept.insert(index, new Kept{thumb, isStale ? 0 : generation}, BytesOf(thumb));
    return thumb;
}

// In 64 bits: a host may count from anywhere.
QString ThumbCache::NumberOf(int index) const
{
    return QString::asprintf("%04lld", static_cast<long long>(m_firstNumber) + index);
}

StripThumb ThumbCache::Ask(IKvLayoutSelectorData& data, int index)
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
    made.picture = OnBlack(Scaled(*thumb, m_style.thumb.boundedTo(kLargestPicture)));
    made.picture.setDevicePixelRatio(m_style.ratio);
    if (mark)
        made.mark = Scaled(*mark, m_style.mark);
    made.mark.setDevicePixelRatio(m_style.ratio);
    return made;
}

/// The host's picture in a size of our own, with alpha; null when it lends no pixels. An insertion asks for
/// all pictures in view again: to see that one is as before takes an eighth of the time to scale it.
QImage ThumbCache::Scaled(IKvThumbImage& image, QSize size)
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
                         stride > 0 && static_cast<UINT>(stride) >= width * 4;
    if (isSound) {
        const QImage lent(reinterpret_cast<const uchar*>(pixels), static_cast<int>(width),
                          static_cast<int>(height), stride, QImage::Format_ARGB32);
        const bool isReady = lent.size() == size;
        const std::size_t content = isReady ? 0 : ContentOf(lent, size);
        if (const QImage* known = isReady ? nullptr : m_scaled.object(content)) {
            scaled = *known;
        } else {
            scaled = isReady ? lent : lent.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
            // Also a copy of what was not scaled: the pixels are the host's.
            scaled.convertTo(QImage::Format_ARGB32_Premultiplied);
            if (!isReady)
                m_scaled.insert(content, new QImage(scaled), scaled.sizeInBytes());
        }
    }
    image.Unlock();
    return scaled;
}

} // namespace kv
