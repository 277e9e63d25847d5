#include "KvCharMapDlg.h"

#include "platform/VirtualKey.h"
#include "text/CharNames.h"
#include "text/KvCharMapDlgImpl.h"
#include "text/KvCharMapPreviewWndImpl.h"

#include <QKeyEvent>
#include <QLayout>
#include <QWheelEvent>

#include <algorithm>

namespace {
constexpr UINT kTemplate = 20400;
}

CKvCharMapDlg::CKvCharMapDlg() : m_impl(std::make_unique<Impl>(*this))
{
    KvCreateScrollLineHelper(&m_impl->line);
}

CKvCharMapDlg::~CKvCharMapDlg()
{
    CKvCharMapDlg::DestroyWindow();
    m_impl->line->Release();
}

int CKvCharMapDlg::Create(CWnd* parent, IKvCmdTarget* target)
{
    if (IsCreated())
        return 0;
    m_impl->target = target;
    return CKvDialog::Create(kTemplate, parent);
}

BOOL CKvCharMapDlg::OnInitDialog()
{
    m_impl->MakeItems();
    m_impl->ApplyTexts();
    m_impl->LayOut();
    m_impl->FaceChanged();
    layout()->activate();
    return CKvDialog::OnInitDialog();
}

int CKvCharMapDlg::DestroyWindow()
{
    const QPointer<CKvCharMapDlg> self(this);
    const int result = CKvDialog::DestroyWindow();
    if (self && result)
        m_impl->Clear();
    return result;
}

void CKvCharMapDlg::SetFont(const CString& face)
{
    m_impl->face = face;
    if (m_impl->IsMade())
        m_impl->grid->SetFont(face);
}

CString CKvCharMapDlg::GetFont() const
{
    return m_impl->IsMade() ? m_impl->grid->GetFont() : m_impl->face;
}

void CKvCharMapDlg::OnVScroll(UINT code, UINT position)
{
    if (!m_impl->IsMade())
        return;
    CKvCharMapPreviewWnd& grid = *m_impl->grid;
    const int row = grid.GetFirst() / kv::kCharColumns;
    const int last = grid.GetLastFirst() / kv::kCharColumns;
    const auto show = [&grid](int first) { grid.SetFirst(first * kv::kCharColumns); };
    switch (code) {
    case SB_LINEUP:
        show(row - 1);
        break;
    case SB_LINEDOWN:
        show(row + 1);
        break;
    case SB_PAGEUP:
        show(row - kv::kCharRows);
        break;
    case SB_PAGEDOWN:
        show(row + kv::kCharRows);
        break;
    case SB_THUMBPOSITION:
    case SB_THUMBTRACK:
        show(static_cast<int>(std::min(position, static_cast<UINT>(last))));
        break;
    case SB_TOP:
        show(0);
        break;
    case SB_BOTTOM:
        show(last);
        break;
    default:
        return;
    }
    m_impl->UpdateBar();
}

BOOL CKvCharMapDlg::OnMouseWheel(short delta, CPoint)
{
    if (!m_impl->IsMade())
        return 0;
    m_impl->grid->ScrollWheel(delta);
    return 1;
}

CKvCharMapPreviewWnd* CKvCharMapDlg::GetGrid() const
{
    return m_impl->grid;
}

void CKvCharMapDlg::SetRecent(const CString& characters)
{
    m_impl->recent.Set(characters);
    if (m_impl->IsMade())
        m_impl->UpdateRows();
}

CString CKvCharMapDlg::GetRecent() const
{
    return m_impl->recent.Text();
}

void CKvCharMapDlg::SetFavorites(const CString& characters)
{
    m_impl->favorites.Set(characters);
    if (!m_impl->IsMade())
        return;
    m_impl->UpdateRows();
    m_impl->UpdateSelection();
}

CString CKvCharMapDlg::GetFavorites() const
{
    return m_impl->favorites.Text();
}

CString CKvCharMapDlg::GetCollected() const
{
    return m_impl->IsMade() ? KvFromQString(m_impl->collected->text()) : CString();
}

void CKvCharMapDlg::OnOK()
{
    if (m_impl->IsMade())
        m_impl->PickSelected();
}

void CKvCharMapDlg::OnCancel()
{
    hide();
}

void CKvCharMapDlg::SetGuiBasicSettings(SKvGuiBasicSettings* settings)
{
    CKvDialog::SetGuiBasicSettings(settings);
    m_impl->settings = settings;
    if (!m_impl->IsMade())
        return;
    m_impl->grid->SetGuiBasicSettings(settings);
    m_impl->recentRow->SetGuiBasicSettings(settings);
    m_impl->favoritesRow->SetGuiBasicSettings(settings);
}

BOOL CKvCharMapDlg::OnCommand(WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    if (LOWORD(wParam) != kKvCharMapGrid || !m_impl->IsMade())
        return CKvDialog::OnCommand(wParam, lParam, result);
    switch (HIWORD(wParam)) {
    case kKvCharPicked:
        m_impl->PickSelected();
        break;
    default:
        break;
    }
    return 1;
}

BOOL CKvCharMapDlg::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    if (message != WM_VSCROLL)
        return CKvDialog::OnWndMsg(message, wParam, lParam, result);
    OnVScroll(LOWORD(wParam), HIWORD(wParam));
    return 1;
}

void CKvCharMapDlg::OnSkinChanged()
{
    CKvDialog::OnSkinChanged();
    if (!m_impl->IsMade())
        return;
    m_impl->bar->LoadSkin();
    m_impl->ApplyTexts();
}

// Ours before a host's shortcuts.
bool CKvCharMapDlg::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && m_impl->IsMade() &&
        m_impl->IsOwnKey(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    const auto measure = [this] {
        if (m_impl->IsMade())
            m_impl->Measure();
    };
    if (event->type() == QEvent::FontChange)
        measure();
    else if (event->type() == QEvent::StyleChange) // the items are polished after it, and lose fixed sizes
        QMetaObject::invokeMethod(this, measure, Qt::QueuedConnection);
    return CKvDialog::event(event);
}

// Down leads from the search box into the characters that it found; Enter is the dialog's everywhere, where
// some desktops would press a button with it, and does nothing while the box finds nothing. Ctrl+D deletes in
// an edit on some desktops.
bool CKvCharMapDlg::eventFilter(QObject* watched, QEvent* event)
{
    // The kind first: the box that tells of its own end is no box any more.
    if (event->type() != QEvent::KeyPress || !m_impl->IsMade())
        return CKvDialog::eventFilter(watched, event);
    auto& key = static_cast<QKeyEvent&>(*event);
    const bool isSearch = watched == m_impl->search;
    if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
        if (!isSearch || !m_impl->search->HasFault())
            OnOK();
        return true;
    }
    if (isSearch && key.key() == Qt::Key_Down) {
        m_impl->grid->setFocus(Qt::TabFocusReason);
        return true;
    }
    if (key.key() == Qt::Key_Space || !m_impl->IsOwnKey(key))
        return CKvDialog::eventFilter(watched, event);
    keyPressEvent(&key);
    return true;
}

// What a host does to the grid is seen around it, too.
void CKvCharMapDlg::WatchGrid()
{
    CKvCharMapPreviewWnd::Impl& grid = *m_impl->grid->m_impl;
    grid.viewChanged = [this] {
        m_impl->UpdateBar();
        m_impl->UpdateSelection();
    };
    grid.faceChanged = [this] { m_impl->FaceChanged(); };
    grid.characterUsed = [this](char16_t code) { m_impl->Used(code); };
}

void CKvCharMapDlg::showEvent(QShowEvent* event)
{
    CKvDialog::showEvent(event);
    if (event->spontaneous() || !m_impl->IsMade())
        return;
    kv::CharNames(); // else the first key pressed in the search box waits for it
    m_impl->search->setFocus();
    m_impl->search->selectAll();
}

void CKvCharMapDlg::keyPressEvent(QKeyEvent* event)
{
    if (!m_impl->IsMade() || !m_impl->IsOwnKey(*event))
        CKvDialog::keyPressEvent(event);
    else if (event->key() == Qt::Key_F3)
        m_impl->SearchNext();
    else if (event->key() == Qt::Key_Space)
        m_impl->Collect(m_impl->FocusedCode());
    else
        m_impl->ToggleFavorite(m_impl->FocusedCode());
}

void CKvCharMapDlg::wheelEvent(QWheelEvent* event)
{
    OnMouseWheel(static_cast<short>(event->angleDelta().y()), event->globalPosition().toPoint());
    event->accept();
}
