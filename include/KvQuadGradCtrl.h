/// @file
/// The four-corner gradient: a preview in which four colours blend, and a swatch for each corner.
#pragma once

#include "KvWnd.h"

#include <QColor>
#include <QImage>

#include <memory>

/// Blends four corner colours over the image: a fan of four triangles around their average, each channel
/// linear within a triangle, drawn source-over. At another pixel ratio than 1, which is the image's, device
/// pixel (i, j) shows the colour at (i / ratio, j / ratio).
/// @param image of format ARGB32, ARGB32_Premultiplied or RGB32; others are left as they are.
/// @param rect the whole gradient in logical pixels; what lies outside the image is not written.
/// @param corners 0xAARRGGBB: top left, top right, bottom left, bottom right.
KV_API void KvFillQuadGradient(QImage& image, const CRect& rect, const DWORD corners[4]);

/// Edits a four-corner gradient. The user selects a corner; the owner then sets its colour by `SetColor`.
///
/// Selecting another corner, by a click or an arrow key, sends the parent WM_NOTIFY with wParam 0 and a bare
/// KvNotifyHeader: hwndFrom is the control, idFrom 0, code the corner's colour. Tell it by hwndFrom before
/// looking at the code. Setters are silent. By the context menu corners are exchanged and turned, Ctrl+C and
/// Ctrl+V copy and paste the selected one's colour, and a colour can be dropped on a corner: what changes
/// corners so only emits `CornersChanged`.
class KV_API CKvQuadGradCtrl : public CKvStatic
{
    Q_OBJECT
    /// A corner's colour.
    Q_PROPERTY(QColor topLeft READ TopLeft WRITE SetTopLeft NOTIFY CornersChanged)
    /// A corner's colour.
    Q_PROPERTY(QColor topRight READ TopRight WRITE SetTopRight NOTIFY CornersChanged)
    /// A corner's colour.
    Q_PROPERTY(QColor bottomLeft READ BottomLeft WRITE SetBottomLeft NOTIFY CornersChanged)
    /// A corner's colour.
    Q_PROPERTY(QColor bottomRight READ BottomRight WRITE SetBottomRight NOTIFY CornersChanged)
    /// 0 … 3, -1 for none.
    Q_PROPERTY(int selectedCorner READ GetSelectedCorner WRITE SetSelectedCorner NOTIFY CornerSelected)

public:
    /// A control that is not created yet.
    CKvQuadGradCtrl();
    /// A control that creates itself, see `CKvWnd`. @param parent its parent; may be null.
    explicit CKvQuadGradCtrl(QWidget* parent);
    ~CKvQuadGradCtrl() override;

    int Create(UINT style, CWnd* parent, DWORD id) override;
    /// Lays out the preview and the corners anew and redraws them. Called by every resize.
    void RecalcLayout();
    /// @param corners top left, top right, bottom left, bottom right, 0xAARRGGBB; red, green, blue and
    /// magenta at first. Null is ignored.
    void SetData(const DWORD corners[4]);
    /// @param corners receives the same; null is ignored.
    void GetData(DWORD corners[4]) const;
    /// Sets the selected corner's colour; nothing when none is selected. @param colour 0xAARRGGBB.
    void SetColor(DWORD colour);
    /// @return 0xAARRGGBB; 0 when no corner is selected.
    DWORD GetSelectedColor() const;
    /// @return 0 … 3, -1 for none; 0 at first.
    int GetSelectedCorner() const;
    /// Silent. @param corner -1 for none; others out of range are ignored.
    void SetSelectedCorner(int corner);

    UINT OnGetDlgCode() override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user selected another corner; after the message to the parent.
    /// @param corner the one in force: when the parent's handler selected another one, that; the signal is
    /// not sent when it selected none.
    void CornerSelected(int corner);
    /// The user exchanged or turned corners, or pasted or dropped a colour into one.
    void CornersChanged();

protected:
    /// Redraws the four corners.
    void DrawAllControls();
    /// @param corner redrawn; one out of range is ignored.
    void DrawControl(int corner);
    /// Redraws the preview.
    void DrawPalette();

    void OnPaint(Graphics& graphics) override;
    void OnSize(int width, int height) override;
    void OnLButtonDown(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnContextMenu(CPoint point) override;
    CPoint ContextMenuPoint() const override;
    BOOL OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers) override;
    BOOL OnChar(UINT character) override;
    bool WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const override;
    void OnSetFocus() override;
    void OnKillFocus() override;
    void OnEnable(BOOL enabled) override;
    void OnSkinChanged() override;
    QString ToolTipAt(CPoint point, CRect& area) const override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QColor CornerColour(std::size_t corner) const;
    void SetCornerColour(std::size_t corner, const QColor& colour);
    QColor TopLeft() const { return CornerColour(0); }
    void SetTopLeft(const QColor& colour) { SetCornerColour(0, colour); }
    QColor TopRight() const { return CornerColour(1); }
    void SetTopRight(const QColor& colour) { SetCornerColour(1, colour); }
    QColor BottomLeft() const { return CornerColour(2); }
    void SetBottomLeft(const QColor& colour) { SetCornerColour(2, colour); }
    QColor BottomRight() const { return CornerColour(3); }
    void SetBottomRight(const QColor& colour) { SetCornerColour(3, colour); }

    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
