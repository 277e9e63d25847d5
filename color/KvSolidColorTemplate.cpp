#include "KvSolidColorTemplate.h"

#include "KvMenu.h"
#include "color/KvSolidColorTemplateImpl.h"
#include "color/SwatchProfile.h"

#include <QDir>
#include <QPointer>
#include <QStandardPaths>

#include <algorithm>

using kv::SwatchCell;

namespace {

constexpr UINT kMenu = 12015;
constexpr QSize kCellSize(24, 18);
constexpr QSize kLeastCellSize(8, 8);
/// More cells than this make the grid no larger by themselves.
constexpr int kMostCellsOfHint = 64;

QSize SizeOf(QSize cell, int columns, int rows)
{
    return {cell.width() * std::clamp(columns, 1, kMostCellsOfHint),
            cell.height() * std::clamp(rows, 1, kMostCellsOfHint)};
}

} // namespace

CKvSolidColorTemplate::CKvSolidColorTemplate() : m_impl(std::make_unique<Impl>(*this))
{
    setFocusPolicy(Qt::ClickFocus);
    setAcceptDrops(true);
}

CKvSolidColorTemplate::CKvSolidColorTemplate(QWidget* parent) : CKvSolidColorTemplate()
{
    CreateWhenShown(parent);
}

CKvSolidColorTemplate::~CKvSolidColorTemplate() = default;

void CKvSolidColorTemplate::SetSystemFolder(const CString& folder)
{
    // A host may change its working folder later.
    Impl::Folder() = folder.empty() ? folder : KvFromQString(QDir(KvToQString(folder)).absolutePath());
}

CString CKvSolidColorTemplate::GetSystemFolder()
{
    if (!Impl::Folder().empty())
        return Impl::Folder();
    return KvFromQString(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
}

int CKvSolidColorTemplate::InstallFactoryTemplate()
{
    QDir().mkpath(KvToQString(GetSystemFolder()));
    return kv::InstallFactorySwatches(Impl::File()) ? 1 : 0;
}

int CKvSolidColorTemplate::Create(UINT style, CWnd* parent, DWORD id)
{
    if (!CKvStatic::Create(style, parent, id))
        return 0;
    RecalcLayout();
    return 1;
}

int CKvSolidColorTemplate::CreateSelf()
{
    const int result = CKvStatic::CreateSelf();
    InitialData(0);
    return result;
}

void CKvSolidColorTemplate::SetNumRect(int columns, int rows)
{
    m_impl->columns = columns;
    m_impl->rows = rows;
    RecalcLayout();
    updateGeometry();
}

int CKvSolidColorTemplate::GetColumns() const
{
    return m_impl->columns;
}

int CKvSolidColorTemplate::GetRows() const
{
    return m_impl->rows;
}

int CKvSolidColorTemplate::InitialData(int reset)
{
    if (!Impl::Store().Initialise(Impl::File(), reset != 0))
        return 0;
    Impl::SwatchesReplaced();
    return 1;
}

void CKvSolidColorTemplate::RecalcLayout()
{
    m_impl->layout = kv::SwatchLayout(GetClientRect(), m_impl->columns, m_impl->rows);
    DrawPalette();
    m_impl->access.PartsChanged();
    m_impl->access.UpdateFocus();
}

void CKvSolidColorTemplate::DrawPalette()
{
    m_impl->painter.Invalidate();
    update();
}

void CKvSolidColorTemplate::SetCellColor(int index, DWORD colour)
{
    if (GetCellColor(index) != colour && Impl::Store().SetColour(index, colour))
        Impl::SwatchChanged(index);
}

int CKvSolidColorTemplate::GetCellCount() const
{
    return Impl::Store().Count();
}

DWORD CKvSolidColorTemplate::GetCellColor(int index) const
{
    return index >= 0 && index < GetCellCount() ? m_impl->ColourOf({SwatchCell::Kind::Swatch, index}) : 0;
}

UINT CKvSolidColorTemplate::OnGetDlgCode()
{
    return DLGC_WANTARROWS | DLGC_WANTCHARS;
}

QSize CKvSolidColorTemplate::sizeHint() const
{
    return SizeOf(kCellSize, m_impl->columns, m_impl->rows);
}

QSize CKvSolidColorTemplate::minimumSizeHint() const
{
    return SizeOf(kLeastCellSize, m_impl->columns, m_impl->rows);
}

bool CKvSolidColorTemplate::ReadFile(const CString& path, bool factory)
{
    if (!Impl::Store().Read(path, factory ? kv::SwatchSet::Factory : kv::SwatchSet::Altered))
        return false;
    Impl::SwatchesReplaced();
    return true;
}

bool CKvSolidColorTemplate::WriteFile(const CString& path)
{
    return Impl::Store().Write(path);
}

DWORD CKvSolidColorTemplate::GetColorValue(const CString& text)
{
    return kv::ParseSwatch(text);
}

void CKvSolidColorTemplate::SetFixedAlphaColor()
{
    Impl::SwatchesReplaced();
}

void CKvSolidColorTemplate::DoMenu(CPoint point)
{
    const std::optional<SwatchCell> cell = m_impl->HitTest(point);
    if (!cell)
        return;
    CKvMenu menu;
    menu.LoadMenu(kMenu);
    menu.EnableMenuItem(kv::kSwatchSaveCurrent, cell->kind == SwatchCell::Kind::Swatch ? 1 : 0);
    const QPointer<CKvSolidColorTemplate> alive(this);
    const UINT command =
        menu.TrackPopupMenu(TPM_RIGHTBUTTON | TPM_RETURNCMD, CPoint(mapToGlobal(QPoint(point))), this);
    if (alive)
        m_impl->RunMenuCommand(command, *cell);
}

void CKvSolidColorTemplate::DrawCell(Graphics& graphics, int index)
{
    if (index >= 0 && index < m_impl->layout.ShownSwatches(GetCellCount()))
        m_impl->DrawCellAtRest(graphics, {SwatchCell::Kind::Swatch, index});
}

void CKvSolidColorTemplate::DrawAlphaCell(Graphics& graphics, int index)
{
    if (index >= 0 && index < kv::SwatchLayout::kAlphaCells)
        m_impl->DrawCellAtRest(graphics, {SwatchCell::Kind::Alpha, index});
}
