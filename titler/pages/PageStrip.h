// The strip of a project's pages: shows them, chooses one, and takes one to another place.
#pragma once

#include "KvLayoutSelector.h"
#include "media/Ref.h"
#include "pages/PageThumbs.h"

#include <QTimer>

#include <optional>

class QAction;

namespace titler {

class Document;

class PageStrip : public CKvLayoutSelector
{
    Q_OBJECT

public:
    /// @param parent of the strip; it hears of each page that is picked.
    PageStrip(Document& document, QWidget& parent);
    ~PageStrip() override;

    /// What the context menu offers; null stands for a separator.
    void SetMenu(const QList<QAction*>& commands) { m_menu = commands; }
    /// Where a page's thumbnail stands, in coordinates of the strip; empty when it is out of view.
    QRect PlaceOf(int page) const;
    /// True while pictures of pages in view are still to come.
    bool IsBusy() const { return m_thumbs.IsBusy(); }
    const PageThumbs& Thumbs() const { return m_thumbs; }
    /// A drag of a page to another place is under way.
    bool IsDragging() const { return m_gap.has_value(); }

protected:
    void OnPaint(Graphics& graphics) override;
    void OnLButtonDown(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnLButtonUp(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnMouseMove(Qt::KeyboardModifiers modifiers, CPoint point) override;
    BOOL OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers) override;
    bool WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const override;
    void OnCaptureChanged() override;
    void OnContextMenu(CPoint point) override;
    CPoint ContextMenuPoint() const override;
    QString ToolTipAt(CPoint point, CRect& area) const override;
    QSize sizeHint() const override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    class Data;
    /// A press on a page; moved far enough, it takes the page along.
    struct Press
    {
        int page;
        CPoint at;
    };

    int Count() const;
    void Choose(int index);
    QImage Picture(int index);
    QString NameOf(int index) const;
    void OnProjectChanged();
    void DragTo(CPoint point);
    void DragOn();
    void EndDrag();
    /// Between which pages a point is: 0 before the first one, `Count` behind the last one.
    int GapAt(CPoint point) const;
    /// To which place the drag would take its page.
    int DropPlace() const;
    void DrawCurrent(Graphics& graphics) const;
    void DrawDrag(Graphics& graphics) const;

    Document& m_document;
    PageThumbs m_thumbs;
    QList<QAction*> m_menu;
    SIZE m_shape; ///< of the pages
    QSize m_size; ///< of a picture, in device pixels
    int m_current = -1;
    int m_count = 0;
    std::optional<Press> m_press;
    std::optional<int> m_gap; ///< where a drag would drop its page
    CPoint m_pointer;
    QTimer m_scrolling; ///< while a drag is held at an end of the strip
};

} // namespace titler
