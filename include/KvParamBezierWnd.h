/// @file
/// The ease curve window: shows and edits one cubic ease between two keys of an animated parameter.
#pragma once

#include "KvWnd.h"

/// Where the window gets its curve and tells of edits. Operations return 1 for success or "yes", 0 for
/// failure or "no". `points` are P0, C0, C1 and P1 as x, y pairs, absolute: the start key, its out handle,
/// the end key's in handle and the end key. Times are x, values are y.
class IKvParamBezierInfo
{
public:
    // For the dialog around the window; the window itself calls none of these five.
    /// @return not 0 when something was written.
    virtual int IsModified() { return 0; }
    /// @param modified what `IsModified` is to answer. @return 1 or 0.
    virtual int SetModified(std::uint32_t /*modified*/) { return 0; }
    /// A transaction begins. @return 1 or 0.
    virtual int BeginEdit() { return 0; }
    /// It ends, and what was written stays. @return 1 or 0.
    virtual int CommitEdit() { return 0; }
    /// It ends, and all is as before. @return 1 or 0.
    virtual int CancelEdit() { return 0; }
    /// Reads the curve. @param points receives it.
    /// @param minimum, maximum receive the values that it may take.
    /// @param lock receives not 0 when it must rise from start to end. @param kind receives an EKvEaseKind.
    /// @return 1; 0 shows the default curve, which cannot be edited.
    virtual int GetCurve(double /*points*/[8], double& /*minimum*/, double& /*maximum*/,
                         std::uint32_t& /*lock*/, std::uint32_t& /*kind*/)
    {
        return 0;
    }
    /// @param points the curve as it is now. @param lock, kind as in `GetCurve`. @return 1 or 0.
    virtual int SetCurve(const double /*points*/[8], std::uint32_t /*lock*/, std::uint32_t /*kind*/)
    {
        return 0;
    }
    /// The linear preset is about to be applied. @return 1 or 0.
    virtual int ApplyLinear() { return 0; }
    ///@{
    /// A preset's shape. @param outX, outY receive the start key's out tangent: a fraction of the segment's
    /// width, a value offset. @param inX, inY receive the end key's in tangent: a fraction leftwards, a value
    /// offset. @return 1 or 0.
    virtual int GetSpeedUpCurve(double* /*outX*/, double* /*outY*/, double* /*inX*/, double* /*inY*/)
    {
        return 0;
    }
    virtual int GetSpeedDownCurve(double* /*outX*/, double* /*outY*/, double* /*inX*/, double* /*inY*/)
    {
        return 0;
    }
    virtual int GetSmoothCurve(double* /*outX*/, double* /*outY*/, double* /*inX*/, double* /*inY*/)
    {
        return 0;
    }
    ///@}
    /// Whether there is a segment before this one. @return 1 or 0.
    virtual int CanGoPrevKey() { return 0; }
    /// Whether there is one behind it. @return 1 or 0.
    virtual int CanGoNextKey() { return 0; }
    /// The segment before is edited from now on. @return 1 or 0.
    virtual int GoPrevKey() { return 0; }
    /// The one behind is edited from now on. @return 1 or 0.
    virtual int GoNextKey() { return 0; }
    virtual ~IKvParamBezierInfo() = default;
};

KV_INTERFACES_BEGIN

/// Hears of the window's history. Never deleted through this interface: it has no virtual destructor.
class IKvParamBezierCtrlCallback
{
public:
    /// A record was added to the undo history. Undo, redo and revert do not call it. @return not looked at.
    virtual int UndoChanged() { return 0; }
};

KV_INTERFACES_END

/// Shows one cubic ease, its two keys and their tangents, and edits it with a history of undo.
///
/// The horizontal axis is always the segment's time range; the vertical one is the value range, which can be
/// zoomed and moved. The window tells the info object of every change while it is made (`SetCurve`), and
/// adds one record of undo for each gesture. Presets call no `SetCurve`. An info object without a sensible
/// curve (an empty or reversed segment or value range, values that are not finite or beyond single precision)
/// or that gave none can be looked at but not edited until a later `Load` brings a better one: edits,
/// presets, undo, redo and revert do nothing and call nobody.
///
/// Mouse: the left button drags handles, keys (only their value) and tangent lines, with Ctrl a tangent keeps
/// its direction; the middle button and the wheel zoom, the right button moves the view, a double click
/// resets it. Escape takes a gesture back.
///
/// Keyboard: PageUp and PageDown walk the handles, arrows move the selected one by a pixel (Shift: a tenth),
/// digits typed set it as "time, value" or the value alone (Enter takes, Escape drops), Ctrl+Z, Ctrl+Y and
/// Ctrl+Shift+Z undo and redo, Ctrl+C and Ctrl+V copy and paste the ease as "cubic-bezier(a, b, c, d)", Home
/// resets the view.
class KV_API CKvParamBezierWnd : public CKvWnd
{
    Q_OBJECT
    /// See `SetFrameLength`.
    Q_PROPERTY(double frameLength READ GetFrameLength WRITE SetFrameLength)
    /// See `ShowSpeed`.
    Q_PROPERTY(bool speedShown READ IsSpeedShown WRITE ShowSpeed)
    /// See `ShowInitialCurve`.
    Q_PROPERTY(bool initialCurveShown READ IsInitialCurveShown WRITE ShowInitialCurve)

public:
    /// One record of undo, see `GetCurveInfo`. Tangents are relative to their key.
    struct SCurveInfo
    {
        double startX;      ///< the start key's time
        double startY;      ///< its value
        double outX;        ///< the start key's tangent
        double outY;        ///< its value
        double inX;         ///< the end key's tangent
        double inY;         ///< its value
        double endX;        ///< the end key's time
        double endY;        ///< its value
        std::uint32_t kind; ///< EKvEaseKind
    };

    /// Loads the curve at once.
    /// @param info may be null: the default curve is shown and cannot be edited. Must outlive the window.
    /// @param callback may be null. Must outlive the window.
    CKvParamBezierWnd(IKvParamBezierInfo* info, IKvParamBezierCtrlCallback* callback);
    /// A control that creates itself, see `CKvWnd`. @param parent its parent; may be null.
    explicit CKvParamBezierWnd(QWidget* parent);
    ~CKvParamBezierWnd() override;

    /// @param style, rect, parent, id see `CKvWnd::CreateWnd`. @return 1; 0 when it was created before.
    int Create(unsigned int style, const CRect& rect, CWnd* parent, DWORD id);

    /// Shows what another info object gives, as `Load` does: for a window that a form constructed.
    /// @param info, callback as the constructor has them. @return 1.
    int SetInfo(IKvParamBezierInfo* info, IKvParamBezierCtrlCallback* callback);
    /// Asks the info object for the curve anew and starts the history afresh; a gesture that is under way is
    /// dropped. @return 1.
    int Load();

    // After any of these the window may be gone.
    ///@{
    /// A step back or on in the history. @return 1 when it did something.
    int Undo();
    int Redo();
    ///@}
    /// Back to the first record; the others stay for redo. @return 1 when it did something.
    int Revert();
    ///@{
    /// A preset. @return 1 when it did something.
    int ApplyLinear();
    int ApplySpeedUp();
    int ApplySpeedDown();
    int ApplySmooth();
    ///@}
    ///@{
    /// @return 1 when there is such a step.
    BOOL CanUndo() const;
    BOOL CanRedo() const;
    ///@}
    /// The record that the window stands on: what undo and redo lead back to. A drag shows in it only when it
    /// has ended. @param info receives it. @return 1; there is always a record, the first one as it was
    /// loaded.
    int GetCurveInfo(SCurveInfo& info) const;

    /// Marks every frame on the curve. @param length of a frame in the curve's time; 0, below or not finite:
    /// no marks, as at the beginning. Marks that would stand closer than they can be seen are left out.
    void SetFrameLength(double length);
    /// @return as it was set.
    double GetFrameLength() const;
    /// The curve's speed as a thin line. @param show 0 is off, as at the beginning.
    void ShowSpeed(BOOL show);
    /// @return 1 or 0.
    BOOL IsSpeedShown() const;
    /// The curve as it was loaded, behind the one that is edited. @param show 0 is off, as at the beginning.
    void ShowInitialCurve(BOOL show);
    /// @return 1 or 0.
    BOOL IsInitialCurveShown() const;

    UINT OnGetDlgCode() override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// After each `SetCurve`. @param kind what it was given.
    void CurveChanged(int kind);
    /// After each `UndoChanged`.
    void HistoryChanged();

protected:
    int CreateSelf() override;
    void OnPaint(Graphics& graphics) override;
    void OnLButtonDown(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnLButtonDblClk(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnLButtonUp(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnMButtonDown(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnMButtonUp(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnRButtonDown(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnRButtonUp(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnMouseMove(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnMouseLeave() override;
    void OnMouseWheel(Qt::KeyboardModifiers modifiers, int delta, CPoint point) override;
    void OnContextMenu(CPoint point) override;
    BOOL OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers) override;
    BOOL OnChar(UINT character) override;
    bool WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const override;
    void OnSetFocus() override;
    void OnKillFocus() override;
    void OnEnable(BOOL enabled) override;
    void OnCaptureChanged() override;
    void OnSkinChanged() override;
    QString ToolTipAt(CPoint point, CRect& area) const override;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
