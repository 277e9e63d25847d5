/// @file
/// The dialog that shapes the ease between two keys of an animated parameter.
#pragma once

#include "KvDialog.h"
#include "KvParamBezierWnd.h"
#include "KvTypes.h"

#include <QPointer>

#include <memory>

/// Lets the ease window edit a parameter of a host: reads and writes its ease records through the host's data
/// interface. Registers the parameter for as long as it lives. Operations return what the host answered; 0
/// without a host.
class KV_API CKvParamBezierInfo : public IKvParamBezierInfo
{
public:
    /// @param host may be null. @param objectId, paramName the parameter. All three must outlive this object.
    CKvParamBezierInfo(IKvDataOperator* host, const wchar_t* objectId, const wchar_t* paramName);
    ~CKvParamBezierInfo() override;
    CKvParamBezierInfo(const CKvParamBezierInfo&) = delete;
    CKvParamBezierInfo& operator=(const CKvParamBezierInfo&) = delete;

    /// @return 1 once something was written or `SetModified` said so.
    int IsModified() override;
    int SetModified(std::uint32_t modified) override;
    int BeginEdit() override;
    int CommitEdit() override;
    int CancelEdit() override;
    /// Reads the record and remembers its value range for the records that are written.
    /// @param points, minimum, maximum, lock, kind receive it.
    /// @return 1; 0 when the host gives none: what the arguments refer to stays, the range remembered is 0
    /// … 1.
    int GetCurve(double points[8], double& minimum, double& maximum, std::uint32_t& lock,
                 std::uint32_t& kind) override;
    /// Writes a whole record: the inverse of `GetCurve`. On a segment without width the fractions are 0.
    /// @param points, lock, kind the curve. @return what the host answered.
    int SetCurve(const double points[8], std::uint32_t lock, std::uint32_t kind) override;
    /// Asks the host for its linear preset: a record with nothing but the kind.
    /// @return what the host answered.
    int ApplyLinear() override;
    // Ask the host for a preset in the same way and read the tangents that it chose. Pointers may be null; 0
    // leaves what they point at alone.
    int GetSpeedUpCurve(double* outX, double* outY, double* inX, double* inY) override;
    int GetSpeedDownCurve(double* outX, double* outY, double* inX, double* inY) override;
    int GetSmoothCurve(double* outX, double* outY, double* inX, double* inY) override;
    int CanGoPrevKey() override;
    int CanGoNextKey() override;
    int GoPrevKey() override;
    int GoNextKey() override;

private:
    friend class CKvParamBezierCtrlDlg;
    bool CanWrite() const;
    int WritePreset(std::uint32_t kind);
    int ReadPreset(std::uint32_t kind, double* outX, double* outY, double* inX, double* inY);

    std::uint32_t m_modified = 0;
    IKvDataOperator* m_operator;
    const wchar_t* m_objectId;
    const wchar_t* m_paramName;
    double m_minimum = 0;
    double m_maximum = 1;
    bool m_isClosed = false; // the dialog has ended its transaction: nothing is written any more
    std::shared_ptr<const bool> m_alive;
};

/// The ease dialog's template, for `CKvDialog::Create`.
inline constexpr UINT kKvParamBezierDialog = 12016;

KV_INTERFACES_BEGIN

/// "Parameter Curve Setup": the ease window with buttons for undo, redo and reset, four presets, and steps to
/// the segments before and after. The host sees every edit while it is made.
///
/// Each opening is one transaction at the host: `BeginEdit`, then exactly one `CommitEdit` (the answer is
/// IDOK, also by `EndDialog`, and something was written) or `CancelEdit`, however the dialog ends, and
/// nothing is written after it. A dialog that `Create` made has no window after its answer; another `Create`
/// is another transaction. Without a host, or while there is no window, every action is skipped.
///
/// A segment whose record the host does not give is shown as the default curve and cannot be edited; the
/// steps to other segments work.
class KV_API CKvParamBezierCtrlDlg : public CKvDialog, public IKvParamBezierCtrlCallback
{
    Q_OBJECT

public:
    /// @param host may be null: a default curve is shown and cannot be edited. @param objectId, paramName the
    /// parameter. All three must outlive the dialog. @param parent see `CKvDialog`.
    CKvParamBezierCtrlDlg(IKvDataOperator* host, const wchar_t* objectId, const wchar_t* paramName,
                          CWnd* parent);
    ~CKvParamBezierCtrlDlg() override;

    /// Begins the transaction and makes the ease window, once an opening. @return see `CKvDialog`.
    BOOL OnInitDialog() override;
    void OnAnswer(int result) override;
    int DestroyWindow() override;
    LRESULT OnKickIdle(WPARAM wParam, LPARAM count) override;
    void OnCmdUpdateUI(CCmdUI* command) override;
    int UndoChanged() override;

    ///@{
    /// What the button of that name does; nothing while there is no window.
    void OnBnClickedButtonUndo();
    void OnBnClickedButtonRedo();
    void OnBnClickedButtonRevert();
    void OnBnClickedButtonLinear();
    void OnBnClickedButtonSpeedup();
    void OnBnClickedButtonSpeeddown();
    void OnBnClickedButtonSmooth();
    void OnBnClickedButtonKeyprev();
    void OnBnClickedButtonKeynext();
    ///@}

    /// @return the ease window, for its settings; null while there is none.
    CKvParamBezierWnd* GetCurveWnd() const;

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void EndEdit(bool keep);
    void Step(int (IKvParamBezierInfo::*canGo)(), int (IKvParamBezierInfo::*go)());
    bool CanUse(UINT id) const;

    struct Callback;

    std::unique_ptr<CKvParamBezierInfo> m_info;
    std::shared_ptr<Callback> m_callback;
    QPointer<CKvParamBezierWnd> m_window;
    bool m_isInitialised = false; // since OnInitDialog, until the window is destroyed
    bool m_isEditing = false;     // between BeginEdit and the end of the transaction
};

KV_INTERFACES_END
