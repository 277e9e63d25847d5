/// @file
/// The layout strip: a scrolling row or column of thumbnails, one a layout, in which the user picks one.
#pragma once

#include "KvUnknown.h"
#include "KvWnd.h"

#include <atomic>
#include <memory>

/// A picture that a host lends to a strip, best in the size of a thumbnail: any other is scaled, and read as
/// a whole each time the strip asks for it. Never deleted through this interface: it has no virtual
/// destructor.
class IKvThumbImage
{
public:
    /// Lends the pixels until `Unlock`. @param width, height in pixels. @param stride bytes from one row to
    /// the next, never negative. @param pixels 0xAARRGGBB with straight alpha, the top row first.
    /// @return 1; 0 when there are none now, and `Unlock` is then not called.
    virtual int Lock(UINT& width, UINT& height, int& stride, const DWORD*& pixels) = 0;
    /// Ends what `Lock` began: the pixels are read no more.
    virtual void Unlock() = 0;
    /// The strip needs the picture no more. @return not looked at.
    virtual int Release() = 0;

protected:
    ~IKvThumbImage() = default;
};

/// What a strip shows. Indices are 0 … count - 1; a count below 0 counts as 0. The strip asks again whenever
/// it needs to know, also while it paints: no operation may show a window or run the event loop.
class IKvLayoutSelectorData : public IKvUnknown
{
public:
    /// @return how many layouts there are; below 0 counts as 0.
    virtual int GetCount() = 0;
    /// @param index 0 … count - 1.
    /// @param name receives the layout's name, ending with a zero or taking all 64 characters.
    /// @param thumbnail, mark receive pictures, which the strip releases; a mark is a small sign in the
    /// corner. All three are empty before the call.
    /// @return whether there is a thumbnail. Only the thumbnail itself counts; a layout without one shows
    /// neither name nor number.
    virtual BOOL GetUnit(int index, wchar_t name[64], IKvThumbImage** thumbnail, IKvThumbImage** mark) = 0;
    /// @param index 0 … count - 1. @return not 0 when it is shown as selected.
    virtual BOOL IsSelected(int index) = 0;
    /// The user picked a layout. @param index 0 … count - 1.
    /// @param exclusive 0: with Ctrl, beside those that are selected. @return not looked at.
    virtual int Select(int index, BOOL exclusive) = 0;
};

/// The layouts of an open project, as `CKvProjectFileLayoutData` needs them.
class IKvLayoutProject : public IKvUnknown
{
public:
    /// @return how many layouts there are.
    virtual int GetLayoutCount() = 0;
    /// @param index 0 … count - 1. @param thumbnail receives a picture, which the caller releases.
    /// @return 1; 0 without one.
    virtual int GetLayoutThumb(int index, IKvThumbImage** thumbnail) = 0;
    /// Makes a layout the current one. @param index 0 … count - 1.
    /// @param count receives how many there are afterwards. @return 1 or 0.
    virtual int SetCurrentLayout(int index, int& count) = 0;
};

/// The layouts of a project, unnamed, of which one is selected. Made with new; it holds one reference then.
class KV_API CKvProjectFileLayoutData : public IKvLayoutSelectorData
{
public:
    /// Adds a reference to the project and reads its count, once. @param project null is one without layouts.
    explicit CKvProjectFileLayoutData(IKvLayoutProject* project);

    int AddRef() override;
    int Release() override;
    /// @return as read at first, and by each `Select`.
    int GetCount() override;
    BOOL GetUnit(int index, wchar_t name[64], IKvThumbImage** thumbnail, IKvThumbImage** mark) override;
    /// @param index any. @return 1 for the layout that `Select` named last; none at first.
    BOOL IsSelected(int index) override;
    /// Makes a layout the project's current one. @param index any. @param exclusive does not count.
    /// @return what the project answered; 0, with nothing done, for an index that is none.
    int Select(int index, BOOL exclusive) override;

protected:
    ~CKvProjectFileLayoutData() override;

private:
    std::atomic<int> m_references{1};
    IKvLayoutProject* m_project;
    int m_count = 0;
    int m_selected = -1;
};

KV_INTERFACES_BEGIN

/// A strip of thumbnails with a scroll bar, a row or a column by whichever its rectangle is longer in.
///
/// A click picks a layout, with Ctrl beside the others; a press near the scroll bar drags the strip by twice
/// the way. Arrow keys, Home, End, PageUp and PageDown pick, with Ctrl they only move the focus; Space and
/// Enter are a click there, Ctrl+Space one with Ctrl. Escape takes a drag back. A mouse move takes the focus,
/// unless somebody edits a text.
///
/// A pick calls the data's `Select` and then sends the parent WM_COMMAND: wParam MAKEWPARAM(number, 1),
/// lParam the strip. Setters and scrolling are silent.
///
/// Pictures are asked for only when they are in view, and kept, as pixels, for the strip's own repaints; the
/// operations that say so ask again.
class KV_API CKvLayoutSelector : public CKvWnd, public IKvGuiWnd
{
    Q_OBJECT
    /// Whether it is a column; unless this is set, `Create` decides it by the rectangle.
    Q_PROPERTY(bool vertical READ IsVertical WRITE SetVertical)
    /// Whether frames show what is selected and hovered; see `EnableSelect`.
    Q_PROPERTY(bool selectionShown READ IsSelectionShown WRITE EnableSelect)
    /// What the labels count from.
    Q_PROPERTY(int firstNumber READ GetFirstNumber WRITE SetFirstNumber)

public:
    /// A strip that is not created yet.
    CKvLayoutSelector();
    /// A control that creates itself, see `CKvWnd`. @param parent its parent; may be null.
    explicit CKvLayoutSelector(QWidget* parent);
    ~CKvLayoutSelector() override;

    /// A column when the rectangle is higher than wide, else a row; or what `SetVertical` said.
    /// @param rect, id, parent, style see `CKvWnd::CreateWnd`; a border is always drawn, over the outer
    /// pixel.
    /// @return 1; 0 when it was created before.
    int Create(const CRect& rect, UINT id, CWnd* parent, DWORD style);
    /// Likewise with the geometry set before, else with the parent's client rectangle.
    /// @param id, parent, style as above. @return 1; 0 when it was created before.
    int Create(UINT id, CWnd* parent, DWORD style);
    /// Makes it a column or a row, also when it was created as the other.
    /// @param vertical not 0 is a column.
    void SetVertical(BOOL vertical);
    /// @return 1 for a column.
    BOOL IsVertical() const;

    /// Shows other data. Asks again.
    /// @param layoutSize gives the shape of the thumbnails, in any unit.
    /// @param layouts of which it holds a reference; null shows nothing and disables the strip.
    void SetData(SIZE layoutSize, IKvLayoutSelectorData* layouts);
    /// @param out receives the data with one added reference, or null. @return 1 when there is some.
    BOOL GetData(IKvLayoutSelectorData** out) const;
    /// @param enable whether frames of selected and hovered thumbnails show that they are; off at first.
    void EnableSelect(BOOL enable);
    /// @return 1 or 0.
    BOOL IsSelectionShown() const;
    /// @param number what the labels count from; 0 at first.
    void SetFirstNumber(int number);
    /// @return as it was set.
    int GetFirstNumber() const;
    /// The count or the layouts changed: adapts the scroll bar, which stays where it can, and asks again.
    void UpdateScroll();
    /// One layout changed, for example because its thumbnail is ready: asks again for it alone.
    /// @param index one that is none is ignored.
    void NotifyUnitChanged(int index);
    /// Repaints, and asks again.
    void Paint();

    /// Moves the view by its length, animated for up to 300 ms; another call adds to a move that is under
    /// way. A hidden strip jumps. @param forward 0 is towards the beginning.
    void ScrollView(BOOL forward);
    /// @return the position in pixels along the strip at which the view is at rest.
    std::int64_t GetScrollTarget() const;
    /// Scrolls at once by the least distance that shows a layout; of one longer than the view, its beginning.
    /// @param index one that is none is ignored.
    void EnsureVisible(int index);
    /// @return the layout that the keys start from; -1 before the user picked one.
    int GetFocusIndex() const;
    /// Silent. @param index -1 for none; beyond the last it is the last.
    void SetFocusIndex(int index);

    void SetGuiBasicSettings(SKvGuiBasicSettings* settings) override;
    UINT OnGetDlgCode() override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// After the message to the parent. @param index the layout.
    void LayoutPicked(int index);

protected:
    int CreateSelf() override;
    /// Lays out anew from the client rectangle.
    void _UpdateClient();
    /// Gives the thumbnails their size; the view stays at the layout that it began with.
    void _UpdateLayoutThumb();
    /// @return where the scroll bar is, in client coordinates; empty without one.
    CRect _GetScrollbarRect() const;
    /// @param index any. @param out receives where its thumbnail is, in client coordinates.
    /// @return 1; 0, with nothing filled, when it is not in view.
    int _GetThumbRect(int index, RECT* out) const;
    /// @param point client coordinates. @return the layout whose thumbnail is there; -1 for none.
    int _FindThumbRect(CPoint point) const;
    /// Draws all of the strip. @param graphics the painter.
    void _DrawLayoutView(Graphics& graphics);
    /// Draws the ground. @param graphics the painter.
    void _Drawbackground(Graphics& graphics);
    /// Draws the thumbnails that are in view. @param graphics the painter.
    void _DrawLayoutThumb(Graphics& graphics);
    /// Draws one. @param graphics the painter. @param rect of the thumbnail, in client coordinates.
    /// @param index the layout.
    void _DrawThumbUnit(Graphics* graphics, CRect rect, int index);

    BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    void OnPaint(Graphics& graphics) override;
    void OnSize(int width, int height) override;
    void OnLButtonDown(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnLButtonUp(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnMouseMove(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnMouseLeave() override;
    void OnMouseWheel(Qt::KeyboardModifiers modifiers, int delta, CPoint point) override;
    BOOL OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers) override;
    bool WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const override;
    void OnSetFocus() override;
    void OnKillFocus() override;
    void OnEnable(BOOL enabled) override;
    void OnTimer(UINT id) override;
    void OnCaptureChanged() override;
    void OnSkinChanged() override;
    QString ToolTipAt(CPoint point, CRect& area) const override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

KV_INTERFACES_END
