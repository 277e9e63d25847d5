/// @file
/// The swatch grid: preset colours of the whole process and four alpha cells.
#pragma once

#include "KvWnd.h"

#include <memory>

/// Sent to the parent with WM_NOTIFY; wParam and idFrom are the grid's number, the code is
/// kKvColorNotifyCode.
struct KvSwatchNotifyRecord
{
    KvNotifyHeader header; ///< hwndFrom: the grid
    /// -1: a swatch was picked; 0 … 3: an alpha cell (0, 64, 128, 255) was picked; with `store` 0 the swatch
    /// that is to be overwritten.
    std::int32_t index;
    DWORD* colour;      ///< the cell's colour, 0xAARRGGBB
    std::int32_t store; ///< 0: store the current colour in this swatch by `SetCellColor`; else 1
};

/// A grid of swatches, which all grids of the process share, over a last row of four alpha cells.
///
/// The swatches come from a profile file in the system folder; the user's own stand beside the factory's.
/// A cell is picked by a release in the cell that was pressed; arrow keys walk the cells and stop at the
/// edges, Home and End lead to the first and the last, Enter and Space pick the current one, the menu key
/// opens its menu, Ctrl+C copies a swatch. A colour can be dragged out of a swatch, as text and as "DWCOLOR",
/// and dropped on one, which stores it in the file, without a message. Escape takes a press back.
class KV_API CKvSolidColorTemplate : public CKvStatic
{
    Q_OBJECT
    /// How many cells stand side by side; see `SetNumRect`.
    Q_PROPERTY(int columns READ GetColumns WRITE SetColumns)
    /// How many stand over another, the row of alpha cells included.
    Q_PROPERTY(int rows READ GetRows WRITE SetRows)

public:
    /// A control that is not created yet.
    CKvSolidColorTemplate();
    /// A control that creates itself, see `CKvWnd`. @param parent its parent; may be null.
    explicit CKvSolidColorTemplate(QWidget* parent);
    ~CKvSolidColorTemplate() override;

    /// @param folder where "KvSolidColorTemplate.ini" lies; the user's application data folder until a host
    /// says so.
    static void SetSystemFolder(const CString& folder);
    /// @return that folder.
    static CString GetSystemFolder();
    /// Writes the library's own swatches where there is no file yet. A host calls it before its first grid.
    /// @return 1 when there is a file that can be read afterwards.
    static int InstallFactoryTemplate();

    int Create(UINT style, CWnd* parent, DWORD id) override;
    /// Lays out the cells anew.
    /// @param columns, rows the row of alpha cells included; below 1 counts as 1. 3 and 8 at first.
    void SetNumRect(int columns, int rows);
    /// @return as it was set.
    int GetColumns() const;
    /// @return as it was set.
    int GetRows() const;
    /// Loads the swatches: the user's once a process, the factory's whenever `reset` is set, which also makes
    /// them the user's. All grids are redrawn. A grid that creates itself calls it with 0.
    /// @param reset 0 or not. @return 1; 0, with the swatches as they were, when they are loaded already or
    /// the file does not give them.
    int InitialData(int reset);
    /// Lays out the cells anew from the client rectangle and redraws them. Called by every resize.
    void RecalcLayout();
    /// Redraws the grid.
    void DrawPalette();
    /// Silent; all grids are redrawn. @param index one that is none is ignored. @param colour 0xAARRGGBB.
    void SetCellColor(int index, DWORD colour);
    /// @return how many swatches the process has.
    int GetCellCount() const;
    /// @param index 0 … count - 1. @return 0xAARRGGBB; 0 for an index that is none.
    DWORD GetCellColor(int index) const;

    UINT OnGetDlgCode() override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// After the message to the parent, with what its record said.
    /// @param index, colour see `KvSwatchNotifyRecord`.
    void CellPicked(int index, quint32 colour);
    /// After the message that asks for a colour to store: a host without a message handler answers here, by
    /// `SetCellColor`. The file is written afterwards. @param index the swatch.
    /// @param colour what it holds now.
    void CellStoreRequested(int index, quint32 colour);

protected:
    int CreateSelf() override;
    /// Reads the swatches from a profile file into the process. @param path the file.
    /// @param factory the factory's, else the user's.
    /// @return false, with the swatches as they were, when the head names no lines or too many.
    static bool ReadFile(const CString& path, bool factory);
    /// Writes the user's swatches. @param path the file. @return false, and nothing is written, when the head
    /// does not fit them.
    static bool WriteFile(const CString& path);
    /// @param text "R,G,B,A". @return 0xAARRGGBB; white where a number is none of 0 … 255.
    static DWORD GetColorValue(const CString& text);
    /// Redraws all grids: the four colours of the alpha cells are constants.
    static void SetFixedAlphaColor();
    /// Opens the context menu of a cell and runs the chosen command; nothing where there is no cell. The grid
    /// may be gone afterwards. @param point client coordinates.
    void DoMenu(CPoint point);
    ///@{
    /// Draws a swatch or an alpha cell at rest, at its place. @param graphics the painter.
    /// @param index one that is none is ignored.
    void DrawCell(Graphics& graphics, int index);
    void DrawAlphaCell(Graphics& graphics, int index);
    ///@}

    void OnPaint(Graphics& graphics) override;
    void OnSize(int width, int height) override;
    void OnLButtonDown(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnLButtonUp(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnMouseMove(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnMouseLeave() override;
    void OnContextMenu(CPoint point) override;
    CPoint ContextMenuPoint() const override;
    BOOL OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers) override;
    BOOL OnChar(UINT character) override;
    bool WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const override;
    void OnSetFocus() override;
    void OnKillFocus() override;
    void OnEnable(BOOL enabled) override;
    void OnCaptureChanged() override;
    void OnSkinChanged() override;
    QString ToolTipAt(CPoint point, CRect& area) const override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void SetColumns(int columns) { SetNumRect(columns, GetRows()); }
    void SetRows(int rows) { SetNumRect(GetColumns(), rows); }

    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
