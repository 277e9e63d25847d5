// What a strip shows of its layouts, asked of the host once and kept as pixels.
#pragma once

#include "KvLayoutSelector.h"
#include "layout/StripLabel.h"

#include <QCache>
#include <QImage>
#include <QString>

#include <cstddef>

namespace kv {

/// One layout as it is drawn; pictures are in device pixels.
struct StripThumb
{
    bool isThere = false; ///< it has a thumbnail
    QString name;
    QImage picture; ///< opaque; null when the host has none now
    QImage mark;
    QImage number; ///< the labels
    QImage title;
};

/// Keeps the layouts that were drawn last, up to a number of bytes.
class ThumbCache
{
public:
    ThumbCache();

    /// What was kept in another style is dropped.
    void SetStyle(const ThumbStyle& style);
    /// Of the first layout; likewise.
    void SetFirstNumber(int number);
    int FirstNumber() const { return m_firstNumber; }
    /// The layout as it was kept, else as the data tell. @param index one that the data have.
    StripThumb Get(IKvLayoutSelectorData& data, int index);
    /// The data are asked again for that layout, or for all of them.
    void AskAgain(int index);
    void AskAgain() { ++m_generation; }

private:
    struct Kept
    {
        StripThumb thumb;
        unsigned generation; ///< 0: to be asked again
    };

    QString NumberOf(int index) const;
    StripThumb Ask(IKvLayoutSelectorData& data, int index);
    QImage Scaled(IKvThumbImage& image, QSize size);

    ThumbStyle m_style;
    int m_firstNumber = 0;
    unsigned m_generation = 1;
    int m_asked = -1;                     ///< what the data are being asked for
    bool m_isStale = false;               ///< and are to be asked for again
    QCache<int, Kept> m_kept;             ///< its costs are bytes
    QCache<std::size_t, QImage> m_scaled; ///< by their pixels before and their size, likewise
};

} // namespace kv
