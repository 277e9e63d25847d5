// Small pictures of a project's pages, drawn in the background.
#pragma once

#include "project/Project.h"

#include <QColor>
#include <QImage>
#include <QObject>
#include <QThreadPool>

#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace titler {

class PageThumbs : public QObject
{
    Q_OBJECT

public:
    /// @param light, dark the checkerboard under what is translucent.
    PageThumbs(QColor light, QColor dark);
    /// Waits for the pictures that are being drawn; no other one is begun.
    ~PageThumbs() override;

    /// The pages are these from now on. Pages that look as one did before keep its picture.
    /// @return the indices at which another picture stands than before, or will stand.
    QList<int> SetPages(const Project& project);
    /// The next pages have nothing to do with these.
    void Forget();
    /// A page's picture of that size, or else the last one there was, while `Changed` is still to tell of it.
    /// @param size in device pixels. @return Format_ARGB32; null for none yet.
    QImage Get(int index, QSize size);
    /// Which pages are drawn before the others; of both the ones that were asked for last come first.
    void SetInView(std::function<bool(int index)> isInView) { m_isInView = std::move(isInView); }

    /// How many pictures were drawn and shown so far.
    int DrawnCount() const { return m_drawn; }
    bool IsBusy() const { return m_running > 0; }

signals:
    /// A page's picture is there.
    void Changed(int index);

private:
    struct Look;
    struct Thumb;
    using ThumbRef = std::shared_ptr<Thumb>;
    struct Slot
    {
        std::shared_ptr<const Page> page; ///< null for the current one, which stands in the project
        ThumbRef thumb;                   ///< pages that look alike may share it
    };

    ThumbRef Alike(const std::vector<Slot>& before, int index, const Page& page,
                   const Project& project) const;
    int IndexOf(const ThumbRef& thumb) const;
    ThumbRef TakeNext();
    void StartNext();
    void OnDrawn(const ThumbRef& thumb, QSize size, QImage picture);

    const QRgb m_light;
    const QRgb m_dark;
    std::vector<Slot> m_slots;     ///< by page
    std::deque<ThumbRef> m_wanted; ///< the one that was asked for last stands last
    std::function<bool(int)> m_isInView;
    QSize m_size; ///< that was asked for last
    int m_current = -1;
    int m_running = 0;
    int m_drawn = 0;
    QThreadPool m_pool;
};

} // namespace titler
