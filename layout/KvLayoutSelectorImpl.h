// What stands behind the layout strip: its data, where it is scrolled to, and what the user does to it.
#pragma once

#include "KvLayoutSelector.h"
#include "KvScroll.h"
#include "core/RefCounted.h"
#include "core/WheelNotches.h"
#include "layout/StripAccess.h"
#include "layout/StripLayout.h"
#include "layout/StripPainter.h"
#include "layout/ThumbCache.h"

#include <QElapsedTimer>

#include <optional>

namespace kv {

inline constexpr UINT kStripMotionTimer = 1;

struct StripDrag
{
    CPoint anchor;
    std::int64_t start; ///< the position before it
};

/// Where a view began.
struct StripPlace
{
    StripLayout layout;
    std::int64_t position;
};

/// An animated move of the view.
struct StripMotion
{
    std::int64_t from;
    std::int64_t target;
    QElapsedTimer clock;
};

} // namespace kv

// Functions that pick a layout may delete the control; nothing of it is touched afterwards.
struct CKvLayoutSelector::Impl : kv::StripUser
{
    explicit Impl(CKvLayoutSelector& owner);
    virtual ~Impl() = default;

    /// A reference of its own: the host may replace the data from within their operations.
    kv::Reference<IKvLayoutSelectorData> HeldData() const;
    int Count() const;
    IKvScrollLineHelper& Line() const;
    CRect RectOf(int index) const { return scroll->ToClient(layout.ThumbAt(index)); }
    /// The layouts of which something reaches into the window, the shadow too when that is wanted.
    kv::StripLayout::Range InView(int shadow) const;
    bool IsInView(int index) const;
    int HitTest(CPoint point) const;
    kv::StripLook Look() const;
    /// What is drawn of a layout in view.
    kv::StripThumb Thumb(int index);
    /// Everything but the scroll bar, which knows itself when it changes.
    void Repaint() const;
    int RingedLayout() const;
    void RepaintUnit(int index) const;
    /// @param focused the layout that has the focus ring, -1 for none; see RingedLayout.
    void DrawUnit(Graphics& graphics, const CRect& rect, int index, const kv::StripLook& look, int focused);

    void UpdateClient();
    void UpdateThumbs();
    void UpdateScroll();
    /// By the user or the host, at once: an animated move is over. @return false when it stood there already.
    bool ScrollTo(std::int64_t position);
    void ScrollBy(std::int64_t distance) { ScrollTo(Line().GetPosition() + distance); }
    void MoveOn();
    void DropMotion();
    void ShowAtOnce(int index);
    bool RunScrollCode(UINT code, std::int64_t position);

    /// A click on a layout. @return false when the control is gone.
    bool Pick(int index, bool exclusive);
    void SetHot(int index);
    void SetFocusMark(int index);
    void TakeFocusByMove();
    void BeginDrag(CPoint point);
    void DragTo(CPoint point);
    void EndDrag();
    bool RunKey(UINT key, Qt::KeyboardModifiers modifiers);

    int LayoutCount() const override { return Count(); }
    QString LayoutName(int index) override
    {
        return control.isVisible() && IsInView(index) ? Thumb(index).name : QString();
    }
    QRect LayoutRect(int index) const override { return RectOf(index); }
    bool IsLayoutSelected(int index) const override;
    int CurrentLayout() const override;
    void PickLayout(int index) override;
    void FocusLayout(int index) override;

    CKvLayoutSelector& control;
    CKvScrollBar* bar = nullptr; ///< the control's child
    SKvGuiBasicSettings* settings = nullptr;
    kv::Reference<IKvLayoutSelectorData> data;
    SIZE layoutSize;
    kv::StripLayout layout;
    kv::Reference<IKvScrollRectHelper> scroll;
    kv::Reference<IKvScrollLineHelper> rows;
    kv::Reference<IKvScrollLineHelper> columns;
    bool vertical = true;
    std::optional<bool> verticalBySetter; ///< until `Create`
    bool showsSelection = false;
    bool isLeftDown = false;
    bool isFocusByMove = false; ///< the focus came with the pointer: no ring
    int hot = -1;
    int focus = -1;
    int seenCount = 0; ///< at the last look
    kv::WheelNotches wheel;
    std::optional<kv::StripDrag> drag;
    std::optional<kv::StripMotion> motion;
    std::optional<kv::StripPlace> collapsed; ///< where the view began before the thumbnails had no room
    kv::ThumbCache cache;
    kv::StripPainter painter;
    kv::StripAccess access;
};
