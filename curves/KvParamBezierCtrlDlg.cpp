#include "KvParamBezierCtrlDlg.h"

#include "curves/EaseKeys.h"
#include "platform/VirtualKey.h"

#include <QKeyEvent>

#include <utility>

namespace {

constexpr UINT kTemplate = kKvParamBezierDialog;
constexpr UINT kCurve = 12088;
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

// What the window calls in place of the dialog, which a host may delete while the window is being made.
struct CKvParamBezierCtrlDlg::Callback final : IKvParamBezierCtrlCallback
{
    QPointer<CKvParamBezierCtrlDlg> dialog;

    int UndoChanged() override { return dialog ? dialog->UndoChanged() : 0; }
};

CKvParamBezierCtrlDlg::CKvParamBezierCtrlDlg(IKvDataOperator* host, const wchar_t* objectId,
                                             const wchar_t* paramName, CWnd* parent)
    : CKvDialog(kTemplate, parent)
    , m_info(host ? std::make_unique<CKvParamBezierInfo>(host, objectId, paramName) : nullptr)
    , m_callback(std::make_shared<Callback>())
{
    m_callback->dialog = this;
    setLayoutDirection(Qt::LeftToRight); // as its time runs in every language
}

CKvParamBezierCtrlDlg::~CKvParamBezierCtrlDlg()
{
    CKvParamBezierCtrlDlg::DestroyWindow();
}

BOOL CKvParamBezierCtrlDlg::OnInitDialog()
{
    const QPointer<CKvParamBezierCtrlDlg> self(this);
    const BOOL wantsFocus = CKvDialog::OnInitDialog();
    if (!IsCreated() || std::exchange(m_isInitialised, true))
        return wantsFocus;
    if (m_info) {
        m_isEditing = true;
        m_info->m_isClosed = false;
        m_info->SetModified(0);
        m_info->BeginEdit();
        if (!self || !IsCreated())
            return 0;
    }
    const std::shared_ptr<Callback> callback = m_callback; // outlives the window that is not the dialog's yet
    auto window = std::make_unique<CKvParamBezierWnd>(m_info.get(), callback.get());
    if (!self || !IsCreated())
        return 0;
    m_window = window.release(); // the dialog's from Create on
    const HWND placeholder = GetDlgItem(kCurve);
    m_window->Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, placeholder->geometry(), this, kCurve);
    ReplaceDlgItem(kCurve, m_window);
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

void CKvParamBezierCtrlDlg::OnAnswer(int result)
{
    EndEdit(result == IDOK);
}

int CKvParamBezierCtrlDlg::DestroyWindow()
{
    const QPointer<CKvParamBezierCtrlDlg> self(this);
    TakeAnswer(IDCANCEL); // when closed by neither button
    if (self)
        EndEdit(false); // when answered before it began
    if (!self)
        return 1;
    delete m_window;
    if (!self)
        return 1;
    m_isInitialised = false;
    return CKvDialog::DestroyWindow();
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

void CKvParamBezierCtrlDlg::OnBnClickedButtonUndo()
{
    if (m_window)
        m_window->Undo();
}

void CKvParamBezierCtrlDlg::OnBnClickedButtonRedo()
{
    if (m_window)
        m_window->Redo();
}

void CKvParamBezierCtrlDlg::OnBnClickedButtonRevert()
{
    if (m_window)
        m_window->Revert();
}

void CKvParamBezierCtrlDlg::OnBnClickedButtonLinear()
{
    if (m_window)
        m_window->ApplyLinear();
}

void CKvParamBezierCtrlDlg::OnBnClickedButtonSpeedup()
{
    if (m_window)
        m_window->ApplySpeedUp();
}

void CKvParamBezierCtrlDlg::OnBnClickedButtonSpeeddown()
{
    if (m_window)
        m_window->ApplySpeedDown();
}

void CKvParamBezierCtrlDlg::OnBnClickedButtonSmooth()
{
    if (m_window)
        m_window->ApplySmooth();
}

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
    const QPointer<CKvParamBezierWnd> window = m_window; // dies with the dialog
    if (!window || !m_info || !(m_info.get()->*canGo)() || !window)
        return;
    if (!(m_info.get()->*go)() || !window)
        return;
    window->Load();
    if (window)
        window->update();
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
        return m_window->CanUndo() != 0;
    case kRedo:
        return m_window->CanRedo() != 0;
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
    const auto command = kv::EaseCommandOf(kv::KeyCharacter(*event), event->modifiers());
    if (command == kv::EaseCommand::Undo)
        OnBnClickedButtonUndo();
    else if (command == kv::EaseCommand::Redo)
        OnBnClickedButtonRedo();
    else
        CKvDialog::keyPressEvent(event);
}
