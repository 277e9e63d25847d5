#include "KvParamBezierCtrlDlg.h"

#include <QKeyEvent>

#include <utility>

namespace {

constexpr UINT kTemplate = 12016;
constexpr UINT kUndo = 12077;
constexpr UINT kRevert = 12078;
constexpr UINT kRedo = 12079;
constexpr UINT kLinear = 12090;
constexpr UINT kSpeedUp = 12091;
constexpr UINT kSpeedDown = 12092;
constexpr UINT kPrevKey = 12093;
constexpr UINT kNextKey = 12094;
constexpr UINT kSmooth = 12095;

constexpr LPARAM kIdleRounds = 3;

} // namespace

CKvParamBezierCtrlDlg::CKvParamBezierCtrlDlg(IKvDataOperator* host, const wchar_t* objectId,
                                             const wchar_t* paramName, CWnd* parent)
    : CKvDialog(kTemplate, parent)
    , m_info(host ? std::make_unique<CKvParamBezierInfo>(host, objectId, paramName) : nullptr)
{
}

CKvParamBezierCtrlDlg::~CKvParamBezierCtrlDlg()
{
    CKvParamBezierCtrlDlg::DestroyWindow();
}

BOOL CKvParamBezierCtrlDlg::OnInitDialog()
{
    const QPointer<CKvParamBezierCtrlDlg> self(this);
    const BOOL wantsFocus = CKvDialog::OnInitDialog();
    if (m_info) {
        m_isEditing = true;
        m_info->m_isClosed = false;
        m_info->SetModified(0);
        m_info->BeginEdit();
        if (!self || !IsCreated())
            return 0;
    }
    return wantsFocus;
}

void CKvParamBezierCtrlDlg::EndEdit(bool keep)
{
    if (!std::exchange(m_isEditing, false))
        return;
    m_info->m_isClosed = true; // a drag or an entry that the end of the window ends writes no more
    if (keep && m_info->IsModified())
        m_info->CommitEdit();
    else
        m_info->CancelEdit();
}

void CKvParamBezierCtrlDlg::OnOK()
{
    const QPointer<CKvParamBezierCtrlDlg> self(this);
    EndEdit(true);
    if (self)
        CKvDialog::OnOK();
}

void CKvParamBezierCtrlDlg::OnCancel()
{
    const QPointer<CKvParamBezierCtrlDlg> self(this);
    EndEdit(false);
    if (self)
        CKvDialog::OnCancel();
}

int CKvParamBezierCtrlDlg::DestroyWindow()
{
    const QPointer<CKvParamBezierCtrlDlg> self(this);
    EndEdit(false); // closed by neither button
    if (!self)
        return 1;
    return self ? CKvDialog::DestroyWindow() : 1;
}

// Every idle update looks at the history itself.
int CKvParamBezierCtrlDlg::UndoChanged()
{
    return 1;
}

BOOL CKvParamBezierCtrlDlg::OnCommand(WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    constexpr std::pair<UINT, void (CKvParamBezierCtrlDlg::*)()> kHandlers[] = {
        {kUndo, &CKvParamBezierCtrlDlg::OnBnClickedButtonUndo},
        {kRedo, &CKvParamBezierCtrlDlg::OnBnClickedButtonRedo},
        {kRevert, &CKvParamBezierCtrlDlg::OnBnClickedButtonRevert},
        {kLinear, &CKvParamBezierCtrlDlg::OnBnClickedButtonLinear},
        {kSpeedUp, &CKvParamBezierCtrlDlg::OnBnClickedButtonSpeedup},
        {kSpeedDown, &CKvParamBezierCtrlDlg::OnBnClickedButtonSpeeddown},
        {kSmooth, &CKvParamBezierCtrlDlg::OnBnClickedButtonSmooth},
        {kPrevKey, &CKvParamBezierCtrlDlg::OnBnClickedButtonKeyprev},
        {kNextKey, &CKvParamBezierCtrlDlg::OnBnClickedButtonKeynext},
    };
    for (const auto& [id, handler] : kHandlers) {
        if (id == LOWORD(wParam)) {
            (this->*handler)();
            return 1;
        }
    }
    return CKvDialog::OnCommand(wParam, lParam, result);
}

void CKvParamBezierCtrlDlg::OnBnClickedButtonUndo() {}

void CKvParamBezierCtrlDlg::OnBnClickedButtonRedo() {}

void CKvParamBezierCtrlDlg::OnBnClickedButtonRevert() {}

void CKvParamBezierCtrlDlg::OnBnClickedButtonLinear() {}

void CKvParamBezierCtrlDlg::OnBnClickedButtonSpeedup() {}

void CKvParamBezierCtrlDlg::OnBnClickedButtonSpeeddown() {}

void CKvParamBezierCtrlDlg::OnBnClickedButtonSmooth() {}

void CKvParamBezierCtrlDlg::OnBnClickedButtonKeyprev()
{
    Step(&IKvParamBezierInfo::CanGoPrevKey, &IKvParamBezierInfo::GoPrevKey);
}

void CKvParamBezierCtrlDlg::OnBnClickedButtonKeynext()
{
    Step(&IKvParamBezierInfo::CanGoNextKey, &IKvParamBezierInfo::GoNextKey);
}

void CKvParamBezierCtrlDlg::Step(int (IKvParamBezierInfo::*canGo)(), int (IKvParamBezierInfo::*go)())
{
    if (m_window && m_info && (m_info.get()->*canGo)())
        (m_info.get()->*go)();
}

LRESULT CKvParamBezierCtrlDlg::OnKickIdle(WPARAM, LPARAM count)
{
    const QPointer<CKvParamBezierCtrlDlg> self(this);
    UpdateDialogControls();
    return self && count < kIdleRounds ? 1 : 0;
}

void CKvParamBezierCtrlDlg::OnCmdUpdateUI(CCmdUI* command)
{
    switch (command ? command->m_nID : 0) {
    case kUndo:
    case kRedo:
    case kPrevKey:
    case kNextKey: {
        const QPointer<CKvParamBezierCtrlDlg> self(this);
        const bool canUse = CanUse(command->m_nID);
        if (self)
            command->Enable(canUse ? 1 : 0);
        break;
    }
    default:
        break;
    }
}

bool CKvParamBezierCtrlDlg::CanUse(UINT id) const
{
    if (!m_window || !m_info)
        return false;
    switch (id) {
    case kUndo:
        return false;
    case kRedo:
        return false;
    case kPrevKey:
        return m_info->CanGoPrevKey() != 0;
    default:
        return m_info->CanGoNextKey() != 0;
    }
}

CKvParamBezierWnd* CKvParamBezierCtrlDlg::GetCurveWnd() const
{
    return m_window;
}

// The curve's own keys, also while a button has the focus.
void CKvParamBezierCtrlDlg::keyPressEvent(QKeyEvent* event)
{
    const bool isRedo = event->keyCombination() == (Qt::CTRL | Qt::Key_Y) ||
                        event->keyCombination() == (Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
    if (event->keyCombination() == (Qt::CTRL | Qt::Key_Z))
        OnBnClickedButtonUndo();
    else if (isRedo)
        OnBnClickedButtonRedo();
    else
        CKvDialog::keyPressEvent(event);
}
