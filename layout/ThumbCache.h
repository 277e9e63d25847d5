// What a strip shows of its layouts, asked of the host once and kept as pixels.
#pragma once

#include "KvLayoutSelector.h"

#include <QCache>
#include <QImage>
#include <QString>

namespace kv {

/// One layout as it is drawn.
struct StripThumb
{
    bool isThere = false; ///< it has a thumbnail
    QString name;
    QImage picture; ///< opaque, in device pixels; null when the host has none now
    QImage mark;    ///< likewise, with alpha
};

/// Keeps the layouts that were drawn last, up to a number of bytes.
class ThumbCache
{
public:
    ThumbCache();

    /// @param thumb, mark sizes in device pixels; what was kept in others is dropped.
    void SetSizes(QSize thumb, QSize mark);
    /// The layout as it was kept, else as the data tell. @param index one that the data have.
    StripThumb Get(IKvLayoutSelectorData& data, int index);
    void Drop(int index) { m_thumbs.remove(index); }
    void Clear() { m_thumbs.clear(); }

private:
    StripThumb Ask(IKvLayoutSelectorData& data, int index) const;

    QSize m_thumbSize;
    QSize m_markSize;
    QCache<int, StripThumb> m_thumbs; ///< its costs are bytes
};

} // namespace kv
