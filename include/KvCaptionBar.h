/// @file
/// What the ribbon title bar and the ribbon menu bar share: the strip across the top of a main window that
/// stands in for the system's caption.
#pragma once

#include "KvWnd.h"

#include <memory>

namespace kv {
class CaptionStrip;
}

/// The buttons of a caption strip.
enum EKvCaptionButton : UINT
{
    kKvCaptionApplication = 10000, ///< picture and name of the active application; opens the system entries
    kKvCaptionClose = 10001,       ///< closes the frame
    kKvCaptionMaximise = 10002,    ///< maximise, or restore while the frame is maximised
    kKvCaptionMinimise = 10003,    ///< minimises the frame
    kKvCaptionMenu = 10004,        ///< the application's menu
};

KV_INTERFACES_BEGIN

/// The strip: application button, a row of text items, a static title and four window buttons; below it the
/// area of the tool windows. It is as high as the skin's picture "ribbontitlebar_bk" at `Create`, and as much
/// higher as letters of more than 21 pixels need; the tool windows then stand lower. Its size hint is as wide
/// as the items, the static title and the buttons need, at least 240 pixels, which also is the smallest
/// width; the flag of the application switch stands in the middle all the same.
///
/// "The frame" is `window()`, whatever its class; its maximise-box style is `Qt::WindowMaximizeButtonHint`.
/// The buttons tell the strip by WM_COMMAND with their number, as a host may do. Close sends the frame
/// WM_CLOSE, and calls `close()` when nobody answered; minimise and maximise ask
/// `CKvFrameWnd::OnShowStateRequest` where the frame is one. A free place of the caption drags the frame, a
/// double click there maximises or restores it, a right click opens a `CKvFrameWnd`'s system menu.
///
/// Keyboard: F10 or Alt alone puts the focus on the items, arrows walk them and the buttons, Escape leaves.
/// Coordinates are client coordinates in logical pixels.
class KV_API CKvCaptionBar : public CKvWnd, public IKvGuiWnd, public IKvFrameCaption
{
    Q_OBJECT

public:
    ~CKvCaptionBar() override;

    /// @param style, parent, id see `CKvWnd::CreateWnd`. @param rect in the parent's coordinates; its height
    ///        does not count. @return 1; 0 when it was created before.
    int Create(UINT style, const CRect& rect, CWnd* parent, DWORD id);
    /// Background, text colours and font for the strip's texts; the skin's pictures stay.
    /// @param settings see `IKvGuiWnd`.
    void SetGuiBasicSettings(SKvGuiBasicSettings* settings) override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    /// @param strip what the two bars do differently.
    explicit CKvCaptionBar(std::unique_ptr<kv::CaptionStrip> strip);
    /// @return the same.
    kv::CaptionStrip& Strip() const { return *m_strip; }

    int CreateSelf() override;
    BOOL OnCommand(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    void OnPaint(Graphics& graphics) override;
    void OnSize(int width, int height) override;
    void OnLButtonDown(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnLButtonDblClk(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnLButtonUp(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnMouseMove(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnMouseLeave() override;
    void OnContextMenu(CPoint point) override;
    void OnSkinChanged() override;
    QString ToolTipAt(CPoint point, CRect& area) const override;
    void mouseMoveEvent(QMouseEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool TakesBorderAt(CPoint point) const override;
    int CaptionBottom() const override;
    void ShowEdgeCursor(unsigned edges);
    bool Make(UINT style, const CRect& rect, CWnd* parent, DWORD id);

    std::unique_ptr<kv::CaptionStrip> m_strip;
    int m_height = 0;           ///< of the skin that was in force at `Create`
    unsigned m_cursorEdges = 0; ///< of the frame, whose resize cursor shows
    bool m_leftDown = false;    ///< as the last move of the pointer told
};

KV_INTERFACES_END
