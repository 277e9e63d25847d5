#include "KvCharMapDlg.h"
#include "text/CharNames.h"
#include "text/KvCharMapPreviewWndImpl.h"

#include <QCursor>
#include <QDrag>
#include <QFontInfo>
#include <QMimeData>
#include <QPointer>

#include <utility>

CKvCharMapPreviewWnd::CKvCharMapPreviewWnd() : m_impl(std::make_unique<Impl>(*this))
{
    setFocusPolicy(Qt::ClickFocus);
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum);
}

CKvCharMapPreviewWnd::CKvCharMapPreviewWnd(QWidget* parent) : CKvCharMapPreviewWnd()
{
    CreateWhenShown(parent);
}

CKvCharMapPreviewWnd::~CKvCharMapPreviewWnd() = default;

int CKvCharMapPreviewWnd::Create(UINT style, CWnd* parent, DWORD id)
{
    return CKvStatic::Create(style, parent, id) ? Initialize() : 0;
}

int CKvCharMapPreviewWnd::Initialize()
{
    UpdateCodeTable();
    return 1;
}

void CKvCharMapPreviewWnd::SetFont(const CString& face)
{
    m_impl->face = face;
    if (IsCreated())
        UpdateCodeTable();
}

QString CKvCharMapPreviewWnd::Face() const
{
    return KvToQString(m_impl->face);
}

CString CKvCharMapPreviewWnd::GetFont() const
{
    return m_impl->face.empty() ? KvFromQString(QFontInfo(font()).family()) : m_impl->face;
}

void CKvCharMapPreviewWnd::UpdateCodeTable()
{
    m_impl->shown = GetFont();
    m_impl->font = kv::CharFace(KvToQString(m_impl->shown));
    kv::CodeTable table = m_impl->font.ReadTable();
    kv::DropLeadingSpace(table);
    m_impl->model.SetTable(std::move(table));
    m_impl->rows.Invalidate();
    m_impl->press.reset();
    m_impl->access.PartsChanged();
    m_impl->access.UpdateFocus();
    DrawCharMap();
    if (m_impl->faceChanged)
        m_impl->faceChanged();
}

void CKvCharMapPreviewWnd::DrawCharMap()
{
    update();
}

void CKvCharMapPreviewWnd::DrawSelected()
{
    if (const int cell = m_impl->model.CellOf(m_impl->model.Selected()); cell >= 0)
        update(QRect(kv::CharCellRect(cell)).adjusted(0, 0, 1, 1).united(QRect(m_impl->PreviewRect())));
}

int CKvCharMapPreviewWnd::Select(CPoint point)
{
    const int index = m_impl->IndexAt(point);
    if (index < 0)
        return 0;
    SetSelected(index);
    return 1;
}

int CKvCharMapPreviewWnd::GetCodeCount() const
{
    return m_impl->model.Count();
}

DWORD CKvCharMapPreviewWnd::GetCode(int index) const
{
    const bool isThere = index >= 0 && index < GetCodeCount();
    return isThere ? m_impl->model.Table()[static_cast<std::size_t>(index)].code : 0u;
}

int CKvCharMapPreviewWnd::FindCode(DWORD code) const
{
    return kv::PlaceOf(m_impl->model.Table(), code);
}

int CKvCharMapPreviewWnd::SetSelected(int index)
{
    const int first = GetFirst();
    const bool isOther = m_impl->model.Select(index);
    if (!isOther && GetFirst() == first)
        return 0;
    if (isOther) {
        m_impl->access.SelectionChanged();
        m_impl->access.UpdateFocus();
    }
    m_impl->PlacePreview();
    return isOther ? 1 : 0;
}

int CKvCharMapPreviewWnd::GetSelected() const
{
    return m_impl->model.Selected();
}

int CKvCharMapPreviewWnd::SetFirst(int index)
{
    if (!m_impl->model.SetFirst(index))
        return 0;
    m_impl->PlacePreview();
    return 1;
}

int CKvCharMapPreviewWnd::GetFirst() const
{
    return m_impl->model.First();
}

int CKvCharMapPreviewWnd::GetLastFirst() const
{
    return kv::LastFirstChar(m_impl->model.Count());
}

void CKvCharMapPreviewWnd::ScrollWheel(int delta)
{
    if (!m_impl->model.Wheel(delta))
        return;
    m_impl->PlacePreview();
    if (m_impl->Send(kKvCharScrolled))
        Q_EMIT Scrolled(GetFirst());
}

UINT CKvCharMapPreviewWnd::OnGetDlgCode()
{
    return DLGC_WANTARROWS | DLGC_WANTCHARS;
}

QSize CKvCharMapPreviewWnd::sizeHint() const
{
    return {kv::kCharGridRight + kv::kCharOrigin, kv::kCharGridBottom + kv::kCharOrigin};
}

QSize CKvCharMapPreviewWnd::minimumSizeHint() const
{
    return sizeHint();
}

void CKvCharMapPreviewWnd::SetGuiBasicSettings(SKvGuiBasicSettings* settings)
{
    CKvStatic::SetGuiBasicSettings(settings);
    update();
}

void CKvCharMapPreviewWnd::Impl::PickCharacter(int index)
{
    const QPointer<CKvCharMapPreviewWnd> alive(&control);
    SelectByUser(index);
    if (alive && model.Selected() == index)
        Pick();
}

void CKvCharMapPreviewWnd::Impl::FocusCharacter(int index)
{
    const QPointer<CKvCharMapPreviewWnd> alive(&control);
    control.setFocus(Qt::OtherFocusReason);
    if (alive)
        SelectByUser(index);
}

void CKvCharMapPreviewWnd::Impl::SelectByUser(int index)
{
    const int first = model.First();
    const bool isOther = control.SetSelected(index) != 0;
    NotifySelected(isOther, model.First() != first);
}

void CKvCharMapPreviewWnd::Impl::NotifySelected(bool isOther, bool scrolled)
{
    const QPointer<CKvCharMapPreviewWnd> alive(&control);
    const char16_t code = SelectedCode();
    const int first = model.First();
    if (isOther) {
        if (!Send(kKvCharSelected))
            return;
        Q_EMIT alive->CharSelected(code);
    }
    if (!scrolled || !alive || !Send(kKvCharScrolled))
        return;
    Q_EMIT alive->Scrolled(first);
}

void CKvCharMapPreviewWnd::Impl::PlacePreview()
{
    const QPoint pointer = control.mapFromGlobal(QCursor::pos());
    hidesPreview = control.underMouse() && PreviewRect().PtInRect(pointer);
    control.update();
    if (viewChanged)
        viewChanged();
}

void CKvCharMapPreviewWnd::Impl::Pick()
{
    if (model.Selected() < 0)
        return;
    const QPointer<CKvCharMapPreviewWnd> alive(&control);
    const char16_t code = SelectedCode();
    if (Send(kKvCharPicked))
        Q_EMIT alive->CharPicked(code);
}

bool CKvCharMapPreviewWnd::Impl::Send(UINT code)
{
    const QPointer<CKvCharMapPreviewWnd> alive(&control);
    KvSendMessage(control.parentWidget(), WM_COMMAND, MAKEWPARAM(control.GetDlgCtrlID(), code),
                  reinterpret_cast<LPARAM>(&control));
    return !alive.isNull();
}

kv::CharMapLook CKvCharMapPreviewWnd::Impl::Look() const
{
    const bool enabled = control.isEnabled();
    kv::CharMapLook look = kv::CharLookOf(control.GuiBasicSettings(), enabled);
    look.focused = enabled && control.hasFocus();
    look.preview = enabled && !hidesPreview;
    return look;
}

int CKvCharMapPreviewWnd::Impl::IndexAt(CPoint point) const
{
    const std::optional<int> cell = kv::CharCellAt(point);
    return cell ? model.IndexAt(*cell) : -1;
}

CRect CKvCharMapPreviewWnd::Impl::PreviewRect() const
{
    const int cell = model.CellOf(model.Selected());
    return cell < 0 ? CRect() : kv::CharPreviewRect(cell, control.GetClientRect().Size());
}

char16_t CKvCharMapPreviewWnd::Impl::SelectedCode() const
{
    return static_cast<char16_t>(control.GetCode(model.Selected()));
}

void CKvCharMapPreviewWnd::Impl::BeginDrag()
{
    if (!press || model.Selected() < 0)
        return;
    press.reset();
    control.ReleaseCapture();
    auto* drag = new QDrag(&control); // the toolkit deletes it
    auto* data = new QMimeData;       // the drag's
    const char16_t code = SelectedCode();
    data->setText(QString(QChar(code)));
    drag->setMimeData(data);
    if (const int cell = model.CellOf(model.Selected()); cell >= 0)
        drag->setPixmap(control.grab(QRect(kv::CharCellRect(cell)).adjusted(0, 0, 1, 1)));
    const QPointer<CKvCharMapPreviewWnd> alive(&control);
    if (drag->exec(Qt::CopyAction) != Qt::IgnoreAction && alive && characterUsed)
        characterUsed(code);
}
