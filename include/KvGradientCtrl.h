/// @file
/// The gradient control: a bar that shows a multi-stop gradient, markers for its stops and the mid points.
#pragma once

#include "KvWnd.h"

#include <QBrush>

/// Code of the gradient control's notifications.
inline constexpr std::uint32_t kKvGradientNotifyCode = kKvColorNotifyCode;

/// What `hdr.idFrom` says.
enum EKvGradientEvent : std::uintptr_t
{
    kKvGradientDataSet = 0,      ///< the owner set the stops; data is the selected stop
    kKvGradientStopsEdited = 1,  ///< the stops were edited; no data
    kKvGradientStopSelected = 2, ///< a stop was selected; data is that stop
};

/// The phases by the name that this control has for them.
using EKvGradientPhase = EKvColorPhase;

/// `hdr.idFrom` is an EKvGradientEvent; `data` is the SKvCGGradientKey concerned.
using GradientNotifyRecord = KvColorNotifyRecord;

/// Edits a gradient of up to 255 stops.
///
/// The control sets no colour itself except that of a new stop; the owner edits the selected stop's colour
/// through `SetColor`. Setters are silent except `SetData` and `ResetDefault`. The parent may do anything in
/// its handler, including deleting the control.
///
/// Mouse: a click on a marker selects the stop, a drag moves it, a click elsewhere on the bar or the marker
/// strip adds one; the two mid points next to the selected stop are dragged in the strip above the bar, with
/// the left Ctrl key they snap to 0.25, 0.5 and 0.75. Escape takes a drag back.
///
/// Keyboard: Left/Right move the selected stop by a pixel (Shift: ten), Alt+Left/Right the mid point before
/// it and Alt+Shift+Left/Right the one after it by 0.01, Up/Down and Home/End select, Insert adds a stop,
/// Delete removes it, digits set its position in percent (Enter takes, Escape drops), Ctrl+C, Ctrl+V and
/// Ctrl+X copy, paste and cut its colour.
class KV_API CKvGradientCtrl : public CKvStatic
{
    Q_OBJECT
    /// The stops as a text, for forms: position (0 … 1), colour ("#rgb", "#rrggbb", "#aarrggbb") and, unless
    /// it is 0.5, mid point of each, with ";" between them: "0 #2a1b5e; 1 #ffb347 0.4". Silent when set. One
    /// that cannot be read, or of more than 255 stops, is refused with a warning.
    Q_PROPERTY(QString stops READ StopsText WRITE SetStopsText NOTIFY StopsEdited)
    /// The selected stop's index; -1 when none is.
    Q_PROPERTY(int selectedStop READ GetSelectedKey WRITE SetSelectedKey NOTIFY StopSelected)
    /// The frame shows that this gradient is the one that is edited.
    Q_PROPERTY(bool editing READ IsEditing WRITE SetEditing)

public:
    /// A control without stops that is not created yet.
    CKvGradientCtrl();
    /// A control that creates itself, see `CKvWnd`. @param parent its parent; may be null.
    explicit CKvGradientCtrl(QWidget* parent);
    ~CKvGradientCtrl() override;

    /// Where a mid point shows ticks and snaps to, as fractions of its segment.
    static constexpr float m_fAttachPos[3] = {0.25f, 0.5f, 0.75f};
    /// How many of them.
    static constexpr int m_nAttachPosCount = 3;

    /// Creates the control as a child of `parent` and starts the marker's blinking (500 ms).
    /// @param style, parent, id see `CKvWnd::CreateWnd`. @return 1; 0 when it was created before.
    int Create(UINT style, CWnd* parent, DWORD id) override;
    /// Lays out the three areas anew from the client rectangle and redraws them. Called by every resize.
    /// @return 1.
    int RecalcLayout();

    /// Stores the stops that `ResetDefault` restores.
    /// @param count of which 255 are kept; below 1 stores none.
    /// @param keys copied; null stores none. @return 1.
    int SetDefaultData(int count, const SKvCGGradientKey* keys);
    /// Replaces the stops, without sorting them. A count below 0 or above 254 makes the count 255; below 0
    /// copies nothing, above 254 copies 255. The selection stays where it is within the count, else it
    /// becomes 0. Notifies the parent (kKvGradientDataSet), after ending a drag that is under way and
    /// dropping a percentage that is half typed.
    /// @param count how many. @param keys copied.
    /// @return 1; 0, nothing changed and nothing sent, for null with a count above 0.
    int SetData(int count, const SKvCGGradientKey* keys);
    /// Hands out the control's own array, valid until the control dies; do not free it.
    /// @param count receives how many. @param keys receives the array; may be null. @return 1.
    int GetData(int& count, SKvCGGradientKey** keys);
    /// @return the selected stop's colour, 0xAARRGGBB; 0 when no stop is selected.
    DWORD GetSelectedColor() const;
    /// @return the selected stop's index; -1 when no stop is selected.
    int GetSelectedKey() const;
    /// Selects a stop; silent. A drag that is under way ends first and a percentage that is half typed is
    /// dropped, unless the stop is selected already.
    /// @param index 0 … count - 1. @return 1; 0, nothing changed, when there is no such stop.
    int SetSelectedKey(int index);
    /// Sets the selected stop's colour; silent. @param colour 0xAARRGGBB. @return 1 when it changed.
    int SetColor(DWORD colour);
    /// Restores the default stops, selects the first and notifies the parent (begin, continue, end).
    /// @return 1; 0 when no default stops are stored.
    int ResetDefault();
    /// The frame has the colour of the focus while the control is editing or active. It is active from the
    /// beginning, and then while it has the keyboard focus, or as `SetActive` says. @param editing 0 is off.
    /// @return 1.
    int SetEditing(int editing);
    /// @return 1 or 0.
    int IsEditing() const;
    /// Says whether the control is active until the focus comes or goes. @param active 0 is not. @return 1.
    int SetActive(int active);

    UINT OnGetDlgCode() override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// After each message to the parent, with its event and phase; the stop is asked for with `GetData`.
    /// @param event an EKvGradientEvent; @param phase an EKvColorPhase.
    void GradientChanged(int event, int phase);
    /// The stops are others by an edit, after the message that says so: once for each step of a drag, once
    /// for an edit at once.
    void StopsEdited();
    /// The user's action made another stop the selected one, also by adding, passing or taking away a stop;
    /// after the message. @param index the stop; -1 for none.
    void StopSelected(int index);

protected:
    // The steps that the control is made of. Those that edit notify the parent as the user's own edit does
    // and end a drag that is under way first; a 0 means that nothing changed and nothing was sent. After any
    // of them the control may be gone.

    /// @return the blend that the bar shows: places 0..1, ascending, and colours as displayed.
    QGradientStops MakeSampleBrush() const;
    /// @param position 0.0 … 1.0; not a number is 0.
    /// @return its client column, truncated toward zero from the bar's left end.
    int GetDisplayPos(double position) const;
    /// @param a, b 0xAARRGGBB. @return the average of each of the four channels, rounded down.
    static DWORD MixColor(DWORD a, DWORD b);
    /// @param colour 0xAARRGGBB.
    /// @return the colour itself, or in a disabled control the grey (R + G + B) / 6 with its alpha.
    DWORD GetDisplayColor(DWORD colour) const;
    /// Sorts by position with the control's exchange sort; silent.
    void SortKeys();

    /// Redraws the bar.
    void DrawPalette();
    /// Redraws the strip of the mid points.
    void DrawMidPointArea();
    /// Redraws the strip of the markers.
    void DrawKeyArea();
    /// Draws a mid point's diamond. @param graphics the painter.
    /// @param x its middle column; its middle row is 5.
    /// @param colour 0xAARRGGBB.
    static void DrawMidPointPointer(Graphics& graphics, int x, DWORD colour);
    /// Draws a stop's marker. @param graphics the painter. @param x the column of its tip.
    /// @param y its base line.
    /// @param colour 0xAARRGGBB, lightened by white where it is translucent.
    static void DrawKeyPointer(Graphics& graphics, int x, int y, DWORD colour);

    /// Selects the stop whose marker holds the point and notifies, also when it was selected.
    /// @param point client coordinates. @return 1 or 0.
    int CheckSelectKey(CPoint point);
    /// Adds a stop at the point's column and begins a change run, which a drag continues or ends.
    /// @param point client coordinates. @return 1; 0 at 255 stops.
    int AddKey(CPoint point);
    /// Goes on with the drag of a mid point. @param point client coordinates.
    /// @return 1; 0 when none is dragged.
    int MoveMidPoint(CPoint point);
    /// Removes the selected stop. @return 1; 0 below 3 stops.
    int DeleteCurrentKey();
    /// Copies the selected stop's colour. @return 1; 0 when no stop is selected or there is no clipboard.
    int CopyColor();
    /// Gives the selected stop the colour of the clipboard.
    /// @return 1; 0 when no stop is selected or the clipboard holds no colour.
    int PasteColor();
    /// Opens the context menu and runs the chosen command there; from the menu key, a paste goes to the
    /// selected stop. @param point client coordinates.
    void DoMenu(CPoint point);
    /// Turns the gradient round. @return 1.
    int ReverseKeys();
    /// Halves all positions and mirrors the stops to the right. @return 1.
    int AddReverse();
    /// Exchanges the selected stop's colour with a neighbour's. @param withNext 0: with the one before.
    /// @return 1; 0 without it.
    int ExchangeColor(BOOL withNext);
    /// Places the stops at equal distances. @return 1; 0 below 3 stops.
    int SameSpace();

    void OnPaint(Graphics& graphics) override;
    void OnSize(int width, int height) override;
    void OnLButtonDown(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnLButtonUp(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnMouseMove(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void OnContextMenu(CPoint point) override;
    CPoint ContextMenuPoint() const override;
    BOOL OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers) override;
    BOOL OnChar(UINT character) override;
    bool WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const override;
    void OnSetFocus() override;
    void OnKillFocus() override;
    void OnEnable(BOOL enabled) override;
    void OnTimer(UINT id) override;
    void OnCaptureChanged() override;
    void OnSkinChanged() override;
    QString ToolTipAt(CPoint point, CRect& area) const override;
    bool focusNextPrevChild(bool next) override;

private:
    QString StopsText() const;
    void SetStopsText(const QString& text);

    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
