/// @file
/// The scroll bar that tells its parent in messages, and the scroll helpers.
#pragma once

#include "KvPlatform.h"
#include "KvScrollHelpers.h"

#include <QScrollBar>

#include <memory>

/// What a scroll bar was asked for: the low word of wParam.
enum EKvScrollCode : UINT
{
    SB_LINEUP = 0,        ///< also to the left
    SB_LINEDOWN = 1,      ///< also to the right
    SB_PAGEUP = 2,        ///< a view back
    SB_PAGEDOWN = 3,      ///< a view on
    SB_THUMBPOSITION = 4, ///< to the bar's position, without a drag or at its end
    SB_THUMBTRACK = 5,    ///< to the bar's position, while the thumb is dragged
    SB_TOP = 6,           ///< to the beginning
    SB_BOTTOM = 7,        ///< to the end
    SB_ENDSCROLL = 8,     ///< the thumb was let go
};

/// A scroll bar from 0 to the largest position of a view, its thumb as long as the view is of the content.
///
/// A user's action is sent to the parent as WM_HSCROLL or WM_VSCROLL: the low word of wParam is an
/// EKvScrollCode, the high one the position's low 16 bits, lParam the bar; the whole position is
/// `GetScrollPos`. The bar itself stands where it stood until the parent sets it, but for a drag and other
/// moves of the thumb. The wheel over the bar is the parent's. Setters are silent.
///
/// The parent must not delete the bar in its handler. The toolkit's own range is a scaled one where 32 bits
/// do not reach; hosts use the operations here.
class KV_API CKvScrollBar : public QScrollBar
{
    Q_OBJECT
    /// Its number.
    Q_PROPERTY(uint itemId READ GetDlgCtrlID WRITE SetDlgCtrlID)
    /// The largest position.
    Q_PROPERTY(qlonglong scrollRange READ GetScrollRange WRITE SetScrollRange)
    /// How much the view shows, which is the thumb's length.
    Q_PROPERTY(qlonglong viewLength READ GetViewLength WRITE SetViewLength)
    /// 0 … range.
    Q_PROPERTY(qlonglong scrollPos READ GetScrollPos WRITE SetScrollPos NOTIFY ScrollPosEdited)
    ///@{
    /// The toolkit's own, in a scale of its own: not for hosts.
    Q_PROPERTY(int minimum READ minimum DESIGNABLE false STORED false)
    Q_PROPERTY(int maximum READ maximum DESIGNABLE false STORED false)
    Q_PROPERTY(int value READ value DESIGNABLE false STORED false)
    Q_PROPERTY(int sliderPosition READ sliderPosition DESIGNABLE false STORED false)
    Q_PROPERTY(int pageStep READ pageStep DESIGNABLE false STORED false)
    ///@}

public:
    /// A bar of range 0 that is not created yet.
    CKvScrollBar();
    /// A bar of range 0 that is ready. @param parent whom it tells; may be null.
    explicit CKvScrollBar(QWidget* parent);
    ~CKvScrollBar() override;

    /// Makes the bar a child of `parent`, without ever taking the focus.
    /// @param orientation Qt::Horizontal sends WM_HSCROLL, Qt::Vertical WM_VSCROLL.
    /// @param style see `CKvWnd::CreateWnd`. @param rect in the parent's coordinates. @param parent whom it
    /// tells. @param id its number. @return 1; 0 for a null parent.
    int Create(Qt::Orientation orientation, UINT style, const CRect& rect, CWnd* parent, UINT id);
    /// @return its number.
    UINT GetDlgCtrlID() const;
    /// @param id its number from now on.
    void SetDlgCtrlID(UINT id);
    /// Shows a line's range and position, and view length ÷ virtual length as the thumb.
    /// @param line is read now and not kept.
    void SetScroll(IKvScrollLineHelper& line);
    /// @param position clamped to 0 … range.
    void SetScrollPos(std::int64_t position);
    /// @param range the largest position; below 0 is 0. The position is clamped to it.
    void SetScrollRange(std::int64_t range);
    /// @param length of the view, which is the thumb's; below 1 is 1.
    void SetViewLength(std::int64_t length);
    /// @return 0 … range.
    std::int64_t GetScrollPos() const;
    /// @return the largest position.
    std::int64_t GetScrollRange() const;
    /// @return the view's length; 10 at first.
    std::int64_t GetViewLength() const;
    /// Looks its colours up again, as it does by itself when the skin changes.
    void LoadSkin();

Q_SIGNALS:
    /// After each message to the parent; the position is asked for with `GetScrollPos`.
    /// @param code an EKvScrollCode.
    void ScrollRequested(int code);
    /// The position is another one by the user's action, after the message: by the action itself, or set by
    /// the parent in its handler. @param position it.
    void ScrollPosEdited(qlonglong position);

protected:
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void sliderChange(SliderChange change) override;

private:
    QRect ThumbRect() const;
    void Act(int action);
    void Track();
    void Send(UINT code);
    void Show();

    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
